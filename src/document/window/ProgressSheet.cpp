#include "document/window/ProgressSheet.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "system/InBackground.h"
#include "texts/Translated.h"
#include "widgets/Sheet.h"

#include <QProgressBar>
#include <QTimer>

namespace leafwright {

namespace {

constexpr int steps = 1000;  // of the bar

constexpr Translated translated{"ProgressSheet"};

}  // namespace

ProgressSheet::ProgressSheet(MyDocument &document, const QString &title, const QString &what)
    : busy_(document), sheet_(new Sheet(title)) {
    sheet_->setObjectName(QStringLiteral("progressSheet"));
    auto *bar = new QProgressBar;
    bar->setAccessibleName(what);
    bar->setRange(0, steps);
    sheet_->addField(what, bar, QStringLiteral("progressBar"));
    sheet_->addButton(translated("Cancel"), 0);
    auto *timer = new QTimer(bar);
    QObject::connect(timer, &QTimer::timeout, bar,
                     [this, bar] { bar->setValue(static_cast<int>(part_ * steps)); });
    constexpr int interval = 50;  // milliseconds
    timer->start(interval);
    sheet_->begin(document.myWindow(), [this](int) { stop_.request_stop(); });
}

ProgressSheet::~ProgressSheet() {
    delete sheet_;
}

void ProgressSheet::run(const std::function<void(const std::stop_token &stop)> &work) {
    inBackground(
        [&] {
            work(stop_.get_token());
            return true;
        },
        QEventLoop::AllEvents);
}

}  // namespace leafwright

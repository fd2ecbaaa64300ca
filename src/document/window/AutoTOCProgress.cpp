#include "document/window/AutoTOCProgress.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "texts/Translated.h"
#include "widgets/BusySheet.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace leafwright {

namespace {

constexpr int millisecondsToLook = 1000;
constexpr int indicatorWidth = 120;  // points

constexpr Translated translated{"AutoTOCProgress"};

}  // namespace

AutoTOCProgress::AutoTOCProgress(MyDocument &document)
    : platform_(document.platform()),
      busy_(document),
      sheet_(std::make_unique<BusySheet>(translated("AutoTOC"))) {
    const std::array titles{translated("Counting the fonts:"), translated("Choosing heading fonts:"),
                            translated("Building the outline:")};
    for (size_t i = 0; i < steps_.size(); ++i) {
        auto *line = new QWidget;
        steps_[i] = {new QLabel, new QProgressBar};
        steps_[i].text->setObjectName(QStringLiteral("guessPDFText%1").arg(i + 1));
        steps_[i].indicator->setObjectName(QStringLiteral("guessPDFIndicator%1").arg(i + 1));
        steps_[i].indicator->setAccessibleName(titles[i]);
        steps_[i].indicator->setRange(0, 0);  // It shows that something runs, not how far it is.
        steps_[i].indicator->setTextVisible(false);
        auto *layout = new QHBoxLayout(line);
        layout->setContentsMargins({});
        layout->addWidget(steps_[i].text);
        layout->addWidget(steps_[i].indicator);
        steps_[i].indicator->hide();  // until its step begins
        line->setMinimumWidth(indicatorWidth);
        line->setFixedHeight(steps_[i].indicator->sizeHint().height());  // or the lines move with the steps
        sheet_->addField(titles[i], line, QStringLiteral("guessPDFStep%1").arg(i + 1));
    }
    sheet_->begin(document.myWindow(), [](int) {});
}

AutoTOCProgress::~AutoTOCProgress() = default;

void AutoTOCProgress::guessPDFStep1Begins() {
    show(0, {});
}

void AutoTOCProgress::guessPDFStep2Begins() {
    show(1, QStringLiteral("✔"));
}

void AutoTOCProgress::guessPDFStep3Begins() {
    show(2, QStringLiteral("✔"));
}

void AutoTOCProgress::guessPDFStep3Ends(const QString &result) {
    show(steps_.size(), result == u"Failed" ? QStringLiteral("✘") : QStringLiteral("✔"));
    if (!sheet_->isVisible()) return;
    platform_.pause(millisecondsToLook);
    sheet_->end(0);
}

/// @param running the step that runs; one behind the last if none does any more
/// @param before what stands at the steps before that
void AutoTOCProgress::show(size_t running, const QString &before) {
    for (size_t i = 0; i < steps_.size(); ++i) {
        const Step &step = steps_[i];
        step.text->setVisible(i != running);
        step.text->setText(i < running ? before : QString());
        step.indicator->setVisible(i == running);
    }
    sheet_->drawAtOnce();
}

}  // namespace leafwright

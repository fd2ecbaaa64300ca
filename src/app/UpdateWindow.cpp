#include "app/UpdateWindow.h"

#include "app/Endpoints.h"
#include "platform/Platform.h"
#include "system/Document.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace leafwright {

namespace {

constexpr QSize notesSize{460, 220};
constexpr int margin = 16;
constexpr int lineSpacing = 10;

QLabel *plainLabel(const QString &name) {
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(notesSize.width());
    return label;
}

QFont headlineFont(QFont font) {
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    return font;
}

}  // namespace

UpdateWindow::UpdateWindow(Updater &updater, Platform &platform)
    : updater_(updater),
      platform_(platform),
      headline_(plainLabel(QStringLiteral("headline"))),
      text_(plainLabel(QStringLiteral("text"))),
      progress_(new QProgressBar),
      notes_(new QPlainTextEdit) {
    setObjectName(QStringLiteral("updates"));
    setWindowTitle(tr("Software Update"));
    headline_->setFont(headlineFont(font()));
    progress_->setRange(0, 0);
    progress_->setAccessibleName(tr("Checking"));
    notes_->setObjectName(QStringLiteral("notes"));
    notes_->setAccessibleName(tr("What is new"));
    notes_->setReadOnly(true);
    notes_->setMinimumSize(notesSize);
    notes_->document()->setDocumentMargin(lineSpacing);
    auto *buttons = new QDialogButtonBox;
    download_ = buttons->addButton(tr("&Open Download Page"), QDialogButtonBox::AcceptRole);
    close_ = buttons->addButton(QDialogButtonBox::Cancel);
    close_->setAutoDefault(false);

    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(lineSpacing);
    layout->addWidget(headline_);
    layout->addWidget(text_);
    layout->addWidget(progress_);
    layout->addWidget(notes_);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &UpdateWindow::openDownloadPage);
    connect(buttons, &QDialogButtonBox::rejected, this, &UpdateWindow::reject);
    connect(&updater, &Updater::checkingChanged, this, &UpdateWindow::showChecking);
    // An alert amid the write of a document would hold that up.
    const auto whenNoneIsBusy = [self = QPointer(this)](const std::function<void(UpdateWindow &)> &show) {
        Document::whenNoneIsBusy([self, show] {
            if (self) show(*self);
        });
    };
    connect(&updater, &Updater::updateFound, this, [whenNoneIsBusy](const AppcastItem &item) {
        whenNoneIsBusy([item](UpdateWindow &window) { window.showUpdate(item); });
    });
    connect(&updater, &Updater::upToDate, this,
            [whenNoneIsBusy] { whenNoneIsBusy(&UpdateWindow::showUpToDate); });
    connect(&updater, &Updater::checkFailed, this, [whenNoneIsBusy](const QString &reason) {
        whenNoneIsBusy([reason](UpdateWindow &window) { window.showFailure(reason); });
    });
}

void UpdateWindow::showChecking(bool isChecking) {
    if (!isChecking) return;  // What was found is about to be shown.
    headline_->setText(tr("Checking for updates…"));
    text_->hide();
    progress_->show();
    notes_->hide();
    download_->hide();
    close_->setText(tr("Cancel"));
    comeToFront();
}

void UpdateWindow::showUpdate(const AppcastItem &item) {
    downloadPage_ = item.downloadPage.isEmpty() ? homePage() : item.downloadPage;
    headline_->setText(tr("Leafwright %1 is available").arg(item.displayVersion));
    text_->setText(tr("You have %1. Your package manager may offer the new version as well.")
                       .arg(updater_.currentVersion()));
    text_->show();
    progress_->hide();
    notes_->setPlainText(item.notes);
    notes_->setVisible(!item.notes.isEmpty());
    download_->show();
    download_->setDefault(true);
    download_->setFocus();
    close_->setText(tr("&Later"));
    comeToFront();
}

void UpdateWindow::showUpToDate() {
    hide();
    platform_.runModal(
        {.message = tr("Leafwright is up to date"),
         .informativeText =
             tr("There is no version newer than yours, which is %1.").arg(updater_.currentVersion()),
         .buttons = {tr("OK")},
         .style = Alert::Style::Informational});
}

void UpdateWindow::showFailure(const QString &reason) {
    hide();
    platform_.beep();
    platform_.runModal({tr("Unable to check for updates"), reason, {tr("OK")}});
}

void UpdateWindow::openDownloadPage() {
    accept();
    platform_.openURL(downloadPage_);
}

void UpdateWindow::reject() {
    updater_.cancel();
    QDialog::reject();
}

void UpdateWindow::comeToFront() {
    show();
    raise();
    activateWindow();
}

}  // namespace leafwright

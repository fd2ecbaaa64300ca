#include "app/QtPlatform.h"

#include "files/FileName.h"
#include "files/TemporaryFolder.h"
#include "platform/Settings.h"
#include "system/FileManager.h"
#include "widgets/FilePanelDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDebug>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>

#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {

namespace {

QMessageBox::ButtonRole roleOfButton(qsizetype index, const Alert &alert) {
    if (index == 0) return QMessageBox::AcceptRole;
    const bool isLast = index == alert.buttons.size() - 1;
    return isLast && alert.escapable ? QMessageBox::RejectRole : QMessageBox::DestructiveRole;
}

/// Titles of files are among the texts, and a file may be called "<h1>".
void showTextsAsTheyStand(QMessageBox &box) {
    for (QLabel *label : box.findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
}

std::optional<QString> runPanel(const FilePanel &panel, QFileDialog::AcceptMode mode) {
    FilePanelDialog dialog(panel, mode, QApplication::activeWindow());
    // Who asks may be in the background. Shown before exec(), it would not be modal.
    QTimer::singleShot(0, &dialog, [&dialog] {
        dialog.raise();
        dialog.activateWindow();
    });
    if (dialog.exec() != QDialog::Accepted || dialog.chosenPath().isEmpty()) return std::nullopt;
    return dialog.chosenPath();
}

bool hasAllowedType(const QString &path, const FilePanel &panel) {
    return panel.allowedFileTypes.isEmpty() ||
           panel.allowedFileTypes.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}

void openWithDesktop(const QUrl &url) {
    if (!QDesktopServices::openUrl(url))
        qWarning().noquote() << "leafwright: nothing opens" << url.toString();
}

}  // namespace

QtPlatform::QtPlatform(const QString &settingsPath) : userDefaults_(settingsPath) {}

QString QtPlatform::standardSettingsPath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/settings.ini");
}

void QtPlatform::beep() {
    QApplication::beep();
}

namespace {

/// A short question would make a narrow box, with the text below it in many short lines.
void giveTextsRoom(QMessageBox &box) {
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    if (!grid) return;
    constexpr int widthInCharacters = 48;
    const int width = widthInCharacters * box.fontMetrics().averageCharWidth();
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0, 1,
                  grid->columnCount());
}

}  // namespace

int QtPlatform::runModal(const Alert &alert) {
    QMessageBox box(QApplication::activeWindow());
    box.setIcon(alert.style == Alert::Style::Warning ? QMessageBox::Warning : QMessageBox::Information);
    if (!alert.title.isEmpty()) box.setWindowTitle(alert.title);
    box.setText(alert.message);
    box.setInformativeText(alert.informativeText);
    showTextsAsTheyStand(box);
    QList<QAbstractButton *> buttons;
    for (const QString &title : alert.buttons)
        buttons.append(box.addButton(title, roleOfButton(buttons.size(), alert)));
    if (!buttons.isEmpty()) {
        box.setDefaultButton(qobject_cast<QPushButton *>(buttons.first()));
        if (alert.escapable) box.setEscapeButton(buttons.last());
    }
    giveTextsRoom(box);
    box.exec();
    const auto index = buttons.indexOf(box.clickedButton());
    return static_cast<int>(index < 0 ? std::max<qsizetype>(buttons.size() - 1, 0) : index);
}

/// A panel for files that starts nowhere in particular starts where one ended last, if that is still there.
FilePanel QtPlatform::withFolder(const FilePanel &panel) const {
    FilePanel result = panel;
    const QString last = userDefaults_.stringForKey(setting::lastFolder);
    if (panel.path.isEmpty() && !panel.canChooseDirectories && QFileInfo(last).isDir()) result.path = last;
    return result;
}

std::optional<QString> QtPlatform::noted(const std::optional<QString> &path) {
    if (path) userDefaults_.setValue(setting::lastFolder, QFileInfo(*path).absolutePath());
    return path;
}

std::optional<QString> QtPlatform::runOpenPanel(const FilePanel &panel) {
    return noted(runPanel(withFolder(panel), QFileDialog::AcceptOpen));
}

std::optional<QString> QtPlatform::runSavePanel(const FilePanel &panel) {
    FilePanel proposal = withFolder(panel);
    while (true) {
        auto path = runPanel(proposal, QFileDialog::AcceptSave);
        if (!path || hasAllowedType(*path, panel)) return noted(path);
        // The dialog adds the extension to names that have none. Another one gets it here, and the panel is
        // shown once more, since the name that comes of it may be that of a file.
        proposal.path = *path + u'.' + panel.allowedFileTypes.first();
    }
}

void QtPlatform::setClipboardText(const QString &text) {
    QApplication::clipboard()->setText(text);
}

void QtPlatform::revealFile(const QString &path) {
    showInFileManager(path, QDBusConnection::sessionBus(),
                      [path] { openWithDesktop(urlOfFile(QFileInfo(path).absolutePath())); });
}

void QtPlatform::openFile(const QString &path) {
    openWithDesktop(urlOfFile(path));
}

void QtPlatform::openURL(const QUrl &url) {
    openWithDesktop(url);
}

QString QtPlatform::temporaryDirectory() {
    // The system's folder is open to all, so what stands there under a name that can be guessed may be a
    // trap.
    const QString folder = fileNameText(systemTemporaryFolder());
    QString path = QStringLiteral("%1/leafwright-%2").arg(folder).arg(getuid());
    const QByteArray name = fileNameBytes(path);
    mkdir(name.constData(), S_IRWXU);
    struct stat status {};
    const bool isOurs = lstat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
                        status.st_uid == getuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    if (isOurs) return path;
    if (!ownTemporaryDirectory_) {
        ownTemporaryDirectory_ =
            std::make_unique<QTemporaryDir>(folder + QLatin1String("/leafwright-XXXXXX"));
        ownTemporaryDirectory_->setAutoRemove(false);
    }
    if (ownTemporaryDirectory_->isValid()) return ownTemporaryDirectory_->path();
    ownTemporaryDirectory_.reset();
    return {};
}

qint64 QtPlatform::now() const {
    return QDateTime::currentMSecsSinceEpoch();
}

void QtPlatform::pause(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void QtPlatform::performAfterDelay(int milliseconds, QObject *context, std::function<void()> function) {
    QTimer::singleShot(milliseconds, context, std::move(function));
}

}  // namespace leafwright

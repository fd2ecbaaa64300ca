#include "widgets/FilePanelDialog.h"

#include "system/SecurityScopedBookmarks.h"

#include <QApplication>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>

namespace leafwright {

namespace {

/// Shows in gray what may not be chosen.
class EnabledPaths : public QIdentityProxyModel {
public:
    EnabledPaths(std::function<bool(const QString &)> isEnabled, QObject *parent)
        : QIdentityProxyModel(parent), isEnabled_(std::move(isEnabled)) {}

    Qt::ItemFlags flags(const QModelIndex &index) const override {
        const Qt::ItemFlags flags = QIdentityProxyModel::flags(index);
        const QString path = index.data(QFileSystemModel::FilePathRole).toString();
        return isEnabled_(path) ? flags : flags & ~(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }

private:
    std::function<bool(const QString &)> isEnabled_;
};

QString nameFilter(const QStringList &types) {
    QStringList patterns;
    for (const QString &type : types)
        patterns << QStringLiteral("*.%1").arg(type) << QStringLiteral("*.%1").arg(type.toUpper());
    return QStringLiteral("%1 (%2)").arg(types.join(QStringLiteral(", ")).toUpper(), patterns.join(u' '));
}

}  // namespace

FilePanelDialog::FilePanelDialog(const FilePanel &panel, AcceptMode mode, QWidget *parent)
    : QFileDialog(parent, panel.title), panel_(panel), isPortals_(isSandboxed()) {
    const bool choosesFolders = panel.canChooseDirectories && mode == AcceptOpen;
    const bool choosesBoth = choosesFolders && panel.canChooseFiles;
    // No desktop's dialog can do these three. In a sandbox it has to do without: no other gives leave.
    if (!isPortals_ && (panel.shouldEnablePath || !panel.message.isEmpty() || choosesBoth))
        setOption(DontUseNativeDialog);
    setAcceptMode(mode);
    if (mode == AcceptSave) {
        setFileMode(AnyFile);
    } else {
        const bool wantsFolder = isPortals_ && choosesBoth && QFileInfo(panel.path).isDir();
        setFileMode(panel.canChooseFiles && !wantsFolder ? ExistingFile : Directory);
    }
    setOption(ReadOnly, !panel.canCreateDirectories);
    if (!panel.prompt.isEmpty()) setLabelText(Accept, panel.prompt);
    if (!panel.allowedFileTypes.isEmpty()) {
        setNameFilter(nameFilter(panel.allowedFileTypes));
        setDefaultSuffix(panel.allowedFileTypes.first());
    }
    if (const QFileInfo start(panel.path); start.isDir()) {
        setDirectory(start.absoluteFilePath());
        if (choosesBoth && !isPortals_) proposeFolder(start.absoluteFilePath());
    } else if (!panel.path.isEmpty()) {
        setDirectory(start.absolutePath());
        selectFile(start.fileName());
    }
    if (isPortals_) return;
    if (panel.shouldEnablePath) restrictToEnabled();
    if (!panel.message.isEmpty()) showMessage();
}

void FilePanelDialog::restrictToEnabled() {
    setProxyModel(new EnabledPaths(panel_.shouldEnablePath, this));
}

void FilePanelDialog::proposeFolder(const QString &path) {
    // Among files a folder is chosen from the one above it only, unless its path stands where names are
    // typed.
    if (auto *name = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))) name->setText(path);
}

void FilePanelDialog::showMessage() {
    auto *label = new QLabel(panel_.message);
    label->setObjectName(QStringLiteral("message"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMargin(layout()->contentsMargins().left());
    layout()->setMenuBar(label);  // The one place of a finished layout that is above the rest.
}

QString FilePanelDialog::chosenPath() const {
    const QStringList files = selectedFiles();
    return files.isEmpty() ? QString() : QFileInfo(files.first()).absoluteFilePath();
}

void FilePanelDialog::accept() {
    const QString path = chosenPath();
    // A name can be typed even if it can't be clicked. In a sandbox, what is chosen has another path inside.
    if (!isPortals_ && panel_.shouldEnablePath && !panel_.shouldEnablePath(path)) {
        QApplication::beep();
        return;
    }
    // Left to itself, the dialog would go into a folder that is chosen among files.
    const bool isChosenFolder =
        panel_.canChooseDirectories && acceptMode() == AcceptOpen && QFileInfo(path).isDir();
    if (isChosenFolder) {
        done(Accepted);
    } else {
        QFileDialog::accept();
    }
}

}  // namespace leafwright

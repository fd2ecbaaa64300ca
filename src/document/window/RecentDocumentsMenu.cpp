#include "document/window/RecentDocumentsMenu.h"

#include "system/DocumentController.h"
#include "texts/Translated.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace leafwright {

namespace {

constexpr Translated translated{"RecentDocumentsMenu"};

/// A folder as people write it, with "~" for their own.
QString folderName(const QString &path) {
    const QString folder = QFileInfo(path).path();
    const QString home = QDir::homePath();
    if (folder == home) return QStringLiteral("~");
    return folder.startsWith(home + u'/') ? u'~' + folder.sliced(home.size()) : folder;
}

void fill(QMenu &recent, DocumentController &controller) {
    recent.clear();
    const QStringList paths = controller.recentDocuments();
    QStringList names = recentDocumentNames(paths);
    for (qsizetype i = 0; i < paths.size(); ++i) {
        // An ampersand would mark a letter to be pressed.
        QAction *action = recent.addAction(names[i].replace(u'&', QStringLiteral("&&")));
        action->setToolTip(paths[i]);
        QObject::connect(action, &QAction::triggered, &controller, [&controller, path = paths[i]] {
            controller.openDocumentWithContentsOfURL(path, true);
        });
    }
    recent.addSeparator();
    QObject::connect(recent.addAction(translated("Clear List")), &QAction::triggered, &controller,
                     &DocumentController::clearRecentDocuments);
    recent.setToolTipsVisible(true);
    recent.setEnabled(!paths.isEmpty());
}

}  // namespace

QStringList recentDocumentNames(const QStringList &paths) {
    QStringList names;
    for (const QString &path : paths)
        names.append(QFileInfo(path).fileName());
    QStringList result;
    for (qsizetype i = 0; i < paths.size(); ++i)
        result.append(names.count(names[i]) > 1 ? names[i] + QStringLiteral(" — ") + folderName(paths[i])
                                                : names[i]);
    return result;
}

void addRecentDocuments(QMenu &menu, QAction *before, DocumentController &controller) {
    auto *recent = new QMenu(translated("Open Recent"), &menu);
    menu.insertMenu(before, recent);
    QObject::connect(&menu, &QMenu::aboutToShow, recent,
                     [recent, &controller] { fill(*recent, controller); });
}

}  // namespace leafwright

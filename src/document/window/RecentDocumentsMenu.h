#pragma once

#include <QStringList>

class QAction;
class QMenu;

namespace leafwright {

class DocumentController;

/// Puts a menu with the files opened lately into another one, made anew whenever that is shown.
/// @param before what it stands before @param controller must outlive the menu
void addRecentDocuments(QMenu &menu, QAction *before, DocumentController &controller);

/// How these files are called in a menu: by their names, and with their folders where two names are equal.
QStringList recentDocumentNames(const QStringList &paths);

}  // namespace leafwright

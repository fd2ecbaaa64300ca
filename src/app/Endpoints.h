#pragma once

#include <QUrl>

namespace leafwright {

// Where the commands of the Help menu lead.

QUrl homePage();
QUrl tutorialsPage();
/// The program's page in the desktop's application store.
QUrl storePage();
/// Begins a message to those who help. @param version of the program, for its subject
QUrl supportMail(const QString &version);
/// Begins a message with an opinion.
QUrl feedbackMail();

}  // namespace leafwright

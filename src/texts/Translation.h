#pragma once

#include <QString>

class QCoreApplication;
class QLocale;

namespace leafwright {

/// Translates the program's texts, and Qt's own, into the user's language as far as there are translations;
/// the rest stays English. To be called once, before the first text is shown.
/// @param application owns the translators from then on
/// @param folder of the program's translations; see translationsFolder()
void installTranslators(QCoreApplication &application, const QLocale &locale, const QString &folder);

/// The folder of the translations: beside the installed program's data, or in the tree it was built in.
QString translationsFolder();

}  // namespace leafwright

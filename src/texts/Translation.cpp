#include "texts/Translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace leafwright {

namespace {

/// @param name of the files, up to the language: "leafwright" of "leafwright_de.qm"
void installTranslator(QCoreApplication &application, const QLocale &locale, const QString &name,
                       const QString &folder) {
    auto *translator = new QTranslator(&application);
    if (translator->load(locale, name, QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator);
    } else {
        delete translator;
    }
}

}  // namespace

void installTranslators(QCoreApplication &application, const QLocale &locale, const QString &folder) {
    // The one installed last is asked first.
    installTranslator(application, locale, QStringLiteral("qtbase"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    installTranslator(application, locale, QStringLiteral("leafwright"), folder);
}

QString translationsFolder() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed = programs.filePath(QStringLiteral("../share/leafwright/translations"));
    return QDir::cleanPath(QDir(installed).exists() ? installed
                                                    : programs.filePath(QStringLiteral("../translations")));
}

}  // namespace leafwright

// Makes pictures of the windows that belong to no document:
//
//     dialogshot preferences|about|update OUT.png [--dark]
//
// Runs on any platform, also on the offscreen one.

#include "Pictures.h"
#include "app/AboutWindow.h"
#include "app/AppDelegate.h"
#include "app/PreferencesWindow.h"
#include "app/QtPlatform.h"
#include "app/UpdateWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <cstdio>

namespace {

/// The only window of the name that there is; null if there is none.
QWidget *topLevelWidget(const QString &name) {
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->objectName() == name) return window;
    return nullptr;
}

leafwright::AppcastItem newerVersion() {
    return {
        QVersionNumber(2), QStringLiteral("2.0"),
        QStringLiteral("<h3>New in 2.0</h3><ul><li>AutoTOC recognises numbered headings.</li><li>Saving is "
                       "<b>twice as fast</b> for large manuals.</li></ul>"),
        QUrl(QStringLiteral("https://leafwright.org/"))};
}

}  // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Leafwright"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("dark"), QStringLiteral("with dark colours")});
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (parser.isSet(QStringLiteral("dark"))) QApplication::setPalette(darkPalette());

    const QTemporaryDir settings;
    leafwright::QtPlatform platform(settings.filePath(QStringLiteral("settings.ini")));
    platform.userDefaults().setValue(QStringLiteral("LeafwrightShowHelpOnStart"), false);
    leafwright::AppDelegate delegate(platform);
    delegate.applicationDidFinishLaunching();
    platform.userDefaults().removeValue(QStringLiteral("LeafwrightShowHelpOnStart"));
    leafwright::UpdateWindow updates(delegate.sharedUpdater(), platform);
    updates.setObjectName(QStringLiteral("update"));
    const QString which = arguments.value(0);
    if (which == u"preferences") delegate.showPreferences();
    if (which == u"about") delegate.orderFrontStandardAboutPanel();
    if (which == u"update") Q_EMIT delegate.sharedUpdater().updateFound(newerVersion());

    QWidget *window = topLevelWidget(which);
    if (!window || arguments.size() != 2) {
        std::fputs("usage: dialogshot preferences|about|update OUT.png [--dark]\n", stderr);
        return 2;
    }
    constexpr int longEnoughToDraw = 300;
    handleEventsFor(longEnoughToDraw);
    return window->grab().save(arguments[1]) ? 0 : 1;
}

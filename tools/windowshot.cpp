// Makes pictures of the real window for the documentation:
//
//     windowshot FILE.pdf OUT.png [--dark] [--size WIDTHxHEIGHT]
//
// Runs on any platform, also on the offscreen one. QT_SCALE_FACTOR=2 gives a picture for dense screens.

#include "Pictures.h"
#include "app/Defaults.h"
#include "desktop/OKNSOutlineView.h"
#include "desktop/QtPlatform.h"
#include "document/DocumentWindow.h"
#include "document/MyDocument.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <cstdio>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("dark"), QStringLiteral("with dark colours")});
    parser.addOption({QStringLiteral("size"), QStringLiteral("of the window"), QStringLiteral("WxH"),
                      QStringLiteral("1200x800")});
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2) {
        std::fputs("usage: windowshot FILE.pdf OUT.png [--dark] [--size WIDTHxHEIGHT]\n", stderr);
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (parser.isSet(QStringLiteral("dark"))) QApplication::setPalette(darkPalette());

    const QTemporaryDir settings;
    leafwright::QtPlatform platform(settings.filePath(QStringLiteral("settings.ini")));
    leafwright::registerDefaults(platform.userDefaults());
    leafwright::MyDocument document(platform);
    if (!document.readFromURL(files[0])) return 1;
    document.makeWindowControllers();
    const QStringList size = parser.value(QStringLiteral("size")).split(u'x');
    document.window()->resize(size.value(0).toInt(), size.value(1).toInt());
    document.finishLoading();
    for (const leafwright::TreeNode *node : document.treecontroller().arrangedObjects().childNodes())
        document.outlineview()->expandItem(*node, true);
    constexpr int longEnoughToDraw = 2000;
    handleEventsFor(longEnoughToDraw);
    return document.window()->grab().save(files[1]) ? 0 : 1;
}

// Makes pictures of the real window for the documentation:
//
//     windowshot FILE.pdf OUT.png [--dark] [--size WIDTHxHEIGHT] [--find TEXT] [--filter TEXT]
//                [--autotoc | --contents ENTRY]
//
// --find and --filter look for a text on the pages and in the outline.
//
// With --contents it runs Find Contents and looks at an entry of the proposal, counted from 1; 0 for none.
//
// With --autotoc it runs AutoTOC and takes a picture of the screen at each step, OUT-1.png and so on. While
// the first step runs, something else covers half of the window for a moment: what was under it must be there
// again. For that a screen is needed; one that nobody sees will do (xvfb-run).
//
// Runs on any platform, also on the offscreen one. QT_SCALE_FACTOR=2 gives a picture for dense screens.

#include "Pictures.h"
#include "app/Defaults.h"
#include "app/QtPlatform.h"
#include "document/MyDocument.h"
#include "document/commands/AutoTOCCommands.h"
#include "document/commands/ContentsCommands.h"
#include "document/window/ContentsProposal.h"
#include "document/window/DocumentWindow.h"
#include "outlineview/OKNSOutlineView.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <cstdio>

namespace {

/// Takes a picture of the screen whenever the progress of AutoTOC has come to another step.
class ProgressPictures : public QObject {
public:
    ProgressPictures(QWidget &window, QString out) : window_(window), out_(std::move(out)) {
        connect(&timer_, &QTimer::timeout, this, &ProgressPictures::look);
        timer_.start(0);
    }

    /// How many steps were seen.
    int count() const { return static_cast<int>(states_.size()); }

private:
    void look() {
        const QString state = stateOfProgress();
        if (state.isEmpty()) return;
        if (!states_.contains(state)) {
            states_.append(state);
            if (states_.size() == 1) cover();
        }
        if (states_.size() == 1) {
            // What was covered has time to be drawn before the picture is taken.
            constexpr int uncoverAt = 80;  // milliseconds
            constexpr int pictureAt = 200;
            if (sinceCovered_.elapsed() >= uncoverAt) cover_.hide();
            if (sinceCovered_.elapsed() < pictureAt) return;
        }
        take(states_.indexOf(state) + 1);
    }

    void cover() {
        cover_.setWindowFlags(Qt::ToolTip);
        cover_.setStyleSheet(QStringLiteral("background: black"));
        cover_.setGeometry(QRect(window_.mapToGlobal(QPoint()), window_.size() / 2));
        cover_.show();
        sinceCovered_.start();
    }

    void take(qsizetype number) {
        const QString path = QStringLiteral("%1-%2.png").arg(out_).arg(number);
        if (taken_.contains(path)) return;
        taken_.append(path);
        window_.screen()->grabWindow(0).save(path);
    }

    /// What stands at the three steps; empty while there is no sheet.
    QString stateOfProgress() const {
        QString state;
        for (const char *number : {"1", "2", "3"}) {
            const auto *text =
                window_.findChild<QLabel *>(QLatin1String("guessPDFText") + QLatin1String(number));
            if (!text || !text->window()->isVisible()) return {};
            state += text->isHidden() ? QStringLiteral("*") : text->text() + u'|';
        }
        return state;
    }

    QWidget &window_;
    QString out_;
    QTimer timer_;
    QStringList states_;
    QStringList taken_;
    QWidget cover_;
    QElapsedTimer sinceCovered_;
};

/// Proposes what is found. @param wanted the entry to be looked at, from 1; 0 for none
void showProposal(leafwright::MyDocument &document, int wanted) {
    document.contentsCommands().findContents();
    const leafwright::ContentsProposal *proposal = document.contentsCommands().proposal();
    if (!proposal || wanted == 0) return;
    auto *tree = proposal->findChild<QTreeWidget *>(QStringLiteral("contentsEntries"));
    QTreeWidgetItemIterator item(tree);
    for (int i = 1; i < wanted && *item; ++i)
        ++item;
    tree->setCurrentItem(*item);
}

/// Gives the command of a field, and fills that in.
void fillIn(leafwright::MyDocument &document, const QString &selector, const QString &text) {
    if (text.isEmpty()) return;
    document.actions().perform(selector);
    document.myWindow()->fieldBarOf(selector)->findChild<QLineEdit *>()->setText(text);
    document.finishSearches();
}

/// What the options say is done before the picture is taken.
void prepare(leafwright::MyDocument &document, const QCommandLineParser &parser) {
    for (const leafwright::TreeNode *node : document.treecontroller().arrangedObjects().childNodes())
        document.outlineview()->expandItem(*node, true);
    if (parser.isSet(QStringLiteral("contents")))
        showProposal(document, parser.value(QStringLiteral("contents")).toInt());
    fillIn(document, QStringLiteral("findOnPages:"), parser.value(QStringLiteral("find")));
    fillIn(document, QStringLiteral("filterOutline:"), parser.value(QStringLiteral("filter")));
}

}  // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("dark"), QStringLiteral("with dark colours")});
    parser.addOption({QStringLiteral("size"), QStringLiteral("of the window"), QStringLiteral("WxH"),
                      QStringLiteral("1200x800")});
    parser.addOption({QStringLiteral("autotoc"), QStringLiteral("of the steps of AutoTOC")});
    parser.addOption({QStringLiteral("contents"), QStringLiteral("with what Find Contents proposes"),
                      QStringLiteral("ENTRY")});
    parser.addOption({QStringLiteral("find"), QStringLiteral("on the pages"), QStringLiteral("TEXT")});
    parser.addOption({QStringLiteral("filter"), QStringLiteral("the outline"), QStringLiteral("TEXT")});
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2) {
        std::fputs(
            "usage: windowshot FILE.pdf OUT.png [--dark] [--size WIDTHxHEIGHT] [--find TEXT] "
            "[--filter TEXT] [--autotoc | --contents ENTRY]\n",
            stderr);
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
    if (parser.isSet(QStringLiteral("autotoc"))) {
        constexpr int longEnoughToShow = 300;
        handleEventsFor(longEnoughToShow);
        const ProgressPictures pictures(*document.window(), files[1].chopped(4));
        document.autoTOCCommands().runAutoTOCWithFeedback();
        constexpr int stepsAndTheirEnd = 4;
        return pictures.count() == stepsAndTheirEnd ? 0 : 1;
    }
    document.finishLoading();
    prepare(document, parser);
    constexpr int longEnoughToDraw = 2000;
    handleEventsFor(longEnoughToDraw);
    return document.window()->grab().save(files[1]) ? 0 : 1;
}

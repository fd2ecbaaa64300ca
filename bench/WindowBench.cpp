#include "bench/MainThread.h"
#include "document/MyDocument.h"
#include "document/PageFinder.h"
#include "document/commands/FindCommands.h"
#include "document/window/DocumentWindow.h"
#include "document/window/FindBar.h"
#include "document/window/OutlineFilter.h"
#include "outlineview/OKNSOutlineView.h"
#include "script/ScriptFiles.h"
#include "script/ScriptPlayer.h"
#include "view/LabelPDFView.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <cstdio>

// A document's window with 50,000 entries, used as someone does who is in a hurry.

namespace leafwright::bench {

namespace {

constexpr int entries = 50'000;
constexpr int entriesOfAChapter = 10;
constexpr int ticksAKey = 12;  // five keys a second

class Window {
public:
    Window(MeasuringApplication &application, MyDocument &document, int ticks)
        : application_(application), document_(document), ticks_(ticks), window_(*document.myWindow()) {}

    void use() {
        window_.resize(1600, 1200);
        window_.show();
        document_.finishLoading();
        setOutline();
        everyTick(2 * ticksAKey, [](int) {});
        application_.report("50,000 entries");
        scroll("scrolling all entries");
        filter();
        find();
    }

private:
    /// Chapters of ten, all unfolded.
    void setOutline() {
        MyOutlineItem::Children chapters;
        for (int i = 0; i < entries; ++i) {
            auto item = std::make_unique<MyOutlineItem>();
            item->setPageTitle(QStringLiteral("Section %1").arg(i));
            item->setPageLabel(QString::number(i * qint64{document_.pdfDoc()->pageCount()} / entries + 1));
            if (i % entriesOfAChapter == 0) {
                chapters.push_back(std::move(item));
            } else {
                chapters.back()->appendChild(std::move(item));
            }
        }
        document_.root().setChildren(std::move(chapters));
        for (const TreeNode *chapter : document_.treecontroller().arrangedObjects().childNodes())
            document_.outlineview()->expandItem(*chapter, true);
    }

    void scroll(const char *what) {
        scrollBar(*document_.outlineview()->verticalScrollBar());
        application_.report(what);
    }

    void scrollBar(QScrollBar &bar) {
        everyTick(ticks_ / 2, [&](int i) { bar.setValue(bar.maximum() * qint64{i} / (ticks_ / 2)); });
        everyTick(ticks_ / 10, [&](int i) { bar.setValue(bar.maximum() / 2 - 3 * i); });
    }

    /// A text goes key by key, as nobody waits for what the first finds.
    void type(QLineEdit &field, const QString &text) {
        everyTick(static_cast<int>(text.size()) * ticksAKey, [&](int i) {
            const QString letter = text[i / ticksAKey];
            if (i % ticksAKey == 0) press(field, letter == u"\b" ? Qt::Key_Backspace : 0, letter);
        });
    }

    static void press(QWidget &widget, int key, const QString &text = {}) {
        QCoreApplication::postEvent(&widget, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
        QCoreApplication::postEvent(&widget, new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier, text));
    }

    void filter() {
        OutlineFilter &filter = *window_.outlineFilter();
        auto &field = *filter.findChild<QLineEdit *>(QStringLiteral("filterField"));
        filter.open();
        const auto typeAndRest = [&](const char *what, const QString &text) {
            type(field, text);
            everyTick(2 * ticksAKey, [](int) {});
            application_.report(what);
        };
        application_.report("");
        typeAndRest("a letter that all have", QStringLiteral("s"));
        std::printf("  %s\n", qPrintable(filter.result()));
        scroll("scrolling what it shows");
        typeAndRest("letters to a text of all", QStringLiteral("ection "));
        typeAndRest("digits", QStringLiteral("49"));
        std::printf("  %s\n", qPrintable(filter.result()));
        scroll("scrolling what they show");
        typeAndRest("more digits", QStringLiteral("99"));
        std::printf("  %s\n", qPrintable(filter.result()));
        typeAndRest("taken back", QStringLiteral("\b\b\b\b"));
        document_.outlineview()->selectAll();
        everyTick(ticksAKey, [](int) {});
        application_.report("all selected");
        typeAndRest("a digit with that selection", QStringLiteral("1"));
        std::printf("  %s\n", qPrintable(filter.result()));
        scroll("scrolling with a selection");
        press(field, Qt::Key_Escape);
        everyTick(2 * ticksAKey, [](int) {});
        application_.report("filter cleared");
        document_.outlineview()->deselectAll();
        everyTick(2, [](int) {});
        filter.open();
        typeAndRest("a text that few have", QStringLiteral("4999"));
        press(field, Qt::Key_Escape);
        everyTick(2 * ticksAKey, [](int) {});
        application_.report("cleared again");
        scroll("scrolling all entries again");
    }

    void find() {
        FindCommands &commands = document_.findCommands();
        commands.findOnPages();
        auto &field = *window_.findBar()->findChild<QLineEdit *>(QStringLiteral("findField"));
        type(field, QStringLiteral("e"));
        scrollPages("e found while pages scroll");
        waitUntil([&] { return !commands.finder()->isSearching(); });
        std::printf("  %s\n", qPrintable(window_.findBar()->result()));
        application_.report("and the rest");
        scrollPages("scrolling with all marked");
        type(field, QStringLiteral("\bexample"));
        application_.report("typing another");
        type(field, QString(QStringLiteral("example").size(), u'\b') + u'e');
        waitUntil([&] { return !commands.finder()->isSearching(); });
        application_.report("and e again");
        everyTick(ticks_ / 3, [&](int i) { i % 4 == 0 ? commands.findNext() : void(); });
        application_.report("next");
        everyTick(ticks_ / 3, [&](int i) { i % 4 == 0 ? commands.findPrevious() : void(); });
        application_.report("previous");
        window_.findBar()->dismiss();
        everyTick(ticksAKey, [](int) {});
        application_.report("find closed");
    }

    void scrollPages(const char *what) {
        QScrollBar &bar = *document_.pdfview()->verticalScrollBar();
        scrollBar(bar);
        application_.report(what);
    }

    MeasuringApplication &application_;
    MyDocument &document_;
    int ticks_;
    DocumentWindow &window_;
};

}  // namespace

bool useWindow(MeasuringApplication &application, const QString &path, int ticks) {
    const QTemporaryDir folder;
    script::ScriptFiles files(folder.path());
    script::ScriptPlayer player(files, nullptr);
    if (const auto error = player.open(path)) {
        std::fprintf(stderr, "leafwright-scroll-bench: %s\n", qPrintable(error->message));
        return false;
    }
    Window(application, *player.document(), ticks).use();
    std::printf("memory at most %.0f MB, now %.0f MB\n", memory("VmHWM"), memory("VmRSS"));
    return true;
}

}  // namespace leafwright::bench

#include "document/window/HeadingMapModel.h"
#include "support/WindowFixture.h"

#include <QSignalSpy>
#include <QThread>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

/// Hooks that tell a test of their calls.
class ToldHooks final : public UndoSupport {
public:
    using Told = std::function<void(const QString &hook, const MyOutlineItem &item)>;
    ToldHooks(MyOutlineItem &root, Told told) : UndoSupport(root), told_(std::move(told)) {}
    void registerObserversForOutlineItem(MyOutlineItem &item) override { told_("on", item); }
    void unregisterObserversForOutlineItem(MyOutlineItem &item) override { told_("off", item); }

private:
    Told told_;
};

/// Calls a function when a widget is shown.
class WhenShown final : public QObject {
public:
    explicit WhenShown(std::function<void()> shown) : shown_(std::move(shown)) {}

protected:
    bool eventFilter(QObject * /*watched*/, QEvent *event) override {
        if (event->type() == QEvent::Show) shown_();
        return false;
    }

private:
    std::function<void()> shown_;
};

class Loading : public test::WindowFixture {
protected:
    static PdfBuilder pages(int count) {
        PdfBuilder pdf;
        pdf.addNumberedPages(count);
        return pdf;
    }

    static PdfBuilder pagesWithAnEntry() {
        PdfBuilder pdf = pages(2);
        addOutline(pdf, {{"(One)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"}});
        return pdf;
    }

    /// Each page has a heading and body text below it.
    static PdfBuilder pagesWithHeadings(int count) {
        std::string content = PdfBuilder::showText("F2", 24, 72, 700, "A heading in large letters");
        for (int line = 0; line < 20; ++line)
            content +=
                PdfBuilder::showText("F1", 10, 72, 660 - 12 * line, "Body text that fills most of the page.");
        PdfBuilder pdf;
        for (int i = 0; i < count; ++i)
            pdf.addPage(content);
        return pdf;
    }

    /// What the alerts said, in their order.
    QStringList messages() const {
        QStringList result;
        for (const Alert &alert : platform.alerts)
            result.append(alert.message);
        return result;
    }

    void warnAboutVersions() {
        platform.userDefaults().setValue("LeafwrightShouldWarnAboutPDFVersion", true);
    }
};

TEST_F(Loading, AnOrdinaryFileOpensWithoutAnAlert) {
    open(pages(3));
    EXPECT_EQ(platform.beeps, 0);
    EXPECT_THAT(platform.alerts, IsEmpty());
    EXPECT_TRUE(document.allowTOCediting());
    EXPECT_FALSE(document.lockTOCediting());
    EXPECT_TRUE(document.outlineview()->isEnabled());
    EXPECT_TRUE(document.window()->isVisible());
}

TEST_F(Loading, AnEncryptedFileIsToldOfAndItsOutlineIsDisabled) {
    open(pages(1), {.ownerPassword = "owner"});
    EXPECT_EQ(platform.beeps, 1);
    ASSERT_THAT(messages(), ElementsAre("This PDF is encrypted"));
    EXPECT_EQ(platform.alerts[0].informativeText,
              "Unfortunately, Leafwright cannot edit Table of Contents in encrypted PDFs.");
    EXPECT_THAT(platform.alerts[0].buttons, ElementsAre("OK"));
    EXPECT_FALSE(document.allowTOCediting());
    EXPECT_FALSE(document.outlineview()->isEnabled());
}

TEST_F(Loading, ALockedFileIsEncryptedTooAndGetsBothAlertsInOrder) {
    open(pages(1), {.userPassword = "user", .ownerPassword = "owner"});
    EXPECT_EQ(platform.beeps, 2);
    ASSERT_THAT(messages(), ElementsAre("This PDF is locked", "This PDF is encrypted"));
    EXPECT_EQ(platform.alerts[0].informativeText,
              "Unfortunately, Leafwright cannot edit Table of Contents in locked PDFs.");
    EXPECT_FALSE(document.allowTOCediting());
    EXPECT_FALSE(document.outlineview()->isEnabled());
}

TEST_F(Loading, ALockedFileIsClosedToEditingFromItsFirstAlertOn) {
    QMap<QString, bool> allowed;
    platform.whenAsked = [&] { allowed[platform.alerts.last().message] = document.allowTOCediting(); };
    open(pages(1), {.userPassword = "user", .ownerPassword = "owner"});
    EXPECT_EQ(allowed.value("This PDF is encrypted", true), false) << "the alert before has said so";
}

TEST_F(Loading, AllThreeAlertsComeInTheirOrder) {
    warnAboutVersions();
    open(pages(1), {.version = "1.6", .userPassword = "user", .ownerPassword = "owner"});
    ASSERT_EQ(platform.alerts.size(), 3);
    EXPECT_EQ(messages().first(2), (QStringList{"This PDF is locked", "This PDF is encrypted"}));
    EXPECT_TRUE(messages()[2].startsWith("This PDF (version "));
}

/// The load sequence, watched from wherever it can be seen.
class LoadSequence : public Loading {
protected:
    void SetUp() override {
        registerDefaults(platform.userDefaults());
        warnAboutVersions();
        ASSERT_TRUE(
            document.readFromURL(save(pagesWithAnEntry(), {.version = "1.6", .ownerPassword = "owner"})));
        platform.whenAsked = [this] { note(platform.alerts.last().message.section(' ', 0, 2)); };
        document.setUndoSupport(std::make_unique<ToldHooks>(
            document.root(), [this](const QString &hook, const MyOutlineItem &item) {
                note("hook " + hook + ' ' + item.pageTitle());
            }));
        QObject::connect(&document.treecontroller(), &QAbstractItemModel::rowsInserted, &watch,
                         [this] { note("entry"); });
        QObject::connect(&document, &MyDocument::windowMade, &watch, [this] {
            document.window()->installEventFilter(&watch);
            QObject::connect(document.pdfview(), &PDFView::documentChanged, &watch,
                             [this] { note("pages"); });
        });
    }

    /// The document goes after what is noted in.
    void TearDown() override { document.setUndoSupport(std::make_unique<UndoSupport>(document.root())); }

    /// Notes a step, and all that is there by then.
    void note(const QString &step) {
        QStringList there;
        if (document.pdfview()->document()) there.append("pages");
        if (!document.pdfMapPageLabelToIndex().isEmpty()) there.append("labels");
        if (!document.root().children().empty()) there.append("outline");
        if (!document.outlineview()->isEnabled()) there.append("disabled");
        if (document.window()->isVisible()) there.append("window");
        if (!document.renamingDefaults().addPrefixPrefixTerm.isEmpty()) there.append("renaming");
        if (document.splitViewDelegate()) there.append("priorities");
        if (!document.listH1H2H3Config().empty()) there.append("map");
        steps.append(step + ": " + there.join(' '));
    }

    QStringList steps;
    WhenShown watch{[this] { note("window"); }};
};

TEST_F(LoadSequence, IsFixed) {
    document.makeWindowControllers();
    EXPECT_THAT(steps,
                ElementsAre("This PDF is: ", "This PDF (version: ", "pages: pages",
                            "entry: pages labels outline", "hook on Untitled: pages labels outline disabled",
                            "hook on One: pages labels outline disabled",
                            "window: pages labels outline disabled window"));
    steps.clear();
    note("in the end");
    EXPECT_THAT(steps, ElementsAre("in the end: pages labels outline disabled window renaming "
                                   "priorities"))
        << "the map comes later";
}

TEST_F(Loading, ADocumentThatGoesTakesItsHooksOffEveryItem) {
    QStringList off;
    {
        MyDocument other(platform);
        ASSERT_TRUE(other.readFromURL(save(pagesWithAnEntry())));
        other.makeWindowControllers();
        other.setUndoSupport(
            std::make_unique<ToldHooks>(other.root(), [&off](const QString &hook, const MyOutlineItem &item) {
                off.append(hook + ' ' + item.pageTitle());
            }));
        EXPECT_THAT(off, IsEmpty());
    }
    EXPECT_THAT(off, ElementsAre("off Untitled", "off One"));
}

TEST_F(Loading, VersionFourGivesNoWarning) {
    warnAboutVersions();
    open(pages(1), {.version = "1.4"});
    EXPECT_THAT(platform.alerts, IsEmpty());
}

TEST_F(Loading, VersionFiveWarnsAndStaysEditable) {
    warnAboutVersions();
    open(pages(1), {.version = "1.5"});
    EXPECT_EQ(platform.beeps, 1);
    ASSERT_THAT(messages(), ElementsAre("This PDF (version 1.5) may not save correctly"));
    EXPECT_EQ(
        platform.alerts[0].informativeText,
        "Leafwright works best with PDF versions 1.4 and lower. Use the Preview feature to test the embedded "
        "TOC before saving changes back to the original PDF.");
    EXPECT_TRUE(document.allowTOCediting());
    EXPECT_TRUE(document.outlineview()->isEnabled());
}

TEST_F(Loading, VersionTwoWarns) {
    warnAboutVersions();
    open(pages(1), {.version = "2.0"});
    EXPECT_THAT(messages(), ElementsAre("This PDF (version 2.0) may not save correctly"));
}

TEST_F(Loading, WithoutTheSettingNoVersionWarns) {
    open(pages(1), {.version = "1.7"});
    EXPECT_THAT(platform.alerts, IsEmpty());
}

TEST_F(Loading, AFileWithoutOutlineShowsAnEmptyTree) {
    open(pages(2));
    EXPECT_THAT(document.root().children(), IsEmpty());
    EXPECT_EQ(document.treecontroller().rowCount({}), 0);
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Loading, TheOutlineIsShownAsATree) {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    addOutline(pdf, {{"(One)",
                      "[" + pdf.pageReference(0) + " /XYZ 72 700 null]",
                      {{"(Inner)", "[" + pdf.pageReference(1) + " /XYZ 72 600 null]"}}},
                     {"(Two)", "[" + pdf.pageReference(2) + " /XYZ 72 500 null]"}});
    open(pdf);
    EXPECT_EQ(node({0})->representedObject()->pageTitle(), "One");
    EXPECT_EQ(node({0, 0})->representedObject()->pageTitle(), "Inner");
    EXPECT_EQ(node({1})->representedObject()->pageLabel(), "3");
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_FALSE(document.window()->isWindowModified());
}

TEST_F(Loading, AnEntryWithoutAParticularSpotMakesTheFreshDocumentEdited) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    addOutline(pdf, {{"(One)", "[" + pdf.pageReference(0) + " /Fit]"}});
    open(pdf);
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_TRUE(document.window()->isWindowModified());
}

TEST_F(Loading, PagesThatShareALabelLeaveTheLastInTheMap) {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /P (iv) >> 1 << /P (iv) >> 2 << /S /D >>] >>");
    open(pdf);
    EXPECT_EQ(document.pdfMapPageLabelToIndex().value("iv"), 1);
}

TEST_F(Loading, ThePagesAreShownFromTheFirstOneOn) {
    open(pages(3));
    EXPECT_EQ(document.pdfview()->document(), document.pdfDoc());
    EXPECT_EQ(document.pdfview()->currentPage(), document.pdfDoc()->page(0));
    EXPECT_EQ(document.pdfview()->pageLabelLocation(), "Q1");
    EXPECT_TRUE(document.pdfview()->autoScales());
    EXPECT_EQ(document.outlineview()->indentation(), 17);
}

TEST_F(Loading, TheFirstPageIsShownFromItsTopHoweverItIsTurnedOrCut) {
    registerDefaults(platform.userDefaults());
    for (const char *entries : {"", "/Rotate 90", "/Rotate 180", "/Rotate 270",
                                "/MediaBox [0 0 1000 1400] /CropBox [300 500 900 1300]",
                                "/MediaBox [-200 -900 400 -100]", "/CropBox [100 100 500 700] /Rotate 90"}) {
        PdfBuilder pdf;
        for (int i = 0; i < 3; ++i)
            pdf.addPage({}, entries);
        MyDocument other(platform);
        ASSERT_TRUE(other.readFromURL(save(pdf)));
        other.makeWindowControllers();
        other.finishLoading();
        const LabelPDFView &view = *other.pdfview();
        const PDFPage &first = *other.pdfDoc()->page(0);
        const QRectF shown = view.convertRectFromPage(first.cropBox(), first);
        EXPECT_NEAR(shown.top(), 0, 1) << entries;
        EXPECT_NEAR(shown.center().x(), view.viewport()->width() / 2.0, 1) << entries;
    }
}

TEST_F(Loading, TheHeadingMapHasTheFontsAboveTheBodyText) {
    open(pagesWithHeadings(2));
    ASSERT_EQ(document.listH1H2H3Config().size(), 1U);
    HeadingMapModel &model = document.headingMapModel();
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.index(0, HeadingMapModel::LevelColumn).data(), "H1");
    EXPECT_TRUE(model.index(0, HeadingMapModel::FontColumn).data().toString().contains("Helvetica"));
    EXPECT_EQ(model.headerData(0, Qt::Horizontal), "Level");
    EXPECT_EQ(model.headerData(1, Qt::Horizontal), "Font");
    EXPECT_EQ(model.headerData(2, Qt::Horizontal), "Count");
    EXPECT_EQ(model.headerData(3, Qt::Horizontal), "Sample");
}

TEST_F(Loading, TheFirstPageIsOnTheScreenBeforeTheFontsAreCounted) {
    registerDefaults(platform.userDefaults());
    ASSERT_TRUE(document.readFromURL(save(pagesWithHeadings(5))));
    document.makeWindowControllers();
    bool pageIsShown = false;
    bool mapCameLater = false;
    QObject::connect(document.pdfview(), &PDFView::visiblePagesRendered, document.pdfview(), [&] {
        if (!std::exchange(pageIsShown, true)) mapCameLater = document.listH1H2H3Config().empty();
    });
    // A count that had begun by now would be as good as done when the first page comes.
    for (int i = 0; i < document.pdfDoc()->pageCount(); ++i)
        ASSERT_NE(document.pdfDoc()->pageText(i), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !document.listH1H2H3Config().empty(); }));
    EXPECT_TRUE(pageIsShown);
    EXPECT_TRUE(mapCameLater);
}

TEST_F(Loading, WhatWasSaidOfAnotherFileIsForgotten) {
    document.listH1H2H3Config() = {levelRecord(1, Font(FontFace{"Courier", "Courier"}, 30))};
    document.setUserHasCheckedPrintedPageNumbers(true);
    document.setPrintedPageOffset(7);
    document.setAllowTOCediting(false);
    document.setLockTOCediting(true);
    openWithoutWaiting(pages(1));
    EXPECT_TRUE(document.listH1H2H3Config().empty()) << "until the new one is guessed";
    EXPECT_FALSE(document.userHasCheckedPrintedPageNumbers());
    EXPECT_EQ(document.printedPageOffset(), 0U);
    EXPECT_TRUE(document.allowTOCediting());
    EXPECT_FALSE(document.lockTOCediting());
}

TEST_F(Loading, TheRenamingSheetsHaveSomethingToStartFrom) {
    open(pages(1));
    const auto &defaults = document.renamingDefaults();
    EXPECT_EQ(defaults.sequentialNumberingPrefix, "Ch");
    EXPECT_EQ(defaults.sequentialNumberingFirstNumber, 1);
    EXPECT_EQ(defaults.sequentialNumberingStepValue, 1);
    EXPECT_EQ(defaults.addPrefixPrefixTerm, "Ch");
}

TEST_F(Loading, ThePrintedPageOffsetIsEstimated) {
    PdfBuilder pdf;
    for (int i = 0; i < 12; ++i)
        pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "Text of a page " + std::to_string(i + 101)));
    open(pdf);
    EXPECT_EQ(static_cast<qint64>(document.printedPageOffset()), -100);
}

TEST_F(Loading, PagesMayBeReadInTheBackgroundWhileTheDocumentCloses) {
    platform.userDefaults().setValue("LeafwrightAllowPDFReadingInBackground", true);
    for (int i = 0; i < 3; ++i) {
        MyDocument other(platform);
        ASSERT_TRUE(other.readFromURL(save(pages(300))));
        other.makeWindowControllers();
    }
}

TEST_F(Loading, PagesAreReadInTheBackgroundIfTheSettingSaysSo) {
    // No event is handled here, so that the heading map is not guessed: nobody else reads all pages.
    const auto read = [](const MyDocument &each) {
        int count = 0;
        for (int i = 0; i < each.pdfDoc()->pageCount(); ++i)
            count += each.pdfDoc()->hasReadPageText(i);
        return count;
    };
    save(pages(60));
    MyDocument without(platform);
    MyDocument with(platform);
    for (MyDocument *each : {&without, &with}) {
        platform.userDefaults().setValue("LeafwrightAllowPDFReadingInBackground", each == &with);
        ASSERT_TRUE(each->readFromURL(dir.path("a.pdf")));
        each->makeWindowControllers();
    }
    const QDeadlineTimer patience(std::chrono::seconds(30));
    while (read(with) < 60 && !patience.hasExpired())
        QThread::msleep(1);
    EXPECT_EQ(read(with), 60);
    EXPECT_LE(read(without), 2) << "those that tell the offset of the printed page numbers";
}

TEST_F(Loading, ADocumentMayCloseWhileItsOffsetIsEstimated) {
    save(pages(40));
    for (int i = 0; i < 10; ++i) {
        MyDocument other(platform);
        ASSERT_TRUE(other.readFromURL(dir.path("a.pdf")));
        other.makeWindowControllers();
        static_cast<void>(other.printedPageOffset());
    }
}

TEST_F(Loading, TheDividersStandWhereTheyShould) {
    open(pages(1));
    const SplitView &split = *document.splitViewTopLevel();
    ASSERT_EQ(split.subviewCount(), 3);
    EXPECT_EQ(split.positionOfDividerAtIndex(0), 200);
    EXPECT_EQ(split.positionOfDividerAtIndex(1), 600 + split.dividerThickness())
        << "as near to 600 as the least widths of two panes and the divider between them allow";
    document.window()->show();
    document.window()->resize(1300, 800);
    EXPECT_EQ(split.positionOfDividerAtIndex(0), 200);
    EXPECT_GT(split.positionOfDividerAtIndex(1), 600 + split.dividerThickness())
        << "the pages get what is new";
}

TEST_F(Loading, APaneGivesUpItsRoomToANarrowerWindowInTheOrderOfPriorities) {
    open(pages(1));
    SplitView &split = *document.splitViewTopLevel();
    const auto narrowBy = [&](int points) {
        document.window()->resize(document.window()->width() - points, 800);
        return std::vector{split.lengthOfSubview(0), split.lengthOfSubview(1), split.lengthOfSubview(2)};
    };
    document.window()->show();
    document.window()->resize(1500, 800);
    split.setPositionOfDividerAtIndex(250, 0);
    split.setPositionOfDividerAtIndex(split.width() - 400, 1);
    const std::vector<double> before = narrowBy(0);
    ASSERT_GT(before[1], 500);
    const double pages = before[1] - 400;
    EXPECT_THAT(narrowBy(100), ElementsAre(before[0], before[1] - 100, before[2])) << "the pages first";
    EXPECT_THAT(narrowBy(static_cast<int>(pages) - 100 + 30), ElementsAre(before[0], 400, before[2] - 30))
        << "then the outline";
    EXPECT_THAT(narrowBy(static_cast<int>(before[2]) - 300 - 30 + 20), ElementsAre(before[0] - 20, 400, 300))
        << "the thumbnails last";
}

TEST_F(Loading, TheThumbnailsAreAsHighAsTheyShould) {
    PdfBuilder pdf;
    pdf.addPage("", "/MediaBox [0 0 300 600]");
    open(pdf);
    EXPECT_EQ(document.pdfthumbs()->thumbnailSize(), QSizeF(85, 170));
    EXPECT_EQ(document.pdfthumbs()->maximumNumberOfColumns(), 0);
    EXPECT_EQ(document.pdfthumbs()->labelFont().pointSizeF(), 17);
    EXPECT_EQ(document.pdfthumbs()->pdfView(), document.pdfview());
}

TEST_F(Loading, TheWindowCanNotBeMadeTooNarrowForItsPanes) {
    open(pages(1));
    document.window()->resize(100, 400);
    const auto panes = document.splitViewTopLevel()->subviews();
    EXPECT_GE(panes[0]->width(), 200);
    EXPECT_GE(panes[1]->width(), 400);
    EXPECT_GE(panes[2]->width(), 300);
}

}  // namespace
}  // namespace leafwright

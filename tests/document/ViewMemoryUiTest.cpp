#include "document/ViewMemory.h"
#include "support/CliFiles.h"
#include "support/WindowFixture.h"

#include <QDateTime>
#include <QDir>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// A file that is looked at, closed, and opened again.
class Views : public test::WindowFixture {
protected:
    void SetUp() override {
        new ViewMemory(document, folder);
        test::PdfBuilder pdf;
        pdf.addNumberedPages(9);
        addOutline(pdf, {{"(a)", "[0 /XYZ 72 700 null]", {{"(x)", "[1 /XYZ 72 700 null]"}}},
                         {"(b)", "[2 /XYZ 72 700 null]", {{"(y)", "[3 /XYZ 72 700 null]"}}}});
        open(pdf);
        document.myWindow()->resize(1200, 800);
    }
    QStringList files() { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }
    QString file() { return folder + '/' + files().value(0); }
    /// Closes a window, and opens the file anew.
    MyDocument &openAgain(MyDocument &closed) {
        EXPECT_TRUE(closed.myWindow()->close());
        others.push_back(std::make_unique<MyDocument>(platform));
        MyDocument &other = *others.back();
        new ViewMemory(other, folder);
        EXPECT_TRUE(other.readFromURL(closed.pdfURL()));
        other.makeWindowControllers();
        other.finishLoading();
        return other;
    }
    static bool isUnfolded(MyDocument &in, const IndexPath &path) {
        return in.outlineview()->isItemExpanded(*in.treecontroller().descendantNodeAtIndexPath(path));
    }

    QString folder = dir.path("state/views");
    std::vector<std::unique_ptr<MyDocument>> others;
};

TEST_F(Views, AFileIsShownAsItWasLeft) {
    document.outlineview()->expandItem(*node({1}));
    document.pdfview()->setScaleFactor(1.5);
    document.pdfview()->goToDestination({4, {0, 500}});
    document.splitViewTopLevel()->setPositionOfDividerAtIndex(700, 1);
    const QPointF seen = document.pdfview()->convertPointFromPage({100, 400}, *document.pdfDoc()->page(4));
    MyDocument &again = openAgain(document);
    EXPECT_EQ(again.pdfview()->scaleFactor(), 1.5);
    EXPECT_EQ(again.pdfview()->currentPage()->index(), 4);
    EXPECT_EQ(again.splitViewTopLevel()->positionOfDividerAtIndex(1), 700);
    const QPointF now = again.pdfview()->convertPointFromPage({100, 400}, *again.pdfDoc()->page(4));
    EXPECT_NEAR(now.y(), seen.y(), 2);
    EXPECT_FALSE(isUnfolded(again, {0}));
    EXPECT_TRUE(isUnfolded(again, {1}));
    EXPECT_FALSE(again.isDocumentEdited());
    EXPECT_EQ(QFile::permissions(folder) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions())
        << "nobody else's business";
}

TEST_F(Views, TheDividerBelowTheOutlineStaysWhereItWasLeft) {
    DocumentWindow &window = *document.myWindow();
    window.show();
    QCoreApplication::processEvents();
    const int before = window.outlineHeight();
    window.setOutlineHeight(before - 150);
    ASSERT_EQ(window.outlineHeight(), before - 150);
    ASSERT_TRUE(document.actions().perform("findContents:"));
    EXPECT_EQ(window.outlineHeight(), before - 150) << "what a panel takes is given back";
    MyDocument &again = openAgain(document);
    EXPECT_EQ(again.myWindow()->outlineHeight(), before - 150);
}

TEST_F(Views, ADividerThatWouldLeaveNothingStays) {
    DocumentWindow &window = *document.myWindow();
    window.show();
    QCoreApplication::processEvents();
    const int before = window.outlineHeight();
    for (const int height : {0, -5, 100'000})
        window.setOutlineHeight(height);
    EXPECT_EQ(window.outlineHeight(), before);
}

TEST_F(Views, APageThatFitsFitsAgain) {
    document.pdfview()->goToPage(document.pdfDoc()->page(7));
    MyDocument &again = openAgain(document);
    EXPECT_TRUE(again.pdfview()->autoScales());
    EXPECT_EQ(again.pdfview()->currentPage()->index(), 7);
}

TEST_F(Views, AnotherFileIsShownFromItsBeginning) {
    document.pdfview()->goToPage(document.pdfDoc()->page(7));
    EXPECT_TRUE(document.myWindow()->close());
    ASSERT_TRUE(QFile::copy(document.pdfURL(), dir.path("b.pdf")));
    MyDocument other(platform);
    new ViewMemory(other, folder);
    ASSERT_TRUE(other.readFromURL(dir.path("b.pdf")));
    other.makeWindowControllers();
    other.finishLoading();
    EXPECT_EQ(other.pdfview()->currentPage()->index(), 0);
}

TEST_F(Views, AnOutlineThatHasChangedStaysFolded) {
    document.outlineview()->expandItem(*node({1}));
    document.myWindow()->close();
    test::PdfBuilder pdf;
    pdf.addNumberedPages(3);
    addOutline(pdf, {{"(new)", "[0 /XYZ 72 700 null]", {{"(z)", "[1 /XYZ 72 700 null]"}}}});
    save(pdf);
    MyDocument &again = openAgain(document);
    EXPECT_FALSE(isUnfolded(again, {0}));
    EXPECT_EQ(again.pdfview()->currentPage()->index(), 0);
}

TEST_F(Views, NonsenseIsPassedOver) {
    document.myWindow()->close();
    ASSERT_EQ(files().size(), 1);
    for (const char *text :
         {"", "{", "[]",
          R"({"page": 1e300, "x": 1e300, "y": "a", "scale": -3, "dividers": [1], "unfolded": 7})",
          R"({"page": -5, "x": 1, "y": 1, "scale": 1e300, "dividers": ["a", 1e300], "entries": 4,
              "unfolded": [-1, 1e300, "x", 99]})"}) {
        test::saveBytes(file(), text);
        MyDocument other(platform);
        new ViewMemory(other, folder);
        ASSERT_TRUE(other.readFromURL(document.pdfURL()));
        other.makeWindowControllers();
        other.finishLoading();
        EXPECT_EQ(other.pdfview()->currentPage()->index(), 0) << text;
        EXPECT_TRUE(other.pdfview()->autoScales()) << text;
        EXPECT_FALSE(isUnfolded(other, {0})) << text;
    }
}

TEST_F(Views, OnlySoManyFilesAreRemembered) {
    ASSERT_TRUE(QDir().mkpath(folder));
    const QDateTime longAgo = QDateTime::currentDateTime().addDays(-1);
    for (int i = 0; i < ViewMemory::mostFiles + 3; ++i) {
        QFile old(folder + QStringLiteral("/%1.json").arg(i));
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        ASSERT_TRUE(old.setFileTime(longAgo.addSecs(i), QFileDevice::FileModificationTime));
    }
    test::saveBytes(folder + "/notes.txt", "mine");
    document.myWindow()->close();
    EXPECT_EQ(files().size(), ViewMemory::mostFiles + 1) << "and what is none of its own";
    EXPECT_FALSE(QFile::exists(folder + "/3.json"));
    EXPECT_TRUE(QFile::exists(folder + "/4.json"));
}

TEST_F(Views, AFolderThatCantBeMadeBothersNobody) {
    test::saveBytes(dir.path("state"), "in the way");
    EXPECT_TRUE(document.myWindow()->close());
    EXPECT_TRUE(platform.alerts.isEmpty());
}

}  // namespace
}  // namespace leafwright

#include "document/commands/FindContentsFixture.h"
#include "support/FakeProgram.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>

namespace leafwright {
namespace {

using test::PdfBuilder;

/// A window with pages that are pictures.
class ContentsOfScan : public FindContentsWindow {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        for (int i = 0; i < 10; ++i)
            pdf.addPage("0.5 g 100 100 200 300 re f");
        open(pdf);
    }
    /// A window with as many pages, some of which have text.
    void openWithText(int pages) {
        PdfBuilder pdf;
        for (int i = 0; i < 10; ++i) {
            const std::string title =
                "1." + std::to_string(i + 1) + " On " + std::string(6, static_cast<char>('a' + i));
            std::string text = PdfBuilder::showText("F2", 20, 72, 600, title);
            for (int line = 0; line < 20; ++line)
                text += PdfBuilder::showText("F1", 10, 72, 570 - 12 * line,
                                             "Words that say what there is to say.");
            pdf.addPage(i < pages ? text : "0.5 g 100 100 200 300 re f");
        }
        open(pdf);
    }
    Sheet *offer() {
        Sheet *sheet = document.openSheet();
        return sheet && sheet->objectName() == "recogniseTextSheet" ? sheet : nullptr;
    }
};

TEST_F(ContentsOfScan, WithoutTheProgramItsNameIsSaid) {
    const test::FakeProgram none("ocrmypdf", QByteArray());
    find();
    EXPECT_EQ(offer(), nullptr);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "The pages are images without text.");
    EXPECT_TRUE(platform.alerts[0].informativeText.contains("ocrmypdf"));
}

TEST_F(ContentsOfScan, RecognitionIsOfferedNotDone) {
    const test::FakeProgram program("ocrmypdf", "touch \"$(dirname \"$0\")/run\"; exit 1\n");
    find();
    ASSERT_TRUE(offer());
    EXPECT_FALSE(offer()->pressButton(1)) << "which scripts press unless they say otherwise";
    offer()->pressButton(0);
    EXPECT_EQ(proposal(), nullptr);
    EXPECT_FALSE(QFile::exists(program.path("run")));
}

TEST_F(ContentsOfScan, RecognisedTextIsReadAndTheFileStaysAsItIs) {
    const test::FakeProgram program("ocrmypdf",
                                    "while [ \"$1\" != -- ]; do [ \"$1\" = --language ] && echo \"$2\" > "
                                    "\"$(dirname \"$0\")/language\"; shift; done\n"
                                    "cp \"$(dirname \"$0\")/book.pdf\" \"$3\"\n");
    test::makeBook().save(program.path("book.pdf"));
    const QByteArray before = test::contentOf(document.pdfURL());
    find();
    ASSERT_TRUE(offer());
    qobject_cast<QLineEdit *>(offer()->field("ocrLanguage"))->setText(" deu ");
    offer()->pressButton(2);
    EXPECT_EQ(test::contentOf(program.path("language")), "deu\n");
    ASSERT_TRUE(proposal());
    entries().setCurrentItem(&chapter(1));
    EXPECT_TRUE(document.pdfview()->highlightedArea()) << "although there is no text to be marked";
    take();
    EXPECT_EQ(outline(), book);
    EXPECT_EQ(test::contentOf(document.pdfURL()), before);
}

TEST_F(ContentsOfScan, OfferedWhereManyPagesHaveNoText) {
    const test::FakeProgram program("ocrmypdf", "exit 1\n");
    openWithText(7);
    find();
    ASSERT_TRUE(offer());
    EXPECT_TRUE(offer()->findChild<QLabel *>()->text().startsWith("3 of 10 pages are without text."));
    offer()->pressButton(1);
    EXPECT_TRUE(proposal()) << "of what has text";
}

TEST_F(ContentsOfScan, NotOfferedForAFewBlankPages) {
    const test::FakeProgram program("ocrmypdf", "exit 1\n");
    openWithText(8);
    find();
    EXPECT_EQ(offer(), nullptr);
    EXPECT_TRUE(proposal());
}

TEST_F(ContentsOfScan, NotOfferedWithoutTheProgramWhereThereIsText) {
    const test::FakeProgram none("ocrmypdf", QByteArray());
    openWithText(4);
    find();
    EXPECT_TRUE(proposal());
    EXPECT_TRUE(platform.alerts.isEmpty());
}

TEST_F(ContentsOfScan, BarShowsOnHowManyPagesRecognitionHasBegun) {
    const test::FakeProgram program("ocrmypdf",
                                    "for page in 1 2 3 4 5; do echo \"    $page Rasterize\"; done\n"
                                    "while [ ! -e \"$(dirname \"$0\")/go\" ]; do sleep 0.01; done\n"
                                    "while [ \"$1\" != -- ]; do shift; done\n"
                                    "cp \"$(dirname \"$0\")/book.pdf\" \"$3\"\n");
    test::makeBook().save(program.path("book.pdf"));
    find();
    ASSERT_TRUE(offer());
    bool wasShown = false;
    whileReading([&] {
        const auto *bar = progressSheet()->findChild<QProgressBar *>("progressBar");
        // Five of ten pages, of which all would be nearly everything.
        wasShown = QTest::qWaitFor([&] { return bar->value() * 40 == bar->maximum() * 19; }, 60'000);
        QFile(program.path("go")).open(QIODevice::WriteOnly);
    });
    offer()->pressButton(2);
    EXPECT_TRUE(wasShown);
    EXPECT_TRUE(proposal());
}

TEST_F(ContentsOfScan, RecognitionIsCancelled) {
    const test::FakeProgram program("ocrmypdf", "exec sleep 60\n");
    find();
    ASSERT_TRUE(offer());
    whileReading([&] { progressSheet()->pressButton(0); });
    offer()->pressButton(2);
    EXPECT_EQ(proposal(), nullptr);
    EXPECT_TRUE(platform.alerts.isEmpty());
}

TEST_F(ContentsOfScan, FailureOfTheProgramIsTold) {
    const test::FakeProgram program("ocrmypdf", "echo 'no such language'; exit 3\n");
    find();
    ASSERT_TRUE(offer());
    offer()->pressButton(2);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "The text could not be recognised.");
    EXPECT_TRUE(platform.alerts[0].informativeText.contains("no such language"));
}

TEST_F(ContentsOfScan, CopyWithOtherPagesIsNotTaken) {
    const test::FakeProgram program("ocrmypdf",
                                    "while [ \"$1\" != -- ]; do shift; done\n"
                                    "cp \"$(dirname \"$0\")/other.pdf\" \"$3\"\n");
    PdfBuilder other;
    other.addNumberedPages(9);
    other.save(program.path("other.pdf"));
    find();
    ASSERT_TRUE(offer());
    offer()->pressButton(2);
    EXPECT_EQ(proposal(), nullptr);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_TRUE(platform.alerts[0].informativeText.contains("other pages"));
}

TEST_F(ContentsOfScan, WithoutTextAfterRecognitionThatIsSaid) {
    const test::FakeProgram program("ocrmypdf",
                                    "while [ \"$1\" != -- ]; do shift; done\n"
                                    "cp \"$2\" \"$3\"\n");
    find();
    ASSERT_TRUE(offer());
    offer()->pressButton(2);
    EXPECT_EQ(proposal(), nullptr);
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "No text was recognised in the page images.");
    EXPECT_EQ(platform.alerts[0].informativeText, "The outline stays as it was.");
}

}  // namespace
}  // namespace leafwright

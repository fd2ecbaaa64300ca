#include "app/Defaults.h"
#include "document/MyDocument.h"
#include "document/commands/AutoTOCCommands.h"
#include "document/commands/SavingCommands.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Corpus.h"
#include "support/Paths.h"
#include "support/RecordingPlatform.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

class CorpusAutoTOC : public CorpusTest {
protected:
    /// Opens a copy of a file in a window of its own.
    std::unique_ptr<MyDocument> open(const QString &path) {
        registerDefaults(platform.userDefaults());
        const QString copy = dir.path("copy.pdf");
        QFile::remove(copy);
        EXPECT_TRUE(QFile::copy(path, copy));
        EXPECT_TRUE(QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner));
        auto document = std::make_unique<MyDocument>(platform);
        EXPECT_TRUE(document->readFromURL(copy));
        document->makeWindowControllers();
        return document;
    }

    TempDir dir;
    RecordingPlatform platform;
};

TEST_P(CorpusAutoTOC, TheWindowWritesWhatTheCommandLineWrites) {
    const QString byCommandLine = dir.path("out.pdf");
    ASSERT_EQ(runCli({"autotoc", pdf(), "-o", byCommandLine, "--keep", "--wrap"}).exitCode, 0);
    const auto document = open(pdf());
    document->autoTOCCommands().runAutoTOCWithFeedback();
    ASSERT_TRUE(document->actions().perform("saveDocument:"));
    EXPECT_EQ(outlineOf(document->pdfURL()), outlineOf(byCommandLine));
    EXPECT_THAT(plusLinesOf(byCommandLine).toStdString(), testing::HasSubstr("AutoTOC3\n"));
}

TEST_P(CorpusAutoTOC, TheWindowCalibratesAsTheCommandLineDoes) {
    const QString byCommandLine = dir.path("out.pdf");
    const bool canCalibrate =
        runCli({"autotoc", pdf(), "-o", byCommandLine, "--keep", "--wrap", "--calibrate"}).exitCode == 0;
    const auto document = open(pdf());
    document->actions().perform("testPageStructureKnowledge:");
    EXPECT_EQ(platform.alerts.isEmpty(), canCalibrate);
    if (!canCalibrate) return;
    ASSERT_TRUE(document->actions().perform("saveDocument:"));
    EXPECT_EQ(outlineOf(document->pdfURL()), outlineOf(byCommandLine));
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusAutoTOC,
                         testing::Values("160F-2019", "R-exts", "R-intro", "TAMReview", "bigboundingbox",
                                         "canvas", "doc_1_3_pages", "file_pdfjs_test", "freeculture",
                                         "gnuplot", "issue14847", "issue1905", "issue19971", "issue21126",
                                         "js-authors", "liboctave", "openoffice", "outlines_for_editor",
                                         "radial_gradients", "tutorial"),
                         corpusTestName);

class CorpusSeries : public CorpusAutoTOC {
protected:
    static QStringList levelsAndFonts(MyDocument &document) {
        QStringList rows;
        for (const LevelRecord &record : document.listH1H2H3Config())
            rows.append(record.levelName + ' ' + record.fontText);
        return rows;
    }
};

/// Everything below the outline's last top-level entry.
QString lastEntry(const QString &path) {
    const QString lines = plusLinesOf(path);
    return lines.mid(lines.lastIndexOf("\n+ ") + 1);
}

TEST_P(CorpusSeries, AMapOfOneManualFindsTheHeadingsOfAnother) {
    const auto first = open(corpusPath("R-intro.pdf"));
    first->finishHeadingMap();
    // Without its last level, so that it is not what would be guessed for the other manual.
    ASSERT_GT(first->listH1H2H3Config().size(), 3U);
    const QString lastLevel = first->listH1H2H3Config().back().levelName;
    std::erase_if(first->listH1H2H3Config(),
                  [&](const LevelRecord &record) { return record.levelName == lastLevel; });
    platform.filesToChoose = {dir.path("series.txt"), dir.path("series.txt")};
    ASSERT_TRUE(first->actions().perform("buttonClickedSaveH1H2H3Map:"));

    const auto second = open(pdf());
    second->actions().perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(levelsAndFonts(*second), levelsAndFonts(*first));
    second->autoTOCCommands().runAutoTOCWithFeedback();
    ASSERT_TRUE(second->actions().perform("saveDocument:"));
    const QString found = lastEntry(second->pdfURL());
    for (const char *heading :
         {"\n++ @2 1 Creating R packages\n", "\n+++ @3 1.1 Package structure\n",
          "\n++++ @42 1.3.1 Checking packages\n", "\n++ @86 2 Writing R documentation files\n",
          "\n+++ @86 2.1 Rd format\n", "\n++ @106 3 Tidying and profiling R code\n"})
        EXPECT_THAT(found.toStdString(), testing::HasSubstr(heading));
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusSeries, testing::Values("R-exts"), corpusTestName);

}  // namespace
}  // namespace leafwright::test

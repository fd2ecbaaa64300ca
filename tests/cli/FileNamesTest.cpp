#include "files/FileName.h"
#include "files/FileReading.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// Files whose names are no UTF-8, given to the program as a shell gives them.
class FileNamesOfBytes : public testing::Test {
protected:
    void SetUp() override {
        savePdfWithHeadings(dir, "plain.pdf");
        ASSERT_EQ(::rename(bytes("plain.pdf").constData(), bytes("caf\xE9.pdf").constData()), 0);
    }
    /// Qt removes no files whose names it can't spell.
    void TearDown() override { std::filesystem::remove_all(fileNameBytes(dir.path({})).toStdString()); }
    QByteArray bytes(const QByteArray &name) const { return fileNameBytes(dir.path(".")) + '/' + name; }
    QString path(const QByteArray &name) const { return fileNameText(bytes(name)); }
    bool exists(const QByteArray &name) const { return ::access(bytes(name).constData(), F_OK) == 0; }
    ProgramResult run(const QStringList &arguments) const {
        ProgramResult result = runProgram(commandLineProgram(), arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return result;
    }

    TempDir dir;
};

TEST_F(FileNamesOfBytes, AreReadAndWritten) {
    run({"autotoc", path("caf\xE9.pdf"), "-o", path("new\xFF.pdf")});
    ASSERT_TRUE(exists("new\xFF.pdf"));
    EXPECT_EQ(QString(run({"outline", path("new\xFF.pdf"), "--format", "plus"}).out), outlineOfHeadings);
    run({"fonts", path("caf\xE9.pdf"), "--save-map", path("map\xE9")});
    run({"autotoc", path("caf\xE9.pdf"), "--map", path("map\xE9"), "--out-dir", path("out\xE9")});
    EXPECT_TRUE(exists("out\xE9/caf\xE9.pdf"));
    saveBytes(dir.path("tree"), "+ @1 New\n");
    ASSERT_EQ(::rename(bytes("tree").constData(), bytes("tree\xE9").constData()), 0);
    run({"apply", path("caf\xE9.pdf"), path("tree\xE9"), "-o", path("caf\xE9.pdf")});
    EXPECT_EQ(run({"outline", path("caf\xE9.pdf"), "--format", "plus"}).out, "+ @1 New\n");
}

TEST_F(FileNamesOfBytes, AreOpenedAndSavedByScripts) {
    saveBytes(dir.path("steps"),
              R"([{"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"}])");
    run({"run", dir.path("steps"), path("caf\xE9.pdf"), "-o", path("new\xE9.pdf"), "--report",
         path("report\xE9")});
    EXPECT_EQ(run({"outline", path("caf\xE9.pdf"), "--format", "plus"}).out, "+ @2 New\n");
    EXPECT_EQ(run({"outline", path("new\xE9.pdf"), "--format", "plus"}).out, "+ @2 New\n");
    EXPECT_TRUE(exists("report\xE9"));
}

TEST_F(FileNamesOfBytes, AreToldAsTheyAre) {
    const ProgramResult result = runProgram(commandLineProgram(), {"info", path("gone\xE9.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "leafwright-cli: " + bytes("gone\xE9.pdf") + ": there is no such file\n");
}

}  // namespace
}  // namespace leafwright::test

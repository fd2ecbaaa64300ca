#include "files/UnfinishedFiles.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"
#include "support/Paths.h"

#include <QDir>
#include <QRegularExpression>

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <optional>
#include <set>
#include <sys/stat.h>

namespace leafwright::test {
namespace {

using testing::ContainsRegex;
using testing::IsEmpty;

/// A run of the program that writes files, by its arguments.
struct Job {
    const char *name;
    QStringList arguments;
    QStringList written;  ///< What it writes.

    friend void PrintTo(const Job &job, std::ostream *out) { *out << job.name; }
};

/// What a call meets. Error 0 kills the program there.
struct Fault {
    const char *name;
    int error;
};
const Fault diskError{"EIO", EIO};
const Fault fullDisk{"ENOSPC", ENOSPC};
const Fault spentQuota{"EDQUOT", EDQUOT};
const Fault death{"KILL", 0};

/// Lets every call fail in turn that a run makes on the files of a folder: of those it reads, of those it
/// writes, and of those it makes in passing.
class Faults : public testing::TestWithParam<Job> {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(root).mkpath("tmp"));
        ASSERT_TRUE(QDir(root).mkpath("work"));
        savePdfWithHeadings(dir, "root/work/a.pdf");
        savePdfWithHeadings(dir, "root/work/b.pdf");
        savePdfWithHeadings(dir, "root/work/c.pdf");
        saveBytes(work("tree"), "+ @1 New Entry\n++ @2 Below\n");
        saveBytes(work("steps"),
                  R"([{"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"}])");
        saveBytes(work("map-steps"),
                  R"([{"do": "setTitle", "path": [0], "title": "New"}, {"do": "saveDocument:"},
                      {"do": "chooseFile", "path": ")" +
                      work("map.txt").toUtf8() + R"("}, {"do": "buttonClickedSaveH1H2H3Map:"}])");
        saveBytes(work("export"),
                  R"([{"do": "chooseFile", "path": "WORK/out.json"}, {"do": "exportOutline:"}])");
        saveBytes(work("import"), R"([{"do": "answer", "button": "Replace"},
                                      {"do": "chooseFile", "path": "WORK/tree"}, {"do": "importOutline:"}])");
        saveBytes(work("log"), R"({"file": "a.pdf", "out": "b.pdf", "status": "done", "seconds": 1})"
                               "\n");
        for (const char *steps : {"export", "import"})
            saveBytes(work(steps), bytesOf(work(steps)).replace("WORK", (root + "/work").toUtf8()));
        for (const QString &name : names())
            before[name] = bytesOf(work(name));
    }

    QString work(const QString &name) const { return root + "/work/" + name; }
    QStringList names() const { return namesIn(root + "/work"); }
    static QStringList namesIn(const QString &folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    /// Everything below the folder as it was at first.
    void restore() {
        QDir(root).removeRecursively();
        QDir(root).mkpath("tmp");
        QDir(root).mkpath("work");
        for (auto file = before.cbegin(); file != before.cend(); ++file)
            saveBytes(work(file.key()), file.value());
    }

    ProgramResult run() const {
        QStringList arguments = GetParam().arguments;
        for (QString &argument : arguments)
            argument.replace("WORK", root + "/work");
        const EnvironmentVariable temporary("TMPDIR", (root + "/tmp").toUtf8());
        const EnvironmentVariable runtime("XDG_RUNTIME_DIR", dir.path("runtime").toUtf8());
        return runProgram(commandLineProgram(), arguments);
    }
    ProgramResult runWithFault(qsizetype call, const Fault &fault) const {
        const EnvironmentVariable library("LD_PRELOAD", faultLibrary().toUtf8());
        const EnvironmentVariable folder("LEAFWRIGHT_FAULT_ROOT", root.toUtf8());
        const EnvironmentVariable log("LEAFWRIGHT_FAULT_LOG", dir.path("log").toUtf8());
        const EnvironmentVariable at("LEAFWRIGHT_FAULT_AT", QByteArray::number(call));
        const EnvironmentVariable error("LEAFWRIGHT_FAULT_ERROR", QByteArray::number(fault.error));
        return run();
    }
    /// The calls of a run in which nothing fails.
    QByteArrayList callsOfRun() {
        const EnvironmentVariable library("LD_PRELOAD", faultLibrary().toUtf8());
        const EnvironmentVariable folder("LEAFWRIGHT_FAULT_ROOT", root.toUtf8());
        const EnvironmentVariable log("LEAFWRIGHT_FAULT_LOG", dir.path("log").toUtf8());
        const ProgramResult result = run();
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        for (const QString &name : GetParam().written) {
            after[name] = bytesOf(work(name));
            EXPECT_NE(after[name], before.value(name));
            if (name.endsWith(".pdf")) {
                EXPECT_EQ(runProgram("qpdf", {"--check", work(name)}).exitCode, 0);
            }
        }
        return loggedCalls();
    }
    QByteArrayList loggedCalls() const {
        QByteArrayList calls = bytesOf(dir.path("log")).trimmed().split('\n');
        for (QByteArray &call : calls)
            call = call.trimmed();
        return calls;
    }

    /// Null where there is no file, which is not the same as an empty one.
    static std::optional<QByteArray> contentOf(const QString &path) {
        return QFile::exists(path) ? std::optional(bytesOf(path)) : std::nullopt;
    }
    std::optional<QByteArray> contentBefore(const QString &name) const {
        return before.contains(name) ? std::optional(before[name]) : std::nullopt;
    }
    /// Old or new, and whole. @return whether it is the new one
    bool expectWhole(const QString &name) {
        const std::optional<QByteArray> now = contentOf(work(name));
        EXPECT_TRUE(now == contentBefore(name) || now == after[name])
            << qPrintable(name) << " is neither the old nor the new file: " << (now ? now->size() : -1)
            << " bytes";
        return now == after[name];
    }
    /// What is only read is as it was.
    void expectInputsUntouched() const {
        for (auto file = before.cbegin(); file != before.cend(); ++file)
            if (!GetParam().written.contains(file.key())) {
                EXPECT_TRUE(contentOf(work(file.key())) == file.value()) << qPrintable(file.key());
            }
    }
    void expectTruth(const ProgramResult &result, const QByteArray &call);
    void expectNextRunTidiesUp(const ProgramResult &killed);

    TempDir dir;
    QString root = QFileInfo(dir.path(".")).canonicalFilePath() + "/root";
    QMap<QString, QByteArray> before;
    QMap<QString, QByteArray> after;
};

/// What the program has said and how it ended are what has happened, and it has left nothing behind.
void Faults::expectTruth(const ProgramResult &result, const QByteArray &call) {
    expectInputsUntouched();
    int replaced = 0;
    for (const QString &name : GetParam().written)
        replaced += expectWhole(name) ? 1 : 0;
    const bool saysAllIsDone = result.exitCode == 0;
    if (saysAllIsDone) {
        EXPECT_EQ(replaced, GetParam().written.size());
    } else {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(),
                    ContainsRegex("leafwright-cli: .*(Input/output error|No space left|quota)"));
        EXPECT_EQ(result.err.contains("was written, but may not outlive a power failure"),
                  replaced == GetParam().written.size())
            << result.err.constData();
    }
    // What can't be removed stays, until the next run.
    const bool isRemoval = call == "unlink" || call == "unlinkat" || call == "rmdir" || call == "open";
    if (!isRemoval) {
        EXPECT_THAT(namesIn(root + "/tmp"), IsEmpty());
    }
    for (const QString &folder : {root + "/work", root + "/work/out"})
        for (const QString &name : namesIn(folder))
            EXPECT_TRUE(!name.startsWith('.') || (isRemoval && isNameOfUnfinishedFile(name.toUtf8())))
                << qPrintable(name) << " is left";
}

/// After a program was killed: the next run works, and removes what the killed one left once that is old.
void Faults::expectNextRunTidiesUp(const ProgramResult &killed) {
    expectInputsUntouched();
    for (const QString &name : GetParam().written)
        expectWhole(name);
    // Where several are put in place together, the old files have second names meanwhile, which
    // get young again with them.
    for (auto file = before.cbegin(); file != before.cend(); ++file)
        saveBytes(work(file.key()), file.value());
    const timespec longAgo{std::time(nullptr) - 3600, 0};
    const timespec times[] = {longAgo, longAgo};
    const bool several = GetParam().written.size() > 1;
    int unfinished = 0;
    for (const QString &folder : {root + "/work", root + "/work/out"}) {
        for (const QString &name : namesIn(folder)) {
            if (!isNameOfUnfinishedFile(name.toUtf8())) continue;
            ++unfinished;
            ::utimensat(AT_FDCWD, (folder + '/' + name).toUtf8().constData(), times, 0);
        }
    }
    // Where it was one of its workers, the program itself has tidied up.
    const int most = killed.exitCode == 1 ? 0 : several ? 2 * static_cast<int>(GetParam().written.size()) : 1;
    EXPECT_LE(unfinished, most) << killed.err.constData();
    const ProgramResult again = run();
    EXPECT_EQ(again.exitCode, 0) << again.err.constData();
    for (const QString &name : names())
        EXPECT_FALSE(isNameOfUnfinishedFile(name.toUtf8())) << qPrintable(name);
    EXPECT_THAT(namesIn(root + "/tmp"), IsEmpty());
}

/// Which faults a call may meet: reading needs no space.
std::vector<Fault> faultsOf(const QByteArray &call) {
    static const std::set<QByteArray> readers{"open",  "read",   "pread",    "pread64",
                                              "flock", "unlink", "unlinkat", "rmdir"};
    if (readers.contains(call)) return {diskError, death};
    return {diskError, fullDisk, spentQuota, death};
}

TEST_P(Faults, LeaveTheOldFileOrTheNewOneAndAreToldAsTheyAre) {
    const QByteArrayList calls = callsOfRun();
    ASSERT_GT(calls.size(), 5);
    std::vector<std::pair<qsizetype, Fault>> cases;
    for (qsizetype i = 0; i < calls.size(); ++i)
        for (const Fault &fault : faultsOf(calls[i]))
            cases.emplace_back(i, fault);
    // LEAFWRIGHT_FAULTS=all tries every one. Otherwise as many as take some seconds, from first to last.
    constexpr size_t sample = 60;
    const bool tryAll = qgetenv("LEAFWRIGHT_FAULTS") == "all";
    const size_t count = tryAll ? cases.size() : std::min(cases.size(), sample);
    std::printf("%zu calls, %zu faults, of which %zu are tried\n", size_t(calls.size()), cases.size(), count);
    for (size_t i = 0; i < count; ++i) {
        const auto &[call, fault] = cases[i * cases.size() / count];
        restore();
        QFile::remove(dir.path("log"));
        const ProgramResult result = runWithFault(call, fault);
        // Threads make their calls in another order each time.
        const QByteArray failed = loggedCalls().value(call);
        SCOPED_TRACE(fault.name + (" at call " + std::to_string(call) + ", ") + failed.toStdString());
        SCOPED_TRACE("exit status " + std::to_string(result.exitCode) + ": " + result.err.toStdString());
        if (fault.error == 0) {
            expectNextRunTidiesUp(result);
        } else {
            expectTruth(result, failed);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Of, Faults,
    testing::Values(
        Job{"AutoTOC", {"autotoc", "WORK/a.pdf", "-o", "WORK/new.pdf"}, {"new.pdf"}},
        Job{"AutoTOCOverItself", {"autotoc", "WORK/a.pdf", "-o", "WORK/a.pdf"}, {"a.pdf"}},
        Job{"Apply", {"apply", "WORK/a.pdf", "WORK/tree", "-o", "WORK/a.pdf"}, {"a.pdf"}},
        Job{"Batch",
            {"autotoc", "--out-dir", "WORK/out", "WORK/a.pdf", "WORK/b.pdf", "WORK/c.pdf"},
            {"out/a.pdf", "out/b.pdf", "out/c.pdf"}},
        Job{"RunToAnotherFile",
            {"run", "WORK/steps", "WORK/a.pdf", "-o", "WORK/new.pdf"},
            {"new.pdf", "a.pdf"}},
        Job{"ExportInTheWindow", {"run", "WORK/export", "WORK/a.pdf"}, {"out.json"}},
        Job{"ImportInTheWindow", {"run", "WORK/import", "WORK/a.pdf", "-o", "WORK/new.pdf"}, {"new.pdf"}},
        Job{"Report",
            {"report", "WORK/log", "--html", "WORK/page.html", "--csv", "WORK/table.csv"},
            {"page.html", "table.csv"}},
        Job{"SaveInTheWindow", {"run", "WORK/steps", "WORK/a.pdf"}, {"a.pdf"}},
        Job{"SaveWithAMap", {"run", "WORK/map-steps", "WORK/a.pdf"}, {"a.pdf", "map.txt"}}),
    [](const auto &test) { return std::string(test.param.name); });

}  // namespace
}  // namespace leafwright::test

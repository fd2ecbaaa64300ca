#include "document/outline/TextRecognition.h"
#include "support/CliFiles.h"
#include "support/FakeProgram.h"
#include "support/LogRecorder.h"

#include <QFileInfo>
#include <QTest>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::bytesOf;
using test::FakeProgram;
using test::TempDir;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;

const QString name = "ocrmypdf";

/// The end of a script that writes what it was told to do, and makes the copy.
const QByteArray copies =
    "for a in \"$@\"; do echo \"$a\" >> \"$(dirname \"$0\")/arguments\"; done\n"
    "while [ \"$1\" != -- ]; do shift; done\n"
    "cp \"$2\" \"$3\"\n";

auto recognise(const QString &path, const QString &languages = {}) {
    return recogniseText(path, languages, [](int /*pages*/) { return true; });
}

TEST(TextRecognition, CopyIsThereUntilNobodyWantsIt) {
    const TempDir dir;
    const FakeProgram program(name, copies);
    const QString path = test::savePdf(dir, "in.pdf", 2);
    auto result = recognise(path);
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<RecognisedCopy>>(result));
    auto copy = std::get<std::unique_ptr<RecognisedCopy>>(std::move(result));
    const QString made = copy->path();
    EXPECT_NE(made, path);
    EXPECT_EQ(bytesOf(made), bytesOf(path));
    copy.reset();
    EXPECT_FALSE(QFileInfo::exists(made));
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(made).path()));
}

TEST(TextRecognition, NamesOfFilesStandForThemselves) {
    const TempDir dir;
    const FakeProgram program(name, copies);
    const QString path = test::savePdf(dir, "-l; $(touch x) 'a'.pdf", 1);
    const auto result = recognise(path, "deu+eng");
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<RecognisedCopy>>(result));
    EXPECT_EQ(bytesOf(std::get<std::unique_ptr<RecognisedCopy>>(result)->path()), bytesOf(path));
    const QList<QByteArray> arguments = bytesOf(program.path("arguments")).trimmed().split('\n');
    EXPECT_THAT(arguments, Contains("--skip-text"));
    EXPECT_EQ(arguments.at(arguments.indexOf("--tesseract-timeout") + 1), "3600");
    EXPECT_EQ(arguments.at(arguments.indexOf("--language") + 1), "deu+eng");
    EXPECT_THAT(arguments.at(arguments.indexOf("--") + 1).toStdString(), EndsWith("/original.pdf"));
    EXPECT_EQ(arguments.size(), arguments.indexOf("--") + 3);
}

TEST(TextRecognition, WithoutALanguageTheProgramHasItsOwn) {
    const TempDir dir;
    const FakeProgram program(name, copies);
    recognise(test::savePdf(dir, "in.pdf", 1));
    const QList<QByteArray> arguments = bytesOf(program.path("arguments")).trimmed().split('\n');
    EXPECT_THAT(arguments, Contains("--skip-text"));
    EXPECT_THAT(arguments, testing::Not(Contains("--language")));
}

TEST(TextRecognition, TellsOnHowManyPagesItHasBegun) {
    const TempDir dir;
    const FakeProgram program(name,
                              "echo 'Start processing'; echo '    1 Rasterize'; echo '    2 Rasterize' >&2\n"
                              "echo '    1 Grafting'; echo '   12 Rasterize'\n" +
                                  copies);
    int most = 0;
    recogniseText(test::savePdf(dir, "in.pdf", 1), {}, [&most](int pages) {
        most = std::max(most, pages);
        return true;
    });
    EXPECT_EQ(most, 3);
}

TEST(TextRecognition, CancelEndsTheProgramAndAllItHasStarted) {
    const TempDir dir;
    const FakeProgram program(name,
                              "sleep 1000 &\necho $! > \"$(dirname \"$0\")/child\"\n"
                              "touch \"$TMPDIR/left\"; echo \"$TMPDIR\" > \"$(dirname \"$0\")/folder\"\n"
                              "echo '    1 Rasterize'\nwait\n" +
                                  copies);
    const auto result =
        recogniseText(test::savePdf(dir, "in.pdf", 1), {}, [](int pages) { return pages == 0; });
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_TRUE(std::get<RecognitionFailure>(result).cancelled);
    // A process that has ended may still be in the table, as nobody's child.
    const QByteArray child = bytesOf(program.path("child")).trimmed();
    const auto hasEnded = [&child] {
        QFile state("/proc/" + child + "/stat");
        return !state.open(QIODevice::ReadOnly) || state.readAll().contains(") Z");
    };
    EXPECT_TRUE(QTest::qWaitFor(hasEnded, 10'000));
    EXPECT_FALSE(QFileInfo::exists(QString::fromUtf8(bytesOf(program.path("folder")).trimmed())));
}

/// Takes the three seconds that a program has to end by itself.
TEST(TextRecognition, CancelKillsAProgramThatDoesNotListen) {
    const TempDir dir;
    const FakeProgram program(name,
                              "trap '' TERM\necho '    1 Rasterize'\nsleep 20\n"
                              "touch \"$(dirname \"$0\")/survived\"\n");
    const test::LogRecorder log;
    const auto result =
        recogniseText(test::savePdf(dir, "in.pdf", 1), {}, [](int pages) { return pages == 0; });
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_TRUE(std::get<RecognitionFailure>(result).cancelled);
    EXPECT_FALSE(QFileInfo::exists(program.path("survived")));
    EXPECT_TRUE(log.messages().isEmpty())
        << "it has ended by now: " << log.messages().join(u' ').toStdString();
}

TEST(TextRecognition, ProgramThatCanNotBeStarted) {
    const TempDir dir;
    const FakeProgram program(name, copies);
    test::saveBytes(program.path(name), "#!/no/such/shell\n");
    const auto result = recognise(test::savePdf(dir, "in.pdf", 1));
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_THAT(std::get<RecognitionFailure>(result).message.toStdString(),
                HasSubstr("No such file or directory"));
}

TEST(TextRecognition, FailureSaysTheProgramsLastWords) {
    const TempDir dir;
    const FakeProgram program(
        name,
        "echo chatter; echo more; echo and more\n"
        "echo '    1 Rasterize'\n"
        "echo 'No language data for:' >&2; echo 'deu' >&2; printf 'Install it.' >&2; exit 3\n");
    const auto result = recognise(test::savePdf(dir, "in.pdf", 1));
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_FALSE(std::get<RecognitionFailure>(result).cancelled);
    EXPECT_EQ(std::get<RecognitionFailure>(result).message,
              "text could not be recognised: No language data for: deu Install it.");
}

TEST(TextRecognition, ProgramThatWritesNothing) {
    const TempDir dir;
    const FakeProgram program(name, "exit 0\n");
    const auto result = recognise(test::savePdf(dir, "in.pdf", 1));
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_THAT(std::get<RecognitionFailure>(result).message.toStdString(),
                HasSubstr("ocrmypdf wrote nothing"));
}

TEST(TextRecognition, ProgramThatIsKilled) {
    const TempDir dir;
    const FakeProgram program(name, "echo 'out of memory'; kill -9 $$\n");
    const auto result = recognise(test::savePdf(dir, "in.pdf", 1));
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_THAT(std::get<RecognitionFailure>(result).message.toStdString(), HasSubstr("out of memory"));
}

TEST(TextRecognition, WithoutTheProgramItsNameIsSaid) {
    const TempDir dir;
    const QString path = test::savePdf(dir, "in.pdf", 1);
    const FakeProgram none(name, QByteArray());
    EXPECT_FALSE(canRecogniseText());
    const auto result = recognise(path);
    ASSERT_TRUE(std::holds_alternative<RecognitionFailure>(result));
    EXPECT_THAT(std::get<RecognitionFailure>(result).message.toStdString(), HasSubstr("ocrmypdf"));
}

TEST(TextRecognition, WithTheProgramThereIsRecognition) {
    const FakeProgram program(name, copies);
    EXPECT_TRUE(canRecogniseText());
}

}  // namespace
}  // namespace leafwright

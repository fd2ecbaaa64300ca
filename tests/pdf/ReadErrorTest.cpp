#include "pdf/mupdf/FileStream.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/LogRecorder.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace leafwright {
namespace {

using mupdf::FailingReads;
using test::bytesOf;
using test::openPdf;
using test::PdfBuilder;
using test::runCli;
using test::TempDir;
using testing::Contains;
using testing::HasSubstr;

constexpr const char *reason = "Input/output error";

/// A file of some hundred kilobytes, so that reading it takes many reads, with an outline that goes through
/// it.
class ReadError : public testing::Test {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        std::vector<test::OutlineEntry> entries;
        for (int i = 0; i < pages; ++i) {
            const std::string number = std::to_string(i);
            pdf.addPage(PdfBuilder::showText("F2", 18, 72, 700, "Heading " + number) +
                        PdfBuilder::showText("F1", 10, 72, 600, "Text that is set in a smaller font"));
            // What lies between keeps one read from having several of them.
            pdf.addNoise(20'000);
            entries.push_back({"(Entry " + number + ")", "[" + pdf.pageReference(i) + " /Fit]"});
        }
        test::addOutline(pdf, entries);
        pdf.save(path);
        content = bytesOf(path);
    }

    /// The offset of the last object that holds a text.
    qint64 offsetOf(const QByteArray &text) const {
        const qint64 offset = content.lastIndexOf(text);
        EXPECT_GE(offset, 0) << text.constData();
        return offset;
    }
    /// Lets all reads fail that would have the byte at an offset.
    static auto failingAt(qint64 offset) {
        return [offset](qint64 from, qint64 length) {
            return from <= offset && offset < from + length ? EIO : 0;
        };
    }
    /// Nothing has been written in place of the file, or beside it.
    void expectUntouched() const {
        EXPECT_EQ(bytesOf(path), content);
        EXPECT_FALSE(QFile::exists(out));
    }

    /// Reads all of the file and writes it, while one of the reads fails. @return whether it was written
    bool readAndWrite(int fatal, const std::vector<std::string> &outline, bool &reached) const {
        int reads = 0;
        const FailingReads failing([&](qint64, qint64) {
            reached = reached || reads == fatal;
            return reads++ == fatal ? EIO : 0;
        });
        auto opened = PDFDocument::open(path);
        if (const auto *error = std::get_if<PDFError>(&opened)) {
            EXPECT_EQ(error->kind, PDFError::Kind::FileUnreadable);
            EXPECT_EQ(error->message, reason);
            return false;
        }
        const auto &document = std::get<std::unique_ptr<PDFDocument>>(opened);
        EXPECT_FALSE(document->wasRepaired());
        const std::vector<std::string> lines = test::linesOf(document->outlineRoot());
        for (int i = 0; i < document->pageCount(); ++i)
            document->pageText(i);
        const bool isProblem = document->readProblem().has_value();
        if (!isProblem) {
            EXPECT_EQ(lines, outline);
        }
        const auto error = document->writeToFile(out);
        EXPECT_TRUE(error || !isProblem);
        if (error) {
            EXPECT_THAT(error->message.toStdString(), HasSubstr(reason));
        }
        return !error;
    }

    static constexpr int pages = 12;
    TempDir dir;
    QString path = dir.path("a.pdf");
    QString out = dir.path("out.pdf");
    QByteArray content;
};

TEST_F(ReadError, OutlineThatCantBeReadIsAnError) {
    const auto document = openPdf(path);
    EXPECT_FALSE(document->readProblem());
    const FailingReads failing(failingAt(offsetOf("(Entry 7)")));
    const auto outline = document->engine().readOutline();
    const auto *error = std::get_if<PDFError>(&outline);
    ASSERT_TRUE(error) << "an outline without its second half";
    EXPECT_EQ(error->kind, PDFError::Kind::FileUnreadable);
    EXPECT_EQ(error->message, reason);
    ASSERT_TRUE(document->readProblem());
    EXPECT_EQ(document->readProblem()->message, reason);
}

TEST_F(ReadError, DocumentIsNotWrittenOnceReadingHasFailed) {
    const auto document = openPdf(path);
    {
        const FailingReads failing(failingAt(offsetOf("(Entry 7)")));
        EXPECT_EQ(document->outlineRoot().numberOfChildren(), 0);
    }
    const auto error = document->writeToFile(path);
    ASSERT_TRUE(error) << "and the outline would be gone";
    EXPECT_THAT(error->message.toStdString(), HasSubstr(reason));
    EXPECT_TRUE(document->writeToFile(out));
    expectUntouched();
}

TEST_F(ReadError, PageThatCantBeReadIsAProblemAndTheOthersAreRead) {
    const auto document = openPdf(path);
    {
        const FailingReads failing([](qint64, qint64) { return EIO; });
        EXPECT_EQ(test::textOf(*document, 3), "");
    }
    ASSERT_TRUE(document->readProblem());
    EXPECT_EQ(document->readProblem()->kind, PDFError::Kind::FileUnreadable);
    EXPECT_THAT(test::textOf(*document, 4).toStdString(), HasSubstr("Heading 4"));
    EXPECT_TRUE(document->writeToFile(out));
    expectUntouched();
}

TEST_F(ReadError, TheLogTellsWhyAPageEndsEarly) {
    const auto document = openPdf(path);
    const test::LogRecorder log(QStringLiteral("leafwright.pagetext.debug=true"));
    const FailingReads failing([](qint64, qint64) { return EIO; });
    document->pageText(3);
    EXPECT_THAT(log.messages(), Contains(QString("page content ends early: %1").arg(reason)));
}

/// One read after the other fails: none may be taken for damage, which would be repaired.
TEST_F(ReadError, WhicheverReadFailsNothingIsLost) {
    const std::vector<std::string> whole = test::linesOf(openPdf(path)->outlineRoot());
    int failed = 0;
    bool reached = true;
    for (int fatal = 0; reached; ++fatal) {
        SCOPED_TRACE("read " + std::to_string(fatal));
        QFile::remove(out);
        reached = false;
        if (readAndWrite(fatal, whole, reached)) {
            EXPECT_EQ(test::linesOf(openPdf(out)->outlineRoot()), whole);
        } else {
            EXPECT_FALSE(QFile::exists(out));
            ++failed;
        }
    }
    EXPECT_GT(failed, 10) << "the file is read in too few reads for this test";
    EXPECT_TRUE(QFile::exists(out)) << "where none fails";
    EXPECT_EQ(bytesOf(path), content);
}

TEST_F(ReadError, FileThatIsCutShortWhileItIsOpenIsNotDamaged) {
    const auto document = openPdf(path);
    ASSERT_TRUE(QFile::resize(path, content.size() / 2));
    const auto outline = document->engine().readOutline();
    const auto *error = std::get_if<PDFError>(&outline);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message.toStdString(), HasSubstr("cut short"));
    EXPECT_TRUE(document->writeToFile(out));
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(ReadError, CommandsFailWithTheReason) {
    const QString tree = dir.path("tree");
    test::saveBytes(tree, "+ @1 One\n");
    const FailingReads failing(failingAt(offsetOf("(Entry 7)")));
    for (const QStringList &command :
         {QStringList{"outline", path}, QStringList{"autotoc", path, "-o", out, "--keep"},
          QStringList{"minitoc", path, "--page", "1", "--text", "Heading", "-o", out}}) {
        const auto result = runCli(command);
        EXPECT_EQ(result.exitCode, 1) << qPrintable(command.first());
        EXPECT_THAT(result.err.toStdString(), HasSubstr(reason)) << qPrintable(command.first());
        EXPECT_EQ(result.out, "") << qPrintable(command.first());
        expectUntouched();
    }
}

TEST_F(ReadError, CommandsThatNeedTheTextFailWithTheReason) {
    // The content of the last page.
    const QByteArray key = "/Contents ";
    const qint64 number = content.lastIndexOf(key) + key.size();
    ASSERT_GE(number, key.size());
    const QByteArray object = '\n' + content.mid(number, content.indexOf(' ', number) - number) + " 0 obj\n";
    const FailingReads failing(failingAt(offsetOf(object) + object.size()));
    for (const QStringList &command :
         {QStringList{"text", path}, QStringList{"fonts", path}, QStringList{"autotoc", path, "-o", out},
          QStringList{"minitoc", path, "--page", "1", "--text", "Heading", "-o", out}}) {
        const auto result = runCli(command);
        EXPECT_EQ(result.exitCode, 1) << qPrintable(command.first());
        EXPECT_THAT(result.err.toStdString(), HasSubstr(reason)) << qPrintable(command.first());
        expectUntouched();
    }
}

TEST_F(ReadError, WhatCantBeOpenedIsNoDamagedFile) {
    const FailingReads failing([](qint64, qint64) { return EIO; });
    const auto result = runCli({"info", path});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "leafwright-cli: " + path.toUtf8() + ": the file can't be read: " + reason + "\n");
}

}  // namespace
}  // namespace leafwright

#include "pdf/WritingFixture.h"
#include "support/CliRun.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <qpdf/QPDF.hh>

#include <QDir>

#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::linesByQpdf;
using test::makeOutline;
using test::newOutline;
using test::openPdf;
using test::PdfBuilder;
using test::RawPdf;
using test::TempDir;
using test::threePages;
using testing::ElementsAre;

/// Gives the file a new outline in a second file. Expects that this is the first one with something behind
/// it, and that the witnesses find nothing wrong.
void expectAppended(const TempDir &dir, const QByteArray &original) {
    test::writeFile(dir.path("in.pdf"), original);
    const auto document = openPdf(dir.path("in.pdf"));
    EXPECT_FALSE(document->wasRepaired());
    document->setOutlineRoot(newOutline());
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_FALSE(error) << error->message.toStdString();

    const QByteArray written = contentOf(dir.path("out.pdf"));
    EXPECT_TRUE(written.startsWith(original));
    EXPECT_EQ(written.mid(original.size()).count("startxref"), 1);
    EXPECT_EQ(written[original.size()] == '\n', !original.endsWith('\n')) << "a line of its own";
    const auto check = test::runProgram("qpdf", {"--check", dir.path("out.pdf")});
    EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
    EXPECT_THAT(linesByQpdf(dir.path("out.pdf")),
                ElementsAre("New -> 0 (72, 700)", "  Below -> 0 (72, 600)"));
    const auto poppler = test::runProgram("pdfinfo", {"-dests", dir.path("out.pdf")});
    EXPECT_EQ(poppler.exitCode, 0);
    EXPECT_EQ(poppler.err, "");
    const auto again = openPdf(dir.path("out.pdf"));
    EXPECT_FALSE(again->wasRepaired());
    EXPECT_EQ(test::linesOf(again->outlineRoot()), linesByQpdf(dir.path("out.pdf")));
}

void expectAppended(const PdfBuilder &pdf, const PdfBuilder::Options &options) {
    const TempDir dir;
    pdf.save(dir.path("made.pdf"), options);
    expectAppended(dir, contentOf(dir.path("made.pdf")));
    const auto text = test::runProgram("pdftotext", {dir.path("out.pdf"), "-"});
    EXPECT_THAT(text.out.simplified().toStdString(), "Page 1 Page 2 Page 3");
}

TEST(Appending, ToACrossReferenceTable) {
    expectAppended(threePages(), {});
}

TEST(Appending, ToACrossReferenceStream) {
    expectAppended(threePages(), {.version = "1.5", .objectStreams = true});
}

TEST(Appending, ToALinearizedFile) {
    expectAppended(threePages(), {.linearized = true});
    expectAppended(threePages(), {.version = "1.5", .objectStreams = true, .linearized = true});
}

TEST(Appending, ToATableAfterAStream) {
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.endWithStream(4).object(5, "(changed)").endWithTable();
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToAStreamAfterATable) {
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.endWithTable().object(5, "(changed)").endWithStream(4);
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToAHybridFile) {
    RawPdf pdf = test::rawPdfOfOnePage("/Extra 5 0 R");
    pdf.object(5, "<< /Length 2 >>\nstream\nab\nendstream").endHybrid(4, {5});
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToManySections) {
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.endWithTable();
    for (int number = 10; number < 60; number += 2)
        pdf.object(number, "(change)").endWithStream(number + 1).object(number, "(again)").endWithTable();
    expectAppended(TempDir(), pdf.bytes());
}

TEST(Appending, ToAFileWithBytesBehindItsEnd) {
    expectAppended(TempDir(), test::rawPdfOfOnePage().endWithTable().bytes() + "\n\n   ");
}

TEST(Appending, ToAFileWithoutALineBreakAtItsEnd) {
    expectAppended(TempDir(), test::rawPdfOfOnePage().endWithTable().bytes().trimmed());
}

TEST(Appending, ToAFileWithBytesInFrontOfItsHeader) {
    const RawPdf pdf = test::rawPdfOfOnePage().endWithTable();
    expectAppended(TempDir(), "From: me\r\n\r\n" + pdf.bytes());
    expectAppended(TempDir(), QByteArray(1000, ' ') + pdf.bytes());
    RawPdf streams = test::rawPdfOfOnePage();
    streams.endWithStream(4);
    expectAppended(TempDir(), "\n" + streams.bytes());
}

TEST(Appending, CarriesOnWhatTheTrailerSays) {
    const TempDir dir;
    RawPdf pdf = test::rawPdfOfOnePage();
    pdf.trailerEntry("/Info 4 0 R /ID [<00ff28> (b)] /Private << /Of (us) >>")
        .object(4, "<< /Author (me) >>");
    for (const bool asStream : {false, true}) {
        RawPdf original = pdf;
        test::writeFile(dir.path("in.pdf"),
                        (asStream ? original.endWithStream(5) : original.endWithTable()).bytes());
        const auto document = openPdf(dir.path("in.pdf"));
        document->setOutlineRoot(newOutline());
        ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
        QPDF written;
        written.processFile(QFile::encodeName(dir.path("out.pdf")).constData());
        QPDFObjectHandle trailer = written.getTrailer();
        EXPECT_EQ(trailer.getKey("/Info").getKey("/Author").getStringValue(), "me");
        EXPECT_EQ(trailer.getKey("/ID").getArrayItem(0).getStringValue(), std::string("\0\xff(", 3));
        EXPECT_EQ(trailer.getKey("/Private").getKey("/Of").getStringValue(), "us");
        EXPECT_EQ(trailer.getKey("/Prev").getIntValue(), original.crossReference());
        EXPECT_EQ(trailer.getKey("/Size").getIntValue(), asStream ? 10 : 8);
    }
}

TEST(Appending, ACatalogKeepsItsBytes) {
    const TempDir dir;
    for (const bool inStream : {false, true}) {
        PdfBuilder pdf = threePages();
        pdf.setCatalogEntry("/Private", "[0.123456789012 /A#20B (\\000\\377) << >> null true]");
        pdf.save(dir.path("in.pdf"), {.version = "1.5", .objectStreams = inStream});
        const auto document = openPdf(dir.path("in.pdf"));
        document->setOutlineRoot(newOutline());
        ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
        QPDF written;
        written.processFile(QFile::encodeName(dir.path("out.pdf")).constData());
        EXPECT_EQ(written.getRoot().getKey("/Private").unparse(),
                  "[ 0.123456789012 /A#20B <00ff> << >> null true ]");
    }
}

TEST(Appending, EntriesInStreamsKeepTheirBytes) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(250);  // of which several streams are made
    const std::vector<int> entries = test::addOutline(pdf, {{"(One)", ""}, {"(Two)", ""}, {"(Three)", ""}});
    const auto entry = [&](size_t i, const std::string &links) {
        pdf.replaceObject(entries[i], "<< /Title (Old) /Private [0.123456789012 /A#20B] " + links + " >>");
    };
    entry(0, "/Next " + PdfBuilder::reference(entries[1]));
    entry(1, "/Prev " + PdfBuilder::reference(entries[0]) + " /Next " + PdfBuilder::reference(entries[2]));
    entry(2, "/Prev " + PdfBuilder::reference(entries[1]));
    pdf.save(dir.path("in.pdf"), {.version = "1.5", .objectStreams = true});
    const auto document = openPdf(dir.path("in.pdf"));
    auto root = makeOutline({{"New"}, {"New"}, {"New"}});
    for (int i = 0; i < 3; ++i)
        root->childAtIndex(i).setEntry(document->outlineRoot().childAtIndex(i).entry());
    document->setOutlineRoot(std::move(root));
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
    const QByteArray section = contentOf(dir.path("out.pdf")).mid(contentOf(dir.path("in.pdf")).size());
    EXPECT_EQ(section.count("/Private [ 0.123456789012 /A#20B ]"), 3) << section.constData();
}

/// One that takes several reads, up to the longest that is read.
TEST(Appending, AnEnormousCatalogKeepsItsBytes) {
    const TempDir dir;
    for (const int size : {5'000, 70'000, 5'000'000}) {
        RawPdf pdf = test::rawPdfOfOnePage("/Long (" + QByteArray(size, 'x') + ") /Number 1.50");
        test::writeFile(dir.path("in.pdf"), pdf.endWithTable().bytes());
        const auto document = openPdf(dir.path("in.pdf"));
        document->setOutlineRoot(newOutline());
        ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
        EXPECT_TRUE(contentOf(dir.path("out.pdf")).mid(pdf.size()).contains("/Number 1.50")) << size;
    }
}

TEST(Appending, ToAFileWhoseCountOfPagesLies) {
    RawPdf pdf("1.4");
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .object(4, "<< /Type /Pages /Parent 2 0 R /Kids [5 0 R 6 0 R] /Count 2 >>")
        .object(5, "<< /Type /Page /Parent 4 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .object(6, "<< /Type /Page /Parent 4 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .endWithTable();
    const TempDir dir;
    test::writeFile(dir.path("in.pdf"), pdf.bytes());
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_EQ(document->pageCount(), 3);
    document->setOutlineRoot(makeOutline({{"Last", PDFDestination{2, {72, 700}}}}));
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_FALSE(error) << error->message.toStdString();
    EXPECT_TRUE(contentOf(dir.path("out.pdf")).startsWith(pdf.bytes()));
    EXPECT_EQ(test::linesOf(openPdf(dir.path("out.pdf"))->outlineRoot()).at(0), "Last -> 2 (72, 700)");
}

/// Its number is then one of ours, and stays another than those of later entries.
TEST(Appending, ToAFileWhoseCatalogIsNoObjectOfItsOwn) {
    const TempDir dir;
    const QByteArray objects[] = {
        "1 0 obj\n<< /Type /Pages /Kids [2 0 R] /Count 1 >>\nendobj\n",
        "2 0 obj\n<< /Type /Page /Parent 1 0 R /MediaBox [0 0 9 9] /Resources << >> >>\nendobj\n"};
    QByteArray pdf = "%PDF-1.4\n";
    QByteArray table = "xref\n0 3\n0000000000 65535 f \n";
    for (const QByteArray &object : objects) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += object;
    }
    const QByteArray start = QByteArray::number(pdf.size());
    pdf += table + "trailer\n<< /Root << /Type /Catalog /Pages 1 0 R >> /Size 3 >>\nstartxref\n" + start +
           "\n%%EOF\n";
    const QString path = dir.path("a.pdf");
    test::writeFile(path, pdf);
    for (int session = 1; session <= 3; ++session) {
        const auto document = openPdf(path);
        ASSERT_FALSE(document->wasRepaired());
        std::vector<test::Entry> entries;
        std::vector<std::string> expected;
        for (int i = 0; i < 3 * session; ++i) {
            entries.push_back({QString::number(i), PDFDestination{0, {1, 2}}});
            expected.push_back(std::to_string(i) + " -> 0 (1, 2)");
        }
        document->setOutlineRoot(makeOutline(entries));
        const auto error = document->writeToFile(path);
        ASSERT_FALSE(error) << error->message.toStdString();
        EXPECT_TRUE(contentOf(path).startsWith(pdf));
        EXPECT_EQ(linesByQpdf(path), expected);
    }
}

TEST(Appending, ObjectsKeepTheirGenerations) {
    const TempDir dir;
    const QByteArray page = "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >>\nendobj\n";
    QByteArray pdf = "%PDF-1.4\n";
    const QByteArray objects[] = {"1 7 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n",
                                  "2 0 obj\n<< /Type /Pages /Kids [3 5 R] /Count 1 >>\nendobj\n",
                                  "3 5 obj\n" + page};
    QByteArray table = "xref\n0 4\n0000000000 65535 f \n";
    const char *const generations[] = {"00007", "00000", "00005"};
    for (int i = 0; i < 3; ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + ' ' + generations[i] + " n \n";
        pdf += objects[i];
    }
    const QByteArray start = QByteArray::number(pdf.size());
    pdf += table + "trailer\n<< /Root 1 7 R /Size 4 >>\nstartxref\n" + start + "\n%%EOF\n";
    expectAppended(dir, pdf);
}

TEST(Appending, EncryptedFilesAreNotWritten) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"), {.ownerPassword = "secret"});
    const auto document = openPdf(dir.path("in.pdf"));
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST(Writing, ADamagedIdentifierIsNotTakenOver) {
    for (const char *identifier : {"[x-u49 <aa46>]", "[<aa46>]", "(aa46)", "[1 2]"}) {
        const TempDir dir;
        RawPdf pdf = test::rawPdfOfOnePage();
        pdf.trailerEntry(QByteArray("/ID ") + identifier + " /Private (kept)").endWithTable();
        ASSERT_TRUE(pdf.save(dir.path("in.pdf")));
        const auto document = openPdf(dir.path("in.pdf"));
        document->setOutlineRoot(newOutline());
        ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
        QPDF written;
        written.setSuppressWarnings(true);
        written.processFile(dir.path("out.pdf").toUtf8());
        EXPECT_FALSE(written.getTrailer().hasKey("/ID")) << identifier;
        EXPECT_TRUE(written.getTrailer().hasKey("/Private"));
    }
}

TEST(Writing, TwiceAppendsOneSection) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"));
    const auto document = openPdf(dir.path("in.pdf"));
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(dir.path("one.pdf")));
    ASSERT_FALSE(document->writeToFile(dir.path("two.pdf")));
    EXPECT_EQ(contentOf(dir.path("one.pdf")), contentOf(dir.path("two.pdf")));
}

TEST(Writing, OverTheFileItselfAgainAndAgain) {
    const TempDir dir;
    const QString path = dir.path("in.pdf");
    threePages().save(path);
    const QByteArray original = contentOf(path);
    const auto document = openPdf(path);
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(path));
    const QByteArray first = contentOf(path);
    EXPECT_TRUE(first.startsWith(original));
    EXPECT_EQ(test::textOf(*document, 1), "Page 2\n");

    ASSERT_FALSE(document->writeToFile(path));
    EXPECT_EQ(contentOf(path), first);
    document->setOutlineRoot(makeOutline({{"Newer"}}));
    ASSERT_FALSE(document->writeToFile(path));
    EXPECT_TRUE(contentOf(path).startsWith(original));
    EXPECT_THAT(linesByQpdf(path), ElementsAre("Newer"));
    EXPECT_EQ(test::textOf(*document, 2), "Page 3\n");
}

TEST(Writing, OfWhatWasWrittenBefore) {
    const TempDir dir;
    const QString path = dir.path("in.pdf");
    threePages().save(path);
    for (int i = 0; i < 3; ++i) {
        const auto document = openPdf(path);
        document->setOutlineRoot(makeOutline({{QString::number(i), PDFDestination{i, {1, 2}}}}));
        ASSERT_FALSE(document->writeToFile(path));
    }
    EXPECT_THAT(linesByQpdf(path), ElementsAre("2 -> 2 (1, 2)"));
    EXPECT_EQ(test::runProgram("qpdf", {"--check", path}).exitCode, 0);
}

TEST(Writing, ALockedFileIsNotWritten) {
    const TempDir dir;
    const auto document = openPdf(threePages(), {.userPassword = "secret"});
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::Locked);
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf"))) << "its outline would be lost";
}

TEST(Writing, MissingFolderIsAnError) {
    const TempDir dir;
    const auto document = openPdf(threePages());
    const auto error = document->writeToFile(dir.path("none/out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_TRUE(error->message.contains(dir.path("none/out.pdf")));
}

TEST(Writing, FailureLeavesTheOldFile) {
    const TempDir dir;
    const auto document = openPdf(threePages());
    // A folder of that name can't be replaced, not even by those who may write everywhere.
    ASSERT_TRUE(QDir(dir.path("")).mkdir("out.pdf"));
    test::writeFile(dir.path("out.pdf/old.txt"), "old");
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_EQ(contentOf(dir.path("out.pdf/old.txt")), "old");
    EXPECT_THAT(QDir(dir.path("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                ElementsAre("out.pdf"));
}

TEST(Writing, OriginalCutShortLeavesTheOldFile) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"));
    test::writeFile(dir.path("out.pdf"), "old");
    const auto document = openPdf(dir.path("in.pdf"));
    document->setOutlineRoot(newOutline());
    ASSERT_TRUE(QFile::resize(dir.path("in.pdf"), 100));
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_THAT(error->message.toStdString(), testing::HasSubstr("cut short by another program"));
    EXPECT_EQ(contentOf(dir.path("out.pdf")), "old");
}

/// Has something happen to the new file while it is written: when all pages have been.
class Meddler : public PDFWriteObserver {
public:
    Meddler(QString folder, std::function<void(QFile &file)> meddle)
        : folder_(std::move(folder)), meddle_(std::move(meddle)) {}
    void documentBeginWrite(int pageCount) override { lastPage_ = pageCount - 1; }
    void documentEndPageWrite(int pageIndex) override {
        if (pageIndex != lastPage_) return;
        const QDir folder(folder_);
        const QStringList names = folder.entryList({"out.pdf.*", ".out.pdf.*"}, QDir::Files | QDir::Hidden);
        ASSERT_EQ(names.size(), 1);
        QFile file(folder.filePath(names.first()));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        meddle_(file);
    }
    void documentEndWrite() override {}

private:
    QString folder_;
    std::function<void(QFile &)> meddle_;
    int lastPage_ = 0;
};

/// A write to a file that is there already, in which something goes wrong.
class FailingWrite : public testing::Test {
protected:
    FailingWrite() {
        threePages().save(in);
        test::writeFile(out, "old");
    }
    void expectFailure(const std::function<void(QFile &file)> &meddle, const std::string &reason) {
        const auto document = openPdf(in);
        document->setOutlineRoot(newOutline());
        Meddler meddler(dir.path(""), meddle);
        const auto error = document->writeToFile(out, &meddler);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
        EXPECT_THAT(error->message.toStdString(), testing::HasSubstr(reason));
        EXPECT_EQ(contentOf(out), "old");
        EXPECT_THAT(QDir(dir.path("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                    ElementsAre("in.pdf", "out.pdf"));
    }
    /// Writes over bytes of the new file.
    static std::function<void(QFile &)> change(const QByteArray &from, const QByteArray &to) {
        return [from, to](QFile &file) {
            const qint64 place = file.readAll().indexOf(from);
            ASSERT_GE(place, 0);
            ASSERT_TRUE(file.seek(place));
            ASSERT_EQ(file.write(to), to.size());
        };
    }

    const TempDir dir;
    const QString in = dir.path("in.pdf");
    const QString out = dir.path("out.pdf");
};

TEST_F(FailingWrite, PagesThatAreGone) {
    expectFailure(change("/Kids", "/Kids [] %"), "does not read back as it should: its pages are others");
}

TEST_F(FailingWrite, ACrossReferenceThatLeadsNowhere) {
    expectFailure(change("xref\n0", "xxxx\n0"), "does not read back as it should: it needs repair");
}

TEST_F(FailingWrite, APageThatIsNotWhereItShouldBe) {
    const auto unname = [](QFile &file) {
        const QByteArray bytes = file.readAll();
        const qsizetype page = bytes.lastIndexOf(" 0 obj", bytes.indexOf("/MediaBox"));
        ASSERT_GT(page, 0);
        ASSERT_TRUE(file.seek(page - 1));
        ASSERT_EQ(file.write("x"), 1);
    };
    expectFailure(unname, "does not read back as it should");
}

TEST_F(FailingWrite, AFileThatIsNoneAnyMore) {
    expectFailure([](QFile &file) { ASSERT_TRUE(file.resize(0)); }, "");
}

/// Lets no file grow over a size, as a full disk does.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, handler_);
    }
    SizeLimit(const SizeLimit &) = delete;
    SizeLimit &operator=(const SizeLimit &) = delete;

private:
    rlimit old_ = {};
    sighandler_t handler_;
};

TEST_F(FailingWrite, ADiskThatIsFull) {
    const auto size = static_cast<rlim_t>(contentOf(in).size());
    for (const rlim_t limit : {size / 2, size + 10}) {
        const SizeLimit full(limit);
        expectFailure([](QFile & /*file*/) {}, "File too large");
    }
}

TEST_F(FailingWrite, ADiskThatIsFullWhenADamagedFileIsWrittenNew) {
    PdfBuilder pdf = threePages();
    pdf.addNoise(300'000);
    pdf.save(in);
    const QByteArray whole = contentOf(in);
    test::writeFile(in, whole.left(whole.lastIndexOf("xref\n0 ") + 20));
    for (const rlim_t limit : {rlim_t{1000}, rlim_t{200'000}}) {
        const SizeLimit full(limit);
        expectFailure([](QFile & /*file*/) {}, "File too large");
    }
}

TEST(Writing, WhatStandsBehindAPdfStaysAndDamagesNothing) {
    for (const QByteArray &behind : {QByteArray(2000, '\0'), QByteArray(100'000, '\n'),
                                     QByteArray("PK\x03\x04") + QByteArray(3000, 'z')}) {
        const TempDir dir;
        threePages().save(dir.path("in.pdf"));
        const QByteArray whole = contentOf(dir.path("in.pdf")) + behind;
        test::writeFile(dir.path("in.pdf"), whole);
        for (int i = 0; i < 2; ++i) {
            const auto document = openPdf(dir.path("in.pdf"));
            EXPECT_FALSE(document->wasRepaired());
            document->setOutlineRoot(newOutline());
            ASSERT_FALSE(document->writeToFile(dir.path("in.pdf")));
            EXPECT_TRUE(contentOf(dir.path("in.pdf")).startsWith(whole));
            const auto check = test::runProgram("qpdf", {"--check", dir.path("in.pdf")});
            EXPECT_EQ(check.exitCode, 0) << check.err.toStdString();
            EXPECT_THAT(linesByQpdf(dir.path("in.pdf")),
                        ElementsAre("New -> 0 (72, 700)", "  Below -> 0 (72, 600)"));
        }
    }
}

}  // namespace
}  // namespace leafwright

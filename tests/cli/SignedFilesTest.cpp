#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QRegularExpression>

#include <gmock/gmock.h>
#include <map>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Files with signatures, each over all that was in the file when it was made, and what another reader makes
/// of them before and after an outline is written.
class SignedFiles : public testing::Test {
protected:
    SignedFiles() {
        saveBytes(pdf, savedPdf());
        openssl({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", dir.path("key"), "-out",
                 dir.path("certificate"), "-subj", "/CN=Signer", "-days", "2"});
        sign();
    }

    /// Adds a section to the file with a signature of all the rest (ISO 32000-1, 12.8.1 and 12.8.3.3).
    void sign() {
        QByteArray bytes = bytesOf(pdf);
        const QByteArray file = bytes;
        const int field = lastNumber(file, "/Size ");
        fields_ += reference(field) + ' ';
        const QByteArray signature = "<</Type/Sig/Filter/Adobe.PPKLite/SubFilter/adbe.pkcs7.detached" +
                                     byteRange(0, 0, 0) + "/Contents<" + QByteArray(contentsSize, '0') +
                                     ">>>";
        appendSection(bytes, {{fieldsNumber, '[' + fields_ + ']'},
                              {field, "<</Type/Annot/Subtype/Widget/FT/Sig/T(S" + QByteArray::number(field) +
                                          ")/Rect[0 0 0 0]/P 3 0 R/V " + reference(field + 1) + ">>"},
                              {field + 1, signature}});
        fillIn(bytes, file.size());
        saveBytes(pdf, bytes);
    }
    /// What the reader says of each signature, but whether it is of the whole file.
    QByteArray verdicts() const {
        QByteArray text = runProgram("pdfsig", {"-nocert", pdf}).out;
        return text.replace("  - Not total document signed\n", "").replace("  - Total document signed\n", "");
    }
    void apply(const QByteArray &plusLines) const {
        saveBytes(dir.path("tree"), plusLines);
        const CliResult result = runCli({"apply", pdf, dir.path("tree"), "-o", pdf});
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    }

    const TempDir dir;
    const QString pdf = dir.path("signed.pdf");

private:
    using Objects = std::map<int, QByteArray>;

    static constexpr int fieldsNumber = 4;
    static constexpr qsizetype contentsSize = 6000;  ///< In hexadecimal digits; some 2,800 are needed.

    static QByteArray reference(int number) { return QByteArray::number(number) + " 0 R"; }
    /// All numbers as wide as the widest.
    static QByteArray byteRange(qsizetype begin, qsizetype rest, qsizetype size) {
        const auto padded = [](qsizetype n) { return QByteArray::number(n).rightJustified(10); };
        return "/ByteRange[0 " + padded(begin) + ' ' + padded(rest) + ' ' + padded(size) + ']';
    }
    static int lastNumber(const QByteArray &file, const QByteArray &after) {
        const qsizetype begin = file.lastIndexOf(after) + after.size();
        return file.mid(begin, 10).trimmed().split('\n').first().split('/').first().trimmed().toInt();
    }
    static void appendSection(QByteArray &file, const Objects &objects) {
        const qsizetype previous = file.isEmpty() ? 0 : lastNumber(file, "startxref\n");
        QByteArray table = "xref\n";
        if (file.isEmpty()) file = "%PDF-1.5\n";
        for (const auto &[number, body] : objects) {
            table += QByteArray::number(number) + " 1\n" +
                     QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
            file += QByteArray::number(number) + " 0 obj\n" + body + "\nendobj\n";
        }
        const qsizetype begin = file.size();
        file += table + "trailer\n<</Root 1 0 R" +
                (previous > 0 ? "/Prev " + QByteArray::number(previous) : QByteArray()) + "/Size " +
                QByteArray::number(objects.rbegin()->first + 1) + "\n>>\nstartxref\n" +
                QByteArray::number(begin) + "\n%%EOF\n";
    }
    static QByteArray savedPdf() {
        QByteArray file;
        appendSection(file, {{1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</SigFlags 3/Fields 4 0 R>>>>"},
                             {2, "<</Type/Pages/Count 1/Kids[3 0 R]>>"},
                             {3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]>>"},
                             {fieldsNumber, "[]"}});
        return file;
    }
    static void openssl(const QStringList &arguments) {
        const ProgramResult result = runProgram("openssl", arguments);
        ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    }
    /// Makes the signature of the section that begins at an offset.
    void fillIn(QByteArray &file, qsizetype section) const {
        const qsizetype begin = file.indexOf("/Contents<", section) + qsizetype(qstrlen("/Contents"));
        const qsizetype rest = begin + contentsSize + 2;
        const QByteArray range = byteRange(begin, rest, file.size() - rest);
        file.replace(file.indexOf("/ByteRange", section), range.size(), range);
        saveBytes(dir.path("content"), file.first(begin) + file.mid(rest));
        openssl({"cms", "-sign", "-binary", "-md", "sha256", "-outform", "DER", "-in", dir.path("content"),
                 "-signer", dir.path("certificate"), "-inkey", dir.path("key"), "-out",
                 dir.path("signature")});
        const QByteArray digits = bytesOf(dir.path("signature")).toHex();
        file.replace(begin + 1, digits.size(), digits);
    }

    QByteArray fields_;
};

TEST_F(SignedFiles, SignaturesHoldAfterSavesAsBefore) {
    sign();
    const QByteArray before = verdicts();
    EXPECT_EQ(before.count("Signature is Valid"), 2);
    apply("+ @1 New\n");
    apply("+ @1 Newer\n");
    EXPECT_EQ(plusLinesOf(pdf), "+ @1 Newer\n");
    EXPECT_EQ(verdicts(), before);
}

// What we have appended may be replaced by the next save, but not once somebody has signed it.
TEST_F(SignedFiles, ASignatureOfAnOutlineThatWasSavedHoldsToo) {
    apply("+ @1 Signed\n");
    sign();
    const QByteArray before = verdicts();
    EXPECT_EQ(before.count("Signature is Valid"), 2);
    apply("+ @1 New\n");
    EXPECT_EQ(plusLinesOf(pdf), "+ @1 New\n");
    EXPECT_EQ(verdicts(), before);
}

TEST_F(SignedFiles, TheReaderSeesWhereASignedByteWasChanged) {
    QByteArray file = bytesOf(pdf);
    file.replace("[0 0 612 792]", "[0 0 612 793]");
    saveBytes(pdf, file);
    EXPECT_THAT(verdicts().toStdString(), HasSubstr("Signature Validation"));
    EXPECT_THAT(verdicts().toStdString(), Not(HasSubstr("Signature is Valid")));
}

}  // namespace
}  // namespace leafwright::test

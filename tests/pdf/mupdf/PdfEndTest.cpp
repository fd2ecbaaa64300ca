#include "pdf/mupdf/PdfEnd.h"

#include <QByteArray>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>

namespace leafwright::mupdf {
namespace {

/// As much of a PDF as is looked at.
const QByteArray pdf = "%PDF-1.4\nxref\n0 0\ntrailer <<>>\nstartxref\n9\n%%EOF\n";

std::optional<qint64> endOf(const QByteArray &bytes) {
    const auto read = [&bytes](qint64 offset, void *data, qint64 length) {
        const qint64 count = std::clamp<qint64>(bytes.size() - offset, 0, length);
        if (count > 0) std::memcpy(data, bytes.constData() + offset, static_cast<size_t>(count));
        return count;
    };
    return findPdfEnd(read, bytes.size());
}

TEST(PdfEnd, IsTheFilesWhereNothingStandsBehind) {
    EXPECT_EQ(endOf(pdf), pdf.size());
    EXPECT_EQ(endOf({}), 0);
    EXPECT_EQ(endOf(QByteArray(5000, ' ')), 5000);
}

TEST(PdfEnd, MuPDFFindsItBeforeAKilobyteByItself) {
    EXPECT_EQ(endOf(pdf + QByteArray(900, '\0')), pdf.size() + 900);
}

TEST(PdfEnd, DataBehindAreNotPartOfIt) {
    for (const char filling : {'\0', '\n', 'x', '%'})
        for (const qsizetype size : {1020, 3000, 3 << 20})
            EXPECT_EQ(endOf(pdf + QByteArray(size, filling)), pdf.size()) << size;
}

TEST(PdfEnd, EveryKindOfLineEndBelongsToIt) {
    for (const QByteArray &lineEnd : {QByteArray("\n"), QByteArray("\r"), QByteArray("\r\n"), QByteArray()}) {
        const QByteArray bytes = pdf.chopped(1) + lineEnd;
        EXPECT_EQ(endOf(bytes + QByteArray(2000, 'x')), bytes.size());
    }
}

TEST(PdfEnd, ItsWordsMayLieAnywhereInWhatIsReadAtOnce) {
    constexpr qsizetype block = 1 << 20;
    for (qsizetype behind = block - 60; behind < block + 60; ++behind)
        ASSERT_EQ(endOf(pdf + QByteArray(behind, 'x')), pdf.size()) << behind;
}

TEST(PdfEnd, ObjectsBehindAreOfAnUpdateThatIsNotComplete) {
    for (const char *object : {"7 0 obj\n", "7 0 obj<<", "12 0 obj[", "1 0 obj(", "3 0 obj/"}) {
        const QByteArray bytes = pdf + QByteArray(2000, 'x') + ' ' + object + QByteArray(2000, 'x');
        EXPECT_EQ(endOf(bytes), bytes.size()) << object;
    }
    for (const char *text : {"an obj\n", "7 0 object\n", "7 0 obj."}) {
        const QByteArray bytes = pdf + QByteArray(2000, 'x') + ' ' + text + QByteArray(2000, 'x');
        EXPECT_EQ(endOf(bytes), pdf.size()) << text;
    }
}

TEST(PdfEnd, AnOffsetThatLeadsToNoCrossReferenceIsNotItsOwn) {
    for (const char *offset : {"1", "0", "7000", "99999999999999999999", "", "-9", "x"}) {
        QByteArray bytes = pdf;
        bytes.replace("startxref\n9", QByteArray("startxref\n") + offset);
        bytes += QByteArray(2000, 'x');
        EXPECT_EQ(endOf(bytes), bytes.size()) << offset;
    }
    QByteArray ahead = pdf;
    ahead.replace("startxref\n9", "startxref\n60");
    ahead += QByteArray(2000, '1');
    EXPECT_EQ(endOf(ahead), ahead.size());
    QByteArray unfinished = pdf;
    unfinished.replace("%%EOF", "%%EO");
    unfinished += QByteArray(2000, 'x');
    EXPECT_EQ(endOf(unfinished), unfinished.size());
}

TEST(PdfEnd, ACrossReferenceMayBeAStream) {
    QByteArray bytes = pdf;
    bytes.replace("xref\n0 0", "12 0 obj");
    EXPECT_EQ(endOf(bytes + QByteArray(2000, 'x')), pdf.size());
}

TEST(PdfEnd, IsNotToldWhereAReadFails) {
    const QByteArray bytes = pdf + QByteArray(3000, 'x');
    for (int failing = 0; failing < 4; ++failing) {
        int reads = 0;
        const auto read = [&](qint64 offset, void *data, qint64 length) -> qint64 {
            if (reads++ == failing) {
                errno = EIO;
                return -1;
            }
            const qint64 count = std::clamp<qint64>(bytes.size() - offset, 0, length);
            std::memcpy(data, bytes.constData() + offset, static_cast<size_t>(count));
            return count;
        };
        EXPECT_EQ(findPdfEnd(read, bytes.size()), std::nullopt) << failing;
        EXPECT_EQ(errno, EIO);
    }
}

}  // namespace
}  // namespace leafwright::mupdf

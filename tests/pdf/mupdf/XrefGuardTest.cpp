#include "pdf/mupdf/XrefGuard.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace leafwright::mupdf {
namespace {

const QByteArray header = "%PDF-1.5\n";

/// A file's end that leads to an offset.
QByteArray endFor(qint64 offset) {
    return "\nstartxref\n" + QByteArray::number(offset) + "\n%%EOF\n";
}

/// Where a file with these bytes has absurd widths; -1 where it has none.
qint64 absurdIn(const QByteArray &bytes) {
    const test::TempDir dir;
    test::writeFile(dir.path("a.pdf"), bytes);
    return absurdFieldWidths(FileHandle(dir.path("a.pdf"))).value_or(-1);
}

/// The same for a file whose only section is this text, counted from the text's beginning.
qint64 absurdInSection(const QByteArray &section) {
    const qint64 found = absurdIn(header + section + endFor(header.size()));
    return found < 0 ? found : found - header.size();
}

/// A table of so many entries in one subsection.
QByteArray subsection(int first, int count) {
    QByteArray text = QByteArray::number(first) + ' ' + QByteArray::number(count) + '\n';
    for (int i = 0; i < count; ++i)
        text += "0000000009 00000 n \n";
    return text;
}

TEST(XrefGuard, NumbersOfMoreThanEightBytesAreAbsurd) {
    EXPECT_EQ(absurdInSection("9 0 obj << /W [1 8 1] >>\nstream"), -1);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [1 9 1] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [9 1 1] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [1 1 2147483647] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [8 8 8 8 9] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [-1 0 9] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [1 +9 1] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [1 44444444444444444444 1] >>\nstream"), 12);
    EXPECT_EQ(absurdInSection("9 0 obj << /W [-44444444444444444444 0 9] >>\nstream"), 12);
}

TEST(XrefGuard, TheKeyIsFoundHoweverItIsSpaced) {
    for (const char *key : {"/W[9]", "/W [9]", "/W\t[ 9]", "/W\n[\r\n9 ]", "/W\f[9]", "/W\v[9]"})
        EXPECT_EQ(absurdInSection(QByteArray("<< ") + key + " >>"), 4) << key;
    EXPECT_EQ(absurdInSection(QByteArray("<< /W\0[\0"
                                         "9] >>",
                                         14)),
              4);
    EXPECT_EQ(absurdInSection("/W [9] >>"), 1);
}

TEST(XrefGuard, OtherKeysAreNot) {
    for (const char *key : {"/Width [9]", "/W/X [9]", "/XW [9]", "W [9]", "(W [9])", "/W 9", "/W -9",
                            "/W 9 [9]", "/W (9)", "/W [x 9]", "/Index [9 9]", ""})
        EXPECT_EQ(absurdInSection(QByteArray("<< ") + key + " >>"), -1) << key;
    EXPECT_EQ(absurdInSection("<< /Width [9] /XW [9] W /W [9] >>"), 25) << "a later one is";
    EXPECT_EQ(absurdInSection("W << /W [9] >>"), 6);
}

TEST(XrefGuard, WhatStandsBehindTheDictionaryIsNoneOfIt) {
    EXPECT_EQ(absurdInSection("<< /W [1 2 1] >>\nstream /W [9] endstream"), -1);
    EXPECT_EQ(absurdInSection("stream /W [9] endstream"), -1);
}

TEST(XrefGuard, TheFileMayEndAnywhere) {
    for (const char *text :
         {"<< /W", "<< /W ", "<< /W [", "<< /W [1", "<< /Prev", "<< /Prev ", "xref", "xref\n0", "xref\n0 1"})
        EXPECT_EQ(absurdIn("%PDF-1.5" + endFor(28) + text), -1) << text;
    EXPECT_EQ(absurdIn("%PDF-1.5" + endFor(28) + "/W [9"), 29);
}

TEST(XrefGuard, FilesThatLeadNowhere) {
    EXPECT_EQ(absurdIn(""), -1);
    EXPECT_EQ(absurdIn(header), -1);
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>\nstartxref\nx\n%%EOF\n"), -1);
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>" + endFor(-5)), -1);
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>" + endFor(1'000'000)), -1);
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>" + endFor(header.size()) + QByteArray(1000, ' ')), 13);
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>" + endFor(header.size()) + QByteArray(1024, ' ')), -1)
        << "readers look no farther for the word";
}

TEST(XrefGuard, TheWordIsLookedForInTheLast1024Bytes) {
    const QByteArray file = header + "<< /W [9] >>" + endFor(header.size());
    const auto wordToEnd = file.size() - file.indexOf("startxref");
    EXPECT_EQ(absurdIn(file + QByteArray(1024 - wordToEnd, ' ')), 13);
    EXPECT_EQ(absurdIn(file + QByteArray(1025 - wordToEnd, ' ')), -1);
}

TEST(XrefGuard, TheLastWordCounts) {
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>" + endFor(header.size()) + endFor(1'000'000)), -1);
    EXPECT_EQ(absurdIn(header + "<< /W [9] >>" + endFor(1'000'000) + endFor(header.size())), 13);
}

TEST(XrefGuard, ATrailerStandsBehindItsTable) {
    EXPECT_EQ(absurdInSection("xref\n" + subsection(0, 1) + "trailer << /W [9] >>"),
              absurdInSection("xref\n" + subsection(5, 1) + "trailer << /W [9] >>"));
    // Too far behind to be found without reading the counts.
    for (const auto &counts : std::vector<std::vector<int>>{{600}, {600, 600}, {1, 2, 600, 3, 0, 4}}) {
        QByteArray table = "xref\n";
        for (const int count : counts)
            table += subsection(10, count);
        table += "trailer << /Size 9 ";
        EXPECT_EQ(absurdInSection(table + "/W [9] >>"), table.size() + 1) << counts.size();
    }
    EXPECT_EQ(absurdInSection(" xref 0  1 \n0000000009 00000 n \ntrailer << /W [9] >>"), 44);
}

TEST(XrefGuard, CountsThatCanNotBe) {
    for (const char *head :
         {"0 -5", "0 99999999", "0", "-", "0 x", "99999999999999999999 1", "0 99999999999999999999"}) {
        const QByteArray table = QByteArray("xref\n") + head + "\ntrailer << ";
        EXPECT_EQ(absurdInSection(table + "/W [9] >>"), table.size() + 1) << head;
    }
}

TEST(XrefGuard, OlderSectionsAreLookedAtToo) {
    const QByteArray odd = "<< /W [9] >>\n";
    const qint64 first = header.size();
    for (const char *link : {"/Prev ", "/XRefStm ", "/Prev\n", "/Prev"}) {
        const QByteArray key = QByteArray(link) + (link == std::string("/Prev") ? " +" : "");
        const bool isNumber = !key.contains('+');
        const qint64 second = first + odd.size();
        const QByteArray newest = "<< " + key + QByteArray::number(first) + " >>";
        EXPECT_EQ(absurdIn(header + odd + newest + endFor(second)), isNumber ? first + 4 : -1) << link;
    }
}

TEST(XrefGuard, BothLinksOfASectionAreFollowed) {
    for (const bool inPrevious : {false, true}) {
        const QByteArray odd = "<< /W [9] >>";
        const QByteArray even = "<< /W [8] >>";
        const qint64 first = header.size();
        const qint64 second = first + odd.size();
        const qint64 third = second + even.size();
        const QByteArray newest = "<< /Prev " + QByteArray::number(inPrevious ? first : second) +
                                  " /XRefStm " + QByteArray::number(inPrevious ? second : first) + " >>";
        EXPECT_EQ(absurdIn(header + odd + even + newest + endFor(third)), first + 4);
    }
}

TEST(XrefGuard, ManySectionsAndCircles) {
    QByteArray file = header + "<< /W [9] >>";
    qint64 previous = header.size();
    for (int i = 0; i < 500; ++i) {
        const qint64 place = file.size();
        file += "<< /Prev " + QByteArray::number(previous) + " >>";
        previous = place;
    }
    EXPECT_EQ(absurdIn(file + endFor(previous)), header.size() + 4);
    EXPECT_EQ(absurdInSection("<< /Prev 9 /XRefStm 9 >>"), -1) << "it leads to itself";
    EXPECT_EQ(absurdInSection("<< /Prev -9 /XRefStm 99999999 >>"), -1);
}

/// A circle of sections that each say something else could go on for ever.
TEST(XrefGuard, AThousandSectionsAreLookedAt) {
    for (const int others : {999, 1000}) {
        QByteArray file = header + "<< /W [9] >>";
        qint64 previous = header.size();
        for (int i = 0; i < others; ++i) {
            const qint64 place = file.size();
            // Of one block each, so that none sees the widths of another.
            file += "<< /Prev " + QByteArray::number(previous) + " >>\nstream";
            previous = place;
        }
        EXPECT_EQ(absurdIn(file + endFor(previous)), others < 1000 ? 13 : -1);
    }
}

}  // namespace
}  // namespace leafwright::mupdf

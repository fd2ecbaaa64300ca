#include "pdf/mupdf/SectionWriter.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <QCryptographicHash>
#include <QFile>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace leafwright::mupdf {
namespace {

using CrossReference = SectionWriter::CrossReference;
using Kind = ObjectPlace::Kind;

/// A section behind a file of 100 bytes, of which 10 stand in front of its header.
class SectionWriterTest : public testing::Test {
protected:
    SectionWriterTest() { out_.write(original_); }
    ~SectionWriterTest() override { ::close(descriptor_); }

    /// What is written behind the original until now.
    QByteArray written() {
        out_.flush();
        return test::contentOf(path_).mid(original_.size());
    }
    static QByteArray ownKey(const OwnSection &section, const QByteArray &objects) {
        return "/LeafwrightSection (" +
               ownSectionText(section, QCryptographicHash::hash(objects, QCryptographicHash::Sha256)) + ')';
    }

private:
    const test::TempDir dir_;
    const QString path_ = dir_.path("out");
    const QByteArray original_ = QByteArray(100, '-');
    const int descriptor_ =
        ::open(QFile::encodeName(path_).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    OutputFile out_{descriptor_, [](qint64) {}};

protected:
    SectionWriter writer_{out_, 10, "\n"};
};

TEST_F(SectionWriterTest, ATableHasALineForEachRunOfNumbers) {
    for (const int number : {7, 3, 4, 12, 5, 8})
        writer_.add({number, number == 8 ? 2 : 0, "(" + QByteArray::number(number) + ")"});
    DictionarySyntax trailer;
    trailer.set("Root", "3 0 R");
    const OwnSection original{90, 9, 55};
    writer_.end(CrossReference::Table, trailer, original, 13, false);
    const QByteArray objects =
        "\n7 0 obj\n(7)\nendobj\n3 0 obj\n(3)\nendobj\n4 0 obj\n(4)\nendobj\n12 0 obj\n(12)\nendobj\n"
        "5 0 obj\n(5)\nendobj\n8 2 obj\n(8)\nendobj\n";
    const QByteArray start = QByteArray::number(90 + objects.size());
    EXPECT_EQ(written(), objects +
                             "xref\n3 3\n0000000110 00000 n \n0000000129 00000 n \n0000000169 00000 n \n"
                             "7 2\n0000000091 00000 n \n0000000188 00002 n \n"
                             "12 1\n0000000148 00000 n \ntrailer\n<</Root 3 0 R\n/Size 13\n/Prev 55\n" +
                             ownKey(original, objects) + ">>\nstartxref\n" + start + "\n%%EOF\n");
}

TEST_F(SectionWriterTest, AStreamHasARangeForEachRunOfNumbers) {
    writer_.add({3, 0, "(" + QByteArray(200, 'x') + ")"});
    writer_.add({4, 1, "()"});
    writer_.add({9, 0, "()"});
    const OwnSection original{90, 9, 55};
    writer_.end(CrossReference::Stream, {}, original, 10, false);
    const QByteArray section = written();
    const qsizetype place = section.indexOf("10 0 obj");
    const QByteArray objects = section.first(place);
    // 91, 316 and 336 in two bytes; the last is the stream itself.
    const auto entry = [](int kind, int offset, int generation) {
        const char bytes[] = {static_cast<char>(kind), static_cast<char>(offset >> 8),
                              static_cast<char>(offset), static_cast<char>(generation >> 8),
                              static_cast<char>(generation)};
        return QByteArray(bytes, sizeof bytes);
    };
    const int second = 90 + static_cast<int>(section.indexOf("4 1 obj"));
    const int third = 90 + static_cast<int>(section.indexOf("9 0 obj"));
    EXPECT_EQ(section.mid(place),
              "10 0 obj\n<</Size 11\n/Prev 55\n" + ownKey(original, objects) +
                  "\n/Type /XRef\n/W [1 2 2]\n/Index [3 2 9 2]\n/Length 20>>\nstream\n" + entry(1, 91, 0) +
                  entry(1, second, 1) + entry(1, third, 0) + entry(1, 90 + static_cast<int>(place), 0) +
                  "\nendstream\nendobj\nstartxref\n" + QByteArray::number(90 + place) + "\n%%EOF\n");
    EXPECT_GT(second, 255) << "so that it takes two bytes";
}

TEST_F(SectionWriterTest, OneThatStandsAloneListsAllObjects) {
    writer_.add({2, 0, "(new)"});
    writer_.keep(1, {Kind::InFile, 5'000'000'000, 0});
    writer_.keep(2, {Kind::InFile, 17, 0});
    writer_.keep(4, {Kind::InFile, 42, 3});
    const OwnSection original{90, 9, 55};
    writer_.end(CrossReference::Table, {}, original, 5, true);
    EXPECT_TRUE(
        written().contains("xref\n0 3\n0000000000 65535 f \n5000000000 00000 n \n0000000091 00000 n \n"
                           "4 1\n0000000042 00003 n \ntrailer\n<</Size 5\n/Leafwright"))
        << written().constData();
}

TEST_F(SectionWriterTest, AStreamThatStandsAloneTellsOfObjectsInStreams) {
    writer_.add({1, 0, "(new)"});
    writer_.keep(2, {Kind::InStream, 7, 5});
    writer_.end(CrossReference::Stream, {}, {90, 9, 55}, 3, true);
    const QByteArray section = written();
    EXPECT_TRUE(section.contains("/W [1 1 2]\n/Index [0 4]\n/Length 16>>")) << section.constData();
    EXPECT_TRUE(section.contains(QByteArray("\0\0\xFF\xFF\1\x5B\0\0\2\7\0\5\1", 13))) << section.constData();
}

TEST_F(SectionWriterTest, WithoutObjectsItNeedsNoSeparator) {
    writer_.end(CrossReference::Table, {}, {90, 9, 55}, 9, false);
    EXPECT_TRUE(written().startsWith("xref\ntrailer\n<</Size 9\n/Prev 55\n")) << written().constData();
}

}  // namespace
}  // namespace leafwright::mupdf

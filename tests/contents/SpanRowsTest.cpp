#include "contents/SpanRows.h"
#include "support/MadePages.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::madeSpan;

constexpr double big = 20;                                // the size of the text that others belong to
const TextSpan word = madeSpan(100, 100, "Word", {big});  // from 100 to 140

using Rows = std::vector<std::vector<LineSpan>>;

/// The texts of each row, with "|" between its spans.
QStringList textsOf(const Rows &rows) {
    QStringList texts;
    for (const std::vector<LineSpan> &row : rows) {
        QStringList pieces;
        for (const LineSpan &piece : row)
            pieces += piece.span->text;
        texts += pieces.join(u'|');
    }
    return texts;
}

QStringList rowsOf(const std::vector<TextSpan> &spans) {
    return textsOf(spanRows(spans));
}

/// A span whose box does not tell its baseline.
TextSpan boxedSpan(const QString &text, double x, double baseline, double top, double bottom) {
    TextSpan span = madeSpan(x, baseline, text, {big});
    span.box.setTop(top);
    span.box.setBottom(bottom);
    return span;
}

TEST(SpanRows, DrawnTwiceIsAtOnePlaceNearly) {
    EXPECT_EQ(rowsOf({madeSpan(60, 100, "Bold"), madeSpan(60.6, 100, "Bold")}), QStringList{"Bold"});
    EXPECT_EQ(rowsOf({madeSpan(60, 100, "Bold"), madeSpan(60.9, 100, "Bold")}), QStringList{"Bold|Bold"});
}

TEST(SpanRows, BaselinesOfOneRowDifferLittle) {
    const auto isOneRow = [](double size, double distance) {
        TextSpan second = madeSpan(200, 100 + distance, "second", {size});
        second.box.translate(0, size);  // by its box it would not belong there
        return rowsOf({madeSpan(60, 100, "first", {size}), second}).size() == 1;
    };
    EXPECT_TRUE(isOneRow(20, 2.3)) << "an eighth of the size";
    EXPECT_FALSE(isOneRow(20, 2.6));
    EXPECT_TRUE(isOneRow(5, 0.75)) << "in small text nearly a point";
    EXPECT_FALSE(isOneRow(5, 0.9));
}

TEST(SpanRows, BoxesOfOneHeightAreOneRow) {
    const auto isOneRow = [](double baseline, double top, double bottom) {
        return rowsOf({boxedSpan("first", 60, 100, 84, 104), boxedSpan("second", 200, baseline, top, bottom)})
                   .size() == 1;
    };
    EXPECT_TRUE(isOneRow(109, 84, 104)) << "half a size between the baselines";
    EXPECT_FALSE(isOneRow(111, 84, 104));
    EXPECT_TRUE(isOneRow(105, 86.2, 104));
    EXPECT_FALSE(isOneRow(105, 86.6, 104));
    EXPECT_TRUE(isOneRow(105, 84, 106.2));
    EXPECT_FALSE(isOneRow(105, 84, 106.6));
}

/// Whether small text is taken to stand on the baseline of the word.
bool isSettled(double x, double baseline, const QString &text = "2", std::vector<TextSpan> others = {}) {
    others.push_back(word);
    others.push_back(madeSpan(x, baseline, text, {10}));
    for (const std::vector<LineSpan> &row : spanRows(others)) {
        for (const LineSpan &piece : row) {
            if (piece.span->text == text) return piece.baseline == word.baseline;
        }
    }
    return false;
}

TEST(SpanRows, RaisedAndLoweredByLessThanASize) {
    EXPECT_TRUE(isSettled(140, 86));
    EXPECT_FALSE(isSettled(140, 84)) << "three quarters of the size above";
    EXPECT_TRUE(isSettled(140, 106));
    EXPECT_FALSE(isSettled(140, 107)) << "a third below";
    EXPECT_TRUE(isSettled(140, 99.65));
    EXPECT_FALSE(isSettled(140, 99.75)) << "it stands on the baseline already";
}

TEST(SpanRows, RaisedTextTouchesItsWord) {
    EXPECT_TRUE(isSettled(144, 95));
    EXPECT_FALSE(isSettled(146, 95)) << "a quarter of the size away";
    EXPECT_TRUE(isSettled(130, 95)) << "overlaps by half of it";
    EXPECT_FALSE(isSettled(128, 95));
}

TEST(SpanRows, RaisedTextIsShort) {
    EXPECT_TRUE(isSettled(140, 95, "123456"));
    EXPECT_FALSE(isSettled(140, 95, "1234567"));
}

TEST(SpanRows, RaisedTextIsNearItsWordInOrder) {
    const auto isSettledBeyond = [](int count) {
        std::vector<TextSpan> between;
        for (int i = 0; i < count; ++i)
            between.push_back(madeSpan(300 + 10 * i, 97, "x", {10}));
        return isSettled(140, 95, "2", between);
    };
    EXPECT_TRUE(isSettledBeyond(29));
    EXPECT_FALSE(isSettledBeyond(30));
}

// More than six characters are raised or lowered as rows of their own, which go to the row that they touch.

TEST(SpanRows, LoweredRowsBelongToTheRowThatTheyTouch) {
    const auto isOneRow = [](double x, double baseline) {
        return rowsOf({word, madeSpan(x, baseline, "subscript", {10})}).size() == 1;
    };
    EXPECT_TRUE(isOneRow(140, 105.5));
    EXPECT_FALSE(isOneRow(140, 106.5)) << "three tenths of the size below";
    EXPECT_TRUE(isOneRow(145.8, 104));
    EXPECT_FALSE(isOneRow(146.5, 104)) << "as far away";
    EXPECT_TRUE(isOneRow(131, 104)) << "overlaps by half of the size";
    EXPECT_FALSE(isOneRow(129, 104));
}

TEST(SpanRows, RaisedRowsBelongToTheRowThatTheyTouch) {
    const auto isOneRow = [](double x, double baseline) {
        return rowsOf({word, madeSpan(x, baseline, "exponents", {10})}).size() == 1;
    };
    EXPECT_TRUE(isOneRow(140, 89));
    EXPECT_FALSE(isOneRow(140, 87)) << "six tenths of the size above";
    EXPECT_TRUE(isOneRow(145.8, 92));
    EXPECT_FALSE(isOneRow(146.5, 92));
    EXPECT_TRUE(isOneRow(131, 92));
    EXPECT_FALSE(isOneRow(129, 92));
}

/// Rows of their own, far from the word, on baselines from the given one on.
std::vector<TextSpan> rowsBeside(double baseline, double distance, int count) {
    std::vector<TextSpan> spans{madeSpan(100, 100, "Word", {40})};
    for (int i = 0; i < count; ++i)
        spans.push_back(madeSpan(400, baseline + distance * i, "beside", {10}));
    return spans;
}

TEST(SpanRows, FewRowsMayLieBetween) {
    const auto loweredRows = [](int between) {
        std::vector<TextSpan> spans = rowsBeside(101.9, 1.9, between);
        spans.push_back(madeSpan(180, 109.9, "subscript", {10}));
        return rowsOf(spans).size();
    };
    EXPECT_EQ(loweredRows(3), 4);
    EXPECT_EQ(loweredRows(4), 6);
    const auto raisedRows = [](int between) {
        std::vector<TextSpan> spans = rowsBeside(92, 1.9, between);
        spans.push_back(madeSpan(180, 90, "exponents", {10}));
        return rowsOf(spans).size();
    };
    EXPECT_EQ(raisedRows(2), 3);
    EXPECT_EQ(raisedRows(3), 5);
}

TEST(SpanRows, LoweredTextTouchesOneOfTheLastInItsRow) {
    const auto isOneRow = [](int behind) {
        std::vector<TextSpan> spans{word};
        for (int i = 0; i < behind; ++i)
            spans.push_back(madeSpan(300 + 10 * i, 100, "x", {big}));
        spans.push_back(madeSpan(140, 104, "subscript", {10}));
        return rowsOf(spans).size() == 1;
    };
    EXPECT_TRUE(isOneRow(199));
    EXPECT_FALSE(isOneRow(200));
}

/// Whether the spans of a row stay together: texts of a size one behind the other, then one behind a gap.
bool stayTogether(const QStringList &texts, double gap, double size = 10) {
    std::vector<TextSpan> spans;
    double x = 60;
    for (const QString &text : texts) {
        spans.push_back(madeSpan(x, 100, text, {size}));
        x = spans.back().box.right();
    }
    spans.push_back(madeSpan(x + gap, 100, "Title", {size}));
    return partedAtGaps(spanRows(spans).at(0)).size() == 1;
}

TEST(SpanRows, GapsInSmallTextMayBeWider) {
    EXPECT_TRUE(stayTogether({"small"}, 8, 4));
    EXPECT_FALSE(stayTogether({"small"}, 10, 4));
}

TEST(SpanRows, NumbersThatKeepTheirTitleAreShort) {
    EXPECT_TRUE(stayTogether({"Appendix 12.34"}, 30));
    EXPECT_FALSE(stayTogether({"Appendix 12.345"}, 30));
    EXPECT_TRUE(stayTogether({"1", ".", "2"}, 30));
    EXPECT_FALSE(stayTogether({"1", ".", "2", "."}, 30));
}

}  // namespace
}  // namespace leafwright

#include "exchange/ExchangeFixture.h"
#include "exchange/JsonNodeChecks.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::HasSubstr;

QJsonArray nodesOf(const QByteArray &text) {
    return QJsonDocument::fromJson(text).array();
}

/// A file with an entry on its first page, one on its second and one that launches a program.
class JsonNumbers : public testing::Test {
protected:
    JsonNumbers() {
        inFile.insert(5, {"Intro", PDFDestination{0, {72, 700}}, {}});
        inFile.insert(6, {"Body", PDFDestination{1, {72, 600}}, {}});
        inFile.insert(7, {"Play", std::nullopt, {}});
        inFile[7].entry.action = OutlineEntry::Action{"Launch"};
    }
    bool areOfFile(const QByteArray &text) const { return areNumberedAsInFile(nodesOf(text), inFile); }

    OutlineEntries inFile;
};

TEST_F(JsonNumbers, OfTheFileHaveItsTitles) {
    EXPECT_TRUE(
        areOfFile(R"([{"title": "Intro", "entry": 5, "children": [{"title": "Body", "entry": 6}]}])"));
    EXPECT_FALSE(areOfFile(R"([{"title": "Body", "entry": 5}, {"title": "Intro", "entry": 6}])"));
}

TEST_F(JsonNumbers, OfTheFileLeadWhereItsEntriesLeadWhenAllAreRenamed) {
    EXPECT_TRUE(areOfFile(R"([{"title": "A", "entry": 5, "pageIndex": 0, "point": [72, 700]},
                              {"title": "B", "entry": 6, "pageIndex": 1, "point": [72, 600]},
                              {"title": "C", "entry": 7, "action": {"type": "Launch"}}])"));
    EXPECT_TRUE(areOfFile(R"([{"title": "C", "entry": 7, "action": {"type": "Launch"}}])"));
}

TEST_F(JsonNumbers, OfAnotherFileHaveNeitherTitlesNorTargetsInCommon) {
    EXPECT_FALSE(areOfFile(R"([{"title": "A", "entry": 5, "pageIndex": 4, "point": [72, 700]},
                               {"title": "C", "entry": 7, "action": {"type": "Launch"}}])"));
    EXPECT_FALSE(areOfFile(R"([{"title": "A", "entry": 5, "pageIndex": 0, "point": [72, 100]}])"));
    EXPECT_FALSE(areOfFile(R"([{"title": "C", "entry": 7, "action": {"type": "JavaScript"}}])"));
    EXPECT_FALSE(areOfFile(R"([{"title": "C", "entry": 7, "pageIndex": 0, "action": {"type": "Launch"}}])"));
}

TEST_F(JsonNumbers, ToLeadNowhereIsNothingInCommon) {
    inFile.insert(5, {"Part", std::nullopt, {}});
    EXPECT_FALSE(areOfFile(R"([{"title": "A", "entry": 5},
                               {"title": "C", "entry": 7, "action": {"type": "Launch"}}])"));
}

TEST_F(JsonNumbers, AddressesTellFilesApart) {
    inFile[7].entry.action = OutlineEntry::Action{"URI", "about:blank"};
    EXPECT_TRUE(
        areOfFile(R"([{"title": "C", "entry": 7, "action": {"type": "URI", "uri": "about:blank"}}])"));
    EXPECT_FALSE(areOfFile(R"([{"title": "C", "entry": 7, "action": {"type": "URI", "uri": "about:x"}}])"));
}

TEST_F(JsonNumbers, ATitleThatManyFilesHaveIsNotEnough) {
    EXPECT_FALSE(areOfFile(R"([{"title": "Intro", "entry": 5}, {"title": "B", "entry": 6, "pageIndex": 9},
                               {"title": "C", "entry": 7, "pageIndex": 9}])"));
}

TEST_F(JsonNumbers, CopiesOfANodeThatWereEditedAreNoStrangers) {
    EXPECT_TRUE(areOfFile(R"([{"title": "Intro", "entry": 5}, {"title": "B", "entry": 5, "pageIndex": 8},
                              {"title": "C", "entry": 6, "pageIndex": 9}])"));
}

TEST_F(JsonNumbers, ThatTheFileDoesNotHaveSayNothing) {
    EXPECT_TRUE(areOfFile(R"([{"title": "A", "entry": 99}, {"title": "B"}])"));
    EXPECT_TRUE(areOfFile("[]"));
}

class JsonKeys : public test::ExchangeFixture {
protected:
    /// What is told of a text, a line each.
    QString noticesOf(const QByteArray &text) const {
        QStringList notices;
        const OutlineTree tree = readOutline(*outlineFormatNamed(u"json"), text, {pages, {}, &notices});
        EXPECT_TRUE(std::holds_alternative<std::unique_ptr<MyOutlineItem>>(tree));
        return notices.join(u'\n');
    }
};

TEST_F(JsonKeys, ThatAreNotKnownAreToldOnceWithTheirPlace) {
    EXPECT_EQ(noticesOf(R"([{"title": "A", "children": [{"title": "B", "kids": [{}]}]},
                            {"title": "C", "kids": [], "colour": 5}])"),
              "keys that are not known were passed over, with all that they hold: [0].children[0].kids, "
              "[1].colour; known are title, pageLabel, pageIndex, point, bold, italic, color, open, action, "
              "entry, children");
}

TEST_F(JsonKeys, ThatAreNotKnownAreNotAllListed) {
    EXPECT_THAT(
        noticesOf(R"([{"title": "A", "k1": 1, "k2": 1, "k3": 1, "k4": 1, "k5": 1, "k6": 1}])").toStdString(),
        HasSubstr("[0].k4, [0].k5, ...; known are"));
}

TEST_F(JsonKeys, ThatAreWrittenAreAllKnown) {
    EXPECT_EQ(noticesOf(written("json", {{"A", "1", {5, 6}, {{"B", QString()}}}})), "");
    EXPECT_EQ(noticesOf(R"([{"title": "A", "level": 1, "evidence": ["style"], "confidence": 0.5}])"), "");
}

}  // namespace
}  // namespace leafwright

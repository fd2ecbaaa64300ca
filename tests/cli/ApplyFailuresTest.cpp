#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// A tree that `apply` refuses, where it says the fault is, and what it says of it.
struct BadTree {
    const char *name;
    QByteArray text;
    std::string where;
    std::string message;

    friend void PrintTo(const BadTree &tree, std::ostream *out) { *out << tree.name; }
};

class ApplyBadTree : public testing::TestWithParam<BadTree> {};

TEST_P(ApplyBadTree, IsRefusedWithPlaceAndReason) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 3, {"Old Entry"});
    const QByteArray before = bytesOf(path);
    saveBytes(dir.path("tree"), GetParam().text);
    const CliResult result = runCli({"apply", path, dir.path("tree"), "-o", path});
    EXPECT_EQ(result.exitCode, 1);
    const std::string place = GetParam().where.empty() ? "" : ": " + GetParam().where;
    EXPECT_THAT(result.err.toStdString(), StartsWith("leafwright-cli: " + dir.path("tree").toStdString() +
                                                     place + ": " + GetParam().message));
    EXPECT_EQ(result.err.count('\n'), 1);
    EXPECT_EQ(bytesOf(path), before);
}

const char *const pointMessage = "\"point\" must be two numbers, [x, y], in points\n";
const char *const indexMessage = "\"pageIndex\" must be a page, from 0 to 2\n";
const char *const colorMessage = "\"color\" must be null or three numbers from 0 to 1, [red, green, blue]\n";
const char *const entryMessage = "\"entry\" must be an object number or null\n";
const char *const titleMessage = "\"title\" must be a string\n";
const char *const utf8Message = "the text is not UTF-8\n";
const char *const lineMessage = "not of the form \"+ @12 Title\"\n";

INSTANTIATE_TEST_SUITE_P(
    Json, ApplyBadTree,
    testing::Values(
        BadTree{"NoArray", "{\"title\": \"A\"}", "", "an outline in JSON is an array of nodes\n"},
        BadTree{"NodeNoObject", "[5]", "[0]", "a node must be an object\n"},
        BadTree{"NodeIsArray", R"([{"title":"A"}, []])", "[1]", "a node must be an object\n"},
        BadTree{"NoTitle", "[{}]", "[0]", titleMessage},
        BadTree{"TitleNull", R"([{"title": null}])", "[0]", titleMessage},
        BadTree{"TitleNumber", R"([{"title": "A"}, {"title": 5}])", "[1]", titleMessage},
        BadTree{"LabelNumber", R"([{"title": "A", "pageLabel": 3}])", "[0]",
                "\"pageLabel\" must be a string or null\n"},
        BadTree{"IndexTooLarge", R"([{"title": "A", "pageIndex": 3}])", "[0]", indexMessage},
        BadTree{"IndexNegative", R"([{"title": "A", "pageIndex": -1}])", "[0]", indexMessage},
        BadTree{"IndexBroken", R"([{"title": "A", "pageIndex": 1.5}])", "[0]", indexMessage},
        BadTree{"IndexText", R"([{"title": "A", "pageIndex": "1"}])", "[0]", indexMessage},
        BadTree{"PointNumber", R"([{"title": "A", "point": 5}])", "[0]", pointMessage},
        BadTree{"PointShort", R"([{"title": "A", "point": [1]}])", "[0]", pointMessage},
        BadTree{"PointLong", R"([{"title": "A", "point": [1, 2, 3]}])", "[0]", pointMessage},
        BadTree{"PointText", R"([{"title": "A", "point": [1, "2"]}])", "[0]", pointMessage},
        BadTree{"PointFarOff", R"([{"title": "A", "point": [1e8, 2]}])", "[0]", pointMessage},
        BadTree{"BoldText", R"([{"title": "A", "bold": "yes"}])", "[0]", "\"bold\" must be true or false\n"},
        BadTree{"OpenNumber", R"([{"title": "A", "open": 1}])", "[0]", "\"open\" must be true or false\n"},
        BadTree{"ColorShort", R"([{"title": "A", "color": [1, 0]}])", "[0]", colorMessage},
        BadTree{"ColorTooLarge", R"([{"title": "A", "color": [1, 0, 255]}])", "[0]", colorMessage},
        BadTree{"ColorName", R"([{"title": "A", "color": "red"}])", "[0]", colorMessage},
        BadTree{"ActionText", R"([{"title": "A", "action": "URI"}])", "[0]",
                "\"action\" must be null or an object with a \"type\"\n"},
        BadTree{"ActionWithoutAddress", R"([{"title": "A", "action": {"type": "URI"}}])", "[0]",
                "an \"action\" of type URI must have a \"uri\"\n"},
        BadTree{"EntryNegative", R"([{"title": "A", "entry": -1}])", "[0]", entryMessage},
        BadTree{"EntryText", R"([{"title": "A", "entry": "12"}])", "[0]", entryMessage},
        BadTree{"ChildrenObject", R"([{"title": "A", "children": {}}])", "[0]",
                "\"children\" must be an array\n"},
        BadTree{"Nested",
                R"([{"title":"A"},{"title":"B","children":[{"title":"C"},{"title":"D","children":[{}]}]}])",
                "[1].children[1].children[0]", titleMessage},
        BadTree{"CutShort", "[{\"title\":\n\"A\"},\n", "line 3", ""},
        BadTree{"CommaMissing", "[{\"title\": \"A\"}\n{\"title\": \"B\"}]", "line 2", ""},
        BadTree{"Trailing", "[]\n[]", "line 2", ""}),
    [](const auto &test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(PlusLines, ApplyBadTree,
                         testing::Values(BadTree{"NoTitle", "+ @1 A\n+ @2\n", "line 2", lineMessage},
                                         BadTree{"Prose", "This is prose.\n", "line 1", lineMessage},
                                         BadTree{"TwoBlanks", "+ @1 A\n\n+  @2 B\n", "line 3", lineMessage},
                                         BadTree{"OtherBullet", "* @1 A\n", "line 1", lineMessage},
                                         BadTree{"MixedBullets", "+- @1 A\n", "line 1", lineMessage},
                                         BadTree{"Latin1", "+ @1 A\n\n+ @2 Caf\xE9s\n", "line 3",
                                                 utf8Message},
                                         BadTree{"Cut", "+ @1 A\n+ @2 Caf\xC3", "line 2", utf8Message}),
                         [](const auto &test) { return std::string(test.param.name); });

TEST(ApplyCommand, JsonNestedTooDeeplyIsRefusedAndPlusLinesAreNot) {
    const TempDir dir;
    constexpr int levels = 10'001;
    QByteArray json;
    QByteArray lines;
    for (int i = 1; i <= levels; ++i) {
        json += R"([{"title":"L","pageLabel":"1","children":)";
        lines += QByteArray(i, '+') + " @1 L\n";
    }
    json += "[]";
    for (int i = 0; i < levels; ++i)
        json += "}]";
    const QString path = savePdf(dir, "in.pdf", 1);
    saveBytes(dir.path("json"), json);
    saveBytes(dir.path("lines"), lines);

    const CliResult refused = runCli({"apply", path, dir.path("json"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err.toStdString(),
                HasSubstr("json: the JSON is nested too deeply; plus lines hold outlines of any depth"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));

    EXPECT_EQ(runCli({"apply", path, dir.path("lines"), "-o", dir.path("out.pdf")}).exitCode, 0);
    EXPECT_EQ(runCli({"outline", dir.path("out.pdf"), "--format", "plus"}).out, lines);
}

TEST(ApplyCommand, MissingTreeFileIsAFailure) {
    const TempDir dir;
    const CliResult result =
        runCli({"apply", savePdf(dir, "in.pdf", 1), dir.path("missing"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("missing: the outline can't be read: "));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(ApplyCommand, AnEmptyTreeIsAFailureAndAnEmptyListIsNone) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 1, {"Old Entry"});
    const QByteArray before = bytesOf(path);
    for (const char *nothing :
         {"", "\n", "  \n\t", "\xEF\xBB\xBF", "\xEF\xBB\xBF\n", "<opml></opml>",
          "<?xml version=\"1.0\"?>\n<opml><body/></opml>", "{\"bookmarks\": []}", "<ul></ul>"}) {
        saveBytes(dir.path("tree"), nothing);
        const CliResult result = runCli({"apply", path, dir.path("tree"), "-o", path});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.err, "leafwright-cli: " + dir.path("tree").toUtf8() +
                                  ": there is no entry in it; [] in JSON says that no outline is wanted\n");
    }
    const StandardInput input(dir.path("tree"));
    EXPECT_EQ(runCli({"apply", path, "-", "-o", path}).exitCode, 1);
    EXPECT_EQ(bytesOf(path), before);
    saveBytes(dir.path("tree"), "[]");
    EXPECT_EQ(runCli({"apply", path, dir.path("tree"), "-o", path}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(path), "");
}

TEST(ApplyCommand, ATreeThatCantBeReadToItsEndIsAFailure) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 1, {"Old Entry"});
    const QByteArray before = bytesOf(path);
    // A folder can be opened, but not read.
    const CliResult result = runCli({"apply", path, dir.path("."), "-o", path});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr(": the outline can't be read: Is a directory"));
    EXPECT_EQ(bytesOf(path), before);
}

TEST(ApplyCommand, LockedAndEncryptedFilesAreRefusedWithTheReason) {
    const TempDir dir;
    saveLockedPdf(dir, "locked.pdf");
    saveEncryptedPdf(dir, "encrypted.pdf");
    saveBytes(dir.path("tree"), "+ @1 A\n");
    const auto refusal = [&dir](const QString &name) {
        const CliResult result =
            runCli({"apply", dir.path(name), dir.path("tree"), "-o", dir.path("out.pdf")});
        EXPECT_EQ(result.exitCode, 1);
        return result.err.toStdString();
    };
    EXPECT_THAT(refusal("locked.pdf"), HasSubstr("locked.pdf: this PDF is locked"));
    EXPECT_THAT(refusal("encrypted.pdf"), HasSubstr("encrypted.pdf: this PDF is encrypted"));
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
}

TEST(ApplyCommand, FolderThatIsNotThereIsAFailure) {
    const TempDir dir;
    saveBytes(dir.path("tree"), "+ @1 A\n");
    const QString out = dir.path("missing/out.pdf");
    const CliResult result = runCli({"apply", savePdf(dir, "in.pdf", 1), dir.path("tree"), "-o", out});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr(out.toStdString() + " could not be written: "));
}

TEST(ApplyCommand, HardLinksThatAreLostAreTold) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 1);
    ASSERT_EQ(::link(QFile::encodeName(path), QFile::encodeName(dir.path("other.pdf"))), 0);
    saveBytes(dir.path("tree"), "+ @1 A\n");
    const CliResult result = runCli({"apply", "-q", path, dir.path("tree"), "-o", path});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "leafwright-cli: " + path.toUtf8() +
                              ": it had other names (hard links), which still lead to the old file\n");
}

TEST(ApplyCommand, FullDiskLeavesTheOldFileWhole) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 3, {"Old Entry"});
    const QByteArray before = bytesOf(path);
    saveBytes(dir.path("tree"), "+ @1 A\n");
    const QStringList filesBefore = QDir(dir.path(".")).entryList(QDir::AllEntries | QDir::Hidden);
    CliResult result{};
    {
        const FileSizeLimit limit(static_cast<unsigned long>(before.size()) + 10);
        result = runCli({"apply", path, dir.path("tree"), "-o", path});
    }
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("in.pdf could not be written: "));
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_EQ(QDir(dir.path(".")).entryList(QDir::AllEntries | QDir::Hidden), filesBefore);
}

}  // namespace
}  // namespace leafwright::test

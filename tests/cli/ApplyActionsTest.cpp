#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// A PDF of two pages with top-level entries, and what `apply` makes of its outline when it is edited.
class ApplyActions : public testing::Test {
protected:
    /// @param entries what each is beside its title, its title first: {"Web", "/A <</S /URI /URI (x)>>"}
    QString save(const QString &name, const std::vector<std::pair<std::string, std::string>> &entries) {
        PdfBuilder pdf;
        pdf.addNumberedPages(2);
        std::vector<OutlineEntry> titles;
        for (const auto &[title, rest] : entries)
            titles.push_back({"(" + title + ")", ""});
        const std::vector<int> numbers = addOutline(pdf, titles);
        for (size_t i = 0; i < entries.size(); ++i) {
            std::string object = "<< /Title (" + entries[i].first + ") " + entries[i].second;
            if (i + 1 < entries.size()) object += " /Next " + PdfBuilder::reference(numbers[i + 1]);
            pdf.replaceObject(numbers[i], object + " >>");
        }
        page = pdf.pageReference(1);
        pdf.save(dir.path(name));
        return dir.path(name);
    }
    QByteArray outlineIn(const QString &path) const { return runCli({"outline", path}).out; }
    /// @return what is said
    std::string apply(const QString &path, const QByteArray &tree) const {
        saveBytes(dir.path("tree"), tree);
        const CliResult result = runCli({"apply", "-q", path, dir.path("tree"), "-o", dir.path("out.pdf")});
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return result.err.toStdString();
    }

    const TempDir dir;
    std::string page;
};

const std::string web = "/A << /S /URI /URI (about:blank) >>";

TEST_F(ApplyActions, AnActionThatTheEntryOfTheFileDoesNotHaveIsToldToBeLost) {
    const QString path = save("in.pdf", {{"Web", web}, {"Other", ""}});
    const QByteArray tree = outlineIn(path);
    EXPECT_EQ(apply(path, tree), "");
    EXPECT_EQ(apply(path, QByteArray(tree).replace(R"({"type": "URI", "uri": "about:blank"})",
                                                   R"({"type": "Launch"})")),
              "leafwright-cli: 1 entries did something that only the file has that they come from; they are "
              "written without it\n");
}

TEST_F(ApplyActions, AnActionBesideAPageIsToldToBeLost) {
    const QString path = save("in.pdf", {{"Web", web}, {"Other", ""}});
    EXPECT_EQ(apply(path, outlineIn(path).replace(R"("pageLabel": null)", R"("pageLabel": "2")")),
              "leafwright-cli: 1 entries have an action beside their page; they lead to the page and are "
              "written without the action\n");
}

TEST_F(ApplyActions, WhatAFileHasBesideAPageStaysInSilence) {
    save("in.pdf", {{"A", ""}});
    const QString path = save("in.pdf", {{"Both", "/Dest [" + page + " /XYZ 1 2 null] " + web},
                                         {"Goes", "/A << /S /GoTo /D [" + page + " /XYZ 3 4 null] >>"}});
    const QByteArray tree = outlineIn(path);
    ASSERT_TRUE(tree.contains("GoTo") && tree.contains("URI")) << tree.constData();
    EXPECT_EQ(apply(path, tree), "");
    EXPECT_EQ(outlineIn(dir.path("out.pdf")), tree);
}

TEST_F(ApplyActions, KeysThatAreNotKnownAreToldAndTheRestIsRead) {
    const QString path = save("in.pdf", {{"Web", web}, {"Other", ""}});
    EXPECT_THAT(apply(path, outlineIn(path).replace("children", "kids")),
                HasSubstr("tree: keys that are not known were passed over, with all that they hold: "
                          "[0].kids; known are title, "));
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @ Web\n+ @ Other\n");
}

TEST_F(ApplyActions, TheNumbersOfAFileWithOtherTitlesBringNothingOfThisOne) {
    const QString program = "/A << /S /Launch /F (%1.exe) >>";
    save("in.pdf", {{"A", ""}, {"B", ""}});
    const std::string first = "/Dest [" + page + " /XYZ 0 9 null]";
    const std::string second = "/Dest [" + page + " /XYZ 5 50 null]";
    const QString mine = save("a.pdf", {{"One", first}, {"Run Mine", program.arg("mine").toStdString()}});
    const QString other =
        save("b.pdf", {{"Eins", second}, {"Run Other", program.arg("other").toStdString()}});
    ASSERT_TRUE(outlineIn(other).contains("50]")) << "it leads to a page";
    const std::string said = apply(other, outlineIn(mine));
    EXPECT_THAT(said, HasSubstr("the outline was made of another file, or of an earlier edition"));
    EXPECT_THAT(said, HasSubstr("1 entries did something that only the file has"));
    EXPECT_EQ(outlineIn(dir.path("out.pdf")).count("Launch"), 0);
}

}  // namespace
}  // namespace leafwright::test

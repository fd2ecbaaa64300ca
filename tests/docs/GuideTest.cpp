#include "app/Resources.h"
#include "autotoc/AutoTOC.h"
#include "autotoc/FontCensus.h"
#include "autotoc/HeadingLevelMap.h"
#include "categories/RunWalk.h"
#include "contents/FindContents.h"
#include "contents/PDFContentsPages.h"
#include "document/commands/ActionTable.h"
#include "support/OpenPdf.h"
#include "support/Paths.h"

#include <QDir>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// An entry of the outline, or a heading that should be one.
struct Line {
    QString title;
    int level;

    friend bool operator==(const Line &, const Line &) = default;
    friend void PrintTo(const Line &line, std::ostream *out) {
        *out << std::string(static_cast<size_t>(line.level), '+') << ' ' << line.title.toStdString();
    }
};

/// The text of all chapters.
QString chapters() {
    const QDir folder(test::projectPath("docs/guide"));
    QByteArray text;
    for (const QString &name : folder.entryList({"*.md"}, QDir::Files, QDir::Name))
        text += test::contentOf(folder.filePath(name)) + '\n';
    return QString::fromUtf8(text);
}

std::vector<Line> headings() {
    static const QRegularExpression fence(
        "^```.*?^```", QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression heading("^(#+) (.*)$", QRegularExpression::MultilineOption);
    std::vector<Line> lines{{"Leafwright User Guide", 1}, {"Contents", 1}};
    for (const auto &match : heading.globalMatch(chapters().remove(fence)))
        lines.push_back({match.captured(2), static_cast<int>(match.captured(1).size())});
    return lines;
}

/// The built guide.
class Guide : public testing::Test {
protected:
    /// Calls `visit(const PDFOutline &, int level)` for every entry, in order.
    template <typename Visit>
    void walk(const PDFOutline &parent, Visit &&visit, int level = 1) const {
        for (int i = 0; i < parent.numberOfChildren(); ++i) {
            visit(parent.childAtIndex(i), level);
            walk(parent.childAtIndex(i), visit, level + 1);
        }
    }
    std::vector<Line> outline() const {
        std::vector<Line> lines;
        walk(pdf->outlineRoot(), [&](const PDFOutline &entry, int level) {
            lines.push_back({entry.label(), level});
        });
        return lines;
    }

    std::unique_ptr<PDFDocument> pdf = test::openPdf(resourcePath("Leafwright User Guide.pdf"));
};

TEST_F(Guide, HasFifteenPagesOrMore) {
    EXPECT_GE(pdf->pageCount(), 15);
}

TEST_F(Guide, LabelsTheFrontWithRomanNumbersAndTheChaptersFromOne) {
    EXPECT_EQ(pdf->page(0)->label(), "i");
    EXPECT_EQ(pdf->page(1)->label(), "ii");
    const int first = pdf->outlineRoot().childAtIndex(2).destination()->pageIndex;
    EXPECT_EQ(pdf->page(first)->label(), "1");
    EXPECT_EQ(pdf->page(pdf->pageCount() - 1)->label(), QString::number(pdf->pageCount() - first));
}

TEST_F(Guide, HasEveryHeadingInItsOutline) {
    EXPECT_GT(headings().size(), 50U);
    EXPECT_EQ(outline(), headings());
}

TEST_F(Guide, EveryEntryLeadsToItsHeading) {
    constexpr double smallestHeading = 11;  // points
    constexpr double near = 12;
    int found = 0;
    walk(pdf->outlineRoot(), [&](const PDFOutline &entry, int) {
        ASSERT_TRUE(entry.destination()) << entry.label().toStdString();
        const PDFPage *page = pdf->page(entry.destination()->pageIndex);
        const auto text = page->text();
        for (size_t run = 0; run < text->attributedString.runs.size(); ++run) {
            const FontRun &each = text->attributedString.runs[run];
            if (each.font.pointSize() < smallestHeading) continue;
            if (text->attributedString.substring(each.range).simplified() != entry.label()) continue;
            // The cover and the contents lead to their pages as a whole.
            if (entry.destination()->pageIndex > 1) {
                EXPECT_NEAR(topLeftPointOfRun(*text, run).y(), entry.destination()->point.y(), near)
                    << entry.label().toStdString();
            }
            ++found;
        }
    });
    EXPECT_EQ(found, headings().size());
}

TEST_F(Guide, AutoTOCFindsTheSameOutline) {
    const HeadingLevelMap map = headingsfromFonts(calcFontsInDocument(*pdf));
    const auto top = runAutoTOCwithH1H2H3Map(*pdf, map, 3);
    std::vector<Line> found;
    for (const auto &chapter : top->children()) {
        found.push_back({chapter->pageTitle(), 1});
        for (const auto &section : chapter->children())
            found.push_back({section->pageTitle(), 2});
    }
    EXPECT_EQ(found, headings());
}

TEST_F(Guide, FindContentsFindsTheChaptersAndTheirSections) {
    // Neither the title nor the contents.
    const std::vector<Line> all = headings();
    const std::vector<Line> expected(all.begin() + 2, all.end());
    for (const bool textOnly : {false, true}) {
        ContentsOptions options;
        options.textOnly = textOnly;
        std::vector<Line> found;
        for (const ContentsEntry &entry : findContents(PDFContentsPages(*pdf), options).entries)
            found.push_back({entry.title, entry.level});
        EXPECT_EQ(found, expected);
    }
}

TEST(GuideText, NamesCommandsAndKeysAsTheyAre) {
    static const QRegularExpression pattern(R"(\*\*(\w+)\s+>\s+([^*]+)\*\*(?:\s+\(`([^`]+)`\))?)");
    int commands = 0;
    for (const auto &match : pattern.globalMatch(chapters())) {
        const QString menu = match.captured(1);
        const QString title = match.captured(2).simplified();
        ++commands;
        if (title == "Open Recent") continue;  // a menu in the menu
        const auto all = actionDescriptions();
        const auto command = std::ranges::find_if(all, [&](const ActionDescription &each) {
            return each.menu != Menu::None && menuTitle(each.menu).remove('&') == menu &&
                   actionTitle(each) == title;
        });
        ASSERT_NE(command, all.end()) << menu.toStdString() << " > " << title.toStdString();
        QString keys = match.captured(3);
        if (keys.isEmpty()) continue;
        EXPECT_EQ(keys.replace("Delete", "Del"), QString::fromLatin1(command->shortcut))
            << title.toStdString();
    }
    EXPECT_GT(commands, 40);
}

}  // namespace
}  // namespace leafwright

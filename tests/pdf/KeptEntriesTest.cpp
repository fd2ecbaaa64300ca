#include "support/CliRun.h"
#include "support/EntriesOfAllKinds.h"
#include "support/ObjectDiff.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>
#include <map>

namespace leafwright {
namespace {

using test::addEntries;
using test::addEntriesOfAllKinds;
using test::changedKeys;
using test::changedObjects;
using test::contentOf;
using test::objectsOf;
using test::openPdf;
using test::PdfBuilder;
using test::runCli;
using test::TempDir;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Keys = std::vector<std::string>;

std::unique_ptr<PDFOutline> copyOf(const PDFOutline &outline) {
    auto copy = std::make_unique<PDFOutline>(outline.label());
    copy->setDestination(outline.destination());
    copy->setEntry(outline.entry());
    for (int i = 0; i < outline.numberOfChildren(); ++i)
        copy->insertChildAtIndex(copyOf(outline.childAtIndex(i)), i);
    return copy;
}

/// An outline with all that an entry can have (ISO 32000-2, table 151 and 12.6.4), and what nobody knows.
class KeptEntries : public testing::Test {
protected:
    KeptEntries() {
        pdf.addNumberedPages(3);
        addEntriesOfAllKinds(pdf);
        pdf.save(in);
    }

    void write(std::unique_ptr<PDFOutline> outline) {
        const auto document = openPdf(in);
        document->setOutlineRoot(std::move(outline));
        const auto error = document->writeToFile(out);
        ASSERT_FALSE(error) << error->message.toStdString();
        EXPECT_EQ(test::runProgram("qpdf", {"--check", out}).exitCode, 0);
    }
    void throughOutlineAndApply() {
        const auto printed = runCli({"outline", in});
        ASSERT_EQ(printed.exitCode, 0);
        test::writeFile(dir.path("tree.json"), printed.out);
        const auto applied = runCli({"apply", "-q", in, dir.path("tree.json"), "-o", out});
        EXPECT_EQ(applied.exitCode, 0) << applied.err.toStdString();
        EXPECT_EQ(applied.err, "");
    }
    std::unique_ptr<PDFOutline> outlineInFile() const { return copyOf(openPdf(in)->outlineRoot()); }

    PdfBuilder pdf;
    const TempDir dir;
    const QString in = dir.path("in.pdf");
    const QString out = dir.path("out.pdf");
};

TEST_F(KeptEntries, AreReadWithAllThatCanBeSeen) {
    const auto root = outlineInFile();
    EXPECT_TRUE(root->entry().number);
    const OutlineEntry first = root->childAtIndex(0).entry();
    EXPECT_TRUE(first.bold && first.italic);
    EXPECT_FALSE(first.open);
    ASSERT_TRUE(first.color);
    EXPECT_EQ(*first.color, (OutlineEntry::Color{1, 0.5, 0}));
    EXPECT_FALSE(first.action);
    EXPECT_EQ(root->childAtIndex(4).entry().action, (OutlineEntry::Action{"GoToR", "other.pdf"}));
    EXPECT_EQ(root->childAtIndex(9).entry().action, (OutlineEntry::Action{"URI", "about:blank"}));
    EXPECT_EQ(root->childAtIndex(7).entry().action, (OutlineEntry::Action{"Launch"}));
    EXPECT_TRUE(root->childAtIndex(23).entry().open);
}

TEST_F(KeptEntries, AnOutlineThatHasNotChangedChangesNothing) {
    write(outlineInFile());
    EXPECT_EQ(contentOf(out), contentOf(in));
}

TEST_F(KeptEntries, ARenamedEntryChangesItsTitleOnly) {
    for (int i = 0; i < 24; ++i) {
        auto root = outlineInFile();
        const int number = root->childAtIndex(i).entry().number.value();
        root->childAtIndex(i).setLabel("Renamed");
        write(std::move(root));
        EXPECT_THAT(changedObjects(in, out), ElementsAre(number));
        EXPECT_THAT(changedKeys(in, out, number), ElementsAre("/Title"));
        EXPECT_TRUE(contentOf(out).startsWith(contentOf(in)));
    }
}

TEST_F(KeptEntries, AMovedEntryChangesLinksOnly) {
    const auto root = outlineInFile();
    auto moved = std::make_unique<PDFOutline>();
    for (const int i : {0, 2, 3, 1})
        moved->insertChildAtIndex(copyOf(root->childAtIndex(i)), moved->numberOfChildren());
    for (int i = 4; i < 24; ++i)
        moved->insertChildAtIndex(copyOf(root->childAtIndex(i)), i);
    write(std::move(moved));
    std::vector<int> numbers;
    for (int i = 0; i < 5; ++i)
        numbers.push_back(root->childAtIndex(i).entry().number.value());
    EXPECT_THAT(changedObjects(in, out), testing::UnorderedElementsAreArray(numbers));
    for (const int number : numbers)
        for (const std::string &key : changedKeys(in, out, number))
            EXPECT_TRUE(key == "/Prev" || key == "/Next") << key;
    EXPECT_THAT(changedKeys(in, out, numbers[0]), ElementsAre("/Next"));
    EXPECT_THAT(changedKeys(in, out, numbers[4]), ElementsAre("/Prev"));
}

TEST_F(KeptEntries, ANewTargetTakesThePlaceOfTheOldOne) {
    auto root = outlineInFile();
    const int number = root->childAtIndex(9).entry().number.value();
    root->childAtIndex(9).setDestination(PDFDestination{2, {1, 2}});
    write(std::move(root));
    EXPECT_THAT(changedObjects(in, out), ElementsAre(number));
    EXPECT_THAT(changedKeys(in, out, number), ElementsAre("/A", "/Dest"));
    EXPECT_EQ(openPdf(out)->outlineRoot().childAtIndex(9).entry().color, (OutlineEntry::Color{0, 0, 1}));
}

TEST_F(KeptEntries, WhatAnActionDoesBesideLeadingToAPageItGoesOnDoing) {
    auto root = outlineInFile();
    const int direct = root->childAtIndex(2).entry().number.value();
    const int structured = root->childAtIndex(3).entry().number.value();
    root->childAtIndex(2).setDestination(PDFDestination{2, {1, 2}});
    root->childAtIndex(3).setDestination(PDFDestination{2, {1, 2}});
    write(std::move(root));
    EXPECT_THAT(changedKeys(in, out, direct), ElementsAre("/A"));
    EXPECT_THAT(objectsOf(out).at(direct),
                testing::AllOf(HasSubstr("/XYZ 1 2 null"), HasSubstr("/Next << /N /NextPage /S /Named >>")));
    EXPECT_THAT(changedKeys(in, out, structured), ElementsAre("/A", "/Dest")) << "of another page";
    EXPECT_EQ(openPdf(out)->outlineRoot().childAtIndex(2).destination(), (PDFDestination{2, {1, 2}}));
}

/// Entries that lead to no particular spot of their page get one when they are saved, and nothing else.
TEST_F(KeptEntries, OnesThatGetTheirSpotKeepZoomAndWhatTheirActionDoes) {
    const std::string page = pdf.pageReference(1);
    const std::string structure = PdfBuilder::reference(pdf.addObject("<< /Type /StructElem /S /H1 >>"));
    const std::string shared = PdfBuilder::reference(
        pdf.addObject("<< /S /GoTo /D [" + page + " /Fit] /Next << /S /Named /N /NextPage >> >>"));
    addEntries(pdf, {"/Dest [" + page + " /XYZ null null 2]",
                     "/A << /S /GoTo /D [" + page + " /Fit] /SD [" + structure + " /Fit] >>", "/A " + shared,
                     "/A << /S /GoTo /D [" + page + " /XYZ 0 0 0.50] >>", "/Dest [" + page + " /Fit]"});
    pdf.save(in);
    auto root = outlineInFile();
    std::vector<int> numbers;
    for (int i = 0; i < 5; ++i) {
        numbers.push_back(root->childAtIndex(i).entry().number.value());
        root->childAtIndex(i).setDestination(PDFDestination{1, {306, 792}});
    }
    write(std::move(root));
    const auto written = objectsOf(out);
    EXPECT_THAT(written.at(numbers[0]), HasSubstr("/XYZ 306 792 2 ]"));
    EXPECT_THAT(written.at(numbers[1]), testing::AllOf(HasSubstr("/XYZ 306 792 null"), HasSubstr("/SD")));
    EXPECT_THAT(written.at(numbers[2]), testing::AllOf(HasSubstr("/XYZ 306 792 null"), HasSubstr("/Next")));
    EXPECT_THAT(written.at(numbers[3]), testing::AllOf(HasSubstr("/Dest"), HasSubstr("/XYZ 306 792 0.5 ]")));
    EXPECT_THAT(written.at(numbers[4]), HasSubstr("/XYZ 306 792 null"));
    EXPECT_THAT(changedObjects(in, out), testing::UnorderedElementsAreArray(numbers))
        << "not the action that is shared";
}

TEST_F(KeptEntries, AnActionWithAnotherTargetGoesOnDoingTheRest) {
    const std::string shared = PdfBuilder::reference(
        pdf.addObject("<< /S /GoToR /F << /Type /Filespec /F (a.pdf) >> /D (part) /NewWindow true >>"));
    addEntries(pdf, {"/A << /S /URI /URI (about:blank) /IsMap true /Next << /S /Named /N /NextPage >> >>",
                     "/A " + shared, "/A << /S /URI /URI (about:blank) >>"});
    pdf.save(in);
    auto root = outlineInFile();
    std::vector<int> numbers;
    const OutlineEntry::Action actions[] = {{"URI", "about:other"}, {"GoToR", "b.pdf"}, {"GoToR", "c.pdf"}};
    for (int i = 0; i < 3; ++i) {
        OutlineEntry entry = root->childAtIndex(i).entry();
        numbers.push_back(entry.number.value());
        entry.action = actions[i];
        root->childAtIndex(i).setEntry(entry);
    }
    write(std::move(root));
    const auto written = objectsOf(out);
    EXPECT_THAT(written.at(numbers[0]),
                testing::AllOf(HasSubstr("(about:other)"), HasSubstr("/IsMap true"), HasSubstr("/NextPage")));
    EXPECT_THAT(written.at(numbers[1]),
                testing::AllOf(HasSubstr("(b.pdf)"), HasSubstr("/D (part)"), HasSubstr("/NewWindow true"),
                               Not(HasSubstr("a.pdf"))));
    EXPECT_THAT(written.at(numbers[2]),
                testing::AllOf(HasSubstr("(c.pdf)"), HasSubstr("/GoToR"), Not(HasSubstr("about"))));
    EXPECT_THAT(changedObjects(in, out), testing::UnorderedElementsAreArray(numbers))
        << "not the action that is shared";
}

/// Beside a destination there is to be no action (ISO 32000-1, table 153), but who knows.
TEST_F(KeptEntries, ADestinationThatGetsItsSpotLeavesTheActionBesideIt) {
    const std::string page = pdf.pageReference(1);
    addEntries(pdf,
               {"/Dest [" + page + " /XYZ 0 0 3] /A << /S /URI /URI (about:blank) >>",
                "/Dest [" + page + " /Fit] /A << /S /GoTo /D [0 /Fit] /Next << /S /Named /N /Print >> >>"});
    pdf.save(in);
    auto root = outlineInFile();
    for (int i = 0; i < 2; ++i) {
        const int number = root->childAtIndex(i).entry().number.value();
        root->childAtIndex(i).setDestination(PDFDestination{1, {306, 792}});
        write(copyOf(*root));
        EXPECT_THAT(changedKeys(in, out, number), ElementsAre("/Dest"));
    }
}

TEST_F(KeptEntries, ASecondOneIsACopy) {
    auto root = outlineInFile();
    root->insertChildAtIndex(copyOf(root->childAtIndex(0)), 24);
    write(std::move(root));
    const auto written = openPdf(out);
    const PDFOutline &copy = written->outlineRoot().childAtIndex(24);
    EXPECT_NE(copy.entry().number, written->outlineRoot().childAtIndex(0).entry().number);
    EXPECT_THAT(objectsOf(out).at(copy.entry().number.value()),
                testing::AllOf(HasSubstr("/Private (mine)"), HasSubstr("/XYZ 72.00000001 700 1.5"),
                               HasSubstr("/C [ 1 0.50000001 0 ]")));
}

TEST_F(KeptEntries, StylesThatChangeAreWritten) {
    auto root = outlineInFile();
    OutlineEntry plain = root->childAtIndex(0).entry();
    const int number = plain.number.value();
    plain.bold = false;
    plain.color.reset();
    root->childAtIndex(0).setEntry(plain);
    write(std::move(root));
    EXPECT_THAT(changedKeys(in, out, number), ElementsAre("/C", "/F"));
    EXPECT_EQ(openPdf(out)->outlineRoot().childAtIndex(0).entry(), plain);
}

TEST_F(KeptEntries, FlagsThatNobodyKnowsStay) {
    addEntries(pdf, {"/F 5", "/F " + PdfBuilder::reference(pdf.addObject("5"))});
    pdf.save(in);
    auto root = outlineInFile();
    for (int i = 0; i < 2; ++i) {
        OutlineEntry bold = root->childAtIndex(i).entry();
        bold.bold = true;
        root->childAtIndex(i).setEntry(bold);
    }
    const std::vector<int> numbers{root->childAtIndex(0).entry().number.value(),
                                   root->childAtIndex(1).entry().number.value()};
    write(std::move(root));
    for (const int number : numbers)
        EXPECT_THAT(objectsOf(out).at(number), HasSubstr("/F 7 "));
}

TEST_F(KeptEntries, NewEntriesMayHaveAStyle) {
    auto root = std::make_unique<PDFOutline>();
    PDFOutline &entry = root->insertChildAtIndex(std::make_unique<PDFOutline>("New"), 0);
    entry.setEntry({.bold = true, .open = true, .color = OutlineEntry::Color{0.25, 0.5, 1}});
    entry.insertChildAtIndex(std::make_unique<PDFOutline>("Below"), 0)
        .setEntry({.action = OutlineEntry::Action{"GoToR", "größe.pdf"}});
    root->insertChildAtIndex(std::make_unique<PDFOutline>("Web"), 1)
        .setEntry({.action = OutlineEntry::Action{"URI", "about:blank"}});
    write(std::move(root));
    const auto written = openPdf(out);
    const PDFOutline &read = written->outlineRoot().childAtIndex(0);
    EXPECT_TRUE(read.entry().bold && read.entry().open);
    EXPECT_FALSE(read.entry().italic);
    EXPECT_EQ(read.entry().color, (OutlineEntry::Color{0.25, 0.5, 1}));
    EXPECT_EQ(read.childAtIndex(0).entry().action, (OutlineEntry::Action{"GoToR", "größe.pdf"}));
    EXPECT_EQ(written->outlineRoot().childAtIndex(1).entry().action,
              (OutlineEntry::Action{"URI", "about:blank"}));
}

TEST_F(KeptEntries, NewEntriesDoNothingWhereItIsNotKnownInFull) {
    auto root = std::make_unique<PDFOutline>();
    for (const char *type : {"URI", "GoToR", "Launch"})
        root->insertChildAtIndex(std::make_unique<PDFOutline>(type), root->numberOfChildren())
            .setEntry({.action = OutlineEntry::Action{type, {}}});
    write(std::move(root));
    const auto written = openPdf(out);
    ASSERT_EQ(written->outlineRoot().numberOfChildren(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(written->outlineRoot().childAtIndex(i).entry().action, std::nullopt) << i;
}

TEST_F(KeptEntries, OpenOnesCountWhatIsSeen) {
    auto root = outlineInFile();
    PDFOutline &parent = root->childAtIndex(23);
    parent.childAtIndex(0).insertChildAtIndex(std::make_unique<PDFOutline>("Closed away"), 0);
    parent.insertChildAtIndex(std::make_unique<PDFOutline>("Seen"), 2);
    const int parentNumber = parent.entry().number.value();
    const int childNumber = parent.childAtIndex(0).entry().number.value();
    const int rootNumber = root->entry().number.value();
    write(std::move(root));
    const auto objects = objectsOf(out);
    EXPECT_THAT(objects.at(parentNumber), HasSubstr("/Count 3"));
    EXPECT_THAT(objects.at(childNumber), HasSubstr("/Count -1"));
    EXPECT_THAT(objects.at(rootNumber), HasSubstr("/Count 27"));
    EXPECT_THAT(objects.at(rootNumber), HasSubstr("/Private true"));
}

TEST_F(KeptEntries, AnEntryThatIsAlsoAPageIsCopied) {
    pdf.setCatalogEntry("/Outlines", "<< /First " + pdf.pageReference(0) + " >>");
    pdf.save(in);
    auto root = outlineInFile();
    ASSERT_EQ(root->numberOfChildren(), 1);
    const int page = root->childAtIndex(0).entry().number.value();
    root->childAtIndex(0).setLabel("Renamed");
    write(std::move(root));
    EXPECT_EQ(objectsOf(out).at(page), objectsOf(in).at(page));
    EXPECT_EQ(openPdf(out)->pageCount(), 3);
    EXPECT_THAT(test::linesOf(openPdf(out)->outlineRoot()), ElementsAre("Renamed"));
}

TEST_F(KeptEntries, ThroughOutlineAndApplyNothingChanges) {
    throughOutlineAndApply();
    EXPECT_EQ(contentOf(out), contentOf(in));
}

TEST_F(KeptEntries, ThroughApplyOnlyWhatWasEditedChanges) {
    QByteArray tree = runCli({"outline", in}).out;
    tree.replace("\"title\": \"4\"", "\"title\": \"Renamed\"");
    test::writeFile(dir.path("tree.json"), tree);
    ASSERT_EQ(runCli({"apply", in, dir.path("tree.json"), "-o", out}).exitCode, 0);
    const int number = openPdf(in)->outlineRoot().childAtIndex(4).entry().number.value();
    EXPECT_THAT(changedObjects(in, out), ElementsAre(number));
    EXPECT_THAT(changedKeys(in, out, number), ElementsAre("/Title"));
}

TEST_F(KeptEntries, ANullOutlineEntryLeavesNoOthersBehind) {
    write(std::make_unique<PDFOutline>());
    EXPECT_FALSE(openPdf(out)->hasOutline());
    EXPECT_THAT(test::linesOf(openPdf(out)->outlineRoot()), IsEmpty());
}

/// Qt takes the sign for a mark of the encoding at the beginning of what it reads.
TEST_F(KeptEntries, ATitleThatBeginsWithAMarkOfTheEncodingKeepsIt) {
    addEntries(pdf, {"/Priv true", "/Title <FEFFFEFF0041>"});
    pdf.save(in);
    throughOutlineAndApply();
    EXPECT_EQ(contentOf(out), contentOf(in));
}

/// What a file has that is damaged is spelled by the library that could repair it: 0.5 for 0.50000000001,
/// 1.1 for 1.10, 72 for 72.00000001.
TEST_F(KeptEntries, OfAFileThatMustBeRepairedKeepWhatTheyHave) {
    QByteArray bytes = contentOf(in);
    bytes.replace("startxref", "startxxxx");
    test::writeFile(in, bytes);
    auto root = outlineInFile();
    root->childAtIndex(0).setLabel("Renamed");
    write(std::move(root));
    const auto now = openPdf(out);
    const auto before = openPdf(in);
    EXPECT_TRUE(before->wasRepaired());
    EXPECT_FALSE(now->wasRepaired());
    const std::map<int, Keys> changes{{0, {"/C", "/Dest", "/Title"}}, {10, {"/A"}}, {23, {"/Private"}}};
    for (int i = 0; i < 24; ++i) {
        const int number = now->outlineRoot().childAtIndex(i).entry().number.value();
        EXPECT_EQ(changedKeys(in, out, number), changes.contains(i) ? changes.at(i) : Keys{}) << i;
    }
}

}  // namespace
}  // namespace leafwright

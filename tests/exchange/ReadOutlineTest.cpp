#include "exchange/ReadOutline.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

constexpr int number = 5;

/// What is lost of one entry, as "unknown besidePages".
QString lostOf(const OutlineEntry &entry, const QString &label, const OutlineEntries &inFile) {
    MyOutlineItem root;
    root.appendChild(std::make_unique<MyOutlineItem>("A", PageTarget{label})).setEntry(entry);
    const LostActions lost = lostActions(root, inFile);
    return QStringLiteral("%1 %2").arg(lost.unknown).arg(lost.besidePages);
}

OutlineEntry acting(const QString &type, const std::optional<QString> &target = {}) {
    OutlineEntry entry;
    entry.number = number;
    entry.action = OutlineEntry::Action{type, target};
    return entry;
}

OutlineEntries fileWith(const OutlineEntry &entry, const std::optional<PDFDestination> &destination = {}) {
    return {{number, {"A", destination, entry}}};
}

TEST(LostActions, AreThoseThatTheEntryOfTheFileDoesNotHave) {
    const QString noPage;
    EXPECT_EQ(lostOf(acting("Launch"), noPage, fileWith(acting("Launch"))), "0 0");
    EXPECT_EQ(lostOf(acting("Launch"), noPage, fileWith(acting("URI", "about:blank"))), "1 0");
    EXPECT_EQ(lostOf(acting("Launch"), noPage, fileWith({})), "1 0");
    EXPECT_EQ(lostOf(acting("Launch"), noPage, {}), "1 0");
    EXPECT_EQ(lostOf(acting("URI", "about:x"), noPage, fileWith(acting("URI", "about:blank"))), "0 0");
    EXPECT_EQ(lostOf({}, noPage, fileWith(acting("Launch"))), "0 0") << "it was taken away";
}

TEST(LostActions, AreThoseBesideAPageUnlessTheFileHasBoth) {
    const PDFDestination page{0, {72, 700}};
    EXPECT_EQ(lostOf(acting("URI", "about:blank"), "1", fileWith({}, page)), "0 1");
    EXPECT_EQ(lostOf(acting("URI", "about:blank"), "1", {}), "0 1");
    EXPECT_EQ(lostOf(acting("Launch"), "1", fileWith(acting("Launch"))), "0 1") << "it has a page now";
    EXPECT_EQ(lostOf(acting("Launch"), "1", fileWith(acting("Launch"), page)), "0 0");
    EXPECT_EQ(lostOf(acting("Launch"), {}, fileWith(acting("Launch"), page)), "1 0") << "its page is gone";
    EXPECT_EQ(lostOf(acting("GoTo"), "1", {}), "0 0") << "the page is where it goes";
}

}  // namespace
}  // namespace leafwright

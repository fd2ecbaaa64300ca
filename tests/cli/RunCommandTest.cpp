#include "document/commands/ActionTable.h"
#include "script/ScriptStep.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

// What needs no windows. The scripts themselves are tests/scripts.

TEST(RunCommand, ListsEveryCommandWithTitleMenuAndShortcut) {
    const CliResult result = runCli({"run", "--list"});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    const QJsonArray list = parsedJson(result.out).array();
    ASSERT_EQ(list.size(), static_cast<qsizetype>(actionDescriptions().size()));
    EXPECT_TRUE(list.contains(QJsonObject{
        {"selector", "moveLeft:"}, {"title", "Move Left"}, {"menu", "Outline"}, {"shortcut", "Alt+Left"}}));
    EXPECT_TRUE(list.contains(QJsonObject{{"selector", "dumpFontsOnCurrentPage:"},
                                          {"title", "Log Fonts of Current Page"},
                                          {"menu", QJsonValue::Null},
                                          {"shortcut", QJsonValue::Null}}))
        << "also those that no menu lists";
}

TEST(RunCommand, WithoutTheListItWantsScriptAndFile) {
    const CliResult result = runCli({"run", "steps.json"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("FILE is missing"));
}

TEST(RunCommand, AScriptThatCantBeReadIsTold) {
    const TempDir dir;
    const CliResult missing = runCli({"run", dir.path("no.json"), "a.pdf"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.err.toStdString(), HasSubstr("no.json: the script can't be read: "));
    saveBytes(dir.path("bad.json"), R"([{"do": "fly"}])");
    const CliResult wrong = runCli({"run", dir.path("bad.json"), "a.pdf"});
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_THAT(wrong.err.toStdString(), HasSubstr("bad.json: step 1 (fly): there is no such step"));
}

TEST(RunCommand, ThereIsNoCommandNamedLikeAGesture) {
    for (const QString &name : script::gestureNames())
        EXPECT_EQ(actionDescription(name), nullptr) << qPrintable(name);
}

}  // namespace
}  // namespace leafwright::test

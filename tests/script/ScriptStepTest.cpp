#include "script/ScriptStep.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace leafwright::script {
namespace {

using testing::ElementsAre;

/// What is wrong with a script; empty if nothing is.
QString problemOf(const QByteArray &json) {
    const auto steps = parseSteps(json);
    const auto *problem = std::get_if<QString>(&steps);
    return problem ? *problem : QString("");
}

std::vector<Step> stepsOf(const QByteArray &json) {
    const auto steps = parseSteps(json);
    return std::get<std::vector<Step>>(steps);
}

TEST(ScriptStep, CommandsAndGesturesAreTold) {
    const auto steps = stepsOf(R"([{"do": "moveLeft:"}, {"do": "select", "paths": [[0, 2], [1]]}])");
    ASSERT_EQ(steps.size(), 2);
    EXPECT_EQ(steps[0].number, 1);
    EXPECT_EQ(steps[0].name, "moveLeft:");
    EXPECT_TRUE(steps[0].isCommand);
    EXPECT_EQ(steps[1].number, 2);
    EXPECT_FALSE(steps[1].isCommand);
    EXPECT_THAT(pathsOf(steps[1]["paths"]), ElementsAre(IndexPath{0, 2}, IndexPath{1}));
}

TEST(ScriptStep, AnEmptyScriptIsOne) {
    EXPECT_TRUE(stepsOf("[]").empty());
}

TEST(ScriptStep, WhatIsNoArrayOfStepsIsToldWithItsLine) {
    EXPECT_EQ(problemOf("[\n  {\"do\" \"moveLeft:\"}\n]"), "line 2: missing name separator");
    EXPECT_EQ(problemOf(R"({"do": "moveLeft:"})"), "a script is an array of steps");
    EXPECT_EQ(problemOf(R"([{"do": "moveLeft:"}, 3])"), "step 2: it must be an object with a text \"do\"");
    EXPECT_EQ(problemOf(R"([{"do": 3}])"), "step 1: it must be an object with a text \"do\"");
}

TEST(ScriptStep, AnUnknownStepIsToldWithItsNumberAndName) {
    EXPECT_EQ(problemOf(R"([{"do": "moveLeft:"}, {"do": "moveLeft"}])"),
              "step 2 (moveLeft): there is no such step");
}

TEST(ScriptStep, AMissingArgumentIsTold) {
    EXPECT_EQ(problemOf(R"([{"do": "select"}])"), "step 1 (select): \"paths\" is missing");
    EXPECT_EQ(problemOf(R"([{"do": "drag", "kind": "point"}])"), "step 1 (drag): \"to\" is missing");
    EXPECT_EQ(problemOf(R"([{"do": "drag", "kind": "items", "to": {"parent": null, "index": 0}}])"),
              "step 1 (drag): \"paths\" belongs to the kind \"items\", and only to that");
    EXPECT_EQ(problemOf(R"([{"do": "selectText", "page": 1}])"),
              "step 1 (selectText): either \"text\" or \"range\" must be given");
    EXPECT_EQ(problemOf(R"([{"do": "selectText", "page": 1, "range": [0, 1], "occurrence": 2}])"),
              "step 1 (selectText): \"occurrence\" counts occurrences of \"text\", which is missing");
    EXPECT_EQ(problemOf(R"([{"do": "selectText", "page": 1, "text": ""}])"),
              "step 1 (selectText): \"text\" is empty");
}

TEST(ScriptStep, AnArgumentTooManyIsTold) {
    EXPECT_EQ(problemOf(R"([{"do": "moveLeft:", "paths": [[0]]}])"),
              "step 1 (moveLeft:): it takes no \"paths\"");
    EXPECT_EQ(problemOf(R"([{"do": "expand", "path": [0], "paths": []}])"),
              "step 1 (expand): it takes no \"paths\"");
}

class WrongArgument : public testing::TestWithParam<std::pair<const char *, const char *>> {};

TEST_P(WrongArgument, IsToldWithWhatItMustBe) {
    EXPECT_THAT(problemOf(GetParam().first).toStdString(), testing::HasSubstr(GetParam().second));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, WrongArgument,
    testing::Values(
        std::pair{R"([{"do": "expand", "path": []}])", "\"path\" must be a path, such as [0, 2]"},
        std::pair{R"([{"do": "expand", "path": [-1]}])", "must be a path"},
        std::pair{R"([{"do": "expand", "path": [0.5]}])", "must be a path"},
        std::pair{R"([{"do": "expand", "path": 0}])", "must be a path"},
        std::pair{R"([{"do": "select", "paths": [0]}])", "must be an array of paths"},
        std::pair{R"([{"do": "selectMapRows", "rows": ["H1"]}])", "must be an array of rows"},
        std::pair{R"([{"do": "goToPage", "page": 0}])", "must be a whole number from 1"},
        std::pair{R"([{"do": "pageDoubleClick", "page": 1, "point": [1]}])", "must be a point"},
        std::pair{R"([{"do": "selectText", "page": 1, "range": [0, -1]}])", "must be a range"},
        std::pair{R"([{"do": "outlineDoubleClick", "path": [0], "column": "label"}])",
                  "must be one of \"title\" and \"page\""},
        std::pair{R"([{"do": "outlineDoubleClick", "path": [0], "command": 1}])", "must be true or false"},
        std::pair{R"([{"do": "drag", "kind": "file", "to": {"parent": null, "index": 0}}])",
                  "must be one of \"items\", \"point\" and \"text\""},
        std::pair{R"([{"do": "drag", "kind": "text", "to": {"index": 0}}])", "must be a place"},
        std::pair{R"([{"do": "drag", "kind": "text", "to": {"parent": [0], "index": -2}}])",
                  "must be a place"},
        std::pair{R"([{"do": "setTitle", "path": [0], "title": 7}])", "must be a text"},
        std::pair{R"([{"do": "setDefault", "key": "a", "value": [1]}])", "must be a text, a number, true"},
        std::pair{R"([{"do": "answer", "button": true}])", "must be a button's title"},
        std::pair{R"([{"do": "chooseFile", "path": false}])", "must be a text or null"},
        std::pair{R"([{"do": "advanceClock", "seconds": -1}])", "must be a number from 0"},
        std::pair{R"([{"do": "renameAddPrefix:", "fields": {"a": null}}])", "must be an object of texts"},
        std::pair{R"([{"do": "renameAddPrefix:", "tag": 1.5}])", "must be a whole number"}));

}  // namespace
}  // namespace leafwright::script

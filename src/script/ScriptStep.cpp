#include "script/ScriptStep.h"

#include "document/commands/ActionTable.h"
#include "texts/Translated.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace leafwright::script {

namespace {

constexpr Translated translated{"ScriptStep"};

// What arguments may be.

bool isWhole(const QJsonValue &value, int least) {
    return value.toInt(least - 1) >= least;
}

bool isAll(const QJsonValue &value, bool (*test)(const QJsonValue &)) {
    if (!value.isArray()) return false;
    const QJsonArray array = value.toArray();
    return std::all_of(array.begin(), array.end(), [test](const QJsonValue &each) { return test(each); });
}

bool isPosition(const QJsonValue &value) {
    return isWhole(value, 0);
}

bool isNumber(const QJsonValue &value) {
    return value.isDouble();
}

bool isPath(const QJsonValue &value) {
    return isAll(value, isPosition) && !value.toArray().isEmpty();
}

bool isTextOrNull(const QJsonValue &value) {
    return value.isString() || value.isNull();
}

bool isFieldValue(const QJsonValue &value) {
    return value.isString() || value.isDouble() || value.isBool();
}

bool isFields(const QJsonValue &value) {
    const QJsonObject fields = value.toObject();
    return value.isObject() && std::all_of(fields.begin(), fields.end(), isFieldValue);
}

bool isPlace(const QJsonValue &value) {
    const QJsonValue parent = value[QLatin1String("parent")];
    return value.isObject() && value.toObject().size() == 2 && (parent.isNull() || isPath(parent)) &&
           isWhole(value[QLatin1String("index")], -1);
}

bool isKindOfDrag(const QJsonValue &value) {
    return value == QLatin1String("items") || value == QLatin1String("point") ||
           value == QLatin1String("text");
}

/// A kind of argument: what it is called in messages, and what belongs to it.
struct Kind {
    const char *description;
    bool (*accepts)(const QJsonValue &);
};

constexpr Kind path{QT_TRANSLATE_NOOP("ScriptStep", "a path, such as [0, 2]"), isPath};
constexpr Kind paths{QT_TRANSLATE_NOOP("ScriptStep", "an array of paths, such as [[0], [1, 2]]"),
                     [](const QJsonValue &value) { return isAll(value, isPath); }};
constexpr Kind rows{QT_TRANSLATE_NOOP("ScriptStep", "an array of rows, counted from 0"),
                    [](const QJsonValue &value) { return isAll(value, isPosition); }};
constexpr Kind fromOne{QT_TRANSLATE_NOOP("ScriptStep", "a whole number from 1"),
                       [](const QJsonValue &value) { return isWhole(value, 1); }};
constexpr Kind whole{QT_TRANSLATE_NOOP("ScriptStep", "a whole number"), [](const QJsonValue &value) {
                         return value.isDouble() &&
                                value.toDouble() == static_cast<double>(value.toInteger());
                     }};
constexpr Kind seconds{QT_TRANSLATE_NOOP("ScriptStep", "a number from 0"),
                       [](const QJsonValue &value) { return value.toDouble(-1) >= 0; }};
constexpr Kind text{QT_TRANSLATE_NOOP("ScriptStep", "a text"),
                    [](const QJsonValue &value) { return value.isString(); }};
constexpr Kind textOrNull{QT_TRANSLATE_NOOP("ScriptStep", "a text or null"), isTextOrNull};
constexpr Kind truth{QT_TRANSLATE_NOOP("ScriptStep", "true or false"),
                     [](const QJsonValue &value) { return value.isBool(); }};
constexpr Kind point{QT_TRANSLATE_NOOP("ScriptStep", "a point, [x, y]"), [](const QJsonValue &value) {
                         return isAll(value, isNumber) && value.toArray().size() == 2;
                     }};
constexpr Kind range{
    QT_TRANSLATE_NOOP("ScriptStep", "a range of text, [location, length]"),
    [](const QJsonValue &value) { return isAll(value, isPosition) && value.toArray().size() == 2; }};
constexpr Kind fields{QT_TRANSLATE_NOOP("ScriptStep", "an object of texts, numbers, true or false by name"),
                      isFields};
constexpr Kind place{QT_TRANSLATE_NOOP("ScriptStep",
                                       "a place, {\"parent\": a path or null, \"index\": "
                                       "a position, or -1 for onto the parent}"),
                     isPlace};
constexpr Kind kindOfDrag{QT_TRANSLATE_NOOP("ScriptStep", "one of \"items\", \"point\" and \"text\""),
                          isKindOfDrag};
constexpr Kind column{QT_TRANSLATE_NOOP("ScriptStep", "one of \"title\" and \"page\""),
                      [](const QJsonValue &value) {
                          return value == QLatin1String("title") || value == QLatin1String("page");
                      }};
constexpr Kind button{QT_TRANSLATE_NOOP("ScriptStep", "a button's title, or its number from 0"),
                      [](const QJsonValue &value) { return value.isString() || isPosition(value); }};
constexpr Kind setting{QT_TRANSLATE_NOOP("ScriptStep", "a text, a number, true, false, or null to remove it"),
                       [](const QJsonValue &value) { return isFieldValue(value) || value.isNull(); }};

/// An argument of a step.
struct Argument {
    const char *name;
    Kind kind;
    bool required = true;
};
constexpr bool optional = false;

/// What a gesture takes.
struct Form {
    const char *name;
    std::vector<Argument> arguments;
};

const std::vector<Form> &gestures() {
    static const std::vector<Form> all{
        {"select", {{"paths", paths}}},
        {"selectMapRows", {{"rows", rows}}},
        {"expand", {{"path", path}}},
        {"collapse", {{"path", path}}},
        {"goToPage", {{"page", fromOne}}},
        {"selectText",
         {{"page", fromOne},
          {"text", text, optional},
          {"occurrence", fromOne, optional},
          {"range", range, optional}}},
        {"pageDoubleClick", {{"page", fromOne}, {"point", point}}},
        {"outlineDoubleClick", {{"path", path}, {"column", column, optional}, {"command", truth, optional}}},
        {"drag", {{"kind", kindOfDrag}, {"paths", paths, optional}, {"to", place}}},
        {"setTitle", {{"path", path}, {"title", text}}},
        {"setPageLabel", {{"path", path}, {"label", text}}},
        {"setDefault", {{"key", text}, {"value", setting}}},
        {"answer", {{"button", button}}},
        {"chooseFile", {{"path", textOrNull}}},
        {"advanceClock", {{"seconds", seconds}}},
    };
    return all;
}

const std::vector<Argument> &argumentsOfCommand() {
    static const std::vector<Argument> all{{"fields", fields, optional}, {"tag", whole, optional}};
    return all;
}

/// What is wrong with the arguments taken each by itself.
std::optional<QString> problemOfArguments(const Step &step, const std::vector<Argument> &known) {
    const auto isKnown = [&known](const QString &name) {
        return std::ranges::any_of(known,
                                   [&](const Argument &each) { return name == QLatin1String(each.name); });
    };
    for (const QString &name : step.arguments.keys())
        if (!isKnown(name)) return translated("it takes no \"%1\"").arg(name);
    for (const Argument &argument : known) {
        if (!step.has(argument.name)) {
            if (argument.required) return translated("\"%1\" is missing").arg(QLatin1String(argument.name));
        } else if (!argument.kind.accepts(step[argument.name])) {
            return translated("\"%1\" must be %2")
                .arg(QLatin1String(argument.name), translated(argument.kind.description));
        }
    }
    return std::nullopt;
}

/// What is wrong with the arguments taken together.
std::optional<QString> problemOfCombination(const Step &step) {
    if (step.name == u"selectText" && step.has("text") == step.has("range"))
        return translated("either \"text\" or \"range\" must be given");
    if (step.name == u"selectText" && step.has("occurrence") && !step.has("text"))
        return translated("\"occurrence\" counts occurrences of \"text\", which is missing");
    if (step.name == u"selectText" && step["text"].toString(QStringLiteral("-")).isEmpty())
        return translated("\"text\" is empty");
    if (step.name == u"drag" && (step["kind"] == QLatin1String("items")) != step.has("paths"))
        return translated("\"paths\" belongs to the kind \"items\", and only to that");
    return std::nullopt;
}

std::optional<QString> problemOf(Step &step) {
    step.isCommand = actionDescription(step.name) != nullptr;
    if (step.isCommand) return problemOfArguments(step, argumentsOfCommand());
    const auto found = std::ranges::find_if(
        gestures(), [&](const Form &form) { return step.name == QLatin1String(form.name); });
    if (found == gestures().end()) return translated("there is no such step");
    if (auto problem = problemOfArguments(step, found->arguments)) return problem;
    return problemOfCombination(step);
}

qsizetype lineOf(const QByteArray &json, qsizetype offset) {
    return json.first(std::clamp<qsizetype>(offset, 0, json.size())).count('\n') + 1;
}

}  // namespace

QString failureOfStep(int number, const QString &name, const QString &reason) {
    return name.isEmpty() ? translated("step %1: %2").arg(QString::number(number), reason)
                          : translated("step %1 (%2): %3").arg(QString::number(number), name, reason);
}

std::variant<std::vector<Step>, QString> parseSteps(const QByteArray &json) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return translated("line %1: %2").arg(lineOf(json, error.offset)).arg(error.errorString());
    if (!document.isArray()) return translated("a script is an array of steps");
    std::vector<Step> steps;
    for (const QJsonValue value : document.array()) {
        Step step{static_cast<int>(steps.size()) + 1, {}, false, value.toObject()};
        const QJsonValue name = step.arguments.take(QLatin1String("do"));
        if (!value.isObject() || !name.isString())
            return failureOfStep(step.number, {}, translated("it must be an object with a text \"do\""));
        step.name = name.toString();
        if (const auto problem = problemOf(step)) return failureOfStep(step.number, step.name, *problem);
        steps.push_back(std::move(step));
    }
    return steps;
}

std::vector<QString> gestureNames() {
    std::vector<QString> names;
    for (const Form &form : gestures())
        names.push_back(QString::fromLatin1(form.name));
    return names;
}

IndexPath pathOf(const QJsonValue &argument) {
    QList<size_t> positions;
    for (const QJsonValue position : argument.toArray())
        positions.append(static_cast<size_t>(position.toInt()));
    return IndexPath::indexPathWithIndexes(positions);
}

std::vector<IndexPath> pathsOf(const QJsonValue &argument) {
    std::vector<IndexPath> all;
    for (const QJsonValue each : argument.toArray())
        all.push_back(pathOf(each));
    return all;
}

}  // namespace leafwright::script

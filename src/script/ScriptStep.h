#pragma once

#include "tree/IndexPath.h"

#include <QJsonObject>
#include <QString>

#include <variant>
#include <vector>

namespace leafwright::script {

/// One step of a script. It has been checked: its name is known, and its arguments are all there, are of the
/// right kind, and are no others.
struct Step {
    int number = 0;  ///< 1-based.
    QString name;    ///< A command's selector or a gesture's name. Key "do".
    bool isCommand = false;
    QJsonObject arguments;  ///< All but "do".

    QJsonValue operator[](const char *argument) const { return arguments[QLatin1String(argument)]; }
    bool has(const char *argument) const { return arguments.contains(QLatin1String(argument)); }
};

/// Reads a script: a JSON array of steps, `{"do": NAME, ...}`.
/// @return the steps or, for a text that is no such array or where a step is wrong, a line that says where
/// and why
std::variant<std::vector<Step>, QString> parseSteps(const QByteArray &json);

/// "step 3 (moveLeft:): " and the reason.
QString failureOfStep(int number, const QString &name, const QString &reason);

/// The names of all gestures, in the order in which the guide explains them.
std::vector<QString> gestureNames();

/// The path of an argument that is one.
IndexPath pathOf(const QJsonValue &argument);
std::vector<IndexPath> pathsOf(const QJsonValue &argument);

}  // namespace leafwright::script

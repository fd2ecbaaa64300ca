#pragma once

#include <QJsonValue>
#include <QString>

namespace leafwright::test {

/// Compares what a case expects with what there is. An object has to have the members that are expected, and
/// may have more; an array has to have as many elements. Numbers may differ by rounding. Where an outline is
/// expected as a text, "a (b c) d", or as an array of texts, a title each with two blanks in front for each
/// level, titles alone are compared.
/// @param where a name for the whole, for the answer
/// @return what is otherwise than expected, a line each; empty if nothing is
QString mismatch(const QJsonValue &expected, const QJsonValue &actual, const QString &where);

}  // namespace leafwright::test

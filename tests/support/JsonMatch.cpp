#include "support/JsonMatch.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace leafwright::test {

namespace {

constexpr double rounding = 0.01;

QString textOf(const QJsonValue &value) {
    if (value.isUndefined()) return "nothing";
    QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.sliced(1, text.size() - 2));
}

QString difference(const QJsonValue &expected, const QJsonValue &actual, const QString &where) {
    return where + ": expected " + textOf(expected) + ", is " + textOf(actual) + '\n';
}

/// "a (b c) d"
QString shortForm(const QJsonArray &nodes) {
    QStringList parts;
    for (const QJsonValue node : nodes) {
        const QString below = shortForm(node["children"].toArray());
        parts.append(node["title"].toString() + (below.isEmpty() ? QString() : " (" + below + ")"));
    }
    return parts.join(' ');
}

QJsonArray titleLines(const QJsonArray &nodes, int level = 0) {
    QJsonArray lines;
    for (const QJsonValue node : nodes) {
        lines.append(QString(2 * level, ' ') + node["title"].toString());
        for (const QJsonValue line : titleLines(node["children"].toArray(), level + 1))
            lines.append(line);
    }
    return lines;
}

bool isTitleLines(const QJsonValue &expected) {
    return expected.isArray() && !expected.toArray().isEmpty() && expected[0].isString();
}

QString mismatchOfOutline(const QJsonValue &expected, const QJsonValue &actual, const QString &where) {
    if (expected.isString()) return mismatch(expected, shortForm(actual.toArray()), where);
    if (isTitleLines(expected)) return mismatch(expected, titleLines(actual.toArray()), where);
    return mismatch(expected, actual, where);
}

}  // namespace

QString mismatch(const QJsonValue &expected, const QJsonValue &actual, const QString &where) {
    QString found;
    if (expected.isObject() && actual.isObject()) {
        const QJsonObject members = expected.toObject();
        for (auto member = members.begin(); member != members.end(); ++member) {
            const auto compare = member.key() == u"outline" ? mismatchOfOutline : mismatch;
            found += compare(member.value(), actual[member.key()], where + '.' + member.key());
        }
        return found;
    }
    if (expected.isArray() && actual.isArray() && expected.toArray().size() == actual.toArray().size()) {
        for (int i = 0; i < expected.toArray().size(); ++i)
            found += mismatch(expected[i], actual[i], where + '[' + QString::number(i) + ']');
        return found;
    }
    if (expected.isDouble() && actual.isDouble() &&
        std::abs(expected.toDouble() - actual.toDouble()) <= rounding)
        return {};
    return expected == actual ? QString() : difference(expected, actual, where);
}

}  // namespace leafwright::test

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <ostream>

// How failing tests print Qt's values. In every test's precompiled header, so that all print them alike;
// GoogleTest looks for these beside the types, which is in the global namespace.

inline void PrintTo(const QString &text, std::ostream *out) {
    *out << (text.isNull() ? "absent" : '"' + text.toStdString() + '"');
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << '"' << bytes.toStdString() << '"';
}

inline void PrintTo(const QJsonArray &array, std::ostream *out) {
    *out << QJsonDocument(array).toJson().toStdString();
}

inline void PrintTo(const QJsonObject &object, std::ostream *out) {
    *out << QJsonDocument(object).toJson().toStdString();
}

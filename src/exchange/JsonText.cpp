#include "exchange/JsonText.h"

#include "texts/Translated.h"

namespace leafwright {

namespace {

constexpr Translated translated{"JsonText"};

}  // namespace

std::variant<QJsonDocument, TreeError> parsedJson(const QByteArray &text) {
    QJsonParseError error;
    QJsonDocument json = QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::DeepNesting) {
        return TreeError{{},
                         translated("the JSON is nested too deeply; plus lines hold outlines of any depth")};
    }
    if (error.error != QJsonParseError::NoError)
        return faultInLine(text.left(error.offset).count('\n') + 1, error.errorString());
    return json;
}

}  // namespace leafwright

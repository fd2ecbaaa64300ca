#include "platform/Assertion.h"

#include <QFileInfo>

namespace leafwright {

AssertionFailure::AssertionFailure(const QString &description, const SourcePlace &where)
    : std::logic_error(description.toStdString()), description_(description), where_(where) {}

QString AssertionFailure::sourceFile() const {
    return QFileInfo(QString::fromUtf8(where_.file)).baseName();
}

void failAssertion(const QString &description, const SourcePlace &where) {
    throw AssertionFailure(description, where);
}

}  // namespace leafwright

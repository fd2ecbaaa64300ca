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

void assertParameter(bool isGiven, const char *name, const SourcePlace &where) {
    if (isGiven) return;
    failAssertion(QStringLiteral("Invalid parameter not satisfying: %1").arg(QString::fromUtf8(name)), where);
}

}  // namespace leafwright

#pragma once

#include <QByteArray>

namespace leafwright::test {

/// Gives a variable of the environment another value, for as long as it lives.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char *name, const QByteArray &value)
        : name_(name), wasSet_(qEnvironmentVariableIsSet(name)), saved_(qgetenv(name)) {
        qputenv(name, value);
    }
    ~EnvironmentVariable() {
        if (wasSet_) {
            qputenv(name_, saved_);
        } else {
            qunsetenv(name_);
        }
    }
    EnvironmentVariable(const EnvironmentVariable &) = delete;
    EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

private:
    const char *name_;
    bool wasSet_;
    QByteArray saved_;
};

}  // namespace leafwright::test

#pragma once

#include <QLoggingCategory>
#include <QStringList>

namespace leafwright::test {

/// Notes what is logged in its life. One at a time.
class LogRecorder {
public:
    /// @param rules switch categories on: "leafwright.outline.debug=true"
    explicit LogRecorder(const QString &rules = {}) {
        logged().clear();
        QLoggingCategory::setFilterRules(rules);
        previous_ = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { logged().append(text); });
    }
    ~LogRecorder() {
        qInstallMessageHandler(previous_);
        QLoggingCategory::setFilterRules({});
    }
    LogRecorder(const LogRecorder &) = delete;
    LogRecorder &operator=(const LogRecorder &) = delete;

    const QStringList &messages() const { return logged(); }

private:
    /// A message handler has no context of its own.
    static QStringList &logged() {
        static QStringList messages;
        return messages;
    }

    QtMessageHandler previous_ = nullptr;
};

}  // namespace leafwright::test

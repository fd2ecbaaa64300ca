#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <mutex>
#include <optional>

namespace leafwright::cli {

/// What a command has found in its file, for whoever does many of them.
struct FileFacts {
    std::optional<qint64> pages;
    std::optional<qint64> entries;  ///< Of the outline that was printed or written.
};

/// Where a command's results and messages go: standard output and standard error, or what a test gives.
/// Messages may come from any thread; results come from one.
class Console {
public:
    Console() : Console(stdout, stderr) {}
    Console(std::FILE *results, std::FILE *messages) : results_(results), messages_(messages) {}

    /// Writes a piece of the result as it stands, in UTF-8.
    void write(const QByteArray &bytes);
    void write(const QString &text) { write(text.toUtf8()); }
    /// Writes one line of message: "leafwright-cli: " and the text.
    void message(const QString &text);
    /// What another process of this program has said, without what message() puts around it.
    static QString messageText(const QByteArray &said);
    /// Writes what another process of this program has said to the messages.
    void relay(const QByteArray &said);
    /// Writes to the messages as they are; for the progress bar.
    void writeRaw(const QByteArray &bytes);
    /// Where the results go, for another process to write to. Flush before.
    int resultsDescriptor() const { return ::fileno(results_); }
    /// Whether messages are shown on a terminal.
    bool isTerminal() const;
    /// Notes what is known of the file, for facts(). Nothing is shown.
    void tellPages(qint64 count) { facts_.pages = count; }
    void tellEntries(qint64 count) { facts_.entries = count; }
    const FileFacts &facts() const { return facts_; }
    /// Notes what the command has done, in a line that is shown when it has ended well. None where nobody is
    /// to be told.
    void tellOutcome(const QString &outcome) { outcome_ = outcome; }
    const QString &outcome() const { return outcome_; }
    /// Has all results reach their destination; a full disk or closed pipe shows here. @return what to say
    /// where they did not
    std::optional<QString> flush();

private:
    std::FILE *results_;
    std::FILE *messages_;
    std::mutex mutex_;
    bool barShown_ = false;
    FileFacts facts_;
    QString outcome_;
};

}  // namespace leafwright::cli

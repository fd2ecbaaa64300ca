#include "document/outline/TextRecognition.h"

#include "files/FileName.h"
#include "files/FileReading.h"
#include "texts/Translated.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace leafwright {

namespace {

const QString program = QStringLiteral("ocrmypdf");

constexpr Translated translated{"TextRecognition"};

/// What the program says: on which pages it has begun, and its last words.
class Messages {
public:
    void add(const QByteArray &bytes) {
        pending_ += bytes;
        for (qsizetype end = pending_.indexOf('\n'); end >= 0; end = pending_.indexOf('\n')) {
            addLine(QString::fromUtf8(pending_.first(end)));
            pending_.remove(0, end + 1);
        }
        // No line is longer in good faith.
        constexpr qsizetype longestLine = 1 << 16;
        if (pending_.size() > longestLine) pending_.clear();
    }

    int pages() const { return static_cast<int>(pages_.size()); }
    QString lastWords() const { return lastLines_.join(u' '); }

private:
    void addLine(const QString &line) {
        // "    7 Rasterize with ...": what is done to a page begins with its number.
        static const QRegularExpression ofPage(QStringLiteral("^ +([0-9]{1,9}) "));
        if (const auto match = ofPage.match(line); match.hasMatch()) {
            pages_.insert(match.capturedView(1).toInt());
        } else if (const QString words = line.simplified(); !words.isEmpty()) {
            constexpr qsizetype mostLines = 3;
            lastLines_.append(words);
            if (lastLines_.size() > mostLines) lastLines_.removeFirst();
        }
    }

    QByteArray pending_;
    QSet<int> pages_;
    QStringList lastLines_;
};

/// The file to be read, by a name that no program can take for anything else.
QString originalIn(const TemporaryFolder &folder) {
    return folder.filePath(QStringLiteral("original.pdf"));
}

/// Ends the program with all that it has started.
void stop(QProcess &process) {
    constexpr int patience = 3'000;  // milliseconds
    ::kill(-static_cast<pid_t>(process.processId()), SIGTERM);
    if (process.waitForFinished(patience)) return;
    ::kill(-static_cast<pid_t>(process.processId()), SIGKILL);
    process.waitForFinished(-1);
}

void start(QProcess &process, const QString &languages, const TemporaryFolder &folder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // So that nothing is left, whatever happens.
    environment.insert(QStringLiteral("TMPDIR"), folder.filePath(QStringLiteral(".")));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setChildProcessModifier([] {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    });
    // Pages that have text are left as they are, and images too: only the text is wanted. A page that a busy
    // machine takes long for is waited for; whoever asked may cancel.
    QStringList arguments{QStringLiteral("--skip-text"),
                          QStringLiteral("--output-type"),
                          QStringLiteral("pdf"),
                          QStringLiteral("--optimize"),
                          QStringLiteral("0"),
                          QStringLiteral("--tesseract-timeout"),
                          QStringLiteral("3600"),
                          QStringLiteral("--verbose"),
                          QStringLiteral("1")};
    if (!languages.isEmpty()) arguments << QStringLiteral("--language") << languages;
    arguments << QStringLiteral("--") << originalIn(folder) << RecognisedCopy::pathIn(folder);
    process.start(QStandardPaths::findExecutable(program), arguments);
}

RecognitionFailure failure(const QString &reason) {
    return {false, translated("text could not be recognised: %1").arg(reason)};
}

}  // namespace

bool canRecogniseText() {
    return !QStandardPaths::findExecutable(program).isEmpty();
}

std::variant<std::unique_ptr<RecognisedCopy>, RecognitionFailure> recogniseText(
    const QString &path, const QString &languages, const RecognitionProgress &progress) {
    if (!canRecogniseText()) {
        return failure(
            translated("the program %1 is not there; install the package of that name").arg(program));
    }
    auto folder = std::make_unique<TemporaryFolder>();
    if (!folder->isThere()) return failure(folder->errorString());
    QProcess process;
    const auto original = absolutePath(path);
    if (!original) return failure(noWorkingFolder());
    if (::symlink(fileNameBytes(*original).constData(), fileNameBytes(originalIn(*folder)).constData()) != 0)
        return failure(translated("the temporary folder can't be written to"));
    start(process, languages, *folder);
    if (!process.waitForStarted(-1)) return failure(process.errorString());
    Messages messages;
    constexpr int interval = 100;  // milliseconds
    while (process.state() != QProcess::NotRunning) {
        process.waitForFinished(interval);
        messages.add(process.readAll());
        if (!progress(messages.pages()) && process.state() != QProcess::NotRunning) {
            stop(process);
            return RecognitionFailure{true, {}};
        }
    }
    messages.add(process.readAll() + '\n');
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return failure(messages.lastWords());
    if (!QFileInfo::exists(RecognisedCopy::pathIn(*folder)))
        return failure(translated("%1 wrote nothing").arg(program));
    return std::make_unique<RecognisedCopy>(std::move(folder));
}

}  // namespace leafwright

// leafwright-damage FOLDER [COUNT [FIRST]]: makes mutants of the PDF files of a folder and runs every
// command on each. None may end by a signal, take 10 seconds of the processor or 1 GB, or save a file that
// qpdf thinks worse of than of the mutant. What did is kept in the folder "findings" of the working
// directory. Prints a table at the end.

#include "damage/Damage.h"
#include "damage/Trial.h"

#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>

namespace leafwright::test {
namespace {

constexpr double mostSeconds = 10;
constexpr double mostMegabytes = 1024;

/// What was seen of one command.
struct Row {
    const char *name;
    QStringList arguments;  ///< MUTANT, OUT, TREE and STEPS stand for paths.
    int done = 0;
    int refused = 0;
    int findings = 0;
    double seconds = 0;  ///< The most.
    double megabytes = 0;
};

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool save(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// What small files teach, large ones do not teach better; every eighth may be large.
QList<QByteArray> filesOf(const QString &folder, qint64 largest) {
    QList<QByteArray> files;
    for (const QFileInfo &info :
         QDir(folder).entryInfoList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name))
        if (info.size() > 0 && info.size() <= largest) files.append(contentOf(info.filePath()));
    return files;
}

class Mutants {
public:
    explicit Mutants(const QString &folder)
        : small_(filesOf(folder, 60'000)), all_(filesOf(folder, 1'000'000)) {
        save(tree_, R"([{"title":"New","pageIndex":0,"children":[{"title":"Below","pageIndex":0}]}])");
        save(steps_, R"([{"do":"addSiblingOutlineItem:"}])");
    }
    bool isReady() const {
        return !small_.isEmpty() && dir_.isValid() && QDir().mkpath(QStringLiteral("findings"));
    }

    void tryMutant(quint64 seed) {
        save(mutant_, mutant(seed % 8 == 0 ? all_ : small_, seed));
        checkOfMutant_.reset();
        for (Row &row : rows_)
            tryRow(row, seed);
    }

    /// @return whether nothing was found
    bool report() const {
        std::printf("%-10s %8s %8s %10s %10s %9s\n", "command", "done", "refused", "most s", "most MB",
                    "findings");
        int findings = 0;
        for (const Row &row : rows_) {
            std::printf("%-10s %8d %8d %10.2f %10.0f %9d\n", row.name, row.done, row.refused, row.seconds,
                        row.megabytes, row.findings);
            findings += row.findings;
        }
        std::printf("saved files: %d, of which qpdf finds %d without fault, %d no worse than the mutant\n",
                    saved_, sound_, saved_ - sound_ - worse_);
        return findings == 0;
    }

private:
    QString path(const char *name) const { return dir_.filePath(QString::fromLatin1(name)); }

    void tryRow(Row &row, quint64 seed) {
        QFile::remove(out_);
        QStringList arguments = row.arguments;
        arguments.replaceInStrings(QStringLiteral("MUTANT"), mutant_)
            .replaceInStrings(QStringLiteral("OUT"), out_)
            .replaceInStrings(QStringLiteral("TREE"), tree_)
            .replaceInStrings(QStringLiteral("STEPS"), steps_);
        const Trial trial = tryCommand(arguments, messages_);
        row.seconds = std::max(row.seconds, trial.seconds);
        row.megabytes = std::max(row.megabytes, trial.megabytes);
        ++(trial.status == 0 ? row.done : row.refused);
        QString finding;
        if (trial.status != 0 && trial.status != 1)
            finding = QStringLiteral("status %1, signal %2").arg(trial.status).arg(trial.signal);
        if (trial.status == 1 && contentOf(messages_).isEmpty())
            finding = QStringLiteral("failed without a word");
        if (trial.seconds > mostSeconds) finding = QStringLiteral("%1 s").arg(trial.seconds);
        if (trial.megabytes > mostMegabytes) finding = QStringLiteral("%1 MB").arg(trial.megabytes);
        const bool isThere = QFile::exists(out_);
        if (trial.status == 1 && isThere) finding = QStringLiteral("failed, and wrote");
        if (trial.status == 0 && isThere && isWorse()) finding = QStringLiteral("worse by qpdf");
        if (!finding.isEmpty()) note(row, seed, finding);
    }

    void note(Row &row, quint64 seed, const QString &finding) {
        ++row.findings;
        const QString kept = QStringLiteral("findings/%1-%2.pdf").arg(seed).arg(QLatin1String(row.name));
        QFile::copy(mutant_, kept);
        std::printf("%s: %s\n", qPrintable(kept), qPrintable(finding));
        std::fflush(stdout);
    }

    /// 0 for a sound file, 1 for one with warnings, 2 for one with errors.
    static int check(const QString &path) {
        const int status = runQuietly("qpdf", QStringLiteral("--check"), path);
        return status == 0 ? 0 : status == 3 ? 1 : 2;
    }

    /// The number of pages that qpdf finds.
    static int pages(const QString &path) {
        const QByteArray command = "qpdf --show-npages '" + QFile::encodeName(path) + "' 2>/dev/null";
        std::FILE *const output = ::popen(command.constData(), "r");
        int count = 0;
        const bool isThere = output && std::fscanf(output, "%d", &count) == 1;
        if (output) ::pclose(output);
        return isThere ? count : 0;
    }

    /// What is damaged on a page shows only where qpdf finds the page, so a file in which it finds more is
    /// none the worse for that.
    bool isWorse() {
        ++saved_;
        const int now = check(out_);
        if (now == 0) ++sound_;
        if (now == 0) return false;
        if (!checkOfMutant_) checkOfMutant_ = check(mutant_);
        if (now <= *checkOfMutant_ || pages(out_) > pages(mutant_)) return false;
        ++worse_;
        return true;
    }

    QList<QByteArray> small_;
    QList<QByteArray> all_;
    QTemporaryDir dir_;
    QString mutant_ = path("a.pdf");
    QString out_ = path("out.pdf");
    QString tree_ = path("tree");
    QString steps_ = path("steps");
    QString messages_ = path("messages");
    std::optional<int> checkOfMutant_;
    int saved_ = 0;
    int sound_ = 0;
    int worse_ = 0;
    std::vector<Row> rows_{
        {"info", {"info", "MUTANT"}},
        {"outline", {"outline", "MUTANT"}},
        {"labels", {"labels", "MUTANT"}},
        {"text", {"text", "MUTANT"}},
        {"fonts", {"fonts", "MUTANT"}},
        {"autotoc", {"autotoc", "MUTANT", "-o", "OUT"}},
        {"apply", {"apply", "MUTANT", "TREE", "-o", "OUT"}},
        {"contents", {"contents", "MUTANT", "-o", "OUT"}},
        {"minitoc", {"minitoc", "MUTANT", "--page", "1", "--text", "e", "-o", "OUT"}},
        {"run", {"run", "STEPS", "MUTANT", "-o", "OUT"}},
    };
};

}  // namespace
}  // namespace leafwright::test

int main(int argc, char **argv) {
    using namespace leafwright::test;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("leafwright.*.warning=false\ndefault.warning=false"));
    Mutants mutants(argc > 1 ? QFile::decodeName(argv[1]) : QString());
    if (!mutants.isReady()) {
        std::fputs("usage: leafwright-damage FOLDER-WITH-PDFS [COUNT [FIRST]]\n", stderr);
        return 2;
    }
    const quint64 count = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 10'000;
    const quint64 first = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 0;
    for (quint64 seed = first; seed < first + count; ++seed) {
        mutants.tryMutant(seed);
        if ((seed - first) % 100 == 99)
            std::fprintf(stderr, "%llu\n", static_cast<unsigned long long>(seed + 1));
    }
    return mutants.report() ? 0 : 1;
}

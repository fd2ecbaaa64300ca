#include "document/Recovery.h"

#include "document/MyDocument.h"
#include "document/outline/OutlineRecovery.h"
#include "document/window/DocumentWindow.h"
#include "document/window/LostTargetsNotice.h"
#include "files/FileName.h"
#include "outlineview/OKNSOutlineView.h"
#include "system/MainThread.h"
#include "widgets/NoticeBars.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QPointer>

#include <chrono>
#include <utility>

namespace leafwright {

namespace {

/// With what writing takes, and a main thread that is busy now and then, it stays below two.
constexpr std::chrono::milliseconds delay{1000};
/// Where it failed, a disk may have room again some time later.
constexpr std::chrono::milliseconds delayOfNextAttempt{10'000};

const QString notKeptNotice = QStringLiteral("notKept");
const QString notRemovedNotice = QStringLiteral("notRemoved");
const QString notRecoveredNotice = QStringLiteral("notRecovered");

enum Answer { Later, Recover, Discard };

}  // namespace

QString Recovery::standardFolder() {
    // A relative path in the variable counts for nothing.
    QString state = fileNameText(qgetenv("XDG_STATE_HOME"));
    if (!state.startsWith(u'/')) state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/leafwright/recovery");
}

Recovery::Recovery(MyDocument &document, QString folder)
    : QObject(&document), document_(document), folder_(std::move(folder)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &Recovery::keep);
    connect(&document, &MyDocument::historyChanged, this, &Recovery::changed);
    connect(&document, &Document::editedChanged, this, &Recovery::changed);
    connect(&document, &Document::closed, this, &Recovery::forget);
    connect(&document, &MyDocument::windowMade, this, [this] {
        // The alerts of the loading come first.
        QTimer::singleShot(0, this, [this] { document_.whenIdle([this] { begin(); }); });
    });
}

Recovery::~Recovery() = default;

void Recovery::begin() {
    if (hasBegun_ || !document_.pdfDoc()) return;
    hasBegun_ = true;
    if (document_.edits().canUndo()) changed();
    if (!document_.allowTOCediting()) return;
    auto left = RecoveryFile::leftBehindFor(folder_, document_.pdfURL());
    tellWhatCantBeRead(left.problems);
    offer(std::move(left.files));
}

void Recovery::changed() {
    if (!hasBegun_) return;
    // An outline that was reverted counts as edited, but is the one of the file; unless what it was reverted
    // to has only gone into a preview, or nowhere.
    const bool isReverted = document_.edits().undoSummary().name == u"revertOutlineToSaved:" &&
                            document_.outline().hasOutlineOfFileInMemory();
    if (isReverted || !document_.isDocumentEdited()) return forget();
    // From the first change on, however many follow.
    if (!timer_.isActive() || timer_.remainingTimeAsDuration() > delay) timer_.start(delay);
}

void Recovery::keep() {
    if (!document_.isDocumentEdited()) return;
    if (const auto pages = document_.sharedPdfDoc(); !file_ || fileOf_.lock() != pages) {
        file_ = document_.outline().markOfFile();
        fileOf_ = pages;
    }
    mayBeKept_ = true;
    writer().keep({document_.pdfURL(), file_.value_or(FileMark()), QDateTime::currentMSecsSinceEpoch(),
                   keptEntries(document_.root())});
}

void Recovery::keepNow() {
    if (document_.myWindow() && !document_.isBusy()) document_.outlineview()->endEditing();
    if (timer_.isActive()) {
        timer_.stop();
        keep();
    }
    if (writer_) writer_->finish();
}

void Recovery::forget() {
    timer_.stop();
    file_.reset();
    fileOf_.reset();
    if (std::exchange(mayBeKept_, false)) writer().remove();
}

RecoveryWriter &Recovery::writer() {
    if (!writer_) {
        writer_ = std::make_unique<RecoveryWriter>(
            RecoveryWriter::storeIn(folder_, std::move(leftBehind_)),
            [self = QPointer(this)](RecoveryWriter::Task task, const std::optional<QString> &problem) {
                postToMainThread([self, task, problem] {
                    if (self) self->tell(task, problem);
                });
            });
    }
    return *writer_;
}

NoticeBars *Recovery::notices() const {
    return document_.myWindow() ? document_.myWindow()->notices() : nullptr;
}

void Recovery::tell(RecoveryWriter::Task task, const std::optional<QString> &problem) {
    if (task == RecoveryWriter::Task::Remove) tellWhatStays(problem);
    tellWhatIsNotKept(task == RecoveryWriter::Task::Keep ? problem : std::nullopt);
}

/// Once, until it works again: nobody is to be held up by this.
void Recovery::tellWhatIsNotKept(const std::optional<QString> &problem) {
    if (problem && !timer_.isActive()) timer_.start(delayOfNextAttempt);
    const bool hadTold = std::exchange(hasToldProblem_, problem.has_value());
    if (!notices() || (problem && hadTold)) return;
    if (!problem) return notices()->removeNotice(notKeptNotice);
    notices()->setNotice(notKeptNotice,
                         {tr("What you change can’t be kept for the case that the program is ended before "
                             "you save: %1.")
                              .arg(*problem)});
}

void Recovery::tellWhatStays(const std::optional<QString> &problem) {
    if (!notices()) return;
    if (!problem) return notices()->removeNotice(notRemovedNotice);
    notices()->setNotice(
        notRemovedNotice,
        {tr("What was kept of your changes can’t be removed, and may be offered again by the next start: %1.")
             .arg(*problem)});
}

void Recovery::tellWhatCantBeRead(const QStringList &problems) {
    if (!notices() || problems.isEmpty()) return;
    notices()->setNotice(notRecoveredNotice,
                         {tr("Changes that were not saved can’t be read. %1.").arg(problems.join(u'\n'))});
}

/// Offers the first of what was left behind; when that is discarded, the next.
void Recovery::offer(Files files) {
    while (!files.empty()) {
        auto content = files.front()->read();
        auto *outline = std::get_if<KeptOutline>(&content);
        if (outline && !isSameOutline(document_.outline(), *outline))
            return ask(std::move(files), std::move(*outline));
        if (outline) {
            // It was saved, but the program ended before this was removed.
            tellWhatStays(files.front()->remove());
        } else {
            tellWhatCantBeRead({std::get<RecoveryFile::Unreadable>(content).reason});
        }
        files.erase(files.begin());
    }
}

void Recovery::ask(Files files, KeptOutline outline) {
    auto *sheet = new Sheet(tr("Recover Outline"));
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(outline.date);
    const size_t count = outline.entries.size();
    const QString text =
        tr("Changes to the outline of “%1” were not saved. It can be had again as it was on %2 at "
           "%3, with %4.");
    sheet->addText(text.arg(document_.displayName(), QLocale().toString(date.date(), QLocale::LongFormat),
                            QLocale().toString(date.time(), QLocale::ShortFormat),
                            count == 1 ? tr("1 entry") : tr("%1 entries").arg(count)));
    if (!isForFileOf(document_.outline(), outline))
        sheet->addText(tr("The file has changed since. Entries are found again by their page labels."));
    sheet->addButton(tr("Later"), Later);
    sheet->addButton(tr("Recover"), Recover);
    sheet->addButton(tr("Discard"), Discard);
    // The function that is called then has to be one that can be copied.
    const auto shared = std::make_shared<std::pair<Files, KeptOutline>>(std::move(files), std::move(outline));
    document_.beginSheet(sheet, [self = QPointer(this), shared](int returnCode) {
        Files offered = std::move(shared->first);
        if (!self || returnCode == Later) return;
        if (returnCode == Recover) return self->recover(std::move(offered.front()), shared->second);
        self->tellWhatStays(offered.front()->remove());
        offered.erase(offered.begin());
        self->offer(std::move(offered));
    });
}

void Recovery::recover(std::unique_ptr<RecoveryFile> file, const KeptOutline &outline) {
    // What is kept from now on goes into the same file, so that something is there all the time.
    writer_.reset();
    leftBehind_ = std::move(file);
    const LostTargets lost = recoverOutline(document_.outline(), outline);
    // Not before: when the history tells of the change, it does not count as one to be saved yet.
    mayBeKept_ = true;
    if (notices()) showLostTargets(*notices(), lost);
}

}  // namespace leafwright

#include "document/Recovery.h"

#include "document/MyDocument.h"
#include "document/outline/OutlineRecovery.h"
#include "document/window/DocumentWindow.h"
#include "document/window/LostTargetsNotice.h"
#include "files/FileName.h"
#include "files/NameTaking.h"
#include "outlineview/OKNSOutlineView.h"
#include "system/MainThread.h"
#include "widgets/NoticeBars.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <new>
#include <sys/stat.h>
#include <utility>

namespace leafwright {

namespace {

/// Between one keeping and the next. With what writing takes, and a main thread that is busy now and then, it
/// stays below two seconds.
constexpr std::chrono::milliseconds delay{1000};
/// Of a change that comes alone: as long as it takes to show it.
constexpr std::chrono::milliseconds shortDelay{100};
/// Where it failed, a disk may have room again some time later.
constexpr std::chrono::milliseconds delayOfNextAttempt{10'000};

const QString notKeptNotice = QStringLiteral("notKept");
const QString notRemovedNotice = QStringLiteral("notRemoved");
const QString notRecoveredNotice = QStringLiteral("notRecovered");
const QString notOfferedNotice = QStringLiteral("notOffered");

enum Answer { Later, Recover, Discard, Keep };

QString dayOf(const KeptOutline &outline) {
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(outline.date).date(), QLocale::LongFormat);
}

QString timeOf(const KeptOutline &outline) {
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(outline.date).time(), QLocale::ShortFormat);
}

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
    auto left = RecoveryFile::leftBehindFor(folder_, document_.pdfURL());
    tellWhatCantBeRead(left.problems);
    if (!document_.allowTOCediting()) return tellWhatCantBePutIn(left.files);
    offer(std::move(left.files));
}

void Recovery::changed() {
    if (!hasBegun_) return;
    // An outline that was reverted counts as edited, but is the one of the file; unless what it was reverted
    // to has only gone into a preview, or nowhere.
    const OutlineEdits &edits = document_.edits();
    const bool isReverted = edits.undoSummary().name == u"revertOutlineToSaved:" &&
                            document_.outline().hasOutlineOfFileInMemory();
    if (!isReverted && document_.isDocumentEdited()) {
        isTakenBack_ = false;
        return startTimer();
    }
    // Who compares what was recovered with the file has not discarded it.
    if (!isRecovered_ || edits.redoSummary().name != u"recoverOutline") return forget();
    isTakenBack_ = true;
    timer_.stop();
}

/// From the first change on, however many follow.
void Recovery::startTimer() {
    using namespace std::chrono;
    const milliseconds wait =
        sinceKept_.isValid() ? std::max(delay - milliseconds(sinceKept_.elapsed()), shortDelay) : shortDelay;
    if (!timer_.isActive() || timer_.remainingTimeAsDuration() > wait) timer_.start(wait);
}

void Recovery::keep() {
    if (!document_.isDocumentEdited()) return;
    // What only a password shows is not to be written without it; nor could it be put into the file.
    if (document_.pdfDoc() && document_.pdfDoc()->isUnlocked()) return;
    sinceKept_.start();
    try {
        if (const auto pages = document_.sharedPdfDoc(); !file_ || fileOf_.lock() != pages) {
            file_ = document_.outline().markOfFile();
            fileOf_ = pages;
        }
        mayBeKept_ = true;
        std::vector<KeptEntry> entries = keptEntries(document_.root());
        noteKeysInFile(entries, document_.outline().outlineOfFile());
        writer().keep({document_.pdfURL(), file_.value_or(FileMark()), QDateTime::currentMSecsSinceEpoch(),
                       std::move(entries)});
    } catch (const std::bad_alloc &) {
        tellWhatIsNotKept(tr("there is not enough memory"));
    }
}

void Recovery::keepNow() {
    if (document_.myWindow() && !document_.isBusy()) document_.outlineview()->endEditing();
    keepEntered();
}

void Recovery::keepEntered() {
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
    isRecovered_ = false;
    if (isTakenBack_) return leaveToNextStart();
    if (std::exchange(mayBeKept_, false)) writer().remove();
}

/// What is changed then is kept in another file.
void Recovery::leaveToNextStart() {
    isTakenBack_ = false;
    mayBeKept_ = false;
    writer_.reset();
    leftBehind_.reset();
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

/// The file has been encrypted since, say.
void Recovery::tellWhatCantBePutIn(const Files &files) {
    if (!notices() || files.empty()) return;
    const auto content = files.front()->read();
    const auto *outline = std::get_if<KeptOutline>(&content);
    if (!outline) return tellWhatCantBeRead({std::get<RecoveryFile::Unreadable>(content).reason});
    const QString text =
        tr("Changes to the outline of “%1” were not saved, and are kept as they were on %2 at %3. They can’t "
           "be put into this file, which can’t be edited.");
    notices()->setNotice(notOfferedNotice,
                         {text.arg(document_.displayName(), dayOf(*outline), timeOf(*outline))});
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
    const size_t count = outline.entries.size();
    const QString text =
        tr("Changes to the outline of “%1” were not saved. It can be had again as it was on %2 at "
           "%3, with %4.");
    sheet->addText(text.arg(document_.displayName(), dayOf(outline), timeOf(outline),
                            count == 1 ? tr("1 entry") : tr("%1 entries").arg(count)));
    if (files.size() > 1)
        sheet->addText(tr("It is the latest of %1 that are kept. When it is discarded, the one before is "
                          "offered.")
                           .arg(files.size()));
    if (!isForThisPlace(outline)) sheet->addText(tr("It was kept for “%1”.").arg(outline.pdf));
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
        self->discard(std::move(offered), shared->second);
    });
}

void Recovery::discard(Files files, const KeptOutline &outline) {
    const bool isOurs = isForThisPlace(outline) && isForFileOf(document_.outline(), outline);
    if (!isOurs) return askBeforeDiscarding(std::move(files), outline);
    tellWhatStays(files.front()->remove());
    files.erase(files.begin());
    offer(std::move(files));
}

/// The file that it was kept for may be another one, moved since, or away just now.
void Recovery::askBeforeDiscarding(Files files, const KeptOutline &outline) {
    auto *sheet = new Sheet(tr("Discard Outline"));
    sheet->addText(tr("The outline was kept for “%1” as that file was then. If you have the file elsewhere, "
                      "these changes to its outline are lost.")
                       .arg(outline.pdf));
    sheet->addButton(tr("Keep"), Keep);
    sheet->addButton(tr("Discard"), Discard);
    const auto shared = std::make_shared<Files>(std::move(files));
    document_.beginSheet(sheet, [self = QPointer(this), shared](int returnCode) {
        Files offered = std::move(*shared);
        if (!self) return;
        if (returnCode == Discard) self->tellWhatStays(offered.front()->remove());
        offered.erase(offered.begin());
        self->offer(std::move(offered));
    });
}

/// Whether an outline was kept for what the document's path leads to, by whichever path.
bool Recovery::isForThisPlace(const KeptOutline &outline) const {
    struct stat meant = {};
    struct stat here = {};
    return outline.pdf == document_.pdfURL() ||
           (::stat(fileNameBytes(outline.pdf).constData(), &meant) == 0 &&
            ::stat(fileNameBytes(document_.pdfURL()).constData(), &here) == 0 && isSameFile(meant, here));
}

void Recovery::recover(std::unique_ptr<RecoveryFile> file, const KeptOutline &outline) {
    // What is kept from now on goes into the same file, so that something is there all the time.
    writer_.reset();
    leftBehind_ = std::move(file);
    const LostTargets lost = recoverOutline(document_.outline(), outline);
    // Not before: when the history tells of the change, it does not count as one to be saved yet.
    mayBeKept_ = true;
    isRecovered_ = true;
    if (notices()) showLostTargets(*notices(), lost);
}

}  // namespace leafwright

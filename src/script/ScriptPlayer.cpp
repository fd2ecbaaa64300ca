#include "script/ScriptPlayer.h"

#include "app/Updater.h"
#include "document/MyDocument.h"
#include "document/commands/ExchangeCommands.h"
#include "document/commands/HeadingMapCommands.h"
#include "document/window/DocumentWindow.h"
#include "files/FileReading.h"
#include "script/ModalGuard.h"
#include "script/ScriptFiles.h"
#include "script/ScriptGestures.h"
#include "script/StepFailure.h"
#include "texts/Translated.h"
#include "widgets/Sheet.h"

#include <QCoreApplication>

namespace leafwright::script {

namespace {

constexpr Translated translated{"ScriptPlayer"};

/// The tag of the button that is pressed where a step names none: a command that has a sheet of its own is
/// given for the sake of it; a sheet that comes up in passing is cancelled.
int usualTag(const Step &step) {
    const ActionDescription *description = actionDescription(step.name);
    return description && description->has(ActionDescription::HasSheet) ? 1 : 0;
}

void handleEvents() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

ScriptPlayer::ScriptPlayer(ScriptFiles &files, Recorder record)
    : files_(files), record_(std::move(record)), platform_(files), application_(platform_) {
    // A script asks no server: what it would answer is not for a report, nor for a script to wait for.
    application_.sharedUpdater().setFeedURL({});
}

ScriptPlayer::~ScriptPlayer() = default;

MyDocument *ScriptPlayer::document() const {
    return qobject_cast<MyDocument *>(document_);
}

std::optional<PDFError> ScriptPlayer::open(const QString &path) {
    const Result<QString> copy = files_.copyOf(path);
    if (const auto *error = std::get_if<PDFError>(&copy)) return *error;
    const auto &place = std::get<QString>(copy);
    DocumentController &controller = application_.documentController();
    // To open it again for the reason would be to ask something else: the next reading may go well.
    std::optional<PDFError> error;
    const auto failed =
        QObject::connect(&controller, &DocumentController::openingFailed, [&error](Document *document) {
            if (const auto *unread = qobject_cast<MyDocument *>(document)) error = unread->openError();
        });
    document_ = controller.openDocumentWithContentsOfURL(place, true);
    QObject::disconnect(failed);
    if (!document()) return error.value_or(PDFError{PDFError::Kind::FileUnreadable, noWorkingFolder()});
    document()->finishLoading();
    std::vector<ShownSheet> sheets;
    settle({}, sheets);
    if (record_) record_({{}, std::nullopt, platform_.takeHappenings(), std::move(sheets)}, document());
    return std::nullopt;
}

std::optional<QString> ScriptPlayer::play(const std::vector<Step> &steps) {
    for (const Step &step : steps) {
        try {
            playStep(step);
        } catch (const StepFailure &failure) {
            return failureOfStep(step.number, step.name, failure.reason());
        }
    }
    return std::nullopt;
}

void ScriptPlayer::playStep(const Step &step) {
    if (!document()) throw StepFailure(translated("the document has been closed"));
    ScriptGestures gestures(*document(), platform_);
    gestures.endEditing();
    const ModalGuard guard;
    StepRecord record{step.name, std::nullopt};
    record.enabled = step.isCommand ? perform(step, record.sheets) : gestures.play(step);
    settle(step, record.sheets);
    if (!guard.closed().isNull())
        throw StepFailure(translated("a window waits for a person: \"%1\"").arg(guard.closed()));
    if (!platform_.unanswered().isNull()) throw StepFailure(platform_.unanswered());
    throwForFailedWrite();
    throwForFailedExchange();
    record.happenings = platform_.takeHappenings();
    if (record_) record_(record, document());
}

/// What was to be saved, and was not, would be missing from what the run puts in place.
void ScriptPlayer::throwForFailedWrite() const {
    if (!document()) return;
    if (const auto problem = document()->headingMapCommands().saveProblem())
        throw StepFailure(files_.toldIn(*problem));
    const std::optional<PDFError> error = document()->writeError();
    // What stands in the run's own folder is only on its way, and need not outlive anything.
    if (!error || error->kind == PDFError::Kind::NotDurable) return;
    throw StepFailure(files_.toldIn(error->message));
}

/// The same of what was to be exported or imported.
void ScriptPlayer::throwForFailedExchange() const {
    if (!document()) return;
    if (const auto &problem = document()->exchangeCommands().problem())
        throw StepFailure(files_.toldIn(*problem));
}

bool ScriptPlayer::perform(const Step &step, std::vector<ShownSheet> &sheets) {
    if (!document()->actions().perform(step.name)) return false;
    fillInField(step, sheets);
    answerOpenSheet(step, sheets);
    if (step.has("fields") && sheets.empty())
        throw StepFailure(translated("no sheet opened to take the fields"));
    return true;
}

void ScriptPlayer::fillInField(const Step &step, std::vector<ShownSheet> &sheets) const {
    QWidget *bar = document() ? document()->myWindow()->fieldBarOf(step.name) : nullptr;
    if (bar) sheets.push_back(fillInBar(*bar, step["fields"].toObject(), step["tag"].toInt(1)));
}

// Not const, because the sheet's end changes the document.
// NOLINTNEXTLINE(readability-make-member-function-const)
void ScriptPlayer::answerOpenSheet(const Step &step, std::vector<ShownSheet> &sheets) {
    Sheet *sheet = document() ? document()->openSheet() : nullptr;
    if (document() && (!sheet || !sheet->isVisible())) sheet = document()->openPanel();
    if (!sheet || !sheet->isVisible()) return;
    // The step's own words are for the first of its sheets.
    const bool isFirst = sheets.empty();
    const bool isMeant = isFirst && (step.has("fields") || step.has("tag"));
    const int tag = isMeant ? step["tag"].toInt(1) : (isFirst ? usualTag(step) : 0);
    sheets.push_back(answerSheet(*sheet, isMeant ? step["fields"].toObject() : QJsonObject(), tag));
}

void ScriptPlayer::settle(const Step &step, std::vector<ShownSheet> &sheets) {
    do {
        if (document()) document()->finishSearches();
        handleEvents();
        answerOpenSheet(step, sheets);
        handleEvents();
    } while (platform_.runLater());
}

}  // namespace leafwright::script

#include "document/commands/OtherPrograms.h"

#include "document/MyDocument.h"
#include "document/commands/SavingCommands.h"
#include "document/window/DocumentWindow.h"
#include "system/FileWatch.h"
#include "texts/Translated.h"
#include "widgets/NoticeBars.h"

namespace leafwright {

namespace {

using State = FileOnDisk::State;

constexpr Translated translated{"OtherPrograms"};

const QString changedOnDiskNotice = QStringLiteral("changedOnDisk");

QString textOfNotice(State state, const QString &name) {
    switch (state) {
        case State::Unchanged:
            break;
        case State::Overwritten:
            return translated(
                       "Another program has written to “%1”, and the pages that are shown here are no longer "
                       "in it. Load its new pages to go on; the outline stays as you have it.")
                .arg(name);
        case State::Replaced:
            return translated(
                       "Another program has replaced “%1”. Load its new pages, and the outline stays as you "
                       "have it; or save what is shown here in another place.")
                .arg(name);
        case State::Missing:
            return translated("“%1” is no longer where it was. What is shown here can still be saved.")
                .arg(name);
        case State::Unknown:
            return translated("Whether another program has changed “%1” can’t be told at the moment.")
                .arg(name);
    }
    return {};
}

Alert questionBeforeWriting(State state, const QString &name) {
    const QString saveAs = actionTitle(*actionDescription(QStringLiteral("saveDocumentAs:")));
    const QString cancel = translated("Cancel");
    if (state == State::Missing) {
        return {translated("“%1” is no longer where it was").arg(name),
                translated("It was removed or given another name, or its folder is not there at the moment. "
                           "Saving it here makes it anew."),
                {saveAs, translated("Save Here"), cancel}};
    }
    return {translated("Another program has replaced “%1”").arg(name),
            translated("Saving here puts the pages that are shown in place of whatever is there now."),
            {saveAs, translated("Replace"), cancel}};
}

}  // namespace

OtherPrograms::OtherPrograms(MyDocument &document) : document_(document) {
    document.actions().handle("reloadFromDisk:", [this](QObject *) { reloadFromDisk(); });
}

OtherPrograms::~OtherPrograms() = default;

void OtherPrograms::watch() {
    watch_ = std::make_unique<FileWatch>(document_.pdfURL());
    QObject::connect(&document_, &Document::fileURLChanged, watch_.get(), [this] {
        watch_->setPath(document_.pdfURL());
        tell();
    });
    QObject::connect(watch_.get(), &FileWatch::touched, &document_, [this] {
        if (std::exchange(tellsWhenIdle_, true)) return;
        document_.whenIdle([this] {
            tellsWhenIdle_ = false;
            tell();
        });
    });
}

void OtherPrograms::tell() {
    if (!document_.myWindow()) return;
    NoticeBars &notices = *document_.myWindow()->notices();
    const State before = std::exchange(told_, document_.outline().stateOnDisk());
    if (told_ == State::Unchanged) return notices.removeNotice(changedOnDiskNotice);
    if (told_ == before) return;  // nor once more where the user has closed the bar
    Notice notice{textOfNotice(told_, document_.displayName())};
    if (told_ != State::Missing)
        notice.buttons.append({translated("Load New Pages"), [this] {
                                   if (!document_.isBusy()) loadNewPages();
                               }});
    // Where what was read is gone, there is nothing to save anywhere else.
    if (told_ != State::Overwritten)
        notice.buttons.append({actionTitle(*actionDescription(QStringLiteral("saveDocumentAs:"))),
                               [this] { document_.actions().perform(QStringLiteral("saveDocumentAs:")); }});
    notices.setNotice(changedOnDiskNotice, notice);
}

bool OtherPrograms::letWrite() {
    if (!document_.myWindow()) return true;
    const State state = document_.outline().stateOnDisk();
    // What can't be told is a failure of the write, which says why.
    if (state == State::Unchanged || state == State::Unknown) return true;
    tell();
    if (state != State::Overwritten) return letWriteOverOthers(state);
    enum Answer { LoadNewPages, Cancel };
    const int answer = document_.runModal(
        {translated("Another program has written to “%1”").arg(document_.displayName()),
         translated(
             "The pages that are shown here are no longer in the file, so they can’t be saved. Loading "
             "its new pages keeps the outline as you have it, to be saved then."),
         {translated("Load New Pages"), translated("Cancel")}});
    if (answer == LoadNewPages) loadNewPages();
    return false;
}

bool OtherPrograms::letWriteOverOthers(State state) {
    // The answer is about this, not about what comes while the question is up.
    FileOnDisk::Seen seen = FileOnDisk::seenAt(document_.pdfURL());
    enum Answer { SaveAs, WriteHere, Cancel };
    switch (document_.runModal(questionBeforeWriting(state, document_.displayName()))) {
        case SaveAs:
            return document_.saving().saveDocumentAs(), false;
        case WriteHere:
            document_.outline().acceptFileOnDisk(document_.pdfURL(), std::move(seen));
            return true;
        default:
            return false;
    }
}

void OtherPrograms::reloadFromDisk() {
    const bool mayLoseOutline =
        document_.isDocumentEdited() ||
        (document_.outline().stateOnDisk() != State::Unchanged && !document_.root().children().empty());
    if (!mayLoseOutline) {
        document_.reload(MyDocument::Reload::TakeOutline);
        return;
    }
    enum Answer { Keep, Take, Cancel };
    switch (document_.runModal(
        {translated("Do you want to keep the outline while “%1” is loaded again?")
             .arg(document_.displayName()),
         translated("Its entries are found again by their page labels. If the outline that the file has now "
                    "takes its place, yours is lost."),
         {translated("Keep Outline"), translated("Take Outline of File"), translated("Cancel")}})) {
        case Keep:
            return loadNewPages();
        case Take:
            document_.reload(MyDocument::Reload::TakeOutline);
            return;
        default:
            return;
    }
}

void OtherPrograms::loadNewPages() {
    document_.reload(MyDocument::Reload::KeepOutline);
}

}  // namespace leafwright

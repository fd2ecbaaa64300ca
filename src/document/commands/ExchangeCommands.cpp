#include "document/commands/ExchangeCommands.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "exchange/OutlineFormat.h"
#include "files/FilePlace.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "model/TreeWalk.h"
#include "texts/CountText.h"
#include "texts/Translated.h"
#include "widgets/NoticeBars.h"

#include <QFileInfo>
#include <QLoggingCategory>

namespace leafwright {

namespace {

constexpr Translated translated{"ExchangeCommands"};

Q_LOGGING_CATEGORY(log, "leafwright.exchange", QtInfoMsg)

// The names of notices in the window.
const QString failedExportNotice = QStringLiteral("failedExport");
const QString failedImportNotice = QStringLiteral("failedImport");

constexpr int bitsOfMegabyte = 20;

/// Hands what is written to a file in large pieces, as each is a call of the system. What nobody could read
/// again, such as the blanks before 100,000 levels, is not written.
class Pieces {
public:
    explicit Pieces(FileReplacement &file) : file_(file) {}

    void add(const QByteArray &bytes) {
        constexpr qsizetype enough = 1 << 16;
        size_ += bytes.size();
        if (isTooLarge()) return;
        pending_ += bytes;
        if (pending_.size() >= enough) flush();
    }
    /// @return whether all that came so far has been taken
    bool flush() {
        isTaken_ = isTaken_ && file_.write(pending_) == pending_.size();
        pending_.clear();
        return isTaken_;
    }
    bool isTooLarge() const { return size_ > largestOutlineText; }

private:
    FileReplacement &file_;
    QByteArray pending_;
    qsizetype size_ = 0;
    bool isTaken_ = true;
};

/// The entries of which no page is known to have the label.
struct LostLabels {
    int count = 0;
    QString first;  ///< Of them.

    void add(const QString &label) {
        if (count++ == 0) first = label;
    }
};

/// The name of the PDF with the extension of the first format.
QString proposedPath(const QString &pdf, const QStringList &extensions) {
    const QFileInfo file(pdf);
    return file.path() + u'/' + file.completeBaseName() + u'.' + extensions.first();
}

/// A sentence on a file, in which something is wrong.
QString messageOf(const QString &path, const TreeError &error) {
    const QString place = error.where.isEmpty() ? path : path + QLatin1String(": ") + error.where;
    return place + QLatin1String(": ") + error.message;
}

}  // namespace

ExchangeCommands::ExchangeCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("exportOutline:", [this](QObject *) { exportOutline(); });
    actions.handle("importOutline:", [this](QObject *) { importOutline(); });
}

bool ExchangeCommands::canExport() const {
    return !document_.root().children().empty();
}

bool ExchangeCommands::canImport() const {
    return document_.allowTOCediting() && !document_.lockTOCediting();
}

void ExchangeCommands::exportOutline() {
    problem_.reset();
    const QStringList extensions = extensionsOfOutlines();
    const auto path = document_.runSavePanel({.title = translated("Export Outline"),
                                              .path = proposedPath(document_.pdfURL(), extensions),
                                              .allowedFileTypes = extensions});
    if (!path) return;
    QStringList notices;
    problem_ = write(*path, notices);
    if (problem_) {
        document_.platform().beep();
        notices.prepend(*problem_);
    } else {
        document_.tell(translated("Exported, %1").arg(entryCountText(countBelow(document_.root()))));
    }
    tell(failedExportNotice, notices);
}

std::optional<QString> ExchangeCommands::write(const QString &path, QStringList &notices) const {
    const OutlineFormat *format = formatToWrite(path);
    if (!format)
        return translated(
                   "%1 was not written: the end of its name does not say in which form. Names may "
                   "end in one of these: %2.")
            .arg(path, ownExtensionsOfOutlines().join(QLatin1String(", ")));
    // However the two are spelled, and through whatever links.
    if (const auto place = placeOf(path); place && place == placeOf(document_.pdfURL()))
        return translated("%1 was not written: it is the PDF that is open.").arg(path);
    FileReplacement file(path);
    if (!file.start()) return file.message();
    Pieces pieces(file);
    LostLabels lost;
    format->write(
        document_.root(),
        [&](const MyOutlineItem &item) -> std::optional<int> {
            // An absent label is not the empty one, which a page may have.
            if (item.pageLabel().isNull()) return std::nullopt;
            const auto page = document_.outline().knownPageIndexOfItem(item);
            if (!page) lost.add(item.pageLabel());
            return page;
        },
        [&pieces](const QByteArray &bytes) { pieces.add(bytes); });
    if (pieces.isTooLarge())
        return translated("%1 was not written: in this form, the outline is larger than %2 MB.")
            .arg(path)
            .arg(largestOutlineText >> bitsOfMegabyte);
    if (!pieces.flush()) return file.message();
    const FileReplacement::Outcome outcome = file.commit();
    if (outcome == FileReplacement::Outcome::NotWritten) return file.message();
    notices = file.notices();
    if (outcome == FileReplacement::Outcome::NotDurable) notices.prepend(file.message());
    if (lost.count > 0 && !format->keepsLabels)
        notices.append(translated("%1: this form counts pages, and no page is known to have the label of %2 "
                                  "entries, the first of which is “%3”. They lead nowhere there.")
                           .arg(path, QString::number(lost.count), lost.first));
    return std::nullopt;
}

void ExchangeCommands::importOutline() {
    problem_.reset();
    const auto path = document_.runOpenPanel(
        {.title = translated("Import Outline"), .allowedFileTypes = extensionsOfOutlines()});
    if (!path) return;
    const auto existing = canExport() ? askForExisting() : Existing::Replaced;
    if (!existing) return;
    QStringList notices;
    const OutlineTree outline = read(*path, *existing, notices);
    if (const auto *error = std::get_if<TreeError>(&outline)) {
        problem_ = messageOf(*path, *error);
        document_.platform().beep();
        return tell(failedImportNotice, {*problem_});
    }
    MyOutlineItem &root = *std::get<std::unique_ptr<MyOutlineItem>>(outline);
    tell(failedImportNotice, notices + whatIsLost(root));
    const qint64 count = countBelow(root);
    put(root, *existing);
    document_.tell(translated("Imported, %1").arg(entryCountText(count)));
}

/// What the imported entries say that can't be kept, a message each.
QStringList ExchangeCommands::whatIsLost(const MyOutlineItem &outline) const {
    QStringList messages;
    LostLabels lost;
    walkBelow(outline, [&](const MyOutlineItem &item, size_t /*depth*/) {
        if (!item.pageLabel().isNull() && !document_.outline().knownPageIndexOfItem(item))
            lost.add(item.pageLabel());
    });
    if (lost.count > 0)
        messages.append(
            translated(
                "No page is known to have the label of %1 imported entries, the first of which is “%2”. "
                "When they are saved, they lead to the first page.")
                .arg(QString::number(lost.count), lost.first));
    const LostActions actions = lostActions(outline, entriesByNumber(document_.outline().outlineOfFile()));
    if (actions.unknown > 0)
        messages.append(translated("%1 imported entries did something that only the file has that they come "
                                   "from. They lead nowhere now.")
                            .arg(actions.unknown));
    if (actions.besidePages > 0)
        messages.append(translated("%1 imported entries have an action beside their page. They lead to the "
                                   "page, without the action.")
                            .arg(actions.besidePages));
    return messages;
}

OutlineTree ExchangeCommands::read(const QString &path, Existing existing, QStringList &notices) const {
    const auto content = readRegularFile(path, largestOutlineText);
    if (const auto *reason = std::get_if<QString>(&content))
        return TreeError{{}, translated("the file can't be read: %1").arg(*reason)};
    const auto &text = std::get<QByteArray>(content);
    const OutlineFormat *format = formatToRead(path, text);
    if (!format)
        return TreeError{{}, translated("what it holds is in none of the forms that its name allows")};
    // An entry of the file that stays is not to come a second time.
    const bool maySucceed = existing == Existing::Replaced;
    OutlineEntries inFile;
    if (maySucceed) inFile = entriesByNumber(document_.outline().outlineOfFile());
    QStringList messages;
    OutlineTree outline = readOutline(*format, text, {*document_.pdfDoc(), std::move(inFile), &messages});
    for (const QString &message : messages)
        notices.append(messageOf(path, {{}, message}));
    return outline;
}

std::optional<ExchangeCommands::Existing> ExchangeCommands::askForExisting() const {
    enum Answer { Replace, Add, Cancel };
    switch (document_.runModal(
        {translated("Do you want to replace the outline that is there?"),
         translated("Otherwise the imported entries come behind its own. Step Back takes either back."),
         {translated("Replace"), translated("Add"), translated("Cancel")}})) {
        case Replace:
            return Existing::Replaced;
        case Add:
            return Existing::Kept;
        default:
            return std::nullopt;
    }
}

void ExchangeCommands::put(MyOutlineItem &outline, Existing existing) {
    OutlineEdits &edits = document_.edits();
    MyOutlineItem &root = document_.root();
    const OutlineEdits::Transaction edit(edits, QStringLiteral("importOutline:"));
    if (existing == Existing::Replaced) edits.removeAll(root);
    for (auto &item : outline.takeChildren())
        edits.insert(root, root.children().size(), std::move(item));
}

void ExchangeCommands::tell(const QString &name, const QStringList &messages) const {
    if (!messages.isEmpty()) qCWarning(log).noquote() << messages.join(u'\n');
    const DocumentWindow *window = document_.myWindow();
    if (!window) return;
    if (messages.isEmpty()) return window->notices()->removeNotice(name);
    window->notices()->setNotice(name, {messages.join(u'\n')});
}

}  // namespace leafwright

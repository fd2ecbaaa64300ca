#include "document/commands/ExchangeCommands.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "exchange/OutlineFormat.h"
#include "files/FilePlace.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "texts/Translated.h"
#include "widgets/NoticeBars.h"

#include <QFileInfo>

namespace leafwright {

namespace {

constexpr Translated translated{"ExchangeCommands"};

// The names of notices in the window.
const QString failedExportNotice = QStringLiteral("failedExport");
const QString failedImportNotice = QStringLiteral("failedImport");

/// Hands what is written to a file in large pieces, as each is a call of the system.
class Pieces {
public:
    explicit Pieces(FileReplacement &file) : file_(file) {}

    void add(const QByteArray &bytes) {
        constexpr qsizetype enough = 1 << 16;
        pending_ += bytes;
        if (pending_.size() >= enough) flush();
    }
    /// @return whether all that came so far has been taken
    bool flush() {
        isTaken_ = isTaken_ && file_.write(pending_) == pending_.size();
        pending_.clear();
        return isTaken_;
    }

private:
    FileReplacement &file_;
    QByteArray pending_;
    bool isTaken_ = true;
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
    format->write(
        document_.root(),
        // An absent label is not the empty one, which a page may have.
        [this](const MyOutlineItem &item) -> std::optional<int> {
            if (item.pageLabel().isNull()) return std::nullopt;
            return document_.outline().knownPageIndexOfItem(item);
        },
        [&pieces](const QByteArray &bytes) { pieces.add(bytes); });
    if (!pieces.flush()) return file.message();
    const FileReplacement::Outcome outcome = file.commit();
    if (outcome == FileReplacement::Outcome::NotWritten) return file.message();
    notices = file.notices();
    if (outcome == FileReplacement::Outcome::NotDurable) notices.prepend(file.message());
    return std::nullopt;
}

void ExchangeCommands::importOutline() {
    problem_.reset();
    const auto path = document_.runOpenPanel(
        {.title = translated("Import Outline"), .allowedFileTypes = extensionsOfOutlines()});
    if (!path) return;
    const auto existing = canExport() ? askForExisting() : Existing::Replaced;
    if (!existing) return;
    const OutlineTree outline = read(*path, *existing);
    if (const auto *error = std::get_if<TreeError>(&outline)) {
        problem_ = messageOf(*path, *error);
        document_.platform().beep();
        return tell(failedImportNotice, {*problem_});
    }
    tell(failedImportNotice, {});
    put(*std::get<std::unique_ptr<MyOutlineItem>>(outline), *existing);
}

OutlineTree ExchangeCommands::read(const QString &path, Existing existing) const {
    const auto content = readSmallFile(path, largestOutlineText);
    if (const auto *reason = std::get_if<QString>(&content))
        return TreeError{{}, translated("the file can't be read: %1").arg(*reason)};
    const QByteArray &text = std::get<QByteArray>(content);
    if (text.trimmed().isEmpty()) return TreeError{{}, translated("there is nothing in it")};
    const OutlineFormat *format = formatToRead(path, text);
    if (!format)
        return TreeError{{}, translated("what it holds is in none of the forms that its name allows")};
    const PDFDocument &pdf = *document_.pdfDoc();
    // An entry of the file that stays is not to come a second time.
    const bool maySucceed = existing == Existing::Replaced;
    return readOutline(*format, text,
                       {pdf, maySucceed ? entriesByNumber(pdf.outlineRoot()) : OutlineEntries()});
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
    const DocumentWindow *window = document_.myWindow();
    if (!window) return;
    if (messages.isEmpty()) return window->notices()->removeNotice(name);
    window->notices()->setNotice(name, {messages.join(u'\n')});
}

}  // namespace leafwright

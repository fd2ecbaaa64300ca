#include "document/commands/Refusals.h"

#include "document/MyDocument.h"
#include "texts/Translated.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace leafwright {

namespace {

constexpr Translated translated{"Refusals"};

// Who does nothing in an outline that can't be edited.
constexpr auto editing = std::to_array<std::string_view>(
    {"addSiblingOutlineItem:", "addChildOutlineItem:", "removeOutlineItems:", "promoteChildrenOutlineItem:",
     "changeOutlineItemToTitleCase:", "pointSelectedEntryHere:", "importOutline:", "stepBack:",
     "stepForward:", "findContents:", "completeContents:", "testPageStructureKnowledge:"});
// Who writes the PDF.
constexpr std::string_view saving = "saveDocument:";
constexpr std::string_view savingElsewhere = "saveDocumentAs:";

/// Why the file can't be edited or written as a whole.
QString refusalOfFile(const PDFDocument &pdf) {
    if (pdf.isLocked()) return translated("The file is locked by a password.");
    if (pdf.isEncrypted()) return translated("The file is encrypted, and can’t be changed.");
    return {};
}

QString refusalOfWriting(const PDFDocument &pdf, bool isElsewhere, bool isReadOnly) {
    if (!pdf.canBeWritten())
        return translated("Not all of the file could be read, and what is missing would be lost.");
    if (isReadOnly && !isElsewhere)
        return translated("The file is read-only. It can be saved in another place.");
    return {};
}

QString refusalOf(Needs needs) {
    switch (needs) {
        case Needs::Entries:
            return translated("No entry is selected.");
        case Needs::OneEntry:
            return translated("This takes one selected entry.");
        case Needs::OneParent:
            return translated("This takes one selected entry with others below it.");
        case Needs::Text:
            return translated("No text is selected on the pages.");
        default:
            return {};
    }
}

}  // namespace

QString whyRefused(const MyDocument &document, const ActionDescription &command, bool isReadOnly) {
    const std::string_view selector = command.selector;
    const bool writes = selector == saving || selector == savingElsewhere;
    const PDFDocument *pdf = document.pdfDoc();
    if (pdf && (writes || std::ranges::find(editing, selector) != editing.end())) {
        if (const QString refusal = refusalOfFile(*pdf); !refusal.isNull()) return refusal;
        if (writes) return refusalOfWriting(*pdf, selector == savingElsewhere, isReadOnly);
    }
    const bool isEnabled =
        document.actions().validateUserInterfaceItem(QString::fromLatin1(command.selector));
    return isEnabled ? QString() : refusalOf(command.needs);
}

}  // namespace leafwright

#include "document/commands/TargetCommands.h"

#include "document/MyDocument.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "view/SpotArchive.h"

namespace leafwright {

namespace {

constexpr Translated translated{"TargetCommands"};

constexpr const char *command = "pointSelectedEntryHere:";

/// Absent without pages.
std::optional<PageTarget> targetHere(const LabelPDFView &view) {
    if (const auto spot = unarchivedSpot(view.iconLocationData()))
        return PageTarget{spot->pageLabel, spot->point};
    const auto seen = view.currentDestination();
    if (!seen) return std::nullopt;
    return PageTarget{view.currentPage()->label(), seen->point, seen->pageIndex};
}

}  // namespace

TargetCommands::TargetCommands(MyDocument &document) : document_(document) {
    document.actions().handle(command, [this](QObject *) { pointSelectedEntryHere(); });
}

void TargetCommands::pointSelectedEntryHere() {
    const bool mayEdit = document_.allowTOCediting() && !document_.lockTOCediting();
    const auto nodes = document_.selectedNodes();
    const auto target = targetHere(*document_.pdfview());
    if (!mayEdit || nodes.size() != 1 || !target) return document_.platform().beep();
    OutlineEdits &edits = document_.edits();
    const OutlineEdits::Transaction edit(edits, QString::fromLatin1(command));
    MyOutlineItem &item = *nodes.front()->representedObject();
    edits.setPointOnPage(item, *target->point);
    edits.setPageLabel(item, target->label);
    if (target->importedPage) edits.setImportedPage(item, target->importedPage);
    document_.pdfview()->setIconLocationData({});
    document_.pdfview()->setNeedsDisplay();
    document_.tell(translated("“%1” leads to page %2").arg(item.pageTitle(), target->label));
}

}  // namespace leafwright

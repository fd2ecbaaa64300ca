#include "pdf/mupdf/TargetWriter.h"

#include "pdf/ObjectSyntax.h"
#include "pdf/TextString.h"

namespace leafwright::mupdf {

namespace {

/// The action, where it is known in full; else nothing.
QByteArray actionSyntax(const std::optional<OutlineEntry::Action> &action) {
    if (!action || !action->isKnownInFull()) return {};
    if (action->type == u"URI") return "<</S /URI /URI " + stringSyntax(action->target->toUtf8()) + ">>";
    return "<</S /GoToR /F " + stringSyntax(encodeTextString(*action->target)) + " /D [0 /Fit]>>";
}

}  // namespace

void TargetWriter::setTarget(DictionarySyntax &dictionary, const PDFOutline &entry) const {
    dictionary.remove("Dest");
    dictionary.remove("A");
    const auto &destination = entry.destination();
    const QByteArray target = destination ? spelled(*destination) : actionSyntax(entry.entry().action);
    if (!target.isEmpty()) dictionary.set(destination ? "Dest" : "A", target);
}

QByteArray TargetWriter::spelled(const PDFDestination &destination) const {
    const PageTree &pages = reader_.pages();
    if (destination.pageIndex < 0 || destination.pageIndex >= pages.count()) return {};
    const int number = pages.numberOf(destination.pageIndex);
    // A page that is no object of its own can only be told by its index.
    const QByteArray page =
        number != 0 ? source_.reference(number) : QByteArray::number(destination.pageIndex);
    return '[' + page + " /XYZ " + numberSyntax(destination.point.x()) + ' ' +
           numberSyntax(destination.point.y()) + " null]";
}

}  // namespace leafwright::mupdf

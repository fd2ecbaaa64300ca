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

void TargetWriter::setTarget(DictionarySyntax &dictionary, const PDFOutline &now, const PDFOutline &before,
                             const Object &inFile) {
    const QByteArray actionBefore = dictionary.value("A");
    const bool hadDestination = !dictionary.value("Dest").isEmpty();
    dictionary.remove("Dest");
    dictionary.remove("A");
    const auto &to = now.destination();
    if (!to) {
        const QByteArray action =
            actionOf(now.entry(), before.entry(), inFile.get(PDF_NAME(A)), actionBefore);
        if (!action.isEmpty()) dictionary.set("A", action);
        return;
    }
    const auto &from = before.destination();
    const bool gotItsSpot = from && from->pageIndex == to->pageIndex && samePoint(from->point, {});
    const QByteArray place = spelled(*to, gotItsSpot ? zoomOf(inFile) : 0);
    if (place.isEmpty()) return;
    if (gotItsSpot && hadDestination) {
        // Beside it there is to be no action. Of a file in which one is, it stays as it was.
        dictionary.set("Dest", place);
        if (!actionBefore.isEmpty()) dictionary.set("A", actionBefore);
        return;
    }
    if (const auto action = actionLedTo(place, gotItsSpot, inFile.get(PDF_NAME(A)), actionBefore)) {
        dictionary.set("A", action->toBytes());
    } else {
        dictionary.set("Dest", place);
    }
}

/// What an entry without a page does; empty where that is nothing, or not known in full. What else an action
/// of its kind does that the file has is done as before.
QByteArray TargetWriter::actionOf(const OutlineEntry &now, const OutlineEntry &before, const Object &action,
                                  const QByteArray &spelled) {
    QByteArray whole = actionSyntax(now.action);
    const bool isOfItsKind = before.action && now.action && before.action->type == now.action->type;
    if (whole.isEmpty() || !isOfItsKind) return whole;
    const bool isUri = now.action->type == u"URI";
    const auto direct = DictionarySyntax::parse(spelled);
    DictionarySyntax dictionary = direct ? *direct : source_.dictionary(action);
    dictionary.set(isUri ? "URI" : "F", DictionarySyntax::parse(whole)->value(isUri ? "URI" : "F"));
    return dictionary.toBytes();
}

/// A GoTo action, led to another place. Nothing where it does no more than to lead there, or is another.
/// @param spelled the action's bytes, or a reference to it
std::optional<DictionarySyntax> TargetWriter::actionLedTo(const QByteArray &place, bool keepsStructure,
                                                          const Object &action, const QByteArray &spelled) {
    if (action.get(PDF_NAME(S)).toName() != "GoTo") return std::nullopt;
    bool doesMore = false;
    for (int i = 0; i < action.size(); ++i) {
        const QByteArray key = action.keyAt(i);
        doesMore |= key != "Type" && key != "S" && key != "D" && (key != "SD" || keepsStructure);
    }
    if (!doesMore) return std::nullopt;
    const auto direct = DictionarySyntax::parse(spelled);
    DictionarySyntax dictionary = direct ? *direct : source_.dictionary(action);
    dictionary.set("D", place);
    if (!keepsStructure) dictionary.remove("SD");
    return dictionary;
}

double TargetWriter::zoomOf(const Object &entry) {
    if (!destinations_) destinations_.emplace(reader_);
    return destinations_->zoomOf(entry);
}

QByteArray TargetWriter::spelled(const PDFDestination &destination, double zoom) const {
    const PageTree &pages = reader_.pages();
    if (destination.pageIndex < 0 || destination.pageIndex >= pages.count()) return {};
    const int number = pages.numberOf(destination.pageIndex);
    // A page that is no object of its own can only be told by its index.
    const QByteArray page =
        number != 0 ? source_.reference(number) : QByteArray::number(destination.pageIndex);
    return '[' + page + " /XYZ " + numberSyntax(destination.point.x()) + ' ' +
           numberSyntax(destination.point.y()) + ' ' + (zoom == 0 ? "null" : numberSyntax(zoom)) + ']';
}

}  // namespace leafwright::mupdf

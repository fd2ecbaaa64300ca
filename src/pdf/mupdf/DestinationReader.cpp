#include "pdf/mupdf/DestinationReader.h"

#include "pdf/mupdf/FactsReader.h"
#include "pdf/mupdf/Walk.h"

namespace leafwright::mupdf {

Object DestinationReader::destinationOf(const Object &entry) {
    Object destination = entry.get(PDF_NAME(Dest));
    if (destination) return destination;
    const Object action = entry.get(PDF_NAME(A));
    return action.get(PDF_NAME(S)).toName() == "GoTo" ? action.get(PDF_NAME(D)) : Object();
}

std::optional<PDFDestination> DestinationReader::of(const Object &entry) {
    return placeOf(destinationOf(entry));
}

double DestinationReader::zoomOf(const Object &entry) {
    const Object destination = resolveNames(destinationOf(entry));
    constexpr int placeOfZoom = 4;
    const bool hasZoom = destination.isArray() && destination.at(1).toName() == "XYZ";
    return hasZoom ? destination.at(placeOfZoom).toNumber() : 0;
}

std::optional<PDFDestination> DestinationReader::placeOf(const Object &named) {
    const Object destination = resolveNames(named);
    if (!destination.isArray()) return std::nullopt;

    const PageTree &pages = reader_.pages();
    const Object target = destination.at(0);
    int index = -1;
    if (target.isIndirect()) {
        index = pages.indexOf(target.objectNumber());
    } else if (target.isInt()) {
        index = target.toInt();  // meant for other files, but common
    }
    if (index < 0 || index >= pages.count()) return std::nullopt;
    return PDFDestination{index, pointOf(destination, reader_.page(index))};
}

const QHash<QByteArray, Object> &DestinationReader::names() {
    if (!namesCollected_) collectNames();
    return names_;
}

Object DestinationReader::resolveNames(Object destination) {
    // A name may lead to a dictionary that leads to a name; a short way ends also where they go in circles.
    constexpr int longestWay = 8;
    for (int step = 0; step < longestWay; ++step) {
        if (destination.isDict()) {
            destination = destination.get(PDF_NAME(D));
        } else if (destination.isName() || destination.isString()) {
            if (!namesCollected_) collectNames();
            destination = names_.value(destination.isName() ? destination.toName() : destination.toBytes());
        } else {
            break;
        }
    }
    return destination;
}

void DestinationReader::collectNames() {
    namesCollected_ = true;
    Walk walk;
    const auto insert = [&](const QByteArray &name, const Object &destination) {
        walk.keep(name.size());
        names_.insert(name, destination);
    };
    const Object oldStyle = reader_.catalog().get(PDF_NAME(Dests));
    for (int i = 0; oldStyle.isDict() && i < oldStyle.size(); ++i)
        insert(oldStyle.keyAt(i), oldStyle.valueAt(i));
    std::vector<Object> pending{reader_.catalog().get(PDF_NAME(Names)).get(PDF_NAME(Dests))};
    while (!pending.empty()) {
        const Object node = std::move(pending.back());
        pending.pop_back();
        if (!walk.enter(node)) continue;
        const Object kids = node.get(PDF_NAME(Kids));
        if (kids.isArray() && walk.enter(kids)) {
            for (int i = 0; i < kids.size(); ++i)
                pending.push_back(kids.at(i));
        }
        const Object names = node.get(PDF_NAME(Names));
        if (!names.isArray() || !walk.enter(names)) continue;
        for (int i = 0; i + 1 < names.size(); i += 2) {
            walk.step();
            insert(names.at(i).toBytes(), names.at(i + 1));
        }
    }
}

QPointF DestinationReader::pointOf(const Object &destination, const Object &page) {
    // ISO 32000-1, table 151: where the coordinates stand in each form.
    const QByteArray form = destination.at(1).toName();
    Object x;
    Object y;
    if (form == "XYZ") {
        x = destination.at(2);
        y = destination.at(3);
    } else if (form == "FitH" || form == "FitBH") {
        y = destination.at(2);
    } else if (form == "FitV" || form == "FitBV") {
        x = destination.at(2);
    } else if (form == "FitR") {
        x = destination.at(2);
        y = destination.at(5);
    }
    if (!x.isNumber() && !y.isNumber()) return {};
    return {x.toNumber(), y.isNumber() ? y.toNumber() : geometryOf(page).mediaBox.top()};
}

}  // namespace leafwright::mupdf

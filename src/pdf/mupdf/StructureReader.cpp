#include "pdf/mupdf/StructureReader.h"

#include "pdf/TextString.h"
#include "pdf/mupdf/DestinationReader.h"
#include "pdf/mupdf/Walk.h"

namespace leafwright::mupdf {

namespace {

/// More than a manual of thousands of pages has; what is beyond is passed over.
constexpr int mostObjects = 500'000;
/// No heading or item has more pieces than this in good faith.
constexpr size_t mostPieces = 1'000;

/// An object of the structure that is still to be looked at.
struct Pending {
    Object object;
    int pageIndex = -1;  ///< Where its content is, unless it says so itself.
    int heading = -1;    ///< The heading that it belongs to; -1 for none.
    int item = -1;       ///< The item of the last table of contents that it belongs to; -1 for none.
    int depth = 0;       ///< How many tables of contents it is in.
};

/// Walks the structure and notes its headings and tables of contents.
class StructureWalk {
public:
    explicit StructureWalk(Reader &reader)
        : reader_(reader), root_(reader.catalog().get("StructTreeRoot")), roles_(root_.get("RoleMap")) {
        pending_.push_back({root_.get(PDF_NAME(K))});
        for (int i = 0; i < mostObjects && !pending_.empty(); ++i) {
            const Pending next = std::move(pending_.back());
            pending_.pop_back();
            visit(next);
        }
    }

    DocumentStructure take() {
        std::erase_if(found_.contents, [](const auto &items) { return items.empty(); });
        return std::move(found_);
    }

private:
    void visit(const Pending &next) {
        const Object &object = next.object;
        if (object.isInt()) {
            addContent(next, object.toInt());
        } else if (!walk_.enter(object)) {
            return;
        } else if (object.isArray()) {
            addKids(object, next);
        } else if (object.isDict()) {
            Pending within = next;
            if (const Object page = object.get("Pg"); page.isIndirect())
                within.pageIndex = reader_.pages().indexOf(page.objectNumber());
            if (const Object identifier = object.get("MCID"); identifier.isInt()) {
                addContent(within, identifier.toInt());
            } else if (const Object annotation = object.get("Obj"); annotation.isDict()) {
                addTarget(within, annotation);
            } else {
                enter(object, within);
            }
        }
    }

    /// An element: begins a heading or an item of contents if it is one, and goes on with what is in it.
    void enter(const Object &element, Pending within) {
        const QByteArray type = knownType(element.get(PDF_NAME(S)).toName());
        if (type == "TOC") {
            if (within.depth++ == 0) found_.contents.emplace_back();
            within.item = -1;
        } else if (type == "TOCI" && within.depth > 0) {
            within.item = begin(found_.contents.back(), within.depth, element);
        } else if (type.startsWith('H') && within.heading < 0) {
            within.heading = begin(found_.headings, type.size() == 1 ? 0 : type[1] - '0', element);
        }
        if (Object kids = element.get(PDF_NAME(K))) {
            within.object = std::move(kids);
            pending_.push_back(std::move(within));
        }
    }

    /// @return the index of the element among those of its kind
    int begin(std::vector<StructureElement> &elements, int level, const Object &element) {
        elements.push_back({level, {}, {}});
        if (const Object text = element.get("ActualText"); text.isString())
            elements.back().text = kept(text.toBytes());
        return static_cast<int>(elements.size()) - 1;
    }

    QString kept(const QByteArray &text) {
        walk_.keep(text.size());
        return decodeTextString(text);
    }

    void addKids(const Object &kids, Pending within) {
        const int count = std::min(kids.size(), mostObjects);
        for (int i = count - 1; i >= 0; --i) {
            within.object = kids.at(i);
            pending_.push_back(within);
        }
    }

    StructureElement &itemOf(const Pending &within) {
        return found_.contents.back()[static_cast<size_t>(within.item)];
    }

    void addContent(const Pending &within, int identifier) {
        if (within.pageIndex < 0) return;
        const auto add = [&](StructureElement &element) {
            if (element.content.size() < mostPieces)
                element.content.push_back({within.pageIndex, identifier});
        };
        if (within.heading >= 0) add(found_.headings[static_cast<size_t>(within.heading)]);
        if (within.item >= 0) add(itemOf(within));
    }

    void addTarget(const Pending &within, const Object &annotation) {
        if (within.item >= 0 && !itemOf(within).target)
            itemOf(within).target = reader_.destinations().of(annotation);
    }

    /// The type as it is known here: H, H1 to H6, TOC or TOCI; empty for all others. Types that the file made
    /// up are followed through its role map (ISO 32000-1, 14.7.3).
    QByteArray knownType(QByteArray type) const {
        constexpr int longestWay = 8;
        for (int step = 0; step < longestWay; ++step) {
            const bool isLevelled = type.size() == 2 && type[0] == 'H' && type[1] >= '1' && type[1] <= '6';
            if (isLevelled || type == "H" || type == "TOC" || type == "TOCI") return type;
            type = roles_.get(type.constData()).toName();
            if (type.isEmpty()) break;
        }
        return {};
    }

    Reader &reader_;
    Object root_;
    Object roles_;
    std::vector<Pending> pending_;
    Walk walk_;
    DocumentStructure found_;
};

}  // namespace

DocumentStructure readStructure(Reader &reader) {
    return StructureWalk(reader).take();
}

}  // namespace leafwright::mupdf

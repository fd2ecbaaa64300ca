#include "pdf/mupdf/StructureReader.h"

#include "pdf/TextString.h"
#include "pdf/mupdf/Walk.h"

namespace leafwright::mupdf {

namespace {

/// More than a manual of thousands of pages has; what is beyond is passed over.
constexpr int mostObjects = 500'000;
/// No heading has more pieces than this in good faith.
constexpr size_t mostPieces = 1'000;

/// An object of the structure that is still to be looked at.
struct Pending {
    Object object;
    int pageIndex = -1;  ///< Where its content is, unless it says so itself.
    int heading = -1;    ///< The heading that it belongs to; -1 for none.
};

/// Walks the structure and notes its headings.
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

    std::vector<StructureElement> take() { return std::move(headings_); }

private:
    void visit(const Pending &next) {
        const Object &object = next.object;
        if (object.isInt()) {
            addContent(next.heading, next.pageIndex, object.toInt());
        } else if (!walk_.enter(object)) {
            return;
        } else if (object.isArray()) {
            addKids(object, next);
        } else if (object.isDict()) {
            Pending within = next;
            if (const Object page = object.get("Pg"); page.isIndirect())
                within.pageIndex = reader_.pages().indexOf(page.objectNumber());
            if (const Object identifier = object.get("MCID"); identifier.isInt()) {
                addContent(within.heading, within.pageIndex, identifier.toInt());
            } else {
                enter(object, within);
            }
        }
    }

    /// An element: begins a heading if it is one, and goes on with what is in it.
    void enter(const Object &element, Pending within) {
        if (within.heading < 0) {
            if (const std::optional<int> level = headingLevel(element.get(PDF_NAME(S)).toName())) {
                within.heading = static_cast<int>(headings_.size());
                headings_.push_back({*level, {}, {}});
                if (const Object text = element.get("ActualText"); text.isString())
                    headings_.back().text = kept(text.toBytes());
            }
        }
        if (Object kids = element.get(PDF_NAME(K)))
            pending_.push_back({std::move(kids), within.pageIndex, within.heading});
    }

    QString kept(const QByteArray &text) {
        walk_.keep(text.size());
        return decodeTextString(text);
    }

    void addKids(const Object &kids, const Pending &within) {
        const int count = std::min(kids.size(), mostObjects);
        for (int i = count - 1; i >= 0; --i)
            pending_.push_back({kids.at(i), within.pageIndex, within.heading});
    }

    void addContent(int heading, int pageIndex, int identifier) {
        if (heading < 0 || pageIndex < 0) return;
        std::vector<MarkedContent> &content = headings_[static_cast<size_t>(heading)].content;
        if (content.size() < mostPieces) content.push_back({pageIndex, identifier});
    }

    /// 1 to 6 for H1 to H6, 0 for H, nothing for what is no heading. Types that the file made up are
    /// followed through its role map (ISO 32000-1, 14.7.3).
    std::optional<int> headingLevel(QByteArray type) const {
        constexpr int longestWay = 8;
        for (int step = 0; step < longestWay; ++step) {
            if (type == "H") return 0;
            if (type.size() == 2 && type[0] == 'H' && type[1] >= '1' && type[1] <= '6') return type[1] - '0';
            type = roles_.get(type.constData()).toName();
            if (type.isEmpty()) break;
        }
        return std::nullopt;
    }

    Reader &reader_;
    Object root_;
    Object roles_;
    std::vector<Pending> pending_;
    Walk walk_;
    std::vector<StructureElement> headings_;
};

}  // namespace

std::vector<StructureElement> readHeadings(Reader &reader) {
    return StructureWalk(reader).take();
}

}  // namespace leafwright::mupdf

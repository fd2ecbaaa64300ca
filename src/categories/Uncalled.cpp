#include "categories/Uncalled.h"

#include "categories/FontIdentity.h"
#include "categories/PageFonts.h"

namespace leafwright {

std::optional<IndexPath> nextchild(const IndexPath &path) {
    if (path.isEmpty()) return std::nullopt;
    return path.indexPathByAddingIndex(0);
}

std::optional<IndexPath> nextOfLevel(const IndexPath &path, qint32 level) {
    if (level < 0) return std::nullopt;
    if (level > static_cast<qint32>(path.length()) - 1) return path.indexPathByAddingIndex(0);
    IndexPath result = IndexPath::indexPathWithIndex(path.indexAtPosition(0));
    const auto position = static_cast<size_t>(level);
    for (size_t i = 1; i < position; ++i)
        result = result.indexPathByAddingIndex(path.indexAtPosition(i));
    return result.indexPathByAddingIndex(path.indexAtPosition(position) + 1);
}

TreeNode *isTreeNode(const TreeController &controller, TreeNode &node, const MyOutlineItem &aMatch) {
    // Upwards from the item, since the way down may be any of 100,000.
    TreeNode *step = controller.nodeForItem(aMatch);
    if (step == &node) return step;
    while (step && step->parentNode() != &node)
        step = step->parentNode();
    return step;
}

TreeNode *treeNodeForRealObject(const TreeController &controller, const MyOutlineItem &item) {
    TreeNode &root = controller.arrangedObjects();
    TreeNode *top = isTreeNode(controller, root, item);
    return top == &root ? nullptr : top;
}

std::vector<TextRange> rangesOfFont(const PDFPage &page, const Font &font) {
    return rangesOfFontID(page, fontIDString(font));
}

bool isTopLeftPointingMOI(const PDFPage & /*page*/, const MyOutlineItem & /*item*/) {
    return false;
}

std::optional<Font> dominantFont(const AttributedString & /*text*/) {
    return std::nullopt;
}

bool isOnPage(const PDFSelection &selection, const PDFPage &page) {
    const std::vector<const PDFPage *> pages = selection.pages();
    return !pages.empty() && pages.front() == &page;
}

}  // namespace leafwright

#include "pdf/mupdf/PageTree.h"

#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/Walk.h"

namespace leafwright::mupdf {

namespace {

/// Walks over all pages in order.
class PageWalk {
public:
    PageWalk(const Object &root, PageTree::Kids trust) : trust_(trust) { pending_.push_back({root}); }

    /// Calls `visit(page)` for every page. What can't be read is passed over, and remembered.
    template <typename Visit>
    void run(Visit &&visit) {
        while (!pending_.empty()) {
            const Pending next = std::move(pending_.back());
            pending_.pop_back();
            try {
                if (next.presumedPage || isPage(next.object)) {
                    visit(next.object);
                } else {
                    enter(next.object);
                }
            } catch (const ReadProblem &problem) {
                if (!problem_) problem_ = problem.problem();
            }
        }
    }
    const std::optional<PDFError> &problem() const { return problem_; }

private:
    struct Pending {
        Object object;
        bool presumedPage = false;
    };

    void enter(const Object &node) {
        const Object kids = node.get(PDF_NAME(Kids));
        if (!kids.isArray() || !walk_.enter(node) || !walk_.enter(kids)) return;
        const int size = kids.size();
        const bool allPages = trust_ == PageTree::Kids::Presumed && node.get(PDF_NAME(Count)).toInt() == size;
        for (int i = size - 1; i >= 0; --i) {
            walk_.step();
            Object kid = kids.at(i);
            const bool presumed = allPages && kid.isIndirect();
            pending_.push_back({std::move(kid), presumed});
        }
    }

    PageTree::Kids trust_;
    std::vector<Pending> pending_;
    Walk walk_;
    std::optional<PDFError> problem_;
};

}  // namespace

bool isPage(const Object &object) {
    return object.isDict() && !object.get(PDF_NAME(Kids)).isArray() &&
           object.get(PDF_NAME(Type)).toName() != "Pages";
}

PageTree::PageTree(const Object &root, Kids kids) {
    PageWalk walk(root, kids);
    walk.run([this](const Object &page) {
        const int number = page.objectNumber();
        if (number != 0 && !indexByNumber_.contains(number)) indexByNumber_.insert(number, count());
        numbers_.push_back(number);
    });
    problem_ = walk.problem();
}

std::vector<Object> pagesWithoutNumber(const Object &root) {
    std::vector<Object> pages;
    PageWalk walk(root, PageTree::Kids::LookedAt);
    walk.run([&pages](const Object &page) { pages.push_back(page.isIndirect() ? Object() : page); });
    if (walk.problem()) throw ReadProblem(*walk.problem());
    return pages;
}

}  // namespace leafwright::mupdf

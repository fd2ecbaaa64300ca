#pragma once

#include "contents/ContentsPages.h"

namespace leafwright::test {

/// What text looks like; as running text if nothing else is said.
struct TextLook {
    double size = 10;
    bool bold = false;
    QString font = QStringLiteral("Times");
    quint32 color = 0xff000000;
    bool italic = false;
    QPointF direction{1, 0};
};

/// Bold text of a size.
TextLook boldLook(double size);

/// Pages for Find Contents, made by hand: 600 by 800 points, each character half as wide as its size.
class MadePages final : public ContentsPages {
public:
    /// Begins a page; what follows is put there.
    MadePages &page(double width = 600, double height = 800);
    /// One span, from x, on a baseline y points below the top.
    MadePages &text(double x, double y, const QString &text, const TextLook &look = {});
    /// Text that ends at x.
    MadePages &textUpTo(double x, double y, const QString &text, const TextLook &look = {});
    /// A row of a printed contents: title at x, its number at the right margin, dots between if wanted.
    MadePages &contentsRow(double x, double y, const QString &title, const QString &number, bool dots = true,
                           const TextLook &look = {});
    /// Lines of running text, 12 points apart, each 480 points wide, beginning at 60.
    MadePages &paragraph(double y, int lines);
    /// Lets a row lead somewhere: an area of the height of a line around a baseline.
    /// @param targetY absent for the page as a whole
    MadePages &link(double left, double right, double y, int targetPage, std::optional<double> targetY);
    MadePages &span(const TextSpan &span);
    /// Makes the page one whose text was recognised.
    MadePages &recognised();

    int pageCount() const override { return static_cast<int>(pages_.size()); }
    std::shared_ptr<const PageEvidence> pageEvidence(int index) const override {
        return pages_.at(static_cast<size_t>(index));
    }
    DocumentEvidence documentEvidence() const override { return document; }

    DocumentEvidence document;

private:
    std::vector<std::shared_ptr<PageEvidence>> pages_;
};

/// A span as MadePages::text() makes it.
TextSpan madeSpan(double x, double y, const QString &text, const TextLook &look = {});

}  // namespace leafwright::test

#pragma once

#include "pdf/TextPages.h"

#include <vector>

namespace leafwright::test {

/// A piece of text in one font, for making pages without a PDF.
struct Piece {
    QString text;
    Font font;
};

/// Pages made of pieces of text. The bounds of run k of a page are (10 k, 100 k, 5, 20), k from 1.
class FakePages final : public TextPages {
public:
    /// Adds a page; neighbouring pieces in one font become one run.
    FakePages &add(const QString &label, const std::vector<Piece> &pieces);

    int pageCount() const override { return static_cast<int>(pages_.size()); }
    QString pageLabel(int index) const override { return pages_.at(static_cast<size_t>(index)).label; }
    std::shared_ptr<const PageText> pageText(int index) const override {
        return pages_.at(static_cast<size_t>(index)).text;
    }

private:
    struct Page {
        QString label;
        std::shared_ptr<const PageText> text;
    };
    std::vector<Page> pages_;
};

/// A font of the family with the display name "FAMILY", "FAMILY Bold", "FAMILY Italic" or "FAMILY Bold
/// Italic".
Font makeFont(const QString &family, double size, FontTraits traits = 0);

}  // namespace leafwright::test

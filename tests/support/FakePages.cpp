#include "support/FakePages.h"

namespace leafwright::test {

FakePages &FakePages::add(const QString &label, const std::vector<Piece> &pieces) {
    PageText text;
    for (const Piece &piece : pieces)
        text.attributedString.append(piece.text, piece.font);
    for (size_t k = 1; k <= text.attributedString.runs.size(); ++k) {
        const auto number = static_cast<double>(k);
        text.runBounds.push_back({10 * number, 100 * number, 5, 20});
    }
    pages_.push_back({label, std::make_shared<const PageText>(std::move(text))});
    return *this;
}

Font makeFont(const QString &family, double size, FontTraits traits) {
    QString name = family;
    if (traits & BoldTrait) name += QLatin1String(" Bold");
    if (traits & ItalicTrait) name += QLatin1String(" Italic");
    return {FontFace{name, family, traits}, size};
}

}  // namespace leafwright::test

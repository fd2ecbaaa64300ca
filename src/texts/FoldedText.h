#pragma once

#include <QString>

#include <vector>

namespace leafwright {

/// A text as it is searched in, with the way back to the text itself. Alike are: capital and small letters;
/// letters with and without accents; compatibility forms such as ligatures and full-width letters (NFKC,
/// Unicode Annex 15); all quotes and all dashes; all stretches of blanks and line ends. Left out are accents
/// that stand beside their letters, characters without width, and line ends between ideographs.
///
/// A word that is divided at a line's end is one word, which is found with its hyphen and without it.
class FoldedText {
public:
    /// A range of UTF-16 units, in the folded text or in the text itself.
    struct Range {
        int location = 0;
        int length = 0;

        friend bool operator==(const Range &, const Range &) = default;
    };

    FoldedText() = default;
    explicit FoldedText(const QString &text);

    /// What is compared.
    const QString &string() const { return folded_; }
    bool isEmpty() const { return folded_.isEmpty(); }
    /// How much memory it takes.
    size_t bytes() const;
    bool contains(const FoldedText &term) const { return find(term, 0).length > 0; }
    /// The first place of a term at a position of the folded text or behind it, in the folded text. Its
    /// length is 0 if there is none, and for an empty term.
    Range find(const FoldedText &term, int from) const;
    /// Where in the text itself a range of the folded text stands; from the first character to the last, with
    /// all that was left out between them.
    Range original(const Range &range) const;

private:
    class Folding;

    /// From a unit of the folded text on, up to the next stretch, units come from following units of the
    /// text.
    struct Stretch {
        int folded = 0;
        int original = 0;
        int length = 1;  ///< Units of the text that each stands for.
    };

    const Stretch &stretchAt(int folded) const;
    int endOfMatch(const FoldedText &term, int from) const;

    QString folded_;
    std::vector<Stretch> stretches_;
    std::vector<int> divisions_;  ///< Where a hyphen at a line's end was left out; ascending.
};

}  // namespace leafwright

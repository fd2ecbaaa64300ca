#include "texts/FoldedText.h"

#include "texts/CharacterKinds.h"

#include <algorithm>
#include <array>
#include <utility>

namespace leafwright {

namespace {

/// Letters that Unicode does not take apart, and people do.
QString takenApart(char16_t c) {
    struct Letter {
        char16_t letter;
        const char16_t *parts;
    };
    static constexpr std::array letters{
        Letter{u'\u00df', u"ss"}, Letter{u'\u1e9e', u"ss"}, Letter{u'\u0131', u"i"},
        Letter{u'\u00e6', u"ae"}, Letter{u'\u00c6', u"ae"}, Letter{u'\u0153', u"oe"},
        Letter{u'\u0152', u"oe"}, Letter{u'\u00f8', u"o"},  Letter{u'\u00d8', u"o"},
        Letter{u'\u0142', u"l"},  Letter{u'\u0141', u"l"},  Letter{u'\u0111', u"d"},
        Letter{u'\u0110', u"d"}};
    const auto *const found = std::ranges::find(letters, c, &Letter::letter);
    return found == letters.end() ? QString() : QString::fromUtf16(found->parts);
}

bool isBlank(QChar c) {
    return c.isSpace() || c.unicode() < 0x20;
}

bool isLineEnd(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

/// A character that is not written in ASCII, with the accents behind it.
QString foldedCharacter(QStringView character) {
    const char16_t first = character.front().unicode();
    if (const QString parts = takenApart(first); !parts.isNull()) return parts;
    QString text = character.toString().normalized(QString::NormalizationForm_KD);
    text.removeIf([](QChar c) { return isCombiningAccent(c.unicode()); });
    text = text.normalized(QString::NormalizationForm_KC).toCaseFolded();
    // What capital letters become may have accents of its own.
    text.removeIf([](QChar c) { return isCombiningAccent(c.unicode()) || c.isSpace(); });
    return text;
}

}  // namespace

/// Folds one text, from its beginning to its end.
class FoldedText::Folding {
public:
    Folding(FoldedText &result, const QString &text) : result_(result), text_(text) {
        result_.folded_.reserve(text_.size());
    }

    void run() {
        while (at_ < text_.size()) {
            const QChar c = text_[at_];
            if (isBlank(c)) {
                takeBlanks();
            } else if ((isDash(c.unicode()) || c == QChar::SoftHyphen) && endOfDivision() > 0) {
                divide();
            } else {
                takeCharacter(c);
            }
        }
    }

private:
    void takeCharacter(QChar c) {
        const char16_t u = c.unicode();
        if (isWithoutWidth(u) || isLooseAccent(u) || isCombiningAccent(u)) {
            ++at_;
        } else if (isDash(u)) {
            append(QChar(u'-'), 1);
        } else if (u != u'\\' && isQuote(u)) {
            append(QChar(u'\''), 1);
        } else if (u < 0x80) {
            append(c.toLower(), 1);
        } else {
            const qsizetype length = lengthOfCharacter();
            append(foldedCharacter(QStringView(text_).sliced(at_, length)), length);
        }
    }

    /// A character may be two units, and have accents of its own behind it.
    qsizetype lengthOfCharacter() const {
        // To put very many into the order of Unicode takes longer than anybody waits, and no letter has them.
        constexpr qsizetype longest = 32;
        qsizetype end = at_ + 1;
        if (text_[at_].isHighSurrogate() && end < text_.size() && text_[end].isLowSurrogate()) ++end;
        const qsizetype last = std::min(text_.size(), at_ + longest);
        while (end < last && text_[end].category() == QChar::Mark_NonSpacing)
            ++end;
        return end - at_;
    }

    void takeBlanks() {
        qsizetype end = at_;
        bool endsLine = false;
        for (; end < text_.size() && isBlank(text_[end]); ++end)
            endsLine = endsLine || isLineEnd(text_[end]);
        const bool joins = endsLine && at_ > 0 && end < text_.size() && isIdeographic(text_[at_ - 1]) &&
                           isIdeographic(text_[end]);
        if (joins) {
            at_ = end;
        } else {
            append(QChar(u' '), end - at_);
        }
    }

    /// Where the word goes on whose hyphen we are at; 0 if that divides none.
    qsizetype endOfDivision() const {
        if (at_ == 0 || !text_[at_ - 1].isLetterOrNumber()) return 0;
        qsizetype end = at_ + 1;
        bool endsLine = false;
        for (; end < text_.size() && isBlank(text_[end]); ++end)
            endsLine = endsLine || isLineEnd(text_[end]);
        return endsLine && end < text_.size() && text_[end].isLetterOrNumber() ? end : 0;
    }

    void divide() {
        const qsizetype end = endOfDivision();
        // Numbers are not divided: between them it is a dash.
        const bool isWord = text_[at_ - 1].isLetter() && text_[end].isLetter();
        if (isWord) {
            result_.divisions_.push_back(static_cast<int>(result_.folded_.size()));
        } else {
            append(QChar(u'-'), 1);
        }
        at_ = end;
    }

    /// Adds what the next units of the text are folded to.
    void append(const QString &folded, qsizetype length) {
        if (folded.size() == 1) return append(folded.front(), length);
        const auto place = static_cast<int>(result_.folded_.size());
        for (int k = 0; k < folded.size(); ++k)
            result_.stretches_.push_back({place + k, static_cast<int>(at_), static_cast<int>(length)});
        result_.folded_ += folded;
        at_ += length;
    }

    void append(QChar folded, qsizetype length) {
        const auto place = static_cast<int>(result_.folded_.size());
        const auto original = static_cast<int>(at_);
        const std::vector<Stretch> &known = result_.stretches_;
        const bool goesOn = length == 1 && !known.empty() && known.back().length == 1 &&
                            known.back().original + place - known.back().folded == original;
        if (!goesOn) result_.stretches_.push_back({place, original, static_cast<int>(length)});
        result_.folded_ += folded;
        at_ += length;
    }

    FoldedText &result_;
    const QString &text_;
    qsizetype at_ = 0;
};

FoldedText::FoldedText(const QString &text) {
    Folding(*this, text).run();
}

size_t FoldedText::bytes() const {
    return sizeof(*this) + static_cast<size_t>(folded_.capacity()) * sizeof(QChar) +
           stretches_.capacity() * sizeof(Stretch) + divisions_.capacity() * sizeof(int);
}

const FoldedText::Stretch &FoldedText::stretchAt(int folded) const {
    const auto behind = std::ranges::upper_bound(stretches_, folded, std::less<>(),
                                                 [](const Stretch &s) { return s.folded; });
    return *std::prev(behind);
}

FoldedText::Range FoldedText::original(const Range &range) const {
    if (range.length <= 0) return {};
    const auto begin = [this](int folded) {
        const Stretch &stretch = stretchAt(folded);
        // Of a stretch of longer characters there is but one.
        return stretch.original + (stretch.length == 1 ? folded - stretch.folded : 0);
    };
    const int last = range.location + range.length - 1;
    const int location = begin(range.location);
    return {location, begin(last) + stretchAt(last).length - location};
}

FoldedText::Range FoldedText::find(const FoldedText &term, int from) const {
    const QString &wanted = term.folded_;
    if (wanted.isEmpty()) return {};
    const qsizetype hyphen = divisions_.empty() ? -1 : wanted.indexOf(u'-', 1);
    // Up to its first hyphen the term is in the text as it is, in any case.
    const QStringView head = QStringView(wanted).left(hyphen < 0 ? wanted.size() : hyphen);
    for (qsizetype place = folded_.indexOf(head, from); place >= 0;
         place = folded_.indexOf(head, place + 1)) {
        const auto begin = static_cast<int>(place);
        const int end = hyphen < 0 ? begin + static_cast<int>(wanted.size()) : endOfMatch(term, begin);
        if (end > begin) return {begin, end - begin};
    }
    return {};
}

/// Where a term ends that may begin at a place, with its hyphens there or left out; -1 if it does not.
int FoldedText::endOfMatch(const FoldedText &term, int from) const {
    int place = from;
    for (const QChar c : term.folded_) {
        if (place < folded_.size() && folded_[place] == c) {
            ++place;
        } else if (c != u'-' || !std::ranges::binary_search(divisions_, place)) {
            return -1;
        }
    }
    return place;
}

}  // namespace leafwright

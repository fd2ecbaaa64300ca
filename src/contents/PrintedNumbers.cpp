#include "contents/PrintedNumbers.h"

#include "contents/RomanNumbers.h"
#include "contents/TextFolding.h"

#include <QRegularExpression>

#include <cmath>
#include <map>
#include <set>

namespace leafwright {

namespace {

constexpr double topZone = 0.15;
constexpr double bottomZone = 0.82;
constexpr size_t edgeRows = 2;

using NumbersByPage = std::map<int, std::set<int>>;

/// What may be page numbers: the first and last words of the outer rows of each page.
struct Candidates {
    NumbersByPage decimal;
    NumbersByPage roman;
    std::map<int, QStringList> compound;
};

void addWord(const QString &word, int page, Candidates &candidates) {
    constexpr qsizetype mostDigits = 4;
    if (isDecimalNumber(word) && word.size() <= mostDigits) {
        candidates.decimal[page].insert(decimalValue(word));
    } else if (isRomanNumber(word)) {
        candidates.roman[page].insert(romanValue(word));
    }
}

void addLine(const QString &text, int page, Candidates &candidates) {
    static const QRegularExpression separators(QStringLiteral("[–—\\-|•·]"));
    static const QRegularExpression compound(QStringLiteral("^(?:\\d{1,3}|[A-Z])[-–.]\\d{1,3}$"));
    const QStringList words =
        QString(text).replace(separators, QStringLiteral(" ")).split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty()) return;
    addWord(words.front(), page, candidates);
    addWord(words.back(), page, candidates);
    const QStringList whole = text.split(u' ');
    for (const QString &word : {whole.front(), whole.back()}) {
        if (!compound.match(word).hasMatch()) continue;
        const QString number = QString(word).replace(QChar(u'–'), QChar(u'-'));
        if (!candidates.compound[page].contains(number)) candidates.compound[page] += number;
    }
}

Candidates candidatesOf(const std::vector<PageLines> &pages) {
    Candidates candidates;
    for (size_t index = 0; index < pages.size(); ++index) {
        const PageLines &page = pages[index];
        std::set<int> baselines;
        const auto rounded = [](const TextLine &line) {
            return static_cast<int>(std::nearbyint(line.baseline));
        };
        for (const TextLine &line : page.lines)
            baselines.insert(rounded(line));
        const std::vector<int> rows(baselines.begin(), baselines.end());
        if (rows.empty()) continue;
        const size_t outer = std::min(edgeRows, rows.size());
        for (const TextLine &line : page.lines) {
            const int y = rounded(line);
            if (y > rows[outer - 1] && y < rows[rows.size() - outer]) continue;
            if (line.baseline >= topZone * page.height() && line.baseline <= bottomZone * page.height())
                continue;
            addLine(line.text, static_cast<int>(index), candidates);
        }
    }
    return candidates;
}

/// How many pages agree on each distance between index and number.
std::map<int, int> votesOf(const NumbersByPage &numbers) {
    std::map<int, int> votes;
    for (const auto &[page, values] : numbers) {
        for (const int value : values) {
            if (value != 0) ++votes[page - value];
        }
    }
    return votes;
}

/// Assigns numbers whose distance is that of enough others.
/// @return the distance that most have
std::optional<int> settle(const NumbersByPage &numbers, int pageCount, QHash<int, std::vector<int>> &pages) {
    constexpr double leastShare = 0.04;
    constexpr int fewest = 3;
    constexpr int shortDocument = 8;
    const std::map<int, int> votes = votesOf(numbers);
    if (votes.empty()) return std::nullopt;
    const double enough = pageCount > shortDocument
                              ? std::max<double>(fewest, leastShare * static_cast<double>(numbers.size()))
                              : 2;
    for (const auto &[page, values] : numbers) {
        int best = 0;
        int bestVotes = 0;
        for (const int value : values) {
            const int count = value == 0 ? 0 : votes.at(page - value);
            if (count < enough || count <= bestVotes) continue;
            best = value;
            bestVotes = count;
        }
        if (bestVotes > 0) pages[best].push_back(page);
    }
    const auto most = std::max_element(votes.begin(), votes.end(),
                                       [](const auto &a, const auto &b) { return a.second < b.second; });
    return most->second >= 2 ? std::optional(most->first) : std::nullopt;
}

}  // namespace

PrintedNumbers::PrintedNumbers(const std::vector<PageLines> &pages, const QStringList &labels)
    : pageCount_(static_cast<int>(pages.size())) {
    const Candidates candidates = candidatesOf(pages);
    decimalOffset_ = settle(candidates.decimal, pageCount_, decimal_);
    romanOffset_ = settle(candidates.roman, pageCount_, roman_);
    for (const auto &[page, numbers] : candidates.compound) {
        for (const QString &number : numbers)
            compound_[number].push_back(page);
    }
    for (int i = 0; i < static_cast<int>(labels.size()); ++i) {
        if (!labels[i].isEmpty()) labels_[labels[i].toLower()].push_back(i);
    }
}

std::vector<int> PrintedNumbers::pagesOf(const QString &printed) const {
    const QString number = QString(printed).replace(QChar(u'–'), QChar(u'-'));
    std::vector<int> found;
    const auto add = [this, &found](const std::vector<int> &pages) {
        for (const int page : pages) {
            const bool exists = page >= 0 && page < pageCount_;
            if (exists && std::find(found.begin(), found.end(), page) == found.end()) found.push_back(page);
        }
    };
    if (isDecimalNumber(number)) {
        const int value = decimalValue(number);
        add(decimal_.value(value));
        add(labels_.value(QString::number(value)));
        if (decimalOffset_) {
            add({value + *decimalOffset_});
        } else if (found.empty()) {
            add({value - 1});
        }
    } else if (isRomanNumber(number)) {
        add(labels_.value(number.toLower()));
        add(roman_.value(romanValue(number)));
        if (romanOffset_) add({romanValue(number) + *romanOffset_});
    } else {
        add(compound_.value(number));
        add(labels_.value(number.toLower()));
    }
    return found;
}

}  // namespace leafwright

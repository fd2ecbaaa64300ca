#include "contents/SequenceRatio.h"

#include <array>
#include <vector>

namespace leafwright {

namespace {

struct Block {
    qsizetype a = 0;
    qsizetype b = 0;
    qsizetype length = 0;
};

/// The longest stretch that both have; the first one in a, then in b, of several.
Block longestBlock(QStringView a, QStringView b) {
    Block best;
    std::vector<qsizetype> lengths(static_cast<size_t>(b.size()) +
                                   1);  // of the blocks ending before [j] of b
    for (qsizetype i = 0; i < a.size(); ++i) {
        qsizetype diagonal = 0;
        for (qsizetype j = 0; j < b.size(); ++j) {
            qsizetype &length = lengths[static_cast<size_t>(j) + 1];
            const qsizetype above = std::exchange(diagonal, length);
            length = a[i] == b[j] ? above + 1 : 0;
            if (length > best.length) best = {i - length + 1, j - length + 1, length};
        }
    }
    return best;
}

qsizetype commonCharacters(QStringView a, QStringView b) {
    struct Pair {
        QStringView a;
        QStringView b;
    };
    std::vector<Pair> rest{{a, b}};
    qsizetype common = 0;
    while (!rest.empty()) {
        const Pair pair = rest.back();
        rest.pop_back();
        const Block block = longestBlock(pair.a, pair.b);
        if (block.length == 0) continue;
        common += block.length;
        rest.push_back({pair.a.left(block.a), pair.b.left(block.b)});
        rest.push_back({pair.a.mid(block.a + block.length), pair.b.mid(block.b + block.length)});
    }
    return common;
}

/// How many characters could be common at most, whatever their order. Characters share their counters.
qsizetype mostCommonCharacters(QStringView a, QStringView b) {
    constexpr size_t counters = 256;
    std::array<qsizetype, counters> count{};
    for (const QChar c : a)
        ++count[c.unicode() % counters];
    qsizetype common = 0;
    for (const QChar c : b)
        common += count[c.unicode() % counters]-- > 0 ? 1 : 0;
    return common;
}

}  // namespace

double sequenceRatio(QStringView a, QStringView b, double least) {
    const qsizetype all = a.size() + b.size();
    if (all == 0) return 1;
    const auto ratio = [all](qsizetype common) {
        return 2.0 * static_cast<double>(common) / static_cast<double>(all);
    };
    if (ratio(std::min(a.size(), b.size())) < least) return 0;
    if (ratio(mostCommonCharacters(a, b)) < least) return 0;
    return ratio(commonCharacters(a, b));
}

}  // namespace leafwright

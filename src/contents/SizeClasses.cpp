#include "contents/SizeClasses.h"

#include <map>

namespace leafwright {

namespace {

/// Letters by size, in half points.
using Letters = std::map<double, double>;

/// How far a size may be from that of its class.
double widthAt(double size) {
    constexpr double narrowest = 1.25;  // points
    constexpr double share = 0.1;       // of the size
    return std::max(narrowest, share * size);
}

Letters recognisedLetters(const std::vector<PageLines> &pages) {
    Letters letters;
    for (const PageLines &page : pages) {
        if (!page.isRecognised) continue;
        for (const TextLine &line : page.lines)
            letters[roundedToHalf(line.look.size)] += line.letters;
    }
    return letters;
}

/// The size that most letters are near to, near ones counting more; there must be some.
double densestSize(const Letters &letters) {
    double best = 0;
    double most = -1;
    for (const auto &[centre, own] : letters) {
        const double width = widthAt(centre);
        double weight = 0;
        for (auto near = letters.lower_bound(centre - width);
             near != letters.end() && near->first <= centre + width; ++near)
            weight += near->second * (1 - std::abs(near->first - centre) / width);
        if (weight <= most) continue;
        best = centre;
        most = weight;
    }
    return best;
}

/// The class of each size.
std::map<double, double> sizeClasses(Letters letters) {
    std::map<double, double> classes;
    while (!letters.empty()) {
        const double size = densestSize(letters);
        const double width = widthAt(size);
        std::erase_if(letters, [&](const auto &entry) {
            const bool isNear = std::abs(entry.first - size) <= width;
            if (isNear) classes[entry.first] = size;
            return isNear;
        });
    }
    return classes;
}

}  // namespace

void settleRecognisedSizes(std::vector<PageLines> &pages) {
    const std::map<double, double> classes = sizeClasses(recognisedLetters(pages));
    for (PageLines &page : pages) {
        if (!page.isRecognised) continue;
        for (TextLine &line : page.lines)
            line.look.size = classes.at(roundedToHalf(line.look.size));
    }
}

}  // namespace leafwright

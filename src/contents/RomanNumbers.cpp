#include "contents/RomanNumbers.h"

namespace leafwright {

namespace {

int letterValue(QChar letter) {
    switch (letter.toLower().unicode()) {
        case 'i':
            return 1;
        case 'v':
            return 5;
        case 'x':
            return 10;
        case 'l':
            return 50;
        case 'c':
            return 100;
        case 'd':
            return 500;
        case 'm':
            return 1000;
        default:
            return 0;
    }
}

}  // namespace

bool isRomanNumber(QStringView text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar letter) { return letterValue(letter) > 0; });
}

int romanValue(QStringView text) {
    int value = 0;
    int greatest = 0;
    for (auto letter = text.rbegin(); letter != text.rend(); ++letter) {
        const int one = letterValue(*letter);
        value += one >= greatest ? one : -one;
        greatest = std::max(greatest, one);
    }
    return value;
}

}  // namespace leafwright

#include "pdf/ObjectSyntax.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace leafwright {

bool isWhiteSpace(char c) {
    return c == '\0' || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

namespace {

bool isDelimiter(char c) {
    return QByteArrayView("()<>[]{}/%").contains(c);
}

bool isRegular(char c) {
    return !isWhiteSpace(c) && !isDelimiter(c);
}

qsizetype skipWhiteSpace(QByteArrayView text, qsizetype position) {
    while (position < text.size()) {
        if (text[position] == '%') {
            while (position < text.size() && text[position] != '\n' && text[position] != '\r')
                ++position;
        } else if (isWhiteSpace(text[position])) {
            ++position;
        } else {
            break;
        }
    }
    return position;
}

/// Where a string in parentheses ends, -1 where it does not.
qsizetype endOfLiteral(QByteArrayView text, qsizetype position) {
    int depth = 0;
    for (; position < text.size(); ++position) {
        if (text[position] == '\\') {
            ++position;
        } else if (text[position] == '(') {
            ++depth;
        } else if (text[position] == ')' && --depth == 0) {
            return position + 1;
        }
    }
    return -1;
}

qsizetype endOfRegular(QByteArrayView text, qsizetype position) {
    while (position < text.size() && isRegular(text[position]))
        ++position;
    return position;
}

bool isInteger(QByteArrayView token) {
    return !token.isEmpty() &&
           std::all_of(token.begin(), token.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Where the reference ends that an integer begins; the integer's end where it begins none.
qsizetype endOfReference(QByteArrayView text, const SyntaxSpan &integer) {
    const auto read = [text](const SyntaxSpan &span) {
        return text.sliced(span.begin, span.end - span.begin);
    };
    if (!isInteger(read(integer))) return integer.end;
    const auto generation = tokenAt(text, integer.end);
    if (!generation || !isInteger(read(*generation))) return integer.end;
    const auto keyword = tokenAt(text, generation->end);
    return keyword && read(*keyword) == QByteArrayView("R") ? keyword->end : integer.end;
}

}  // namespace

QByteArray nameSyntax(const QByteArray &name) {
    QByteArray syntax("/");
    for (const char c : name) {
        if (c > ' ' && c < '\x7F' && c != '#' && isRegular(c)) {
            syntax += c;
        } else {
            syntax += '#' + QByteArray(1, c).toHex();
        }
    }
    return syntax;
}

QByteArray stringSyntax(const QByteArray &bytes) {
    const auto isPlain = [](char c) { return c >= ' ' && c < '\x7F'; };
    if (!std::all_of(bytes.begin(), bytes.end(), isPlain)) return '<' + bytes.toHex() + '>';
    QByteArray syntax("(");
    for (const char c : bytes) {
        if (c == '(' || c == ')' || c == '\\') syntax += '\\';
        syntax += c;
    }
    return syntax + ')';
}

QByteArray numberSyntax(double value) {
    constexpr double farthest = 1e9;
    constexpr double nearest = 1e-6;  // what is nearer to 0 makes no difference on any page
    if (std::isnan(value) || std::abs(value) < nearest) return QByteArrayLiteral("0");
    const auto single = static_cast<float>(std::clamp(value, -farthest, farthest));
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, single, std::chars_format::fixed);
    return {text, written.ptr - text};
}

QByteArray referenceSyntax(int number, int generation) {
    return QByteArray::number(number) + ' ' + QByteArray::number(generation) + " R";
}

std::optional<SyntaxSpan> tokenAt(QByteArrayView text, qsizetype position) {
    const qsizetype begin = skipWhiteSpace(text, position);
    if (begin >= text.size()) return std::nullopt;
    const char first = text[begin];
    const bool doubled = begin + 1 < text.size() && text[begin + 1] == first;
    qsizetype end = begin + 1;
    if (first == '(') {
        end = endOfLiteral(text, begin);
    } else if (first == '<' && !doubled) {
        end = text.indexOf('>', begin) + 1;
    } else if (first == '<' || first == '>') {
        end = doubled ? begin + 2 : -1;
    } else if (first == '/') {
        end = endOfRegular(text, begin + 1);
    } else if (isRegular(first)) {
        end = endOfRegular(text, begin);
    }
    if (end <= begin) return std::nullopt;
    return SyntaxSpan{begin, end};
}

std::optional<SyntaxSpan> objectAt(QByteArrayView text, qsizetype position) {
    std::optional<qsizetype> begin;
    QByteArray open;  // the brackets that are not closed yet, by their first characters
    do {
        const auto token = tokenAt(text, position);
        if (!token) return std::nullopt;
        if (!begin) begin = token->begin;
        position = token->end;
        const char first = text[token->begin];
        if (first == '[' || (first == '<' && text[token->begin + 1] == '<')) {
            open += first;
        } else if (first == ']' || first == '>') {
            if (!open.endsWith(first == ']' ? '[' : '<')) return std::nullopt;
            open.chop(1);
        } else if (first == ')' || first == '{' || first == '}') {
            return std::nullopt;
        } else if (open.isEmpty()) {
            position = endOfReference(text, *token);
        }
    } while (!open.isEmpty());
    return SyntaxSpan{*begin, position};
}

}  // namespace leafwright

#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace leafwright {

// How objects are spelled in a file (ISO 32000-1, 7.2 and 7.3), for whatever has to read or write their bytes
// as they stand.

/// Blanks, line ends and NUL (ISO 32000-1, table 1).
bool isWhiteSpace(char c);
bool isDigit(char c);

/// "/Name", with what a name can't hold as "#20".
QByteArray nameSyntax(const QByteArray &name);
/// A string: "(as it reads)" where that is plain ASCII, else in hexadecimal digits.
QByteArray stringSyntax(const QByteArray &bytes);
/// The shortest decimal, without an exponent, that single precision tells apart; so much is kept by readers.
/// What no file can spell is 0; no number is farther from 0 than 1e9, for readers that take it for an
/// integer.
QByteArray numberSyntax(double value);
/// "12 0 R".
QByteArray referenceSyntax(int number, int generation);

/// A piece of a text: from `begin` up to but excluding `end`.
struct SyntaxSpan {
    qsizetype begin;
    qsizetype end;
};

/// The token that begins at or behind a position, past white space and comments: a name, a string, a bracket
/// ("[", ">>"), or a number or keyword. Nothing where none is complete.
std::optional<SyntaxSpan> tokenAt(QByteArrayView text, qsizetype position);

/// The object that begins at or behind a position; "12 0 R" is one. Nothing where it is broken or goes on
/// behind the text. Objects nest as deep as they like.
std::optional<SyntaxSpan> objectAt(QByteArrayView text, qsizetype position);

}  // namespace leafwright

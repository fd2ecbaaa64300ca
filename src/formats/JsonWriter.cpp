#include "formats/JsonWriter.h"

#include <charconv>
#include <cmath>

namespace leafwright {

namespace {

constexpr qsizetype bufferSize = 1 << 16;
/// Beyond this depth lines are indented no further, or deep outlines would be made of blanks.
constexpr size_t deepestIndent = 40;

QByteArray escaped(char16_t unit) {
    return "\\u" + QByteArray::number(unit, 16).rightJustified(4, '0');
}

QByteArray quoted(QStringView text) {
    QByteArray bytes("\"");
    qsizetype plainFrom = 0;
    const auto flushPlain = [&](qsizetype to) { bytes += text.sliced(plainFrom, to - plainFrom).toUtf8(); };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        const bool pair = QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair) {
            ++i;
            continue;
        }
        // Qt takes U+FEFF for a mark of the encoding, wherever a text begins with it.
        const bool isSpecial = unit == u'"' || unit == u'\\' || unit == u'\x7F' || unit == u'\uFEFF';
        if (unit >= u' ' && !isSpecial && !QChar::isSurrogate(unit)) continue;
        flushPlain(i);
        plainFrom = i + 1;
        if (unit == u'"' || unit == u'\\') {
            bytes += '\\';
            bytes += static_cast<char>(unit);
        } else if (unit == u'\n') {
            bytes += "\\n";
        } else {
            bytes += escaped(unit);
        }
    }
    flushPlain(text.size());
    return bytes += '"';
}

}  // namespace

JsonWriter::~JsonWriter() {
    sink_(buffer_);
}

void JsonWriter::key(const char *name) {
    beginValue();
    add(quoted(QString::fromLatin1(name)));
    add(": ");
    afterKey_ = true;
}

void JsonWriter::value(const QString &text) {
    if (text.isNull()) return null();
    beginValue();
    add(quoted(text));
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) return null();  // JSON has no spelling for it
    beginValue();
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, number + 0.0);  // no negative zero
    add(QByteArray(text, end.ptr - text));
}

void JsonWriter::value(qint64 number) {
    beginValue();
    add(QByteArray::number(number));
}

void JsonWriter::value(bool truth) {
    beginValue();
    add(truth ? "true" : "false");
}

void JsonWriter::null() {
    beginValue();
    add("null");
}

void JsonWriter::value(const QPointF &point) {
    beginArray(Layout::Compact);
    value(point.x());
    value(point.y());
    endArray();
}

void JsonWriter::begin(char bracket, Layout layout) {
    beginValue();
    const bool inCompact =
        layout_ == Layout::Compact || (!open_.empty() && open_.back().layout == Layout::Compact);
    open_.push_back({inCompact ? Layout::Compact : layout});
    add(QByteArray(1, bracket));
}

void JsonWriter::end(char bracket) {
    const Container container = open_.back();
    open_.pop_back();
    if (!container.empty && container.layout == Layout::Lines) lineBreak();
    add(QByteArray(1, bracket));
    if (open_.empty()) endLine();
}

void JsonWriter::beginValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (open_.empty()) return;
    Container &container = open_.back();
    if (!container.empty) add(container.layout == Layout::Compact ? ", " : ",");
    if (container.layout == Layout::Lines) lineBreak();
    container.empty = false;
}

void JsonWriter::lineBreak() {
    add('\n' + QByteArray(static_cast<qsizetype>(2 * std::min(open_.size(), deepestIndent)), ' '));
}

void JsonWriter::endLine() {
    add("\n");
}

void JsonWriter::add(const QByteArray &bytes) {
    buffer_ += bytes;
    if (buffer_.size() < bufferSize) return;
    sink_(buffer_);
    buffer_.clear();
}

}  // namespace leafwright

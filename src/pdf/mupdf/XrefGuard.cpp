#include "pdf/mupdf/XrefGuard.h"

#include <QByteArray>
#include <QSet>

#include <charconv>
#include <limits>

namespace leafwright::mupdf {

namespace {

/// What is read of a section: its dictionary stands at the start, or not far behind a table.
constexpr qint64 blockSize = 8192;
/// Where readers look for the word "startxref", from the end.
constexpr qint64 marginSize = 1024;
/// Numbers of 8 bytes are the longest that anybody can read.
constexpr qint64 longestField = 8;

QByteArray readBlock(const FileHandle &file, qint64 offset, qint64 size) {
    if (offset < 0) return {};
    QByteArray block(size, Qt::Uninitialized);
    block.resize(file.readOrThrow(offset, block.data(), size));
    return block;
}

bool isSpace(char c) {
    return c == '\0' || c == ' ' || (c >= '\t' && c <= '\r');
}

/// Reads tokens from a text.
class Scanner {
public:
    explicit Scanner(QByteArrayView text, qsizetype position = 0) : text_(text), position_(position) {}

    qsizetype position() const { return position_; }

    bool skip(QByteArrayView word) {
        skipSpace();
        if (!text_.sliced(position_).startsWith(word)) return false;
        position_ += word.size();
        return true;
    }

    /// Absent for one that no 64 bits hold.
    std::optional<qint64> integer() {
        skipSpace();
        qint64 value = 0;
        const auto [end, error] =
            std::from_chars(text_.data() + position_, text_.data() + text_.size(), value);
        if (error != std::errc()) return std::nullopt;
        position_ = end - text_.data();
        return value;
    }

    /// The same with a plus or without, and the largest number for one that no 64 bits hold.
    std::optional<qint64> limitedInteger() {
        skip("+");
        if (const auto value = integer()) return value;
        const bool isNegative = skip("-");
        const qsizetype begin = position_;
        while (position_ < text_.size() && text_[position_] >= '0' && text_[position_] <= '9')
            ++position_;
        if (position_ == begin) return std::nullopt;
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        return isNegative ? -most : most;
    }

private:
    void skipSpace() {
        while (position_ < text_.size() && isSpace(text_[position_]))
            ++position_;
    }

    QByteArrayView text_;
    qsizetype position_;
};

/// Where a dictionary's text has a name; behind its slash. -1 if it has not.
qsizetype findName(QByteArrayView text, QByteArrayView name) {
    for (qsizetype at = text.indexOf(name); at >= 0; at = text.indexOf(name, at + 1)) {
        const qsizetype end = at + name.size();
        const bool ends = end < text.size() && (isSpace(text[end]) || text[end] == '[' || text[end] == '-' ||
                                                (text[end] >= '0' && text[end] <= '9'));
        if (at > 0 && text[at - 1] == '/' && ends) return at;
    }
    return -1;
}

std::optional<qint64> integerOf(QByteArrayView dictionary, QByteArrayView name) {
    const qsizetype at = findName(dictionary, name);
    return at < 0 ? std::nullopt : Scanner(dictionary, at + name.size()).integer();
}

/// Walks over the sections, the newest first.
class SectionWalk {
public:
    explicit SectionWalk(const FileHandle &file) : file_(file) {
        const QByteArray end = readBlock(file, std::max<qint64>(0, file.end() - marginSize), marginSize);
        constexpr QByteArrayView word("startxref");
        const qsizetype at = end.lastIndexOf(word);
        if (at < 0) return;
        if (const auto offset = Scanner(end, at + word.size()).integer()) pending_.push_back(*offset);
    }

    std::optional<qint64> findAbsurdWidths() {
        constexpr int mostSections = 1000;
        for (int i = 0; i < mostSections && !pending_.empty(); ++i) {
            const qint64 offset = pending_.back();
            pending_.pop_back();
            if (seen_.contains(offset)) continue;
            seen_.insert(offset);
            const qint64 start = trailerOffset(offset);
            const QByteArray text = readBlock(file_, start, blockSize);
            const qsizetype stream = text.indexOf("stream");
            const QByteArrayView dictionary = QByteArrayView(text).first(stream < 0 ? text.size() : stream);
            if (const auto widths = absurdWidths(dictionary)) return start + *widths;
            for (const char *link : {"Prev", "XRefStm"})
                if (const auto next = integerOf(dictionary, link)) pending_.push_back(*next);
        }
        return std::nullopt;
    }

private:
    /// Where the dictionary of a section stands: behind its table, if it has one.
    qint64 trailerOffset(qint64 offset) const {
        constexpr qint64 entrySize = 20;
        constexpr int mostSubsections = 10'000;
        for (int i = 0; i < mostSubsections; ++i) {
            const QByteArray head = readBlock(file_, offset, 64);
            Scanner scanner(head);
            if (!scanner.skip("xref") && i == 0) return offset;
            const auto first = scanner.integer();
            const auto count = scanner.integer();
            if (!first || !count || *count < 0 || *count > file_.size()) return offset;
            scanner.skip("");  // the line's end
            offset += scanner.position() + *count * entrySize;
        }
        return offset;
    }

    /// Where an absurd /W stands in a dictionary.
    static std::optional<qsizetype> absurdWidths(QByteArrayView dictionary) {
        const qsizetype at = findName(dictionary, "W");
        if (at < 0) return std::nullopt;
        Scanner scanner(dictionary, at + 1);
        if (!scanner.skip("[")) return std::nullopt;
        while (const auto width = scanner.limitedInteger())
            if (*width > longestField) return at;
        return std::nullopt;
    }

    const FileHandle &file_;
    std::vector<qint64> pending_;
    QSet<qint64> seen_;
};

}  // namespace

std::optional<qint64> absurdFieldWidths(const FileHandle &file) {
    return SectionWalk(file).findAbsurdWidths();
}

}  // namespace leafwright::mupdf

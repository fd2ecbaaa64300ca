#include "pdf/mupdf/PdfEnd.h"

#include "pdf/ObjectSyntax.h"

#include <QByteArray>
#include <QByteArrayView>

#include <algorithm>

namespace leafwright::mupdf {

namespace {

constexpr qint64 searchedByMuPDF = 1024;
constexpr qint64 farthest = 64 << 20;
constexpr qint64 blockSize = 1 << 20;
/// What of a block is looked at with the next one too, so that nothing is missed that lies in both.
constexpr qint64 overlap = 64;

constexpr QByteArrayView startWord("startxref");
constexpr QByteArrayView endWord("%%EOF");

qsizetype skipSpace(QByteArrayView text, qsizetype position) {
    while (position < text.size() && isWhiteSpace(text[position]))
        ++position;
    return position;
}

/// "startxref 1234 %%EOF".
struct StartOfXref {
    qint64 xref;
    qsizetype end;  ///< Behind its line's end.
};

std::optional<StartOfXref> startOfXrefAt(QByteArrayView text, qsizetype position) {
    constexpr qsizetype mostDigits = 15;
    const qsizetype digits = skipSpace(text, position + startWord.size());
    qsizetype end = digits;
    while (end < text.size() && isDigit(text[end]) && end - digits <= mostDigits)
        ++end;
    if (end == digits || end - digits > mostDigits) return std::nullopt;
    const qint64 xref = text.sliced(digits, end - digits).toByteArray().toLongLong();
    end = skipSpace(text, end);
    if (!text.sliced(end).startsWith(endWord)) return std::nullopt;
    end += endWord.size();
    if (end < text.size() && text[end] == '\r') ++end;
    if (end < text.size() && text[end] == '\n') ++end;
    return StartOfXref{xref, end};
}

/// Whether a cross-reference may begin there: a table, or the object that a stream is.
bool looksLikeXref(QByteArrayView text) {
    const qsizetype begin = skipSpace(text, 0);
    return begin < text.size() && (text.sliced(begin).startsWith("xref") || isDigit(text[begin]));
}

/// Whether an object begins in a text: "12 0 obj".
bool hasObject(QByteArrayView text) {
    constexpr QByteArrayView word(" obj");
    for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
        const qsizetype end = at + word.size();
        const bool isWord =
            end >= text.size() || isWhiteSpace(text[end]) || QByteArrayView("<[(/").contains(text[end]);
        if (at > 0 && isDigit(text[at - 1]) && isWord) return true;
    }
    return false;
}

class Search {
public:
    Search(const ReadAt &readAt, qint64 size) : readAt_(readAt), size_(size) {}

    qint64 end() {
        if (size_ <= searchedByMuPDF || block(size_ - searchedByMuPDF, searchedByMuPDF).contains(startWord))
            return size_;
        const std::optional<qint64> found = endOfLast();
        return found && !hasObjectsBehind(*found) ? *found : size_;
    }
    bool hasFailed() const { return hasFailed_; }

private:
    /// Empty behind the end, and once a read has failed.
    QByteArray block(qint64 offset, qint64 length) {
        QByteArray text(length, Qt::Uninitialized);
        qint64 filled = 0;
        while (!hasFailed_ && filled < length) {
            const qint64 count = readAt_(offset + filled, text.data() + filled, length - filled);
            hasFailed_ = count < 0;
            if (count <= 0) break;
            filled += count;
        }
        text.truncate(hasFailed_ ? 0 : filled);
        return text;
    }

    /// Where the last one ends that leads to a cross-reference.
    std::optional<qint64> endOfLast() {
        const qint64 first = std::max<qint64>(0, size_ - farthest);
        for (qint64 end = size_; end > first && !hasFailed_; end -= blockSize - overlap) {
            const qint64 begin = std::max(first, end - blockSize);
            const QByteArray text = block(begin, end - begin);
            const qsizetype at = text.lastIndexOf(startWord);
            if (at < 0) continue;
            const auto found = startOfXrefAt(text, at);
            const bool leadsBack = found && found->xref < begin + at;
            if (!leadsBack || !looksLikeXref(block(found->xref, overlap))) return std::nullopt;
            return begin + found->end;
        }
        return std::nullopt;
    }

    bool hasObjectsBehind(qint64 end) {
        for (qint64 begin = end; begin < size_ && !hasFailed_; begin += blockSize - overlap)
            if (hasObject(block(begin, std::min(blockSize, size_ - begin)))) return true;
        return false;
    }

    const ReadAt &readAt_;
    qint64 size_;
    bool hasFailed_ = false;
};

}  // namespace

std::optional<qint64> findPdfEnd(const ReadAt &readAt, qint64 size) {
    Search search(readAt, size);
    const qint64 end = search.end();
    return search.hasFailed() ? std::nullopt : std::optional(end);
}

}  // namespace leafwright::mupdf

#pragma once

#include <QByteArray>
#include <QList>

#include <map>
#include <vector>

namespace leafwright::test {

/// A PDF file put together by hand, for what no writer makes: cross-references of every kind, one after
/// the other. Objects belong to the section that is ended next. The catalog is object 1.
class RawPdf {
public:
    explicit RawPdf(const QByteArray &version = "1.5") : bytes_("%PDF-" + version + "\n") {}

    RawPdf &object(int number, const QByteArray &body);
    /// Has all trailers from now on say something more, such as "/Info 4 0 R".
    RawPdf &trailerEntry(const QByteArray &entries);
    /// Goes on with any bytes.
    RawPdf &add(const QByteArray &bytes);
    /// Goes on at an offset farther behind. What lies between reads as white space, and takes no room on a
    /// disk that knows sparse files.
    RawPdf &goOnAt(qint64 offset);
    /// Ends a section with a table.
    RawPdf &endWithTable();
    /// Ends a section with a cross-reference stream. @param number of the stream
    RawPdf &endWithStream(int number);
    /// Ends a section with a table that does not know the hidden objects, and a cross-reference stream
    /// that does, for readers that can (ISO 32000-1, 7.5.8.4).
    RawPdf &endHybrid(int number, const QList<int> &hidden);

    /// The file; without what goOnAt() has passed over.
    const QByteArray &bytes() const { return bytes_; }
    /// Where the last section has its cross-reference.
    qint64 crossReference() const { return previous_; }
    qint64 size() const { return skipped_ + bytes_.size(); }
    /// Writes the file, with holes in it. @return false where it can't be written
    bool save(const QString &path) const;
    /// Whether a file has the same bytes at the same places; what lies in holes is not looked at.
    bool isStartOf(const QString &path) const;

private:
    struct Hole {
        qsizetype position;  ///< In `bytes_`.
        qint64 size;
    };

    /// Calls `use(offset, bytes)` for all that lies between holes, until it returns false.
    template <typename Use>
    bool forEachPiece(Use &&use) const;
    void crossReferenceStream(int number, const std::map<int, qint64> &entries);
    void table(const std::map<int, qint64> &entries, const QByteArray &further);
    QByteArray trailerEntries() const;
    void end(qint64 crossReference);

    QByteArray bytes_;
    std::vector<Hole> holes_;
    qint64 skipped_ = 0;
    std::map<int, qint64> offsets_;  ///< Of the objects of the section at hand.
    int size_ = 1;
    qint64 previous_ = 0;
    QByteArray trailerEntries_;
};

/// A PDF of one page without text, in one section that is not ended yet: the catalog 1, which says /Pages 2 0
/// R and the given further entries, the tree 2, and the page 3.
RawPdf rawPdfOfOnePage(const QByteArray &catalogEntries = {});

}  // namespace leafwright::test

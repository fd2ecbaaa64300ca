#pragma once

#include <QByteArray>
#include <QList>

#include <map>

namespace leafwright::test {

/// A PDF file put together by hand, for what no writer makes: cross-references of every kind, one after
/// the other. Objects belong to the section that is ended next. The catalog is object 1.
class RawPdf {
public:
    explicit RawPdf(const QByteArray &version = "1.5") : bytes_("%PDF-" + version + "\n") {}

    RawPdf &object(int number, const QByteArray &body);
    /// Ends a section with a table.
    RawPdf &endWithTable();
    /// Ends a section with a cross-reference stream. @param number of the stream
    RawPdf &endWithStream(int number);
    /// Ends a section with a table that does not know the hidden objects, and a cross-reference stream
    /// that does, for readers that can (ISO 32000-1, 7.5.8.4).
    RawPdf &endHybrid(int number, const QList<int> &hidden);

    const QByteArray &bytes() const { return bytes_; }

private:
    void crossReferenceStream(int number, const std::map<int, qint64> &entries);
    void table(const std::map<int, qint64> &entries, const QByteArray &further);
    QByteArray trailerEntries() const;
    void end(qint64 crossReference);

    QByteArray bytes_;
    std::map<int, qint64> offsets_;  ///< Of the objects of the section at hand.
    int size_ = 1;
    qint64 previous_ = 0;
};

/// A PDF of one page without text, in one section that is not ended yet: the catalog 1, which says /Pages 2 0
/// R and the given further entries, the tree 2, and the page 3.
RawPdf rawPdfOfOnePage(const QByteArray &catalogEntries = {});

}  // namespace leafwright::test

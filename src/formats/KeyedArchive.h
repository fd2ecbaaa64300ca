#pragma once

#include <QByteArray>
#include <QPointF>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace leafwright {

/// Strings by key in one block of bytes, for clipboards and drags. The bytes are a CBOR map (RFC 8949) with
/// its entries in the order in which they were encoded.
class KeyedArchive {
public:
    /// Reads an archive; absent if the bytes are not one.
    static std::optional<KeyedArchive> unarchive(const QByteArray &data);
    QByteArray data() const;

    /// @param key must not be there yet
    void encode(const QString &value, const QString &key) { strings_.emplace_back(key, value); }
    /// Null if there is no such key.
    QString decode(const QString &key) const;

private:
    std::vector<std::pair<QString, QString>> strings_;
};

/// "{72.5, 700}": shortest decimals that read back as the same numbers.
QString stringFromPoint(const QPointF &point);
/// The point of such a text; (0, 0) if it is none.
QPointF pointFromString(const QString &text);

}  // namespace leafwright

#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace leafwright {

/// A dictionary as it is spelled in a file (ISO 32000-1, 7.3.7): what is not set anew keeps every byte and
/// its place. Keys are given without their slash.
class DictionarySyntax {
public:
    DictionarySyntax() = default;
    /// Reads "<< ... >>" at the start of a text, past white space. Nothing where that is broken.
    static std::optional<DictionarySyntax> parse(QByteArrayView text);

    bool contains(const QByteArray &key) const { return find(key) != nullptr; }
    /// The bytes of a value; empty for a key that is not there.
    QByteArray value(const QByteArray &key) const;
    /// @param value in PDF syntax, such as "[3 0 R /Fit]"
    void set(const QByteArray &key, const QByteArray &value);
    void remove(const QByteArray &key);
    QByteArray toBytes() const;

private:
    struct Entry {
        QByteArray key;      ///< What the name means, without its slash.
        QByteArray spelled;  ///< The name as it stands in the file.
        QByteArray value;
    };

    const Entry *find(const QByteArray &key) const;

    std::vector<Entry> entries_;
};

}  // namespace leafwright

#include "pdf/DictionarySyntax.h"

#include "pdf/ObjectSyntax.h"

#include <QSet>

namespace leafwright {

namespace {

/// What a name means, without its slash: "A#20B" is "A B".
QByteArray meaningOf(QByteArrayView spelled) {
    QByteArray name;
    for (qsizetype i = 1; i < spelled.size(); ++i) {
        const QByteArray digits =
            spelled.sliced(i + 1, std::min<qsizetype>(2, spelled.size() - i - 1)).toByteArray();
        bool isHex = false;
        const int byte = digits.toInt(&isHex, 16);
        if (spelled[i] == '#' && digits.size() == 2 && isHex) {
            name += static_cast<char>(byte);
            i += 2;
        } else {
            name += spelled[i];
        }
    }
    return name;
}

QByteArrayView read(QByteArrayView text, const SyntaxSpan &span) {
    return text.sliced(span.begin, span.end - span.begin);
}

}  // namespace

std::optional<DictionarySyntax> DictionarySyntax::parse(QByteArrayView text) {
    const auto start = tokenAt(text, 0);
    if (!start || read(text, *start) != QByteArrayView("<<")) return std::nullopt;
    DictionarySyntax dictionary;
    QSet<QByteArray> names;
    qsizetype position = start->end;
    for (;;) {
        const auto key = tokenAt(text, position);
        if (!key) return std::nullopt;
        const QByteArrayView spelled = read(text, *key);
        if (spelled == QByteArrayView(">>")) return dictionary;
        const auto value = objectAt(text, key->end);
        if (!spelled.startsWith('/') || !value) return std::nullopt;
        QByteArray name = meaningOf(spelled);
        if (names.contains(name)) dictionary.remove(name);  // readers take the last
        names.insert(name);
        dictionary.entries_.push_back(
            {std::move(name), spelled.toByteArray(), read(text, *value).toByteArray()});
        position = value->end;
    }
}

const DictionarySyntax::Entry *DictionarySyntax::find(const QByteArray &key) const {
    for (const Entry &entry : entries_)
        if (entry.key == key) return &entry;
    return nullptr;
}

QByteArray DictionarySyntax::value(const QByteArray &key) const {
    const Entry *entry = find(key);
    return entry ? entry->value : QByteArray();
}

void DictionarySyntax::set(const QByteArray &key, const QByteArray &value) {
    for (Entry &entry : entries_) {
        if (entry.key != key) continue;
        entry.value = value;
        return;
    }
    entries_.push_back({key, nameSyntax(key), value});
}

void DictionarySyntax::remove(const QByteArray &key) {
    std::erase_if(entries_, [&key](const Entry &entry) { return entry.key == key; });
}

QByteArray DictionarySyntax::toBytes() const {
    QByteArray bytes("<<");
    for (const Entry &entry : entries_)
        bytes += entry.spelled + ' ' + entry.value + '\n';
    if (!entries_.empty()) bytes.chop(1);
    return bytes + ">>";
}

}  // namespace leafwright

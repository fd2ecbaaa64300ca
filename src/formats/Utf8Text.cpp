#include "formats/Utf8Text.h"

#include <QStringDecoder>

#include <algorithm>

namespace leafwright {

std::variant<QString, NotUtf8> textOfUtf8(QByteArrayView bytes) {
    const auto decoded = [](QByteArrayView part, bool &isUtf8) {
        // Without a state for later bytes, those of a character that is cut off are an error as well.
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        QString text = decoder(part);
        isUtf8 = !decoder.hasError();
        return text;
    };
    bool isUtf8 = true;
    QString text = decoded(bytes, isUtf8);
    if (isUtf8) return text;
    // No character goes on behind a line's end, so the first bad line is bad on its own.
    NotUtf8 where{1};
    for (;;) {
        const qsizetype end = bytes.indexOf('\n');
        decoded(end < 0 ? bytes : bytes.first(end), isUtf8);
        if (!isUtf8 || end < 0) return where;
        bytes = bytes.sliced(end + 1);
        ++where.line;
    }
}

}  // namespace leafwright

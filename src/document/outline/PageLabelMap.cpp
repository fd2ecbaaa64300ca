#include "document/outline/PageLabelMap.h"

namespace leafwright {

PageLabelMap pageLabelMap(const TextPages &pages) {
    PageLabelMap map;
    map.reserve(pages.pageCount());
    for (int i = 0; i < pages.pageCount(); ++i)
        map.insert(pages.pageLabel(i), i);
    return map;
}

bool isPrintedPageNumber(const QString &label) {
    return label.startsWith(u'p', Qt::CaseInsensitive);
}

QString pageLabelKey(const QString &label, qint32 printedPageOffset) {
    if (!isPrintedPageNumber(label)) return label;
    return QString::number(qint64{integerValue(QStringView(label).sliced(1))} + printedPageOffset);
}

PageLookUp lookUpPage(const PageLabelMap &map, const QString &label, qint32 printedPageOffset,
                      bool isOffsetChecked) {
    if (label.isNull()) return {};  // The map would take it for the empty label, which pages may have.
    PageLookUp found;
    found.needsOffset = isPrintedPageNumber(label) && printedPageOffset == 0 && !isOffsetChecked;
    const auto index = map.constFind(pageLabelKey(label, printedPageOffset));
    if (index != map.constEnd()) found.index = *index;
    return found;
}

qint32 integerValue(QStringView text) {
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text = text.sliced(1);
    qint64 value = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9') break;
        value = std::min<qint64>(value * 10 + (c.unicode() - u'0'), qint64{INT32_MAX} + 1);
    }
    return static_cast<qint32>(negative ? -value : std::min<qint64>(value, INT32_MAX));
}

}  // namespace leafwright

#include "texts/CountText.h"

#include "texts/Translated.h"

#include <QLocale>

namespace leafwright {

namespace {

constexpr Translated translated{"CountText"};

}  // namespace

QString entryCountText(qint64 count) {
    return count == 1 ? translated("1 entry") : translated("%1 entries").arg(QLocale().toString(count));
}

QString pageCountText(qint64 count) {
    return count == 1 ? translated("1 page") : translated("%1 pages").arg(QLocale().toString(count));
}

QString fileCountText(qint64 count) {
    return count == 1 ? translated("1 file") : translated("%1 files").arg(QLocale().toString(count));
}

}  // namespace leafwright

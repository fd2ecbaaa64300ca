#include "document/window/EntryCount.h"

#include "texts/Translated.h"

#include <QLocale>

namespace leafwright {

namespace {

constexpr Translated translated{"EntryCount"};

}  // namespace

QString entryCountText(qint64 count) {
    return count == 1 ? translated("1 entry") : translated("%1 entries").arg(QLocale().toString(count));
}

}  // namespace leafwright

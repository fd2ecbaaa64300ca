// A saved heading map: read, saved again, and read once more, which is to give the same.

#include "autotoc/HeadingMapText.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    using namespace leafwright;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const DocumentFonts fonts{FontCensus()};
    const QString saved = stringToSaveListH1H2H3(loadHeadingMap(text, fonts).map);
    const LoadedMap again = loadHeadingMap(saved, fonts);
    const QString savedAgain = stringToSaveListH1H2H3(again.map);
    if (!again.unreadableLines.empty() || savedAgain != saved) {
        std::fprintf(stderr, "%s\nis read as\n%s\n", qUtf8Printable(saved), qUtf8Printable(savedAgain));
        std::abort();
    }
    return 0;
}

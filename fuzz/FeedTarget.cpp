// The feed of versions.

#include "app/Appcast.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    leafwright::newestVersionInAppcast(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}

// The settings file, which may have been edited by hand.

#include "MemoryFile.h"
#include "platform/UserDefaults.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    const leafwright::fuzz::MemoryFile file(QByteArrayView(data, qsizetype(size)));
    const leafwright::UserDefaults defaults(file.path());
    for (const char *name : {"a", "b", "LeafwrightShouldWarnAboutPDFVersion", "%U20AC"}) {
        const QString key = QString::fromLatin1(name);
        defaults.boolForKey(key);
        defaults.integerForKey(key);
        defaults.doubleForKey(key);
        defaults.stringForKey(key);
        defaults.dataForKey(key);
    }
    return 0;
}

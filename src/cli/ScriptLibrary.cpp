#include "cli/ScriptLibrary.h"

#include "files/FileName.h"
#include "texts/Translated.h"

#include <dlfcn.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"ScriptLibrary"};

/// By its full name: of names alone, the linker's search depends on who asks, and sanitizers ask for us.
QByteArray pathOfLibrary() {
    Dl_info here{};
    dladdr(&translated, &here);
    const QByteArray path(here.dli_fname);
    return path.first(path.lastIndexOf('/') + 1) + LEAFWRIGHT_WINDOWS_LIBRARY;
}

std::variant<const ScriptLibrary *, QString> loadLibrary() {
    void *const library = dlopen(pathOfLibrary().constData(), RTLD_NOW | RTLD_LOCAL);
    void *const function = library ? dlsym(library, scriptLibraryFunction) : nullptr;
    if (!function)
        return translated("the part of the program that plays scripts can't be loaded: %1")
            .arg(fileNameText(dlerror()));  // NOLINT(concurrency-mt-unsafe): glibc keeps one a thread
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): dlsym has functions as addresses
    return reinterpret_cast<const ScriptLibrary *(*)()>(function)();
}

}  // namespace

std::variant<const ScriptLibrary *, QString> scriptLibrary() {
    static const auto loaded = loadLibrary();
    return loaded;
}

}  // namespace leafwright::cli

// An outline as text, in each form that `apply` and the window read: the first byte says in which. What can
// be read can be written in all forms, and read again as an outline of as many entries.

#include "exchange/OutlineFormat.h"
#include "model/TreeWalk.h"

#include <cstdlib>

namespace {

using namespace leafwright;

/// Nine pages without text.
class Pages final : public TextPages {
public:
    int pageCount() const override { return 9; }
    QString pageLabel(int index) const override { return QString::number(index + 1); }
    std::shared_ptr<const PageText> pageText(int /*index*/) const override {
        return std::make_shared<const PageText>();
    }
};

size_t entriesIn(const MyOutlineItem &root) {
    size_t count = 0;
    walkBelow(root, [&](const MyOutlineItem & /*item*/, size_t /*depth*/) { ++count; });
    return count;
}

/// Plus lines escape nothing, so that titles with line ends do not come back.
bool keepsEverything(const OutlineFormat &format) {
    return format.read && QLatin1String(format.name) != QLatin1String("plus");
}

void writeAndReadAgain(const MyOutlineItem &root, const OutlineSource &source) {
    for (const OutlineFormat &format : outlineFormats()) {
        QByteArray text;
        format.write(
            root, [](const MyOutlineItem &item) { return item.importedPage(); },
            [&text](const QByteArray &bytes) { text += bytes; });
        if (!keepsEverything(format)) continue;
        const OutlineTree again = readOutline(format, text, source);
        const auto *tree = std::get_if<std::unique_ptr<MyOutlineItem>>(&again);
        // JSON of more than 512 levels is refused, and so is what has no entry where there must be one.
        if (tree && entriesIn(**tree) != entriesIn(root)) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    if (size == 0) return 0;
    const Pages pages;
    constexpr int number = 7;
    FileEntry inFile{
        .title = QStringLiteral("seven"), .destination = PDFDestination{0, {72, 700}}, .entry = {}};
    inFile.entry.number = number;
    const OutlineSource source{pages, {{number, inFile}}};
    const auto formats = outlineFormats();
    const OutlineFormat &format = formats[data[0] % formats.size()];
    if (!format.read) return 0;
    const QByteArray text(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    const OutlineTree tree = readOutline(format, text, source);
    if (const auto *root = std::get_if<std::unique_ptr<MyOutlineItem>>(&tree))
        writeAndReadAgain(**root, source);
    return 0;
}

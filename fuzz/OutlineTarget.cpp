// An outline as text, JSON or plus lines, as `apply` takes it.

#include "exchange/OutlineTree.h"

namespace {

/// Nine pages without text.
class Pages final : public leafwright::TextPages {
public:
    int pageCount() const override { return 9; }
    QString pageLabel(int index) const override { return QString::number(index + 1); }
    std::shared_ptr<const leafwright::PageText> pageText(int /*index*/) const override {
        return std::make_shared<const leafwright::PageText>();
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    using namespace leafwright;
    OutlineEntry inFile;
    constexpr int number = 7;
    inFile.number = number;
    parseOutlineTree(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)), Pages(),
                     {{number, inFile}});
    return 0;
}

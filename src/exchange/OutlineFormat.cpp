#include "exchange/OutlineFormat.h"

#include "exchange/CpdfBookmarks.h"
#include "exchange/HtmlOutline.h"
#include "exchange/JsonNodes.h"
#include "exchange/MarkdownOutline.h"
#include "exchange/OpmlOutline.h"
#include "exchange/PdfcpuBookmarks.h"
#include "exchange/PdftkBookmarks.h"
#include "exchange/PlainText.h"
#include "exchange/PlusLines.h"
#include "texts/Translated.h"

#include <QFileInfo>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <vector>

namespace leafwright {

namespace {

constexpr Translated translated{"OutlineFormat"};

// clang-format off
constexpr auto formats = std::to_array<OutlineFormat>({
    {"json", {"json"}, true, writeJsonNodes, readJsonNodes, looksLikeJsonNodes, true},
    {"plus", {"plus", "txt"}, true, writePlusLines, readPlusLines, looksLikePlusLines},
    {"text", {}, true, writePlainText, nullptr, nullptr},
    {"markdown", {"md", "markdown"}, true, writeMarkdownOutline, readMarkdownOutline, nullptr},
    {"html", {"html", "htm", "xhtml"}, true, writeHtmlOutline, readHtmlOutline, looksLikeHtmlOutline},
    {"opml", {"opml", "xml"}, true, writeOpmlOutline, readOpmlOutline, looksLikeOpmlOutline},
    {"pdftk", {"pdftk", "txt"}, false, writePdftkBookmarks, readPdftkBookmarks, looksLikePdftkBookmarks},
    {"cpdf", {"cpdf", "txt"}, false, writeCpdfBookmarks, readCpdfBookmarks, looksLikeCpdfBookmarks},
    {"pdfcpu", {"pdfcpu", "json"}, false, writePdfcpuBookmarks, readPdfcpuBookmarks, looksLikePdfcpuBookmarks},
});
// clang-format on

using Formats = std::vector<const OutlineFormat *>;

template <typename Condition>
Formats formatsWhich(Condition &&condition) {
    Formats found;
    for (const OutlineFormat &format : formats)
        if (condition(format)) found.push_back(&format);
    return found;
}

const OutlineFormat *theOnly(const Formats &found) {
    return found.size() == 1 ? found.front() : nullptr;
}

QString extensionOf(const QString &path) {
    return QFileInfo(path).suffix().toLower();
}

/// From the first character that is no blank.
QByteArrayView beginning(QByteArrayView text) {
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (text.startsWith(byteOrderMark)) text = text.sliced(byteOrderMark.size());
    const auto isBlank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    return text.sliced(std::ranges::find_if_not(text, isBlank) - text.begin());
}

QStringList namesOf(const Formats &found) {
    QStringList names;
    for (const OutlineFormat *format : found)
        names.append(QLatin1String(format->name));
    return names;
}

}  // namespace

bool OutlineFormat::hasExtension(QStringView extension) const {
    return std::ranges::any_of(extensions,
                               [&](const char *each) { return each && extension == QLatin1String(each); });
}

std::span<const OutlineFormat> outlineFormats() {
    return formats;
}

const OutlineFormat *outlineFormatNamed(QStringView name) {
    return theOnly(
        formatsWhich([&](const OutlineFormat &format) { return name == QLatin1String(format.name); }));
}

QStringList namesOfWrittenFormats() {
    return namesOf(formatsWhich([](const OutlineFormat &) { return true; }));
}

QStringList namesOfReadFormats() {
    return namesOf(formatsWhich([](const OutlineFormat &format) { return format.read != nullptr; }));
}

QStringList extensionsOfOutlines() {
    QStringList extensions;
    for (size_t i = 0; i < formats.front().extensions.size(); ++i)
        for (const OutlineFormat &format : formats)
            if (format.extensions[i]) extensions.append(QLatin1String(format.extensions[i]));
    extensions.removeDuplicates();
    return extensions;
}

QStringList ownExtensionsOfOutlines() {
    QStringList extensions;
    for (const OutlineFormat &format : formats)
        if (const char *own = format.extensions.front()) extensions.append(QLatin1String(own));
    return extensions;
}

const OutlineFormat *formatToWrite(const QString &path) {
    const QString extension = extensionOf(path);
    const auto isItsOwn = [&](const OutlineFormat &format) {
        return format.extensions.front() && extension == QLatin1String(format.extensions.front());
    };
    if (const auto *format = theOnly(formatsWhich(isItsOwn))) return format;
    return theOnly(formatsWhich([&](const auto &format) { return format.hasExtension(extension); }));
}

const OutlineFormat *formatToRead(const QString &path, QByteArrayView text) {
    const QString extension = extensionOf(path);
    const QByteArrayView begin = beginning(text);
    const Formats named = formatsWhich(
        [&](const OutlineFormat &format) { return format.read && format.hasExtension(extension); });
    // Of nothing, none can tell; each of them has it refused for that.
    if (begin.isEmpty() && !named.empty()) return named.front();
    const Formats alike = formatsWhich(
        [&](const OutlineFormat &format) { return format.looksLike && format.looksLike(begin); });
    if (named.empty()) return theOnly(alike);
    if (alike.empty()) return theOnly(named);
    Formats both;
    std::ranges::copy_if(named, std::back_inserter(both),
                         [&](const auto *format) { return std::ranges::count(alike, format) > 0; });
    return theOnly(both);
}

OutlineTree readOutline(const OutlineFormat &format, const QByteArray &text, const OutlineSource &source) {
    if (text.size() > largestOutlineText)
        return TreeError{{}, translated("it is larger than %1 MB").arg(largestOutlineText >> 20)};
    const TreeError nothing{{},
                            translated("there is no entry in it; [] in JSON says that no outline is wanted")};
    if (beginning(text).isEmpty()) return nothing;
    OutlineTree tree = format.read(text, source);
    const auto *root = std::get_if<std::unique_ptr<MyOutlineItem>>(&tree);
    if (root && (*root)->children().empty() && !format.mayBeEmpty) return nothing;
    return tree;
}

}  // namespace leafwright

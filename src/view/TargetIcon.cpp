#include "view/TargetIcon.h"

#include "pageview/DrawnPage.h"

#include <QDebug>
#include <QFile>

#include <sys/mman.h>

static void makeResourcesKnown() {
    Q_INIT_RESOURCE(view);
}

namespace leafwright {

namespace {

const QString iconName = QStringLiteral("PDFViewTargetIcon.pdf");
constexpr int points = 20;
constexpr int pixelsPerPoint = 8;

QImage drawPage(const PDFDocument &document, int index) {
    constexpr int pixels = points * pixelsPerPoint;
    return drawnPage(document, {index, pixelsPerPoint, QRect(0, 0, pixels, pixels)});
}

/// Pages are drawn on white paper, so the icon has two: its colours, and its opacity in gray.
QImage drawIcon(const QString &path) {
    const auto opened = PDFDocument::open(path);
    const auto *document = std::get_if<std::unique_ptr<PDFDocument>>(&opened);
    if (!document || (*document)->pageCount() != 2) return {};
    QImage icon = drawPage(**document, 0).convertToFormat(QImage::Format_ARGB32);
    icon.setAlphaChannel(drawPage(**document, 1).convertToFormat(QImage::Format_Grayscale8));
    return icon;
}

QImage loadIcon() {
    makeResourcesKnown();
    // The PDF layer reads files that the system knows by a name. One in memory takes no folder, and leaves
    // nothing.
    QFile resource(QStringLiteral(":/") + iconName);
    QFile file;
    const int memory = ::memfd_create("icon", MFD_CLOEXEC);
    const bool made = memory >= 0 && resource.open(QIODevice::ReadOnly) &&
                      file.open(memory, QIODevice::WriteOnly, QFile::AutoCloseHandle) &&
                      file.write(resource.readAll()) == resource.size() && file.flush();
    QImage icon = made ? drawIcon(QStringLiteral("/proc/self/fd/%1").arg(memory)) : QImage();
    if (icon.isNull()) qWarning().noquote() << "leafwright: this resource can't be drawn:" << iconName;
    return icon;
}

}  // namespace

const QImage &targetIcon() {
    static const QImage icon = loadIcon();
    return icon;
}

}  // namespace leafwright

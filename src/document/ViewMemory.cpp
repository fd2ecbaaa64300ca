#include "document/ViewMemory.h"

#include "document/MyDocument.h"
#include "document/Recovery.h"
#include "document/window/DocumentWindow.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "model/TreeWalk.h"
#include "outlineview/OKNSOutlineView.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/SplitView.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <unordered_set>

namespace leafwright {

namespace {

constexpr qint64 largest = 1 << 20;         // bytes
constexpr qsizetype mostUnfolded = 10'000;  // entries; more are not remembered

const QString suffix = QStringLiteral(".json");

/// Numbers of a file may be anything.
bool isUsable(double number) {
    constexpr double most = 1e6;
    return std::isfinite(number) && std::abs(number) < most;
}

/// The unfolded entries, by their places in tree order.
QJsonArray unfoldedPlaces(const MyDocument &document, const TreeController &tree) {
    const auto look = document.outlineview()->look();
    const std::unordered_set<quint64> unfolded(look.unfolded.begin(), look.unfolded.end());
    QJsonArray places;
    qint64 place = 0;
    walkBelow(tree.arrangedObjects(), [&](const TreeNode &node, size_t /*depth*/) {
        if (unfolded.contains(node.representedObject()->identity())) places.append(place);
        ++place;
    });
    return places.size() > mostUnfolded ? QJsonArray() : places;
}

void unfold(MyDocument &document, const QJsonArray &places) {
    std::unordered_set<qint64> wanted;
    for (const QJsonValue place : places)
        wanted.insert(place.toInteger(-1));
    OutlineLook look = document.outlineview()->look();
    look.unfolded.clear();
    qint64 place = 0;
    walkBelow(document.treecontroller().arrangedObjects(), [&](const TreeNode &node, size_t /*depth*/) {
        if (wanted.contains(place++)) look.unfolded.push_back(node.representedObject()->identity());
    });
    document.outlineview()->setLook(look);
}

/// The dividers of the panes, the right one first, since the left one can't pass it.
void moveDividers(SplitView &panes, const QJsonArray &positions) {
    if (positions.size() != panes.subviewCount() - 1) return;
    for (int i = static_cast<int>(positions.size()) - 1; i >= 0; --i)
        if (positions[i].isDouble() && isUsable(positions[i].toDouble()))
            panes.setPositionOfDividerAtIndex(positions[i].toDouble(), i);
}

}  // namespace

QString ViewMemory::standardFolder() {
    return QFileInfo(Recovery::standardFolder()).path() + QStringLiteral("/views");
}

ViewMemory::ViewMemory(MyDocument &document, QString folder)
    : QObject(&document), document_(document), folder_(std::move(folder)) {
    connect(&document, &MyDocument::loaded, this, &ViewMemory::restore);
    connect(&document, &Document::closed, this, &ViewMemory::remember);
}

QString ViewMemory::path() const {
    constexpr qsizetype enough = 32;
    const QByteArray file = fileNameBytes(document_.pdfURL());
    const QByteArray name = QCryptographicHash::hash(file, QCryptographicHash::Sha256).toHex().first(enough);
    return folder_ + u'/' + QString::fromLatin1(name) + suffix;
}

void ViewMemory::remember() const {
    const LabelPDFView &pages = *document_.pdfview();
    const auto place = pages.currentDestination();
    if (!place || makeFolder(folder_)) return;
    QFile::setPermissions(folder_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QJsonObject view{{QStringLiteral("page"), place->pageIndex},
                     {QStringLiteral("x"), place->point.x()},
                     {QStringLiteral("y"), place->point.y()}};
    if (!pages.autoScales()) view[QStringLiteral("scale")] = pages.scaleFactor();
    const SplitView &panes = *document_.splitViewTopLevel();
    QJsonArray dividers;
    for (int i = 0; i + 1 < panes.subviewCount(); ++i)
        dividers.append(panes.positionOfDividerAtIndex(i));
    view[QStringLiteral("dividers")] = dividers;
    view[QStringLiteral("outlineHeight")] = document_.myWindow()->outlineHeight();
    const TreeController &tree = document_.treecontroller();
    view[QStringLiteral("entries")] = static_cast<qint64>(tree.nodeCount());
    view[QStringLiteral("unfolded")] = unfoldedPlaces(document_, tree);
    FileReplacement file(path());
    const QByteArray text = QJsonDocument(view).toJson(QJsonDocument::Compact);
    if (file.start() && file.write(text) == text.size()) file.commit();
    removeOldest();
}

void ViewMemory::removeOldest() const {
    const QFileInfoList files =
        QDir(folder_).entryInfoList({u'*' + suffix}, QDir::Files | QDir::Hidden, QDir::Time);
    for (qsizetype i = mostFiles; i < files.size(); ++i)
        QFile::remove(files[i].filePath());
}

void ViewMemory::restore() {
    const auto content = readRegularFile(path(), largest);
    const auto *text = std::get_if<QByteArray>(&content);
    if (!text || !document_.pdfview()) return;
    const QJsonObject view = QJsonDocument::fromJson(*text).object();
    moveDividers(*document_.splitViewTopLevel(), view[QStringLiteral("dividers")].toArray());
    document_.myWindow()->setOutlineHeight(view[QStringLiteral("outlineHeight")].toInt());
    LabelPDFView &pages = *document_.pdfview();
    const double scale = view[QStringLiteral("scale")].toDouble();
    if (scale > 0 && isUsable(scale)) pages.setScaleFactor(scale);
    const QPointF point(view[QStringLiteral("x")].toDouble(), view[QStringLiteral("y")].toDouble());
    if (isUsable(point.x()) && isUsable(point.y()))
        pages.goToDestination({view[QStringLiteral("page")].toInt(-1), point});
    // In an outline that has changed since, places are those of other entries.
    if (view[QStringLiteral("entries")].toInteger() ==
        static_cast<qint64>(document_.treecontroller().nodeCount()))
        unfold(document_, view[QStringLiteral("unfolded")].toArray());
}

}  // namespace leafwright

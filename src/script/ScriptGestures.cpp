#include "script/ScriptGestures.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "document/window/OutlineDelegate.h"
#include "outlineview/OKNSOutlineView.h"
#include "pageview/PDFViewTextDrag.h"
#include "script/ScriptPlatform.h"
#include "script/StepFailure.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "view/SpotArchive.h"

#include <QCoreApplication>
#include <QDrag>
#include <QJsonArray>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTableView>
#include <QTimer>

#include <map>

namespace leafwright::script {

namespace {

constexpr double pointsAboveSpot = 20;

constexpr Translated translated{"ScriptGestures"};

void sendMouse(QWidget &widget, QEvent::Type type, const QPointF &position, Qt::KeyboardModifiers modifiers) {
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::MouseButtons() : Qt::MouseButtons(Qt::LeftButton);
    QMouseEvent event(type, position, widget.mapToGlobal(position), Qt::LeftButton, held, modifiers);
    QCoreApplication::sendEvent(&widget, &event);
}

/// The range of the text's n-th occurrence, n from 1; absent if there are not as many.
std::optional<TextRange> findText(const QString &in, const QString &text, int occurrence) {
    qsizetype from = -1;
    for (int i = 0; i < occurrence; ++i) {
        from = in.indexOf(text, from + 1);
        if (from < 0) return std::nullopt;
    }
    return TextRange{static_cast<int>(from), static_cast<int>(text.size())};
}

}  // namespace

ScriptGestures::Gesture ScriptGestures::gestureNamed(const QString &name) {
    static const std::map<QString, Gesture> gestures{
        {QStringLiteral("select"), &ScriptGestures::select},
        {QStringLiteral("selectMapRows"), &ScriptGestures::selectMapRows},
        {QStringLiteral("expand"), &ScriptGestures::expand},
        {QStringLiteral("collapse"), &ScriptGestures::collapse},
        {QStringLiteral("goToPage"), &ScriptGestures::goToPage},
        {QStringLiteral("selectText"), &ScriptGestures::selectText},
        {QStringLiteral("pageDoubleClick"), &ScriptGestures::pageDoubleClick},
        {QStringLiteral("outlineDoubleClick"), &ScriptGestures::outlineDoubleClick},
        {QStringLiteral("drag"), &ScriptGestures::drag},
        {QStringLiteral("setTitle"), &ScriptGestures::setTitle},
        {QStringLiteral("setPageLabel"), &ScriptGestures::setPageLabel},
        {QStringLiteral("setDefault"), &ScriptGestures::setDefault},
        {QStringLiteral("answer"), &ScriptGestures::answer},
        {QStringLiteral("chooseFile"), &ScriptGestures::chooseFile},
        {QStringLiteral("advanceClock"), &ScriptGestures::advanceClock},
    };
    return gestures.at(name);
}

bool ScriptGestures::play(const Step &step) {
    return (this->*gestureNamed(step.name))(step);
}

// What steps name

bool ScriptGestures::outlineIsEnabled() const {
    return document_.outlineview()->isEnabled();
}

/// Whether a person could point at an item, or unfold what hides it and point at it then.
bool ScriptGestures::mayTouch(const TreeNode &node) const {
    return outlineIsEnabled() && document_.treecontroller().isShown(node);
}

TreeNode &ScriptGestures::nodeAt(const IndexPath &path) const {
    TreeNode *node = document_.treecontroller().descendantNodeAtIndexPath(path);
    if (!node) throw StepFailure(translated("the path %1 leads nowhere").arg(path.description()));
    return *node;
}

const PDFPage &ScriptGestures::pageAt(const QJsonValue &number) const {
    const PDFPage *page = document_.pdfDoc()->page(number.toInt() - 1);
    if (!page)
        throw StepFailure(
            translated("there is no page %1; there are %2")
                .arg(QString::number(number.toInt()), QString::number(document_.pdfDoc()->pageCount())));
    return *page;
}

/// Unfolds what hides an item.
void ScriptGestures::show(const TreeNode &node) {
    std::vector<const TreeNode *> above;
    for (const TreeNode *parent = node.parentNode(); parent && parent->parentNode();
         parent = parent->parentNode())
        above.push_back(parent);
    for (auto parent = above.rbegin(); parent != above.rend(); ++parent)
        document_.outlineview()->expandItem(**parent);
}

// The outline

bool ScriptGestures::select(const Step &step) {
    const std::vector<IndexPath> paths = pathsOf(step["paths"]);
    for (const IndexPath &path : paths)
        nodeAt(path);
    if (!outlineIsEnabled()) return false;
    for (const IndexPath &path : paths)
        show(nodeAt(path));
    document_.treecontroller().setSelectionIndexPaths(paths);
    document_.outlineview()->setFocus();
    return true;
}

bool ScriptGestures::expand(const Step &step) {
    const TreeNode &node = nodeAt(pathOf(step["path"]));
    if (outlineIsEnabled()) document_.outlineview()->expandItem(node);
    return outlineIsEnabled();
}

bool ScriptGestures::collapse(const Step &step) {
    const TreeNode &node = nodeAt(pathOf(step["path"]));
    if (outlineIsEnabled()) document_.outlineview()->collapseItem(node);
    return outlineIsEnabled();
}

bool ScriptGestures::outlineDoubleClick(const Step &step) {
    const TreeNode &node = nodeAt(pathOf(step["path"]));
    if (!mayTouch(node)) return false;
    show(node);
    OKNSOutlineView &view = *document_.outlineview();
    const bool isPage = step["column"] == QLatin1String("page");
    const QModelIndex cell = document_.treecontroller().indexForNode(
        node, isPage ? TreeController::PageColumn : TreeController::TitleColumn);
    view.scrollTo(cell);
    const QPointF position = QRectF(view.visualRect(cell)).center();
    const Qt::KeyboardModifiers modifiers = step["command"].toBool() ? Qt::ControlModifier : Qt::NoModifier;
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
        sendMouse(*view.viewport(), type, position, modifiers);
    return true;
}

QLineEdit *ScriptGestures::editor() const {
    return document_.outlineview()->viewport()->findChild<QLineEdit *>();
}

// Not const, because the title is another afterwards.
// NOLINTNEXTLINE(readability-make-member-function-const)
void ScriptGestures::endEditing() {
    QLineEdit *field = editor();
    if (!field) return;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(field, &press);
    // The view takes the text over later, and lets go of the field later still. A click that comes before all
    // of that would be taken for the one that ended the editing.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool ScriptGestures::editCell(const TreeNode &node, int column, const QString &text) {
    if (!mayTouch(node)) return false;
    show(node);
    OKNSOutlineView &view = *document_.outlineview();
    view.editColumn(column, view.rowForItem(node));
    QLineEdit *field = editor();
    if (!field) return false;
    field->setText(text);
    endEditing();
    return true;
}

bool ScriptGestures::setTitle(const Step &step) {
    return editCell(nodeAt(pathOf(step["path"])), TreeController::TitleColumn, step["title"].toString());
}

bool ScriptGestures::setPageLabel(const Step &step) {
    return editCell(nodeAt(pathOf(step["path"])), TreeController::PageColumn, step["label"].toString());
}

bool ScriptGestures::drag(const Step &step) {
    const QJsonValue parentPath = step["to"][QLatin1String("parent")];
    const int index = step["to"][QLatin1String("index")].toInt();
    TreeNode *parent = parentPath.isNull() ? nullptr : &nodeAt(pathOf(parentPath));
    const TreeNode &above = parent ? *parent : document_.treecontroller().arrangedObjects();
    if (index > static_cast<int>(above.childCount()))
        throw StepFailure(
            translated("there is no place %1 among %2 items").arg(index).arg(above.childCount()));
    const Dragged dragged = draggedBy(step);
    if (!mayTouch(above) || !dragged.data) return false;
    const DraggingInfo info{dragged.data.get(), dragged.source, dragged.className};
    OKNSOutlineView &view = *document_.outlineview();
    OutlineDelegate &delegate = document_.outlineDelegate();
    return delegate.outlineViewValidateDrop(view, info, parent, index) != DragOperation::None &&
           delegate.outlineViewAcceptDrop(view, info, parent, index);
}

ScriptGestures::Dragged ScriptGestures::draggedBy(const Step &step) const {
    const QString kind = step["kind"].toString();
    if (kind == u"items") {
        QModelIndexList indexes;
        for (const IndexPath &path : pathsOf(step["paths"])) {
            const TreeNode &node = nodeAt(path);
            if (!mayTouch(node)) return {};
            indexes.append(document_.treecontroller().indexForNode(node));
        }
        return {std::unique_ptr<QMimeData>(document_.treecontroller().mimeData(indexes)),
                document_.outlineview(), QStringLiteral("OKNSOutlineView")};
    }
    auto data = std::make_unique<QMimeData>();
    LabelPDFView *view = document_.pdfview();
    if (kind == u"point") {
        if (view->iconLocationData().isNull())
            throw StepFailure(translated("no spot has been picked; put a pageDoubleClick before the step"));
        data->setData(NSPOINT_PBOARD_TYPE, view->iconLocationData());
        return {std::move(data), view, QStringLiteral("LabelPDFView")};
    }
    const auto &selection = view->currentSelection();
    data->setText(selection ? selection->string() : QString());
    return {std::move(data), view, QString::fromLatin1(PDFViewTextDrag::staticMetaObject.className())};
}

// The pages

bool ScriptGestures::goToPage(const Step &step) {
    document_.pdfview()->goToPage(&pageAt(step["page"]));
    return true;
}

bool ScriptGestures::selectText(const Step &step) {
    const PDFPage &page = pageAt(step["page"]);
    const QString text = page.text()->attributedString.string;
    std::optional<TextRange> range;
    if (step.has("range")) {
        const QJsonArray numbers = step["range"].toArray();
        range = TextRange{numbers[0].toInt(), numbers[1].toInt()};
        if (qint64{range->location} + range->length > text.size())
            throw StepFailure(translated("the page's text has %1 characters only").arg(text.size()));
    } else {
        range = findText(text, step["text"].toString(), step["occurrence"].toInt(1));
        if (!range) throw StepFailure(translated("the page does not hold that text"));
    }
    document_.pdfview()->setCurrentSelection(page.selectionForRange(*range));
    document_.pdfview()->setFocus();
    return true;
}

bool ScriptGestures::pageDoubleClick(const Step &step) {
    const PDFPage &page = pageAt(step["page"]);
    const QJsonArray numbers = step["point"].toArray();
    const QPointF point(numbers[0].toDouble(), numbers[1].toDouble());
    LabelPDFView &view = *document_.pdfview();
    const auto position = [&] { return view.convertPointFromPage(point, page); };
    const auto isInSight = [&] { return QRectF(view.viewport()->rect()).contains(position()); };
    if (!isInSight()) {
        // Not right at the edge, where the position would be a matter of rounding.
        const QPointF above = page.transform().toShown(point) - QPointF(0, pointsAboveSpot);
        view.goToDestination({page.index(), page.transform().toPage(above)});
    }
    if (!isInSight()) throw StepFailure(translated("the point can't be brought into view"));
    // Without the first click of the two, which might follow a link. The drag that begins is given up when
    // it asks for events, as by the Escape key; the spot stays.
    QTimer::singleShot(0, &view, [] { QDrag::cancel(); });
    sendMouse(*view.viewport(), QEvent::MouseButtonDblClick, position(), Qt::NoModifier);
    sendMouse(*view.viewport(), QEvent::MouseButtonRelease, position(), Qt::NoModifier);
    return true;
}

bool ScriptGestures::selectMapRows(const Step &step) {
    QTableView &table = *document_.myWindow()->tableViewH1H2H3Config();
    QItemSelection rows;
    for (const QJsonValue row : step["rows"].toArray()) {
        const QModelIndex index = table.model()->index(row.toInt(), 0);
        if (!index.isValid()) throw StepFailure(translated("the heading map has no row %1").arg(row.toInt()));
        rows.select(index, index);
    }
    table.selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    return true;
}

// Answers and settings

bool ScriptGestures::setDefault(const Step &step) {
    const QJsonValue value = step["value"];
    const bool isWhole = value.isDouble() && value.toDouble() == value.toInt();
    platform_.userDefaults().setValue(step["key"].toString(),
                                      isWhole ? QVariant(value.toInt()) : value.toVariant());
    return true;
}

bool ScriptGestures::answer(const Step &step) {
    const QJsonValue button = step["button"];
    if (button.isString()) {
        platform_.queueAnswer(button.toString());
    } else {
        platform_.queueAnswer(button.toInt());
    }
    return true;
}

bool ScriptGestures::chooseFile(const Step &step) {
    const QJsonValue path = step["path"];
    platform_.queueFile(path.isNull() ? std::nullopt : std::optional(path.toString()));
    return true;
}

bool ScriptGestures::advanceClock(const Step &step) {
    constexpr double millisecondsInASecond = 1000;
    platform_.advanceClock(qRound64(step["seconds"].toDouble() * millisecondsInASecond));
    return true;
}

}  // namespace leafwright::script

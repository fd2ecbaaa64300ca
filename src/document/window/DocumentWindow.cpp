#include "document/window/DocumentWindow.h"

#include "document/MyDocument.h"
#include "document/commands/HeadingMapCommands.h"
#include "document/commands/StepCommands.h"
#include "document/window/ContextMenus.h"
#include "document/window/CurrentEntry.h"
#include "document/window/DocumentStatusBar.h"
#include "document/window/FindBar.h"
#include "document/window/HeadingMapMarks.h"
#include "document/window/HeadingMapModel.h"
#include "document/window/HeadingMapView.h"
#include "document/window/OutlineDelegate.h"
#include "document/window/OutlineFilter.h"
#include "document/window/PasswordBar.h"
#include "document/window/RecentDocumentsMenu.h"
#include "document/window/RefusalTips.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "outlineview/OKNSOutlineView.h"
#include "pageview/ThumbnailView.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/AccessLetters.h"
#include "widgets/ActionIcon.h"
#include "widgets/NoticeBars.h"
#include "widgets/Sheet.h"
#include "widgets/SplitView.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <numeric>

namespace leafwright {

namespace {

constexpr QSize firstSize{1060, 800};
constexpr std::array menus{Menu::File,     Menu::Edit, Menu::Outline, Menu::Titles,
                           Menu::Contents, Menu::View, Menu::Help};

/// The local files among what is dragged.
QStringList draggedFiles(const QMimeData &data) {
    QStringList paths;
    for (const QUrl &url : data.urls())
        if (url.isLocalFile()) paths.append(pathOfFileUrl(url));
    return paths;
}

/// Lets each command of a menu be chosen by a letter.
void giveAccessLetters(QMenu &menu) {
    QList<QAction *> commands = menu.actions();
    commands.removeIf([](const QAction *action) { return action->isSeparator(); });
    QStringList titles;
    for (const QAction *command : commands)
        titles.append(command->text());
    titles = withAccessLetters(titles);
    for (qsizetype i = 0; i < commands.size(); ++i)
        commands[i]->setText(titles[i]);
}

/// Names the buttons that Qt puts into fields and leaves without a name.
void nameClearButtons(const QWidget &widget) {
    for (const QLineEdit *field : widget.findChildren<QLineEdit *>())
        for (QToolButton *button : field->findChildren<QToolButton *>())
            button->setAccessibleName(DocumentWindow::tr("Clear"));
}

/// Does in a field that is being typed in what the menu calls the same there and elsewhere. The keys of these
/// commands come to the field by themselves. @return whether the command was for such a field
bool performInTextField(QWidget *focus, const QString &selector) {
    auto *field = qobject_cast<QLineEdit *>(focus);
    if (!field) return false;
    if (selector == u"undo:") {
        field->undo();
    } else if (selector == u"redo:") {
        field->redo();
    } else if (selector == u"copy:") {
        field->copy();
    } else {
        return false;
    }
    return true;
}

}  // namespace

DocumentWindow::DocumentWindow(MyDocument &document)
    : document_(document), refusalTips_(std::make_unique<RefusalTips>(document)) {
    setObjectName(QStringLiteral("MyDocument"));
    setAcceptDrops(true);
    makeViews();
    makeMenus();
    setStatusBar(statusBar_ = new DocumentStatusBar(document_, *pdfview_));
    connectViews();
    addContextMenus(*this);
    updateTitle();
    restorePlace();
    updateActions();
    outlineview_->setFocus();
}

DocumentWindow::~DocumentWindow() {
    // The views read the document's PDF on threads.
    pdfthumbs_->setPDFView(nullptr);
    outlineview_->setDelegate(nullptr);
    document_.edits().setDisplay(nullptr);
    pdfview_->setDocument(nullptr);
}

void DocumentWindow::makeViews() {
    splitViewTopLevel_ = new SplitView(this);
    pdfthumbs_ = new ThumbnailView;
    pdfview_ = new LabelPDFView;
    splitViewTopLevel_->addSubview(pdfthumbs_);
    splitViewTopLevel_->addSubview(pdfview_);
    splitViewTopLevel_->addSubview(makeOutlinePane());
    splitViewTopLevel_->setMinimumWidth(
        qCeil(thumbnailsMinimum + pageMinimum + outlineMinimum + 2 * splitViewTopLevel_->dividerThickness()));
    notices_ = new NoticeBars;
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(notices_);
    passwordBar_ = new PasswordBar;
    layout->addWidget(passwordBar_);
    findBar_ = new FindBar;
    layout->addWidget(findBar_);
    layout->addWidget(splitViewTopLevel_, 1);
    setCentralWidget(content);
    nameClearButtons(*content);
}

QTableView *DocumentWindow::tableViewH1H2H3Config() const {
    return tableViewH1H2H3Config_;
}

QWidget *DocumentWindow::makeOutlinePane() {
    outlineview_ = new OKNSOutlineView;
    outlineview_->setTreeController(&document_.treecontroller());
    outlineview_->setPlaceholderText(tr(
        "No entries yet.\n\nContents > Find Contents… reads the pages and proposes an outline. Or select a "
        "heading on the page and drag it here."));
    tableViewH1H2H3Config_ = new HeadingMapView;
    tableViewH1H2H3Config_->setObjectName(QStringLiteral("tableViewH1H2H3Config"));
    tableViewH1H2H3Config_->setModel(&document_.headingMapModel());
    QHeaderView &columns = *tableViewH1H2H3Config_->horizontalHeader();
    columns.setSectionResizeMode(HeadingMapModel::LevelColumn, QHeaderView::ResizeToContents);
    columns.setSectionResizeMode(HeadingMapModel::FontColumn, QHeaderView::Stretch);
    columns.setSectionResizeMode(HeadingMapModel::CountColumn, QHeaderView::ResizeToContents);
    columns.setSectionResizeMode(HeadingMapModel::SampleColumn, QHeaderView::Stretch);

    outlinePane_ = new QSplitter(Qt::Vertical);
    outlinePane_->setChildrenCollapsible(false);
    outlineFilter_ = new OutlineFilter(document_, *outlineview_);
    outlineWithFilter_ = new QWidget;
    auto *column = new QVBoxLayout(outlineWithFilter_);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(outlineFilter_);
    column->addWidget(outlineview_, 1);
    outlinePane_->addWidget(outlineWithFilter_);
    outlinePane_->addWidget(tableViewH1H2H3Config_);
    // Screen readers read what a splitter holds from its last widget to its first otherwise.
    outlineWithFilter_->lower();
    outlinePane_->setAccessibleName(tr("Outline pane"));
    outlinePane_->handle(1)->setAccessibleName(tr("Divider between outline and heading map"));
    outlinePane_->setStretchFactor(0, 3);
    outlinePane_->setStretchFactor(1, 1);
    return outlinePane_;
}

int DocumentWindow::outlineHeight() const {
    return sizesWithoutPanel_.value_or(outlinePane_->sizes()).constFirst();
}

void DocumentWindow::setOutlineHeight(int height) {
    const QList<int> sizes = outlinePane_->sizes();
    const int both = std::accumulate(sizes.begin(), sizes.end(), 0);
    if (!sizesWithoutPanel_ && height > 0 && height < both) outlinePane_->setSizes({height, both - height});
}

void DocumentWindow::showPanel(Sheet &panel) {
    const QList<int> sizes = outlinePane_->sizes();
    sizesWithoutPanel_ = sizes;
    tableViewH1H2H3Config_->hide();
    outlineWithFilter_->setVisible(document_.treecontroller().nodeCount() > 0);
    connect(&document_.treecontroller(), &QAbstractItemModel::rowsInserted, &panel,
            [this] { outlineWithFilter_->show(); });
    outlinePane_->addWidget(&panel);
    constexpr int panelShare = 3;
    outlinePane_->setStretchFactor(outlinePane_->indexOf(&panel), panelShare);
    outlinePane_->setSizes({1, 0, panelShare});
    connect(&panel, &QDialog::finished, this, [this, sizes] {
        outlineWithFilter_->show();
        tableViewH1H2H3Config_->show();
        outlinePane_->setSizes(sizes);
        sizesWithoutPanel_.reset();
        outlineview_->setFocus();
    });
}

QAction *DocumentWindow::makeAction(const ActionDescription &description) {
    const QString selector = QString::fromLatin1(description.selector);
    auto *action = new QAction(actionTitle(description), this);
    action->setObjectName(selector);
    action->setShortcut(QKeySequence(QString::fromLatin1(description.shortcut)));
    action->setIcon(actionIcon(QString::fromLatin1(description.selector)));
    connect(action, &QAction::triggered, this, [this, selector, action] {
        if (document_.isBusy() || performInTextField(focusWidget(), selector)) return;
        // What is being typed counts; it would be missing from a saved file, say.
        outlineview_->endEditing();
        document_.actions().perform(selector, action);
    });
    tableActions_.append(action);
    return action;
}

void DocumentWindow::makeMenus() {
    auto *toolBar = addToolBar(tr("Toolbar"));
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setMovable(false);
    toolBar->setIconSize({20, 20});
    const auto handled = document_.actions().handled();
    for (const Menu which : menus) {
        QMenu *menu = nullptr;
        bool firstInToolBar = true;
        for (const ActionDescription *description : handled) {
            if (description->menu != which) continue;
            if (!menu) menu = menuBar()->addMenu(menuTitle(which));
            if (description->has(ActionDescription::StartsGroup) && !menu->isEmpty()) menu->addSeparator();
            QAction *action = makeAction(*description);
            menu->addAction(action);
            if (!description->has(ActionDescription::InToolBar)) continue;
            if (std::exchange(firstInToolBar, false) && !toolBar->actions().isEmpty())
                toolBar->addSeparator();
            toolBar->addAction(action);
        }
        if (!menu) continue;
        giveAccessLetters(*menu);
        refusalTips_->watch(*menu);
        connect(menu, &QMenu::aboutToShow, this, &DocumentWindow::updateActions);
    }
}

void DocumentWindow::setRecentDocuments(DocumentController &controller) {
    auto *open = findChild<QAction *>(QStringLiteral("openDocument:"));
    auto *fileMenu = qobject_cast<QMenu *>(menuBar()->actions().first()->menu());
    const auto actions = fileMenu->actions();
    addRecentDocuments(*fileMenu, actions.value(actions.indexOf(open) + 1), controller);
}

void DocumentWindow::connectViews() {
    actionsUpdate_.setSingleShot(true);
    actionsUpdate_.setInterval(0);
    connect(&actionsUpdate_, &QTimer::timeout, this, &DocumentWindow::updateActions);
    const auto scheduleUpdate = [this] { actionsUpdate_.start(); };
    connect(document_.treecontroller().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            scheduleUpdate);
    // Commands go by the selected rows that can be seen, which folding and moving change as well.
    connect(outlineview_, &QTreeView::expanded, this, scheduleUpdate);
    connect(outlineview_, &QTreeView::collapsed, this, scheduleUpdate);
    connect(&document_.treecontroller(), &QAbstractItemModel::rowsMoved, this, scheduleUpdate);
    connect(&document_.treecontroller(), &QAbstractItemModel::layoutChanged, this, scheduleUpdate);
    connect(&document_.treecontroller(), &QAbstractItemModel::modelReset, this, scheduleUpdate);
    connect(pdfview_, &PDFView::selectionChanged, this, scheduleUpdate);
    connect(pdfview_, &PDFView::historyChanged, this, scheduleUpdate);
    connect(pdfview_, &PDFView::documentChanged, this, scheduleUpdate);
    connect(pdfview_, &PDFView::copyRequested, this,
            [this](const QString &text) { document_.platform().setClipboardText(text); });
    connect(pdfview_, &PDFView::linkClicked, this,
            [this](const QString &uri) { document_.platform().openURL(QUrl(uri)); });
    connectHeadingMap();
    connect(passwordBar_, &PasswordBar::entered, this, &DocumentWindow::unlock);
    connect(&document_, &MyDocument::historyChanged, this, scheduleUpdate);
    connect(outlineFilter_, &OutlineFilter::told, statusBar_, &DocumentStatusBar::tell);
    connect(&document_, &Document::editedChanged, this, &DocumentWindow::updateTitle);
    connect(&document_, &Document::fileURLChanged, this, &DocumentWindow::updateTitle);
    currentEntry_ = std::make_unique<CurrentEntry>(document_, *pdfview_, *outlineview_);
    connect(outlineview_, &OutlineView::followRequested, this,
            [this] { document_.actions().perform(QStringLiteral("moveToPageOfOutlineItem:")); });
    headingMapMarks_ =
        std::make_unique<HeadingMapMarks>(document_, *pdfview_, *tableViewH1H2H3Config_, *findBar_);
    outlineview_->setDelegate(&document_.outlineDelegate());
    document_.edits().setDisplay(outlineview_);
}

void DocumentWindow::connectHeadingMap() {
    connect(pdfview_, &PDFView::documentChanged, tableViewH1H2H3Config_, [this] {
        const PDFDocument *pdf = pdfview_->document();
        const bool isLocked = pdf && pdf->isLocked();
        tableViewH1H2H3Config_->setPlaceholderText(
            isLocked ? tr("This PDF is locked by a password, so its fonts can’t be counted.")
                     : tr("The fonts of this PDF are being counted."));
    });
    connect(&document_.headingMapModel(), &QAbstractItemModel::modelReset, tableViewH1H2H3Config_, [this] {
        const PDFDocument *pdf = pdfview_->document();
        if (pdf && !pdf->isLocked()) tableViewH1H2H3Config_->setPlaceholderText({});
    });
    connect(tableViewH1H2H3Config_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { document_.headingMapCommands().tableViewSelectionDidChange(); });
    connect(tableViewH1H2H3Config_, &HeadingMapView::deletionRequested, this, [this] {
        document_.actions().perform(QStringLiteral("buttonDeleteSelectedH1H2H3RowsClicked:"));
    });
    connect(tableViewH1H2H3Config_, &HeadingMapView::levelRequested, this, [this](int level) {
        if (!document_.isBusy()) document_.headingMapCommands().setLevelOfSelectedRows(level);
    });
    // Later: the rows are made anew, which the editor of a cell would not survive.
    connect(
        &document_.headingMapModel(), &HeadingMapModel::levelEntered, this,
        [this](int row, int level) {
            if (!document_.isBusy()) document_.headingMapCommands().setLevelOfRows({row}, level);
        },
        Qt::QueuedConnection);
    connect(tableViewH1H2H3Config_, &HeadingMapView::occurrenceRequested, this, [this](int row) {
        if (!document_.isBusy()) document_.headingMapCommands().showNextOccurrence(row);
    });
}

void DocumentWindow::unlock(const QString &password) {
    if (document_.isBusy()) return;
    if (const auto error = document_.unlock(password)) return passwordBar_->refuse(error->message);
    passwordBar_->dismiss();
    pdfview_->setFocus();
    updateActions();
}

QWidget *DocumentWindow::fieldBarOf(const QString &selector) const {
    if (selector == u"findOnPages:") return findBar_;
    if (selector == u"filterOutline:") return outlineFilter_;
    return nullptr;
}

void DocumentWindow::updateTitle() {
    // In a title, "[*]" is where the mark of changes goes; a file's name may hold it all the same.
    QString name = document_.displayName();
    name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    const bool mayNotWrite = isReadOnly(document_.fileURL());
    if (mayNotWrite) name = tr("%1 (read-only)").arg(name);
    refusalTips_->setFileIsReadOnly(mayNotWrite);
    actionsUpdate_.start();
    setWindowTitle(tr("%1[*] — Leafwright").arg(name));
    setWindowFilePath(document_.fileURL());
    setWindowModified(document_.isDocumentEdited());
}

void DocumentWindow::updateActions() {
    for (QAction *action : tableActions_) {
        action->setEnabled(document_.actions().validateUserInterfaceItem(action->objectName()));
        if (const auto isOn = document_.actions().isOn(action->objectName())) {
            action->setCheckable(true);
            action->setChecked(*isOn);
        }
        refusalTips_->update(*action);
    }
    nameStep(QStringLiteral("stepBack:"), document_.edits().undoSummary());
    nameStep(QStringLiteral("stepForward:"), document_.edits().redoSummary());
}

void DocumentWindow::nameStep(const QString &selector, const OutlineEdits::Summary &step) {
    auto *action = findChild<QAction *>(selector, Qt::FindDirectChildrenOnly);
    // The title with its letter to be pressed, before anything was put behind it.
    if (!action->data().isValid()) action->setData(action->text());
    const QString title = action->data().toString();
    action->setText(step.name.isNull() ? title : tr("%1: %2").arg(title, stepTitle(step)));
}

void DocumentWindow::restorePlace() {
    resize(firstSize);
    restoreGeometry(document_.platform().userDefaults().dataForKey(setting::windowGeometry));
}

void DocumentWindow::closeEvent(QCloseEvent *event) {
    if (document_.isBusy()) {
        event->ignore();
        if (!std::exchange(closesWhenIdle_, true)) document_.whenIdle([this] { closeAfterWaiting(); });
        return;
    }
    outlineview_->endEditing();  // what is being typed is to be saved as well
    if (document_.prepareToClose() == Document::Closing::Refused) {
        event->ignore();
        return;
    }
    document_.platform().userDefaults().setValue(setting::windowGeometry, saveGeometry());
    event->accept();
    Q_EMIT document_.closed();
}

void DocumentWindow::closeAfterWaiting() {
    closesWhenIdle_ = false;
    close();
}

void DocumentWindow::dragEnterEvent(QDragEnterEvent *event) {
    if (!draggedFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void DocumentWindow::dropEvent(QDropEvent *event) {
    Q_EMIT filesDropped(draggedFiles(*event->mimeData()));
    event->acceptProposedAction();
}

}  // namespace leafwright

#include "document/commands/HeadingMapCommands.h"

#include "autotoc/HeadingMapText.h"
#include "categories/FontIdentity.h"
#include "categories/PageFonts.h"
#include "categories/SelectionFont.h"
#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "document/window/HeadingMapModel.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "formats/KeyedArchive.h"
#include "formats/Utf8Text.h"
#include "pdf/ReadAhead.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "system/InBackground.h"
#include "texts/Translated.h"
#include "view/LabelPDFView.h"
#include "widgets/NoticeBars.h"

#include <QItemSelectionModel>
#include <QLoggingCategory>
#include <QTableView>

#include <algorithm>

namespace leafwright {

namespace {

Q_LOGGING_CATEGORY(log, "leafwright.headingmap", QtInfoMsg)

constexpr qint64 longestMapFile = 1 << 20;  // bytes; a map has a line a font, so more is something else

constexpr Translated translated{"HeadingMapCommands"};

using SharedPDF = std::shared_ptr<const PDFDocument>;

const QString emptiedMapNotice = QStringLiteral("emptiedMap");
const QString failedMapNotice = QStringLiteral("failedMap");

FilePanel mapPanel(const QString &title) {
    return {.title = title, .allowedFileTypes = {QStringLiteral("txt")}};
}

struct FoundText {
    int pageIndex;
    TextRange range;
};

/// The first text in a font behind a place, where the last page is followed by the first; absent where no
/// text has the font.
std::optional<FoundText> nextPlaceOf(const QString &fontID, const PDFDocument &pdf,
                                     const HeadingMapCommands::Place &from) {
    const int pages = pdf.pageCount();
    for (int i = 0; i <= pages; ++i) {
        const int index = (from.pageIndex + i) % pages;
        for (const TextRange &range : rangesOfFontID(*pdf.page(index), fontID))
            if (i > 0 || range.location > from.location) return FoundText{index, range};
    }
    return std::nullopt;
}

/// @param failure gets why there is none, as a message to the user
std::optional<QString> readMapFile(const QString &path, QString &failure) {
    const auto content = readRegularFile(path, longestMapFile);
    if (const auto *reason = std::get_if<QString>(&content)) {
        failure = translated("%1: the map can't be read: %2").arg(path, *reason);
        return std::nullopt;
    }
    auto text = textOfUtf8(std::get<QByteArray>(content));
    if (const auto *fault = std::get_if<NotUtf8>(&text)) {
        failure = translated("%1:%2: the text is not UTF-8").arg(path).arg(fault->line);
        return std::nullopt;
    }
    return std::get<QString>(std::move(text));
}

}  // namespace

HeadingMapCommands::HeadingMapCommands(MyDocument &document) : document_(document) {
    // What has come since is not to be lost to what was there before.
    QObject::connect(&document.headingMapModel(), &QAbstractItemModel::modelReset, &document, [&document] {
        if (document.myWindow() && !document.listH1H2H3Config().empty())
            document.myWindow()->notices()->removeNotice(emptiedMapNotice);
    });
    ActionTable &actions = document.actions();
    const auto use = [this](int level) {
        return [this, level](QObject *) { processSelectedTextForHLevel(level); };
    };
    actions.handle("useSelectionforH1:", use(1));
    actions.handle("useSelectionforH2:", use(2));
    actions.handle("useSelectionforH3:", use(3));
    actions.handle("useSelectionforH4:", use(4));
    actions.handle("buttonClickedSaveH1H2H3Map:", [this](QObject *) { buttonClickedSaveH1H2H3Map(); });
    actions.handle("buttonClickedLoadH1H2H3Map:", [this](QObject *) { buttonClickedLoadH1H2H3Map(); });
    actions.handle("resetH1H2H3FontsMap:", [this](QObject *) { resetH1H2H3FontsMap(); });
    actions.handle("buttonDeleteSelectedH1H2H3RowsClicked:",
                   [this](QObject *) { buttonDeleteSelectedH1H2H3RowsClicked(); });
    actions.handle("dumpFontsOnCurrentPage:", [this](QObject *) { dumpFontsOnCurrentPage(); });
    actions.handle("debugPrintFontsInDocument:", [this](QObject *) { debugPrintFontsInDocument(); });
    actions.handle("debugSelectedText:", [this](QObject *) { debugSelectedText(); });
}

void HeadingMapCommands::mapChanged() {
    if (DocumentWindow *window = document_.myWindow()) window->tableViewH1H2H3Config()->clearSelection();
    document_.reloadHeadingMap();
}

void HeadingMapCommands::processSelectedTextForHLevel(int level) {
    const auto &selection = document_.pdfview()->currentSelection();
    const auto font = selection ? dominantFontInSelection(*selection) : std::nullopt;
    if (!font) return;
    document_.finishHeadingMap();
    HeadingLevelMap &map = document_.listH1H2H3Config();
    const QString fontID = fontIDString(*font);
    const bool isMapped = std::ranges::any_of(map, [&](const LevelRecord &record) {
        // Calibrated records have no font but its name.
        return record.font ? isEffectivelyEqual(*record.font, *font) : record.fontText == fontID;
    });
    if (isMapped) return;
    map.push_back(levelRecord(level, *font));
    sortByLevel(map);
    mapChanged();
}

void HeadingMapCommands::tellFailure(const QString &message) const {
    qCWarning(log).noquote() << message;
    if (DocumentWindow *window = document_.myWindow())
        window->notices()->setNotice(failedMapNotice, {message});
}

void HeadingMapCommands::buttonClickedSaveH1H2H3Map() {
    document_.finishHeadingMap();
    const QByteArray text = stringToSaveListH1H2H3(mapWithFonts()).toUtf8();
    saveProblem_.reset();
    const auto path = document_.runSavePanel(mapPanel(translated("Save Heading Map")));
    if (!path) return;
    FileReplacement file(*path);
    const bool isReady = file.start() && file.write(text) == text.size();
    const auto outcome = isReady ? file.commit() : FileReplacement::Outcome::NotWritten;
    if (outcome == FileReplacement::Outcome::NotWritten) saveProblem_ = file.message();
    QStringList messages = file.notices();
    if (outcome != FileReplacement::Outcome::Written) messages.prepend(file.message());
    if (!messages.isEmpty()) tellFailure(messages.join(u'\n'));
}

void HeadingMapCommands::buttonClickedLoadH1H2H3Map() {
    const auto path = document_.runOpenPanel(mapPanel(translated("Load Heading Map")));
    if (!path) return;
    QString failure;
    const std::optional<QString> text = readMapFile(*path, failure);
    if (!text) tellFailure(failure);
    if (!text || !loadMapText(*text)) return document_.platform().beep();
    document_.platform().userDefaults().setValue(setting::lastUsedHeadingMap, *text);
}

bool HeadingMapCommands::loadH1H2H3MapSavedInUserDefaults() {
    return loadMapText(document_.platform().userDefaults().stringForKey(setting::lastUsedHeadingMap));
}

bool HeadingMapCommands::loadMapText(const QString &text) {
    if (text.isEmpty()) return false;
    document_.finishHeadingMap();
    LoadedMap loaded = loadHeadingMap(text, DocumentFonts(census()));
    if (loaded.map.empty()) return false;
    document_.listH1H2H3Config() = std::move(loaded.map);
    mapChanged();
    return true;
}

void HeadingMapCommands::resetH1H2H3FontsMap() {
    document_.finishHeadingMap();
    const HeadingLevelMap before = std::exchange(document_.listH1H2H3Config(), {});
    document_.reloadHeadingMap();
    DocumentWindow *window = document_.myWindow();
    if (before.empty() || !window) return;
    window->notices()->setNotice(emptiedMapNotice, {translated("The heading map was emptied."),
                                                    {{translated("Bring It Back"), [this, before] {
                                                          document_.listH1H2H3Config() = before;
                                                          mapChanged();
                                                      }}}});
}

void HeadingMapCommands::buttonDeleteSelectedH1H2H3RowsClicked() {
    HeadingLevelMap &map = document_.listH1H2H3Config();
    const std::vector<int> rows = selectedRows();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        map.erase(map.begin() + *row);
    mapChanged();
    if (!rows.empty()) setCurrentRow(rows.front());
}

void HeadingMapCommands::setCurrentRow(int row) {
    QTableView &table = *document_.myWindow()->tableViewH1H2H3Config();
    const int last = table.model()->rowCount() - 1;
    table.selectionModel()->setCurrentIndex(
        table.model()->index(std::min(row, last), HeadingMapModel::LevelColumn),
        QItemSelectionModel::NoUpdate);
}

std::vector<int> HeadingMapCommands::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex &index :
         document_.myWindow()->tableViewH1H2H3Config()->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    return rows;
}

void HeadingMapCommands::setLevelOfSelectedRows(int level) {
    setLevelOfRows(selectedRows(), level);
}

void HeadingMapCommands::setLevelOfRows(const std::vector<int> &rows, int level) {
    HeadingLevelMap &map = document_.listH1H2H3Config();
    HeadingLevelMap changed;
    for (const int row : rows) {
        if (row >= std::ssize(map)) continue;
        LevelRecord &record = map[static_cast<size_t>(row)];
        record.levelNumber = level;
        record.levelName = QStringLiteral("H%1").arg(level);
        changed.push_back(record);
    }
    if (changed.empty()) return;
    sortByLevel(map);
    document_.reloadHeadingMap();
    QTableView &table = *document_.myWindow()->tableViewH1H2H3Config();
    QItemSelection selection;
    for (size_t row = 0; row < map.size(); ++row) {
        const QModelIndex index = table.model()->index(static_cast<int>(row), 0);
        if (std::ranges::find(changed, map[row]) != changed.end()) selection.select(index, index);
    }
    table.selectionModel()->select(selection,
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    setCurrentRow(selectedRows().back());
}

void HeadingMapCommands::showNextOccurrence(int row) {
    const QString font = fontIDOf(document_.listH1H2H3Config().at(static_cast<size_t>(row)));
    const PDFPage *shown = document_.pdfview()->currentPage();
    if (!shown) return;
    const bool goesOn = occurrence_.font == font && occurrence_.place.pageIndex == shown->index();
    const auto found = inBackground(
        document_,
        [](const SharedPDF &pdf, const QString &fontID, const Place &from) {
            return nextPlaceOf(fontID, *pdf, from);
        },
        document_.sharedPdfDoc(), font, goesOn ? occurrence_.place : Place{shown->index(), -1});
    if (!found) return document_.platform().beep();
    occurrence_ = {font, {found->pageIndex, found->range.location}};
    document_.pdfview()->showText(found->pageIndex, found->range);
    tableViewSelectionDidChange();
}

void HeadingMapCommands::tableViewSelectionDidChange() {
    LabelPDFView &view = *document_.pdfview();
    view.clearSelection();
    const auto rows = document_.myWindow()->tableViewH1H2H3Config()->selectionModel()->selectedRows();
    if (rows.isEmpty()) return;
    const QString font = fontIDOf(document_.listH1H2H3Config().at(static_cast<size_t>(rows.first().row())));
    PDFSelection selection;
    const auto [first, last] = view.visiblePages();
    for (int i = first; i <= last; ++i) {
        const PDFPage &page = *document_.pdfDoc()->page(i);
        for (const TextRange &range : rangesOfFontID(page, font))
            selection.add(page, range);
    }
    view.setCurrentSelection(selection);
}

FontCensus HeadingMapCommands::census() const {
    return inBackground(
        document_,
        [](const std::shared_ptr<const PDFDocument> &pdf) {
            readAllPages(*pdf);
            return calcFontsInDocument(*pdf);
        },
        document_.sharedPdfDoc());
}

HeadingLevelMap HeadingMapCommands::mapWithFonts() const {
    const HeadingLevelMap &map = document_.listH1H2H3Config();
    const auto hasFont = [](const LevelRecord &record) { return record.font.has_value(); };
    return std::ranges::all_of(map, hasFont) ? map : withFontsOf(census(), map);
}

void HeadingMapCommands::dumpFontsOnCurrentPage() const {
    const PDFPage *page = document_.pdfview()->currentPage();
    if (!page) return;
    const auto text = page->text();
    for (const FontRun &run : text->attributedString.runs) {
        qCInfo(log).noquote() << QStringLiteral("\n\n[Font **%1**] - %2")
                                     .arg(fontIDString(run.font),
                                          text->attributedString.substring(run.range));
    }
}

void HeadingMapCommands::debugPrintFontsInDocument() const {
    census();
}

void HeadingMapCommands::debugSelectedText() const {
    if (const auto &selection = document_.pdfview()->currentSelection())
        stringFromPoint(topLeftPoint(*selection));
}

}  // namespace leafwright

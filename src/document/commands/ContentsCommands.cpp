#include "document/commands/ContentsCommands.h"

#include "contents/PDFContentsPages.h"
#include "document/MyDocument.h"
#include "document/outline/ContentsItems.h"
#include "document/outline/TextRecognition.h"
#include "document/window/ContentsProposal.h"
#include "document/window/DocumentWindow.h"
#include "document/window/ProgressSheet.h"
#include "model/TreeWalk.h"
#include "outlineview/OKNSOutlineView.h"
#include "texts/CountText.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"

#include <QCoreApplication>
#include <QLineEdit>

#include <algorithm>

namespace leafwright {

namespace {

constexpr int goOnTag = 1;
/// Not that of what the command is given for, lest a script recognise text unasked.
constexpr int recogniseTag = 2;

constexpr Translated translated{"ContentsCommands"};

QStringList labelsOf(const PDFDocument &pdf) {
    QStringList labels;
    for (int i = 0; i < pdf.pageCount(); ++i)
        labels.append(pdf.pageLabel(i));
    return labels;
}

/// Reads the pages on other threads. @return null when it was told to stop
std::unique_ptr<ContentsAnalysis> analysed(const ContentsPages &pages, const std::stop_token &stop,
                                           ProgressSheet &sheet) {
    return analyseContents(pages, false, stop, [&sheet](double part) { sheet.setDone(part); });
}

/// The entries of an outline, in their order.
std::vector<ExistingEntry> entriesOf(MyDocument &document) {
    constexpr int nowhere = -1;
    std::vector<ExistingEntry> entries;
    for (const auto &[item, level] : itemsInOrder(document.root()))
        entries.push_back({item->pageTitle(),
                           document.outline().knownPageIndexOfItem(*item).value_or(nowhere), level,
                           item->pointOnPage()});
    return entries;
}

/// Reads a file whose text was recognised first, in a copy. @return the reason where that failed; absent,
/// like the analysis, when it was told to stop
std::variant<std::unique_ptr<ContentsAnalysis>, QString> recognisedAndAnalysed(const PDFDocument &pdf,
                                                                               const QString &path,
                                                                               const QString &languages,
                                                                               const std::stop_token &stop,
                                                                               ProgressSheet &sheet) {
    constexpr double recognition = 0.95;  // of the time
    const double pageCount = std::max(1, pdf.pageCount());
    auto recognised = recogniseText(path, languages, [&](int pages) {
        sheet.setDone(recognition * pages / pageCount);
        return !stop.stop_requested();
    });
    if (auto *failure = std::get_if<RecognitionFailure>(&recognised)) return std::move(failure->message);
    const auto copy = std::get<std::unique_ptr<RecognisedCopy>>(std::move(recognised));
    const auto opened = PDFDocument::open(copy->path());
    if (const auto *error = std::get_if<PDFError>(&opened)) return error->message;
    const PDFDocument &text = *std::get<std::unique_ptr<PDFDocument>>(opened);
    if (text.pageCount() != pdf.pageCount())
        return translated("The copy with the recognised text has other pages.");
    auto analysis = analyseContents(PDFContentsPages(pdf, text), false, stop);
    if (const auto problem = text.readProblem()) return problem->message;
    return analysis;
}

}  // namespace

ContentsCommands::ContentsCommands(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("findContents:", [this](QObject *) { findContents(); });
    actions.handle("completeContents:", [this](QObject *) { completeContents(); });
}

ContentsCommands::~ContentsCommands() = default;

ContentsProposal *ContentsCommands::proposal() const {
    return proposal_;
}

bool ContentsCommands::mayPropose() const {
    return document_.allowTOCediting() && !document_.lockTOCediting() && !proposal_;
}

ContentsCommands::Analysis ContentsCommands::analyse() const {
    const PDFDocument &pdf = *document_.pdfDoc();
    return withProgress(document_, translated("Find Contents"), translated("Reading the pages:"),
                        [&](const std::stop_token &stop, ProgressSheet &sheet) {
                            return analysed(PDFContentsPages(pdf), stop, sheet);
                        })
        .value_or(nullptr);
}

void ContentsCommands::findContents() {
    Analysis analysis = analyse();
    if (!analysis) return;
    const FoundContents found = analysis->choose({});
    const bool mayRecognise = !found.hasText || (found.lacksText() && canRecogniseText());
    mayRecognise ? offerRecognition(std::move(analysis), found) : proposeContents(std::move(analysis));
}

void ContentsCommands::completeContents() {
    if (Analysis analysis = analyse()) proposeCompletion(std::move(analysis));
}

void ContentsCommands::offerRecognition(Analysis analysis, const FoundContents &found) {
    if (!canRecogniseText()) {
        return tell(
            translated("The pages are images without text."),
            translated("The program ocrmypdf can recognise their text; install the package of that name."));
    }
    auto *sheet = new Sheet(translated("Find Contents"));
    sheet->setObjectName(QStringLiteral("recogniseTextSheet"));
    const QString lack = translated("%1 of %2 pages are without text.");
    sheet->addText(
        (found.hasText ? lack.arg(found.pagesWithoutText).arg(found.pageCount)
                       : translated("The pages are images without text.")) +
        u' ' + translated("Recognise their text with the program ocrmypdf?") + QStringLiteral("\n\n") +
        translated("That takes some seconds a page. It is done in a copy; the file stays as it is."));
    auto *languages = new QLineEdit;
    languages->setPlaceholderText(QStringLiteral("eng"));
    sheet->addField(translated("Languages, such as deu+eng:"), languages, QStringLiteral("ocrLanguage"));
    sheet->addButton(translated("Cancel"), 0);
    sheet->addButton(translated("Recognise Text"), recogniseTag);
    if (found.hasText) sheet->addButton(translated("Go On Without"), goOnTag);
    document_.beginSheet(sheet, [this, languages, analysis = std::move(analysis)](int returnCode) {
        if (returnCode == recogniseTag) findInRecognisedText(languages->text().trimmed());
        if (returnCode == goOnTag) proposeContents(analysis);
    });
}

void ContentsCommands::findInRecognisedText(const QString &languages) {
    const PDFDocument &pdf = *document_.pdfDoc();
    auto result =
        withProgress(document_, translated("Find Contents"), translated("Recognising the text:"),
                     [&](const std::stop_token &stop, ProgressSheet &sheet) {
                         return recognisedAndAnalysed(pdf, document_.pdfURL(), languages, stop, sheet);
                     });
    if (!result) return;
    if (const auto *failure = std::get_if<QString>(&*result))
        return tell(translated("The text could not be recognised."), *failure);
    proposeContents(std::get<std::unique_ptr<ContentsAnalysis>>(std::move(*result)));
}

void ContentsCommands::proposeContents(Analysis analysis) {
    const FoundContents found = analysis->choose({});
    if (found.entries.empty()) {
        return tell(found.hasText ? translated("No headings were found.")
                                  : translated("No text was recognised in the page images."),
                    translated("The outline stays as it was."));
    }
    const bool hasOutline = !document_.root().children().empty();
    propose(new ContentsProposal(
                [analysis = std::move(analysis)](const auto &options, const auto &choices) {
                    return analysis->choose(options, choices);
                },
                labelsOf(*document_.pdfDoc()),
                hasOutline ? ContentsProposal::Existing::Replaced : ContentsProposal::Existing::None),
            [this](const ContentsProposal &proposal) { take(proposal); });
}

void ContentsCommands::proposeCompletion(Analysis analysis) {
    // The outline may be edited while the proposal is there.
    const auto choose = [this, analysis = std::move(analysis)](const ContentsOptions &options,
                                                               const ContentsChoices &choices) {
        return analysis->complete(entriesOf(document_), options, choices);
    };
    const auto isNew = [](const ContentsEntry &entry) { return entry.id >= 0; };
    if (std::ranges::none_of(choose({}, {}).entries, isNew)) {
        return tell(translated("Nothing is missing."),
                    translated("No other heading looks like those of the entries that are there."));
    }
    propose(
        new ContentsProposal(choose, labelsOf(*document_.pdfDoc()), ContentsProposal::Existing::Completed),
        [this](const ContentsProposal &proposal) { complete(proposal); });
}

void ContentsCommands::propose(ContentsProposal *proposal,
                               std::function<void(const ContentsProposal &)> take) {
    document_.tellReadProblem();  // What is proposed may not be all.
    proposal_ = proposal;
    QObject::connect(proposal, &ContentsProposal::entryChosen, proposal,
                     [this](const ContentsEntry &entry) { show(entry); });
    document_.beginPanel(proposal, [this, proposal, take = std::move(take)](int returnCode) {
        proposal_ = nullptr;
        document_.pdfview()->setHighlightedArea(std::nullopt);
        if (returnCode != 0) take(*proposal);
    });
}

void ContentsCommands::show(const ContentsEntry &entry) const {
    LabelPDFView &view = *document_.pdfview();
    if (entry.box.isNull()) {
        view.setHighlightedArea(std::nullopt);
        return view.goToDestination({entry.pageIndex, entry.point});
    }
    constexpr double roomAbove = 36;  // points, so that what comes before is in sight too
    const PageTransform transform = document_.pdfDoc()->page(entry.pageIndex)->transform();
    const QPointF above(entry.box.left(), std::max(0.0, entry.box.top() - roomAbove));
    view.goToDestination({entry.pageIndex, transform.toPage(above)});
    view.setHighlightedArea(PDFView::PageArea{entry.pageIndex, transform.toPage(entry.box)});
}

void ContentsCommands::take(const ContentsProposal &proposal) {
    OutlineEdits &edits = document_.edits();
    MyOutlineItem &root = document_.root();
    const OutlineEdits::Transaction edit(edits, QStringLiteral("findContents:"));
    if (proposal.replaces()) edits.removeAll(root);
    const FoundContents found = proposal.result();
    for (auto &item : itemsOfContents(found, *document_.pdfDoc()))
        edits.insert(root, root.children().size(), std::move(item));
    document_.tell(translated("Find Contents: %1").arg(entryCountText(found.entries.size())));
    document_.tellReadProblem();
}

void ContentsCommands::complete(const ContentsProposal &proposal) {
    OutlineEdits &edits = document_.edits();
    MyOutlineItem &root = document_.root();
    const OutlineEdits::Transaction edit(edits, QStringLiteral("completeContents:"));
    // Of copies, so that what was there can come back.
    auto items = completedItems(root.copy()->takeChildren(), proposal.result(), *document_.pdfDoc());
    const qint64 before = countBelow(root);
    edits.removeAll(root);
    for (size_t i = 0; i < items.size(); ++i)
        edits.insert(root, i, std::move(items[i]));
    document_.tell(
        translated("%1 added").arg(entryCountText(std::max<qint64>(0, countBelow(root) - before))));
    document_.tellReadProblem();
}

void ContentsCommands::tell(const QString &message, const QString &informativeText) const {
    document_.platform().beep();
    document_.runModal({message, informativeText, {translated("OK")}});
    document_.tellReadProblem();
}

}  // namespace leafwright

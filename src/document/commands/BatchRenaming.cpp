#include "document/commands/BatchRenaming.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "texts/Translated.h"
#include "tree/TreeController.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Sheet.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSpinBox>

#include <algorithm>
#include <iterator>
#include <limits>

namespace leafwright {

namespace {

constexpr int exampleMargin = 3;  // pixels

constexpr Translated translated{"BatchRenaming"};

const QString changesName = QStringLiteral("changesText");

QLineEdit *addTextField(Sheet &sheet, const QString &label, const char *name, const QString &text) {
    auto *field = new QLineEdit(text);
    sheet.addField(label, field, QString::fromLatin1(name));
    return field;
}

QSpinBox *addNumberField(Sheet &sheet, const QString &label, const char *name, qint32 value) {
    auto *field = new QSpinBox;
    field->setRange(std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    field->setValue(value);
    sheet.addField(label, field, QString::fromLatin1(name));
    return field;
}

QString numberText(qsizetype number) {
    return QLocale().toString(number);
}

/// What becomes of the first title that a rewriting changes; of the first one where it changes none.
QString exampleOf(const QStringList &titles, const std::function<QString(const QString &)> &rewrite) {
    for (const QString &title : titles)
        if (QString result = rewrite(title); result != title) return result;
    return rewrite(titles.value(0));
}

/// How many titles a rewriting changes.
QString changesText(const QStringList &titles, const std::function<QString(const QString &)> &rewrite) {
    const auto changed =
        std::ranges::count_if(titles, [&rewrite](const QString &title) { return rewrite(title) != title; });
    return translated("%1 of %2 titles change").arg(numberText(changed), numberText(titles.size()));
}

/// Sums wrap around as they do in two's complement.
qint32 wrappingSum(qint32 a, qint32 b) {
    return static_cast<qint32>(static_cast<quint32>(a) + static_cast<quint32>(b));
}

}  // namespace

BatchRenaming::BatchRenaming(MyDocument &document) : document_(document) {
    ActionTable &actions = document.actions();
    actions.handle("renameSequentialNumbering:", [this](QObject *) { renameSequentialNumbering(); });
    actions.handle("renameFindReplace:", [this](QObject *) { renameFindReplace(); });
    actions.handle("renameAddPrefix:", [this](QObject *) { renameAddPrefix(); });
    actions.handle("changeCaseToTitleCase:", [this](QObject *) { changeCaseToTitleCase(); });
    actions.handle("changeCaseToUpperCase:", [this](QObject *) { changeCaseToUpperCase(); });
    actions.handle("changeCaseToLowerCase:", [this](QObject *) { changeCaseToLowerCase(); });
}

void BatchRenaming::renameSelected(const QString &command, const Rewrite &rewrite) {
    const auto nodes = document_.treecontroller().selectedNodes();
    if (nodes.empty()) return document_.platform().beep();
    OutlineEdits &edits = document_.edits();
    const OutlineEdits::Transaction edit(edits, command);
    qsizetype changed = 0;
    for (const TreeNode *node : nodes) {
        MyOutlineItem &item = *node->representedObject();
        const QString title = rewrite(item.pageTitle());
        if (title != item.pageTitle()) ++changed;
        edits.setPageTitle(item, title);
    }
    document_.tell(
        translated("%1 of %2 titles changed").arg(numberText(changed), numberText(std::ssize(nodes))));
}

void BatchRenaming::renameSelectedTOCItemsWithPrefix(const SequentialNumbering &numbering, qint32 firstNumber,
                                                     qint32 stepValue) {
    renameSelected(QStringLiteral("renameSequentialNumbering:"),
                   [&numbering, number = firstNumber, stepValue](const QString &title) mutable {
                       QString result = numberedTitle(title, numbering, number);
                       number = wrappingSum(number, stepValue);
                       return result;
                   });
}

void BatchRenaming::renameSelectedTOCItemsWithFindTerm(const QString &findTerm, bool ignoreCase,
                                                       const QString &replaceTerm) {
    if (findTerm.isEmpty() || replaceTerm.isNull()) return document_.platform().beep();
    const auto caseSensitivity = ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    renameSelected(QStringLiteral("renameFindReplace:"), [&](const QString &title) {
        return titleWithReplacement(title, findTerm, caseSensitivity, replaceTerm);
    });
}

void BatchRenaming::renameSelectedTOCItemsWithPrefix(const QString &prefix) {
    if (prefix.isNull()) return document_.platform().beep();
    renameSelected(QStringLiteral("renameAddPrefix:"),
                   [&](const QString &title) { return prefixedTitle(title, prefix); });
}

void BatchRenaming::changeCaseToTitleCase() {
    renameSelected(QStringLiteral("changeCaseToTitleCase:"), capitalizedString);
}

void BatchRenaming::changeCaseToUpperCase() {
    renameSelected(QStringLiteral("changeCaseToUpperCase:"), uppercaseString);
}

void BatchRenaming::changeCaseToLowerCase() {
    renameSelected(QStringLiteral("changeCaseToLowerCase:"), lowercaseString);
}

QStringList BatchRenaming::selectedTitles() const {
    QStringList titles;
    for (const TreeNode *node : document_.treecontroller().selectedNodes())
        titles.append(node->representedObject()->pageTitle());
    return titles;
}

void BatchRenaming::addChanges(Sheet &sheet) {
    auto *changes = new QLabel;
    changes->setTextFormat(Qt::PlainText);
    sheet.addField({}, changes, changesName);
}

void BatchRenaming::beginSheet(Sheet *sheet, const QString &confirm, const std::function<Rewrite()> &rewrite,
                               const std::function<void()> &apply) {
    const QStringList titles = selectedTitles();
    auto *changes = sheet->findChild<QLabel *>(changesName);
    auto *example = new ElidedLabel;
    example->setAccessibleName(translated("Example"));
    // A frame, so that blanks at the beginning are seen.
    example->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    example->setMargin(exampleMargin);
    const auto update = [example, changes, titles, rewrite] {
        example->setText(exampleOf(titles, rewrite()));
        if (changes) changes->setText(changesText(titles, rewrite()));
    };
    for (auto *field : sheet->findChildren<QLineEdit *>())
        QObject::connect(field, &QLineEdit::textChanged, example, update);
    for (auto *field : sheet->findChildren<QSpinBox *>())
        QObject::connect(field, &QSpinBox::valueChanged, example, update);
    for (auto *field : sheet->findChildren<QCheckBox *>())
        QObject::connect(field, &QCheckBox::toggled, example, update);
    update();
    sheet->addField(translated("Example:"), example, QStringLiteral("exampleText"));
    sheet->addButton(translated("Cancel"), 0);
    sheet->addButton(confirm, 1);
    document_.beginSheet(sheet, [apply](int returnCode) {
        if (returnCode != 0) apply();
    });
}

void BatchRenaming::renameSequentialNumbering() {
    const auto &defaults = document_.renamingDefaults();
    auto *sheet = new Sheet(translated("Number Sequentially"));
    sheet->addText(translated("Puts the prefix and a number in front of each selected title."));
    const auto *prefix = addTextField(*sheet, translated("&Prefix:"), "sequentialNumberingPrefixField",
                                      defaults.sequentialNumberingPrefix);
    const auto *first = addTextField(*sheet, translated("&Between prefix and number:"),
                                     "sequentialNumberingSeparatorFirstField", QStringLiteral(" "));
    const auto *number =
        addNumberField(*sheet, translated("&First number:"), "sequentialNumberingFirstNumberField",
                       defaults.sequentialNumberingFirstNumber);
    const auto *step = addNumberField(*sheet, translated("&Step:"), "sequentialNumberingStepValueField",
                                      defaults.sequentialNumberingStepValue);
    const auto *second = addTextField(*sheet, translated("Between number and &title:"),
                                      "sequentialNumberingSeparatorSecondField", QStringLiteral(". "));
    const auto numbering = [=] { return SequentialNumbering{prefix->text(), first->text(), second->text()}; };
    beginSheet(
        sheet, translated("Number"),
        [=]() -> Rewrite {
            return [=](const QString &title) { return numberedTitle(title, numbering(), number->value()); };
        },
        [=, this] { renameSelectedTOCItemsWithPrefix(numbering(), number->value(), step->value()); });
}

void BatchRenaming::renameFindReplace() {
    auto *sheet = new Sheet(translated("Find and Replace"));
    sheet->addText(translated("Replaces a text wherever it occurs in the selected titles."));
    const auto *find =
        addTextField(*sheet, translated("&Find:"), "findReplaceFindTermText", QStringLiteral(""));
    const auto *replace =
        addTextField(*sheet, translated("Replace &with:"), "findReplaceReplaceTermText", QStringLiteral(""));
    auto *ignoreCase = new QCheckBox(translated("&Ignore case"));
    sheet->addField({}, ignoreCase, QStringLiteral("findReplaceIgnoreCaseCheck"));
    addChanges(*sheet);
    const auto caseSensitivity = [=] {
        return ignoreCase->isChecked() ? Qt::CaseInsensitive : Qt::CaseSensitive;
    };
    beginSheet(
        sheet, translated("Replace"),
        [=]() -> Rewrite {
            return [=](const QString &title) {
                return find->text().isEmpty()
                           ? title
                           : titleWithReplacement(title, find->text(), caseSensitivity(), replace->text());
            };
        },
        [=, this] {
            renameSelectedTOCItemsWithFindTerm(find->text(), ignoreCase->isChecked(), replace->text());
        });
}

void BatchRenaming::renameAddPrefix() {
    auto *sheet = new Sheet(translated("Add Prefix"));
    sheet->addText(translated("Puts the prefix and a blank in front of each selected title."));
    const auto *prefix = addTextField(*sheet, translated("&Prefix:"), "addPrefixPrefixTermField",
                                      document_.renamingDefaults().addPrefixPrefixTerm);
    beginSheet(
        sheet, translated("Add"),
        [=]() -> Rewrite {
            return [=](const QString &title) { return prefixedTitle(title, prefix->text()); };
        },
        [=, this] { renameSelectedTOCItemsWithPrefix(prefix->text()); });
}

}  // namespace leafwright

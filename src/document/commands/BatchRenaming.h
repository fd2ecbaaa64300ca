#pragma once

#include "document/outline/TitleRewriting.h"

#include <functional>

namespace leafwright {

class MyDocument;
class Sheet;

/// Rewrites the titles of all selected items at once; of their children only if they are selected too.
/// Without a selection each command beeps and changes nothing.
class BatchRenaming {
public:
    /// Registers the commands. @param document must outlive this
    explicit BatchRenaming(MyDocument &document);

    // Each opens a sheet, whose fields are then applied.
    void renameSequentialNumbering();
    void renameFindReplace();
    void renameAddPrefix();

    void renameSelectedTOCItemsWithPrefix(const SequentialNumbering &numbering, qint32 firstNumber,
                                          qint32 stepValue);
    /// Beeps also if the find term is absent or empty, or the replace term absent.
    void renameSelectedTOCItemsWithFindTerm(const QString &findTerm, bool ignoreCase,
                                            const QString &replaceTerm);
    /// Beeps also if the prefix is absent.
    void renameSelectedTOCItemsWithPrefix(const QString &prefix);

    void changeCaseToTitleCase();
    void changeCaseToUpperCase();
    void changeCaseToLowerCase();

private:
    using Rewrite = std::function<QString(const QString &title)>;

    /// @param command the selector of what asks
    void renameSelected(const QString &command, const Rewrite &rewrite);
    QStringList selectedTitles() const;
    /// Adds a line that tells how many of the selected titles would become others.
    static void addChanges(Sheet &sheet);
    /// Adds a line that shows what the first selected title that would become another would be, kept up to
    /// date like addChanges() while the sheet is open, and the two buttons; then opens the sheet.
    /// @param apply called unless the sheet is cancelled
    void beginSheet(Sheet *sheet, const QString &confirm, const std::function<Rewrite()> &rewrite,
                    const std::function<void()> &apply);

    MyDocument &document_;
};

}  // namespace leafwright

#pragma once

#include "contents/PageLines.h"

#include <QHash>

#include <optional>

namespace leafwright {

/// Which pages bear which printed number.
class PrintedNumbers {
public:
    /// Reads the numbers at the top and bottom of the pages; those count whose distance from the page's index
    /// is that of enough others.
    /// @param labels the document's page labels, or none
    PrintedNumbers(const std::vector<PageLines> &pages, const QStringList &labels);

    /// Pages that a number in print may mean, the likeliest first: "12", "iv", "3-12". 0-based.
    std::vector<int> pagesOf(const QString &number) const;

    /// What most decimal numbers are short of the index of their page; absent where nothing is printed.
    std::optional<int> decimalOffset() const { return decimalOffset_; }
    std::optional<int> romanOffset() const { return romanOffset_; }
    /// The pages that bear a number, and those whose printed or labelled name is as given; 0-based.
    const QHash<int, std::vector<int>> &decimal() const { return decimal_; }
    const QHash<int, std::vector<int>> &roman() const { return roman_; }
    const QHash<QString, std::vector<int>> &compound() const { return compound_; }
    const QHash<QString, std::vector<int>> &labels() const { return labels_; }

private:
    int pageCount_;
    QHash<int, std::vector<int>> decimal_;
    QHash<int, std::vector<int>> roman_;
    QHash<QString, std::vector<int>> compound_;  ///< "3-12", as printed.
    QHash<QString, std::vector<int>> labels_;    ///< In small letters.
    std::optional<int> decimalOffset_;
    std::optional<int> romanOffset_;
};

}  // namespace leafwright

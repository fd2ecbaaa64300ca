#pragma once

#include "contents/ContentsEntries.h"
#include "contents/PrintedNumbers.h"

#include <QSet>

namespace leafwright {

/// On which pages lines stand, by their folded forms. 0-based.
using PagesOfForms = QHash<QString, QSet<int>>;

/// Whether the page numbers of entries fall to one of the first, as where they are counted in each chapter.
bool beginAgain(const std::vector<PrintedEntry *> &entries);

/// What the page numbers of entries are short of their pages' indices, where pages are counted anew in each
/// chapter: parallel to the entries, and absent for those whose number is not decimal or whose chapter is
/// found nowhere. Chapters follow each other as in the contents, and each lies where most of its titles stand
/// on the page that bears their number. Empty where more titles are found without counting anew.
std::vector<std::optional<int>> offsetsByChapter(const std::vector<PrintedEntry *> &entries,
                                                 const PrintedNumbers &numbers,
                                                 const PagesOfForms &pagesOfForms);

}  // namespace leafwright

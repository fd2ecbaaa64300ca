#pragma once

#include "contents/BodyStyle.h"

#include <QSet>

namespace leafwright {

/// Where a title stands on a page.
struct TitlePlace {
    double score = 0;  ///< About 100 for the very title; below 60 doubtful.
    LineRef line;      ///< The title's first line.
    int lineCount = 0;
};

/// Finds titles on pages. Remembers the folded forms of the pages that it has looked at.
class TitleSearch {
public:
    /// @param pages and @param body must outlive the search.
    TitleSearch(const std::vector<PageLines> &pages, const BodyStyle &body)
        : pages_(pages), body_(body), forms_(pages.size()) {}

    /// Looks at pages on all cores, as a search on them would one by one. @param pages that there are
    void prepare(const QSet<int> &pages);

    /// The line of a page that best holds a title, alone or with the lines below it. Titles that are equal
    /// score most, then lines that go on behind the title, then those that are much alike; large and bold
    /// lines are preferred, running heads and lines within paragraphs are not.
    /// @param forms of the title, see searchForms()
    /// @param y where it is said to be, in the reading frame; absent for anywhere
    std::optional<TitlePlace> locate(const QStringList &forms, int page, std::optional<double> y = {});

    /// Folded forms of each line of a page.
    const std::vector<QStringList> &formsOf(int page);

private:
    TitlePlace match(const QStringList &forms, const PageLines &page, int line,
                     const QStringList &lineForms) const;
    double lookBonus(const TextLine &line) const;

    const std::vector<PageLines> &pages_;
    const BodyStyle &body_;
    std::vector<std::optional<std::vector<QStringList>>> forms_;  // of the pages that were looked at
};

}  // namespace leafwright

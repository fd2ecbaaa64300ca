#pragma once

#include "contents/ContentsRows.h"

#include <map>

namespace leafwright {

/// Pages of a printed contents that follow each other.
struct ContentsRegion {
    int firstPage = 0;
    int lastPage = 0;
};

/// Where printed contents may be.
struct ContentsPageFindings {
    std::map<int, std::vector<ContentsRow>> rows;  ///< Of the pages that may be ones of a contents.
    std::vector<ContentsRegion> regions;
};

/// The last page, excluded, on which a printed contents is looked for.
int endOfFrontPages(int pageCount);

/// Looks for pages whose rows end in page numbers that rise, or lead by links to places that follow each
/// other.
ContentsPageFindings findContentsPages(const std::vector<PageLines> &pages, bool withLinks);

}  // namespace leafwright

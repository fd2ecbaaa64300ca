#pragma once

#include "contents/FindContents.h"
#include "contents/HeadingModel.h"
#include "contents/NamedHeadings.h"
#include "contents/PrintedContents.h"

namespace leafwright {

/// A heading of the document's structure that was found on its page.
struct LocatedStructureHeading {
    QString title;
    int page = 0;
    LineRef line;  ///< Null where the title was not found.
    int level = 1;
};

/// The headings of a tagged file with levels, if most of them are found where they should be; else nothing.
std::vector<LocatedStructureHeading> findStructureHeadings(const std::vector<StructureHeading> &headings,
                                                           const std::vector<PageLines> &pages,
                                                           const BodyStyle &body);

/// What each stage has found.
struct ContentsAnalysis::Stages {
    std::vector<PageLines> pages;
    bool hasText = true;
    /// Made by TeX, whose contents are as deep as its outlines; others often print fewer levels.
    bool isFromTeX = false;
    BodyStyle body;
    std::optional<PrintedNumbers> numbers;  ///< None where there is no text.
    PrintedContents printed;
    HeadingCandidates headings;
    QHash<int, NamedHeading> named;
    std::vector<LocatedStructureHeading> structure;
};

/// An entry that the stages propose together.
struct ProposedEntry {
    QString title;
    int page = 0;
    int column = 0;
    std::optional<double> y;  ///< In the reading frame.
    std::vector<int> lines;   ///< Of the heading; empty where it was not found.
    int level = 1;
    ContentsSources sources = 0;
    double confidence = 0;
    int candidate = -1;  ///< Index of the heading candidate, if it is one.
    int style = -1;
    int id = 0;
    bool isRejected = false;  ///< By the user.
};

/// What an outline is made of in the first place.
enum class ContentsBasis { Structure, Printed, Headings };
ContentsBasis basisOf(const ContentsAnalysis::Stages &stages, ContentsDepth depth);

/// Proposes an outline: of the structure, the printed contents, names and styles, whichever is to be trusted,
/// and of others what that lacks. Levels may still jump.
std::vector<ProposedEntry> combineStages(const ContentsAnalysis::Stages &stages, ContentsDepth depth);

/// The headings of the structure as entries: with the styles that they have on their pages, and what else
/// speaks for them; if it is to go deeper, with all other likely headings. Levels may jump.
std::vector<ProposedEntry> structureOutline(const ContentsAnalysis::Stages &stages, ContentsDepth depth);

/// Completes an outline that is there by the styles of its entries, and by what the user says. Levels may
/// jump.
std::vector<ProposedEntry> completeEntries(const ContentsAnalysis::Stages &stages,
                                           const std::vector<ExistingEntry> &existing,
                                           const ContentsChoices &choices);

/// Puts entries, which are in reading order, among others, whose order stays.
std::vector<ProposedEntry> merged(std::vector<ProposedEntry> entries, std::vector<ProposedEntry> added);

/// What speaks for an entry of the printed contents by itself.
ContentsSources printedSources(const PrintedContents &printed, const PrintedEntry &entry);

/// The ids of a candidate, and of a heading of the structure, as an entry.
int idOfCandidate(size_t candidate);
int idOfTagged(size_t heading);

/// The candidate of that index as an entry.
ProposedEntry proposedHeading(const ContentsAnalysis::Stages &stages, size_t index, int level);

/// What the stages have found, in words; and what is made of it.
QString explainStages(const ContentsAnalysis::Stages &stages);
QString explainOutline(const ContentsAnalysis::Stages &stages, ContentsDepth depth,
                       const FoundContents &found);

}  // namespace leafwright

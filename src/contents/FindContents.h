#pragma once

#include "contents/ContentsPages.h"
#include "contents/FoundContents.h"

#include <functional>
#include <memory>
#include <stop_token>

namespace leafwright {

/// All that was read and concluded of a document; what is chosen from it takes no time worth waiting for.
class ContentsAnalysis {
public:
    ContentsAnalysis();
    ~ContentsAnalysis();
    ContentsAnalysis(const ContentsAnalysis &) = delete;
    ContentsAnalysis &operator=(const ContentsAnalysis &) = delete;

    /// The outline, with what the user says to it.
    FoundContents choose(const ContentsOptions &options, const ContentsChoices &choices = {}) const;
    /// An outline that is there, completed: the styles of its entries' headings tell what else belongs to it,
    /// and at which level. The existing entries stay as they are, in their order; the first has the id -1,
    /// the next -2, and so on. What the user says is of those that are added.
    FoundContents complete(const std::vector<ExistingEntry> &existing, const ContentsOptions &options = {},
                           const ContentsChoices &choices = {}) const;
    /// Each stage's result in words, and the outline, for people who want to know why; in English.
    QString explanation(const ContentsOptions &options = {}) const;

    struct Stages;
    const Stages &stages() const { return *stages_; }
    Stages &stages() { return *stages_; }

private:
    std::unique_ptr<Stages> stages_;
};

/// Told how much is done, from 0 to 1, in order; from the thread that called.
using ContentsProgress = std::function<void(double)>;

/// Reads a document as a reader does: the printed contents, the styles of the headings, their numbering,
/// links and names. Pages are read on as many threads as there are cores.
/// @param textOnly ignore links, named destinations, page labels and structure
/// @return null when stopped
std::unique_ptr<ContentsAnalysis> analyseContents(const ContentsPages &pages, bool textOnly = false,
                                                  const std::stop_token &stop = {},
                                                  const ContentsProgress &progress = {});

/// Both in one: reads the document and gives the outline that its author would have made. Empty where nothing
/// was found.
FoundContents findContents(const ContentsPages &pages, const ContentsOptions &options,
                           const std::stop_token &stop = {}, const ContentsProgress &progress = {});

}  // namespace leafwright

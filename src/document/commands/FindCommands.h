#pragma once

#include "pdf/PageSearch.h"

#include <QString>

#include <memory>
#include <optional>

class QObject;

namespace leafwright {

class FindBar;
class MyDocument;
class PageFinder;

/// Finds text on the pages: marks all places that have it, and goes from one to the next.
class FindCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit FindCommands(MyDocument &document);
    ~FindCommands();

    /// Opens the bar that asks for a text; one that is selected on the pages stands in it.
    void findOnPages();
    /// Goes to the next place that has the text asked for last, whether the bar is open or not; behind the
    /// last, to the first. Opens the bar where nothing was asked for; beeps where nothing was found.
    void findNext() { step(Direction::Next); }
    /// The same the other way round.
    void findPrevious() { step(Direction::Previous); }

    /// Stops reading the pages, before others take their place.
    void forgetPages();
    /// Searches for the same text on the pages that are there now.
    void searchAgain();
    /// Waits until all pages are searched, so that nothing is pending.
    void finish();
    /// What is being read by now, and what was found; null before the first search.
    PageFinder *finder() const { return finder_.get(); }

private:
    enum class Direction { Next, Previous };
    /// How the present hit was come to.
    enum class Way { Direct, AroundTheEnd, AroundTheStart };

    FindBar &bar() const;
    QString selectedWords() const;
    void connectBar();
    void searchFor(const QString &text);
    void makeFinder();
    void foundMore();
    void showFirst();
    void tellProblem();
    void step(Direction direction);
    void goTo(size_t number, Way way);
    void tell();
    QString result() const;
    void close();

    MyDocument &document_;
    bool isConnected_ = false;
    QString text_;                   ///< Asked for last.
    int firstPage_ = 0;              ///< From which on the first hit is looked for.
    std::optional<size_t> current_;  ///< The number of the hit that is shown.
    Way way_ = Way::Direct;
    bool isGivenUp_ = false;      ///< The bar was closed before anything was found.
    bool hasLeft_ = false;        ///< The page where the search began was left for one with a hit.
    bool waits_ = false;          ///< For the document, to show what was found.
    bool isProblemTold_ = false;  ///< That not all pages could be read.
    std::unique_ptr<PageFinder> finder_;
};

}  // namespace leafwright

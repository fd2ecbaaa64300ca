#pragma once

#include "contents/FindContents.h"
#include "model/MyOutlineItem.h"

#include <QPointer>

namespace leafwright {

class ContentsProposal;
class MyDocument;
class PDFDocument;

/// The outline that a reader would make of the pages, or that completes the one that is there. They are read
/// on other threads, with a sheet that shows how far it is and cancels. What is found is proposed beside the
/// outline; nothing changes until the proposal is taken.
class ContentsCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit ContentsCommands(MyDocument &document);
    ~ContentsCommands();
    ContentsCommands(const ContentsCommands &) = delete;
    ContentsCommands &operator=(const ContentsCommands &) = delete;

    /// Reads the pages and proposes the outline that is found. Where they, or many of them, have no text,
    /// offers to recognise it first.
    void findContents();
    /// Reads the pages and proposes what is missing among the entries that are there: what looks like them.
    void completeContents();

    /// Whether the outline may be edited, and nothing is proposed yet.
    bool mayPropose() const;
    /// The proposal that is open; null if there is none.
    ContentsProposal *proposal() const;

private:
    using Analysis = std::shared_ptr<const ContentsAnalysis>;

    /// Null when it was cancelled.
    Analysis analyse() const;
    void offerRecognition(Analysis analysis, const FoundContents &found);
    void findInRecognisedText(const QString &languages);
    void proposeContents(Analysis analysis);
    void proposeCompletion(Analysis analysis);
    void propose(ContentsProposal *proposal, std::function<void(const ContentsProposal &)> take);
    void show(const ContentsEntry &entry) const;
    void take(const ContentsProposal &proposal);
    void complete(const ContentsProposal &proposal);
    void tell(const QString &message, const QString &informativeText) const;

    MyDocument &document_;
    QPointer<ContentsProposal> proposal_;
};

}  // namespace leafwright

#pragma once

#include "document/outline/RecoveryWriter.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace leafwright {

class MyDocument;
class NoticeBars;
class PDFDocument;

/// Keeps what is not saved of a document's outline, and offers what an earlier run of the program has left.
/// What is changed is kept two seconds later at most; it goes when it is saved, discarded, reverted or taken
/// back. What was recovered is not discarded by taking that back: it is left to the next start then.
/// A document without one keeps nothing.
class Recovery : public QObject {
    Q_OBJECT

public:
    /// Begins once the document's window is filled. @param document owns this
    /// @param folder where outlines are kept; need not be there
    Recovery(MyDocument &document, QString folder);
    ~Recovery() override;

    /// In the user's folder for the state of programs (XDG Base Directory Specification, XDG_STATE_HOME).
    static QString standardFolder();

    /// Offers what was left behind, and keeps what changes from now on.
    void begin();
    /// Keeps what is not saved, with what is being typed, and waits until all is done.
    void keepNow();
    /// The same without what is being typed, for where windows can be used no more.
    void keepEntered();

private:
    void changed();
    void startTimer();
    void keep();
    void forget();
    void leaveToNextStart();
    using Files = std::vector<std::unique_ptr<RecoveryFile>>;
    void offer(Files files);
    void ask(Files files, KeptOutline outline);
    void discard(Files files, const KeptOutline &outline);
    void askBeforeDiscarding(Files files, const KeptOutline &outline);
    bool isForThisPlace(const KeptOutline &outline) const;
    void recover(std::unique_ptr<RecoveryFile> file, const KeptOutline &outline);
    RecoveryWriter &writer();
    void tell(RecoveryWriter::Task task, const std::optional<QString> &problem);
    void tellWhatIsNotKept(const std::optional<QString> &problem);
    void tellWhatStays(const std::optional<QString> &problem);
    void tellWhatCantBeRead(const QStringList &problems);
    void tellWhatCantBePutIn(const Files &files);
    NoticeBars *notices() const;

    MyDocument &document_;
    QString folder_;
    bool hasBegun_ = false;
    QTimer timer_;
    QElapsedTimer sinceKept_;                   ///< Not valid before something was kept.
    std::optional<FileMark> file_;              ///< The document's file since there is something to keep.
    std::weak_ptr<const PDFDocument> fileOf_;   ///< The document's pages by then.
    std::unique_ptr<RecoveryFile> leftBehind_;  ///< The one to go on with; until there is a writer.
    bool mayBeKept_ = false;                    ///< Something may be in the folder that is to go.
    bool isRecovered_ = false;                  ///< What is kept goes on from what was recovered.
    bool isTakenBack_ = false;                  ///< What was recovered has been taken back.
    bool hasToldProblem_ = false;
    std::unique_ptr<RecoveryWriter> writer_;  ///< Made when something is to be done.
};

}  // namespace leafwright

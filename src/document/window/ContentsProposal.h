#pragma once

#include "contents/FoundContents.h"
#include "widgets/Sheet.h"

#include <QSet>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace leafwright {

/// An outline that was found, to be looked at before it is taken: its entries as a tree, the doubtful ones
/// marked, the styles of headings below it, and how deep to go. Whatever is switched or rejected shows at
/// once what comes of it; rejected entries stay in sight, struck out. Its place is beside the outline, so
/// that the pages can be seen.
class ContentsProposal final : public Sheet {
    Q_OBJECT

public:
    /// An entry of less confidence is marked as doubtful, until the user has said something to it.
    static constexpr double doubtfulBelow = 0.5;

    /// What is to become of the outline that is there.
    enum class Existing {
        None,       ///< There is none.
        Replaced,   ///< It goes, unless the user wants to keep it.
        Completed,  ///< It is part of the proposal.
    };
    /// Makes the outline, with what the user says to it.
    using Choose = std::function<FoundContents(const ContentsOptions &, const ContentsChoices &)>;

    /// @param pageLabels of all pages
    ContentsProposal(Choose choose, QStringList pageLabels, Existing existing);
    ~ContentsProposal() override;

    /// The outline as the switches stand.
    FoundContents result() const { return choose_(options(), choices_); }
    /// Whether it is to take the place of the outline that is there, rather than to stand behind it.
    bool replaces() const;

Q_SIGNALS:
    /// The user looks at an entry.
    void entryChosen(const leafwright::ContentsEntry &entry);

private:
    QWidget *makeEntries();
    QWidget *makeStyles();
    void addSwitches(Existing existing);
    ContentsOptions options() const;
    void chooseAnew();
    void showEntries(FoundContents found);
    void dropItems();
    QList<QTreeWidgetItem *> makeEntryItems() const;
    QTreeWidgetItem *makeEntryItem(size_t index) const;
    void showDoubt(QTreeWidgetItem &item) const;
    void showStyles();
    void showStyle(int row, const HeadingStyle &style);
    void showSummary();
    bool isDoubtful(const ContentsEntry &entry) const;
    const ContentsEntry *entryOf(const QTreeWidgetItem *item) const;
    void lookAt(const QTreeWidgetItem *item);
    void entryChanged(QTreeWidgetItem *item);
    void styleChanged(int row, int column);
    void decideAllLikeCurrent(bool wanted);
    void goToNextDoubtful();

    Choose choose_;
    QStringList pageLabels_;
    ContentsChoices choices_;
    FoundContents shown_;    ///< What is in the tree: also the entries that the user does not want.
    QList<int> styleOrder_;  ///< The styles' ids as they stood first, so that none moves when it is switched.
    QSet<int> foldedEntries_;  ///< By id.
    QLabel *summary_ = nullptr;
    QPushButton *nextDoubtful_ = nullptr;
    QPushButton *acceptLike_ = nullptr;
    QPushButton *rejectLike_ = nullptr;
    QTreeWidget *entries_ = nullptr;
    QTableWidget *styles_ = nullptr;
    QSpinBox *depth_ = nullptr;
    QCheckBox *deeper_ = nullptr;
    QCheckBox *replace_ = nullptr;
};

}  // namespace leafwright

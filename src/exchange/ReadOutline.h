#pragma once

#include "exchange/OutlineSource.h"
#include "model/MyOutlineItem.h"

#include <QByteArray>

#include <variant>

namespace leafwright {

/// Why a text holds no outline: where, and what is wrong there.
struct TreeError {
    QString where;  ///< Such as "line 12" or "[3].children[0]"; empty for the whole.
    QString message;
};

/// What a text holds: a root item whose children are the top level, or why it holds none.
using OutlineTree = std::variant<std::unique_ptr<MyOutlineItem>, TreeError>;

/// The fault of a line. @param number from 1
TreeError faultInLine(qint64 number, const QString &message);

/// A text of lines, or why it is none.
std::variant<QString, TreeError> textOfLines(const QByteArray &text);

/// Goes through the lines of a text, which end in a line feed or in a carriage return with one.
class Lines {
public:
    /// @param text must outlive this
    explicit Lines(QStringView text) : rest_(text) {}
    /// The next line, without its end; nothing behind the last.
    std::optional<QStringView> next();
    /// The number of the line that came last, from 1.
    qint64 number() const { return number_; }

private:
    QStringView rest_;
    qint64 number_ = 0;
};

/// Builds a tree from items that come with levels, parents before what is below them: each goes below the
/// nearest one before it that has a smaller level.
class LevelledItems {
public:
    LevelledItems() : root_(std::make_unique<MyOutlineItem>()), path_{{root_.get(), -1}} {}

    /// @param level from 0 @return why there can't be another: there are too many, or too deep ones
    std::optional<QString> add(std::unique_ptr<MyOutlineItem> item, qint64 level);
    bool isEmpty() const { return root_->children().empty(); }
    std::unique_ptr<MyOutlineItem> take() { return std::move(root_); }

private:
    struct Level {
        MyOutlineItem *item;
        qint64 level;
    };
    std::unique_ptr<MyOutlineItem> root_;
    std::vector<Level> path_;
    qsizetype count_ = 0;
};

/// How many entries are written without the action that they have.
struct LostActions {
    int unknown = 0;      ///< It is not known in full, and not that of the file's entry that they stand for.
    int besidePages = 0;  ///< They lead to a page.
};

/// Counts them below a root. @param inFile the entries of the file that the outline is written into
LostActions lostActions(const MyOutlineItem &root, const OutlineEntries &inFile);

/// Why an outline can't have so many entries, or so many levels; absent where it can.
std::optional<QString> problemOfSize(qsizetype entries, qsizetype levels);

}  // namespace leafwright

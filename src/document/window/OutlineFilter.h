#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

class QLabel;
class QLineEdit;

namespace leafwright {

class MyDocument;
class OutlineView;
class TitleFilter;
class TreeNode;

/// The field above the outline: while there is a text in it, the outline shows the entries whose titles have
/// that text, with those that they are below. The titles are read some thousand at a time between events, and
/// looked through on a thread of its own. What comes while the text stays is shown, and titles that change
/// stay; an outline in place of another is looked through anew.
class OutlineFilter final : public QWidget {
    Q_OBJECT

public:
    /// @param document and @param view must outlive this
    OutlineFilter(MyDocument &document, OutlineView &view);
    ~OutlineFilter() override;

    /// Gives the keyboard to the field, with its text selected.
    void open();
    /// Takes the text away, and shows all entries. The keyboard goes to the outline.
    void clear();
    QString text() const;
    /// What is told beside the field: how many entries have the text, of how many.
    QString result() const;
    /// Waits until the outline shows what the text asks for, so that nothing is pending.
    void finish();

Q_SIGNALS:
    /// What people should know of a selection that went out of sight.
    void told(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Of all entries, in tree order, as they were at a revision of the tree and one of the outline.
    struct Titles {
        std::vector<TreeNode *> nodes;
        QStringList read;                     ///< Of the first so many nodes.
        std::shared_ptr<TitleFilter> filter;  ///< Null until all are read.
        bool isBegun = false;
        quint64 structureRevision = 0;
        quint64 revision = 0;
    };

    void look();
    void stop();
    void beginTitles();
    bool readTitles();
    bool titlesAreCurrent() const;
    Q_INVOKABLE void takeMatches();
    void show(const std::vector<size_t> &matches);
    void count();
    void selectFirst();
    void tell(const QString &result);

    MyDocument &document_;
    OutlineView &view_;
    QLineEdit *field_;
    QLabel *result_;
    QTimer again_;        ///< An outline comes in many pieces, and its titles are read in many.
    QTimer counting_;     ///< So do entries that come and go.
    bool waits_ = false;  ///< For the document, to show what was found.
    Titles titles_;
    std::mutex mutex_;
    std::optional<std::vector<size_t>> found_;  ///< What the thread has found.
    std::jthread thread_;
};

}  // namespace leafwright

#pragma once

#include "script/ScriptStep.h"

#include <QLineEdit>
#include <QMimeData>

#include <memory>

namespace leafwright {
class MyDocument;
class PDFPage;
class TreeNode;
}  // namespace leafwright

namespace leafwright::script {

class ScriptPlatform;

/// The steps that are no commands: what a hand does with a document's window, done with the same views and by
/// the same code; and the answers and settings that it would give.
class ScriptGestures {
public:
    /// Both must outlive the gestures.
    ScriptGestures(MyDocument &document, ScriptPlatform &platform)
        : document_(document), platform_(platform) {}

    /// Plays a gesture. Throws StepFailure if what it is about does not exist.
    /// @return whether it could be made; not so where the outline is disabled, or refuses what is dropped
    bool play(const Step &step);

    /// Ends the editing of a title or label that is open, as the Return key does.
    void endEditing();
    /// The field in which a title or label is being edited; null if there is none.
    QLineEdit *editor() const;

private:
    using Gesture = bool (ScriptGestures::*)(const Step &step);
    static Gesture gestureNamed(const QString &name);

    bool select(const Step &step);
    bool selectMapRows(const Step &step);
    bool expand(const Step &step);
    bool collapse(const Step &step);
    bool goToPage(const Step &step);
    bool selectText(const Step &step);
    bool pageDoubleClick(const Step &step);
    bool outlineDoubleClick(const Step &step);
    bool drag(const Step &step);
    bool setTitle(const Step &step);
    bool setPageLabel(const Step &step);
    bool setDefault(const Step &step);
    bool answer(const Step &step);
    bool chooseFile(const Step &step);
    bool advanceClock(const Step &step);

    /// What is dragged, and from where.
    struct Dragged {
        std::unique_ptr<QMimeData> data;  ///< Null if there is no drag.
        const QObject *source = nullptr;
        QString className;
    };
    Dragged draggedBy(const Step &step) const;
    bool outlineIsEnabled() const;
    bool mayTouch(const TreeNode &node) const;
    TreeNode &nodeAt(const IndexPath &path) const;
    void show(const TreeNode &node);
    bool editCell(const TreeNode &node, int column, const QString &text);
    const PDFPage &pageAt(const QJsonValue &number) const;

    MyDocument &document_;
    ScriptPlatform &platform_;
};

}  // namespace leafwright::script

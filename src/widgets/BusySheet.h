#pragma once

#include "widgets/Sheet.h"

#include <QElapsedTimer>

namespace leafwright {

/// A sheet that shows how far something is that keeps the main thread busy and can't be stopped. Nothing on
/// it shows until it is drawn, since the thread handles no events of its own accord.
class BusySheet : public Sheet {
    Q_OBJECT

public:
    explicit BusySheet(const QString &title, QWidget *parent = nullptr);

    /// Shows what has changed, now. The window system's answers (that the sheet is on the screen, say) are
    /// handled as they come; what the user types and clicks waits.
    void drawAtOnce();
    /// The same, unless it was drawn less than a screen's frame ago: more often would only delay the work.
    void drawIfDue();

private:
    QElapsedTimer sinceDrawn_;
};

}  // namespace leafwright

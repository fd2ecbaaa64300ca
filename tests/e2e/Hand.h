#pragma once

#include <QPoint>
#include <QStringList>

#include <functional>

class QWidget;

namespace leafwright::test {

/// A hand on the mouse and the keyboard. What it does goes through the X server, as a person's does.
///
/// It acts on a thread of its own, because a drag keeps the main thread in a loop of its own; with what it
/// looks at on the main thread, it waits, for as long as a slow machine may take.
class Hand {
public:
    /// Runs a script on another thread while this one, the main thread, handles events.
    static void act(const std::function<void()> &script);

    // For scripts

    /// Does something on the main thread, and waits for it to be done.
    static void onMain(const std::function<void()> &function);
    /// Waits until something holds; it is looked at on the main thread. Fails the test if it never does.
    /// @param meanwhile done again and again while waiting; may be null
    /// @return whether it held in the end
    static bool waitFor(const char *what, const std::function<bool()> &holds,
                        const std::function<void()> &meanwhile = nullptr);

    /// Moves the pointer to a place of the screen.
    static void moveTo(const QPoint &place);
    static void press();
    static void release();
    /// Clicks and presses again at once, as for a double click, and holds the button.
    static void pressTwice();
    /// Keys by their names in X: "Tab", "ctrl+s".
    static void key(const QString &name);
    static void type(const QString &text);

    /// Runs xdotool. @return what it prints; fails the test if it fails
    static QByteArray tool(const QStringList &arguments);
};

/// A place of a widget on the screen, in the screen's pixels, of which a widget's may have several. On the
/// main thread.
QPoint onScreen(const QWidget &widget, const QPoint &position);

}  // namespace leafwright::test

#pragma once

#include <QObject>
#include <QStringList>

namespace leafwright {

class AppDelegate;

/// Does what other starts and the desktop ask for.
class Requests : public QObject {
    Q_OBJECT

public:
    /// @param delegate must outlive the object
    explicit Requests(AppDelegate &delegate) : delegate_(delegate) {}

    /// Opens files; without any, brings the program to the front, with a file to be chosen if none is open.
    void open(const QStringList &paths);
    /// Emits leftWithoutWindow() unless there is a window or a request that may yet bring one.
    void checkForWindow();
    bool hasDocument() const;

Q_SIGNALS:
    /// The program has no window, so it can't be reached any more.
    void leftWithoutWindow();

private:
    void show();

    AppDelegate &delegate_;
    int running_ = 0;  ///< More than one where one that stops and asks lets another in.
};

}  // namespace leafwright

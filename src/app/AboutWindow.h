#pragma once

#include <QDialog>

namespace leafwright {

/// What the program is: its name and version, its licence, and the libraries it stands on.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    AboutWindow();

Q_SIGNALS:
    /// The user wants to see the program's web page.
    void homePageRequested();
};

}  // namespace leafwright

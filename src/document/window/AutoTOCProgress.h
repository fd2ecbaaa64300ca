#pragma once

#include "system/Document.h"

#include <QString>

#include <array>
#include <memory>

class QLabel;
class QProgressBar;

namespace leafwright {

class MyDocument;
class BusySheet;

/// The sheet that shows how far making an outline is: a line for each of the three steps, with a mark once it
/// is done and an indicator while it runs. Every call draws at once. The document is busy as long as this
/// lives.
class AutoTOCProgress {
public:
    /// @param document has a window, and outlives this
    explicit AutoTOCProgress(MyDocument &document);
    /// Closes the sheet.
    ~AutoTOCProgress();
    AutoTOCProgress(const AutoTOCProgress &) = delete;
    AutoTOCProgress &operator=(const AutoTOCProgress &) = delete;

    void guessPDFStep1Begins();
    void guessPDFStep2Begins();
    void guessPDFStep3Begins();
    /// Shows how it went for a second, and closes the sheet. @param result "Failed" or nothing
    void guessPDFStep3Ends(const QString &result = {});

    BusySheet &sheet() const { return *sheet_; }

private:
    struct Step {
        QLabel *text;
        QProgressBar *indicator;
    };

    void show(size_t running, const QString &before);

    Platform &platform_;
    Document::Busy busy_;
    std::unique_ptr<BusySheet> sheet_;
    std::array<Step, 3> steps_{};
};

}  // namespace leafwright

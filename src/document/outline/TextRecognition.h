#pragma once

#include "files/TemporaryFolder.h"

#include <QString>

#include <functional>
#include <memory>
#include <variant>

namespace leafwright {

/// A copy of a PDF in which the pages that had no text have the text that was recognised on their images. Its
/// files are gone with this.
class RecognisedCopy {
public:
    explicit RecognisedCopy(std::unique_ptr<TemporaryFolder> folder) : folder_(std::move(folder)) {}

    QString path() const { return pathIn(*folder_); }
    static QString pathIn(const TemporaryFolder &folder) {
        return folder.filePath(QStringLiteral("text.pdf"));
    }

private:
    std::unique_ptr<TemporaryFolder> folder_;
};

/// Why no text was recognised.
struct RecognitionFailure {
    bool cancelled;
    QString message;  ///< What went wrong, for people; empty when cancelled.
};

/// Told several times a second on how many pages recognition has begun. @return whether to go on
using RecognitionProgress = std::function<bool(int pages)>;

/// Whether the program that recognises text, ocrmypdf, is installed.
bool canRecogniseText();

/// Recognises the text of a PDF's page images by the program ocrmypdf, which takes seconds a page; so not on
/// the main thread. The file itself is not touched.
/// @param languages as the program wants them: "eng", "deu+eng"; empty for its own choice
std::variant<std::unique_ptr<RecognisedCopy>, RecognitionFailure> recogniseText(
    const QString &path, const QString &languages, const RecognitionProgress &progress);

}  // namespace leafwright

#pragma once

#include "pdf/DocumentMarks.h"
#include "pdf/PDFError.h"
#include "pdf/PDFLink.h"
#include "pdf/PDFOutline.h"
#include "pdf/PageImage.h"
#include "pdf/PageText.h"
#include "pdf/RenderRequest.h"
#include "pdf/TextSpan.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace leafwright {

/// The version a PDF file claims: the header's or, where that is later, the catalog's.
struct PDFVersion {
    int major = 1;
    int minor = 0;
};

/// What is read of a file once, on opening. For a locked file only the flags and the version hold.
struct PDFFacts {
    PDFVersion version;
    bool locked = false;      ///< A password is needed to read it.
    bool encrypted = false;   ///< It is encrypted, whether or not it opens without a password.
    bool unlocked = false;    ///< It needs a password, and was opened with it.
    bool repaired = false;    ///< Its cross-reference was damaged and had to be rebuilt.
    bool isSigned = false;    ///< It bears a digital signature.
    bool hasOutline = false;  ///< There is at least one outline entry.
    std::vector<PageGeometry> pages;
    std::vector<QString> labels;  ///< By page, parallel to `pages`.
};

/// What the rest of the program needs of a PDF library: one open file. All methods may be called from
/// any thread; those that read text work on readers of their own and run side by side.
class PDFEngine {
public:
    virtual ~PDFEngine() = default;

    virtual const PDFFacts &facts() const = 0;
    /// The same file, opened with the password that it is locked by. This engine stays as it is.
    /// @return an error of the kind Locked where that is not the password
    virtual Result<std::unique_ptr<PDFEngine>> unlocked(const QString &password) const = 0;
    /// Why something of the file could not be read that is there: the system would not read it, or memory or
    /// the time for a page ran out. Absent while all could be read that was asked for. What could not be read
    /// is left out where it is asked for, so whoever needs all asks this afterwards.
    virtual std::optional<PDFError> readProblem() const = 0;
    /// Whether all could be read that is written again. Memory or time that ran out for the text of pages
    /// does not matter there.
    virtual bool canBeWritten() const = 0;
    /// The text of a page; an empty one where the page can't be read. @param index 0-based, within range.
    virtual std::shared_ptr<const PageText> pageText(int index) const = 0;
    /// The box in page space of every UTF-16 unit of the page's text, parallel to its string.
    virtual std::vector<Rect> characterBoxes(int index) const = 0;
    /// The text of a page as spans of characters of one look, in content order. @param index 0-based, within
    /// range.
    virtual std::vector<TextSpan> textSpans(int index) const = 0;
    /// What the file says of itself; read anew each time.
    virtual DocumentMarks marks() const = 0;
    /// The text of marked content of a page, parallel to the identifiers; null where there is none.
    /// @param index 0-based, within range. @param identifiers each once
    virtual std::vector<QString> markedText(int index, const std::vector<int> &identifiers) const = 0;
    /// Draws part of a page on white; a page that can't be read is blank. Gives up on what takes seconds.
    /// @param stop ends the drawing early, with a null image
    /// @return an opaque image of the size of the clip; a null one when that is empty or too large
    virtual PageImage renderPage(const RenderRequest &request, const std::stop_token &stop) const = 0;
    /// The links of a page that lead into this document or to an address. @param index 0-based, within range.
    virtual std::vector<PDFLink> links(int index) const = 0;
    /// The outline as the file has it: a root, with no children where there is none. An error when an entry
    /// can't be read.
    virtual Result<std::unique_ptr<PDFOutline>> readOutline() const = 0;
    /// Writes the file with the outline in place of its own: the original bytes and one appended section,
    /// or, for a repaired file, the whole file new. `progress` gets the index of each page written.
    /// Refuses when pages, outline or anything else of the file could not be read; text that took too much
    /// memory or time does not matter.
    /// The new file is read back before this returns; that it is not what it was to be, is a failure too.
    /// @param descriptor of an empty regular file, open for reading and writing; it stays the caller's
    /// @return the reason when it fails; what has been written is then of no use
    virtual std::optional<PDFError> write(const PDFOutline &root, int descriptor,
                                          const std::function<void(int)> &progress) const = 0;
};

/// The library behind the engine, with its version: "MuPDF 1.21.1".
QString pdfEngineName();

}  // namespace leafwright

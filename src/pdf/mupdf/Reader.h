#pragma once

#include "pdf/mupdf/Context.h"
#include "pdf/mupdf/FileStream.h"
#include "pdf/mupdf/PageTree.h"

namespace leafwright::mupdf {

class DestinationReader;

/// A context with the document open in it: everything one thread needs to read the file.
class Reader {
public:
    /// Opens the document on the shared file. Throws Error when it is not a PDF beyond repair, ReadProblem
    /// when that can't be told.
    explicit Reader(std::shared_ptr<const FileHandle> file);
    ~Reader();
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    fz_context *context() const { return context_; }
    pdf_document *document() const { return document_; }
    const std::shared_ptr<const FileHandle> &file() const { return file_; }

    /// Whether a password is needed that we do not have.
    bool isLocked() const { return locked_; }
    /// Whether a password is needed, and the file has been given with it.
    bool isUnlocked() const { return unlocked_; }
    bool isEncrypted() const;
    /// Whether the cross-reference had to be rebuilt; damage may also come to light while reading.
    bool wasRepaired() const;
    /// Why this reader could not read all that it was asked for, although it is there.
    std::optional<PDFError> problem() const { return context_.problem(); }
    /// Throws the problem if there is one.
    void throwProblem() const { context_.throwProblem(); }

    Object trailer() const;
    Object catalog() const { return trailer().get(PDF_NAME(Root)); }
    /// Gives this reader the pages that were found, by this or another reader of the file.
    void setPages(std::shared_ptr<const PageTree> pages) { pages_ = std::move(pages); }
    const PageTree &pages() const { return *pages_; }
    /// The page at a 0-based index within range.
    Object page(int index);
    /// Keeps the names of destinations it has met, for links on many pages.
    DestinationReader &destinations();

private:
    void unlock();

    Context context_;
    std::shared_ptr<const FileHandle> file_;
    pdf_document *document_ = nullptr;
    bool locked_ = false;
    bool unlocked_ = false;
    std::shared_ptr<const PageTree> pages_ = std::make_shared<const PageTree>();
    std::vector<Object> directPages_;  ///< By index, the pages that are no objects of their own; once needed.
    std::unique_ptr<DestinationReader> destinations_;
};

}  // namespace leafwright::mupdf

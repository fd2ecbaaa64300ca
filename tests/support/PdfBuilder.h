#pragma once

#include <qpdf/QPDF.hh>

#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace leafwright::test {

/// Makes PDF files for tests with QPDF. Objects are given in PDF syntax: "<< /Type /Outlines >>".
class PdfBuilder {
public:
    PdfBuilder();

    /// Adds a US Letter page with the fonts of addFont() at hand.
    /// @param content the content stream, see showText()
    /// @param entries further entries of the page, such as "/Rotate 90"; they win over the defaults
    /// @return the page's 0-based index
    int addPage(const std::string &content = {}, const std::string &entries = {});
    /// Adds `count` pages, each with one line of text that says its number: "Page 3".
    void addNumberedPages(int count);

    /// Gives all pages a font under a resource name. F1 to F4 are there from the start: Helvetica,
    /// Helvetica-Bold, Times-Italic and Times-BoldItalic. @param dictionary the font dictionary
    void addFont(const std::string &name, const std::string &dictionary);

    /// Adds an indirect object. @return its object number
    int addObject(const std::string &object);
    /// Adds a stream. @param entries of its dictionary, such as "/Type /XObject"
    int addStream(const std::string &data, const std::string &entries = {});
    /// A stream that belongs to the last page, of so many bytes that no compression makes fewer, the same in
    /// each run. It stands in the file near what leads to the page.
    int addNoise(size_t size);
    void replaceObject(int number, const std::string &object);
    /// Sets an entry of the catalog. @param key with its slash
    void setCatalogEntry(const std::string &key, const std::string &object);

    /// Sets an entry of the document information. @param key with its slash
    void setInformation(const std::string &key, const std::string &object);

    /// The page's reference in PDF syntax: "3 0 R".
    std::string pageReference(int index) const;
    static std::string reference(int number) { return std::to_string(number) + " 0 R"; }

    /// How a file is saved.
    struct Options {
        std::string version = "1.4";
        bool objectStreams = false;
        bool linearized = false;
        /// With either password the file is encrypted; with a user password it is locked as well.
        std::string userPassword = {};
        std::string ownerPassword = {};
        /// How it is encrypted: the revision of the standard security handler (ISO 32000-2, table 21), 3, 4
        /// or 6.
        int encryption = 6;
    };
    void save(const QString &path, const Options &options) const;
    void save(const QString &path) const { save(path, Options()); }

    /// The content that shows a line of text. @param font resource name, such as "F1" @param size in points
    /// @param text ASCII without parentheses or backslashes
    static std::string showText(const std::string &font, double size, double x, double y,
                                const std::string &text);

private:
    std::shared_ptr<QPDF> pdf_ = QPDF::create();
    QPDFObjectHandle fonts_;
    std::vector<QPDFObjectHandle> pages_;
};

/// One outline entry for addOutline(): a title and a destination, both in PDF syntax; the destination may be
/// empty. `{"(Intro)", "[3 0 R /XYZ 72 700 null]"}`
struct OutlineEntry {
    std::string title;
    std::string destination;
    std::vector<OutlineEntry> children = {};
};

/// Gives the PDF an outline with the usual links. @return object numbers of all entries in tree order
std::vector<int> addOutline(PdfBuilder &pdf, const std::vector<OutlineEntry> &entries);

}  // namespace leafwright::test

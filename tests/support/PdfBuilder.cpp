#include "support/PdfBuilder.h"

#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <QFile>
#include <QRandomGenerator>

#include <sstream>

namespace leafwright::test {

namespace {

/// QPDF reads a lone reference as a number and more; in an array it reads it as what it is.
QPDFObjectHandle parse(QPDF &pdf, const std::string &object) {
    return QPDFObjectHandle::parse(&pdf, "[" + object + "\n]").getArrayItem(0);
}

}  // namespace

PdfBuilder::PdfBuilder() {
    pdf_->emptyPDF();
    fonts_ = pdf_->makeIndirectObject(QPDFObjectHandle::newDictionary());
    const auto standard = [](const char *name) {
        return std::string("<< /Type /Font /Subtype /Type1 /Encoding /WinAnsiEncoding /BaseFont /") + name +
               " >>";
    };
    addFont("F1", standard("Helvetica"));
    addFont("F2", standard("Helvetica-Bold"));
    addFont("F3", standard("Times-Italic"));
    addFont("F4", standard("Times-BoldItalic"));
}

int PdfBuilder::addPage(const std::string &content, const std::string &entries) {
    QPDFObjectHandle page = QPDFObjectHandle::parse("<< /Type /Page /MediaBox [0 0 612 792] >>");
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    resources.replaceKey("/Font", fonts_);
    page.replaceKey("/Resources", resources);
    page.replaceKey("/Contents", pdf_->newStream(content));
    QPDFObjectHandle further = parse(*pdf_, "<<" + entries + ">>");
    for (const std::string &key : further.getKeys())
        page.replaceKey(key, further.getKey(key));
    page = pdf_->makeIndirectObject(page);
    QPDFPageDocumentHelper(*pdf_).addPage(QPDFPageObjectHelper(page), false);
    pages_.push_back(page);
    return static_cast<int>(pages_.size()) - 1;
}

void PdfBuilder::addNumberedPages(int count) {
    for (int i = 0; i < count; ++i) {
        addPage(showText("F1", 10, 72, 700, "Page " + std::to_string(pages_.size() + 1)));
    }
}

void PdfBuilder::addFont(const std::string &name, const std::string &dictionary) {
    fonts_.replaceKey("/" + name, pdf_->makeIndirectObject(parse(*pdf_, dictionary)));
}

int PdfBuilder::addObject(const std::string &object) {
    return pdf_->makeIndirectObject(parse(*pdf_, object)).getObjectID();
}

int PdfBuilder::addStream(const std::string &data, const std::string &entries) {
    QPDFObjectHandle stream = pdf_->newStream(data);
    QPDFObjectHandle further = parse(*pdf_, "<<" + entries + ">>");
    for (const std::string &key : further.getKeys())
        stream.getDict().replaceKey(key, further.getKey(key));
    return stream.getObjectID();
}

int PdfBuilder::addNoise(size_t size) {
    QRandomGenerator random(1);
    std::string bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.generate());
    const int number = addStream(bytes);
    // Of what nothing leads to, QPDF writes nothing.
    pages_.back().replaceKey("/Noise", parse(*pdf_, reference(number)));
    return number;
}

void PdfBuilder::replaceObject(int number, const std::string &object) {
    pdf_->replaceObject(number, 0, parse(*pdf_, object));
}

void PdfBuilder::setCatalogEntry(const std::string &key, const std::string &object) {
    pdf_->getRoot().replaceKey(key, parse(*pdf_, object));
}

void PdfBuilder::setInformation(const std::string &key, const std::string &object) {
    QPDFObjectHandle trailer = pdf_->getTrailer();
    if (!trailer.hasKey("/Info"))
        trailer.replaceKey("/Info", pdf_->makeIndirectObject(QPDFObjectHandle::newDictionary()));
    trailer.getKey("/Info").replaceKey(key, parse(*pdf_, object));
}

std::string PdfBuilder::pageReference(int index) const {
    return reference(pages_.at(static_cast<size_t>(index)).getObjectID());
}

namespace {

void encrypt(QPDFWriter &writer, const PdfBuilder::Options &options) {
    const char *user = options.userPassword.c_str();
    const char *owner = options.ownerPassword.c_str();
    if (options.encryption == 3) {
        writer.setR3EncryptionParametersInsecure(user, owner, true, true, true, true, true, true,
                                                 qpdf_r3p_full);
    } else if (options.encryption == 4) {
        writer.setR4EncryptionParametersInsecure(user, owner, true, true, true, true, true, true,
                                                 qpdf_r3p_full, true, true);
    } else {
        writer.setR6EncryptionParameters(user, owner, true, true, true, true, true, true, qpdf_r3p_full,
                                         true);
    }
}

}  // namespace

void PdfBuilder::save(const QString &path, const Options &options) const {
    QPDFWriter writer(*pdf_, QFile::encodeName(path).constData());
    writer.setStaticID(true);
    writer.setPreserveEncryption(false);
    writer.setObjectStreamMode(options.objectStreams ? qpdf_o_generate : qpdf_o_disable);
    writer.setLinearization(options.linearized);
    if (options.userPassword.empty() && options.ownerPassword.empty()) {
        writer.forcePDFVersion(options.version);
    } else {
        encrypt(writer, options);
    }
    writer.write();
}

std::string PdfBuilder::showText(const std::string &font, double size, double x, double y,
                                 const std::string &text) {
    std::ostringstream content;
    content << "BT /" << font << ' ' << size << " Tf 1 0 0 1 " << x << ' ' << y << " Tm (" << text
            << ") Tj ET\n";
    return content.str();
}

namespace {

/// Makes the entries of one level and everything below; returns the object numbers of the level.
std::vector<int> addLevel(PdfBuilder &pdf, const std::vector<OutlineEntry> &entries, int parent,
                          std::vector<int> &all) {
    std::vector<int> numbers;
    for (size_t i = 0; i < entries.size(); ++i)
        numbers.push_back(pdf.addObject("null"));
    for (size_t i = 0; i < entries.size(); ++i) {
        all.push_back(numbers[i]);
        const std::vector<int> children = addLevel(pdf, entries[i].children, numbers[i], all);
        std::string object = "<< /Parent " + PdfBuilder::reference(parent);
        if (!entries[i].title.empty()) object += " /Title " + entries[i].title;
        if (!entries[i].destination.empty()) object += " /Dest " + entries[i].destination;
        if (i > 0) object += " /Prev " + PdfBuilder::reference(numbers[i - 1]);
        if (i + 1 < entries.size()) object += " /Next " + PdfBuilder::reference(numbers[i + 1]);
        if (!children.empty()) {
            object += " /First " + PdfBuilder::reference(children.front()) + " /Last " +
                      PdfBuilder::reference(children.back()) + " /Count " + std::to_string(children.size());
        }
        pdf.replaceObject(numbers[i], object + " >>");
    }
    return numbers;
}

}  // namespace

std::vector<int> addOutline(PdfBuilder &pdf, const std::vector<OutlineEntry> &entries) {
    const int root = pdf.addObject("null");
    std::vector<int> all;
    const std::vector<int> top = addLevel(pdf, entries, root, all);
    std::string object = "<< /Type /Outlines";
    if (!top.empty()) {
        object += " /First " + PdfBuilder::reference(top.front()) + " /Last " +
                  PdfBuilder::reference(top.back()) + " /Count " + std::to_string(top.size());
    }
    pdf.replaceObject(root, object + " >>");
    pdf.setCatalogEntry("/Outlines", PdfBuilder::reference(root));
    return all;
}

}  // namespace leafwright::test

#include "support/EntriesOfAllKinds.h"

#include <QByteArray>

namespace leafwright::test {

void addEntries(PdfBuilder &pdf, const std::vector<std::string> &keys) {
    const auto count = static_cast<int>(keys.size());
    const int root = pdf.addObject("null");
    std::vector<int> entries;
    for (int i = 0; i < count + 2; ++i)
        entries.push_back(pdf.addObject("null"));
    const auto link = [&](const char *key, int number) {
        return std::string(key) + ' ' + PdfBuilder::reference(number) + ' ';
    };
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<size_t>(i);
        std::string links = link("/Parent", root);
        if (i > 0) links += link("/Prev", entries[at - 1]);
        if (i + 1 < count) links += link("/Next", entries[at + 1]);
        if (i + 1 == count)
            links += link("/First", entries[at + 1]) + link("/Last", entries[at + 2]) + "/Count 2";
        pdf.replaceObject(entries[at],
                          "<< /Title <FEFF" +
                              QByteArray::number(0x30 + i, 16).rightJustified(4, '0').toStdString() + "> " +
                              links + ' ' + keys[at] + " >>");
    }
    const auto last = static_cast<size_t>(count - 1);
    pdf.replaceObject(entries[last + 1], "<< /Title (a) " + link("/Parent", entries[last]) +
                                             link("/Next", entries[last + 2]) + " >>");
    pdf.replaceObject(entries[last + 2], "<< /Title (b) " + link("/Parent", entries[last]) +
                                             link("/Prev", entries[last + 1]) + " >>");
    pdf.replaceObject(root, "<< /Type /Outlines " + link("/First", entries[0]) +
                                link("/Last", entries[last]) + "/Private true /Count " +
                                std::to_string(count + 2) + " >>");
    pdf.setCatalogEntry("/Outlines", PdfBuilder::reference(root));
}

void addEntriesOfAllKinds(PdfBuilder &pdf) {
    const std::string page = pdf.pageReference(1);
    const std::string structure = PdfBuilder::reference(pdf.addObject("<< /Type /StructElem /S /H1 >>"));
    const std::vector<std::string> keys{
        "/Dest [" + page + " /XYZ 72.00000001 700 1.5] /C [1 0.50000001 0] /F 3 /Private (mine)",
        "/Dest (named) /SE " + structure,
        "/A << /S /GoTo /D [" + page + " /FitH 500] /Next << /S /Named /N /NextPage >> >> /F 1",
        "/A << /S /GoTo /D (named) /SD [" + structure + " /Fit] >>",
        "/A << /S /GoToR /F (other.pdf) /D [3 /Fit] /NewWindow true >>",
        "/A << /S /GoToE /D (there) /T << /R /C /N (file) >> >>",
        "/A << /S /GoToDp /Dp << /Type /DPart >> >>",
        "/A << /S /Launch /F (program) >>",
        "/A << /S /Thread /D 0 >>",
        "/A << /S /URI /URI (about:blank) /IsMap false /Next [<< /S /URI /URI (b) >>] >> /C [0 0 1]",
        "/A << /S /Sound /Volume 0.50000000001 >>",
        "/A << /S /Movie /T (film) >>",
        "/A << /S /Hide /T (field) /H false >>",
        "/A << /S /Named /N /LastPage >> /F 2",
        "/A << /S /SubmitForm /F (about:blank) /Flags 4 >>",
        "/A << /S /ResetForm >>",
        "/A << /S /ImportData /F (data.fdf) >>",
        "/A << /S /SetOCGState /State [/ON] >>",
        "/A << /S /Rendition /OP 0 >>",
        "/A << /S /Trans /Trans << /S /Wipe >> >>",
        "/A << /S /GoTo3DView /V /F >>",
        "/A << /S /JavaScript /JS (app.beep\\(\\)) >>",
        "/A << /S /RichMediaExecute /CMD << /C (play) >> >>",
        "/Private << /Nested [ null 1.10 (x) ] >> /PieceInfo << >>"};
    pdf.setCatalogEntry("/Dests", "<< /Unused [" + page + " /Fit] >>");
    pdf.setCatalogEntry("/Names", "<< /Dests << /Names [(named) [" + page + " /XYZ 10 20 null]] >> >>");
    addEntries(pdf, keys);
}

}  // namespace leafwright::test

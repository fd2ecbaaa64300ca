#include "support/BookPdf.h"

namespace leafwright::test {

PdfBuilder makeBook(const std::string &pageLabels, const BookExtras &extras) {
    const std::vector<std::string> titles = {"1 Soil",      "1.1 What is in the Ground",
                                             "1.2 Compost", "2 Water",
                                             "2.1 Rain",    "2.2 Wells",
                                             "3 Light",     "3.1 Shade",
                                             "3.2 Glass"};
    const auto show = PdfBuilder::showText;
    const auto isChapter = [](const std::string &title) { return title[1] == ' '; };
    PdfBuilder pdf;
    std::string contents = show("F2", 20, 72, 720, "Contents");
    double y = 680;
    for (size_t i = 0; i < titles.size(); ++i, y -= 16) {
        const double x = isChapter(titles[i]) ? 72 : 90;
        contents += show("F1", 10, x, y, titles[i] + " . . . . . . . . . . .");
        contents += show("F1", 10, 500, y, std::to_string(i + 2));
    }
    pdf.addPage(contents + show("F1", 10, 300, 40, "1"), extras.contentsEntries);
    for (size_t i = 0; i < titles.size(); ++i) {
        std::string page = show("F2", isChapter(titles[i]) ? 20 : 14, 72, 700, titles[i]);
        const auto addLine = [&](int line, double lineY) {
            page += show("F1", 10, 72, lineY,
                         "Line " + std::to_string(line) + " of page " + std::to_string(i + 2) +
                             " says what there is to know about it, in plain words.");
        };
        for (int line = 0; line < 30; ++line)
            addLine(line, 660 - 12 * line);
        const std::vector<std::string> &below = extras.headingsBelow;
        if (i < below.size() && !below[i].empty()) {
            page += show("F2", 12, 72, 260, below[i]);
            for (int line = 30; line < 40; ++line)
                addLine(line, 596 - 12 * line);
        }
        pdf.addPage(page + show("F1", 10, 300, 40, std::to_string(i + 2)));
    }
    if (!pageLabels.empty()) pdf.setCatalogEntry("/PageLabels", pageLabels);
    addOutline(pdf, {{"(Old Entry)", "[" + pdf.pageReference(1) + " /XYZ 10 20 null]"}});
    return pdf;
}

}  // namespace leafwright::test

#include "contents/ContentsStages.h"

namespace leafwright {

namespace {

QString number(double value) {
    return QString::number(value, 'f', 1);
}

void explainBody(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const BodyStyle &body = stages.body;
    lines += QStringLiteral("Body text: %1 %2%3, leading %4")
                 .arg(number(body.size), body.family, body.bold ? QStringLiteral(" bold") : QString(),
                      number(body.leading));
}

void explainRunningHeads(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    int running = 0;
    for (const PageLines &page : stages.pages) {
        for (const TextLine &line : page.lines)
            running += line.isRunning ? 1 : 0;
    }
    lines += QStringLiteral("Running heads and feet: %1 lines").arg(running);
}

void explainPrinted(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const PrintedContents &printed = stages.printed;
    if (printed.entries.empty()) {
        lines += QStringLiteral("Printed contents: none");
        return;
    }
    lines += QStringLiteral("Printed contents: pages %1 to %2, %3 entries, %4 % found on their pages")
                 .arg(printed.region.firstPage + 1)
                 .arg(printed.region.lastPage + 1)
                 .arg(printed.entries.size())
                 .arg(100 * printed.locatedShare(), 0, 'f', 0);
    for (const PrintedEntry &entry : printed.entries) {
        lines += QStringLiteral("  level %1, number \"%2\", page %3, score %4: %5")
                     .arg(entry.level)
                     .arg(entry.number)
                     .arg(entry.page + 1)
                     .arg(entry.score, 0, 'f', 0)
                     .arg(entry.title);
    }
}

void explainStyles(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const std::vector<std::vector<size_t>> members = stages.headings.byStyle();
    for (size_t i = 0; i < members.size(); ++i) {
        const StyleKey &style = stages.headings.styles[i];
        lines += QStringLiteral("Style %1: %2 %3%4%5%6, %7 candidates")
                     .arg(i)
                     .arg(number(style.size), style.family, style.bold ? QStringLiteral(" bold") : QString(),
                          style.italic ? QStringLiteral(" italic") : QString(),
                          style.capitals ? QStringLiteral(" capitals") : QString())
                     .arg(members[i].size());
        for (const size_t member : members[i]) {
            const HeadingCandidate &candidate = stages.headings.candidates[member];
            lines += QStringLiteral("  %1 on page %2: %3")
                         .arg(candidate.probability, 0, 'f', 2)
                         .arg(candidate.block.page + 1)
                         .arg(candidate.block.text);
        }
    }
}

}  // namespace

QString explainStages(const ContentsAnalysis::Stages &stages) {
    QStringList lines;
    lines += QStringLiteral("Pages: %1").arg(stages.pages.size());
    if (!stages.hasText) return lines.front() + QStringLiteral("\nText: none or too little\n");
    explainBody(stages, lines);
    explainRunningHeads(stages, lines);
    explainPrinted(stages, lines);
    explainStyles(stages, lines);
    lines += QStringLiteral("Named headings: %1").arg(stages.named.size());
    lines += QStringLiteral("Headings of the structure: %1").arg(stages.structure.size());
    return lines.join(u'\n') + u'\n';
}

}  // namespace leafwright

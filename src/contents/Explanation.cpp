#include "contents/ContentsStages.h"
#include "contents/StyleLevels.h"
#include "contents/TextFolding.h"

#include <algorithm>
#include <map>

namespace leafwright {

namespace {

QString number(double value) {
    return QString::number(value, 'f', 1);
}

void explainPages(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    lines += QStringLiteral("Pages: %1").arg(stages.pages.size());
    const auto recognised = std::count_if(stages.pages.begin(), stages.pages.end(),
                                          [](const PageLines &page) { return page.isRecognised; });
    if (recognised > 0) lines += QStringLiteral("Pages whose text was recognised: %1").arg(recognised);
}

void explainBody(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const BodyStyle &body = stages.body;
    lines += QStringLiteral("Body text: %1 %2%3, leading %4")
                 .arg(number(body.size), body.family, body.bold ? QStringLiteral(" bold") : QString(),
                      number(body.leading));
}

/// Each text that runs over pages, with how often it does. Those without letters are the page numbers.
void explainRunningHeads(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    int running = 0;
    std::map<QString, int> texts;
    for (const PageLines &page : stages.pages) {
        for (const TextLine &line : page.lines) {
            if (!line.isRunning) continue;
            ++running;
            if (countLetters(line.text) > 0) ++texts[line.text];
        }
    }
    lines += QStringLiteral("Running heads and feet: %1 lines").arg(running);
    for (const auto &[text, count] : texts)
        lines += QStringLiteral("  %1 times: %2").arg(count).arg(text);
}

/// "1 to 12 on pages 5 to 16, 14 on page 18"
QString runsOf(const QHash<int, std::vector<int>> &pagesOfNumbers) {
    struct Run {
        int number;
        int page;
        int length;
    };
    const std::map<int, std::vector<int>> ordered(pagesOfNumbers.keyValueBegin(),
                                                  pagesOfNumbers.keyValueEnd());
    std::vector<Run> runs;
    for (const auto &item : ordered) {
        const int value = item.first;
        for (const int page : item.second) {
            const auto goesOn = std::find_if(runs.begin(), runs.end(), [&](const Run &run) {
                return run.number + run.length == value && run.page + run.length == page;
            });
            goesOn == runs.end() ? runs.push_back({value, page, 1}) : void(++goesOn->length);
        }
    }
    QStringList texts;
    for (const Run &run : runs) {
        const int last = run.length - 1;
        texts += last == 0 ? QStringLiteral("%1 on page %2").arg(run.number).arg(run.page + 1)
                           : QStringLiteral("%1 to %2 on pages %3 to %4")
                                 .arg(run.number)
                                 .arg(run.number + last)
                                 .arg(run.page + 1)
                                 .arg(run.page + last + 1);
    }
    return texts.isEmpty() ? QStringLiteral("none") : texts.join(QStringLiteral(", "));
}

void explainNumbers(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const PrintedNumbers &numbers = *stages.numbers;
    lines += QStringLiteral("Printed numbers: %1").arg(runsOf(numbers.decimal()));
    lines += QStringLiteral("Printed roman numbers: %1").arg(runsOf(numbers.roman()));
    lines += QStringLiteral("Printed numbers of chapter and page: %1").arg(numbers.compound().size());
    lines += QStringLiteral("Page labels: %1").arg(numbers.labels().size());
}

QString verdictOf(const TriedContents &tried) {
    switch (tried.verdict) {
        case TriedContents::Verdict::TooFewEntries:
            return QStringLiteral("refused: too few entries");
        case TriedContents::Verdict::NoContents:
            return QStringLiteral("refused: the entries do not rise, or their headings are not on the pages");
        case TriedContents::Verdict::Captions:
            return QStringLiteral("refused: a list of figures or the like");
        case TriedContents::Verdict::FewerFound:
            return QStringLiteral("refused: another has more of its headings on the pages, or about as many");
        case TriedContents::Verdict::Taken:
            break;
    }
    return QStringLiteral("taken");
}

void explainTried(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    lines += QStringLiteral("Contents tried: %1").arg(stages.printed.tried.size());
    for (const TriedContents &tried : stages.printed.tried) {
        lines +=
            QStringLiteral("Pages %1 to %2%3: %4")
                .arg(tried.region.firstPage + 1)
                .arg(tried.region.lastPage + 1)
                .arg(tried.isTagged ? QStringLiteral(", by the structure") : QString(), verdictOf(tried));
        for (const TriedRow &row : tried.rows) {
            lines +=
                QStringLiteral("  %1 on page %2%3%4: %5")
                    .arg(row.isEntry ? QStringLiteral("entry row") : QStringLiteral("row"))
                    .arg(row.page + 1)
                    .arg(row.number.isEmpty() ? QString() : QStringLiteral(", number \"%1\"").arg(row.number),
                         row.isLinked ? QStringLiteral(", linked") : QString(), row.title);
        }
        if (tried.areCountedByChapter)
            lines += QStringLiteral("  Page numbers: counted anew in each chapter");
        lines += QStringLiteral("  Entries resolved: %1, of which found on their pages: %2")
                     .arg(tried.resolved)
                     .arg(tried.located);
        lines += QStringLiteral("  Entries unresolved: %1").arg(tried.lost.size());
        for (const PrintedEntry &entry : tried.lost) {
            lines +=
                QStringLiteral("    number \"%1\"%2: %3")
                    .arg(entry.number, entry.isBeyond ? QStringLiteral(", behind the last page") : QString(),
                         entry.title);
        }
    }
}

void explainPrinted(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const PrintedContents &printed = stages.printed;
    if (printed.entries.empty()) {
        lines += QStringLiteral("Printed contents: none");
        return;
    }
    lines += QStringLiteral("Printed contents: pages %1 to %2%3, %4 entries, %5 % found on their pages")
                 .arg(printed.region.firstPage + 1)
                 .arg(printed.region.lastPage + 1)
                 .arg(printed.isTagged ? QStringLiteral(", by the structure") : QString())
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

/// The level of each likely heading by its style, where no contents tell.
std::map<size_t, int> levelsByStyle(const ContentsAnalysis::Stages &stages) {
    std::vector<size_t> likely;
    for (size_t i = 0; i < stages.headings.candidates.size(); ++i) {
        if (stages.headings.candidates[i].probability >= acceptedProbability) likely.push_back(i);
    }
    const std::vector<int> levels = styleLevels(stages.headings, likely, stages.body);
    std::map<size_t, int> result;
    for (size_t k = 0; k < likely.size(); ++k)
        result[likely[k]] = levels[k];
    return result;
}

void explainStyles(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    const std::vector<std::vector<size_t>> members = stages.headings.byStyle();
    const std::map<size_t, int> levels = levelsByStyle(stages);
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
            const auto level = levels.find(member);
            lines += QStringLiteral("  %1 on page %2%3: %4")
                         .arg(candidate.probability, 0, 'f', 2)
                         .arg(candidate.block.page + 1)
                         .arg(level == levels.end() ? QString()
                                                    : QStringLiteral(", style level %1").arg(level->second),
                              candidate.block.text);
        }
    }
}

void explainNamed(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    lines += QStringLiteral("Named headings: %1").arg(stages.named.size());
    const std::map<int, NamedHeading> ordered(stages.named.keyValueBegin(), stages.named.keyValueEnd());
    for (const auto &[candidate, named] : ordered) {
        lines += QStringLiteral("  depth %1%2: %3")
                     .arg(named.depth)
                     .arg(named.isStarred ? QStringLiteral(", without number") : QString(),
                          stages.headings.candidates[static_cast<size_t>(candidate)].block.text);
    }
}

void explainStructure(const ContentsAnalysis::Stages &stages, QStringList &lines) {
    lines += QStringLiteral("Headings of the structure: %1").arg(stages.structure.size());
    for (const LocatedStructureHeading &heading : stages.structure) {
        lines +=
            QStringLiteral("  level %1, page %2%3: %4")
                .arg(heading.level)
                .arg(heading.page + 1)
                .arg(heading.line.isNull() ? QStringLiteral(", not found there") : QString(), heading.title);
    }
}

QString nameOf(ContentsBasis basis) {
    switch (basis) {
        case ContentsBasis::Structure:
            return QStringLiteral("the structure");
        case ContentsBasis::Printed:
            return QStringLiteral("the printed contents");
        case ContentsBasis::Headings:
            break;
    }
    return QStringLiteral("names and styles");
}

QString evidenceOf(ContentsSources sources) {
    constexpr std::pair<ContentsSource, const char *> names[] = {{PrintedSource, "printed"},
                                                                 {StyleSource, "style"},
                                                                 {LinkSource, "link"},
                                                                 {NameSource, "name"},
                                                                 {StructureSource, "structure"}};
    QStringList evidence;
    for (const auto &[source, name] : names) {
        if (sources & source) evidence += QLatin1String(name);
    }
    return evidence.join(u' ');
}

}  // namespace

QString explainStages(const ContentsAnalysis::Stages &stages) {
    QStringList lines;
    explainPages(stages, lines);
    if (!stages.hasText) {
        lines += QStringLiteral("Text: none or too little");
        return lines.join(u'\n') + u'\n';
    }
    explainBody(stages, lines);
    explainRunningHeads(stages, lines);
    explainNumbers(stages, lines);
    explainTried(stages, lines);
    explainPrinted(stages, lines);
    explainStyles(stages, lines);
    explainNamed(stages, lines);
    explainStructure(stages, lines);
    return lines.join(u'\n') + u'\n';
}

QString explainOutline(const ContentsAnalysis::Stages &stages, ContentsDepth depth,
                       const FoundContents &found) {
    if (!stages.hasText) return {};
    QStringList lines;
    lines += QStringLiteral("Outline by %1: %2 entries")
                 .arg(nameOf(basisOf(stages, depth)))
                 .arg(found.entries.size());
    for (const ContentsEntry &entry : found.entries) {
        lines += QStringLiteral("  level %1, page %2, %3 by %4: %5")
                     .arg(entry.level)
                     .arg(entry.pageIndex + 1)
                     .arg(entry.confidence, 0, 'f', 2)
                     .arg(evidenceOf(entry.sources), entry.title);
    }
    return lines.join(u'\n') + u'\n';
}

}  // namespace leafwright

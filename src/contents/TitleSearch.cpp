#include "contents/TitleSearch.h"

#include "contents/Numbering.h"
#include "contents/SequenceRatio.h"
#include "contents/TextFolding.h"
#include "pdf/ReadAhead.h"

#include <cmath>

namespace leafwright {

namespace {

constexpr double exactScore = 100;

/// The line that may hold the next words of a title.
const TextLine *continuation(const PageLines &page, const TextLine &line, bool anyGap) {
    constexpr double widestLeading = 2.2;
    const TextLine *next = page.nextOf(line);
    if (!next || next->isRunning) return nullptr;
    const double widest = widestLeading * std::max(line.look.size, next->look.size) + 2;
    return anyGap || next->baseline - line.baseline <= widest ? next : nullptr;
}

QString joined(const QString &upper, const QString &lower) {
    const bool hyphen =
        upper.size() > 1 && upper.back() == u'-' && upper[upper.size() - 2].isLetterOrNumber();
    return hyphen || meetWithoutBlank(upper, lower) ? upper + lower : upper + u' ' + lower;
}

bool beginsAnyOf(const QStringList &forms, const QStringList &lineForms) {
    for (const QString &lineForm : lineForms) {
        for (const QString &form : forms) {
            if (form.startsWith(lineForm)) return true;
        }
    }
    return false;
}

/// The score of a line that is not the title, but begins with it or is much like it.
double roughScore(const QStringList &forms, const QStringList &lineForms) {
    constexpr qsizetype fewestToBegin = 6;
    constexpr qsizetype fewestToCompare = 8;
    constexpr qsizetype longEnough = 10;
    constexpr double runInScore = 62;
    constexpr double shortRunInScore = 50;
    constexpr double alikeScore = 80;
    constexpr double leastRatio = 0.84;
    constexpr double lengthDifference = 0.25;
    double score = 0;
    for (const QString &line : lineForms) {
        for (const QString &form : forms) {
            if (form.size() >= fewestToBegin && line.size() > form.size() && line.startsWith(form)) {
                score = std::max(score, form.size() > longEnough ? runInScore : shortRunInScore);
                continue;
            }
            const auto difference = static_cast<double>(std::abs(form.size() - line.size()));
            if (form.size() < fewestToCompare ||
                difference > lengthDifference * static_cast<double>(form.size()))
                continue;
            const double ratio = sequenceRatio(form, line, leastRatio);
            if (ratio > leastRatio) score = std::max(score, alikeScore * ratio);
        }
    }
    return score;
}

}  // namespace

const std::vector<QStringList> &TitleSearch::formsOf(int page) {
    std::optional<std::vector<QStringList>> &forms = forms_[static_cast<size_t>(page)];
    if (forms) return *forms;
    forms.emplace();
    for (const TextLine &line : pages_[static_cast<size_t>(page)].lines)
        forms->push_back(titleForms(line.text));
    return *forms;
}

void TitleSearch::prepare(const QSet<int> &pages) {
    const std::vector<int> all(pages.begin(), pages.end());
    onAllCores(static_cast<int>(all.size()), [&](int i) { formsOf(all[static_cast<size_t>(i)]); });
}

double TitleSearch::lookBonus(const TextLine &line) const {
    constexpr double runningMalus = 25;
    constexpr double sizeBonus = 6;
    constexpr double boldBonus = 4;
    constexpr double paragraphMalus = 8;
    double bonus = sizeBonus * std::clamp(line.look.size / body_.size - 1, -0.5, 1.0);
    if (line.isRunning) bonus -= runningMalus;
    if (line.look.bold) bonus += boldBonus;
    if (line.isBody && line.previous >= 0 && line.gapAbove < 1.25 * body_.leading) bonus -= paragraphMalus;
    return bonus;
}

TitlePlace TitleSearch::match(const QStringList &forms, const PageLines &page, int index,
                              const QStringList &lineForms) const {
    constexpr int mostLines = 4;
    constexpr double malusPerLine = 0.5;
    const TextLine *line = &page.line(index);
    const bool isLabel = isChapterLabel(line->text);
    QString text = line->text;
    QStringList current = lineForms;
    for (int count = 1; count <= mostLines; ++count) {
        if (shareForm(current, forms))
            return {exactScore - malusPerLine * (count - 1), {line->page, index}, count};
        if (!beginsAnyOf(forms, current)) break;
        line = continuation(page, *line, count == 1 && isLabel);
        if (!line) break;
        text = joined(text, line->text);
        current = titleForms(text);
    }
    return {roughScore(forms, lineForms), {page.line(index).page, index}, 1};
}

std::optional<TitlePlace> TitleSearch::locate(const QStringList &forms, int page, std::optional<double> y) {
    constexpr double mostDistanceMalus = 12;
    constexpr double pointsPerMalus = 12;
    if (page < 0 || page >= static_cast<int>(pages_.size())) return std::nullopt;
    const PageLines &lines = pages_[static_cast<size_t>(page)];
    const std::vector<QStringList> &lineForms = formsOf(page);
    std::optional<TitlePlace> best;
    for (int i = 0; i < static_cast<int>(lines.lines.size()); ++i) {
        const TextLine &line = lines.line(i);
        const QStringList &own = lineForms[static_cast<size_t>(i)];
        if (own.isEmpty() || line.inContents) continue;
        TitlePlace place = match(forms, lines, i, own);
        if (place.score <= 0) continue;
        place.score += lookBonus(line);
        if (y)
            place.score -=
                std::min(mostDistanceMalus, std::abs(line.baseline - *y - line.look.size) / pointsPerMalus);
        if (!best || place.score > best->score) best = place;
    }
    return best;
}

}  // namespace leafwright

#include "autotoc/FontCensus.h"

#include "categories/RunWalk.h"

namespace leafwright {

namespace {

constexpr qsizetype longestSample = 120;  // UTF-16 units

QString sampleOf(const QString &text) {
    QString sample = text.simplified().left(longestSample);
    if (!sample.isEmpty() && sample.back().isHighSurrogate()) sample.chop(1);
    return sample;
}

}  // namespace

void FontCensus::count(const Font &font, qint64 characters, const QString &text) {
    auto index = indexByFont_.constFind(font);
    if (index == indexByFont_.constEnd()) {
        index = indexByFont_.insert(font, entries_.size());
        entries_.push_back({font, {}, sampleOf(text)});
    }
    FontRecord &record = entries_[*index].record;
    record = {record.charCount + characters, record.instances + 1};
}

FontRecord FontCensus::record(const Font &font) const {
    const auto index = indexByFont_.constFind(font);
    return index == indexByFont_.constEnd() ? FontRecord{} : entries_[*index].record;
}

const FontCensus::Entry *FontCensus::bodyFont() const {
    const Entry *best = nullptr;
    for (const Entry &entry : entries_) {
        if (entry.record.charCount > (best ? best->record.charCount : 0)) best = &entry;
    }
    return best;
}

FontCensus calcFontsInDocument(const TextPages &pages) {
    FontCensus census;
    for (int page = 0; page < pages.pageCount(); ++page) {
        walkRuns(pages.pageText(page)->attributedString, [&census](const CleanedRun &run) {
            if (hasLetters(run.text)) census.count(run.font, run.text.size(), run.text);
        });
    }
    return census;
}

}  // namespace leafwright

#pragma once

#include "texts/FoldedText.h"

#include <QStringList>

#include <stop_token>
#include <vector>

namespace leafwright {

/// Titles of which those that contain a text are looked for, as FoldedText compares them. What is made of the
/// titles for that is kept from the first search on. For one thread at a time.
class TitleFilter {
public:
    explicit TitleFilter(QStringList titles) : titles_(std::move(titles)) {}

    /// The positions of the titles that contain a text; those of all for an empty one. Ends early on request,
    /// with less than all.
    std::vector<size_t> matches(const QString &text, const std::stop_token &stop = {});

private:
    QStringList titles_;
    std::vector<FoldedText> folded_;  ///< Of the first so many titles.
};

}  // namespace leafwright

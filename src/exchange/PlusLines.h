#pragma once

#include "exchange/OutlineFormat.h"

namespace leafwright {

// A line an entry: "+ @5 Chapter One" and "++ @7 First Section". Line ends in titles become blanks.

void writePlusLines(const MyOutlineItem &root, const PageOfItem &pageOf, const TextSink &sink);

/// A line goes below the nearest one before it with fewer "+".
OutlineTree readPlusLines(const QByteArray &text, const OutlineSource &source);

bool looksLikePlusLines(QByteArrayView text);

}  // namespace leafwright

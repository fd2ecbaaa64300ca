#pragma once

#include <QList>
#include <QString>

/// Pages from one on are labelled 1, 2, ... in a style.
struct LabelRange {
    int firstPage;  ///< From 0.
    char style;     ///< 'D' arabic, 'r' small roman (ISO 32000-1, table 159).
};

/// Gives a PDF that QPdfWriter made page labels, which that can't, by appending a new catalogue (ISO 32000-1,
/// 7.5.6, 12.4.2). @return false if the file can't be read or written, or is made in another way
bool appendPageLabels(const QString &path, const QList<LabelRange> &ranges);

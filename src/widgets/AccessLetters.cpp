#include "widgets/AccessLetters.h"

namespace leafwright {

namespace {

/// Where the letters of a title stand, those that begin a word first.
QList<qsizetype> lettersOf(const QString &title) {
    QList<qsizetype> first;
    QList<qsizetype> others;
    for (qsizetype i = 0; i < title.size(); ++i) {
        if (!title[i].isLetterOrNumber()) continue;
        const bool beginsWord = i == 0 || title[i - 1].isSpace();
        (beginsWord ? first : others).append(i);
    }
    return first + others;
}

}  // namespace

QStringList withAccessLetters(const QStringList &titles) {
    QStringList result;
    QString taken;
    for (const QString &title : titles) {
        qsizetype chosen = -1;
        for (const qsizetype place : lettersOf(title)) {
            if (taken.contains(title[place], Qt::CaseInsensitive)) continue;
            chosen = place;
            taken += title[place];
            break;
        }
        QString marked;
        for (qsizetype i = 0; i < title.size(); ++i) {
            if (i == chosen || title[i] == u'&') marked += u'&';
            marked += title[i];
        }
        result.append(marked);
    }
    return result;
}

}  // namespace leafwright

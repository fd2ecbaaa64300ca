#include "widgets/AccessLetters.h"

#include <QHash>
#include <QSet>

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

/// Gives each title one of its letters, none to two.
class LetterChoice {
public:
    explicit LetterChoice(const QStringList &titles) : titles_(titles) {
        for (int i = 0; i < titles.size(); ++i) {
            places_.append(-1);
            QSet<QChar> tried;
            if (!takeFreeLetter(i)) takeLetter(i, tried);
        }
    }
    /// Where the letter of a title stands; -1 if there is none left for it.
    qsizetype placeIn(int title) const { return places_[title]; }

private:
    QChar letterAt(int title, qsizetype place) const { return titles_[title][place].toCaseFolded(); }

    void take(int title, qsizetype place) {
        owners_.insert(letterAt(title, place), title);
        places_[title] = place;
    }

    bool takeFreeLetter(int title) {
        for (const qsizetype place : lettersOf(titles_[title])) {
            if (owners_.contains(letterAt(title, place))) continue;
            take(title, place);
            return true;
        }
        return false;
    }

    /// Takes a letter that another title has, if that can have one that is free, or be given one likewise.
    /// @param tried letters that are asked for already
    bool takeLetter(int title, QSet<QChar> &tried) {
        for (const qsizetype place : lettersOf(titles_[title])) {
            const QChar letter = letterAt(title, place);
            if (tried.contains(letter)) continue;
            tried.insert(letter);
            const int owner = owners_.value(letter, -1);
            if (owner >= 0 && !takeFreeLetter(owner) && !takeLetter(owner, tried)) continue;
            take(title, place);
            return true;
        }
        return false;
    }

    const QStringList &titles_;
    QHash<QChar, int> owners_;
    QList<qsizetype> places_;
};

}  // namespace

QStringList withAccessLetters(const QStringList &titles) {
    const LetterChoice letters(titles);
    QStringList result;
    for (int k = 0; k < titles.size(); ++k) {
        const QString &title = titles[k];
        const qsizetype chosen = letters.placeIn(k);
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

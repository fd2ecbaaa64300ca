#include "support/OpenPdf.h"
#include "support/Paths.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

/// All words of the sources, and the names of their files and folders.
QSet<QString> wordsOfSources() {
    static const QRegularExpression word("[A-Za-z_]\\w*");
    QSet<QString> words;
    const QStringList folders{"src",  "tests",   "tools",     "bench",
                              "fuzz", "scripts", "packaging", "translations"};
    for (const QString &folder : folders) {
        QDirIterator files(test::projectPath(folder), QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            QString text = files.fileInfo().isDir() ? QString() : QString::fromUtf8(test::contentOf(path));
            text += ' ' + folder + ' ' + files.fileName();
            for (const auto &match : word.globalMatch(text))
                words.insert(match.captured());
        }
    }
    return words;
}

// What is renamed or goes away must not live on in the description.
TEST(Architecture, WhatItNamesIsThere) {
    static const QRegularExpression name("`([^`\n]+)`");
    static const QRegularExpression picture("```.*?```", QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression word("[A-Za-z_]\\w*");
    const QSet<QString> known = wordsOfSources();
    const QString text =
        QString::fromUtf8(test::contentOf(test::projectPath("docs/architecture.md"))).remove(picture);
    int names = 0;
    QStringList unknown;
    for (const auto &match : name.globalMatch(text)) {
        ++names;
        for (const auto &part : word.globalMatch(match.captured(1)))
            if (!known.contains(part.captured())) unknown.append(match.captured(1));
    }
    EXPECT_GT(names, 100);
    EXPECT_THAT(unknown, testing::IsEmpty()) << unknown.join('\n').toStdString();
}

}  // namespace
}  // namespace leafwright

#include "document/commands/ActionTable.h"
#include "support/Paths.h"
#include "texts/Translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

struct Message {
    QString context;
    QString source;
    QString translation;
    bool finished;
};

/// The messages of a file of Qt Linguist.
std::vector<Message> messagesOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(path.toStdString());
    QXmlStreamReader xml(&file);
    std::vector<Message> messages;
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() == u"name") context = xml.readElementText();
        if (xml.name() == u"source") messages.push_back({context, xml.readElementText(), {}, false});
        if (xml.name() == u"translation") {
            messages.back().finished = !xml.attributes().hasAttribute("type");
            messages.back().translation = xml.readElementText();
        }
    }
    if (xml.hasError()) throw std::runtime_error(xml.errorString().toStdString());
    return messages;
}

QStringList matchesOf(const QRegularExpression &pattern, const QString &text) {
    QStringList result;
    for (const auto &match : pattern.globalMatch(text))
        result.append(match.captured());
    result.sort();
    return result;
}

/// The letter by which a control is chosen; null for none.
QChar accessLetterOf(const QString &text) {
    const qsizetype mark = text.indexOf(u'&');
    return mark < 0 ? QChar() : text.at(mark + 1).toLower();
}

class Translations : public testing::TestWithParam<QString> {
protected:
    std::vector<Message> messages = messagesOf(test::projectPath("translations/" + GetParam()));
};

TEST_P(Translations, HaveNoUnfinishedText) {
    EXPECT_GT(messages.size(), 200U);
    for (const Message &message : messages)
        EXPECT_TRUE(message.finished && !message.translation.isEmpty()) << message.source.toStdString();
}

TEST_P(Translations, KeepWhatIsFilledIn) {
    static const QRegularExpression placeholder(R"(%L?\d|\[\*\]|--[a-z-]+)");
    for (const Message &message : messages)
        EXPECT_EQ(matchesOf(placeholder, message.source), matchesOf(placeholder, message.translation))
            << message.source.toStdString();
}

TEST_P(Translations, KeepEllipsesLinesAndKeysOfLetters) {
    for (const Message &message : messages) {
        const std::string source = message.source.toStdString();
        const bool asks = message.source.endsWith("…") || message.source.endsWith("...");
        EXPECT_EQ(message.translation.endsWith("…"), asks) << source;
        EXPECT_EQ(message.translation.count('\n'), message.source.count('\n')) << source;
        EXPECT_EQ(message.translation.count('&'), message.source.count('&')) << source;
    }
}

TEST_P(Translations, ChooseByDifferentLettersWhatTheSourceDoes) {
    for (auto one = messages.begin(); one != messages.end(); ++one) {
        const QChar letter = accessLetterOf(one->translation);
        if (letter.isNull()) continue;
        for (auto other = one + 1; other != messages.end(); ++other) {
            if (other->context != one->context || accessLetterOf(other->translation) != letter) continue;
            EXPECT_EQ(accessLetterOf(other->source), accessLetterOf(one->source))
                << one->translation.toStdString() << ", " << other->translation.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, Translations,
    testing::ValuesIn(QDir(test::projectPath("translations")).entryList({"*.ts"}).toVector()),
    [](const auto &file) { return file.param.section('.', 0, 0).remove("leafwright_").toStdString(); });

/// Translators of the application, for the test's time.
class Installed : public testing::Test {
protected:
    void SetUp() override {
        if (!QFile::exists(translationsFolder() + "/leafwright_de.qm"))
            GTEST_SKIP() << "lrelease is not installed";
    }
    void TearDown() override {
        for (QTranslator *translator : QCoreApplication::instance()->findChildren<QTranslator *>()) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
    }
    static void install(const char *locale) {
        installTranslators(*QCoreApplication::instance(), QLocale(locale), translationsFolder());
    }
};

TEST_F(Installed, TranslationsFollowTheLocale) {
    install("de_AT");
    EXPECT_EQ(actionTitle(*actionDescription("moveLeft:")), "Nach links");
    EXPECT_EQ(menuTitle(Menu::File), "&Datei");
}

TEST_F(Installed, ALanguageWithoutTranslationIsLeftEnglish) {
    install("eo");
    EXPECT_EQ(actionTitle(*actionDescription("moveLeft:")), "Move Left");
}

TEST_F(Installed, EveryCommandHasItsTitle) {
    QTranslator german;
    ASSERT_TRUE(german.load("leafwright_de", translationsFolder()));
    for (const ActionDescription &command : actionDescriptions())
        EXPECT_FALSE(german.translate("ActionTable", command.title).isEmpty()) << command.title;
}

TEST_F(Installed, QtsOwnTextsAreTranslatedToo) {
    if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm"))
        GTEST_SKIP() << "Qt's translations are not installed";
    install("de_DE");
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");
}

}  // namespace
}  // namespace leafwright

#include "platform/UserDefaults.h"
#include "support/TempDir.h"

#include <QDir>
#include <QElapsedTimer>

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

namespace leafwright {
namespace {

using test::TempDir;

void write(const QString &path, const QByteArray &content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

TEST(UserDefaults, WithoutAnythingAllIsAbsent) {
    const UserDefaults defaults;
    EXPECT_FALSE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.integerForKey("number"), 0);
    EXPECT_TRUE(defaults.stringForKey("text").isNull());
    EXPECT_TRUE(defaults.dataForKey("data").isNull());
}

TEST(UserDefaults, RegisteredDefaultsHoldUntilAValueIsSet) {
    UserDefaults defaults;
    defaults.registerDefaults({{"number", 3}, {"flag", true}});
    EXPECT_EQ(defaults.integerForKey("number"), 3);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    defaults.setValue("number", 5);
    defaults.setValue("flag", false);
    EXPECT_EQ(defaults.integerForKey("number"), 5);
    EXPECT_FALSE(defaults.boolForKey("flag"));
    defaults.removeValue("number");
    EXPECT_EQ(defaults.integerForKey("number"), 3);
}

TEST(UserDefaults, ALaterRegistrationAddsToTheEarlier) {
    UserDefaults defaults;
    defaults.registerDefaults({{"a", 1}, {"b", 1}});
    defaults.registerDefaults({{"b", 2}, {"c", 2}});
    EXPECT_EQ(defaults.integerForKey("a"), 1);
    EXPECT_EQ(defaults.integerForKey("b"), 2);
    EXPECT_EQ(defaults.integerForKey("c"), 2);
}

TEST(UserDefaults, ValuesComeBackFromTheFile) {
    const TempDir dir;
    const QString text = QString::fromUtf8("1 [Heading, ä] \"x\" \\ @\n2 %");
    QByteArray data("\0\xff@)\n", 5);
    {
        UserDefaults defaults(dir.path("settings.ini"));
        defaults.setValue("flag", true);
        defaults.setValue("number", -7);
        defaults.setValue("text", text);
        defaults.setValue("empty", "");
        defaults.setValue("data", data);
    }
    const UserDefaults defaults(dir.path("settings.ini"));
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.integerForKey("number"), -7);
    EXPECT_EQ(defaults.stringForKey("text"), text);
    EXPECT_FALSE(defaults.stringForKey("empty").isNull());
    EXPECT_TRUE(defaults.stringForKey("empty").isEmpty());
    EXPECT_EQ(defaults.dataForKey("data"), data);
}

TEST(UserDefaults, ARegisteredDefaultIsNotStored) {
    const TempDir dir;
    {
        UserDefaults defaults(dir.path("settings.ini"));
        defaults.registerDefaults({{"number", 3}});
        defaults.setValue("other", 1);
    }
    EXPECT_EQ(UserDefaults(dir.path("settings.ini")).integerForKey("number"), 0);
}

TEST(UserDefaults, KeysThatAreAddressesStayApart) {
    const TempDir dir;
    const QStringList keys{"bd_file:///a/b",  "bd_file://a/b",   "bd_file:/a%2Fb",
                           "bd_file:///a\\b", "bd_file:///a/b/", "bd_file:///A/b"};
    {
        UserDefaults defaults(dir.path("settings.ini"));
        for (int i = 0; i < keys.size(); ++i)
            defaults.setValue(keys[i], QByteArray::number(i));
        defaults.removeValue("bd_file:///a");  // A neighbour's removal takes no other along.
    }
    const UserDefaults defaults(dir.path("settings.ini"));
    for (int i = 0; i < keys.size(); ++i)
        EXPECT_EQ(defaults.dataForKey(keys[i]), QByteArray::number(i)) << qPrintable(keys[i]);
}

TEST(UserDefaults, FractionsAreReadFromNumbersAndTexts) {
    const TempDir dir;
    write(dir.path("settings.ini"), "[General]\nfraction=2.5\nwhole=-7\nword=many\nendless=inf\n");
    UserDefaults defaults(dir.path("settings.ini"));
    defaults.registerDefaults({{"word", 3}, {"endless", 4.5}});
    EXPECT_EQ(defaults.doubleForKey("fraction"), 2.5);
    EXPECT_EQ(defaults.doubleForKey("whole"), -7);
    EXPECT_EQ(defaults.doubleForKey("word"), 3);
    EXPECT_EQ(defaults.doubleForKey("endless"), 4.5);
    EXPECT_EQ(defaults.doubleForKey("none"), 0);
    defaults.setValue("fraction", 0.25);
    EXPECT_EQ(defaults.doubleForKey("fraction"), 0.25);
}

TEST(UserDefaults, ValuesOfTheWrongTypeLeaveTheDefaultInForce) {
    const TempDir dir;
    write(dir.path("settings.ini"),
          "[General]\nnumber=many\nlarge=99999999999\nfraction=2.5\nlist=1, 2\nflag=perhaps\n"
          "bytes=@ByteArray(x)\ntext=plain\npoint=@Point(3 4)\nodd=@Point(1 2)\nbroken=@Variant(xx)\n");
    UserDefaults defaults(dir.path("settings.ini"));
    defaults.registerDefaults({{"number", 3},
                               {"large", 4},
                               {"fraction", 5},
                               {"list", 6},
                               {"odd", 7},
                               {"broken", 8},
                               {"flag", true}});
    EXPECT_EQ(defaults.integerForKey("number"), 3);
    EXPECT_EQ(defaults.integerForKey("large"), 4);
    EXPECT_EQ(defaults.integerForKey("fraction"), 5);
    EXPECT_EQ(defaults.integerForKey("list"), 6);
    EXPECT_EQ(defaults.integerForKey("odd"), 7);
    EXPECT_EQ(defaults.integerForKey("broken"), 8);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_TRUE(defaults.stringForKey("bytes").isNull());
    EXPECT_TRUE(defaults.dataForKey("text").isNull());
    EXPECT_TRUE(defaults.dataForKey("point").isNull());
    EXPECT_TRUE(defaults.stringForKey("point").isNull());
}

TEST(UserDefaults, TextsThatSayYesOrNoAreFlags) {
    const TempDir dir;
    write(dir.path("settings.ini"), "[General]\na=YES\nb=true\nc=1\nd=NO\ne=False\nf=0\n");
    UserDefaults defaults(dir.path("settings.ini"));
    for (const QString key : {"a", "b", "c", "d", "e", "f"})
        defaults.registerDefaults({{key, key > "c"}});
    for (const QString key : {"a", "b", "c"})
        EXPECT_TRUE(defaults.boolForKey(key)) << qPrintable(key);
    for (const QString key : {"d", "e", "f"})
        EXPECT_FALSE(defaults.boolForKey(key)) << qPrintable(key);
}

TEST(UserDefaults, AFileThatIsNoneIsLikeAnEmptyOne) {
    const TempDir dir;
    write(dir.path("settings.ini"), QByteArray("\0\xff[[[=%%%\n]x\n\x80=\n", 17));
    UserDefaults defaults(dir.path("settings.ini"));
    defaults.registerDefaults({{"number", 3}});
    EXPECT_EQ(defaults.integerForKey("number"), 3);
    defaults.setValue("number", 4);
    EXPECT_EQ(defaults.integerForKey("number"), 4);
}

/// Qt reads them as its own data, and some bring the program down.
TEST(UserDefaults, ValuesThatNobodyHereWritesAreNotRead) {
    const TempDir dir;
    const QString path = dir.path("settings.ini");
    for (const char *value :
         {"@Variant(\\0\\0\\0\\x5\\0\\0\\0\\x2)", "@DateTime(\\0)", "\"@Variant(\\0)\"", "@\"Variant(\"\\0)",
          "\\x40Variant(\\0)", "@\\0126ariant(\\0)", "@V\\qariant(\\0)", "1, @Variant(\\0)",
          "@Var\\\niant(\\0)", "@Var\\\r\niant(\\0)", "@Var\\\n\riant(\\0)", "@Var\\\riant(\\0)",
          "@Variant(\\0)\\x2ddfd", "\\x10040Variant(\\0)", "\\x100000040Variant(\\0)",
          "\\0200100Variant(\\0)", "\xef\xbb\xbf@Variant(\\0)"}) {
        const QByteArray text = "[General]\nnumber=5\nfirst=" + QByteArray(value) + '\n';
        write(path, text);
        {
            UserDefaults defaults(path);
            EXPECT_EQ(defaults.integerForKey("number"), 0) << value;
            defaults.setValue("number", 7);
            EXPECT_EQ(defaults.integerForKey("number"), 7);
        }
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), text) << "what can't be understood stays as it is";
    }
}

TEST(UserDefaults, TextsThatLookLikeSuchValuesAreTexts) {
    const TempDir dir;
    for (const char *text : {"@Variant(x)", "a @Variant(x)", "@", "\\x40"}) {
        UserDefaults(dir.path("settings.ini")).setValue("text", text);
        EXPECT_EQ(UserDefaults(dir.path("settings.ini")).stringForKey("text"), text);
    }
}

TEST(UserDefaults, NullTextsAndDataRemove) {
    UserDefaults defaults;
    defaults.setValue("text", "a");
    defaults.setValue("data", QByteArray("a"));
    defaults.setValue("text", QString());
    defaults.setValue("data", QByteArray());
    EXPECT_TRUE(defaults.stringForKey("text").isNull());
    EXPECT_TRUE(defaults.dataForKey("data").isNull());
}

TEST(UserDefaults, ChangesAreToldAndNothingElse) {
    UserDefaults defaults;
    defaults.registerDefaults({{"number", 3}});
    QStringList changes;
    QObject::connect(&defaults, &UserDefaults::valueChanged, [&](const QString &key) { changes += key; });
    defaults.setValue("number", 3);
    EXPECT_EQ(changes, QStringList());
    defaults.setValue("number", 4);
    defaults.setValue("number", 4);
    defaults.setValue("text", "a");
    defaults.removeValue("number");
    defaults.removeValue("number");
    defaults.removeValue("absent");
    EXPECT_EQ(changes, QStringList({"number", "text", "number"}));
}

TEST(UserDefaults, ALockLeftBehindHoldsNobodyUp) {
    const TempDir dir;
    const QString path = dir.path("settings.ini");
    write(path + ".lock", "");
    const timespec then{std::time(nullptr) - 5, 0};
    const timespec times[] = {then, then};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path + ".lock"), times, 0), 0);
    QElapsedTimer clock;
    clock.start();
    {
        UserDefaults defaults(path);
        defaults.setValue("number", 7);
    }
    EXPECT_LT(clock.elapsed(), 10'000);
    EXPECT_EQ(UserDefaults(path).integerForKey("number"), 7);
}

TEST(UserDefaults, WhatCantBeLockedIsKeptInMemory) {
    const TempDir dir;
    const QString path = dir.path("settings.ini");
    ASSERT_TRUE(QDir().mkdir(path + ".lock"));
    UserDefaults defaults(path);
    defaults.setValue("number", 7);
    EXPECT_EQ(defaults.integerForKey("number"), 7);
    EXPECT_FALSE(QFile::exists(path));
}

TEST(UserDefaults, SettingsThatAreNoFileAreNotWaitedFor) {
    const TempDir dir;
    const QString path = dir.path("settings.ini");
    ASSERT_EQ(::mkfifo(QFile::encodeName(path), 0600), 0);
    for (const QString &place : {path, QStringLiteral("/dev/zero")}) {
        UserDefaults defaults(place);
        defaults.setValue("number", 7);
        EXPECT_EQ(defaults.integerForKey("number"), 7);
    }
}

}  // namespace
}  // namespace leafwright

#include "support/CliFiles.h"
#include "system/FileWatch.h"

#include <QDir>
#include <QGuiApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::saveBytes;

class Watch : public testing::Test {
protected:
    Watch() {
        QObject::connect(&watch, &FileWatch::touched, &watch, [this] { ++told; });
    }
    /// Waits until it is told.
    bool isTold() {
        const int before = told;
        return QTest::qWaitFor([&] { return told > before; }, 10000);
    }
    void replace() const {
        saveBytes(dir.path("new"), "second");
        ASSERT_EQ(::rename(qPrintable(dir.path("new")), qPrintable(path)), 0);
    }

    test::TempDir dir;
    const QString path = dir.path("folder/a.pdf");
    int told = 0;
    FileWatch watch{(QDir(dir.path({})).mkdir("folder"), saveBytes(path, "first"), path)};
};

TEST_F(Watch, WritingIsToldAgainAndAgain) {
    for (const char *bytes : {"second", "third"}) {
        saveBytes(path, bytes);
        EXPECT_TRUE(isTold()) << bytes;
    }
}

TEST_F(Watch, ReplacingIsToldAgainAndAgain) {
    QFile old(path);  // as a document has it open, so that nobody is told that it is gone
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    for (int i = 0; i < 3; ++i) {
        replace();
        EXPECT_TRUE(isTold()) << i;
    }
    saveBytes(path, "written to the new one");
    EXPECT_TRUE(isTold());
}

TEST_F(Watch, RemovingAndComingBackAreTold) {
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(isTold());
    saveBytes(path, "back");
    EXPECT_TRUE(isTold());
}

TEST_F(Watch, AFolderThatGoesIsTold) {
    ASSERT_TRUE(QDir(dir.path("folder")).removeRecursively());
    EXPECT_TRUE(isTold());
}

TEST_F(Watch, WritingToWhatALinkLeadsToIsTold) {
    saveBytes(dir.path("real.pdf"), "first");
    ASSERT_TRUE(QFile::link(dir.path("real.pdf"), dir.path("folder/link.pdf")));
    ASSERT_TRUE(isTold()) << "the folder";
    watch.setPath(dir.path("folder/link.pdf"));
    saveBytes(dir.path("real.pdf"), "second");
    EXPECT_TRUE(isTold());
}

TEST_F(Watch, AnotherPathTakesThePlaceOfTheFirst) {
    const test::TempDir other;
    saveBytes(other.path("b.pdf"), "first");
    watch.setPath(other.path("b.pdf"));
    const int before = told;
    saveBytes(path, "nobody looks");
    constexpr int longerThanThePause = 1'000;  // milliseconds
    QTest::qWait(longerThanThePause);
    EXPECT_EQ(told, before);
    saveBytes(other.path("b.pdf"), "second");
    EXPECT_TRUE(isTold());
}

TEST_F(Watch, ComingBackToTheProgramIsToldWhateverTheSystemSays) {
    Q_EMIT qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        ->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(isTold());
}

}  // namespace
}  // namespace leafwright

#include "app/SingleInstance.h"
#include "files/FileName.h"
#include "support/TempDir.h"

#include <QSignalSpy>
#include <QTest>

#include <future>
#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// Hands over from another thread, as another process would.
bool handOverElsewhere(const QString &name, const QStringList &paths) {
    auto result = std::async(std::launch::async, [&] { return SingleInstance(name).handOver(paths); });
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, 10000));
    return result.get();
}

TEST(SingleInstance, NobodyIsThereAtTheFirstStart) {
    const QTemporaryDir dir;
    EXPECT_FALSE(SingleInstance(dir.filePath("socket")).handOver({"/a.pdf"}));
}

TEST(SingleInstance, ASecondStartHandsItsFilesToTheFirst) {
    const QTemporaryDir dir;
    SingleInstance first(dir.filePath("socket"));
    ASSERT_TRUE(first.listen());
    QSignalSpy received(&first, &SingleInstance::filesReceived);
    const QStringList paths{"/one.pdf", "/with blank, %20 and ü.pdf", "/with\nline feed.pdf"};
    EXPECT_TRUE(handOverElsewhere(dir.filePath("socket"), paths));
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(received[0][0].toStringList(), paths);
}

TEST(SingleInstance, AStartWithoutFilesIsNoticedToo) {
    const QTemporaryDir dir;
    SingleInstance first(dir.filePath("socket"));
    ASSERT_TRUE(first.listen());
    QSignalSpy received(&first, &SingleInstance::filesReceived);
    EXPECT_TRUE(handOverElsewhere(dir.filePath("socket"), {}));
    ASSERT_EQ(received.size(), 1);
    EXPECT_TRUE(received[0][0].toStringList().isEmpty());
}

TEST(SingleInstance, AsManyFilesAreHandedOverAsACommandLineHolds) {
    const QTemporaryDir dir;
    SingleInstance first(dir.filePath("socket"));
    ASSERT_TRUE(first.listen());
    QSignalSpy received(&first, &SingleInstance::filesReceived);
    QStringList paths;
    for (int i = 0; i < 20'000; ++i)
        paths.append(QStringLiteral("/%1/ä%2.pdf").arg(QString(100, u'x')).arg(i));
    EXPECT_TRUE(handOverElsewhere(dir.filePath("socket"), paths));
    ASSERT_EQ(received.size(), 1);
    EXPECT_TRUE(received[0][0].toStringList() == paths);
}

TEST(SingleInstance, NamesOfAnyBytesAreHandedOver) {
    const QTemporaryDir dir;
    SingleInstance first(dir.filePath("socket"));
    ASSERT_TRUE(first.listen());
    QSignalSpy received(&first, &SingleInstance::filesReceived);
    const QStringList paths{fileNameText("/caf\xE9.pdf")};
    EXPECT_TRUE(handOverElsewhere(dir.filePath("socket"), paths));
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(fileNameBytes(received[0][0].toStringList()[0]), QByteArray("/caf\xE9.pdf"));
}

TEST(SingleInstance, APlaceLeftBehindByACrashIsTakenOver) {
    const QTemporaryDir dir;
    QFile left(dir.filePath("socket"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.close();
    SingleInstance first(dir.filePath("socket"));
    EXPECT_FALSE(first.handOver({}));
    EXPECT_TRUE(first.listen());
}

}  // namespace
}  // namespace leafwright

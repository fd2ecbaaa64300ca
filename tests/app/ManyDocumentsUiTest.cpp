#include "app/AppDelegate.h"
#include "document/MyDocument.h"
#include "document/commands/ActionTable.h"
#include "document/window/DocumentWindow.h"
#include "support/PdfBuilder.h"
#include "support/RecordingPlatform.h"
#include "support/TempDir.h"

#include <QTest>

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

namespace leafwright {
namespace {

/// What the program has of the machine's memory, in bytes.
double memory() {
    ::malloc_trim(0);  // what is free but kept back is no leak
    QFile file("/proc/self/statm");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

constexpr bool isSanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

class ManyDocuments : public testing::Test {
protected:
    void SetUp() override {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(20);
        pdf.save(dir.path("original.pdf"));
    }
    /// Opens a document in a window, gives it an entry, saves it and closes it.
    void useOne() {
        QFile::remove(path);
        ASSERT_TRUE(QFile::copy(dir.path("original.pdf"), path));
        delegate.openFiles({path});
        const auto documents = delegate.documentController().documents();
        ASSERT_EQ(documents.size(), 1);
        auto &document = static_cast<MyDocument &>(*documents.front());
        ASSERT_TRUE(QTest::qWaitFor([&] { return !document.isBusy(); }));
        document.actions().perform("addSiblingOutlineItem:");
        ASSERT_TRUE(document.isDocumentEdited());
        document.actions().perform("saveDocument:");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !document.isDocumentEdited() && !document.isBusy(); }));
        ASSERT_TRUE(delegate.documentController().closeDocument(document));
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void use(int count) {
        for (int i = 0; i < count && !HasFatalFailure(); ++i)
            useOne();
    }

    test::TempDir dir;
    const QString path = dir.path("a.pdf");
    test::RecordingPlatform platform;
    AppDelegate delegate{platform};
};

TEST_F(ManyDocuments, LeaveNothingInMemory) {
    if (isSanitized()) GTEST_SKIP() << "a sanitizer keeps what is freed";
    use(50);
    const double first = memory();
    use(450);
    const double last = memory();
    std::printf("%.1f MB after 50 documents, %.1f MB after 500\n", first / 1e6, last / 1e6);
    EXPECT_LT(last, first * 1.1);
}

}  // namespace
}  // namespace leafwright

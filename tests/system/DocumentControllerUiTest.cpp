#include "support/RecordingPlatform.h"
#include "support/TempDir.h"
#include "system/DocumentController.h"

#include <QFile>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

/// A document without a window, of any file that does not say "bad".
class PlainDocument : public Document {
public:
    using Document::Document;
    bool readFromURL(const QString &path) override {
        QFile file(path);
        path_ = path;
        return file.open(QIODevice::ReadOnly) && !file.readAll().contains("bad");
    }
    QString fileURL() const override { return path_; }
    void makeWindowControllers() override {}
    QWidget *window() const override { return nullptr; }
    bool isDocumentEdited() const override { return edited_; }
    void updateChangeCount(Change change) override { edited_ = change == Change::Done; }
    bool saves = true;

protected:
    bool saveBeforeClosing() override { return saves; }

private:
    QString path_;
    bool edited_ = false;
};

class DocumentControllerTest : public testing::Test {
protected:
    QString file(const QString &name, const QByteArray &content = "good") const {
        QFile out(dir.path(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
        return out.fileName();
    }

    test::TempDir dir;
    test::RecordingPlatform platform;
    DocumentController controller{platform, [this] { return std::make_unique<PlainDocument>(platform); }};
};

TEST_F(DocumentControllerTest, OpensAFileOnce) {
    const QString path = file("a.pdf");
    Document *first = controller.openDocumentWithContentsOfURL(path, true);
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(QFile::link(path, dir.path("link.pdf")));
    EXPECT_EQ(controller.openDocumentWithContentsOfURL(dir.path("link.pdf"), true), first);
    EXPECT_EQ(controller.documents().size(), 1U);
}

TEST_F(DocumentControllerTest, AFileThatCanNotBeReadIsNotADocument) {
    EXPECT_EQ(controller.openDocumentWithContentsOfURL(file("a.pdf", "bad"), true), nullptr);
    EXPECT_TRUE(controller.documents().empty());
    EXPECT_TRUE(controller.recentDocuments().isEmpty());
}

TEST_F(DocumentControllerTest, RemembersTenFilesTheLatestFirst) {
    QStringList expected;
    for (int i = 0; i < 12; ++i) {
        const QString path = file(QString::number(i));
        controller.openDocumentWithContentsOfURL(path, true);
        expected.prepend(path);
    }
    EXPECT_EQ(controller.recentDocuments(), expected.first(10));
}

TEST_F(DocumentControllerTest, AFileOpenedAgainMovesToTheFront) {
    const QString a = file("a");
    const QString b = file("b");
    controller.closeDocument(*controller.openDocumentWithContentsOfURL(a, true));
    controller.closeDocument(*controller.openDocumentWithContentsOfURL(b, true));
    controller.openDocumentWithContentsOfURL(a, true);
    EXPECT_EQ(controller.recentDocuments(), (QStringList{a, b}));
}

TEST_F(DocumentControllerTest, AFileThatIsGoneIsNotOffered) {
    const QString a = file("a");
    controller.openDocumentWithContentsOfURL(a, true);
    QFile::remove(a);
    EXPECT_TRUE(controller.recentDocuments().isEmpty());
}

TEST_F(DocumentControllerTest, TheListOfRecentFilesCanBeCleared) {
    controller.openDocumentWithContentsOfURL(file("a"), true);
    controller.clearRecentDocuments();
    EXPECT_TRUE(controller.recentDocuments().isEmpty());
}

TEST_F(DocumentControllerTest, QuittingAsksForEachChangedDocumentUntilOneIsKept) {
    for (const char *name : {"a", "b", "c"})
        controller.openDocumentWithContentsOfURL(file(name), true)->updateChangeCount(Document::Change::Done);
    platform.answers = {1, 2};  // Discard, Cancel
    EXPECT_FALSE(controller.closeAllDocuments());
    EXPECT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(controller.documents().size(), 2U);
}

TEST_F(DocumentControllerTest, ADocumentWhoseSavingFailedIsKept) {
    auto *document = static_cast<PlainDocument *>(controller.openDocumentWithContentsOfURL(file("a"), true));
    document->updateChangeCount(Document::Change::Done);
    document->saves = false;
    platform.answers = {0};
    EXPECT_FALSE(controller.closeDocument(*document));
    EXPECT_EQ(controller.documents().size(), 1U);
}

TEST_F(DocumentControllerTest, TellsWhenTheLastDocumentIsClosed) {
    QSignalSpy last(&controller, &DocumentController::lastDocumentClosed);
    Document *a = controller.openDocumentWithContentsOfURL(file("a"), true);
    Document *b = controller.openDocumentWithContentsOfURL(file("b"), true);
    EXPECT_TRUE(controller.closeDocument(*a));
    EXPECT_EQ(last.size(), 0);
    EXPECT_TRUE(controller.closeDocument(*b));
    EXPECT_EQ(last.size(), 1);
}

TEST_F(DocumentControllerTest, ABusyDocumentIsNotClosed) {
    Document *a = controller.openDocumentWithContentsOfURL(file("a"), true);
    {
        const Document::Busy busy(*a);
        EXPECT_FALSE(controller.closeDocument(*a));
        EXPECT_FALSE(controller.closeAllDocuments());
    }
    EXPECT_TRUE(controller.closeDocument(*a));
}

TEST_F(DocumentControllerTest, TheDocumentThatAsksForAFileIsBusyMeanwhile) {
    Document *a = controller.openDocumentWithContentsOfURL(file("a"), true);
    bool busy = false;
    platform.whenAsked = [&] { busy = a->isBusy(); };
    platform.filesToChoose = {file("b")};
    controller.openDocument(a);
    EXPECT_TRUE(busy);
    EXPECT_FALSE(a->isBusy());
    EXPECT_EQ(controller.documents().size(), 2U);
}

TEST_F(DocumentControllerTest, TheFilesTheUserChoosesAreOpened) {
    platform.filesToChoose = {file("a")};
    controller.openDocument();
    EXPECT_EQ(controller.documents().size(), 1U);
}

TEST_F(DocumentControllerTest, OneFileIsNeverAmongTheRecentOnes) {
    const QString guide = file("guide");
    const QString a = file("a");
    controller.openDocumentWithContentsOfURL(guide, true);
    EXPECT_EQ(controller.recentDocuments(), QStringList{guide});
    controller.leaveOutOfRecent(guide);
    EXPECT_TRUE(controller.recentDocuments().isEmpty()) << "also where it was noted before";
    controller.openDocumentWithContentsOfURL(a, true);
    controller.closeAllDocuments();
    controller.openDocumentWithContentsOfURL(guide, true);
    EXPECT_EQ(controller.recentDocuments(), QStringList{a});
}

}  // namespace
}  // namespace leafwright

#include "app/QtPlatform.h"
#include "support/CliFiles.h"
#include "support/EnvironmentVariable.h"
#include "support/MessageBus.h"
#include "support/TempDir.h"
#include "system/FileManager.h"
#include "widgets/FilePanelDialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDBusContext>
#include <QDateTime>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace leafwright {

/// Takes the place of the programs that the desktop would start.
class OpenedFiles : public QObject {
    Q_OBJECT

public:
    explicit OpenedFiles(QStringList schemes) : schemes_(std::move(schemes)) {
        for (const QString &scheme : schemes_)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~OpenedFiles() override {
        for (const QString &scheme : schemes_)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl &url) { urls.append(url); }

private:
    QStringList schemes_;
};

/// The desktop's file viewer.
class FileViewer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;
    bool refuses = false;

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString & /*startupId*/) {
        if (refuses) {
            sendErrorReply(QDBusError::Failed);
            return;
        }
        shown += uris;
    }
};

namespace {

using test::TempDir;

class QtPlatformTest : public testing::Test {
protected:
    /// Runs when the next dialog is up.
    template <typename Dialog>
    void whenShown(const std::function<void(Dialog &)> &act) {
        auto *timer = new QTimer(&context);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (!dialog) return;
            timer->stop();
            act(*dialog);
        });
        timer->start(1);
    }
    int answerTo(const Alert &alert, const std::function<void(QMessageBox &)> &act) {
        whenShown<QMessageBox>(act);
        return platform.runModal(alert);
    }
    QString touch(const QString &name) const {
        QFile file(dir.path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }

    TempDir dir;
    QObject context;
    QtPlatform platform{dir.path("settings.ini")};
};

void press(QMessageBox &box, const QString &title) {
    for (QAbstractButton *button : box.buttons())
        if (button->text() == title) return button->click();
    ADD_FAILURE() << "no button " << qPrintable(title);
    box.reject();
}

void pressAccept(const QFileDialog &dialog) {
    dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open)->click();
}

const Alert question{"Save <b>a</b>?", "It <i>has</i> changed.", {"Save", "Discard", "Cancel"}};

TEST_F(QtPlatformTest, AnAlertTellsWhichButtonWasPressed) {
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(answerTo(question, [&](QMessageBox &box) { press(box, question.buttons[i]); }), i);
}

TEST_F(QtPlatformTest, ReturnPressesTheFirstButtonAndEscapeTheLast) {
    EXPECT_EQ(answerTo(question, [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); }), 0);
    EXPECT_EQ(answerTo(question, [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }), 2);
    EXPECT_EQ(answerTo({"Done", "", {"OK"}}, [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }),
              0);
    EXPECT_EQ(answerTo(question, [](QMessageBox &box) { box.close(); }), 2);
}

TEST_F(QtPlatformTest, EscapeDoesNothingWhereOneButtonMustBeChosen) {
    Alert offer{"Preview?", "", {"Preview", "Save"}};
    offer.escapable = false;
    bool staysUp = false;
    const int answer = answerTo(offer, [&](QMessageBox &box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        box.close();
        staysUp = box.isVisible();
        press(box, "Preview");
    });
    EXPECT_TRUE(staysUp);
    EXPECT_EQ(answer, 0);
}

TEST_F(QtPlatformTest, AnAlertShowsItsStyleAndItsTextsAsTheyStand) {
    answerTo(question, [](QMessageBox &box) {
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.text(), question.message);
        EXPECT_EQ(box.informativeText(), question.informativeText);
        int texts = 0;
        for (const QLabel *label : box.findChildren<QLabel *>()) {
            if (!label->text().contains('<')) continue;
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            ++texts;
        }
        EXPECT_EQ(texts, 2);
        box.reject();
    });
    answerTo({"Done", "", {"OK"}, Alert::Style::Informational}, [](QMessageBox &box) {
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        box.reject();
    });
}

TEST_F(QtPlatformTest, TheOpenPanelGivesTheFileChosen) {
    const QString path = touch("a.pdf");
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Open PDF");
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        dialog.selectFile(path);
        dialog.accept();
    });
    EXPECT_EQ(platform.runOpenPanel({.title = "Open PDF", .path = dir.path(""), .allowedFileTypes = {"pdf"}}),
              path);
}

TEST_F(QtPlatformTest, ACancelledPanelGivesNothing) {
    for (const bool save : {false, true}) {
        whenShown<FilePanelDialog>([](FilePanelDialog &dialog) { dialog.reject(); });
        EXPECT_EQ(save ? platform.runSavePanel({}) : platform.runOpenPanel({}), std::nullopt);
    }
}

TEST_F(QtPlatformTest, TheSavePanelProposesAFileAndAddsTheExtension) {
    touch("old.pdf");
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        EXPECT_EQ(dialog.selectedFiles(), QStringList(dir.path("old.pdf")));
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        dialog.selectFile(dir.path("new"));
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(platform.runSavePanel({.path = dir.path("old.pdf"), .allowedFileTypes = {"pdf"}}),
              dir.path("new.pdf"));
}

TEST_F(QtPlatformTest, TheSavePanelAsksAgainWithTheExtensionWhereAnotherIsGiven) {
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        dialog.selectFile(dir.path("report v1.2"));
        whenShown<FilePanelDialog>([&](FilePanelDialog &again) {
            EXPECT_EQ(again.selectedFiles(), QStringList(dir.path("report v1.2.pdf")));
            again.accept();
        });
        dialog.accept();
    });
    EXPECT_EQ(platform.runSavePanel({.path = dir.path("old.pdf"), .allowedFileTypes = {"pdf"}}),
              dir.path("report v1.2.pdf"));
}

TEST_F(QtPlatformTest, TheSavePanelTakesTheExtensionInCapitals) {
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        dialog.selectFile(dir.path("OLD.PDF"));
        dialog.accept();
    });
    EXPECT_EQ(platform.runSavePanel({.path = dir.path("old.pdf"), .allowedFileTypes = {"pdf"}}),
              dir.path("OLD.PDF"));
}

TEST_F(QtPlatformTest, WhatIsNotEnabledCantBeChosen) {
    const QString allowed = touch("allowed.pdf");
    const QString other = touch("other.pdf");
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        EXPECT_EQ(dialog.findChild<QLabel *>("message")->text(), "Please <b>choose</b>.");
        dialog.selectFile(other);
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        dialog.selectFile(allowed);
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(
        platform.runOpenPanel({.message = "Please <b>choose</b>.",
                               .prompt = "Allow",
                               .path = dir.path(""),
                               .shouldEnablePath = [&](const QString &path) { return path == allowed; }}),
        allowed);
}

TEST_F(QtPlatformTest, AFolderCanBeChosenWhereFilesCan) {
    ASSERT_TRUE(QDir().mkpath(dir.path("folder")));
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        dialog.selectFile(dir.path("folder"));
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(platform.runOpenPanel({.path = dir.path(""), .canChooseDirectories = true}),
              dir.path("folder"));
}

TEST_F(QtPlatformTest, WhereFoldersCanBeChosenTheOneItStartsInIsProposed) {
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), dir.path(""));
        pressAccept(dialog);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(platform.runOpenPanel({.path = dir.path(""), .canChooseDirectories = true}), dir.path(""));
}

TEST_F(QtPlatformTest, AnAlertNamesWhatItIsAbout) {
    answerTo({.message = "Unable to open PDF", .buttons = {"OK"}, .title = "a.pdf"}, [](QMessageBox &box) {
        EXPECT_EQ(box.windowTitle(), "a.pdf");
        box.reject();
    });
}

TEST_F(QtPlatformTest, APanelBeginsWhereOneEndedLast) {
    const auto folderOf = [this](const FilePanel &panel) {
        QString folder;
        whenShown<FilePanelDialog>([&folder](FilePanelDialog &dialog) {
            folder = dialog.directory().absolutePath();
            dialog.reject();
        });
        platform.runOpenPanel(panel);
        return folder;
    };
    ASSERT_TRUE(QDir().mkpath(dir.path("folder")));
    const QString chosen = touch("folder/a.pdf");
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        dialog.selectFile(chosen);
        dialog.accept();
    });
    ASSERT_EQ(platform.runOpenPanel({.path = dir.path("folder")}), chosen);
    EXPECT_EQ(folderOf({}), dir.path("folder"));
    EXPECT_EQ(folderOf({.path = dir.path("")}), dir.path("")) << "unless it begins somewhere";
    EXPECT_EQ(QtPlatform(dir.path("settings.ini")).userDefaults().stringForKey("lastFolder"),
              dir.path("folder"))
        << "in the next session, too";
    ASSERT_TRUE(QDir(dir.path("folder")).removeRecursively());
    EXPECT_NE(folderOf({}), dir.path("folder"));
}

TEST_F(QtPlatformTest, WhatIsNotToBeMadeCanNotBeMade) {
    for (const bool canCreate : {true, false}) {
        whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
            EXPECT_EQ(dialog.testOption(QFileDialog::ReadOnly), !canCreate);
            dialog.reject();
        });
        platform.runOpenPanel({.canChooseDirectories = true, .canCreateDirectories = canCreate});
    }
}

TEST_F(QtPlatformTest, WhatMayNotBeChosenIsGray) {
    const QString allowed = touch("allowed.pdf");
    const QString other = touch("other.pdf");
    whenShown<FilePanelDialog>([&](FilePanelDialog &dialog) {
        auto *files = dialog.findChild<QListView *>("listView");
        const auto isEnabled = [&](const QString &name) {
            for (int row = 0; row < files->model()->rowCount(files->rootIndex()); ++row) {
                const QModelIndex index = files->model()->index(row, 0, files->rootIndex());
                if (index.data().toString() == name)
                    return files->model()->flags(index).testFlag(Qt::ItemIsEnabled);
            }
            ADD_FAILURE() << "not shown: " << name.toStdString();
            return false;
        };
        EXPECT_TRUE(QTest::qWaitFor([&] { return files->model()->rowCount(files->rootIndex()) == 2; }));
        EXPECT_TRUE(isEnabled("allowed.pdf"));
        EXPECT_FALSE(isEnabled("other.pdf"));
        dialog.reject();
    });
    platform.runOpenPanel(
        {.path = dir.path(""), .shouldEnablePath = [&](const QString &path) { return path == allowed; }});
}

TEST_F(QtPlatformTest, InASandboxThePanelIsTheDesktopsWhichAloneCanGiveLeave) {
    const FilePanel panel{.message = "Please choose.",
                          .prompt = "Allow",
                          .path = touch("a.pdf"),
                          .canChooseDirectories = true,
                          .shouldEnablePath = [](const QString & /*path*/) { return false; }};
    EXPECT_TRUE(FilePanelDialog(panel, QFileDialog::AcceptOpen, nullptr)
                    .testOption(QFileDialog::DontUseNativeDialog));
    qputenv("SNAP", "/snap");
    {
        FilePanelDialog dialog(panel, QFileDialog::AcceptOpen, nullptr);
        EXPECT_FALSE(dialog.testOption(QFileDialog::DontUseNativeDialog));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        // What it hands out lies elsewhere, among the documents that may be used.
        dialog.selectFile(panel.path);
        dialog.accept();
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        FilePanel folder = panel;
        folder.path = dir.path("");
        EXPECT_EQ(FilePanelDialog(folder, QFileDialog::AcceptOpen, nullptr).fileMode(),
                  QFileDialog::Directory);
    }
    qunsetenv("SNAP");
}

TEST_F(QtPlatformTest, TheClipboardGetsTheText) {
    platform.setClipboardText("a\n\tb");
    EXPECT_EQ(QApplication::clipboard()->text(), "a\n\tb");
}

TEST_F(QtPlatformTest, FilesAndAddressesGoToTheDesktop) {
    const OpenedFiles opened({"file", "https"});
    platform.openFile("/tmp/a b#1.pdf");
    platform.openURL(QUrl("https://example.com/?q=1"));
    EXPECT_EQ(opened.urls, (QList{QUrl::fromLocalFile("/tmp/a b#1.pdf"), QUrl("https://example.com/?q=1")}));
}

TEST_F(QtPlatformTest, TheTemporaryDirectoryIsThereOrNull) {
    const auto directoryIn = [this](const QString &place) {
        const test::EnvironmentVariable temporary("TMPDIR", QFile::encodeName(place));
        return QtPlatform(dir.path("settings.ini")).temporaryDirectory();
    };
    const QFileInfo made(directoryIn(dir.path(".")));
    EXPECT_TRUE(made.isDir());
    EXPECT_EQ(made.dir().canonicalPath(), QFileInfo(dir.path(".")).canonicalFilePath());
    test::saveBytes(dir.path("file"), "somebody's");
    for (const QString &place : {dir.path("missing"), dir.path("file"), QStringLiteral("/proc")})
        EXPECT_TRUE(directoryIn(place).isNull()) << qPrintable(place);
    EXPECT_FALSE(QFile::exists(dir.path("missing")));
    EXPECT_EQ(test::bytesOf(dir.path("file")), "somebody's");
}

TEST_F(QtPlatformTest, TheClockIsTheSystems) {
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const qint64 now = platform.now();
    EXPECT_GE(now, before);
    EXPECT_LE(now, QDateTime::currentMSecsSinceEpoch());
}

TEST_F(QtPlatformTest, SettingsAreKeptInTheFile) {
    platform.userDefaults().setValue("number", 3);
    EXPECT_EQ(QtPlatform(dir.path("settings.ini")).userDefaults().integerForKey("number"), 3);
}

class FileManagerTest : public test::MessageBusFixture {
protected:
    void startViewer() {
        ASSERT_TRUE(answering.registerObject("/org/freedesktop/FileManager1", &viewer,
                                             QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(answering.registerService("org.freedesktop.FileManager1"));
    }

    FileViewer viewer;
    /// How often the other way was taken; that may be after the test.
    std::shared_ptr<int> otherwise = std::make_shared<int>(0);
};

TEST_F(FileManagerTest, AFileIsShownInTheViewer) {
    startViewer();
    showInFileManager("/tmp/a b#ä.pdf", asking, [count = otherwise] { ++*count; });
    ASSERT_TRUE(QTest::qWaitFor([this] { return !viewer.shown.isEmpty(); }));
    EXPECT_EQ(viewer.shown, QStringList("file:///tmp/a%20b%23%C3%A4.pdf"));
    EXPECT_EQ(*otherwise, 0);
}

TEST_F(FileManagerTest, WithoutAViewerTheOtherWayIsTaken) {
    showInFileManager("/tmp/a.pdf", asking, [count = otherwise] { ++*count; });
    EXPECT_TRUE(QTest::qWaitFor([this] { return *otherwise == 1; }));
}

TEST_F(FileManagerTest, AViewerThatRefusesIsNotTheLastWord) {
    startViewer();
    viewer.refuses = true;
    showInFileManager("/tmp/a.pdf", asking, [count = otherwise] { ++*count; });
    EXPECT_TRUE(QTest::qWaitFor([this] { return *otherwise == 1; }));
}

TEST(FileManager, WithoutABusTheOtherWayIsTaken) {
    int otherwise = 0;
    showInFileManager("/tmp/a.pdf", QDBusConnection("nowhere"), [&] { ++otherwise; });
    EXPECT_EQ(otherwise, 1);
}

}  // namespace
}  // namespace leafwright

#include "QtPlatformUiTest.moc"

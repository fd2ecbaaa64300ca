#include "document/commands/OtherProgramsFixture.h"
#include "e2e/Hand.h"
#include "support/ObjectDiff.h"
#include "support/OutlineText.h"

#include <QFileInfo>

#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <ostream>

namespace leafwright {
namespace {

using test::contentOf;
using test::Hand;
using test::onScreen;
using test::PdfBuilder;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

/// How another program changes the file.
enum class Change { Overwrite, Replace };

/// A book as LaTeX makes one, in which actions lead to pages, typeset anew while it is open in a window.
class TypesetAnew : public test::OtherProgramsFixture, public testing::WithParamInterface<Change> {
protected:
    void SetUp() override {
        other = savedAs("other.pdf", book(5, {"One", "Added", "Two", "Three"}));
        open(book(3, {"One", "Two", "Three"}));
        document.window()->setGeometry(0, 0, 1050, 900);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(document.window()));
        // There is no window manager that would do it.
        Hand::tool({"windowfocus", "--sync", QByteArray::number(document.window()->winId())});
        rename("Renamed");
        document.edits().remove(document.root(), 1);
    }
    /// @param titles of entries, all of which lead to the second page
    static PdfBuilder book(int pageCount, const std::vector<std::string> &titles) {
        PdfBuilder pdf;
        pdf.addNumberedPages(pageCount);
        std::vector<test::OutlineEntry> entries;
        for (const std::string &title : titles)
            entries.push_back({'(' + title + ')', "null /A << /S /GoTo /D [" + pdf.pageReference(1) +
                                                      " /XYZ 72 700 1.5] >> /Private (" + title + ')'});
        addOutline(pdf, entries);
        return pdf;
    }
    QPushButton *button() {
        return bar() && bar()->isVisible() ? bar()->findChild<QPushButton *>() : nullptr;
    }
    std::string objectOf(int index) const {
        const auto number = test::openPdf(path())->outlineRoot().childAtIndex(index).entry().number;
        return test::objectsOf(path()).at(number.value());
    }
};

TEST_P(TypesetAnew, NewPagesAreLoadedByTheBarAndSaved) {
    Hand::act([this] {
        Hand::onMain([this] { GetParam() == Change::Overwrite ? overwrite() : replace(); });
        if (!Hand::waitFor("the bar", [this] { return button() != nullptr; })) return;
        QPoint place;
        Hand::onMain([&] {
            EXPECT_EQ(button()->text(), "Load New Pages");
            EXPECT_EQ(contentOf(path()), other) << "nothing happens unasked";
            place = onScreen(*button(), button()->rect().center());
        });
        Hand::moveTo(place);
        Hand::press();
        Hand::release();
        Hand::waitFor("the new pages", [this] { return document.pdfDoc()->pageCount() == 5; });
        Hand::onMain([this] { EXPECT_EQ(contentOf(path()), other) << "nor is it saved by itself"; });
        Hand::key("ctrl+s");
        Hand::waitFor("the save", [this] { return !document.isDocumentEdited(); });
    });
    EXPECT_TRUE(platform.alerts.isEmpty());
    EXPECT_EQ(bar(), nullptr);
    EXPECT_EQ(document.myWindow()->notices()->bar("lostTargets"), nullptr) << "all lead where they led";
    EXPECT_TRUE(contentOf(path()).startsWith(other));
    EXPECT_THAT(test::linesByQpdf(path()), ElementsAre("Renamed -> 1 (72, 700)", "Three -> 1 (72, 700)"));
    EXPECT_THAT(objectOf(0), AllOf(HasSubstr("/S /GoTo"), HasSubstr("/Private (One)"), HasSubstr("1.5")));
    EXPECT_THAT(objectOf(1), AllOf(HasSubstr("/S /GoTo"), HasSubstr("/Private (Three)"), HasSubstr("1.5")));
}

INSTANTIATE_TEST_SUITE_P(By, TypesetAnew, testing::Values(Change::Overwrite, Change::Replace),
                         [](const auto &change) {
                             return change.param == Change::Overwrite ? "Overwriting" : "Replacing";
                         });

/// What happens to a file that is open, and what is told of it: in the bar, and as the default when it is
/// saved.
struct Happening {
    const char *name;
    std::function<void(const QString &path, const QByteArray &other)> happen;
    const char *told;
    const char *standard;
};

void PrintTo(const Happening &happening, std::ostream *out) {
    *out << happening.name;
}

/// A file that something happens to while an entry of it is renamed in a window.
class FileOfAWindow : public test::OtherProgramsFixture, public testing::WithParamInterface<Happening> {
protected:
    void SetUp() override {
        OtherProgramsFixture::SetUp();
        document.window()->setGeometry(0, 0, 1050, 900);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(document.window()));
        Hand::tool({"windowfocus", "--sync", QByteArray::number(document.window()->winId())});
    }
    std::optional<QByteArray> onDisk() const {
        return QFile::exists(path()) ? std::optional(contentOf(path())) : std::nullopt;
    }
};

TEST_P(FileOfAWindow, IsLeftAloneByTheDefaultAnswer) {
    std::optional<QByteArray> after;
    // The default, which leads to a panel where that is to save elsewhere; nobody chooses a place there yet.
    platform.answers = {0};
    const bool asksForPlace = QLatin1String(GetParam().standard) == QLatin1String("Save As…");
    if (asksForPlace) platform.filesToChoose = {std::nullopt};
    Hand::act([&] {
        Hand::onMain([&] {
            GetParam().happen(path(), other);
            after = onDisk();
        });
        if (!Hand::waitFor("the bar", [this] { return bar() && bar()->isVisible(); })) return;
        Hand::onMain([this] { EXPECT_THAT(bar()->text().toStdString(), HasSubstr(GetParam().told)); });
        Hand::key("ctrl+s");
        Hand::waitFor("the question", [this] { return !platform.alerts.isEmpty(); });
    });
    ASSERT_FALSE(platform.alerts.isEmpty());
    EXPECT_EQ(platform.alerts.front().buttons.value(0), GetParam().standard);
    EXPECT_EQ(onDisk(), after);
    EXPECT_EQ(document.root().children().front()->pageTitle(), "Edited");
}

const Happening happenings[] = {
    {"Overwriting", [](const QString &path, const QByteArray &other) { test::writeFile(path, other); },
     "has written to", "Load New Pages"},
    {"Replacing",
     [](const QString &path, const QByteArray & /*other*/) {
         const QString with = QFileInfo(path).path() + "/other.pdf";
         ASSERT_EQ(::rename(QFile::encodeName(with).constData(), QFile::encodeName(path).constData()), 0);
     },
     "has replaced", "Save As…"},
    {"CuttingIt",
     [](const QString &path, const QByteArray & /*other*/) {
         ASSERT_TRUE(QFile::resize(path, QFileInfo(path).size() / 2));
     },
     "has written to", "Load New Pages"},
    {"RemovingIt",
     [](const QString &path, const QByteArray & /*other*/) { ASSERT_TRUE(QFile::remove(path)); },
     "is no longer where it was", "Save As…"}};

INSTANTIATE_TEST_SUITE_P(By, FileOfAWindow, testing::ValuesIn(happenings),
                         [](const auto &happening) { return std::string(happening.param.name); });

}  // namespace
}  // namespace leafwright

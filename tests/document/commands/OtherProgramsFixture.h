#pragma once

#include "document/commands/OtherPrograms.h"
#include "support/OpenPdf.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QPushButton>

namespace leafwright::test {

/// A document with an entry on its second page, whose file another program changes.
class OtherProgramsFixture : public WindowFixture {
protected:
    void SetUp() override {
        // Before anybody watches the folder.
        other = savedAs("other.pdf", pages(5, "B"));
        open(pages(3, "A"));
        rename("Edited");
    }

    void rename(const QString &title) {
        document.edits().setPageTitle(*document.root().children()[0], title);
    }
    /// Pages with an entry on the second, which is labelled "2".
    static PdfBuilder pages(int count, const std::string &title) {
        PdfBuilder pdf;
        pdf.addNumberedPages(count);
        addOutline(pdf, {{"(" + title + ")", "[" + pdf.pageReference(1) + " /XYZ 72 700 null]"}});
        return pdf;
    }
    QByteArray savedAs(const QString &name, const PdfBuilder &pdf) const {
        pdf.save(dir.path(name));
        return contentOf(dir.path(name));
    }
    QString path() const { return dir.path("a.pdf"); }
    void overwrite() const { writeFile(path(), other); }
    void replace() const {
        ASSERT_EQ(::rename(QFile::encodeName(dir.path("other.pdf")).constData(),
                           QFile::encodeName(path()).constData()),
                  0);
    }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)); }
    const NoticeBar *bar() { return document.myWindow()->notices()->bar("changedOnDisk"); }
    QStringList buttonsOfBar() {
        QStringList titles;
        for (const auto *button : bar()->findChildren<QPushButton *>())
            titles.append(button->text());
        return titles;
    }

    FileOnDisk::State state() const { return document.outline().stateOnDisk(); }
    void waitForBar() {
        ASSERT_TRUE(QTest::qWaitFor([&] { return bar() != nullptr; }, 10000));
    }
    QString edited() const { return QStringLiteral("+ [2] Edited (72,700)\n"); }

    QByteArray other;
};

}  // namespace leafwright::test

#include "document/commands/ActionTable.h"
#include "support/OpenPdf.h"
#include "support/TreeWindowFixture.h"

#include <QPainter>
#include <QPdfWriter>

namespace leafwright {
namespace {

using test::PdfBuilder;

/// A window with a PDF of a few pages.
class EmptyOutlineWindow : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        open(pdf);
    }
    /// The text that is drawn where the outline's entries are.
    QString drawnText() {
        QWidget &view = *document.outlineview()->viewport();
        document.window()->show();
        QCoreApplication::processEvents();
        const QString path = dir.path("drawn.pdf");
        QPdfWriter writer(path);
        QPainter painter(&writer);
        painter.scale(10, 10);  // to the writer's dots
        view.render(&painter);
        painter.end();
        return test::textOf(*test::openPdf(path), 0).simplified();
    }
};

TEST_F(EmptyOutlineWindow, SaysHowEntriesAreMade) {
    setOutline("");
    const auto all = actionDescriptions();
    const auto command = std::ranges::find_if(
        all, [](const ActionDescription &each) { return QLatin1String(each.selector) == u"findContents:"; });
    ASSERT_NE(command, all.end());
    const QString text = drawnText();
    EXPECT_TRUE(text.startsWith("No entries yet.")) << text.toStdString();
    const QString path = menuTitle(command->menu).remove('&') + " > " + actionTitle(*command);
    EXPECT_TRUE(text.contains(path)) << text.toStdString() << " does not name " << path.toStdString();
    EXPECT_TRUE(text.endsWith("drag it here.")) << text.toStdString();
}

TEST_F(EmptyOutlineWindow, SaysNothingOnceThereIsAnEntry) {
    setOutline("first");
    EXPECT_FALSE(drawnText().contains("No entries yet."));
}

}  // namespace
}  // namespace leafwright

#pragma once

#include "app/Defaults.h"
#include "document/window/DocumentWindow.h"
#include "document/window/HeadingMapModel.h"
#include "outlineview/OKNSOutlineView.h"
#include "outlineview/OutlineViewExtensions.h"
#include "pageview/ThumbnailView.h"
#include "support/DocumentFixture.h"
#include "tree/TreeController.h"
#include "view/LabelPDFView.h"
#include "widgets/SplitView.h"

#include <QAbstractItemModelTester>
#include <QTest>

namespace leafwright::test {

/// A document with its real window, on a recording platform.
class WindowFixture : public DocumentFixture {
protected:
    /// Opens a PDF in the window, and waits for all that loading leaves to later.
    void open(const PdfBuilder &pdf, const PdfBuilder::Options &options = {}) {
        openWithoutWaiting(pdf, options);
        document.finishLoading();
    }
    /// Opens a PDF in the window; the heading map is still to be guessed then.
    void openWithoutWaiting(const PdfBuilder &pdf, const PdfBuilder::Options &options = {}) {
        registerDefaults(platform.userDefaults());
        ASSERT_TRUE(document.readFromURL(save(pdf, options)));
        document.makeWindowControllers();
        constexpr auto mode = QAbstractItemModelTester::FailureReportingMode::Fatal;
        treeTester = std::make_unique<QAbstractItemModelTester>(&document.treecontroller(), mode);
        mapTester = std::make_unique<QAbstractItemModelTester>(&document.headingMapModel(), mode);
    }

    TreeNode *node(const IndexPath &path) {
        return document.treecontroller().descendantNodeAtIndexPath(path);
    }
    void select(const std::vector<IndexPath> &paths) {
        document.treecontroller().setSelectionIndexPaths(paths);
    }

    // They watch over the models of what is open.
    std::unique_ptr<QAbstractItemModelTester> treeTester;
    std::unique_ptr<QAbstractItemModelTester> mapTester;
};

}  // namespace leafwright::test

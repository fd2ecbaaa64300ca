#include "document/window/RecentDocumentsMenu.h"

#include <QDir>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(RecentDocumentNames, HaveTheFolderWhereTwoAreEqual) {
    const QString home = QDir::homePath();
    EXPECT_EQ(recentDocumentNames({"/x/a.pdf", "/x/b.pdf", home + "/books/a.pdf", home + "/a.pdf"}),
              (QStringList{"a.pdf — /x", "b.pdf", "a.pdf — ~/books", "a.pdf — ~"}));
    EXPECT_EQ(recentDocumentNames({home + "less/a.pdf", "/a.pdf"}),
              (QStringList{"a.pdf — " + home + "less", "a.pdf — /"}));
    EXPECT_EQ(recentDocumentNames({}), QStringList());
}

}  // namespace
}  // namespace leafwright

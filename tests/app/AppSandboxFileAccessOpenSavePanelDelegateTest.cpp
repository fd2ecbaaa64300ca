#include "app/AppSandboxFileAccessOpenSavePanelDelegate.h"
#include "platform/Assertion.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using Delegate = AppSandboxFileAccessOpenSavePanelDelegate;

const Delegate delegate(QUrl::fromLocalFile("/home/me/a b.pdf"));

bool isEnabled(const char *path) {
    return delegate.panelShouldEnableURL(QUrl::fromLocalFile(path));
}

TEST(SandboxPanelDelegate, KeepsTheNamesOnTheWay) {
    EXPECT_EQ(delegate.pathComponents(), (QStringList{"/", "home", "me", "a b.pdf"}));
    EXPECT_EQ(Delegate(QUrl("file:///home/me/")).pathComponents(), (QStringList{"/", "home", "me"}));
    EXPECT_EQ(Delegate(QUrl("file:///")).pathComponents(), QStringList("/"));
}

TEST(SandboxPanelDelegate, EnablesTheTargetAndItsAncestors) {
    for (const char *path : {"/", "/home", "/home/", "/home/me", "/home/me/a b.pdf"})
        EXPECT_TRUE(isEnabled(path)) << path;
}

TEST(SandboxPanelDelegate, EnablesNothingElse) {
    for (const char *path : {"/hom", "/home2", "/Home", "/me", "/home/you", "/home/me/b.pdf", "/home/me/a b",
                             "/home/me/a b.pdf/x", "/home/../home"})
        EXPECT_FALSE(isEnabled(path)) << path;
}

void expectAssertion(const std::function<void()> &call, const char *argument) {
    try {
        call();
        ADD_FAILURE() << "nothing was asserted";
    } catch (const AssertionFailure &failure) {
        EXPECT_EQ(failure.description(),
                  QStringLiteral("Invalid parameter not satisfying: %1").arg(argument));
        EXPECT_EQ(failure.sourceFile(), "AppSandboxFileAccessOpenSavePanelDelegate");
        EXPECT_GT(failure.where().line, 0);
    }
}

TEST(SandboxPanelDelegate, AMissingURLIsAsserted) {
    expectAssertion([] { const Delegate none{QUrl()}; }, "fileURL");
    expectAssertion([] { delegate.panelShouldEnableURL({}); }, "url");
}

}  // namespace
}  // namespace leafwright

#pragma once

#include <QStringList>
#include <QUrl>

namespace leafwright {

/// Keeps an open panel on the way to one file or folder: it and the folders above it can be chosen, nothing
/// else.
class AppSandboxFileAccessOpenSavePanelDelegate {
public:
    /// Asserts that there is a URL.
    explicit AppSandboxFileAccessOpenSavePanelDelegate(const QUrl &fileURL);

    /// The names on the way to the file, from the root on: "/", "home", "me".
    const QStringList &pathComponents() const { return pathComponents_; }

    /// Whether a URL leads to the file or to a folder above it. Asserts that there is a URL.
    bool panelShouldEnableURL(const QUrl &url) const;

private:
    QStringList pathComponents_;
};

}  // namespace leafwright

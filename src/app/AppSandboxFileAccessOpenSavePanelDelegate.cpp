#include "app/AppSandboxFileAccessOpenSavePanelDelegate.h"

#include "platform/Assertion.h"

#include <algorithm>

namespace leafwright {

namespace {

QStringList componentsOf(const QUrl &url) {
    const QString path = url.path(QUrl::FullyDecoded);
    QStringList names = path.split(u'/', Qt::SkipEmptyParts);
    if (path.startsWith(u'/')) names.prepend(QStringLiteral("/"));
    return names;
}

}  // namespace

AppSandboxFileAccessOpenSavePanelDelegate::AppSandboxFileAccessOpenSavePanelDelegate(const QUrl &fileURL) {
    assertParameter(!fileURL.isEmpty(), "fileURL");
    pathComponents_ = componentsOf(fileURL);
}

bool AppSandboxFileAccessOpenSavePanelDelegate::panelShouldEnableURL(const QUrl &url) const {
    assertParameter(!url.isEmpty(), "url");
    const QStringList names = componentsOf(url);
    return names.size() <= pathComponents_.size() &&
           std::equal(names.begin(), names.end(), pathComponents_.begin());
}

}  // namespace leafwright

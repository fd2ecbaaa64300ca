#pragma once

#include "exchange/OutlineSource.h"

#include <QJsonArray>
#include <QJsonObject>

#include <functional>
#include <optional>

namespace leafwright {

/// Whether the nodes of a JSON outline have the numbers of the file's entries, and not those of another file,
/// or of an earlier edition. What a node says may have been edited, but not so that little is left of what
/// the entries of its number say.
bool areNumberedAsInFile(const QJsonArray &nodes, const OutlineEntries &inFile);

/// The keys of nodes that are none of a JSON outline, such as misspelt ones.
class UnknownKeys {
public:
    /// @param where tells the node's place, such as "[3].children[0]"; called if it has such keys
    void lookAt(const QJsonObject &node, const std::function<QString()> &where);
    /// Tells where the first of them are; absent without any.
    std::optional<QString> notice() const;

private:
    QStringList keys_;
    QStringList places_;  ///< Of the keys, where each was first.
    bool hasMore_ = false;
};

}  // namespace leafwright

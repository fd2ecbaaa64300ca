#pragma once

#include "autotoc/HeadingLevelMap.h"

#include <QAbstractTableModel>

namespace leafwright {

/// The heading level map as a table of two columns, "Level" and "Font", a row a record. A level is red where
/// no font has the one above it.
class HeadingMapModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { LevelColumn, FontColumn, ColumnCount };

    /// @param map shown, and owned by someone who outlives the model
    explicit HeadingMapModel(const HeadingLevelMap &map) : map_(map), rows_(static_cast<int>(map.size())) {}

    /// The key of the records' value that a column shows: "Level" or "FontTraits".
    static QLatin1String identifier(int column);

    /// To be called whenever the map was changed.
    void reloadData();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const HeadingLevelMap &map_;
    int rows_;  ///< As the views know them; the map may have been changed since.
};

}  // namespace leafwright

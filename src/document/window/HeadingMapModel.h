#pragma once

#include "autotoc/HeadingLevelMap.h"

#include <QAbstractTableModel>

namespace leafwright {

/// The heading level map as a table of two columns, "Level" and "Font", a row a record. A level is red where
/// no font has the one above it.
class HeadingMapModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// That can be given in a cell.
    static constexpr int deepestLevel = 9;

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
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    /// A level was entered in its cell, from 1 to deepestLevel. Nothing has changed by itself.
    void levelEntered(int row, int level);

private:
    const HeadingLevelMap &map_;
    int rows_;  ///< As the views know them; the map may have been changed since.
};

}  // namespace leafwright

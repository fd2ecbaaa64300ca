#pragma once

#include "autotoc/FontUses.h"

#include <QAbstractTableModel>

namespace leafwright {

/// The heading level map as a table, a row a record: its level and font, how often the document uses the
/// font, and the first text in it. A level is red where no font has the one above it.
class HeadingMapModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// That can be given in a cell.
    static constexpr int deepestLevel = 9;

    enum Column { LevelColumn, FontColumn, CountColumn, SampleColumn, ColumnCount };

    /// @param map shown, and owned by someone who outlives the model
    explicit HeadingMapModel(const HeadingLevelMap &map) : map_(map), rows_(static_cast<int>(map.size())) {}

    /// The key of the records' value that a column shows: "Level" or "FontTraits"; null for one that shows
    /// what the document has.
    static QLatin1String identifier(int column);

    /// To be called whenever the map was changed.
    void reloadData();
    /// How the document uses its fonts; absent until they have been counted.
    void setUses(std::optional<FontUses> uses);

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
    QString text(const LevelRecord &record, int column) const;
    QString description(const QModelIndex &index, const LevelRecord &record) const;

    const HeadingLevelMap &map_;
    int rows_;  ///< As the views know them; the map may have been changed since.
    std::optional<FontUses> uses_;
};

}  // namespace leafwright

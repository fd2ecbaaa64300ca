#include "document/window/HeadingMapModel.h"

namespace leafwright {

namespace {

/// A record's value under a key.
QString objectValue(const LevelRecord &record, QLatin1String key) {
    return key == QLatin1String("Level") ? record.levelName : record.fontText;
}

}  // namespace

QLatin1String HeadingMapModel::identifier(int column) {
    return column == LevelColumn ? QLatin1String("Level") : QLatin1String("FontTraits");
}

void HeadingMapModel::reloadData() {
    beginResetModel();
    rows_ = static_cast<int>(map_.size());
    endResetModel();
}

int HeadingMapModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : rows_;
}

int HeadingMapModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant HeadingMapModel::data(const QModelIndex &index, int role) const {
    const auto row = static_cast<size_t>(index.row());
    if (!index.isValid() || row >= map_.size()) return {};
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return objectValue(map_[row], identifier(index.column()));
}

QVariant HeadingMapModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return section == LevelColumn ? tr("Level") : tr("Font");
}

}  // namespace leafwright

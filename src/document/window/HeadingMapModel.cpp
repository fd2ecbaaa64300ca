#include "document/window/HeadingMapModel.h"

#include "outlineview/LegibleColor.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace leafwright {

namespace {

/// A record's value under a key.
QString objectValue(const LevelRecord &record, QLatin1String key) {
    return key == QLatin1String("Level") ? record.levelName : record.fontText;
}

/// Whether no font has the level above a record's.
bool leavesGap(const LevelRecord &record, const HeadingLevelMap &map) {
    if (record.levelNumber <= 1) return false;
    const auto hasLevelAbove = [&record](const LevelRecord &other) {
        return other.levelNumber == record.levelNumber - 1;
    };
    return std::ranges::none_of(map, hasLevelAbove);
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
    const LevelRecord &record = map_[row];
    const bool isGap = index.column() == LevelColumn && leavesGap(record, map_);
    switch (role) {
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole:
            if (isGap)
                return tr("No font has the level H%1. These headings stand a single level below those before "
                          "them.")
                    .arg(record.levelNumber - 1);
            return role == Qt::ToolTipRole ? objectValue(record, identifier(index.column())) : QVariant();
        case Qt::ForegroundRole:
            if (isGap) return legibleColor(Qt::red, QGuiApplication::palette().color(QPalette::Base));
            return {};
        case Qt::DisplayRole:
            return objectValue(record, identifier(index.column()));
        case Qt::EditRole:
            return index.column() == LevelColumn ? record.levelNumber : QVariant();
        default:
            return {};
    }
}

Qt::ItemFlags HeadingMapModel::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() == LevelColumn ? flags | Qt::ItemIsEditable : flags;
}

bool HeadingMapModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    const int level = value.toInt();
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable)) return false;
    if (level < 1 || level > deepestLevel) return false;
    Q_EMIT levelEntered(index.row(), level);
    return true;
}

QVariant HeadingMapModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return section == LevelColumn ? tr("Level") : tr("Font");
}

}  // namespace leafwright

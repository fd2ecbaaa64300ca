#include "document/window/HeadingMapModel.h"

#include "outlineview/LegibleColor.h"

#include <QGuiApplication>
#include <QLocale>
#include <QPalette>

#include <algorithm>

namespace leafwright {

namespace {

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
    if (column == LevelColumn) return QLatin1String("Level");
    return column == FontColumn ? QLatin1String("FontTraits") : QLatin1String();
}

void HeadingMapModel::reloadData() {
    beginResetModel();
    rows_ = static_cast<int>(map_.size());
    endResetModel();
}

void HeadingMapModel::setUses(std::optional<FontUses> uses) {
    uses_ = std::move(uses);
    if (rows_ > 0) Q_EMIT dataChanged(index(0, CountColumn), index(rows_ - 1, SampleColumn));
}

int HeadingMapModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : rows_;
}

int HeadingMapModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString HeadingMapModel::text(const LevelRecord &record, int column) const {
    if (column == LevelColumn) return record.levelName;
    if (column == FontColumn) return record.fontText;
    if (!uses_) return {};
    const FontUse use = uses_->value(fontIDOf(record));
    return column == CountColumn ? QLocale().toString(use.count) : use.sample;
}

/// What is to be said of a cell beside its text; null where the text says all.
QString HeadingMapModel::description(const QModelIndex &index, const LevelRecord &record) const {
    if (index.column() == LevelColumn && leavesGap(record, map_))
        return tr("No font has the level H%1. These headings stand a single level below those before them.")
            .arg(record.levelNumber - 1);
    if (index.column() == CountColumn && uses_)
        return tr("Pieces of text in this font: %1").arg(text(record, CountColumn));
    return {};
}

QVariant HeadingMapModel::data(const QModelIndex &index, int role) const {
    const auto row = static_cast<size_t>(index.row());
    if (!index.isValid() || row >= map_.size()) return {};
    const LevelRecord &record = map_[row];
    const QString note = description(index, record);
    switch (role) {
        case Qt::ToolTipRole:
            return note.isNull() ? text(record, index.column()) : note;
        case Qt::AccessibleDescriptionRole:
            return note.isNull() ? QVariant() : note;
        case Qt::ForegroundRole:
            if (index.column() == LevelColumn && !note.isNull())
                return legibleColor(Qt::red, QGuiApplication::palette().color(QPalette::Base));
            return {};
        case Qt::TextAlignmentRole:
            return index.column() == CountColumn ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
        case Qt::DisplayRole:
            return text(record, index.column());
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
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole && section == CountColumn)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && section == CountColumn)
        return tr("How many pieces of text are set in the font");
    if (role == Qt::ToolTipRole && section == SampleColumn) return tr("The first text in the font");
    if (role != Qt::DisplayRole) return {};
    switch (section) {
        case LevelColumn:
            return tr("Level");
        case FontColumn:
            return tr("Font");
        case CountColumn:
            return tr("Count");
        default:
            return tr("Sample");
    }
}

}  // namespace leafwright

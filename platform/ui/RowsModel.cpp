#include "platform/ui/RowsModel.h"

#include "platform/core/Format.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"
#include "platform/ui/Colours.h"
#include "platform/ui/FigureSource.h"
#include "platform/ui/ListExport.h"

#include <QDate>
#include <QGuiApplication>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace ui {

RowsModel::RowsModel(QString keyField, QList<ListColumn> columns, QObject *parent)
    : QAbstractTableModel(parent)
    , keyField_(std::move(keyField))
    , columns_(std::move(columns))
{
    columns_.removeIf([](const ListColumn &column) { return column.figures && !column.figures->isKnown(); });
}

void RowsModel::setRows(data::Rows rows)
{
    beginResetModel();
    figures_.clear();
    rows_ = std::move(rows);
    keyIndex_ = rows_.indexOf(keyField_);
    fieldIndexes_.clear();
    for (const ListColumn &column : std::as_const(columns_))
        fieldIndexes_.append(rows_.indexOf(column.field));
    arrange();
    endResetModel();
}

void RowsModel::removeKey(int key)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (keyAt(row) != key)
            continue;
        beginRemoveRows({}, row, row);
        const qsizetype gone = order_.takeAt(row);
        rows_.mutableValues().removeAt(gone);
        for (qsizetype &place : order_)
            place -= place > gone ? 1 : 0;
        endRemoveRows();
        return;
    }
}

QStringList RowsModel::fields() const
{
    QStringList fields = {keyField_};
    for (const ListColumn &column : columns_) {
        if (!column.figures)
            fields.append(column.field);
    }
    return fields;
}

int RowsModel::keyAt(int row) const
{
    return row >= 0 && row < rowCount() && keyIndex_ >= 0 ? shownRow(row)[keyIndex_].toInt() : -1;
}

QVariant RowsModel::valueAt(int row, const QString &field) const
{
    const int index = rows_.indexOf(field);
    return row >= 0 && row < rowCount() && index >= 0 ? shownRow(row)[index] : QVariant();
}

int RowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QString RowsModel::shown(const QVariant &value, ListColumn::Display display)
{
    if (!value.isValid())
        return {};
    switch (display) {
    case ListColumn::Display::Date:
        return core::formatDate(value.toDate());
    case ListColumn::Display::Quantity:
        return core::formatNumber(value.toDouble());
    case ListColumn::Display::Currency:
        return core::formatCurrency(value.toDouble());
    case ListColumn::Display::Flag:
        return core::parseFlag(value.toString()).value_or(false) ? core::tr("Sì") : core::tr("No");
    case ListColumn::Display::Text:
    case ListColumn::Display::Integer:
        break;
    }
    return value.toString();
}

QVariant RowsModel::exported(const QVariant &value, ListColumn::Display display)
{
    if (value.isValid() && display == ListColumn::Display::Flag)
        return core::parseFlag(value.toString()).value_or(false);
    return value;
}

// As many decimals as are shown.
int RowsModel::places(int column) const
{
    using Display = ListColumn::Display;
    const Display display = columns_[column].display;
    if (display == Display::Quantity || display == Display::Currency)
        return 2;
    const int field = fieldIndexes_.value(column, -1);
    return field < 0 ? 0 : rows_.columns()[field].places;
}

QVariant RowsModel::alignment(const ListColumn &column) const
{
    const bool left = column.display == ListColumn::Display::Text || column.display == ListColumn::Display::Flag;
    return (vertical_ | (left ? Qt::AlignLeft : Qt::AlignRight)).toInt();
}

QVariant RowsModel::data(const QModelIndex &index, int role) const
{
    // The view's own "copy" key asks for the current cell even when there is none.
    if (!index.isValid())
        return {};
    const ListColumn &column = columns_[index.column()];
    const auto value = [this, &index, role] { return valueOf(index, role); };
    if (role == Qt::DisplayRole)
        return shown(value(), column.display);
    if (role == ExportValue)
        return exported(value(), column.display);
    if (role == Qt::ForegroundRole && column.redBelowZero)
        return value().toDouble() < 0 ? QVariant::fromValue(negativeText(QGuiApplication::palette())) : QVariant();
    return role == Qt::TextAlignmentRole ? alignment(column) : QVariant();
}

QVariant RowsModel::valueOf(const QModelIndex &index, int role) const
{
    const int column = index.column();
    if (!columns_[column].figures) {
        const int field = fieldIndexes_.value(column, -1);
        return field < 0 ? QVariant() : shownRow(index.row())[field];
    }
    // An export asks for every row from the first to the last, a view for the rows that it shows.
    constexpr int rowsAtOnce = 500;
    const QString text = valueAt(index.row(), columns_[column].figuresOf).toString();
    if (role == ExportValue && !figures_.contains({column, text}))
        fetchFigures(column, index.row(), std::min(index.row() + rowsAtOnce, rowCount()) - 1);
    const auto known = figures_.constFind({column, text});
    return known == figures_.constEnd() ? QVariant() : *known;
}

QList<const FigureSource *> RowsModel::figureSources() const
{
    return core::mapped(core::filtered(columns_, &ListColumn::figures), &ListColumn::figures);
}

void RowsModel::loadFigures(int first, int last)
{
    for (int column = 0; column < columnCount(); ++column) {
        if (!columns_[column].figures)
            continue;
        fetchFigures(column, first, last);
        Q_EMIT dataChanged(index(first, column), index(last, column));
    }
}

void RowsModel::fetchFigures(int column, int first, int last) const
{
    QStringList unknown;
    for (int row = first; row <= last; ++row) {
        const QString text = valueAt(row, columns_[column].figuresOf).toString();
        if (!figures_.contains({column, text}))
            unknown.append(text);
    }
    if (unknown.isEmpty())
        return;
    const QHash<QString, double> found = columns_[column].figures->of(unknown);
    for (const QString &text : std::as_const(unknown))
        figures_.insert({column, text}, found.value(text));
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= columns_.size())
        return {};
    if (role == Qt::DisplayRole)
        return columns_[section].header;
    if (role == Qt::TextAlignmentRole)
        return alignment(columns_[section]);
    if (role == ExportPlaces)
        return places(section);
    if (role == ExportCurrency)
        return columns_[section].display == ListColumn::Display::Currency;
    return {};
}

void RowsModel::arrange()
{
    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), 0);
    const int field = fieldIndexes_.value(sortColumn_, -1);
    if (field < 0)
        return;
    const bool asText = columns_[sortColumn_].display == ListColumn::Display::Text;
    const auto before = [this, field, asText](qsizetype left, qsizetype right) {
        const QVariant &a = rows_.values(left)[field];
        const QVariant &b = rows_.values(right)[field];
        if (!a.isValid() || !b.isValid())
            return !a.isValid() && b.isValid();
        if (asText)
            return a.toString().compare(b.toString(), Qt::CaseInsensitive) < 0;
        return QVariant::compare(a, b) == QPartialOrdering::Less;
    };
    if (sortOrder_ == Qt::AscendingOrder)
        std::stable_sort(order_.begin(), order_.end(), before);
    else
        std::stable_sort(order_.begin(), order_.end(),
                         [&before](qsizetype one, qsizetype other) { return before(other, one); });
}

void RowsModel::sort(int column, Qt::SortOrder order)
{
    sortColumn_ = column;
    sortOrder_ = order;
    Q_EMIT layoutAboutToBeChanged();
    const QList<qsizetype> before = order_;
    arrange();
    // What is selected stays so.
    for (const QModelIndex &index : persistentIndexList())
        changePersistentIndex(index,
                              this->index(static_cast<int>(order_.indexOf(before[index.row()])), index.column()));
    Q_EMIT layoutChanged();
}

} // namespace ui

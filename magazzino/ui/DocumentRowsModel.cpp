#include "magazzino/ui/DocumentRowsModel.h"

#include "platform/core/Decimal.h"
#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Translation.h"
#include "platform/ui/Colours.h"
#include "platform/ui/ListExport.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QColor silver(192, 192, 192);

QString shown(const RowColumn &column, const DocumentRow &row)
{
    if (!column.types.testFlag(row.type()))
        return {};
    const auto number = numberOf(column);
    if (!number)
        return textOf(column, row);
    const double value = (row.*number).value_or(0);
    return column.format == RowFormat::Currency ? core::formatCurrency(value) : core::formatNumber(value);
}

QString edited(const RowColumn &column, const DocumentRow &row)
{
    const auto number = numberOf(column);
    if (!number)
        return shown(column, row);
    return (row.*number) ? core::plainNumber(*(row.*number)) : QString();
}

QVariant exported(const RowColumn &column, const DocumentRow &row)
{
    const auto number = numberOf(column);
    if (!number)
        return shown(column, row);
    return column.types.testFlag(row.type()) ? (row.*number).value_or(0) : QVariant();
}

QVariant alignment(const RowColumn &column)
{
    return QVariant(Qt::AlignVCenter | (column.isLeftAligned() ? Qt::AlignLeft : Qt::AlignRight));
}

} // namespace

DocumentRowsModel::DocumentRowsModel(const DocumentKind &kind, QObject *parent)
    : QAbstractTableModel(parent)
    , unitPrice_(kind.unitPrice)
    , columns_(kind.shownColumns)
{
}

int DocumentRowsModel::indexOf(const RowMember &member) const
{
    for (int i = 0; i < columns_.size(); ++i) {
        if (columns_[i].member == member)
            return i;
    }
    return -1;
}

void DocumentRowsModel::setHint(const RowMember &member, std::function<QString(const DocumentRow &)> hint)
{
    columns_[indexOf(member)].hint = std::move(hint);
}

void DocumentRowsModel::setRows(QList<DocumentRow> rows)
{
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void DocumentRowsModel::append(const DocumentRow &row)
{
    const int last = rowCount();
    beginInsertRows({}, last, last);
    rows_.append(row);
    endInsertRows();
}

int DocumentRowsModel::rowLike(const DocumentRow &row) const
{
    for (int i = 0; i < rowCount(); ++i) {
        const DocumentRow &other = rows_[i];
        if (other.tipo == row.tipo && other.codice == row.codice &&
            (other.*unitPrice_).value_or(0) == (row.*unitPrice_).value_or(0) &&
            other.sconto.value_or(0) == row.sconto.value_or(0))
            return i;
    }
    return -1;
}

bool DocumentRowsModel::raiseQuantity(int row, double quantity)
{
    return setData(index(row, indexOf(&DocumentRow::quantita)),
                   core::plainNumber(rows_[row].quantita.value_or(0) + quantity), Qt::EditRole);
}

void DocumentRowsModel::remove(int row)
{
    beginRemoveRows({}, row, row);
    rows_.removeAt(row);
    endRemoveRows();
}

bool DocumentRowsModel::move(int row, int step)
{
    const int target = row + step;
    if (row < 0 || target < 0 || row >= rowCount() || target >= rowCount())
        return false;
    rows_.swapItemsAt(row, target);
    Q_EMIT dataChanged(index(std::min(row, target), 0), index(std::max(row, target), columnCount() - 1));
    return true;
}

void DocumentRowsModel::updateRows(const std::function<void(QList<DocumentRow> &)> &change)
{
    change(rows_);
    if (!rows_.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int DocumentRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DocumentRowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant DocumentRowsModel::data(const QModelIndex &index, int role) const
{
    // The view's own "copy" key asks for the current cell even when there is none.
    if (!index.isValid())
        return {};
    const DocumentRow &row = rows_[index.row()];
    const RowColumn &column = columns_[index.column()];
    switch (role) {
    case Qt::DisplayRole:
        return shown(column, row);
    case Qt::EditRole:
        return edited(column, row);
    case ui::ExportValue:
        return exported(column, row);
    case Qt::TextAlignmentRole:
        return alignment(column);
    case Qt::ToolTipRole:
        return column.hint ? column.hint(row) : warnings_.value(index.row());
    case Qt::BackgroundRole:
        if (column.greyed.testFlag(row.type()))
            return silver;
        return warnings_.contains(index.row()) ? ui::warningRowGround : QVariant();
    case Qt::ForegroundRole:
        // These grounds are light in a dark theme, too.
        return warnings_.contains(index.row()) || column.greyed.testFlag(row.type()) ? ui::warningText : QVariant();
    default:
        return {};
    }
}

QVariant DocumentRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= columns_.size())
        return {};
    const RowColumn &column = columns_[section];
    switch (role) {
    case Qt::DisplayRole:
        return column.header;
    case ui::ExportPlaces:
        return 2;
    case ui::ExportCurrency:
        return column.format == RowFormat::Currency;
    case Qt::TextAlignmentRole:
        return alignment(column);
    default:
        return {};
    }
}

Qt::ItemFlags DocumentRowsModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return columns_[index.column()].editable.testFlag(rows_[index.row()].type()) ? base | Qt::ItemIsEditable : base;
}

QString DocumentRowsModel::typedNumber(double value)
{
    constexpr int mostPlaces = 6;
    QString text = core::plainNumber(value, mostPlaces);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u','))
        text.chop(1);
    return text;
}

// Cells hold two decimals, so that what is summed is what will be stored.
CellRefusal DocumentRowsModel::tryNumber(DocumentRow &row, const RowColumn &column, const QString &text) const
{
    const std::optional<core::WrittenNumber> typed = core::readNumber(text);
    if (!typed)
        return {core::tr("\"%1\" non è un numero valido.").arg(text), true};
    if (typed->places > 2)
        return {core::tr("\"%1\" ha più di due decimali.").arg(text), true};
    if (typed->value > largestNumber && column.maximum == largestNumber)
        return {core::tr("Il numero è troppo grande.")};
    if (typed->value < 0 || (typed->value == 0 && !column.zeroAllowed) || typed->value > column.maximum)
        return {column.refusal};
    DocumentRow changed = row;
    changed.*numberOf(column) = typed->value;
    // Before the discount, so that the order of typing does not matter.
    const double amount = (changed.*unitPrice_).value_or(0) * changed.quantita.value_or(0);
    if (!core::fitsDecimal(amount, 2))
        return {core::tr("L'importo della riga è troppo grande.")};
    row = changed;
    return {};
}

bool DocumentRowsModel::takeNumber(DocumentRow &row, const RowColumn &column, const QString &text)
{
    const CellRefusal refusal = tryNumber(row, column, text);
    if (!refusal.text.isEmpty())
        Q_EMIT cellRefused(refusal.text, refusal.unreadable);
    return refusal.text.isEmpty();
}

bool DocumentRowsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable))
        return false;
    DocumentRow &row = rows_[index.row()];
    const RowColumn &column = columns_[index.column()];
    if (!column.isNumber())
        readValue(column, value, row);
    else if (!takeNumber(row, column, value.toString()))
        return false;
    Q_EMIT dataChanged(index, index);
    Q_EMIT cellEdited(index.row());
    return true;
}

#include "magazzino/ui/DocumentGrid.h"

#include "platform/core/Decimal.h"
#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"
#include "platform/ui/ListExport.h"

#include <QColor>

using namespace Qt::StringLiterals;

namespace {

/// How a numeric column is edited and shown.
struct NumberColumn
{
    RowColumn column;
    std::optional<double> DocumentRow::*value;
    bool currency;
    bool zeroAllowed; ///< quantity 0 is refused while a price of 0 is fine; the asymmetry is intended
    double maximum;
    QString refusal;
};

const QList<NumberColumn> &numberColumns()
{
    constexpr double largest = 99'999'999'999.99;
    static const QList<NumberColumn> columns = {
        {RowColumn::Costo, &DocumentRow::costo, true, true, largest, u"Il costo non può essere negativo."_s},
        {RowColumn::Prezzo, &DocumentRow::prezzo, true, true, largest, u"Il prezzo non può essere negativo."_s},
        {RowColumn::Sconto, &DocumentRow::sconto, false, true, 100, u"Lo sconto va da 0 a 100."_s},
        {RowColumn::Quantita, &DocumentRow::quantita, false, false, largest,
         u"La quantità deve essere maggiore di zero."_s},
        {RowColumn::Importo, &DocumentRow::importo, true, true, largest, {}},
    };
    return columns;
}

const NumberColumn *numberColumn(RowColumn column)
{
    for (const NumberColumn &number : numberColumns()) {
        if (number.column == column)
            return &number;
    }
    return nullptr;
}

bool isEditable(const DocumentRow &row, RowColumn column)
{
    if (row.tipo == tipoRiga::testo)
        return column == RowColumn::Descrizione;
    if (column == RowColumn::Descrizione)
        return row.tipo == tipoRiga::nonImponibile;
    return numberColumn(column) && column != RowColumn::Importo;
}

// As typed: two decimals, no thousands separator.
QString plainNumber(double value)
{
    return core::formatNumber(value).remove(u'.');
}

} // namespace

DocumentRowsModel::DocumentRowsModel(QList<RowColumnSpec> columns, QObject *parent)
    : QAbstractTableModel(parent)
    , columns_(std::move(columns))
{
}

int DocumentRowsModel::indexOf(RowColumn column) const
{
    for (int i = 0; i < columns_.size(); ++i) {
        if (columns_[i].column == column)
            return i;
    }
    return -1;
}

bool DocumentRowsModel::isNumber(int position) const
{
    return numberColumn(columns_[position].column) != nullptr;
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

QString DocumentRowsModel::shown(const DocumentRow &row, RowColumn column) const
{
    const bool isText = row.tipo == tipoRiga::testo;
    if (const NumberColumn *number = numberColumn(column)) {
        const double value = (row.*number->value).value_or(0);
        return isText ? QString() : number->currency ? core::formatCurrency(value) : core::formatNumber(value);
    }
    switch (column) {
    case RowColumn::Codice:
        return isText ? QString() : row.codice;
    case RowColumn::Descrizione:
        return row.descrizione;
    case RowColumn::IVA:
        return row.codiceIVA;
    case RowColumn::UM:
        return row.um;
    default:
        return {};
    }
}

QVariant DocumentRowsModel::exported(const DocumentRow &row, RowColumn column) const
{
    const NumberColumn *number = numberColumn(column);
    if (!number)
        return shown(row, column);
    return row.tipo == tipoRiga::testo ? QVariant() : (row.*number->value).value_or(0);
}

QVariant DocumentRowsModel::data(const QModelIndex &index, int role) const
{
    // The view's own "copy" key asks for the current cell even when there is none.
    if (!index.isValid())
        return {};
    const DocumentRow &row = rows_[index.row()];
    const RowColumn column = columns_[index.column()].column;
    switch (role) {
    case Qt::DisplayRole:
        return shown(row, column);
    case Qt::EditRole:
        if (const NumberColumn *number = numberColumn(column))
            return (row.*number->value) ? plainNumber(*(row.*number->value)) : QString();
        return shown(row, column);
    case ui::ExportValue:
        return exported(row, column);
    case Qt::TextAlignmentRole: {
        const bool left = column == RowColumn::Codice || column == RowColumn::Descrizione;
        return QVariant(Qt::AlignVCenter | (left ? Qt::AlignLeft : Qt::AlignRight));
    }
    case Qt::ToolTipRole:
        return column == RowColumn::IVA && vatHint_ && row.idAliquotaIVA ? vatHint_(*row.idAliquotaIVA) : QString();
    case Qt::BackgroundRole:
        // Outside the VAT base: the cell where a rate would stand is greyed.
        if (column == RowColumn::IVA && row.tipo == tipoRiga::nonImponibile)
            return QColor(192, 192, 192);
        return {};
    default:
        return {};
    }
}

QVariant DocumentRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= columns_.size())
        return {};
    if (role == Qt::DisplayRole)
        return columns_[section].header;
    if (role == ui::ExportPlaces)
        return 2;
    if (role == ui::ExportCurrency) {
        const NumberColumn *number = numberColumn(columns_[section].column);
        return number && number->currency;
    }
    if (role == Qt::TextAlignmentRole) {
        const RowColumn column = columns_[section].column;
        const bool left = column == RowColumn::Codice || column == RowColumn::Descrizione;
        return QVariant(Qt::AlignVCenter | (left ? Qt::AlignLeft : Qt::AlignRight));
    }
    return {};
}

Qt::ItemFlags DocumentRowsModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return isEditable(rows_[index.row()], columns_[index.column()].column) ? base | Qt::ItemIsEditable : base;
}

// Before the discount, so that the order of typing does not matter.
double DocumentRowsModel::amountOf(const DocumentRow &row) const
{
    const UnitPrice unit = indexOf(RowColumn::Costo) >= 0 ? &DocumentRow::costo : &DocumentRow::prezzo;
    return (row.*unit).value_or(0) * row.quantita.value_or(0);
}

bool DocumentRowsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable))
        return false;
    DocumentRow &row = rows_[index.row()];
    const NumberColumn *number = numberColumn(columns_[index.column()].column);
    if (!number) {
        row.descrizione = value.toString();
    } else {
        // Cells hold two decimals, so that what is summed is what will be stored.
        const std::optional<core::WrittenNumber> typed = core::readNumber(value.toString());
        if (!typed || typed->places > 2) {
            const QString refusal = typed ? u"\"%1\" ha più di due decimali."_s : u"\"%1\" non è un numero valido."_s;
            Q_EMIT cellRefused(refusal.arg(value.toString()), true);
            return false;
        }
        if (typed->value < 0 || (typed->value == 0 && !number->zeroAllowed) || typed->value > number->maximum) {
            const bool tooLarge = typed->value > number->maximum && number->maximum > 100;
            Q_EMIT cellRefused(tooLarge ? u"Il numero è troppo grande."_s : number->refusal, false);
            return false;
        }
        DocumentRow changed = row;
        changed.*number->value = typed->value;
        if (!core::fitsDecimal(amountOf(changed), 2)) {
            Q_EMIT cellRefused(u"L'importo della riga è troppo grande."_s, false);
            return false;
        }
        row = changed;
    }
    Q_EMIT dataChanged(index, index);
    Q_EMIT cellEdited(index.row());
    return true;
}

#include "platform/ui/ResultGrid.h"

#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"
#include "platform/ui/ListExport.h"
#include "platform/ui/ListLayouts.h"

#include <QAction>
#include <QColor>
#include <QDate>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace ui {

// Of a column that the user drags, or that makes room for such a one.
constexpr int leastWidth = 30;

RowsModel::RowsModel(QString keyField, QList<ListColumn> columns, QObject *parent)
    : QAbstractTableModel(parent)
    , keyField_(std::move(keyField))
    , columns_(std::move(columns))
{
}

void RowsModel::setRows(data::Rows rows)
{
    beginResetModel();
    rows_ = std::move(rows);
    keyIndex_ = rows_.indexOf(keyField_);
    fieldIndexes_.clear();
    for (const ListColumn &column : std::as_const(columns_))
        fieldIndexes_.append(rows_.indexOf(column.field));
    endResetModel();
}

void RowsModel::removeKey(int key)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (keyAt(row) != key)
            continue;
        beginRemoveRows({}, row, row);
        rows_.mutableValues().removeAt(row);
        endRemoveRows();
        return;
    }
}

QStringList RowsModel::fields() const
{
    QStringList fields = {keyField_};
    for (const ListColumn &column : columns_)
        fields.append(column.field);
    return fields;
}

int RowsModel::keyAt(int row) const
{
    return row >= 0 && row < rowCount() && keyIndex_ >= 0 ? rows_.values(row)[keyIndex_].toInt() : -1;
}

QVariant RowsModel::valueAt(int row, const QString &field) const
{
    const int index = rows_.indexOf(field);
    return row >= 0 && row < rowCount() && index >= 0 ? rows_.values(row)[index] : QVariant();
}

int RowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QString RowsModel::shown(const QVariant &value, ListColumn::Display display) const
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
        return core::parseFlag(value.toString()).value_or(false) ? u"Sì"_s : u"No"_s;
    case ListColumn::Display::Text:
    case ListColumn::Display::Integer:
        break;
    }
    return value.toString();
}

QVariant RowsModel::exported(const QVariant &value, ListColumn::Display display) const
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
    return QVariant(vertical_ | (left ? Qt::AlignLeft : Qt::AlignRight));
}

QVariant RowsModel::data(const QModelIndex &index, int role) const
{
    // The view's own "copy" key asks for the current cell even when there is none.
    if (!index.isValid())
        return {};
    const ListColumn &column = columns_[index.column()];
    const auto value = [this, &index] {
        const int field = fieldIndexes_.value(index.column(), -1);
        return field < 0 ? QVariant() : rows_.values(index.row())[field];
    };
    if (role == Qt::DisplayRole)
        return shown(value(), column.display);
    if (role == ExportValue)
        return exported(value(), column.display);
    if (role == Qt::ForegroundRole && column.redBelowZero)
        return value().toDouble() < 0 ? QVariant(QColor(Qt::red)) : QVariant();
    return role == Qt::TextAlignmentRole ? alignment(column) : QVariant();
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

void RowsModel::sort(int column, Qt::SortOrder order)
{
    const int field = fieldIndexes_.value(column, -1);
    if (field < 0)
        return;
    const bool asText = columns_[column].display == ListColumn::Display::Text;
    const auto before = [field, asText](const QVariantList &left, const QVariantList &right) {
        const QVariant &a = left[field];
        const QVariant &b = right[field];
        if (!a.isValid() || !b.isValid())
            return !a.isValid() && b.isValid();
        if (asText)
            return a.toString().compare(b.toString(), Qt::CaseInsensitive) < 0;
        return QVariant::compare(a, b) == QPartialOrdering::Less;
    };
    QList<QVariantList> &values = rows_.mutableValues();
    beginResetModel();
    if (order == Qt::AscendingOrder)
        std::stable_sort(values.begin(), values.end(), before);
    else
        std::stable_sort(values.begin(), values.end(), [&before](const QVariantList &left, const QVariantList &right) {
            return before(right, left);
        });
    endResetModel();
}

ResultGrid::ResultGrid(const QString &keyField, const QList<ListColumn> &columns, QWidget *parent)
    : QTableView(parent)
    , model_(new RowsModel(keyField, columns, this))
    , export_(new ListExport(this))
{
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    prepareHeader();
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &) { Q_EMIT chosen(); });
}

void ResultGrid::fill(data::Connection &connection, const QString &sql, const QVariantList &values,
                      const std::function<void(data::Rows &)> &complete)
{
    data::Rows rows;
    const auto show = qScopeGuard([this, &rows] { setRows(std::move(rows)); });
    connection.selectInto(rows, data::limitedTo(model_->fields(), sql), values);
    if (complete)
        complete(rows);
}

void ResultGrid::setRows(data::Rows rows)
{
    horizontalHeader()->setSortIndicatorShown(false);
    model_->setRows(std::move(rows));
    if (longTexts_)
        resizeRowsToContents();
}

void ResultGrid::showLongTexts()
{
    longTexts_ = true;
    setWordWrap(true);
    verticalHeader()->setDefaultSectionSize(3 * fontMetrics().height());
    model_->setTopAligned(true);
}

int ResultGrid::selectedKey() const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : model_->keyAt(selected.first().row());
}

QList<int> ResultGrid::selectedKeys() const
{
    QList<int> keys;
    for (int row = 0; row < model_->rowCount(); ++row) {
        if (selectionModel()->isRowSelected(row))
            keys.append(model_->keyAt(row));
    }
    return keys;
}

bool ResultGrid::selectKey(int key)
{
    for (int row = 0; row < model_->rowCount(); ++row) {
        if (model_->keyAt(row) == key) {
            selectRow(row);
            return true;
        }
    }
    return false;
}

void ResultGrid::allowSorting()
{
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorShown(false);
    // The header turns its own indicator before it tells of the click, so what was last is kept here.
    const auto sortBy = [this, last = -1, order = Qt::AscendingOrder](int section) mutable {
        QHeaderView *header = horizontalHeader();
        // The first click on a column orders it upwards, the next one turns it round.
        const bool again = header->isSortIndicatorShown() && last == section;
        order = again && order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
        last = section;
        const int key = selectedKey();
        header->setSortIndicatorShown(true);
        header->setSortIndicator(section, order);
        model_->sort(section, order);
        selectKey(key);
    };
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, sortBy);
}

QVariant ResultGrid::selectedValue(const QString &field) const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? QVariant() : model_->valueAt(selected.first().row(), field);
}

void ResultGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

void ResultGrid::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && selectedKey() > 0) {
        Q_EMIT chosen();
        return;
    }
    // A list that merely has the focus holds the first row as its current one, and Down would pass over it.
    if (event->key() == Qt::Key_Down && selectedKey() < 0 && model_->rowCount() > 0) {
        selectRow(0);
        return;
    }
    QTableView::keyPressEvent(event);
}

// Declared or given widths first, per cents of the whole, and what is left to the column that takes the rest.
QList<int> ResultGrid::wantedWidths(int available) const
{
    constexpr int leastRest = 120;
    QList<int> widths;
    qsizetype rest = -1;
    for (const ListColumn &column : model_->columns()) {
        const bool isPercent = column.widthKind == ListColumn::Width::Percent;
        const int declared = isPercent ? qRound(available * column.width / 100.0) : column.width;
        if (column.widthKind == ListColumn::Width::Rest)
            rest = widths.size();
        widths.append(column.widthKind == ListColumn::Width::Rest ? 0 : given_.value(column.field, declared));
    }
    if (rest >= 0)
        widths[rest] = std::max(available - std::accumulate(widths.begin(), widths.end(), 0), leastRest);
    return widths;
}

// Where the widths leave nothing, columns shrink in proportion, at first those that the user gave no width: a list
// never scrolls sideways.
void ResultGrid::fitColumns()
{
    const int available = viewport()->width();
    const QList<int> widths = wantedWidths(available);
    const int total = std::accumulate(widths.begin(), widths.end(), 0);
    const int given = std::accumulate(given_.begin(), given_.end(), 0);
    const bool spare = available - given >= leastWidth * (widths.size() - given_.size());
    const qint64 room = spare ? available - given : available;
    const QScopedValueRollback fitting(fitting_, true);
    for (int i = 0; i < widths.size(); ++i) {
        const bool fits = total <= available || (spare && given_.contains(model_->columns()[i].field));
        setColumnWidth(i, fits ? widths[i] : static_cast<int>(widths[i] * room / (spare ? total - given : total)));
    }
}

void ResultGrid::prepareHeader()
{
    QHeaderView *header = horizontalHeader();
    header->setHighlightSections(false);
    header->setMinimumSectionSize(leastWidth / 3);
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionResized, this, &ResultGrid::columnResized);
    auto *reset = new QAction(u"Larghezze originali delle colonne"_s, header);
    reset->setObjectName(u"actLarghezzeOriginali"_s);
    connect(reset, &QAction::triggered, this, [this] {
        given_.clear();
        fitColumns();
        saveLayout();
    });
    header->addAction(reset);
    header->setContextMenuPolicy(Qt::ActionsContextMenu);
}

// What the user drags. Behind the column that takes the rest it is the next one's width that changes.
void ResultGrid::columnResized(int column, int from, int to)
{
    if (fitting_)
        return;
    const QList<ListColumn> &columns = model_->columns();
    int width = to;
    if (columns[column].widthKind == ListColumn::Width::Rest && ++column < columns.size())
        width = columnWidth(column) + from - to;
    if (column < columns.size()) {
        // At most so wide that the others keep a third of theirs.
        const QList<int> widths = wantedWidths(viewport()->width());
        const int others = std::accumulate(widths.begin(), widths.end(), -widths[column]);
        const int most = std::max(viewport()->width() - others / 3, leastWidth);
        given_.insert(columns[column].field, std::clamp(width, leastWidth, most));
        dragged_ = true;
    }
    fitColumns();
}

// A drag ends with the mouse button.
bool ResultGrid::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && std::exchange(dragged_, false))
        QMetaObject::invokeMethod(this, &ResultGrid::saveLayout, Qt::QueuedConnection);
    return QTableView::eventFilter(watched, event);
}

void ResultGrid::keepLayout(const QString &list)
{
    list_ = list;
    const QMap<QString, int> kept = keptWidths(list);
    for (const ListColumn &column : model_->columns()) {
        if (column.widthKind != ListColumn::Width::Rest && kept.contains(column.field))
            given_.insert(column.field, kept[column.field]);
    }
    fitColumns();
}

void ResultGrid::saveLayout()
{
    if (!list_.isEmpty())
        core::guarded(this, [this] { keepWidths(list_, given_); });
}

} // namespace ui

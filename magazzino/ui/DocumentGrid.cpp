#include "magazzino/ui/DocumentGrid.h"

#include "platform/ui/Letters.h"
#include "platform/ui/LineEdit.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

std::optional<CellStep> stepOf(const QKeyEvent &key, bool inMemo)
{
    const bool shift = key.modifiers().testFlag(Qt::ShiftModifier);
    const bool control = key.modifiers().testFlag(Qt::ControlModifier);
    switch (key.key()) {
    case Qt::Key_Backtab:
    case Qt::Key_Tab:
        // With Ctrl it goes through the windows.
        if (control)
            return {};
        return shift || key.key() == Qt::Key_Backtab ? CellStep::Previous : CellStep::Next;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // In a description Enter is a new line; with Ctrl it ends the edit.
        if (inMemo)
            return control ? std::optional(CellStep::Stay) : std::nullopt;
        return CellStep::Next;
    case Qt::Key_F6:
        return shift ? CellStep::LeaveBackward : CellStep::LeaveForward;
    default:
        return {};
    }
}

} // namespace

QSize DocumentRowsDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int air = 6;
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, air);
}

QWidget *DocumentRowsDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                            const QModelIndex &index) const
{
    const auto *model = qobject_cast<const DocumentRowsModel *>(index.model());
    const RowColumn &column = model->columns()[index.column()];
    if (column.format == RowFormat::Memo) {
        auto *memo = new QPlainTextEdit(parent);
        memo->setTabChangesFocus(true);
        memo->setFrameShape(QFrame::Box);
        connect(memo, &QPlainTextEdit::textChanged, this, [this, memo, cell = QPersistentModelIndex(index)] {
            Q_EMIT typing(memo->toPlainText() != cell.data(Qt::EditRole).toString());
        });
        editor_ = memo;
    } else {
        auto *line = new ui::LineEdit(parent);
        line->setPointTypesComma(column.isNumber());
        line->setAlignment(column.isLeftAligned() ? Qt::AlignLeft : Qt::AlignRight);
        line->setFrame(false);
        connect(line, &QLineEdit::textChanged, this, [this, cell = QPersistentModelIndex(index)](const QString &text) {
            Q_EMIT typing(text != cell.data(Qt::EditRole).toString());
        });
        editor_ = line;
    }
    editor_->setObjectName(u"editorRiga"_s);
    editor_->setAccessibleName(column.header);
    refused_ = false;
    return editor_;
}

void DocumentRowsDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto *memo = qobject_cast<QPlainTextEdit *>(editor)) {
        memo->setPlainText(text);
        memo->selectAll();
    } else if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        line->setText(text);
        line->selectAll();
    }
}

void DocumentRowsDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *memo = qobject_cast<QPlainTextEdit *>(editor);
    const QString text = memo ? memo->toPlainText() : qobject_cast<QLineEdit *>(editor)->text();
    // An editor that was opened and left alone changes nothing.
    if (text != index.data(Qt::EditRole).toString())
        refused_ = !model->setData(index, text, Qt::EditRole);
}

void DocumentRowsDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                                const QModelIndex &) const
{
    QRect area = option.rect;
    if (qobject_cast<QPlainTextEdit *>(editor)) {
        // A few lines to write in, inside the visible part of the grid.
        area.setHeight(std::max(area.height(), 5 * editor->fontMetrics().height()));
        const int below = area.bottom() - editor->parentWidget()->height();
        if (below > 0)
            area.translate(0, -std::min(below, area.top()));
    }
    editor->setGeometry(area);
}

bool DocumentRowsDelegate::finish()
{
    if (!editor_)
        return true;
    const QPointer<QWidget> editor = editor_;
    refused_ = false;
    Q_EMIT commitData(editor);
    if (editor)
        Q_EMIT closeEditor(editor, QAbstractItemDelegate::NoHint);
    editor_ = nullptr;
    return !refused_;
}

bool DocumentRowsDelegate::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (const auto step = stepOf(*key, qobject_cast<QPlainTextEdit *>(object))) {
            Q_EMIT stepped(*step);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

void DocumentRowsDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // Half of a number is another number.
    if (qobject_cast<const DocumentRowsModel *>(index.model())->columns()[index.column()].isNumber()) {
        option->features.setFlag(QStyleOptionViewItem::WrapText, false);
        option->textElideMode = Qt::ElideNone;
    }
}

DocumentGrid::DocumentGrid(const DocumentKind &kind, QWidget *parent)
    : QTableView(parent)
    , model_(new DocumentRowsModel(kind, this))
    , delegate_(new DocumentRowsDelegate(this))
{
    setModel(model_);
    setItemDelegate(delegate_);
    // Several rows are copied at once; every other command is for the current one.
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTabKeyNavigation(false);
    setWordWrap(true);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    export_ = new ui::ListExport(this);
    connect(model_, &DocumentRowsModel::cellEdited, this, [this](int row) { resizeRowToContents(row); });
    connect(model_, &QAbstractItemModel::dataChanged, this, &DocumentGrid::fitColumns);
    connect(model_, &QAbstractItemModel::modelReset, this, &DocumentGrid::fitColumns);
    connect(model_, &QAbstractItemModel::rowsInserted, this, &DocumentGrid::fitColumns);
    connect(model_, &QAbstractItemModel::rowsRemoved, this, &DocumentGrid::fitColumns);
    connect(delegate_, &DocumentRowsDelegate::stepped, this, &DocumentGrid::step);
    connect(delegate_, &DocumentRowsDelegate::typing, this, &DocumentGrid::typing);
    connect(delegate_, &QAbstractItemDelegate::closeEditor, this, [this] { Q_EMIT typing(false); });
}

int DocumentGrid::selectedRow() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void DocumentGrid::select(int row, const RowMember &column)
{
    const QModelIndex index = model_->index(row, std::max(0, model_->indexOf(column)));
    goTo(index);
    scrollTo(index);
}

// The view's own routine adds to the selection while Ctrl or Shift is held, as it is by the key that led here.
void DocumentGrid::goTo(const QModelIndex &cell)
{
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect);
}

// Nothing is measured before it is seen: a document opens on its first page.
bool DocumentGrid::fitsLater()
{
    fitsLater_ = fitsLater_ || !isVisible();
    return fitsLater_;
}

void DocumentGrid::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    if (std::exchange(fitsLater_, false))
        fitToWidth();
}

void DocumentGrid::fitRowHeights()
{
    if (!fitsLater())
        resizeRowsToContents();
}

void DocumentGrid::fitToWidth()
{
    fitColumns();
    fitRowHeights();
}

void DocumentGrid::keyPressEvent(QKeyEvent *event)
{
    // In a cell being typed in Esc gives up what was typed; that arrives in the editor.
    if (event->key() == Qt::Key_Escape)
        step(CellStep::LeaveForward);
    else if (const auto wanted = stepOf(*event, false))
        step(*wanted);
    else
        QTableView::keyPressEvent(event);
}

// Tab and Shift+Tab arrive here, not as keys. Without rows there is nothing to stay for.
bool DocumentGrid::focusNextPrevChild(bool next)
{
    if (model_->rowCount() == 0)
        return QTableView::focusNextPrevChild(next);
    step(next ? CellStep::Next : CellStep::Previous);
    return true;
}

void DocumentGrid::step(CellStep step)
{
    // A refused text stays in view, with the reason beside its cell.
    if (!finishEditing())
        return;
    switch (step) {
    case CellStep::Stay:
        break;
    case CellStep::Next:
    case CellStep::Previous:
        if (const QModelIndex cell = editableFrom(currentIndex(), step == CellStep::Next ? 1 : -1); cell.isValid())
            goTo(cell);
        break;
    case CellStep::LeaveForward:
    case CellStep::LeaveBackward:
        QTableView::focusNextPrevChild(step == CellStep::LeaveForward);
        break;
    }
}

// The next editable cell, row by row; an invalid index when there is none.
QModelIndex DocumentGrid::editableFrom(const QModelIndex &from, int direction) const
{
    const int columns = model_->columnCount();
    const int cells = columns * model_->rowCount();
    const int start = from.isValid() ? from.row() * columns + from.column() : -1;
    for (int cell = start + direction; cell >= 0 && cell < cells; cell += direction) {
        const QModelIndex index = model_->index(cell / columns, cell % columns);
        if (index.flags().testFlag(Qt::ItemIsEditable))
            return index;
    }
    return {};
}

void DocumentGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    Q_EMIT resized();
}

// What the widest number of a column needs.
int DocumentGrid::widthOfNumbers(int column) const
{
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    int widest = 0;
    for (int row = 0; row < model_->rowCount(); ++row)
        widest = std::max(widest, fontMetrics().horizontalAdvance(model_->index(row, column).data().toString()));
    constexpr int gridLine = 1;
    return widest + 2 * margin + gridLine;
}

// Told widths are the least ones; the rest goes to the description, at least what a few words need.
void DocumentGrid::fitColumns()
{
    if (fitsLater())
        return;
    constexpr int frameAndScrollBar = 21;
    constexpr int leastRest = 100;
    const int usable = std::min(width() - frameAndScrollBar, viewport()->width());
    const QList<RowColumn> &columns = model_->columns();
    int used = 0;
    int rest = -1;
    for (int i = 0; i < columns.size(); ++i) {
        if (columns[i].width == 0) {
            rest = i;
            continue;
        }
        int width =
            columns[i].percent ? qRound(usable * columns[i].width / 100.0) : ui::forLetters(columns[i].width, *this);
        if (columns[i].isNumber())
            width = std::max(width, widthOfNumbers(i));
        setColumnWidth(i, width);
        used += width;
    }
    if (rest < 0)
        return;
    const int before = columnWidth(rest);
    setColumnWidth(rest, std::max(usable - used, leastRest));
    if (columnWidth(rest) != before)
        fitRowHeights();
}

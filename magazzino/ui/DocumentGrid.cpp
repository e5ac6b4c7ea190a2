#include "magazzino/ui/DocumentGrid.h"

#include "platform/ui/LineEdit.h"
#include "platform/ui/ListExport.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

QSize DocumentRowsDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int air = 6;
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, air);
}

QWidget *DocumentRowsDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                            const QModelIndex &index) const
{
    const auto *model = qobject_cast<const DocumentRowsModel *>(index.model());
    if (model->columns()[index.column()].column == RowColumn::Descrizione) {
        auto *memo = new QPlainTextEdit(parent);
        memo->setTabChangesFocus(true);
        memo->setFrameShape(QFrame::Box);
        editor_ = memo;
    } else {
        auto *line = new ui::LineEdit(parent);
        line->setPointTypesComma(true);
        line->setAlignment(Qt::AlignRight);
        line->setFrame(false);
        editor_ = line;
    }
    editor_->setObjectName(u"editorRiga"_s);
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
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        // In a description Enter is a new line; with Ctrl it ends the edit.
        if (qobject_cast<QPlainTextEdit *>(object) && enter && key->modifiers().testFlag(Qt::ControlModifier)) {
            finish();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

DocumentGrid::DocumentGrid(const QList<RowColumnSpec> &columns, QWidget *parent)
    : QTableView(parent)
    , model_(new DocumentRowsModel(columns, this))
    , delegate_(new DocumentRowsDelegate(this))
{
    setModel(model_);
    setItemDelegate(delegate_);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTabKeyNavigation(false);
    setWordWrap(true);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    new ui::ListExport(this);
    connect(model_, &DocumentRowsModel::cellEdited, this, [this](int row) { resizeRowToContents(row); });
}

int DocumentGrid::selectedRow() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void DocumentGrid::select(int row, RowColumn column)
{
    const QModelIndex index = model_->index(row, std::max(0, model_->indexOf(column)));
    setCurrentIndex(index);
    scrollTo(index);
}

void DocumentGrid::fitRowHeights()
{
    resizeRowsToContents();
}

void DocumentGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
    fitRowHeights();
}

void DocumentGrid::fitColumns()
{
    const int usable = viewport()->width();
    const QList<RowColumnSpec> &columns = model_->columns();
    int used = 0;
    int rest = -1;
    for (int i = 0; i < columns.size(); ++i) {
        const int width = columns[i].percent ? qRound(usable * columns[i].width / 100.0) : columns[i].width;
        if (columns[i].width == 0)
            rest = i;
        else
            setColumnWidth(i, width);
        used += width;
    }
    constexpr int leastRest = 100;
    if (rest >= 0)
        setColumnWidth(rest, std::max(usable - used, leastRest));
}

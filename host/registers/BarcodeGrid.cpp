#include "host/registers/BarcodeGrid.h"

#include "platform/core/Barcode.h"
#include "platform/core/Format.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Translation.h"
#include "platform/ui/Bell.h"
#include "platform/ui/Controls.h"
#include "platform/ui/LineEdit.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int codeColumn = 0;
constexpr int piecesColumn = 1;
// Less than any barcode, so that one scanned into the column of pieces is not taken.
constexpr double mostPieces = 99'999.99;

QString piecesText(double pieces)
{
    const QString text = core::plainNumber(pieces);
    return text.endsWith(u",00"_s) ? text.chopped(3) : text;
}

} // namespace

QWidget *BarcodeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    auto *line = new ui::LineEdit(parent);
    line->setFrame(false);
    if (index.column() == codeColumn)
        line->setMaxLength(longestBarcode);
    line->setPointTypesComma(index.column() == piecesColumn);
    line->setAlignment(index.column() == piecesColumn ? Qt::AlignRight : Qt::AlignLeft);
    connect(line, &QLineEdit::textChanged, this, [this, cell = QPersistentModelIndex(index)](const QString &text) {
        Q_EMIT typing(text != cell.data().toString());
    });
    editor_ = line;
    return line;
}

void BarcodeDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const QString text = qobject_cast<QLineEdit *>(editor)->text().trimmed();
    if (text == index.data().toString())
        return;
    if (index.column() == codeColumn) {
        model->setData(index, text);
        return;
    }
    const auto number = core::readNumber(text);
    if (number && number->places <= 2 && number->value > 0 && number->value <= mostPieces)
        model->setData(index, piecesText(number->value));
    else
        ui::ringBell();
}

// Qt takes Enter later, when the next keys of a reader may have arrived in the same editor.
bool BarcodeDelegate::eventFilter(QObject *watched, QEvent *event)
{
    const auto *key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event) : nullptr;
    if (!key || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter))
        return QStyledItemDelegate::eventFilter(watched, event);
    auto *editor = qobject_cast<QWidget *>(watched);
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor, QAbstractItemDelegate::SubmitModelCache);
    return true;
}

void BarcodeDelegate::finish()
{
    if (!editor_)
        return;
    const QPointer<QWidget> editor = editor_;
    Q_EMIT commitData(editor);
    if (editor)
        Q_EMIT closeEditor(editor, QAbstractItemDelegate::NoHint);
    editor_ = nullptr;
}

BarcodeGrid::BarcodeGrid(QWidget *parent)
    : QTableWidget(0, 2, parent)
    , delegate_(new BarcodeDelegate(this))
{
    setObjectName(u"gridCodiciBarre"_s);
    setHorizontalHeaderLabels({core::tr("Codice a barre"), core::tr("Pezzi")});
    horizontalHeaderItem(codeColumn)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeaderItem(piecesColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    horizontalHeader()->setSectionResizeMode(codeColumn, QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setTabKeyNavigation(false);
    setItemDelegate(delegate_);
    auto *remove = ui::named(u"actEliminaCodice"_s, new QAction(core::tr("Elimina codice"), this));
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    addAction(remove);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(remove, &QAction::triggered, this, &BarcodeGrid::removeCurrent);
    connect(this, &QTableWidget::cellChanged, this, &BarcodeGrid::cellEdited);
    connect(delegate_, &BarcodeDelegate::typing, this, &BarcodeGrid::typing);
    setBarcodes({});
}

QString BarcodeGrid::codeAt(int row) const
{
    return item(row, codeColumn)->text().trimmed();
}

QList<Barcode> BarcodeGrid::barcodes() const
{
    QList<Barcode> all;
    for (int row = 0; row < rowCount(); ++row) {
        const auto pieces = core::readNumber(item(row, piecesColumn)->text());
        if (!codeAt(row).isEmpty())
            all.append({codeAt(row), pieces ? pieces->value : 1});
    }
    return all;
}

void BarcodeGrid::setBarcodes(const QList<Barcode> &barcodes)
{
    const QSignalBlocker quiet(this);
    setRowCount(static_cast<int>(barcodes.size()) + 1);
    for (int row = 0; row < rowCount(); ++row)
        setRow(row, barcodes.value(row));
    setCurrentCell(0, codeColumn);
}

void BarcodeGrid::setRow(int row, const Barcode &barcode)
{
    setItem(row, codeColumn, new QTableWidgetItem(barcode.code));
    auto *pieces = new QTableWidgetItem(barcode.code.isEmpty() ? QString() : piecesText(barcode.pieces));
    pieces->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setItem(row, piecesColumn, pieces);
    mark(row);
}

void BarcodeGrid::mark(int row)
{
    const bool fits = core::checkDigitFits(codeAt(row));
    QTableWidgetItem *code = item(row, codeColumn);
    code->setForeground(fits ? QBrush() : ui::refusedPalette(palette()).brush(QPalette::WindowText));
    code->setToolTip(fits ? QString() : core::tr("Il carattere di controllo non corrisponde."));
}

// The theme changed: each has a red of its own.
void BarcodeGrid::changeEvent(QEvent *event)
{
    QTableWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    const QSignalBlocker quiet(this);
    for (int row = 0; row < rowCount(); ++row)
        mark(row);
}

void BarcodeGrid::show(const QString &code)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (codeAt(row) == code)
            setCurrentCell(row, codeColumn);
    }
}

void BarcodeGrid::cellEdited(int row, int column)
{
    {
        const QSignalBlocker quiet(this);
        if (column == codeColumn && item(row, piecesColumn)->text().isEmpty())
            item(row, piecesColumn)->setText(piecesText(1));
        mark(row);
        if (!codeAt(rowCount() - 1).isEmpty()) {
            setRowCount(rowCount() + 1);
            setRow(rowCount() - 1, {});
        }
    }
    Q_EMIT edited();
}

// Enter and Tab lead to the next code, since readers send either; the pieces are an arrow away. No editor waits there,
// so that one more Tab leaves the grid.
void BarcodeGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    QTableWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
    Q_EMIT typing(false);
    const bool onward = hint == QAbstractItemDelegate::SubmitModelCache || hint == QAbstractItemDelegate::EditNextItem;
    if (onward && currentRow() + 1 < rowCount())
        setCurrentCell(currentRow() + 1, codeColumn);
    else if (hint == QAbstractItemDelegate::EditPreviousItem)
        setCurrentCell(currentColumn() == codeColumn ? std::max(0, currentRow() - 1) : currentRow(), codeColumn);
}

void BarcodeGrid::removeCurrent()
{
    const int row = currentRow();
    if (row < 0 || codeAt(row).isEmpty())
        return;
    removeRow(row);
    setCurrentCell(row, codeColumn);
    Q_EMIT edited();
}

} // namespace host

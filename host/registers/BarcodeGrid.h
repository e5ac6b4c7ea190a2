#pragma once
#include "host/Barcodes.h"

#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableWidget>

namespace host {

/// Editors of the grid of barcodes. A number of pieces that cannot be is not taken.
class BarcodeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    /// Takes over what stands in an open editor and closes it.
    void finish();

Q_SIGNALS:
    /// Does the open editor hold another text than its cell?
    void typing(bool different) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    mutable QPointer<QWidget> editor_;
};

/// The barcodes of an article, one in a row; the last row is empty and takes the next one. Enter or Tab behind a
/// code goes to the next row, so that codes can be scanned one after the other. A code whose check digit does not fit
/// is red.
class BarcodeGrid : public QTableWidget
{
    Q_OBJECT

public:
    explicit BarcodeGrid(QWidget *parent);

    /// The codes as they stand there, without blanks around them, from the top; rows without a code are left out.
    QList<Barcode> barcodes() const;
    /// Shows other ones.
    void setBarcodes(const QList<Barcode> &barcodes);
    /// Ends what is being typed.
    void finishEditing() { delegate_->finish(); }
    /// Makes the row of `code` the current one.
    void show(const QString &code);

Q_SIGNALS:
    /// The user changed a code, or the number of its pieces.
    void edited();
    /// See BarcodeDelegate.
    void typing(bool different);

protected:
    void changeEvent(QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    QString codeAt(int row) const;
    void setRow(int row, const Barcode &barcode);
    void mark(int row);
    void cellEdited(int row, int column);
    void removeCurrent();

    BarcodeDelegate *delegate_;
};

} // namespace host

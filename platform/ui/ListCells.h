#pragma once
#include <QCache>
#include <QStyledItemDelegate>
#include <QTextLayout>

namespace ui {

/// Draws the cells of a list as the style would, which lays out each text three times whenever it draws it: here once,
/// and again only when it is not among those drawn last.
class ListCells : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// What a row, counted from 0, stands on.
    static QColor ground(const QPalette &colours, int row);

    /// Text only; its ground is there already. The style still draws what is not a plain line of text: selected,
    /// focused and wrapped cells.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const QTextLayout &laidOut(const QString &text, const QStyleOptionViewItem &option, int width) const;

    mutable QFont font_;                                                // of the texts below
    mutable QCache<std::pair<QString, int>, QTextLayout> texts_{1'000}; // with the width they were shortened to
};

} // namespace ui

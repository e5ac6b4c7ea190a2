#include "platform/ui/ListCells.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace ui {

namespace {

bool isOneLine(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar character) {
        return character < u' ' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
    });
}

bool isPlain(const QStyleOptionViewItem &option)
{
    constexpr QStyle::State special = QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_Editing;
    return !(option.state & special) && !(option.features & QStyleOptionViewItem::WrapText) &&
           option.direction == Qt::LeftToRight && option.rect.height() >= option.fontMetrics.height();
}

QPalette::ColorGroup groupOf(QStyle::State state)
{
    if (!state.testFlag(QStyle::State_Enabled))
        return QPalette::Disabled;
    return state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}

QColor colour(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QVariant own = index.data(Qt::ForegroundRole);
    return own.isValid() ? own.value<QBrush>().color() : option.palette.color(groupOf(option.state), QPalette::Text);
}

QRect textRect(const QStyleOptionViewItem &option)
{
    const QStyle &style = *option.widget->style();
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
    return option.rect.adjusted(margin, 0, -margin, 0);
}

std::unique_ptr<QTextLayout> madeLayout(const QString &text, const QStyleOptionViewItem &option, int width)
{
    auto layout = std::make_unique<QTextLayout>(text, option.font);
    QTextOption how;
    how.setWrapMode(QTextOption::ManualWrap);
    how.setTextDirection(option.direction);
    layout->setTextOption(how);
    // Otherwise it forgets the letters' shapes and works them out again whenever it draws them.
    layout->setCacheEnabled(true);
    layout->beginLayout();
    layout->createLine().setLineWidth(width);
    layout->endLayout();
    return layout;
}

// Where the line begins in the place for it.
QPointF start(const QTextLine &line, const QRect &place, Qt::Alignment alignment)
{
    const double rest = place.width() - line.horizontalAdvance();
    const double indent = alignment & Qt::AlignRight ? rest : alignment & Qt::AlignHCenter ? rest / 2 : 0;
    const QSize size(0, qRound(line.height()));
    return {
        place.x() + indent,
        static_cast<double>(QStyle::alignedRect(Qt::LeftToRight, alignment & Qt::AlignVertical_Mask, size, place).y())};
}

} // namespace

QColor ListCells::ground(const QPalette &colours, int row)
{
    return colours.color(row % 2 ? QPalette::AlternateBase : QPalette::Base);
}

void ListCells::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QString text = index.data().toString();
    if (!isPlain(option) || !isOneLine(text)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QRect place = textRect(option);
    const QTextLine line = laidOut(text, option, place.width()).lineAt(0);
    const auto alignment = static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt());
    painter->setPen(colour(option, index));
    line.draw(painter, start(line, place, alignment));
}

const QTextLayout &ListCells::laidOut(const QString &text, const QStyleOptionViewItem &option, int width) const
{
    if (font_ != option.font) {
        font_ = option.font;
        texts_.clear();
    }
    const std::pair key(text, width);
    if (const QTextLayout *known = texts_.object(key))
        return *known;
    std::unique_ptr<QTextLayout> made = madeLayout(text, option, width);
    if (made->lineAt(0).naturalTextWidth() > width)
        made = madeLayout(option.fontMetrics.elidedText(text, option.textElideMode, width), option, width);
    QTextLayout *layout = made.release();
    texts_.insert(key, layout);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): one text never costs more than all may, so it is kept
    return *layout;
}

} // namespace ui

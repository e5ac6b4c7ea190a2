#include "platform/ui/Caption.h"

#include "platform/ui/Colours.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Field.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// A blank parts it from the text.
int markWidth(const QWidget &caption)
{
    return caption.fontMetrics().horizontalAdvance(u" *"_s) + 2;
}

} // namespace

Caption::Caption(const QString &text, Place place, QWidget *parent)
    : QLabel(text, parent)
    , place_(place)
{
    // Every leading caption has room for the mark, so that marked lines begin where the others do.
    if (place == Place::Leading)
        setContentsMargins(0, 0, markWidth(*this), 0);
}

void Caption::markRequired()
{
    mark_ = requiredMark(this);
    mark_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setContentsMargins(0, 0, markWidth(*this), 0);
}

void Caption::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange && contentsMargins().right() > 0)
        setContentsMargins(0, 0, markWidth(*this), 0);
}

void Caption::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (mark_)
        mark_->setGeometry(width() - contentsMargins().right(), 0, contentsMargins().right(), height());
}

void Caption::paintEvent(QPaintEvent *event)
{
    if (!quiet_) {
        QLabel::paintEvent(event);
        return;
    }
    QPalette colours = palette();
    colours.setColor(foregroundRole(), quietText(colours));
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), colours, isEnabled(), text(),
                          foregroundRole());
}

void placeField(QGridLayout *grid, Field *field, int row, int position, int span)
{
    QWidget *input = field->widget();
    if (field->label().isEmpty()) {
        grid->addWidget(input, row, position * 2, 1, span * 2);
        return;
    }
    const auto place = position == 0 ? Caption::Place::Leading : Caption::Place::Following;
    auto *caption = new Caption(field->label(), place, input->parentWidget());
    caption->setBuddy(input);
    if (field->isRequired())
        caption->markRequired();
    // Beside what has several lines it stands at the first one.
    constexpr int manyLines = 3;
    const bool isTall = input->sizeHint().height() > manyLines * caption->sizeHint().height();
    grid->addWidget(caption, row, position * 2, isTall ? Qt::AlignTop : Qt::Alignment());
    grid->addWidget(input, row, position * 2 + 1, 1, span * 2 - 1);
}

void alignCaptions(const QList<QWidget *> &boxes)
{
    QList<Caption *> leading;
    int widest = 0;
    for (const QWidget *box : boxes) {
        for (Caption *caption : box->findChildren<Caption *>()) {
            if (caption->place() != Caption::Place::Leading)
                continue;
            leading.append(caption);
            widest = std::max(widest, caption->sizeHint().width());
        }
    }
    for (Caption *caption : std::as_const(leading))
        caption->setMinimumWidth(widest);
}

void alignCaptionsOf(QWidget *page)
{
    const auto *grid = qobject_cast<QGridLayout *>(page->layout());
    if (!grid) {
        alignCaptions({page});
        return;
    }
    for (int column = 0; column < grid->columnCount(); ++column) {
        QList<QWidget *> boxes;
        for (int row = 0; row < grid->rowCount(); ++row) {
            const QLayoutItem *item = grid->itemAtPosition(row, column);
            if (item && item->widget() && (column == 0 || item != grid->itemAtPosition(row, column - 1)))
                boxes.append(item->widget());
        }
        alignCaptions(boxes);
    }
}

} // namespace ui

#include "platform/ui/Controls.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace ui {

namespace {
const QLocale italian(QLocale::Italian, QLocale::Italy);
}

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(u"Mmmm…"_s), QLabel::minimumSizeHint().height()};
}

QRect ElidedLabel::textArea() const
{
    return contentsRect().adjusted(margin(), 0, -margin(), 0);
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        setToolTip(fontMetrics().horizontalAdvance(text()) > textArea().width() ? text() : QString());
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(&painter);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, textArea().width());
    style()->drawItemText(&painter, textArea(), static_cast<int>(alignment()), palette(), isEnabled(), shown,
                          foregroundRole());
}

IntegerEdit::IntegerEdit(QWidget *parent)
    : QSpinBox(parent)
{
    setLocale(italian);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setRange(0, 999'999'999);
    setAccelerated(true);
}

DecimalEdit::DecimalEdit(QWidget *parent)
    : QDoubleSpinBox(parent)
{
    setLocale(italian);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setGroupSeparatorShown(true);
    setDecimals(2);
    setRange(0, 99'999'999'999.99);
}

void DecimalEdit::keyPressEvent(QKeyEvent *event)
{
    if (!typeKeypadPointAsComma(this, event))
        QDoubleSpinBox::keyPressEvent(event);
}

DateEdit::DateEdit(QWidget *parent)
    : QDateEdit(parent)
{
    setLocale(italian);
    setDisplayFormat(u"dd/MM/yyyy"_s);
    setDateRange(QDate(1900, 1, 1), QDate(3000, 12, 31));
    setCalendarPopup(true);
    calendarWidget()->setLocale(italian);
    calendarWidget()->setFirstDayOfWeek(Qt::Monday);
}

bool typeKeypadPointAsComma(QWidget *target, const QKeyEvent *event)
{
    if (event->key() != Qt::Key_Period || !event->modifiers().testFlag(Qt::KeypadModifier))
        return false;
    QKeyEvent comma(event->type(), Qt::Key_Comma, Qt::NoModifier, u","_s);
    QCoreApplication::sendEvent(target, &comma);
    return true;
}

QIcon icon(Icon which)
{
    static const QHash<Icon, QStyle::StandardPixmap> pixmaps = {{Icon::New, QStyle::SP_FileIcon},
                                                                {Icon::Open, QStyle::SP_DialogOpenButton},
                                                                {Icon::Save, QStyle::SP_DialogSaveButton},
                                                                {Icon::Delete, QStyle::SP_TrashIcon},
                                                                {Icon::Close, QStyle::SP_DialogCloseButton},
                                                                {Icon::Print, QStyle::SP_FileDialogContentsView},
                                                                {Icon::Pdf, QStyle::SP_FileDialogDetailedView},
                                                                {Icon::Add, QStyle::SP_FileDialogNewFolder},
                                                                {Icon::Remove, QStyle::SP_DialogDiscardButton},
                                                                {Icon::Up, QStyle::SP_ArrowUp},
                                                                {Icon::Down, QStyle::SP_ArrowDown},
                                                                {Icon::Search, QStyle::SP_FileDialogContentsView},
                                                                {Icon::Reset, QStyle::SP_DialogResetButton},
                                                                {Icon::Text, QStyle::SP_FileDialogInfoView},
                                                                {Icon::Choose, QStyle::SP_DirOpenIcon},
                                                                {Icon::Clear, QStyle::SP_DialogCancelButton},
                                                                {Icon::Service, QStyle::SP_FileDialogListView},
                                                                {Icon::Export, QStyle::SP_DialogSaveButton}};
    return QApplication::style()->standardIcon(pixmaps.value(which));
}

} // namespace ui

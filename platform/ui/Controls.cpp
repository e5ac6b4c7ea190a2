#include "platform/ui/Controls.h"

#include "platform/core/Translation.h"
#include "platform/ui/Colours.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

const QString recolouring = u"recolouring"_s;

/// Keeps a widget in colours that are made of the theme's.
class Recolouring : public QObject
{
public:
    Recolouring(QWidget *widget, std::function<QPalette(QPalette)> change)
        : QObject(widget)
        , widget_(widget)
        , change_(std::move(change))
    {
        setObjectName(recolouring);
        apply();
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange && !applying_)
            apply();
        return false;
    }

private:
    void apply()
    {
        applying_ = true;
        widget_->setPalette(change_(QApplication::palette(widget_)));
        applying_ = false;
    }

    QWidget *widget_;
    std::function<QPalette(QPalette)> change_;
    bool applying_ = false;
};

// The same whatever the label says; but each time it says something else, the layouts around it ask again.
QSize leastText(const QLabel &label)
{
    static QString font;
    static QSize size;
    if (const QString key = label.font().key(); key != font) {
        constexpr QRect wide(0, 0, 2000, 2000);
        const QString few = u"Mmmm…"_s;
        font = key;
        size = {label.fontMetrics().horizontalAdvance(few),
                label.fontMetrics().boundingRect(wide, Qt::AlignLeft, few).height()};
    }
    return size;
}

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const
{
    ensurePolished();
    const QMargins around = contentsMargins();
    const QSize text = leastText(*this);
    return {text.width(), std::max(text.height() + 2 * margin() + around.top() + around.bottom(), minimumHeight())};
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
    QPalette colours = palette();
    if (text() == nothingChosen)
        colours.setColor(foregroundRole(), quietText(colours));
    style()->drawItemText(&painter, textArea(), static_cast<int>(alignment()), colours, isEnabled(), shown,
                          foregroundRole());
}

QPushButton *plainButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *button = named(name, new QPushButton(caption, parent));
    button->setAutoDefault(false);
    return button;
}

QPalette refusedPalette(QPalette palette)
{
    const QColor red = refusedText(palette);
    palette.setColor(QPalette::WindowText, red);
    palette.setColor(QPalette::Text, red);
    palette.setColor(QPalette::Highlight, QColor(192, 0, 0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

void recolour(QWidget *widget, const std::function<QPalette(QPalette)> &change)
{
    delete widget->findChild<QObject *>(recolouring, Qt::FindDirectChildrenOnly);
    new Recolouring(widget, change);
}

void showReadOnly(QLineEdit *edit)
{
    edit->setReadOnly(true);
    recolour(edit, [](QPalette palette) {
        palette.setColor(QPalette::Base, palette.color(QPalette::Window));
        return palette;
    });
}

QLabel *requiredMark(QWidget *parent)
{
    auto *mark = named(u"lblNecessario"_s, new QLabel(u"*"_s, parent));
    mark->setToolTip(core::tr("Necessario per salvare"));
    recolour(mark, refusedPalette);
    mark->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    return mark;
}

ComboBox::ComboBox(QWidget *parent)
    : QComboBox(parent)
{
    // Not Qt::WheelFocus: turning the wheel over it would first give it the focus and then change it.
    setFocusPolicy(Qt::StrongFocus);
}

void ComboBox::keyPressEvent(QKeyEvent *event)
{
    const bool page = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    if (page && event->modifiers().testFlag(Qt::ControlModifier))
        event->ignore();
    else
        QComboBox::keyPressEvent(event);
}

void ComboBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace ui

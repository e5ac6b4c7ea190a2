#include "platform/ui/LetterBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

constexpr int beside = 10; // pixels beside the widest letter

} // namespace

LetterBar::LetterBar(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(u"BarraRicerca"_s);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(1);
    static const QString alphabet = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ*"_s;
    for (const QChar letter : alphabet) {
        auto *button = new QToolButton(this);
        button->setText(letter);
        button->setAutoRaise(true);
        button->setCheckable(true);
        button->setFixedWidth(fontMetrics().horizontalAdvance(u'W') + beside);
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, [this, button] { Q_EMIT pressed(button->text()); });
        line->addWidget(button);
        buttons_.append(button);
    }
    line->addStretch();
    stopAt(0);
}

bool LetterBar::press(QChar letter)
{
    for (QToolButton *button : std::as_const(buttons_)) {
        if (button->text() == letter.toUpper()) {
            button->click();
            return true;
        }
    }
    return false;
}

void LetterBar::showCurrent(const QString &letter)
{
    for (QToolButton *button : std::as_const(buttons_)) {
        button->setChecked(button->text() == letter);
        QFont font = this->font();
        font.setBold(button->isChecked());
        button->setFont(font);
    }
}

// Tab stops at one button only: the one that had the focus last.
void LetterBar::stopAt(qsizetype position)
{
    for (QToolButton *button : std::as_const(buttons_))
        button->setFocusPolicy(button == buttons_[position] ? Qt::StrongFocus : Qt::ClickFocus);
}

bool LetterBar::eventFilter(QObject *watched, QEvent *event)
{
    const qsizetype position = buttons_.indexOf(qobject_cast<QToolButton *>(watched));
    if (event->type() == QEvent::FocusIn)
        stopAt(position);
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Down) {
        Q_EMIT leftDown();
        return true;
    }
    const QHash<int, qsizetype> targets = {{Qt::Key_Left, position - 1},
                                           {Qt::Key_Right, position + 1},
                                           {Qt::Key_Home, 0},
                                           {Qt::Key_End, buttons_.size() - 1}};
    const auto target = targets.constFind(key);
    if (target == targets.constEnd())
        return false;
    buttons_[std::clamp(*target, qsizetype{0}, buttons_.size() - 1)]->setFocus(Qt::OtherFocusReason);
    return true;
}

// Bound to LIKE, a text could not be looked up in an index.
QString LetterBar::condition(const QString &caption, const QString &column, const QString &like, data::Values &values)
{
    if (caption == u"*"_s)
        return {};
    const QString compared =
        like.isEmpty() ? u" STARTING WITH "_s + values.add(caption) : like + values.add(caption + u'%');
    return u"WHERE UPPER("_s + column + u')' + compared;
}

} // namespace ui

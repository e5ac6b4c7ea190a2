#include "platform/ui/LetterBar.h"

#include "platform/data/SqlText.h"

#include <QHBoxLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace ui {

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
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setFocusPolicy(Qt::StrongFocus);
        connect(button, &QToolButton::clicked, this, [this, button] { Q_EMIT pressed(button->text()); });
        line->addWidget(button);
    }
}

QString LetterBar::condition(const QString &caption, const QString &column, const QString &like)
{
    if (caption == u"*"_s)
        return {};
    return u"WHERE UPPER("_s + column + u')' + like + data::quoted(caption.toUpper() + u'%');
}

} // namespace ui

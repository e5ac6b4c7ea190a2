#include "platform/ui/AccessibleNames.h"

#include "platform/core/Translation.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// As it is read aloud: without mnemonic, blanks around it and colon.
QString spoken(QString text)
{
    text = text.remove(u'&').trimmed();
    return text.endsWith(u':') ? text.chopped(1) : text;
}

QString captionOf(const QWidget &control, const QList<QLabel *> &labels)
{
    for (const QLabel *label : labels) {
        if (label->buddy() == &control)
            return spoken(label->text());
    }
    return {};
}

// The caption of the control or of the box it is a part of; else the title of the section or the window.
QString surroundings(const QWidget &control, const QWidget &window, const QList<QLabel *> &labels)
{
    for (const QWidget *part = &control; part && part != &window; part = part->parentWidget()) {
        if (QString caption = captionOf(*part, labels); !caption.isEmpty())
            return caption;
        if (const auto *section = qobject_cast<const QGroupBox *>(part); section && !section->title().isEmpty())
            return spoken(section->title());
    }
    return window.windowTitle();
}

QString ownWords(const QWidget &control)
{
    if (const auto *edit = qobject_cast<const QLineEdit *>(&control); edit && !edit->placeholderText().isEmpty())
        return edit->placeholderText();
    if (qobject_cast<const QTabBar *>(&control))
        return core::tr("pagine");
    return qobject_cast<const QAbstractButton *>(&control) ? spoken(control.toolTip()) : QString();
}

bool speaksForItself(const QWidget &control)
{
    const auto *button = qobject_cast<const QAbstractButton *>(&control);
    return !control.accessibleName().isEmpty() || (button && !button->text().isEmpty());
}

} // namespace

void nameControls(QWidget &window)
{
    const QList<QLabel *> labels = window.findChildren<QLabel *>();
    for (QWidget *control : window.findChildren<QWidget *>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->isWindow() || speaksForItself(*control))
            continue;
        QStringList words = {surroundings(*control, window, labels), ownWords(*control)};
        words.removeAll(QString());
        control->setAccessibleName(words.join(u", "_s));
        control->setProperty(namedByWindow, true);
    }
}

} // namespace ui

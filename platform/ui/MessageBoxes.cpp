#include "platform/ui/MessageBoxes.h"

#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

struct Button
{
    core::Answer answer;
    QMessageBox::StandardButton button;
    QString caption;
};

const std::array<Button, 4> &buttons()
{
    static const std::array<Button, 4> all = {{{core::Answer::Ok, QMessageBox::Ok, u"OK"_s},
                                               {core::Answer::Yes, QMessageBox::Yes, core::tr("&Sì")},
                                               {core::Answer::No, QMessageBox::No, core::tr("&No")},
                                               {core::Answer::Cancel, QMessageBox::Cancel, u"Annulla"_s}}};
    return all;
}

QMessageBox::Icon iconOf(core::MessageIcon icon)
{
    switch (icon) {
    case core::MessageIcon::Information:
        return QMessageBox::Information;
    case core::MessageIcon::Question:
        return QMessageBox::Question;
    case core::MessageIcon::Warning:
        return QMessageBox::Warning;
    case core::MessageIcon::Error:
        return QMessageBox::Critical;
    case core::MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// The window the user is working in. The owner that a message names may be a window that is never shown, or lie under a
// dialog, where the box would open in the screen's corner or unseen.
QWidget *windowBelow(const core::Message &message)
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    const auto *owner = qobject_cast<const QWidget *>(message.owner);
    if (owner && owner->window()->isVisible())
        return owner->window();
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && window->windowType() == Qt::Window;
    });
    return shown == windows.end() ? nullptr : *shown;
}

QMessageBox::StandardButton buttonOf(core::Answer answer)
{
    const auto *const found = std::find_if(buttons().begin(), buttons().end(),
                                           [answer](const Button &button) { return button.answer == answer; });
    return found->button;
}

core::Answer drawMessage(const core::Message &message)
{
    QMessageBox box(windowBelow(message));
    box.setWindowTitle(message.title);
    box.setTextFormat(Qt::PlainText);
    // Texts carry a line feed and a carriage return; the box wants one line break.
    box.setText(QString(message.text).replace(u"\n\r"_s, u"\n"_s));
    box.setIcon(iconOf(message.icon));
    for (const Button &button : buttons()) {
        if (message.answers.contains(button.answer))
            box.addButton(button.button)->setText(button.caption);
    }
    box.setDefaultButton(buttonOf(message.preset.value_or(message.answers.first())));
    const bool wasWaiting = QGuiApplication::overrideCursor() != nullptr;
    if (wasWaiting)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const int pressed = box.exec();
    if (wasWaiting)
        QGuiApplication::restoreOverrideCursor();
    for (const Button &button : buttons()) {
        if (button.button == pressed && message.answers.contains(button.answer))
            return button.answer;
    }
    return message.answers.last(); // closed by its frame: the most careful answer
}

} // namespace

void installMessageBoxes()
{
    core::setMessageHandler(drawMessage);
}

} // namespace ui

#include "platform/ui/MessageBoxes.h"

#include "platform/core/Messages.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

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
                                               {core::Answer::Yes, QMessageBox::Yes, u"&Sì"_s},
                                               {core::Answer::No, QMessageBox::No, u"&No"_s},
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

core::Answer drawMessage(const core::Message &message)
{
    auto *owner = qobject_cast<QWidget *>(message.owner);
    QMessageBox box(owner ? owner->window() : QApplication::activeWindow());
    box.setWindowTitle(message.title);
    box.setTextFormat(Qt::PlainText);
    // Texts carry a line feed and a carriage return; the box wants one line break.
    box.setText(QString(message.text).replace(u"\n\r"_s, u"\n"_s));
    box.setIcon(iconOf(message.icon));
    for (const Button &button : buttons()) {
        if (message.answers.contains(button.answer))
            box.addButton(button.button)->setText(button.caption);
    }
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

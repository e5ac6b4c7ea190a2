#include "platform/ui/TextPrompt.h"

#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"

#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace ui {

std::optional<QString> askText(QWidget *owner, const TextPromptSpec &spec)
{
    FormDialog dialog(spec.title, owner);
    auto *edit = new LineEdit(spec.initial, &dialog);
    edit->setObjectName(u"txtTesto"_s);
    edit->setMaxLength(spec.maxLength);
    if (spec.password)
        edit->setEchoMode(QLineEdit::Password);
    edit->selectAll();
    dialog.addRow(spec.label, edit);
    const auto update = [&] { dialog.okButton()->setEnabled(spec.password || !edit->text().trimmed().isEmpty()); };
    QObject::connect(edit, &QLineEdit::textChanged, &dialog, update);
    update();
    const auto text = [&] { return spec.password ? edit->text() : edit->text().trimmed(); };
    if (spec.accept)
        dialog.setCheck([&] { return spec.accept(text()); });
    if (runModal(dialog) != QDialog::Accepted)
        return {};
    return text();
}

} // namespace ui

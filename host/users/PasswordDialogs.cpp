#include "host/users/PasswordDialogs.h"

#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "platform/core/Messages.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int attempts = 3;

QLineEdit *addPassword(ui::FormDialog &dialog, const QString &name, const QString &label)
{
    auto *edit = ui::named(name, new ui::LineEdit(&dialog));
    edit->setEchoMode(QLineEdit::Password);
    edit->setMaxLength(100);
    dialog.addRow(label, edit);
    return edit;
}

bool refused(QWidget *owner, const QString &problem)
{
    if (!problem.isEmpty())
        core::warn(owner, problem);
    return !problem.isEmpty();
}

} // namespace

QString passwordProblem(const QString &password, const QString &repeated)
{
    if (password.size() < shortestPassword)
        return u"La password deve avere almeno %1 caratteri."_s.arg(shortestPassword);
    return password == repeated ? QString() : u"Le due password non coincidono."_s;
}

std::optional<QString> askNewPassword(QWidget *owner)
{
    ui::FormDialog dialog(u"Nuova password"_s, owner);
    const QLineEdit *password = addPassword(dialog, u"txtPassword"_s, u"Password"_s);
    const QLineEdit *repeated = addPassword(dialog, u"txtRipeti"_s, u"Ripeti la password"_s);
    dialog.setCheck([&] { return !refused(&dialog, passwordProblem(password->text(), repeated->text())); });
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    return password->text();
}

void changeOwnPassword(QWidget *owner, data::Connection &connection)
{
    const QString user = GetKxCurrentUserName();
    ui::FormDialog dialog(u"Cambia password di %1"_s.arg(user), owner);
    const QLineEdit *old = addPassword(dialog, u"txtVecchia"_s, u"Password attuale"_s);
    const QLineEdit *password = addPassword(dialog, u"txtPassword"_s, u"Nuova password"_s);
    const QLineEdit *repeated = addPassword(dialog, u"txtRipeti"_s, u"Ripeti la nuova password"_s);
    dialog.setCheck([&] {
        if (refused(&dialog, passwordProblem(password->text(), repeated->text())))
            return false;
        const bool known = [&] {
            const ui::WaitCursor wait;
            const bool right = !authenticate(user, old->text(), connection).isEmpty();
            if (right)
                setPassword(user, password->text(), connection);
            return right;
        }();
        return known || !refused(&dialog, u"La password attuale non è corretta."_s);
    });
    if (ui::runModal(dialog) == QDialog::Accepted)
        core::inform(owner, u"La password è stata cambiata."_s);
}

Login logIn(QWidget *owner, const QString &proposed, data::Connection &connection)
{
    ui::FormDialog dialog(u"Accesso a Corvane"_s, owner);
    dialog.setObjectName(u"frmAccesso"_s);
    auto *name = ui::named(u"txtNomeUtente"_s, new ui::ComboBox(&dialog));
    name->setEditable(true);
    const QStringList known = activeUsers(connection);
    name->addItems(known);
    name->setCurrentText(known.contains(proposed, Qt::CaseInsensitive) ? proposed : known.value(0));
    dialog.addRow(u"Nome utente"_s, name);
    QLineEdit *password = addPassword(dialog, u"txtPassword"_s, u"Password"_s);
    auto *hint = new QLabel(&dialog);
    dialog.addRow({}, hint);
    const QStringList open = usersWithoutPassword(connection);
    const auto showHint = [&] {
        const bool isOpen = open.contains(name->currentText().trimmed(), Qt::CaseInsensitive);
        hint->setText(isOpen ? u"Questo utente non ha una password: premere OK."_s : u" "_s);
    };
    QObject::connect(name, &QComboBox::currentTextChanged, &dialog, showHint);
    showHint();
    password->setFocus();

    Login result;
    int wrong = 0;
    dialog.setCheck([&] {
        {
            const ui::WaitCursor wait;
            result.user = authenticate(name->currentText(), password->text(), connection);
        }
        if (!result.user.isEmpty())
            return true;
        if (++wrong < attempts) {
            core::warn(&dialog, u"Nome utente o password non corretti."_s);
            password->clear();
            password->setFocus();
            return false;
        }
        core::warn(&dialog, u"Nome utente o password non corretti per tre volte:\n\ril programma viene chiuso."_s);
        result.lockedOut = true;
        dialog.reject();
        return false;
    });
    ui::runModal(dialog);
    return result;
}

} // namespace host

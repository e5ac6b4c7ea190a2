#include "host/users/PasswordDialogs.h"

#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
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
        return core::tr("La password deve avere almeno %1 caratteri.").arg(shortestPassword);
    return password == repeated ? QString() : core::tr("Le due password non coincidono.");
}

std::optional<QString> askNewPassword(QWidget *owner)
{
    ui::FormDialog dialog(core::tr("Nuova password"), owner);
    const QLineEdit *password = addPassword(dialog, u"txtPassword"_s, core::tr("Password"));
    const QLineEdit *repeated = addPassword(dialog, u"txtRipeti"_s, core::tr("Ripeti la password"));
    dialog.setCheck([&] { return !refused(&dialog, passwordProblem(password->text(), repeated->text())); });
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    return password->text();
}

void changeOwnPassword(QWidget *owner, data::Connection &connection)
{
    const QString user = GetKxCurrentUserName();
    ui::FormDialog dialog(core::tr("Cambia password di %1").arg(user), owner);
    const QLineEdit *old = addPassword(dialog, u"txtVecchia"_s, core::tr("Password attuale"));
    const QLineEdit *password = addPassword(dialog, u"txtPassword"_s, core::tr("Nuova password"));
    const QLineEdit *repeated = addPassword(dialog, u"txtRipeti"_s, core::tr("Ripeti la nuova password"));
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
        return known || !refused(&dialog, core::tr("La password attuale non è corretta."));
    });
    if (ui::runModal(dialog) == QDialog::Accepted)
        core::inform(owner, core::tr("La password è stata cambiata."));
}

Login logIn(QWidget *owner, const QString &proposed, data::Connection &connection)
{
    ui::FormDialog dialog(core::tr("Accesso a Corvane"), owner);
    dialog.setObjectName(u"frmAccesso"_s);
    auto *name = ui::named(u"txtNomeUtente"_s, new ui::ComboBox(&dialog));
    name->setEditable(true);
    const QStringList known = activeUsers(connection);
    name->addItems(known);
    name->setCurrentText(known.contains(proposed, Qt::CaseInsensitive) ? proposed : known.value(0));
    dialog.addRow(core::tr("Nome utente"), name);
    QLineEdit *password = addPassword(dialog, u"txtPassword"_s, core::tr("Password"));
    auto *hint = new QLabel(&dialog);
    dialog.addRow({}, hint);
    const QStringList open = usersWithoutPassword(connection);
    const auto showHint = [&] {
        const bool isOpen = open.contains(name->currentText().trimmed(), Qt::CaseInsensitive);
        hint->setText(isOpen ? core::tr("Questo utente non ha una password: premere OK.") : u" "_s);
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
            core::warn(&dialog, core::tr("Nome utente o password non corretti."));
            password->clear();
            password->setFocus();
            return false;
        }
        core::warn(&dialog,
                   core::tr("Nome utente o password non corretti per tre volte:\n\ril programma viene chiuso."));
        result.lockedOut = true;
        dialog.reject();
        return false;
    });
    ui::runModal(dialog);
    return result;
}

} // namespace host

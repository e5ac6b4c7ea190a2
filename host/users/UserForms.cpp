#include "host/users/UserForms.h"

#include "host/Corvane3Impl.h"
#include "host/users/CheckedLinks.h"
#include "host/users/Password.h"
#include "host/users/PasswordDialogs.h"
#include "host/users/Users.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/data/SqlText.h"
#include "platform/ui/Dialogs.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Width = ui::ListColumn::Width;

const QString general = u"Generale"_s;
QString lastAdministrator()
{
    return core::tr("Almeno un utente attivo deve avere il diritto \"Controllo "
                    "completo\":\n\rnessun altro potrebbe più gestire utenti e ruoli.");
}

QString nameOfUser(int id, data::Connection &connection)
{
    const data::Rows rows = connection.select(u"SELECT USER_NAME FROM UTENTI WHERE IDUTENTE = :ID"_s, {{u"ID"_s, id}});
    return rows.isEmpty() ? QString() : rows.text(0, u"USER_NAME");
}

bool isCurrentUser(const QString &name)
{
    return name.compare(GetKxCurrentUserName(), Qt::CaseInsensitive) == 0;
}

QString refuseUserDeletion(int id, data::Connection &connection)
{
    const QString name = nameOfUser(id, connection);
    if (isCurrentUser(name))
        return core::tr("Non è possibile eliminare l'utente che sta lavorando.");
    if (administratorsExcept(name, 0, connection) == 0)
        return lastAdministrator();
    return currentUserInControl(connection) ? QString() : missingRight;
}

QString refuseRoleDeletion(int id, data::Connection &connection)
{
    if (administratorsExcept({}, id, connection) == 0)
        return lastAdministrator();
    return currentUserInControl(connection) ? QString() : missingRight;
}

} // namespace

const ui::RegisterSpec &users()
{
    static const ui::RegisterSpec spec = {
        .name = u"Utenti"_s,
        .caption = core::tr("Utenti"),
        .oneRecord = core::tr("questo utente"),
        .table = u"UTENTI"_s,
        .key = u"IDUTENTE"_s,
        .groups = {{general,
                    {},
                    {{.name = u"txtNomeUtente"_s,
                      .label = core::tr("Nome utente"),
                      .column = u"USER_NAME"_s,
                      .maxLength = 50,
                      .upperCase = true},
                     {.name = u"txtNome"_s, .label = core::tr("Nome e cognome"), .column = u"NOME"_s, .row = 1},
                     {.name = u"chkAttivo"_s,
                      .column = u"ATTIVO"_s,
                      .kind = ui::RegisterField::Kind::Flag,
                      .row = 2,
                      .flagCaption = core::tr("Attivo: può accedere al programma")}}}},
        .required = {{u"USER_NAME"_s, core::tr("Non è stato indicato il nome utente!")}},
        .uniqueColumn = u"USER_NAME"_s,
        .duplicateText = core::tr("Esiste già un utente con questo nome!"),
        .refuseDeletion = refuseUserDeletion,
        .deletedWith = {u"DELETE FROM UTENTI_RUOLI WHERE UPPER(USER_NAME) = (SELECT UPPER(USER_NAME) FROM UTENTI "
                        "WHERE IDUTENTE = ?)"_s},
        .openingSize = {560, 400},
        .listColumns = {{core::tr("Nome utente"), u"USER_NAME"_s, 200},
                        {core::tr("Nome e cognome"), u"NOME"_s, 0, Width::Rest},
                        {core::tr("Attivo"), u"ATTIVO"_s, 80, Width::Pixels, ui::ListColumn::Display::Flag}},
        .listFilters = {ui::containingLoosely(u"txtNomeUtente"_s, core::tr("Nome utente"), u"USER_NAME"_s)},
        .orderText = u" ORDER BY UPPER(USER_NAME)"_s};
    return spec;
}

const ui::RegisterSpec &roles()
{
    static const ui::RegisterSpec spec = {
        .name = u"Ruoli"_s,
        .caption = core::tr("Ruoli"),
        .oneRecord = core::tr("questo ruolo"),
        .table = u"RUOLI_UTENTE"_s,
        .key = u"IDRUOLO_UTENTE"_s,
        .groups = {{general,
                    {},
                    {{.name = u"txtRuolo"_s, .label = core::tr("Ruolo"), .column = u"RUOLO"_s, .maxLength = 50}}}},
        .required = {{u"RUOLO"_s, core::tr("Non è stato indicato il ruolo!")}},
        .uniqueColumn = u"RUOLO"_s,
        .duplicateText = core::tr("Esiste già un ruolo con questo nome!"),
        .refuseDeletion = refuseRoleDeletion,
        .deletedWith = {u"DELETE FROM ABILITAZIONI_RUOLI WHERE IDRUOLO_UTENTE = ?"_s},
        .openingSize = {560, 360},
        .listColumns = {{core::tr("Ruolo"), u"RUOLO"_s, 0, Width::Rest}},
        .listFilters = {ui::containingLoosely(u"txtRuolo"_s, core::tr("Ruolo"), u"RUOLO"_s)},
        .orderText = u" ORDER BY UPPER(RUOLO)"_s};
    return spec;
}

void LinkedEntry::addLinks(const CheckedLinksSpec &spec, const QString &title)
{
    auto *box = new QGroupBox(u' ' + title + u' ', page(general));
    links_ = new CheckedLinks(spec, box);
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(links_);
    qobject_cast<QVBoxLayout *>(page(general)->layout())->addWidget(box, 1);
    connect(links_, &CheckedLinks::edited, this, &LinkedEntry::DataChanged);
    refuseIf([this] { return !currentUserInControl(connection()); }, missingRight);
}

void LinkedEntry::finish()
{
    refuseIf([this] { return leavesNobodyInControl(); }, lastAdministrator());
    ui::RegisterEntry::finish();
}

// Another workstation may have taken the right away from the others in the meantime.
void LinkedEntry::refuseIfNobodyInControl() const
{
    if (administratorsExcept({}, 0, connection()) == 0)
        throw ui::SaveRefused(lastAdministrator());
}

// The right with which the form was opened may be gone by now: asked when the save begins, and inside its transaction,
// before anything is written, since whoever saves may be taking it from themselves.
void LinkedEntry::writeComputed(data::DataSet &record) const
{
    if (!currentUserInControl(connection()))
        throw ui::SaveRefused(missingRight);
    ui::RegisterEntry::writeComputed(record);
}

QVariant LinkedEntry::detailState() const
{
    return QVariantList{ui::RegisterEntry::detailState(), links_->checked()};
}

void LinkedEntry::restoreDetails(const QVariant &state)
{
    ui::RegisterEntry::restoreDetails(state.toList().value(0));
    links_->setChecked(state.toList().value(1));
}

UserEntry::UserEntry(data::Connection &connection, QWidget *owner)
    : LinkedEntry(users(), connection, owner)
{
    password_ = ui::plainButton(u"cmdPassword"_s, core::tr("Imposta la password..."), page(general));
    connect(password_, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { choosePassword(); }); });
    page(general)->layout()->addWidget(password_);
    page(general)->layout()->setAlignment(password_, Qt::AlignLeft);
    addLinks({u"SELECT IDRUOLO_UTENTE AS ID, RUOLO AS TESTO FROM RUOLI_UTENTE ORDER BY UPPER(RUOLO)"_s,
              u"UTENTI_RUOLI"_s, u"USER_NAME"_s, u"IDRUOLO_UTENTE"_s},
             core::tr("Ruoli"));
    refuseIf([this] { return storedKey() < 0 && newHash_.isEmpty(); }, core::tr("Non è stata impostata la password!"));
    refuseIf([this] { return isCurrentUser(storedText()) && !isCurrentUser(textOf(u"USER_NAME"_s)); },
             core::tr("Non è possibile cambiare il nome dell'utente che sta lavorando."));
    finish();
}

void UserEntry::choosePassword()
{
    const auto password = askNewPassword(this);
    if (!password)
        return;
    const ui::WaitCursor wait;
    newHash_ = passwordHash(*password);
    DataChanged();
}

bool UserEntry::leavesNobodyInControl() const
{
    if (administratorsExcept(storedText(), 0, connection()) > 0)
        return false;
    const bool active = findChild<QCheckBox *>(u"chkAttivo"_s)->isChecked();
    return !active || !rolesGrantFullControl(links().checkedKeys(), connection());
}

void UserEntry::resetDetails()
{
    ui::RegisterEntry::resetDetails();
    newHash_.clear();
    links().fill(connection());
    findChild<QCheckBox *>(u"chkAttivo"_s)->setChecked(true);
}

void UserEntry::loadDetails()
{
    ui::RegisterEntry::loadDetails();
    newHash_.clear();
    links().load(storedText(), connection());
}

void UserEntry::recordSaved()
{
    ui::RegisterEntry::recordSaved();
    newHash_.clear();
}

void UserEntry::writeComputed(data::DataSet &record) const
{
    LinkedEntry::writeComputed(record);
    if (!newHash_.isEmpty())
        record.setValue(u"PASSWORD_HASH"_s, newHash_);
}

// Roles hang on the name, so those of the former name go first.
void UserEntry::writeDetails()
{
    if (!storedText().isEmpty())
        connection().run(u"DELETE FROM UTENTI_RUOLI WHERE UPPER(USER_NAME) = "_s + data::inCapitals(),
                         {data::searchedText(storedText())});
    links().write(textOf(u"USER_NAME"_s), connection());
    refuseIfNobodyInControl();
}

QVariant UserEntry::detailState() const
{
    return QVariantList{LinkedEntry::detailState(), newHash_};
}

void UserEntry::restoreDetails(const QVariant &state)
{
    LinkedEntry::restoreDetails(state.toList().value(0));
    newHash_ = state.toList().value(1).toString();
}

RoleEntry::RoleEntry(data::Connection &connection, QWidget *owner)
    : LinkedEntry(roles(), connection, owner)
{
    // The module's rights are stored with a slip of the pen in its name, which databases in use carry.
    addLinks({u"SELECT IDABILITAZIONE_UTENTE AS ID, ABILITAZIONE_UTENTE || COALESCE(' (' || "
              "IIF(MODULO = 'Magazzzino', 'Magazzino', MODULO) || ')', '') AS TESTO FROM ABILITAZIONI_UTENTE "
              "ORDER BY IDABILITAZIONE_UTENTE"_s,
              u"ABILITAZIONI_RUOLI"_s, u"IDRUOLO_UTENTE"_s, u"IDABILITAZIONE_UTENTE"_s},
             core::tr("Diritti"));
    finish();
}

bool RoleEntry::grantsFullControl() const
{
    const data::Rows rows = connection().select(
        u"SELECT IDABILITAZIONE_UTENTE AS ID FROM ABILITAZIONI_UTENTE WHERE ABILITAZIONE_UTENTE = :COMPLETO"_s,
        {{u"COMPLETO"_s, fullControl}});
    return !rows.isEmpty() && links().checkedKeys().contains(rows.integer(0, u"ID"));
}

bool RoleEntry::leavesNobodyInControl() const
{
    return !grantsFullControl() && administratorsExcept({}, storedKey(), connection()) == 0;
}

void RoleEntry::resetDetails()
{
    ui::RegisterEntry::resetDetails();
    links().fill(connection());
}

void RoleEntry::loadDetails()
{
    ui::RegisterEntry::loadDetails();
    links().load(IdRecord(), connection());
}

void RoleEntry::writeDetails()
{
    links().write(IdRecord(), connection());
    refuseIfNobodyInControl();
}

} // namespace host

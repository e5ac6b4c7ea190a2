#include "host/start/ServerDialog.h"

#include "host/start/ServerSetup.h"
#include "platform/core/Messages.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"
#include "platform/ui/NumberEdits.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int firebirdPort = 3050;

class ServerDialog : public ui::FormDialog
{
public:
    ServerDialog(const QString &fileName, QWidget *owner)
        : FormDialog(u"Più postazioni"_s, owner)
    {
        setObjectName(u"frmPiuPostazioni"_s);
        addText(u"Più postazioni lavorano insieme su un archivio che sta su un server Firebird, un computer che resta "
                "sempre acceso."_s);
        machine_ = edit(u"txtServer"_s, u"Server"_s);
        machine_->setPlaceholderText(u"nome o indirizzo, per esempio 192.168.1.10"_s);
        addPort();
        addSearch();
        file_ = edit(u"txtFileServer"_s, u"File sul server"_s, u"/srv/firebird/"_s + fileName);
        file_->setToolTip(u"Come lo vede il server; la cartella deve esistere e appartenere all'utente firebird."_s);
        password_ = edit(u"txtPasswordServer"_s, u"Password del programma"_s, newServerPassword());
        password_->setToolTip(
            u"Con questa, e con l'utente %1, anche le altre postazioni aprono l'archivio."_s.arg(serverUser));
        administrator_ = edit(u"txtPasswordAmministratore"_s, u"Password di SYSDBA"_s);
        administrator_->setEchoMode(QLineEdit::Password);
        administrator_->setToolTip(
            u"Serve solo a creare l'utente %1 sul server; non viene conservata."_s.arg(serverUser));
        administrator_->setPlaceholderText(u"una volta sola, non viene conservata"_s);
        keep_ = new QCheckBox(u"Ricorda la password del programma su questo computer"_s, this);
        keep_->setObjectName(u"chkRicorda"_s);
        keep_->setChecked(true);
        addRow({}, keep_);
        advice_ = ui::named(u"lblFirewall"_s, new QLabel(this));
        advice_->setWordWrap(true);
        addRow({}, advice_);
        connect(machine_, &QLineEdit::textChanged, this, [this] { advise(); });
        connect(port_, &ui::TypedEdit::changed, this, [this] { advise(); });
        advise();
        setCheck([this] { return prepare(); });
        setMinimumWidth(640);
    }

    ServerPlace place() const
    {
        data::DatabaseAddress database;
        database.host = machine_->text().trimmed();
        database.port = port_->value();
        database.file = file_->text().trimmed();
        database.user = serverUser;
        database.password = password_->text();
        return {.database = database, .keepPassword = keep_->isChecked()};
    }

private:
    QLineEdit *edit(const QString &name, const QString &label, const QString &text = {})
    {
        auto *line = ui::named(name, new ui::LineEdit(text, this));
        line->setMaxLength(255);
        addRow(label, line);
        return line;
    }

    void addPort()
    {
        port_ = ui::named(u"txtPorta"_s, new ui::IntegerEdit(this));
        port_->setRange(1, 65535);
        port_->setValue(firebirdPort);
        port_->setMaximumWidth(80);
        addRow(u"Porta"_s, port_);
    }

    void addSearch()
    {
        auto *box = new QWidget(this);
        auto *line = ui::withoutMargins<QHBoxLayout>(box);
        auto *look = ui::plainButton(u"cmdCercaServer"_s, u"Cerca il server"_s, box);
        answer_ = ui::named(u"lblRisposta"_s, new QLabel(box));
        line->addWidget(look);
        line->addWidget(answer_, 1);
        addRow({}, box);
        connect(look, &QPushButton::clicked, this, [this] { search(); });
    }

    bool search()
    {
        const data::DatabaseAddress target = place().database;
        if (target.host.isEmpty() || target.host.contains(u':') || target.host.contains(u'/')) {
            answer_->setText(u"Indicare il nome o l'indirizzo del server."_s);
            return false;
        }
        const bool answers = [&] {
            const ui::WaitCursor wait;
            return serverAnswers(target.host, target.port);
        }();
        answer_->setText(answers ? u"Un server Firebird risponde."_s
                                 : u"Nessun server Firebird risponde: è acceso, è in ascolto, la porta è aperta?"_s);
        found_ = answers ? target : data::DatabaseAddress();
        return answers;
    }

    // A server lets who has asked too often as a stranger wait for many seconds.
    bool isFound(const data::DatabaseAddress &target) const
    {
        return found_.host == target.host && found_.port == target.port;
    }

    void advise() { advice_->setText(firewallAdvice(machine_->text().trimmed(), port_->value())); }

    bool prepare()
    {
        const data::DatabaseAddress target = place().database;
        if (!isFound(target) && !search()) {
            core::warn(this, answer_->text());
            return false;
        }
        if (target.file.isEmpty() || target.password.isEmpty()) {
            core::warn(this, u"Mancano il file sul server o la password del programma!"_s);
            return false;
        }
        const ui::WaitCursor wait;
        if (!administrator_->text().isEmpty()) {
            prepareServer(target, administrator_->text());
        } else if (!knowsUser(target)) {
            core::warn(this,
                       u"Sul server non c'è ancora l'utente %1 con questa password:\n\rper crearlo serve, una volta "
                       "sola, la password di SYSDBA."_s.arg(serverUser));
            return false;
        }
        if (data::checkDatabase(target).failure != data::OpenFailure::None)
            return true;
        core::warn(this, u"Sul server esiste già il database \"%1\": indicare un nome nuovo."_s.arg(target.file));
        return false;
    }

    QLineEdit *machine_;
    ui::IntegerEdit *port_ = nullptr;
    data::DatabaseAddress found_; // the server that answered last
    QLabel *answer_ = nullptr;
    QLineEdit *file_;
    QLineEdit *password_;
    QLineEdit *administrator_;
    QCheckBox *keep_;
    QLabel *advice_;
};

} // namespace

std::optional<ServerPlace> askServerPlace(QWidget *owner, const QString &fileName)
{
    ServerDialog dialog(fileName, owner);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    return dialog.place();
}

} // namespace host

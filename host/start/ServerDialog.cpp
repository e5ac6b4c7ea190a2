#include "host/start/ServerDialog.h"

#include "host/backup/Backup.h"
#include "host/start/DatabasePlace.h"
#include "host/start/ServerSetup.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

class ServerDialog : public ui::FormDialog
{
public:
    ServerDialog(const QString &fileName, QWidget *owner)
        : FormDialog(core::tr("Più postazioni"), owner)
    {
        setObjectName(u"frmPiuPostazioni"_s);
        addText(core::tr("Più postazioni lavorano insieme su un archivio che sta su un server Firebird, un computer "
                         "che resta sempre acceso."));
        machine_ = edit(u"txtServer"_s, core::tr("Server"));
        machine_->setPlaceholderText(core::tr("nome o indirizzo, per esempio 192.168.1.10"));
        addPort();
        addSearch();
        file_ = edit(u"txtFileServer"_s, core::tr("File sul server"), u"/srv/firebird/"_s + fileName);
        file_->setToolTip(
            core::tr("Come lo vede il server; la cartella deve esistere e appartenere all'utente firebird."));
        password_ = edit(u"txtPasswordServer"_s, core::tr("Password del programma"), newServerPassword());
        password_->setToolTip(
            core::tr("Con questa, e con l'utente %1, anche le altre postazioni aprono l'archivio.").arg(serverUser));
        administrator_ = edit(u"txtPasswordAmministratore"_s, core::tr("Password di SYSDBA"));
        administrator_->setEchoMode(QLineEdit::Password);
        administrator_->setToolTip(
            core::tr("Serve solo a creare l'utente %1 sul server; non viene conservata.").arg(serverUser));
        administrator_->setPlaceholderText(core::tr("una volta sola, non viene conservata"));
        keep_ = new QCheckBox(core::tr("Ricorda la password del programma su questo computer"), this);
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
        port_ = portEdit(this);
        addRow(core::tr("Porta"), port_);
    }

    void addSearch()
    {
        auto *box = new QWidget(this);
        auto *line = ui::withoutMargins<QHBoxLayout>(box);
        auto *look = ui::plainButton(u"cmdCercaServer"_s, core::tr("Cerca il server"), box);
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
            answer_->setText(core::tr("Indicare il nome o l'indirizzo del server."));
            return false;
        }
        const bool answers = [&] {
            const ui::WaitCursor wait;
            return serverAnswers(target.host, target.port);
        }();
        answer_->setText(answers
                             ? core::tr("Un server Firebird risponde.")
                             : core::tr("Nessun server Firebird risponde: è acceso, è in ascolto, la porta è aperta?"));
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
            core::warn(this, core::tr("Mancano il file sul server o la password del programma!"));
            return false;
        }
        const ui::WaitCursor wait;
        if (!administrator_->text().isEmpty()) {
            prepareServer(target, administrator_->text());
        } else if (!knowsUser(target)) {
            core::warn(this, core::tr("Sul server non c'è ancora l'utente %1 con questa password:\n\rper crearlo "
                                      "serve, una volta sola, la password di SYSDBA.")
                                 .arg(serverUser));
            return false;
        }
        if (data::checkDatabase(target).failure != data::OpenFailure::None)
            return true;
        core::warn(this, takenOnServer(target.file));
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

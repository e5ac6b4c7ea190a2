#include "host/start/DatabasePlace.h"

#include "host/start/ServerDialog.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/LineEdit.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int firebirdPort = 3050;

QString databaseFilter()
{
    return core::tr("Database Firebird (*.fdb);;Tutti i file (*)");
}

} // namespace

ui::IntegerEdit *portEdit(QWidget *parent)
{
    auto *port = ui::named(u"txtPorta"_s, new ui::IntegerEdit(parent));
    port->setRange(1, 65535);
    port->setValue(firebirdPort);
    port->setMaximumWidth(std::max(80, port->sizeHint().width()));
    return port;
}

DatabasePlace::DatabasePlace(Purpose purpose, QString folder, QWidget *parent)
    : QWidget(parent)
    , purpose_(purpose)
    , folder_(std::move(folder))
    , local_(ui::named(u"optComputer"_s, new QRadioButton(core::tr("Su questo computer"), this)))
    , server_(ui::named(u"optServer"_s, new QRadioButton(core::tr("Su un server Firebird, per più postazioni"), this)))
    , localBox_(new QWidget(this))
    , serverBox_(new QWidget(this))
{
    local_->setChecked(true);
    createLocal();
    createServer();
    auto *layout = ui::withoutMargins<QVBoxLayout>(this);
    for (QWidget *part : {static_cast<QWidget *>(local_), localBox_, static_cast<QWidget *>(server_), serverBox_})
        layout->addWidget(part);
    serverBox_->setEnabled(false);
    connect(local_, &QRadioButton::toggled, this, [this](bool local) {
        localBox_->setEnabled(local);
        serverBox_->setEnabled(!local);
    });
}

void DatabasePlace::createLocal()
{
    file_ = ui::named(u"txtFile"_s, new ui::LineEdit(localBox_));
    file_->setPlaceholderText(core::tr("percorso del file .fdb"));
    setFocusProxy(file_);
    auto *button = ui::named(u"cmdSfoglia"_s, new QToolButton(localBox_));
    button->setIcon(ui::icon(ui::Icon::Choose));
    button->setToolTip(core::tr("Scegli il file"));
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, [this] { core::guarded(this, [this] { browse(); }); });
    auto *line = new QHBoxLayout;
    line->addWidget(file_);
    line->addWidget(button);
    auto *rows = new QFormLayout(localBox_);
    rows->setContentsMargins(20, 0, 0, 6);
    rows->addRow(core::tr("File"), line);
}

void DatabasePlace::createServer()
{
    const auto edit = [this](const QString &name, const QString &initial = {}) {
        auto *line = ui::named(name, new ui::LineEdit(initial, serverBox_));
        return line;
    };
    host_ = edit(u"txtServer"_s);
    host_->setPlaceholderText(core::tr("nome o indirizzo, per esempio 192.168.1.10"));
    port_ = portEdit(serverBox_);
    serverFile_ = edit(u"txtFileServer"_s);
    serverFile_->setPlaceholderText(core::tr("come lo vede il server, per esempio /srv/firebird/azienda.fdb"));
    user_ = edit(u"txtUtenteServer"_s, u"SYSDBA"_s);
    password_ = edit(u"txtPasswordServer"_s);
    password_->setEchoMode(QLineEdit::Password);
    keep_ = ui::named(u"chkRicorda"_s, new QCheckBox(core::tr("Ricorda la password su questo computer"), serverBox_));
    keep_->setChecked(true);
    auto *rows = new QFormLayout(serverBox_);
    rows->setContentsMargins(20, 0, 0, 0);
    if (purpose_ == Purpose::Create)
        rows->addRow({}, createPreparation());
    rows->addRow(core::tr("Server"), host_);
    rows->addRow(core::tr("Porta"), port_);
    rows->addRow(core::tr("File sul server"), serverFile_);
    rows->addRow(core::tr("Utente Firebird"), user_);
    rows->addRow(core::tr("Password"), password_);
    rows->addRow({}, keep_);
}

// For who has a server, and nobody on it yet who may create databases.
QPushButton *DatabasePlace::createPreparation()
{
    auto *button = ui::plainButton(u"cmdPreparaServer"_s, core::tr("Cerca e prepara il server..."), serverBox_);
    connect(button, &QPushButton::clicked, this, [this] {
        core::guarded(this, [this] {
            const QString name = QFileInfo(file_->text()).completeBaseName();
            if (const auto ready = askServerPlace(this, (name.isEmpty() ? u"azienda"_s : name) + u".fdb"_s)) {
                setAddress(ready->database);
                keep_->setChecked(ready->keepPassword);
            }
        });
    });
    return button;
}

void DatabasePlace::browse()
{
    const QString folder = file_->text().isEmpty() ? folder_ : QFileInfo(file_->text()).absolutePath();
    const QString chosen =
        purpose_ == Purpose::Open
            ? ui::chooseOpenFile(this,
                                 {.title = core::tr("Apri database"), .filter = databaseFilter(), .folder = folder})
            : ui::chooseSaveFile(this, {.title = core::tr("Nuovo database"),
                                        .filter = databaseFilter(),
                                        .defaultExtension = u"fdb"_s,
                                        .proposedName = file_->text()});
    if (!chosen.isEmpty())
        file_->setText(chosen);
}

bool DatabasePlace::isLocal() const
{
    return local_->isChecked();
}

data::DatabaseAddress DatabasePlace::address() const
{
    data::DatabaseAddress address;
    if (isLocal()) {
        address.file = QFileInfo(file_->text().trimmed()).absoluteFilePath();
        return address;
    }
    address.host = host_->text().trimmed();
    address.port = port_->value();
    address.file = serverFile_->text().trimmed();
    address.user = user_->text().trimmed();
    address.password = password_->text();
    return address;
}

bool DatabasePlace::keepPassword() const
{
    return !isLocal() && keep_->isChecked();
}

QString DatabasePlace::problem() const
{
    if (isLocal())
        return file_->text().trimmed().isEmpty() ? core::tr("Non è stato indicato il file!") : QString();
    if (host_->text().trimmed().isEmpty())
        return core::tr("Non è stato indicato il server!");
    if (host_->text().contains(u':') || host_->text().contains(u'/'))
        return core::tr("Il nome del server non può contenere i caratteri \":\" e \"/\".");
    return serverFile_->text().trimmed().isEmpty() ? core::tr("Non è stato indicato il file sul server!") : QString();
}

void DatabasePlace::setFile(const QString &path)
{
    proposed_ = path;
    file_->setText(path);
}

void DatabasePlace::setAddress(const data::DatabaseAddress &address)
{
    if (address.file.isEmpty())
        return;
    if (address.isEmbedded()) {
        setFile(address.file);
        return;
    }
    server_->setChecked(true);
    setFocusProxy(password_);
    host_->setText(address.host);
    port_->setValue(address.port > 0 ? address.port : firebirdPort);
    serverFile_->setText(address.file);
    user_->setText(address.user);
    password_->setText(address.password);
}

bool DatabasePlace::hasProposedFile() const
{
    return file_->text() == proposed_;
}

} // namespace host

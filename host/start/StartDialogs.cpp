#include "host/start/StartDialogs.h"

#include "host/DatabaseSetup.h"
#include "host/TaxCodes.h"
#include "host/backup/Backup.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/DatabasePlace.h"
#include "host/start/Leftovers.h"
#include "host/users/PasswordDialogs.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/SqlText.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"

#include <QCheckBox>
#include <QCommandLinkButton>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

struct StartButton
{
    QString name;
    QString caption;
    QString explanation;
    FirstStart choice;
};

QList<StartButton> startButtons()
{
    return {{u"cmdDemo"_s, core::tr("Provare con l'azienda dimostrativa"),
             core::tr("Dati inventati, per imparare senza timore di sbagliare."), FirstStart::Demo},
            {u"cmdNuovaAzienda"_s, core::tr("Creare la propria azienda"),
             core::tr("Un nuovo archivio, su questo computer oppure su un server."), FirstStart::NewFirm},
            {u"cmdApri"_s, core::tr("Aprire un archivio esistente"),
             core::tr("Un file di questo computer oppure il database di un server Firebird già in uso."),
             FirstStart::Open}};
}

/// The inputs of a new firm, in the order of the Tab key.
class NewFirmDialog : public ui::FormDialog
{
public:
    NewFirmDialog(const QString &folder, QWidget *owner)
        : FormDialog(core::tr("Nuova azienda"), owner)
        , folder_(folder)
    {
        setObjectName(u"frmNuovaAzienda"_s);
        name_ = edit(u"txtRagioneSociale"_s, u"Ragione sociale"_s, 100);
        address_ = edit(u"txtIndirizzo"_s, u"Indirizzo"_s, 50);
        postcode_ = edit(u"txtCap"_s, u"CAP"_s, 5);
        town_ = edit(u"txtCitta"_s, u"Città"_s, 30);
        province_ = edit(u"txtProvincia"_s, core::tr("Provincia"), 2);
        vatNumber_ = edit(u"txtPartitaIVA"_s, u"Partita IVA"_s, 13);
        addText(core::tr("<b>Primo utente</b>: potrà fare tutto, anche creare gli altri utenti."));
        user_ = edit(u"txtNomeUtente"_s, core::tr("Nome utente"), 50);
        password_ = edit(u"txtPassword"_s, core::tr("Password"), 100);
        repeated_ = edit(u"txtRipeti"_s, core::tr("Ripeti la password"), 100);
        password_->setEchoMode(QLineEdit::Password);
        repeated_->setEchoMode(QLineEdit::Password);
        addText(core::tr("<b>Archivio</b>"));
        place_ = new DatabasePlace(DatabasePlace::Purpose::Create, folder, this);
        addRow({}, place_);
        tables_ =
            new QCheckBox(core::tr("Inserisci aliquote IVA, unità di misura, pagamenti e causali di uso comune"), this);
        tables_->setObjectName(u"chkTabelle"_s);
        tables_->setChecked(true);
        addRow({}, tables_);
        proposeFile();
        connect(name_, &QLineEdit::textChanged, this, [this] {
            if (place_->hasProposedFile())
                proposeFile();
        });
        setCheck([this] { return create(); });
        setMinimumWidth(600);
    }

    NewFirm firm() const
    {
        return {.database = place_->address(),
                .keepPassword = place_->keepPassword(),
                .name = name_->text().trimmed(),
                .address = address_->text().trimmed(),
                .postcode = postcode_->text().trimmed(),
                .town = town_->text().trimmed(),
                .province = province_->text().trimmed().toUpper(),
                .vatNumber = vatNumber_->text().trimmed().toUpper(),
                .userName = data::capitalsOf(user_->text().trimmed()),
                .password = password_->text(),
                .commonTables = tables_->isChecked()};
    }

private:
    QLineEdit *edit(const QString &name, const QString &label, int maxLength)
    {
        auto *line = ui::named(name, new ui::LineEdit(this));
        line->setMaxLength(maxLength);
        if (maxLength <= 20)
            line->setMaximumWidth(line->fontMetrics().horizontalAdvance(QString(maxLength + 2, u'M')) + 16);
        addRow(label, line);
        return line;
    }

    void proposeFile() { place_->setFile(folder_ + u'/' + proposedFileName(name_->text())); }

    QString problem() const
    {
        const NewFirm made = firm();
        if (made.name.isEmpty())
            return u"Non è stata indicata la ragione sociale!"_s;
        if (made.userName.isEmpty())
            return core::tr("Non è stato indicato il nome utente!");
        if (QString wrong = passwordProblem(password_->text(), repeated_->text()); !wrong.isEmpty())
            return wrong;
        if (QString missing = place_->problem(); !missing.isEmpty())
            return missing;
        return made.database.isEmbedded() && QFileInfo::exists(made.database.file) &&
                       leftoverAt(made.database) == Leftover::None
                   ? core::tr("Il file \"%1\" esiste già: scegliere un altro nome.").arg(made.database.file)
                   : QString();
    }

    bool create()
    {
        if (const QString wrong = problem(); !wrong.isEmpty()) {
            core::warn(this, wrong);
            return false;
        }
        const QString vat = firm().vatNumber;
        if (!vat.isEmpty() && !host::isVatNumber(vat) &&
            !core::confirmLoss(
                this, core::tr("Partita IVA: il carattere di controllo non corrisponde.\n\rContinuare comunque?")))
            return false;
        if (!hasRoom(firm().database))
            return false;
        const ui::WaitCursor wait;
        createFirm(firm());
        return true;
    }

    bool hasRoom(const data::DatabaseAddress &database)
    {
        const Leftover leftover = leftoverAt(database);
        if (leftover != Leftover::None)
            return makeRoom(this, database, leftover);
        if (database.isEmbedded() || data::checkDatabase(database).failure != data::OpenFailure::None)
            return true;
        core::warn(this, takenOnServer(database.file));
        return false;
    }

    QString folder_;
    QLineEdit *name_;
    QLineEdit *address_;
    QLineEdit *postcode_;
    QLineEdit *town_;
    QLineEdit *province_;
    QLineEdit *vatNumber_;
    QLineEdit *user_;
    QLineEdit *password_;
    QLineEdit *repeated_;
    DatabasePlace *place_;
    QCheckBox *tables_;
};

} // namespace

FirstStart askFirstStart(const QString &tried)
{
    QDialog dialog;
    dialog.setObjectName(u"frmPrimoAvvio"_s);
    dialog.setWindowTitle(core::tr("Benvenuti in Corvane"));
    auto *layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(20, 16, 20, 20);
    auto *title = new QLabel(core::tr("<big><b>Come si vuole %1?</b></big>")
                                 .arg(tried.isEmpty() ? core::tr("cominciare") : core::tr("continuare")),
                             &dialog);
    layout->addWidget(title);
    QList<StartButton> buttons = startButtons();
    if (!tried.isEmpty())
        buttons.prepend({u"cmdRiprova"_s, core::tr("Riprovare"), tried, FirstStart::Again});
    FirstStart choice = FirstStart::GiveUp;
    for (const StartButton &spec : std::as_const(buttons)) {
        auto *button = ui::named(spec.name, new QCommandLinkButton(spec.caption, spec.explanation, &dialog));
        button->setAutoDefault(false);
        layout->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, &choice, picked = spec.choice] {
            choice = picked;
            dialog.accept();
        });
    }
    dialog.setMinimumWidth(600);
    ui::runModal(dialog);
    return choice;
}

std::optional<NewFirm> askNewFirm(QWidget *owner, const QString &folder)
{
    NewFirmDialog dialog(folder, owner);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    return dialog.firm();
}

std::optional<Opening> newFirmToOpen(QWidget *owner, const QString &folder, DatabaseMemory &memory)
{
    const auto firm = askNewFirm(owner, folder);
    if (!firm)
        return {};
    core::guarded(owner, [&] { memory.remember(firm->database, firm->keepPassword); });
    return Opening{.database = firm->database, .keepPassword = firm->keepPassword};
}

std::optional<Opening> databaseToOpen(QWidget *owner, const QString &folder, const data::DatabaseAddress &proposed)
{
    ui::FormDialog dialog(core::tr("Apri archivio"), owner);
    dialog.setObjectName(u"frmApriArchivio"_s);
    auto *place = new DatabasePlace(DatabasePlace::Purpose::Open, folder, &dialog);
    place->setAddress(proposed);
    dialog.addRow({}, place);
    place->setFocus();
    dialog.setMinimumWidth(560);
    dialog.setCheck([&] {
        QString problem = place->problem();
        if (problem.isEmpty()) {
            const ui::WaitCursor wait;
            problem = databaseProblem(place->address());
        }
        if (!problem.isEmpty())
            core::warn(&dialog, problem);
        return problem.isEmpty();
    });
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    return Opening{.database = place->address(), .keepPassword = place->keepPassword()};
}

} // namespace host

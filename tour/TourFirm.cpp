#include "tour/TourFirm.h"

#include "host/Application.h"
#include "host/HostCommands.h"
#include "host/IntfPack.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/FileCommands.h"
#include "host/start/FirstRows.h"
#include "host/start/StartDialogs.h"
#include "host/ui/MainWindow.h"
#include "host/users/PasswordDialogs.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "tour/TourDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString firmName = u"Ferramenta D'Orazio S.r.l."_s;
const QString userName = u"LUCIA"_s;
const QString password = u"magazzino-7"_s;

const QByteArray articleFile = "Codice;Descrizione;U.M.;IVA;Prezzo;Costo;Sottoscorta\r\n"
                               "CHI-050;Chiodi 50 mm;KG;22;5,50;3,00;20\r\n"
                               "CHI-080;Chiodi 80 mm;KG;22;5,80;3,20;20\r\n"
                               "VER-001;\"Vernice bianca; opaca, 1 l\";PZ;22;1.012,90;8,10;6\r\n";

class FirmTour
{
public:
    explicit FirmTour(TourDriver &driver)
        : driver_(driver)
    {
    }
    void run();

private:
    QString file(const QString &name) const { return QDir(driver_.folder()).absoluteFilePath(name); }
    void type(QWidget *window, const QString &name, const QString &text);
    QString one(const QString &sql);
    QObject *module() const { return GetPackageInstance(u"Magazzino.bpl"_s); }

    data::DatabaseAddress newFirm();
    QString login(const data::DatabaseAddress &database);
    void importArticles();
    void customer();
    void deliveryNote();
    void exportArticles();
    void backup(const data::DatabaseAddress &database);

    TourDriver &driver_;
    Session *session_ = nullptr;
};

void FirmTour::type(QWidget *window, const QString &name, const QString &text)
{
    driver_.control<QLineEdit>(window, name)->setText(text);
}

QString FirmTour::one(const QString &sql)
{
    const data::Rows rows = session_->connection().select(sql);
    return rows.isEmpty() ? QString() : rows.values(0).constFirst().toString();
}

data::DatabaseAddress FirmTour::newFirm()
{
    driver_.tell(u"Primo avvio: creare la propria azienda"_s);
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.picture(&dialog, u"primo-avvio"_s);
        driver_.press(&dialog, u"cmdNuovaAzienda"_s);
    });
    driver_.check(u"scelta"_s, askFirstStart() == FirstStart::NewFirm);
    driver_.expectDialog([this](QDialog &dialog) {
        type(&dialog, u"txtRagioneSociale"_s, firmName);
        type(&dialog, u"txtIndirizzo"_s, u"Via Roma, 5"_s);
        type(&dialog, u"txtCap"_s, u"36061"_s);
        type(&dialog, u"txtCitta"_s, u"Bassano del Grappa"_s);
        type(&dialog, u"txtProvincia"_s, u"VI"_s);
        type(&dialog, u"txtPartitaIVA"_s, u"01234567897"_s);
        type(&dialog, u"txtNomeUtente"_s, userName.toLower());
        type(&dialog, u"txtPassword"_s, password);
        type(&dialog, u"txtRipeti"_s, password);
        QFile::remove(driver_.control<QLineEdit>(&dialog, u"txtFile"_s)->text());
        driver_.picture(&dialog, u"nuova-azienda"_s);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    const auto firm = askNewFirm(nullptr, QDir(driver_.folder()).absolutePath());
    if (!firm)
        throw core::Error(u"La nuova azienda non è stata creata."_s);
    driver_.check(u"archivio creato"_s, QFile::exists(firm->database.file));
    return firm->database;
}

QString FirmTour::login(const data::DatabaseAddress &database)
{
    driver_.tell(u"L'accesso, prima con una password sbagliata"_s);
    data::Connection connection;
    connection.setConnectionString(data::nativeConnectionString(database));
    connection.open();
    driver_.expectMessage(u"Attenzione"_s, u"Nome utente o password non corretti."_s, core::Answer::Ok);
    driver_.expectDialog([this](QDialog &dialog) {
        type(&dialog, u"txtPassword"_s, u"magazzino-8"_s);
        driver_.press(&dialog, u"cmdOk"_s);
        driver_.picture(&dialog, u"accesso"_s);
        type(&dialog, u"txtPassword"_s, password);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    QString user = logIn(nullptr, userName, connection).user;
    driver_.check(u"utente"_s, user, userName);
    return user;
}

void FirmTour::importArticles()
{
    driver_.tell(u"Gli articoli da un file CSV"_s);
    QString path = file(u"articoli.csv"_s);
    QFile csv(path);
    if (!csv.open(QIODevice::WriteOnly) || csv.write(articleFile) != articleFile.size())
        throw core::Error(u"Impossibile scrivere \"%1\"."_s.arg(path));
    csv.close();
    const auto restore = qScopeGuard([] { ui::setOpenFileChooser({}); });
    ui::setOpenFileChooser([path](QWidget *, const ui::OpenFileRequest &) { return path; });
    driver_.expectMessage(u"Informazioni"_s, u"Importazione completata: 3 record nuovi, 0 aggiornati."_s,
                          core::Answer::Ok);
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.press(&dialog, u"cmdSfoglia"_s);
        driver_.picture(&dialog, u"importazione"_s);
        driver_.expectProgress();
        driver_.press(&dialog, u"cmdImporta"_s);
    });
    driver_.trigger(&session_->commands(), u"actImporta"_s);
    driver_.check(u"prezzo importato"_s,
                  core::formatNumber(one(u"SELECT PREZZO FROM ANA_MAGA WHERE CODICE = 'VER-001'"_s).toDouble()),
                  u"1.012,90"_s);
}

void FirmTour::customer()
{
    driver_.tell(u"Il primo cliente"_s);
    QWidget *form = session_->commands().openForm(u"actInserimentoClienti"_s);
    driver_.check(u"codice proposto"_s, driver_.control<QLineEdit>(form, u"txtCodice"_s)->text(), u"CLI000001"_s);
    type(form, u"txtRagioneSociale"_s, u"Rossi Mario & C. S.n.c."_s);
    type(form, u"txtIndirizzo"_s, u"Via Verdi, 1"_s);
    type(form, u"txtCitta"_s, u"Marostica"_s);
    type(form, u"txtPartitaIVA"_s, u"00743110157"_s);
    driver_.trigger(form, u"actSalva"_s);
    driver_.trigger(form, u"actChiudi"_s);
}

void FirmTour::deliveryNote()
{
    driver_.tell(u"Il primo D.d.T., salvato e in PDF"_s);
    driver_.trigger(module(), u"actInserimentoDdTScarico"_s);
    auto *form = driver_.control<QWidget>(&session_->window(), u"MMGInserimentoDdTScarico"_s);
    const auto choose = [this](const QString &text) {
        driver_.expectDialog([this, text](QDialog &dialog) {
            if (auto *search = dialog.findChild<QAbstractButton *>(u"actCerca"_s))
                search->click();
            const QList<QToolButton *> letters = dialog.findChildren<QToolButton *>();
            for (QToolButton *letter : letters) {
                if (letter->text() == u"*")
                    letter->click();
            }
            driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), text);
            driver_.press(&dialog, u"cmdOk"_s);
        });
    };
    choose(u"Rossi Mario & C. S.n.c."_s);
    driver_.press(form, u"cmdSelezionaCliente"_s);
    choose(u"Mittente"_s);
    driver_.press(form, u"cmdSelezionaTipoTrasporto"_s);
    choose(u"Vendita"_s);
    driver_.press(form, u"cmdSelezionaCausaleTrasporto"_s);
    driver_.control<QTabWidget>(form, u"pages"_s)->setCurrentIndex(1);
    choose(u"CHI-050"_s);
    driver_.trigger(form, u"actAggiungiArticolo"_s);
    auto *rows = driver_.control<QTableView>(form, u"gridRigheDocumento"_s);
    driver_.typeIntoCell(rows, 0, u"Q.tà"_s, u"12,5"_s);
    driver_.check(u"importo della riga"_s, driver_.cellText(rows, 0, u"Importo"_s), u"€ 68,75"_s);
    driver_.trigger(form, u"actSalva"_s);
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    QString pdf = file(u"primo-ddt.pdf"_s);
    ui::setSaveFileChooser([pdf](QWidget *, const ui::SaveFileRequest &) { return pdf; });
    QFile::remove(pdf);
    driver_.trigger(form, u"actSalvaPDF"_s);
    driver_.check(u"PDF scritto"_s, QFile::exists(pdf));
    driver_.trigger(form, u"actChiudi"_s);
}

void FirmTour::exportArticles()
{
    driver_.tell(u"L'elenco degli articoli in un foglio di calcolo"_s);
    QString path = file(u"articoli.xlsx"_s);
    QFile::remove(path);
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    ui::setSaveFileChooser([path](QWidget *, const ui::SaveFileRequest &) { return path; });
    QWidget *list = session_->commands().openForm(u"actRicercaArticoli"_s);
    driver_.trigger(list, u"actEsportaXLSX"_s);
    driver_.check(u"foglio di calcolo scritto"_s, QFile::exists(path));
}

void FirmTour::backup(const data::DatabaseAddress &database)
{
    driver_.tell(u"La copia di sicurezza, verificata"_s);
    DatabaseMemory memory(driver_.folder());
    FileCommands commands(session_->window(), {.database = database}, memory, driver_.folder());
    QString copy = file(u"ferramenta.fbk"_s);
    QFile::remove(copy);
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    ui::setSaveFileChooser([copy](QWidget *, const ui::SaveFileRequest &) { return copy; });
    driver_.expectProgress();
    driver_.expectMessage(u"Informazioni"_s, u"La copia di sicurezza è stata fatta e verificata"_s, core::Answer::Ok);
    driver_.trigger(&commands, u"actCopiaSicurezza"_s);
    driver_.check(u"copia scritta"_s, QFile::exists(copy));
    // The forms that stayed open go on with the reopened connections.
    driver_.trigger(&session_->window(), u"actCerca"_s);
    driver_.check(u"si continua a lavorare"_s, one(u"SELECT COUNT(*) FROM ANA_MAGA"_s), u"3"_s);
}

void FirmTour::run()
{
    const data::DatabaseAddress database = newFirm();
    Session session(database, login(database), {});
    session_ = &session;
    session.startModules(QCoreApplication::applicationDirPath());
    insertNotedFirstRows(session.connection());
    session.window().show();
    importArticles();
    customer();
    deliveryNote();
    exportArticles();
    backup(database);
    session.window().close();
}

} // namespace

void tourFirm(TourDriver &driver)
{
    FirmTour(driver).run();
}

} // namespace host

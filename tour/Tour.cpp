#include "tour/Tour.h"

#include "host/Application.h"
#include "host/DatabaseSetup.h"
#include "host/IntfPack.h"
#include "host/schema/DemoData.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/data/Connection.h"
#include "platform/ui/NumberEdits.h"
#include "tour/TourDriver.h"
#include "tour/TourFirm.h"
#include "tour/TourHost.h"
#include "tour/TourInvoices.h"
#include "tour/TourPrinting.h"
#include "tour/TourRegisters.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The article that is received twice and issued, with its text in the demonstration data.
const QString article = u"TRA-0018"_s;
const QString otherArticle = u"SMA-0750"_s;
const QString receiptForm = u"MMGInserimentoBolleCarico"_s;
const QString deliveryForm = u"MMGInserimentoDdTScarico"_s;

class Tour
{
public:
    Tour(TourDriver &driver, Session &session)
        : driver_(driver)
        , session_(session)
    {
    }
    void run();

private:
    QObject *module() const { return GetPackageInstance(u"Magazzino.bpl"_s); }
    QWidget *open(const QString &action, const QString &form);
    void chooseByLetter(const QString &letter, const QString &name, const QString &picture);
    void chooseFromList(const QString &text, const QString &picture = {});
    void chooseArticle(const QString &code, const QString &picture = {});
    QTableView *rows(QWidget *form) { return driver_.control<QTableView>(form, u"gridRigheDocumento"_s); }
    void showPage(QWidget *form, int page);
    void addArticle(QWidget *form, const QString &code, const QString &priceHeader, const QString &price,
                    const QString &quantity, const QString &picture = {});
    void fillReceiptHeader(QWidget *form);
    void fillDeliveryHeader(QWidget *form);
    void checkStock(const QString &quantity, const QString &value);
    void checkMovement(const QString &quantity, const QString &unitValue, const QString &amount);
    QString one(const QString &sql);
    QString decimal(const QString &sql);

    void firstReceipt();
    void secondReceipt();
    void delivery();
    void changes();
    void deletion();

    TourDriver &driver_;
    Session &session_;
    QWidget *delivery_ = nullptr;
};

// The first value of a query, as text.
QString Tour::one(const QString &sql)
{
    const data::Rows rows = session_.connection().select(sql);
    return rows.isEmpty() ? QString() : rows.values(0).constFirst().toString();
}

QString Tour::decimal(const QString &sql)
{
    return core::formatNumber(one(sql).toDouble());
}

QWidget *Tour::open(const QString &action, const QString &form)
{
    driver_.trigger(module(), action);
    return driver_.control<QWidget>(&session_.window(), form);
}

void Tour::showPage(QWidget *form, int page)
{
    driver_.control<QTabWidget>(form, u"pages"_s)->setCurrentIndex(page);
}

void Tour::chooseByLetter(const QString &letter, const QString &name, const QString &picture)
{
    driver_.expectDialog([this, letter, name, picture](QDialog &dialog) {
        const QList<QToolButton *> letters = dialog.findChildren<QToolButton *>();
        for (QToolButton *button : letters) {
            if (button->text() == letter)
                button->click();
        }
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), name);
        driver_.picture(&dialog, picture);
        driver_.press(&dialog, u"cmdOk"_s);
    });
}

void Tour::chooseFromList(const QString &text, const QString &picture)
{
    driver_.expectDialog([this, text, picture](QDialog &dialog) {
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), text);
        if (!picture.isEmpty())
            driver_.picture(&dialog, picture);
        driver_.press(&dialog, u"cmdOk"_s);
    });
}

void Tour::chooseArticle(const QString &code, const QString &picture)
{
    driver_.expectDialog([this, code, picture](QDialog &dialog) {
        driver_.control<QLineEdit>(&dialog, u"txtCodice"_s)->setText(code.left(3).toLower());
        driver_.press(&dialog, u"actCerca"_s);
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), code);
        if (!picture.isEmpty())
            driver_.picture(&dialog, picture);
        driver_.press(&dialog, u"cmdOk"_s);
    });
}

void Tour::addArticle(QWidget *form, const QString &code, const QString &priceHeader, const QString &price,
                      const QString &quantity, const QString &picture)
{
    chooseArticle(code, picture);
    driver_.trigger(form, u"actAggiungiArticolo"_s);
    const int row = rows(form)->model()->rowCount() - 1;
    driver_.typeIntoCell(rows(form), row, priceHeader, price);
    driver_.typeIntoCell(rows(form), row, u"Q.tà"_s, quantity);
}

void Tour::checkStock(const QString &quantity, const QString &value)
{
    const QString from = u" FROM MOVI_MAGA WHERE CODICE = '%1'"_s.arg(article);
    driver_.check(u"esistenza di "_s + article, decimal(u"SELECT SUM(QUANTITA)"_s + from), quantity);
    driver_.check(u"valore di "_s + article, decimal(u"SELECT SUM(VALORE_IMPORTO)"_s + from), value);
}

void Tour::checkMovement(const QString &quantity, const QString &unitValue, const QString &amount)
{
    const QString from = u" FROM MOVI_MAGA WHERE RIF_DOC_TIPO = 'D.d.T. di scarico' AND CODICE = '%1'"_s.arg(article);
    driver_.check(u"movimenti del D.d.T."_s, one(u"SELECT COUNT(*)"_s + from), u"1"_s);
    driver_.check(u"quantità scaricata"_s, decimal(u"SELECT QUANTITA"_s + from), quantity);
    driver_.check(u"valore unitario"_s, decimal(u"SELECT VALORE"_s + from), unitValue);
    driver_.check(u"valore totale"_s, decimal(u"SELECT VALORE_IMPORTO"_s + from), amount);
}

void Tour::fillReceiptHeader(QWidget *form)
{
    chooseByLetter(u"*"_s, one(u"SELECT FIRST 1 RAGIONESOCIALE FROM FORNITORI ORDER BY IDFORNITORE"_s),
                   u"seleziona-fornitore"_s);
    driver_.trigger(form, u"actSelezionaFornitore"_s);
    chooseFromList(u"Mittente"_s, u"seleziona-tipo-trasporto"_s);
    driver_.press(form, u"cmdSelezionaTipoTrasporto"_s);
    auto *reason = driver_.control<QComboBox>(form, u"txtCausaleTrasporto"_s);
    reason->setCurrentIndex(reason->findText(u"Vendita"_s));
    driver_.control<QLineEdit>(form, u"txtAspettoBeni"_s)->setText(u"Scatole"_s);
    driver_.control<ui::IntegerEdit>(form, u"txtColli"_s)->setValue(3);
    driver_.control<ui::DecimalEdit>(form, u"txtPeso"_s)->setValue(24.5);
    auto *unit = driver_.control<QComboBox>(form, u"txtPesoUm"_s);
    unit->setCurrentIndex(unit->findText(u"KG"_s));
}

void Tour::firstReceipt()
{
    driver_.tell(u"Prima bolla di carico: 10 pezzi a 2,00"_s);
    QWidget *form = open(u"actInserimentoBolleCarico"_s, receiptForm);
    driver_.picture(&session_.window(), u"bolla-nuova"_s);
    driver_.check(u"numero proposto"_s, driver_.control<ui::IntegerEdit>(form, u"txtNumero"_s)->text(), u"1"_s);

    driver_.tell(u"Senza fornitore non si salva"_s);
    driver_.control<QPlainTextEdit>(form, u"txtNote"_s)->setPlainText(u"Merce controllata all'arrivo"_s);
    driver_.expectMessage(u"Attenzione"_s, u"Non è stato selezionato un fornitore!"_s, core::Answer::Ok);
    driver_.trigger(form, u"actSalva"_s);

    driver_.tell(u"Intestazione e righe"_s);
    fillReceiptHeader(form);
    driver_.picture(&session_.window(), u"bolla-intestazione"_s);
    showPage(form, 1);
    addArticle(form, article, u"Costo"_s, u"2,00"_s, u"10"_s, u"seleziona-articolo"_s);
    addArticle(form, otherArticle, u"Costo"_s, u"3,5"_s, u"4"_s);
    driver_.picture(&session_.window(), u"bolla-righe"_s);
    driver_.check(u"importo della prima riga"_s, driver_.cellText(rows(form), 0, u"Importo"_s), u"€ 20,00"_s);
    driver_.check(u"totale imponibile"_s, driver_.control<QLabel>(form, u"lblTotaleImponibile"_s)->text(),
                  u"€ 34,00"_s);
    driver_.check(u"totale imposta"_s, driver_.control<QLabel>(form, u"lblTotaleImposta"_s)->text(), u"€ 7,48"_s);
    driver_.trigger(form, u"actSalva"_s);
    driver_.check(u"bolle registrate"_s, one(u"SELECT COUNT(*) FROM BOLLE_CARICO"_s), u"1"_s);
    driver_.check(u"totale registrato"_s, decimal(u"SELECT TOTALE_DOCUMENTO FROM BOLLE_CARICO"_s), u"41,48"_s);
    checkStock(u"10,00"_s, u"20,00"_s);
}

void Tour::secondReceipt()
{
    driver_.tell(u"Seconda bolla di carico: 10 pezzi a 4,00"_s);
    QWidget *form = open(u"actInserimentoBolleCarico"_s, receiptForm);
    driver_.trigger(form, u"actNuovo"_s);
    driver_.check(u"numero proposto"_s, driver_.control<ui::IntegerEdit>(form, u"txtNumero"_s)->text(), u"2"_s);
    fillReceiptHeader(form);
    showPage(form, 1);
    addArticle(form, article, u"Costo"_s, u"4"_s, u"10"_s);

    driver_.tell(u"Una quantità pari a zero viene rifiutata"_s);
    driver_.typeIntoCell(rows(form), 0, u"Q.tà"_s, u"0"_s);
    driver_.check(u"quantità rimasta"_s, driver_.cellText(rows(form), 0, u"Q.tà"_s), u"10,00"_s);
    driver_.trigger(form, u"actSalva"_s);
    checkStock(u"20,00"_s, u"60,00"_s);
    driver_.trigger(form, u"actChiudi"_s);
}

void Tour::fillDeliveryHeader(QWidget *form)
{
    const QString customer = one(u"SELECT FIRST 1 RAGIONESOCIALE FROM CLIENTI WHERE RAGIONESOCIALE CONTAINING '''' "
                                 "AND PARTITAIVA > '' ORDER BY IDCLIENTE"_s);
    chooseByLetter(u"*"_s, customer, u"seleziona-cliente"_s);
    driver_.press(form, u"cmdSelezionaCliente"_s);
    driver_.check(u"cliente"_s, driver_.control<QLabel>(form, u"lblRagioneSociale"_s)->text(), customer);
    chooseByLetter(u"*"_s, one(u"SELECT FIRST 1 RAGIONESOCIALE FROM VETTORI ORDER BY IDVETTORE"_s),
                   u"seleziona-vettore"_s);
    driver_.press(form, u"cmdSelezionaVettore"_s);
    chooseFromList(u"Vettore"_s);
    driver_.press(form, u"cmdSelezionaTipoTrasporto"_s);
    chooseFromList(u"Vendita"_s, u"seleziona-causale-trasporto"_s);
    driver_.press(form, u"cmdSelezionaCausaleTrasporto"_s);
    chooseFromList(u"KG"_s, u"seleziona-unita-misura"_s);
    driver_.press(form, u"cmdSelezionaPesoUM"_s);
    driver_.control<QLineEdit>(form, u"txtDestRagioneSociale"_s)->setText(u"Cantiere di via Roma"_s);
    driver_.control<QLineEdit>(form, u"txtDestIndirizzo"_s)->setText(u"Via Roma 12"_s);
    driver_.control<QLineEdit>(form, u"txtDestCap"_s)->setText(u"36061"_s);
    driver_.control<QLineEdit>(form, u"txtAspettoBeni"_s)->setText(u"Scatole"_s);
    driver_.control<ui::IntegerEdit>(form, u"txtColli"_s)->setValue(2);
    driver_.control<ui::DecimalEdit>(form, u"txtPeso"_s)->setValue(11.25);
    driver_.control<QCheckBox>(form, u"chkInizioTrasporto"_s)->setChecked(true);
}

void Tour::delivery()
{
    driver_.tell(u"D.d.T. di scarico: 5 pezzi al costo medio"_s);
    delivery_ = open(u"actInserimentoDdTScarico"_s, deliveryForm);
    driver_.picture(&session_.window(), u"ddt-nuovo"_s);
    fillDeliveryHeader(delivery_);
    driver_.picture(&session_.window(), u"ddt-intestazione"_s);
    showPage(delivery_, 1);
    addArticle(delivery_, article, u"Prezzo"_s, u"7,90"_s, u"5"_s);
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.press(&dialog, u"actCerca"_s);
        driver_.control<QTableView>(&dialog, u"gridRisultati"_s)->selectRow(0);
        driver_.picture(&dialog, u"seleziona-servizio"_s);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.trigger(delivery_, u"actAggiungiServizio"_s);
    driver_.trigger(delivery_, u"actAggiungiTesto"_s);
    driver_.typeIntoCell(rows(delivery_), 2, u"Descrizione"_s,
                         u"Consegna al piano, citofonare \"D'Amico\".\nOrario: 8-12, perché il cantiere chiude."_s);
    driver_.picture(&session_.window(), u"ddt-righe"_s);
    driver_.trigger(delivery_, u"actSalva"_s);
    driver_.check(u"salvato"_s, !delivery_->findChild<QAction *>(u"actSalva"_s)->isEnabled());
    driver_.check(u"righe registrate"_s, one(u"SELECT COUNT(*) FROM DDT_SCARICO_DETT"_s), u"3"_s);
    checkMovement(u"-5,00"_s, u"3,00"_s, u"-15,00"_s);
    checkStock(u"15,00"_s, u"45,00"_s);
}

void Tour::changes()
{
    driver_.tell(u"Salvare di nuovo non cambia le giacenze"_s);
    driver_.control<QPlainTextEdit>(delivery_, u"txtNote"_s)->setPlainText(u"Consegnare entro venerdì"_s);
    showPage(delivery_, 2);
    driver_.picture(&session_.window(), u"ddt-note"_s);
    driver_.trigger(delivery_, u"actSalva"_s);
    checkMovement(u"-5,00"_s, u"3,00"_s, u"-15,00"_s);
    checkStock(u"15,00"_s, u"45,00"_s);

    driver_.tell(u"La quantità passa da 5 a 6"_s);
    showPage(delivery_, 1);
    driver_.typeIntoCell(rows(delivery_), 0, u"Q.tà"_s, u"6"_s);
    driver_.trigger(delivery_, u"actSalva"_s);
    checkMovement(u"-6,00"_s, u"3,00"_s, u"-18,00"_s);
    checkStock(u"14,00"_s, u"42,00"_s);

    driver_.tell(u"La finestra alla sua dimensione minima"_s);
    QWidget *frame = delivery_->parentWidget();
    const QSize before = frame->size();
    frame->resize(frame->minimumSizeHint().expandedTo(delivery_->minimumSize()));
    showPage(delivery_, 0);
    driver_.picture(delivery_, u"ddt-dimensione-minima"_s);
    frame->resize(before);
}

void Tour::deletion()
{
    driver_.tell(u"Eliminare il D.d.T.: i movimenti restano"_s);
    driver_.expectMessage(u"Conferma"_s, u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    driver_.trigger(delivery_, u"actElimina"_s);
    driver_.check(u"D.d.T. registrati"_s, one(u"SELECT COUNT(*) FROM DDT_SCARICO"_s), u"0"_s);
    driver_.check(u"righe registrate"_s, one(u"SELECT COUNT(*) FROM DDT_SCARICO_DETT"_s), u"0"_s);
    checkStock(u"14,00"_s, u"42,00"_s);

    driver_.tell(u"Chiudere con modifiche non salvate"_s);
    driver_.control<QLineEdit>(delivery_, u"txtAspettoBeni"_s)->setText(u"Sfuso"_s);
    driver_.expectMessage(u"Conferma"_s, u"Salvare le modifiche al record corrente"_s, core::Answer::Cancel);
    driver_.trigger(delivery_, u"actChiudi"_s);
    driver_.check(u"la finestra resta aperta"_s, delivery_->isVisible());
    driver_.expectMessage(u"Conferma"_s, u"Salvare le modifiche al record corrente"_s, core::Answer::No);
    driver_.trigger(delivery_, u"actChiudi"_s);
}

void Tour::run()
{
    driver_.tell(u"La finestra principale"_s);
    driver_.picture(&session_.window(), u"finestra-principale"_s);
    firstReceipt();
    secondReceipt();
    delivery();
    changes();
    tourPrinting(driver_, session_, module(), delivery_);
    tourRegisters(driver_, session_.window(), module(), session_.connection());
    deletion();
    tourHost(driver_, session_);
    tourInvoices(driver_, session_, module());
}

void makeDemoDatabase(const QString &file)
{
    QFile::remove(file);
    data::DatabaseAddress address;
    address.file = file;
    createHostDatabase(address, true);
}

} // namespace

int runTour(const QString &folder)
{
    TourDriver driver(folder);
    const bool completed = [&] {
        try {
            if (!QDir().mkpath(folder))
                throw core::Error(u"Impossibile creare la cartella \"%1\"."_s.arg(folder));
            tourFirm(driver);
            data::DatabaseAddress address;
            address.file = QDir(folder).absoluteFilePath(u"demo.fdb"_s);
            driver.tell(u"Nuovo database dimostrativo \"%1\""_s.arg(address.file));
            makeDemoDatabase(address.file);
            Session session(address, administrator, {});
            session.startModules(QCoreApplication::applicationDirPath());
            insertDemoWarehouseData(session.connection());
            session.window().show();
            Tour(driver, session).run();
            session.window().close();
            return true;
        } catch (const std::exception &error) {
            std::printf("\n  NO  %s\n", qUtf8Printable(core::errorText(error)));
            return false;
        }
    }();
    driver.finish();
    const int failed = driver.failed() + (completed ? 0 : 1);
    std::printf("\n%d passed, %d failed\n", driver.passed(), failed);
    return failed == 0 ? 0 : 1;
}

} // namespace host

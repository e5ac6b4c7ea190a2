#include "tour/TourWarehouse.h"

#include "tour/Part.h"
#include "tour/TourPrinting.h"
#include "tour/TourRegisters.h"

#include <QAction>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

// The article that is received twice and issued, with its text in the demonstration data.
const QString article = u"TRA-0018"_s;
const QString otherArticle = u"SMA-0750"_s;
const QString receiptForm = u"MMGInserimentoBolleCarico"_s;
const QString deliveryForm = u"MMGInserimentoDdTScarico"_s;

class Warehouse : private Part
{
public:
    Warehouse(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }
    void run();

private:
    static QTableView *rows(const QWidget *form) { return control<QTableView>(form, u"gridRigheDocumento"_s); }
    void addArticle(QWidget *form, const QString &code, const QString &priceHeader, const QString &price,
                    const QString &quantity, const QString &picture = {});
    void fillReceiptHeader(QWidget *form);
    void fillDeliveryHeader(QWidget *form);
    void checkStock(const QString &quantity, const QString &value);
    void checkMovement(const QString &quantity, const QString &unitValue, const QString &amount);

    void firstReceipt();
    void secondReceipt();
    void delivery();
    void changes();
    void deletion();

    QWidget *delivery_ = nullptr;
};

void Warehouse::addArticle(QWidget *form, const QString &code, const QString &priceHeader, const QString &price,
                           const QString &quantity, const QString &picture)
{
    expectSearch(code.left(3).toLower(), code, picture);
    trigger(form, u"actAggiungiArticolo"_s);
    const int row = rows(form)->model()->rowCount() - 1;
    typeIntoCell(rows(form), row, priceHeader, price);
    typeIntoCell(rows(form), row, u"Q.tà"_s, quantity);
}

void Warehouse::checkStock(const QString &quantity, const QString &value)
{
    const QString from = u" FROM MOVI_MAGA WHERE CODICE = '%1'"_s.arg(article);
    check(u"esistenza di "_s + article, decimal(u"SELECT SUM(QUANTITA)"_s + from), quantity);
    check(u"valore di "_s + article, decimal(u"SELECT SUM(VALORE_IMPORTO)"_s + from), value);
}

void Warehouse::checkMovement(const QString &quantity, const QString &unitValue, const QString &amount)
{
    const QString from = u" FROM MOVI_MAGA WHERE RIF_DOC_TIPO = 'D.d.T. di scarico' AND CODICE = '%1'"_s.arg(article);
    check(u"movimenti del D.d.T."_s, one(u"SELECT COUNT(*)"_s + from), u"1"_s);
    check(u"quantità scaricata"_s, decimal(u"SELECT QUANTITA"_s + from), quantity);
    check(u"valore unitario"_s, decimal(u"SELECT VALORE"_s + from), unitValue);
    check(u"valore totale"_s, decimal(u"SELECT VALORE_IMPORTO"_s + from), amount);
}

void Warehouse::fillReceiptHeader(QWidget *form)
{
    expectChoice(one(u"SELECT FIRST 1 RAGIONESOCIALE FROM FORNITORI ORDER BY IDFORNITORE"_s), u"*"_s,
                 u"seleziona-fornitore"_s);
    trigger(form, u"actSelezionaFornitore"_s);
    expectChoice(u"Mittente"_s, {}, u"seleziona-tipo-trasporto"_s);
    press(form, u"cmdSelezionaTipoTrasporto"_s);
    pick(form, u"txtCausaleTrasporto"_s, u"Vendita"_s);
    type(form, u"txtAspettoBeni"_s, u"Scatole"_s);
    type(form, u"txtColli"_s, u"3"_s);
    type(form, u"txtPeso"_s, u"24,5"_s);
    pick(form, u"txtPesoUm"_s, u"KG"_s);
}

void Warehouse::firstReceipt()
{
    tell(u"Prima bolla di carico: 10 pezzi a 2,00"_s);
    QWidget *form = open(u"actInserimentoBolleCarico"_s, receiptForm);
    picture(u"bolla-nuova"_s);
    check(u"numero proposto"_s, shown(form, u"txtNumero"_s), u"1"_s);

    tell(u"Senza fornitore non si salva"_s);
    type(form, u"txtNote"_s, u"Merce controllata all'arrivo"_s);
    expectWarning(u"Non è stato selezionato un fornitore!"_s);
    trigger(form, u"actSalva"_s);

    tell(u"Intestazione e righe"_s);
    showPage(form, 0);
    fillReceiptHeader(form);
    picture(u"bolla-intestazione"_s);
    showPage(form, 1);
    addArticle(form, article, u"Costo"_s, u"2,00"_s, u"10"_s, u"seleziona-articolo"_s);
    addArticle(form, otherArticle, u"Costo"_s, u"3,5"_s, u"4"_s);
    picture(u"bolla-righe"_s);
    check(u"importo della prima riga"_s, cellText(rows(form), 0, u"Importo"_s), u"€ 20,00"_s);
    check(u"totale imponibile"_s, shown(form, u"lblTotaleImponibile"_s), u"€ 34,00"_s);
    check(u"totale imposta"_s, shown(form, u"lblTotaleImposta"_s), u"€ 7,48"_s);
    trigger(form, u"actSalva"_s);
    check(u"bolle registrate"_s, one(u"SELECT COUNT(*) FROM BOLLE_CARICO"_s), u"1"_s);
    check(u"totale registrato"_s, decimal(u"SELECT TOTALE_DOCUMENTO FROM BOLLE_CARICO"_s), u"41,48"_s);
    checkStock(u"10,00"_s, u"20,00"_s);
}

void Warehouse::secondReceipt()
{
    tell(u"Seconda bolla di carico: 10 pezzi a 4,00"_s);
    QWidget *form = open(u"actInserimentoBolleCarico"_s, receiptForm);
    trigger(form, u"actNuovo"_s);
    check(u"numero proposto"_s, shown(form, u"txtNumero"_s), u"2"_s);
    fillReceiptHeader(form);
    showPage(form, 1);
    addArticle(form, article, u"Costo"_s, u"4"_s, u"10"_s);

    tell(u"Una quantità pari a zero viene rifiutata"_s);
    typeIntoCell(rows(form), 0, u"Q.tà"_s, u"0"_s);
    check(u"quantità rimasta"_s, cellText(rows(form), 0, u"Q.tà"_s), u"10,00"_s);
    trigger(form, u"actSalva"_s);
    checkStock(u"20,00"_s, u"60,00"_s);
    close(form);
}

void Warehouse::fillDeliveryHeader(QWidget *form)
{
    const QString customer = one(u"SELECT FIRST 1 RAGIONESOCIALE FROM CLIENTI WHERE RAGIONESOCIALE CONTAINING '''' "
                                 "AND PARTITAIVA > '' ORDER BY IDCLIENTE"_s);
    expectChoice(customer, u"*"_s, u"seleziona-cliente"_s);
    press(form, u"cmdSelezionaCliente"_s);
    check(u"cliente"_s, shown(form, u"lblRagioneSociale"_s), customer);
    expectChoice(one(u"SELECT FIRST 1 RAGIONESOCIALE FROM VETTORI ORDER BY IDVETTORE"_s), u"*"_s,
                 u"seleziona-vettore"_s);
    press(form, u"cmdSelezionaVettore"_s);
    expectChoice(u"Vettore"_s);
    press(form, u"cmdSelezionaTipoTrasporto"_s);
    expectChoice(u"Vendita"_s, {}, u"seleziona-causale-trasporto"_s);
    press(form, u"cmdSelezionaCausaleTrasporto"_s);
    expectChoice(u"KG"_s, {}, u"seleziona-unita-misura"_s);
    press(form, u"cmdSelezionaPesoUM"_s);
    type(form, u"txtDestRagioneSociale"_s, u"Cantiere di via Roma"_s);
    type(form, u"txtDestIndirizzo"_s, u"Via Roma 12"_s);
    type(form, u"txtDestCap"_s, u"36061"_s);
    type(form, u"txtAspettoBeni"_s, u"Scatole"_s);
    type(form, u"txtColli"_s, u"2"_s);
    type(form, u"txtPeso"_s, u"11,25"_s);
    tick(form, u"chkInizioTrasporto"_s, true);
}

void Warehouse::delivery()
{
    tell(u"D.d.T. di scarico: 5 pezzi al costo medio"_s);
    delivery_ = open(u"actInserimentoDdTScarico"_s, deliveryForm);
    picture(u"ddt-nuovo"_s);
    fillDeliveryHeader(delivery_);
    picture(u"ddt-intestazione"_s);
    showPage(delivery_, 1);
    addArticle(delivery_, article, u"Prezzo"_s, u"7,90"_s, u"5"_s);
    expectDialog([this](QDialog &dialog) {
        press(&dialog, u"actCerca"_s);
        control<QTableView>(&dialog, u"gridRisultati"_s)->selectRow(0);
        visit().picture(&dialog, u"seleziona-servizio"_s);
        press(&dialog, u"cmdOk"_s);
    });
    trigger(delivery_, u"actAggiungiServizio"_s);
    trigger(delivery_, u"actAggiungiTesto"_s);
    typeIntoCell(rows(delivery_), 2, u"Descrizione"_s,
                 u"Consegna al piano, citofonare \"D'Amico\".\nOrario: 8-12, perché il cantiere chiude."_s);
    picture(u"ddt-righe"_s);
    trigger(delivery_, u"actSalva"_s);
    check(u"salvato"_s, !delivery_->findChild<QAction *>(u"actSalva"_s)->isEnabled());
    check(u"righe registrate"_s, one(u"SELECT COUNT(*) FROM DDT_SCARICO_DETT"_s), u"3"_s);
    checkMovement(u"-5,00"_s, u"3,00"_s, u"-15,00"_s);
    checkStock(u"15,00"_s, u"45,00"_s);
}

void Warehouse::changes()
{
    tell(u"Salvare di nuovo non cambia le giacenze"_s);
    type(delivery_, u"txtNote"_s, u"Consegnare entro venerdì"_s);
    showPage(delivery_, 2);
    picture(u"ddt-note"_s);
    trigger(delivery_, u"actSalva"_s);
    checkMovement(u"-5,00"_s, u"3,00"_s, u"-15,00"_s);
    checkStock(u"15,00"_s, u"45,00"_s);

    tell(u"La quantità passa da 5 a 6"_s);
    showPage(delivery_, 1);
    typeIntoCell(rows(delivery_), 0, u"Q.tà"_s, u"6"_s);
    trigger(delivery_, u"actSalva"_s);
    checkMovement(u"-6,00"_s, u"3,00"_s, u"-18,00"_s);
    checkStock(u"14,00"_s, u"42,00"_s);

    tell(u"La finestra alla sua dimensione minima"_s);
    showPage(delivery_, 0);
    pictureAtSmallestSize(delivery_, u"ddt"_s);
}

void Warehouse::deletion()
{
    tell(u"Eliminare il D.d.T.: i movimenti restano"_s);
    expectQuestion(u"Confermare l'eliminazione?"_s, core::Answer::Yes);
    trigger(delivery_, u"actElimina"_s);
    check(u"D.d.T. registrati"_s, one(u"SELECT COUNT(*) FROM DDT_SCARICO"_s), u"0"_s);
    check(u"righe registrate"_s, one(u"SELECT COUNT(*) FROM DDT_SCARICO_DETT"_s), u"0"_s);
    checkStock(u"14,00"_s, u"42,00"_s);

    tell(u"Chiudere con modifiche non salvate"_s);
    type(delivery_, u"txtAspettoBeni"_s, u"Sfuso"_s);
    expectQuestion(u"Salvare le modifiche al record corrente"_s, core::Answer::Cancel);
    close(delivery_);
    check(u"la finestra resta aperta"_s, delivery_->isVisible());
    expectQuestion(u"Salvare le modifiche al record corrente"_s, core::Answer::No);
    close(delivery_);
}

void Warehouse::run()
{
    tell(u"La finestra principale"_s);
    picture(u"finestra-principale"_s);
    firstReceipt();
    secondReceipt();
    delivery();
    changes();
    tourPrinting(visit(), session(), delivery_);
    tourRegisters(visit(), session());
    deletion();
}

} // namespace

void tourWarehouse(Visit &visit, host::Session &session)
{
    Warehouse(visit, session).run();
}

} // namespace tour

#include "tour/TourInvoices.h"

#include "host/Corvane3Impl.h"
#include "tour/Part.h"

#include <QAction>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

const QString noRights = u"Non si dispone di diritti sufficienti per eseguire questa operazione."_s;

class Invoices : private Part
{
public:
    Invoices(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }

    void enterHeader();
    void enterRows();
    void checkStored();
    void recurring();
    void exportPdf();
    void find();
    void markPaid();
    void refuse();
    void smallestSize();
    void closeBoth();

private:
    QTableView *rows() const { return control<QTableView>(form_, u"gridRigheFattura"_s); }
    QTableView *found() const { return results(list_); }
    QString foundRows() const;
    void choose(const QString &button, const QString &text, const QString &picture = {});
    void addSearched(const QString &action, const QString &code);
    void typeRow(int row, const QString &price, const QString &discount, const QString &quantity);

    QWidget *form_ = nullptr;
    QWidget *list_ = nullptr;
};

QString Invoices::foundRows() const
{
    return QString::number(found()->model()->rowCount());
}

void Invoices::choose(const QString &button, const QString &text, const QString &picture)
{
    expectChoice(text, {}, picture);
    press(form_, button);
}

void Invoices::enterHeader()
{
    tell(u"Fattura accompagnatoria: intestazione"_s);
    form_ = open(u"actInserimentoFattureAccompagnatorie"_s, u"MMGInserimentoFattureAccompagnatorie"_s);
    picture(u"fattura-nuova"_s);
    check(u"numero proposto"_s, shown(form_, u"txtNumero"_s), u"1"_s);
    const QString customer = one(u"SELECT FIRST 1 RAGIONESOCIALE FROM CLIENTI WHERE PARTITAIVA > '' AND "
                                 "RAGIONESOCIALE STARTING WITH 'A' ORDER BY RAGIONESOCIALE"_s);
    choose(u"cmdSelezionaCliente"_s, customer);
    choose(u"cmdSelezionaTipoTrasporto"_s, u"Mittente"_s);
    choose(u"cmdSelezionaCausaleTrasporto"_s, u"Vendita"_s);
    choose(u"cmdSelezionaTipoPagamento"_s, u"Rimessa diretta"_s, u"seleziona-tipo-pagamento"_s);
    choose(u"cmdSelezionaVettore"_s, one(u"SELECT FIRST 1 RAGIONESOCIALE FROM VETTORI ORDER BY RAGIONESOCIALE"_s));
    type(form_, u"txtAspettoBeni"_s, u"Scatole"_s);
    picture(u"fattura-intestazione"_s);
    expectInformation(u"Cliente: "_s + customer);
    trigger(form_, u"actVisualizzaContattiCliente"_s);
}

void Invoices::addSearched(const QString &action, const QString &code)
{
    expectSearch(code, code);
    trigger(form_, action);
}

void Invoices::typeRow(int row, const QString &price, const QString &discount, const QString &quantity)
{
    typeIntoCell(rows(), row, u"Prezzo"_s, price);
    typeIntoCell(rows(), row, u"Sc."_s, discount);
    typeIntoCell(rows(), row, u"Q.tà"_s, quantity);
}

void Invoices::enterRows()
{
    tell(u"Righe di ogni tipo, con sconti e due aliquote"_s);
    showPage(form_, 1);
    addSearched(u"actAggiungiArticolo"_s, u"TRA-0018"_s);
    typeRow(0, u"10"_s, u"10"_s, u"3"_s);
    addSearched(u"actAggiungiArticolo"_s, u"SEM-0500"_s);
    typeRow(1, u"5"_s, u"0"_s, u"2"_s);
    addSearched(u"actAggiungiServizio"_s, u"CONS-03"_s);
    typeRow(2, u"25"_s, u"20"_s, u"1"_s);
    trigger(form_, u"actAggiungiTesto"_s);
    typeIntoCell(rows(), 3, u"Descrizione"_s, u"Rif. Vs. ordine n. 7/A del cantiere D'Amico"_s);
    trigger(form_, u"actAggiungiNonImponibile"_s);
    typeIntoCell(rows(), 4, u"Descrizione"_s, u"Spese anticipate in nome e per conto"_s);
    typeIntoCell(rows(), 4, u"Prezzo"_s, u"4,50"_s);
    typeIntoCell(rows(), 2, u"Sc."_s, u"101"_s);
    check(u"uno sconto del 101 % viene rifiutato"_s, cellText(rows(), 2, u"Sc."_s), u"20,00"_s);
    check(u"importo scontato"_s, cellText(rows(), 0, u"Importo"_s), u"€ 27,00"_s);
    check(u"totale imponibile"_s, shown(form_, u"lblTotaleImponibile"_s), u"€ 57,00"_s);
    check(u"totale imposta"_s, shown(form_, u"lblTotaleImposta"_s), u"€ 11,34"_s);
    check(u"totale documento"_s, shown(form_, u"lblTotaleDocumento"_s), u"€ 72,84"_s);
    picture(u"fattura-righe"_s);
}

void Invoices::checkStored()
{
    trigger(form_, u"actSalva"_s);
    check(u"salvata"_s, !form_->findChild<QAction *>(u"actSalva"_s)->isEnabled());
    check(u"totali registrati"_s, one(u"SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_ACC"_s),
          u"57 11.34 72.84"_s);
    check(u"righe e aliquote registrate"_s,
          one(u"SELECT COUNT(*), COUNT(DISTINCT IVA_CODICE), COUNT(IVA_CODICE) FROM FATT_ACC_DETT"_s), u"5 2 3"_s);
    check(u"movimenti, al costo medio"_s,
          one(u"SELECT MIN(CODICE), COUNT(*), SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA WHERE "
              "RIF_DOC_TIPO = 'Fattura accompagnatoria'"_s),
          u"SEM-0500 2 -5 -9"_s);
}

void Invoices::recurring()
{
    tell(u"Promemoria e note"_s);
    showPage(form_, 2);
    tick(form_, u"chkFattureCicliche"_s, true);
    picture(u"fattura-ciclica"_s);
    expectChoice(u"Reclami"_s, {}, u"seleziona-nota"_s);
    trigger(form_, u"actInserisciNotaDocumento"_s);
    showPage(form_, 3);
    picture(u"fattura-note"_s);
    trigger(form_, u"actSalva"_s);
    check(u"promemoria registrato"_s, one(u"SELECT FC_ABILITATO, FC_GENERA_OGNI, FC_GENERA_OGNI_UM FROM FATT_ACC"_s),
          u"True 1 Giorno"_s);
}

void Invoices::exportPdf()
{
    tell(u"La fattura in PDF"_s);
    const QString path = visit().file(u"fattura-salvata"_s);
    const SaveAnswer answer(path);
    trigger(form_, u"actSalvaPDF"_s);
    check(u"scritto \"fattura-salvata.pdf\""_s, QFileInfo(path + u".pdf"_s).size() > 0);
}

void Invoices::find()
{
    tell(u"Trovare la fattura dalla descrizione di una riga"_s);
    list_ = open(u"actRicercaFattureAccompagnatorie"_s, u"MMGRicercaFattureAccompagnatorie"_s);
    type(list_, u"txtRagioneSociale"_s, u"d'amico"_s);
    trigger(list_, u"actCerca"_s);
    check(u"trovate per ragione sociale"_s, foundRows(), u"0"_s);
    type(list_, u"txtRagioneSociale"_s, {});
    type(list_, u"txtDescrizioneRiga"_s, u"d'amico"_s);
    trigger(list_, u"actCerca"_s);
    check(u"trovate per descrizione"_s, foundRows(), u"1"_s);
    check(u"totale nell'elenco"_s, cellText(found(), 0, u"Totale"_s), u"€ 72,84"_s);
    check(u"pagata"_s, cellText(found(), 0, u"Pagato"_s), u"No"_s);
    found()->selectRow(0);
    picture(u"fatture-elenco"_s);
}

void Invoices::markPaid()
{
    tell(u"Segnarla come pagata"_s);
    trigger(list_, u"actModifica"_s);
    tick(form_, u"chkPagato"_s, true);
    trigger(form_, u"actSalva"_s);
    trigger(list_, u"actCerca"_s);
    check(u"pagata"_s, cellText(found(), 0, u"Pagato"_s), u"Sì"_s);
    check(u"restano due movimenti"_s,
          one(u"SELECT COUNT(*), SUM(VALORE_IMPORTO) FROM MOVI_MAGA WHERE RIF_DOC_TIPO = "
              "'Fattura accompagnatoria'"_s),
          u"2 -9"_s);
}

void Invoices::refuse()
{
    tell(u"Chi non ha i diritti non crea, non salva e non elimina fatture"_s);
    const QString user = GetKxCurrentUserName();
    const auto restore = qScopeGuard([user] { SetKxCurrentUserName(user); });
    SetKxCurrentUserName(u"MAGAZZINIERE"_s);
    found()->selectRow(0);
    for (const QString &command : {u"actNuovo"_s, u"actElimina"_s}) {
        expectWarning(noRights);
        trigger(list_, command);
    }
    tick(form_, u"chkPagato"_s, false);
    expectWarning(noRights);
    trigger(form_, u"actSalva"_s);
    check(u"fattura registrata"_s, one(u"SELECT COUNT(*), MAX(PAGATO) FROM FATT_ACC"_s), u"1 True"_s);
}

void Invoices::smallestSize()
{
    tell(u"La fattura alla sua dimensione minima"_s);
    for (int page = 0; page < 4; ++page) {
        showPage(form_, page);
        visit().pictureAtSmallestSize(form_, u"fattura"_s, u"-%1"_s.arg(page + 1));
    }
}

void Invoices::closeBoth()
{
    expectQuestion(u"Salvare le modifiche al record corrente"_s, core::Answer::No);
    close(form_);
    close(list_);
}

} // namespace

void tourInvoices(Visit &visit, host::Session &session)
{
    Invoices invoices(visit, session);
    invoices.enterHeader();
    invoices.enterRows();
    invoices.checkStored();
    invoices.recurring();
    invoices.exportPdf();
    invoices.find();
    invoices.markPaid();
    invoices.refuse();
    invoices.smallestSize();
    invoices.closeBoth();
}

} // namespace tour

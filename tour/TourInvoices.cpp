#include "tour/TourInvoices.h"

#include "host/Application.h"
#include "host/Corvane3Impl.h"
#include "host/ui/MainWindow.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "tour/TourDriver.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTabWidget>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString noRights = u"Non si dispone di diritti sufficienti per eseguire questa operazione."_s;

class Invoices
{
public:
    Invoices(TourDriver &driver, Session &session, QObject *module)
        : driver_(driver)
        , session_(session)
        , module_(module)
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
    void close();

private:
    QWidget *open(const QString &action, const QString &form);
    QTableView *rows() { return driver_.control<QTableView>(form_, u"gridRigheFattura"_s); }
    QTableView *found() { return driver_.control<QTableView>(list_, u"GridRisultati"_s); }
    void choose(const QString &button, const QString &text, const QString &picture = {});
    void addSearched(const QString &action, const QString &code);
    void typeRow(int row, const QString &price, const QString &discount, const QString &quantity);
    void showPage(int page) { driver_.control<QTabWidget>(form_, u"pages"_s)->setCurrentIndex(page); }
    QString label(const QString &name) { return driver_.control<QLabel>(form_, name)->text(); }
    QString one(const QString &sql);

    TourDriver &driver_;
    Session &session_;
    QObject *module_;
    QWidget *form_ = nullptr;
    QWidget *list_ = nullptr;
};

// The values of a query's first row, separated by blanks.
QString Invoices::one(const QString &sql)
{
    const data::Rows rows = session_.connection().select(sql);
    QStringList texts;
    if (!rows.isEmpty()) {
        for (const QVariant &value : rows.values(0))
            texts.append(value.toString());
    }
    return texts.join(u' ');
}

QWidget *Invoices::open(const QString &action, const QString &form)
{
    driver_.trigger(module_, action);
    return driver_.control<QWidget>(&session_.window(), form);
}

void Invoices::choose(const QString &button, const QString &text, const QString &picture)
{
    driver_.expectDialog([this, text, picture](QDialog &dialog) {
        if (auto *search = dialog.findChild<QAbstractButton *>(u"actCerca"_s))
            search->click();
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), text);
        if (!picture.isEmpty())
            driver_.picture(&dialog, picture);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.press(form_, button);
}

void Invoices::enterHeader()
{
    driver_.tell(u"Fattura accompagnatoria: intestazione"_s);
    form_ = open(u"actInserimentoFattureAccompagnatorie"_s, u"MMGInserimentoFattureAccompagnatorie"_s);
    driver_.picture(&session_.window(), u"fattura-nuova"_s);
    driver_.check(u"numero proposto"_s, driver_.control<QWidget>(form_, u"txtNumero"_s)->property("text").toString(),
                  u"1"_s);
    const QString customer = one(u"SELECT FIRST 1 RAGIONESOCIALE FROM CLIENTI WHERE PARTITAIVA > '' AND "
                                 "RAGIONESOCIALE STARTING WITH 'A' ORDER BY RAGIONESOCIALE"_s);
    choose(u"cmdSelezionaCliente"_s, customer);
    choose(u"cmdSelezionaTipoTrasporto"_s, u"Mittente"_s);
    choose(u"cmdSelezionaCausaleTrasporto"_s, u"Vendita"_s);
    choose(u"cmdSelezionaTipoPagamento"_s, u"Rimessa diretta"_s, u"seleziona-tipo-pagamento"_s);
    choose(u"cmdSelezionaVettore"_s, one(u"SELECT FIRST 1 RAGIONESOCIALE FROM VETTORI ORDER BY RAGIONESOCIALE"_s));
    driver_.control<QLineEdit>(form_, u"txtAspettoBeni"_s)->setText(u"Scatole"_s);
    driver_.picture(&session_.window(), u"fattura-intestazione"_s);
    driver_.expectMessage(u"Informazioni"_s, u"Cliente: "_s + customer, core::Answer::Ok);
    driver_.trigger(form_, u"actVisualizzaContattiCliente"_s);
}

void Invoices::addSearched(const QString &action, const QString &code)
{
    driver_.expectDialog([this, code](QDialog &dialog) {
        driver_.control<QLineEdit>(&dialog, u"txtCodice"_s)->setText(code);
        driver_.press(&dialog, u"actCerca"_s);
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), code);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.trigger(form_, action);
}

void Invoices::typeRow(int row, const QString &price, const QString &discount, const QString &quantity)
{
    driver_.typeIntoCell(rows(), row, u"Prezzo"_s, price);
    driver_.typeIntoCell(rows(), row, u"Sc."_s, discount);
    driver_.typeIntoCell(rows(), row, u"Q.tà"_s, quantity);
}

void Invoices::enterRows()
{
    driver_.tell(u"Righe di ogni tipo, con sconti e due aliquote"_s);
    showPage(1);
    addSearched(u"actAggiungiArticolo"_s, u"TRA-0018"_s);
    typeRow(0, u"10"_s, u"10"_s, u"3"_s);
    addSearched(u"actAggiungiArticolo"_s, u"SEM-0500"_s);
    typeRow(1, u"5"_s, u"0"_s, u"2"_s);
    addSearched(u"actAggiungiServizio"_s, u"CONS-03"_s);
    typeRow(2, u"25"_s, u"20"_s, u"1"_s);
    driver_.trigger(form_, u"actAggiungiTesto"_s);
    driver_.typeIntoCell(rows(), 3, u"Descrizione"_s, u"Rif. Vs. ordine n. 7/A del cantiere D'Amico"_s);
    driver_.trigger(form_, u"actAggiungiNonImponibile"_s);
    driver_.typeIntoCell(rows(), 4, u"Descrizione"_s, u"Spese anticipate in nome e per conto"_s);
    driver_.typeIntoCell(rows(), 4, u"Prezzo"_s, u"4,50"_s);
    driver_.typeIntoCell(rows(), 2, u"Sc."_s, u"101"_s);
    driver_.check(u"uno sconto del 101 % viene rifiutato"_s, driver_.cellText(rows(), 2, u"Sc."_s), u"20,00"_s);
    driver_.check(u"importo scontato"_s, driver_.cellText(rows(), 0, u"Importo"_s), u"€ 27,00"_s);
    driver_.check(u"totale imponibile"_s, label(u"lblTotaleImponibile"_s), u"€ 57,00"_s);
    driver_.check(u"totale imposta"_s, label(u"lblTotaleImposta"_s), u"€ 11,34"_s);
    driver_.check(u"totale documento"_s, label(u"lblTotaleDocumento"_s), u"€ 72,84"_s);
    driver_.picture(&session_.window(), u"fattura-righe"_s);
}

void Invoices::checkStored()
{
    driver_.trigger(form_, u"actSalva"_s);
    driver_.check(u"salvata"_s, !form_->findChild<QAction *>(u"actSalva"_s)->isEnabled());
    driver_.check(u"totali registrati"_s,
                  one(u"SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_ACC"_s),
                  u"57 11.34 72.84"_s);
    driver_.check(u"righe e aliquote registrate"_s,
                  one(u"SELECT COUNT(*), COUNT(DISTINCT IVA_CODICE), COUNT(IVA_CODICE) FROM FATT_ACC_DETT"_s),
                  u"5 2 3"_s);
    driver_.check(u"movimenti, al costo medio"_s,
                  one(u"SELECT MIN(CODICE), COUNT(*), SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA WHERE "
                      "RIF_DOC_TIPO = 'Fattura accompagnatoria'"_s),
                  u"SEM-0500 2 -5 -9"_s);
}

void Invoices::recurring()
{
    driver_.tell(u"Promemoria e note"_s);
    showPage(2);
    driver_.control<QCheckBox>(form_, u"chkFattureCicliche"_s)->setChecked(true);
    driver_.picture(&session_.window(), u"fattura-ciclica"_s);
    driver_.expectDialog([this](QDialog &dialog) {
        if (auto *search = dialog.findChild<QAbstractButton *>(u"actCerca"_s))
            search->click();
        driver_.selectRow(driver_.control<QTableView>(&dialog, u"gridRisultati"_s), u"Reclami"_s);
        driver_.picture(&dialog, u"seleziona-nota"_s);
        driver_.press(&dialog, u"cmdOk"_s);
    });
    driver_.trigger(form_, u"actInserisciNotaDocumento"_s);
    showPage(3);
    driver_.picture(&session_.window(), u"fattura-note"_s);
    driver_.trigger(form_, u"actSalva"_s);
    driver_.check(u"promemoria registrato"_s,
                  one(u"SELECT FC_ABILITATO, FC_GENERA_OGNI, FC_GENERA_OGNI_UM FROM FATT_ACC"_s), u"True 1 Giorno"_s);
}

void Invoices::exportPdf()
{
    driver_.tell(u"La fattura in PDF"_s);
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    QString path = QDir(driver_.folder()).absoluteFilePath(u"fattura-salvata"_s);
    ui::setSaveFileChooser([path](QWidget *, const ui::SaveFileRequest &) {
        QFile::remove(path + u".pdf"_s);
        return path;
    });
    driver_.trigger(form_, u"actSalvaPDF"_s);
    driver_.check(u"scritto \"fattura-salvata.pdf\""_s, QFileInfo(path + u".pdf"_s).size() > 0);
}

void Invoices::find()
{
    driver_.tell(u"Trovare la fattura dalla descrizione di una riga"_s);
    list_ = open(u"actRicercaFattureAccompagnatorie"_s, u"MMGRicercaFattureAccompagnatorie"_s);
    auto *name = driver_.control<QLineEdit>(list_, u"txtRagioneSociale"_s);
    name->setText(u"d'amico"_s);
    driver_.trigger(list_, u"actCerca"_s);
    driver_.check(u"trovate per ragione sociale"_s, QString::number(found()->model()->rowCount()), u"0"_s);
    name->clear();
    driver_.control<QLineEdit>(list_, u"txtDescrizioneRiga"_s)->setText(u"d'amico"_s);
    driver_.trigger(list_, u"actCerca"_s);
    driver_.check(u"trovate per descrizione"_s, QString::number(found()->model()->rowCount()), u"1"_s);
    driver_.check(u"totale nell'elenco"_s, driver_.cellText(found(), 0, u"Totale"_s), u"€ 72,84"_s);
    driver_.check(u"pagata"_s, driver_.cellText(found(), 0, u"Pagato"_s), u"No"_s);
    found()->selectRow(0);
    driver_.picture(&session_.window(), u"fatture-elenco"_s);
}

void Invoices::markPaid()
{
    driver_.tell(u"Segnarla come pagata"_s);
    driver_.trigger(list_, u"actModifica"_s);
    driver_.control<QCheckBox>(form_, u"chkPagato"_s)->setChecked(true);
    driver_.trigger(form_, u"actSalva"_s);
    driver_.trigger(list_, u"actCerca"_s);
    driver_.check(u"pagata"_s, driver_.cellText(found(), 0, u"Pagato"_s), u"Sì"_s);
    driver_.check(u"restano due movimenti"_s,
                  one(u"SELECT COUNT(*), SUM(VALORE_IMPORTO) FROM MOVI_MAGA WHERE RIF_DOC_TIPO = "
                      "'Fattura accompagnatoria'"_s),
                  u"2 -9"_s);
}

void Invoices::refuse()
{
    driver_.tell(u"Chi non ha i diritti non crea, non salva e non elimina fatture"_s);
    const QString user = GetKxCurrentUserName();
    const auto restore = qScopeGuard([user] { SetKxCurrentUserName(user); });
    SetKxCurrentUserName(u"MAGAZZINIERE"_s);
    found()->selectRow(0);
    for (const QString &command : {u"actNuovo"_s, u"actElimina"_s}) {
        driver_.expectMessage(u"Attenzione"_s, noRights, core::Answer::Ok);
        driver_.trigger(list_, command);
    }
    driver_.control<QCheckBox>(form_, u"chkPagato"_s)->setChecked(false);
    driver_.expectMessage(u"Attenzione"_s, noRights, core::Answer::Ok);
    driver_.trigger(form_, u"actSalva"_s);
    driver_.check(u"fattura registrata"_s, one(u"SELECT COUNT(*), MAX(PAGATO) FROM FATT_ACC"_s), u"1 True"_s);
}

void Invoices::smallestSize()
{
    driver_.tell(u"La fattura alla sua dimensione minima"_s);
    QWidget *frame = form_->parentWidget();
    const QSize before = frame->size();
    frame->resize(frame->minimumSizeHint().expandedTo(form_->minimumSize()));
    for (int page = 0; page < 4; ++page) {
        showPage(page);
        driver_.picture(form_, u"fattura-dimensione-minima-%1"_s.arg(page + 1));
    }
    frame->resize(before);
}

void Invoices::close()
{
    driver_.expectMessage(u"Conferma"_s, u"Salvare le modifiche al record corrente"_s, core::Answer::No);
    driver_.trigger(form_, u"actChiudi"_s);
    driver_.trigger(list_, u"actChiudi"_s);
}

} // namespace

void tourInvoices(TourDriver &driver, Session &session, QObject *module)
{
    Invoices invoices(driver, session, module);
    invoices.enterHeader();
    invoices.enterRows();
    invoices.checkStored();
    invoices.recurring();
    invoices.exportPdf();
    invoices.find();
    invoices.markPaid();
    invoices.refuse();
    invoices.smallestSize();
    invoices.close();
}

} // namespace host

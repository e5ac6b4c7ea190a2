#include "tour/TourPrinting.h"

#include "platform/data/Connection.h"
#include "tour/Part.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr int patience = 60'000; // milliseconds for turning a document into pictures

class Printing : private Part
{
public:
    Printing(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }

    void printNote(const QWidget *note);
    void printInvoice();
    void printInventory(const QString &action, const QString &form, const QString &name);
    void printReorderList();

private:
    void savePdf(const QObject *owner, const QString &name);
    void savePreview(const QString &name);
};

// Saves as PDF under a name without extension, and makes pictures of the pages.
void Printing::savePdf(const QObject *owner, const QString &name)
{
    const QString path = visit().file(name);
    const SaveAnswer answer(path);
    trigger(owner, u"actSalvaPDF"_s);
    check(u"scritto \"%1.pdf\""_s.arg(name), QFileInfo(path + u".pdf"_s).size() > 0);
    const QString tool = QStandardPaths::findExecutable(u"pdftoppm"_s);
    if (tool.isEmpty())
        return;
    QProcess process;
    process.start(tool, {u"-r"_s, u"80"_s, u"-png"_s, path + u".pdf"_s, path});
    check(u"pagine di \"%1\" come immagini"_s.arg(name), process.waitForFinished(patience) && process.exitCode() == 0);
}

void Printing::savePreview(const QString &name)
{
    const QWidget *preview = opened(u"frmAnteprima"_s);
    picture(u"anteprima-"_s + name);
    savePdf(preview, u"stampa-"_s + name);
    close(preview);
}

void Printing::printNote(const QWidget *note)
{
    tell(u"Il D.d.T. in anteprima e in PDF"_s);
    trigger(note, u"actStampa"_s);
    savePreview(u"ddt"_s);
    savePdf(note, u"ddt-salvato"_s);
}

// The invoice is put into the database and taken out again, so that the rest of the tour finds its own documents only.
void Printing::printInvoice()
{
    tell(u"Una fattura accompagnatoria dalla lista, in PDF"_s);
    const data::Rows key = database().run(
        u"INSERT INTO FATT_ACC(IDFATT_ACC, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, "
        u"CLI_CITTA, "
        "CLI_CAP, CLI_PROVINCIA, CLI_NAZIONE, CLI_CODICEFISCALE, CLI_PARTITAIVA, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, "
        "SCADENZA_PAGAMENTO, PAGATO, IDTIPO_TRASPORTO, TIPO_TRASPORTO, ASPETTO_BENI, IDCAUSALE_TRASPORTO, "
        "CAUSALE_TRASPORTO, COLLI, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) "
        "SELECT FIRST 1 0, 1, CURRENT_DATE, EXTRACT(YEAR FROM CURRENT_DATE), CODICE, RAGIONESOCIALE, INDIRIZZO, CITTA, "
        "CAP, "
        "PROVINCIA, NAZIONE, CODICEFISCALE, PARTITAIVA, 1, 'Rimessa diretta', CURRENT_DATE + 30, 'False', 1, "
        "'Mittente', "
        "'Scatole', 1, 'Vendita', 60, 2430, 534.6, 2964.6, 'False' FROM CLIENTI ORDER BY IDCLIENTE RETURNING IDFATT_ACC"_s);
    database().run(
        u"INSERT INTO FATT_ACC_DETT(IDFATT_ACC_DETT, IDFATT_ACC, CODICE, DESCRIZIONE, PREZZO, SCONTO, QUANTITA, "
        u"IMPORTO, "
        "IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, UM, TIPO_RIGA) SELECT FIRST 60 0, "
        "CAST(? AS INTEGER), CODICE, DESCRIZIONE, 45, 10, 1, 40.5, 1, '22', 'Aliquota ordinaria', 22, 'PZ', 'Articolo' "
        "FROM ANA_MAGA ORDER BY CODICE"_s,
        {key.values(0).constFirst()});

    const QWidget *list = open(u"actRicercaFattureAccompagnatorie"_s, u"MMGRicercaFattureAccompagnatorie"_s);
    trigger(list, u"actCerca"_s);
    selectRow(results(list), u"€ 2.964,60"_s);
    savePdf(list, u"stampa-fattura"_s);
    close(list);
    database().execute(u"DELETE FROM FATT_ACC_DETT"_s);
    database().execute(u"DELETE FROM FATT_ACC"_s);
}

void Printing::printInventory(const QString &action, const QString &form, const QString &name)
{
    const QWidget *parameters = open(action, form);
    picture(u"parametri-"_s + name);
    trigger(parameters, u"actStampa"_s);
    savePreview(name);
}

void Printing::printReorderList()
{
    expectDialog([this](QDialog &dialog) {
        visit().picture(&dialog, u"parametri-sottoscorta"_s);
        press(&dialog, u"cmdStampa"_s);
    });
    trigger(module(), u"actStampaSottoscortaRiordino"_s);
    savePreview(u"sottoscorta"_s);
}

} // namespace

void tourPrinting(Visit &visit, host::Session &session, const QWidget *note)
{
    Printing printing(visit, session);
    printing.printNote(note);
    printing.printInvoice();
    visit.tell(u"Le stampe di magazzino"_s);
    printing.printInventory(u"actStampaInventario"_s, u"MMGStampaInventario"_s, u"inventario"_s);
    printing.printInventory(u"actStampaInventarioValorizzato"_s, u"MMGStampaInventarioValorizzato"_s,
                            u"inventario-valorizzato"_s);
    printing.printReorderList();
}

} // namespace tour

#include "tour/TourPrinting.h"

#include "host/Application.h"
#include "host/ui/MainWindow.h"
#include "host/ui/PreviewWindow.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "tour/TourDriver.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int patience = 60'000; // milliseconds for turning a document into pictures

class Printing
{
public:
    Printing(TourDriver &driver, Session &session, QObject *module)
        : driver_(driver)
        , window_(session.window())
        , connection_(session.connection())
        , module_(module)
    {
    }

    void printNote(QWidget *note);
    void printInvoice();
    void printInventory(const QString &action, const QString &form, const QString &name);
    void printReorderList();

private:
    void answerWith(const QString &name);
    void checkFile(const QString &name);
    void savePreview(const QString &name);

    TourDriver &driver_;
    MainWindow &window_;
    data::Connection &connection_;
    QObject *module_;
};

// The save dialog's answer from now on; it adds no extension.
void Printing::answerWith(const QString &name)
{
    ui::setSaveFileChooser(
        [path = QDir(driver_.folder()).absoluteFilePath(name)](QWidget *, const ui::SaveFileRequest &) {
            QFile::remove(path + u".pdf"_s);
            return path;
        });
}

void Printing::checkFile(const QString &name)
{
    const QString path = QDir(driver_.folder()).absoluteFilePath(name);
    driver_.check(u"scritto \"%1.pdf\""_s.arg(name), QFileInfo(path + u".pdf"_s).size() > 0);
    const QString tool = QStandardPaths::findExecutable(u"pdftoppm"_s);
    if (tool.isEmpty())
        return;
    QProcess process;
    process.start(tool, {u"-r"_s, u"80"_s, u"-png"_s, path + u".pdf"_s, path});
    driver_.check(u"pagine di \"%1\" come immagini"_s.arg(name),
                  process.waitForFinished(patience) && process.exitCode() == 0);
}

void Printing::savePreview(const QString &name)
{
    auto *preview = driver_.control<PreviewWindow>(&window_, u"frmAnteprima"_s);
    driver_.picture(&window_, u"anteprima-"_s + name);
    answerWith(u"stampa-"_s + name);
    driver_.trigger(preview, u"actSalvaPDF"_s);
    driver_.trigger(preview, u"actChiudi"_s);
    checkFile(u"stampa-"_s + name);
}

void Printing::printNote(QWidget *note)
{
    driver_.tell(u"Il D.d.T. in anteprima e in PDF"_s);
    driver_.trigger(note, u"actStampa"_s);
    savePreview(u"ddt"_s);
    answerWith(u"ddt-salvato"_s);
    driver_.trigger(note, u"actSalvaPDF"_s);
    checkFile(u"ddt-salvato"_s);
}

// The invoice is put into the database and taken out again, so that the rest of the tour finds its own documents only.
void Printing::printInvoice()
{
    driver_.tell(u"Una fattura accompagnatoria dalla lista, in PDF"_s);
    const data::Rows key = connection_.run(
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
    connection_.run(
        u"INSERT INTO FATT_ACC_DETT(IDFATT_ACC_DETT, IDFATT_ACC, CODICE, DESCRIZIONE, PREZZO, SCONTO, QUANTITA, "
        u"IMPORTO, "
        "IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, UM, TIPO_RIGA) SELECT FIRST 60 0, "
        "CAST(? AS INTEGER), CODICE, DESCRIZIONE, 45, 10, 1, 40.5, 1, '22', 'Aliquota ordinaria', 22, 'PZ', 'Articolo' "
        "FROM ANA_MAGA ORDER BY CODICE"_s,
        {key.values(0).constFirst()});

    driver_.trigger(module_, u"actRicercaFattureAccompagnatorie"_s);
    auto *list = driver_.control<QWidget>(&window_, u"MMGRicercaFattureAccompagnatorie"_s);
    driver_.trigger(list, u"actCerca"_s);
    driver_.selectRow(driver_.control<QTableView>(list, u"GridRisultati"_s), u"€ 2.964,60"_s);
    answerWith(u"stampa-fattura"_s);
    driver_.trigger(list, u"actSalvaPDF"_s);
    driver_.trigger(list, u"actChiudi"_s);
    checkFile(u"stampa-fattura"_s);
    connection_.execute(u"DELETE FROM FATT_ACC_DETT"_s);
    connection_.execute(u"DELETE FROM FATT_ACC"_s);
}

void Printing::printInventory(const QString &action, const QString &form, const QString &name)
{
    driver_.trigger(module_, action);
    auto *parameters = driver_.control<QWidget>(&window_, form);
    driver_.picture(&window_, u"parametri-"_s + name);
    driver_.trigger(parameters, u"actStampa"_s);
    savePreview(name);
}

void Printing::printReorderList()
{
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.picture(&dialog, u"parametri-sottoscorta"_s);
        driver_.press(&dialog, u"cmdStampa"_s);
    });
    driver_.trigger(module_, u"actStampaSottoscortaRiordino"_s);
    savePreview(u"sottoscorta"_s);
}

} // namespace

void tourPrinting(TourDriver &driver, Session &session, QObject *module, QWidget *note)
{
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    Printing printing(driver, session, module);
    printing.printNote(note);
    printing.printInvoice();
    driver.tell(u"Le stampe di magazzino"_s);
    printing.printInventory(u"actStampaInventario"_s, u"MMGStampaInventario"_s, u"inventario"_s);
    printing.printInventory(u"actStampaInventarioValorizzato"_s, u"MMGStampaInventarioValorizzato"_s,
                            u"inventario-valorizzato"_s);
    printing.printReorderList();
}

} // namespace host

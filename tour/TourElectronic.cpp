#include "tour/TourElectronic.h"

#include "platform/ui/Dialogs.h"
#include "tour/Part.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

class Electronic : private Part
{
public:
    Electronic(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }

    void enterExempt();
    void checkInvoices();
    void writeFiles();
    void showContents();

private:
    QTableView *found() const { return results(window_); }
    void choose(const QWidget *form, const QString &button, const QString &text) const;

    QWidget *window_ = nullptr;
};

void Electronic::choose(const QWidget *form, const QString &button, const QString &text) const
{
    expectChoice(text);
    press(form, button);
}

void Electronic::enterExempt()
{
    tell(u"Una fattura esente"_s);
    QWidget *form = open(u"actInserimentoFattureAccompagnatorie"_s, u"MMGInserimentoFattureAccompagnatorie"_s);
    choose(form, u"cmdSelezionaCliente"_s, u"Agostini Lucia"_s);
    choose(form, u"cmdSelezionaTipoTrasporto"_s, u"Mittente"_s);
    choose(form, u"cmdSelezionaCausaleTrasporto"_s, u"Vendita"_s);
    choose(form, u"cmdSelezionaTipoPagamento"_s, u"Rimessa diretta"_s);
    tick(form, u"chkIVAEsente"_s, true);
    showPage(form, 1);
    expectSearch(u"COR-01"_s, u"COR-01"_s);
    trigger(form, u"actAggiungiServizio"_s);
    typeIntoCell(control<QTableView>(form, u"gridRigheFattura"_s), 0, u"Q.tà"_s, u"2"_s);
    trigger(form, u"actSalva"_s);
    check(u"totali registrati"_s,
          one(u"SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_ACC WHERE IVA_ESENTE = 'True'"_s),
          u"0 0 90"_s);
    close(form);
}

void Electronic::checkInvoices()
{
    tell(u"Le fatture elettroniche: che cosa manca"_s);
    window_ = open(u"actFattureElettroniche"_s, u"MMGFattureElettroniche"_s);
    check(u"fatture elencate"_s, QString::number(found()->model()->rowCount()), u"2"_s);
    found()->selectAll();
    trigger(window_, u"actControlla"_s);
    for (int row = 0; row < found()->model()->rowCount(); ++row)
        check(u"stato dopo il controllo"_s, cellText(found(), row, u"Stato"_s), u"da fare"_s);
    picture(u"fatture-elettroniche"_s);
}

void Electronic::writeFiles()
{
    tell(u"I file, nella cartella del giro"_s);
    QDir folder(visit().folder());
    const QStringList files = {u"IT*_*.xml"_s};
    for (const QString &former : folder.entryList(files))
        folder.remove(former);
    const auto restore = qScopeGuard([] { ui::setFolderChooser({}); });
    ui::setFolderChooser([&folder](QWidget *, const QString &) { return folder.path(); });
    found()->selectAll();
    expectInformation(u"2 file scritti."_s);
    trigger(window_, u"actScriviFile"_s);
    picture(u"fatture-elettroniche-scritte"_s);
    QByteArray written;
    for (const QString &name : folder.entryList(files)) {
        QFile file(folder.filePath(name));
        check(u"si legge \"%1\""_s.arg(name), file.open(QIODevice::ReadOnly));
        written += file.readAll();
    }
    for (const char *part :
         {"<ImportoTotaleDocumento>72.84<", "<AliquotaIVA>22.00<", "<AliquotaIVA>10.00<", "<DatiAnagraficiVettore>",
          "<ImportoTotaleDocumento>90.00<", "<Natura>N4<", "<BolloVirtuale>SI<", "<Cognome>Agostini<"})
        check(u"nei file: "_s + QString::fromLatin1(part), written.contains(part));
}

void Electronic::showContents()
{
    tell(u"Un file come pagina da leggere"_s);
    found()->selectRow(0);
    trigger(window_, u"actStampa"_s);
    picture(u"fattura-elettronica-leggibile"_s);
    close(opened(u"frmAnteprima"_s));
    close(window_);
}

} // namespace

void tourElectronic(Visit &visit, host::Session &session)
{
    Electronic electronic(visit, session);
    electronic.enterExempt();
    electronic.checkInvoices();
    electronic.writeFiles();
    electronic.showContents();
}

} // namespace tour

#include "magazzino/ui/InserimentoAnagrafica.h"

#include "host/Corvane3Impl.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/data/Connection.h"

#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

TMMGInserimentoAnagrafica::TMMGInserimentoAnagrafica(const AnagraficaSpec &spec, QWidget *owner)
    : TMMGInserimento(spec.form, &Modulo().dataSet(spec.dataSet), owner)
    , spec_(spec)
{
    setOnClose(ui::OnClose::Hide);
    setOpeningSize({760, 500});
    // Codes, postcodes and telephone numbers stay readable.
    setMinimumSize(640, 0);
    mainLayout()->addWidget(pages(), 1);
    generalPage_ = addPage(u" Generale "_s);
    auto *layout = new QVBoxLayout(generalPage_);

    auto *firm = new QGroupBox(u" Anagrafica "_s, generalPage_);
    auto *grid = new QGridLayout(firm);
    code_ = text(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s, 20, false, firm);
    name_ = text(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 100, false, firm);
    place(grid, code_, 0, 0);
    place(grid, name_, 1, 0, 3);
    place(grid, text(u"txtIndirizzo"_s, u"Indirizzo"_s, u"INDIRIZZO"_s, spec.addressLength, false, firm), 2, 0, 3);
    place(grid, text(u"txtCitta"_s, u"Città"_s, u"CITTA"_s, 30, false, firm), 3, 0);
    place(grid, text(u"txtCap"_s, u"CAP"_s, u"CAP"_s, 5, true, firm), 3, 1);
    place(grid, text(u"txtProvincia"_s, u"Prov."_s, u"PROVINCIA"_s, 2, true, firm), 3, 2);
    place(grid, text(u"txtNazione"_s, u"Nazione"_s, u"NAZIONE"_s, 30, false, firm), 4, 0);
    grid->setColumnStretch(1, 1);
    layout->addWidget(firm);

    auto *tax = new QGroupBox(u" Dati fiscali "_s, generalPage_);
    taxGrid_ = new QGridLayout(tax);
    place(taxGrid_, text(u"txtCodiceFiscale"_s, u"Codice fiscale"_s, u"CODICEFISCALE"_s, 16, true, tax), 0, 0);
    place(taxGrid_, text(u"txtPartitaIVA"_s, u"Partita IVA"_s, u"PARTITAIVA"_s, spec.vatNumberLength, true, tax), 0, 1);
    // What the two codes leave goes behind them, not between label and code.
    taxGrid_->setColumnStretch(1, 100);
    taxGrid_->setColumnStretch(3, 100);
    taxGrid_->setColumnStretch(5, 1);
    layout->addWidget(tax);
    setFocusProxy(code_->widget());
}

ui::TextField *TMMGInserimentoAnagrafica::text(const QString &name, const QString &label, const QString &column,
                                               int length, bool upper, QWidget *parent)
{
    return declare(new ui::TextField(
        {.name = name, .label = label, .column = column, .maxLength = length, .upperCase = upper}, parent));
}

void TMMGInserimentoAnagrafica::finish()
{
    auto *contacts = new QGroupBox(u" Contatti "_s, generalPage_);
    auto *grid = new QGridLayout(contacts);
    place(grid, text(u"txtTelefono1"_s, u"Telefono 1"_s, u"TELEFONO1"_s, 20, false, contacts), 0, 0);
    place(grid, text(u"txtTelefono2"_s, u"Telefono 2"_s, u"TELEFONO2"_s, 20, false, contacts), 0, 1);
    place(grid, text(u"txtTelefono3"_s, u"Telefono 3"_s, u"TELEFONO3"_s, 20, false, contacts), 1, 0);
    place(grid, text(u"txtFax"_s, u"Fax"_s, u"FAX"_s, 20, false, contacts), 1, 1);
    place(grid, text(u"txtEmail"_s, u"e-mail"_s, u"EMAIL"_s, 100, false, contacts), 2, 0);
    place(grid, text(u"txtWeb"_s, u"web"_s, u"WEB"_s, 100, false, contacts), 2, 1);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    auto *layout = qobject_cast<QVBoxLayout *>(generalPage_->layout());
    layout->addWidget(contacts);
    layout->addStretch();

    QWidget *notesPage = addPage(u" Note "_s);
    auto *notes =
        declare(new ui::MemoField({.name = u"txtNote"_s, .label = u"Note"_s, .column = u"NOTE"_s}, notesPage));
    auto *notesLayout = new QVBoxLayout(notesPage);
    auto *caption = new QLabel(notes->label(), notesPage);
    caption->setBuddy(notes->widget());
    notesLayout->addWidget(caption);
    notesLayout->addWidget(notes->widget());
    start(ui::standardCommands);
}

void TMMGInserimentoAnagrafica::resetDetails()
{
    code_->setText(GetCustomCodice(connection().lastGeneratorValue(spec_.form.generator) + 1, spec_.codePrefix));
}

#include "magazzino/ui/RiscontroLuogo.h"

#include "host/HostForms.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/data/Connection.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/ControlPath.h"

#include <QApplication>
#include <QTimer>

using namespace Qt::StringLiterals;
using fatturapa::Luogo;
using fatturapa::Riscontro;

namespace {

// The key that the first row of a query gives; -1 without a row or without a key in it.
int chiave(const QString &sql, const QVariantList &valori)
{
    const data::Rows rows = ModuleConnection().run(sql, valori);
    return rows.isEmpty() || rows.values(0).first().isNull() ? -1 : rows.values(0).first().toInt();
}

// The rate of the row; of the whole invoice, the first one without tax.
int aliquotaDi(const Riscontro &riscontro, int fattura)
{
    if (riscontro.riga > 0)
        return chiave(u"SELECT IVA_IDALIQUOTA_IVA FROM FATT_ACC_DETT WHERE IDFATT_ACC = ? ORDER BY IDFATT_ACC_DETT "
                      "ROWS ? TO ?"_s,
                      {fattura, riscontro.riga, riscontro.riga});
    return chiave(u"SELECT FIRST 1 IVA_IDALIQUOTA_IVA FROM FATT_ACC_DETT WHERE IDFATT_ACC = ? AND IVA_ALIQUOTA = 0 "
                  "ORDER BY IDFATT_ACC_DETT"_s,
                  {fattura});
}

void mostra(QWidget *maschera, int id, const QString &campo)
{
    auto *form = qobject_cast<ui::EntryForm *>(maschera);
    if (!form)
        return;
    if (id > 0 && form->IdRecord() != id)
        form->openRecord(id);
    ui::showControl(*form, campo);
}

// Without the record, the list in which it can be looked for.
void mostraRecord(const QString &nome, int id, const QString &campo)
{
    if (id > 0)
        mostra(OpenHostForm(u"actInserimento"_s + nome), id, campo);
    else
        OpenHostForm(u"actRicerca"_s + nome);
}

void mostraFattura(const Riscontro &riscontro, int fattura)
{
    auto *form = qobject_cast<TMMGInserimentoDocumento *>(
        &Modulo().commands().entryForm(fatturaAccompagnatoria().entryAction()));
    mostra(form, fattura, riscontro.campo);
    if (riscontro.riga <= 0)
        return;
    ui::showControl(*form, fatturaAccompagnatoria().captions.rowsGrid);
    const bool senzaAliquota = riscontro.codice == u"00400";
    form->grid().select(riscontro.riga - 1,
                        senzaAliquota ? RowMember(&DocumentRow::codiceIVA) : RowMember(&DocumentRow::descrizione));
}

// The options are a modal dialog: its field is looked for once it stands there.
void mostraOpzione(const QString &opzione)
{
    QTimer::singleShot(0, [opzione] {
        if (QWidget *dialog = QApplication::activeModalWidget())
            ui::showControl(*dialog, opzione);
    });
    OpenHostForm(u"actOpzioni"_s);
}

} // namespace

void apriLuogo(const Riscontro &riscontro, int fattura)
{
    switch (riscontro.luogo) {
    case Luogo::Azienda:
        return mostra(OpenHostForm(u"actAzienda"_s), -1, riscontro.campo);
    case Luogo::Cliente:
        return mostraRecord(u"Clienti"_s,
                            chiave(u"SELECT IDCLIENTE FROM CLIENTI WHERE CODICE = (SELECT CLI_CODICE FROM FATT_ACC "
                                   "WHERE IDFATT_ACC = ?)"_s,
                                   {fattura}),
                            riscontro.campo);
    case Luogo::AliquotaIVA:
        return mostraRecord(u"AliquoteIVA"_s, aliquotaDi(riscontro, fattura), riscontro.campo);
    case Luogo::TipoPagamento:
        return mostraRecord(u"TipiPagamento"_s,
                            chiave(u"SELECT IDTIPO_PAGAMENTO FROM FATT_ACC WHERE IDFATT_ACC = ?"_s, {fattura}),
                            riscontro.campo);
    case Luogo::Vettore:
        return mostra(&Modulo().commands().entryForm(u"actInserimentoVettori"_s),
                      chiave(u"SELECT IDVETTORE FROM VETTORI WHERE CODICE = (SELECT VETT_CODICE FROM FATT_ACC WHERE "
                             "IDFATT_ACC = ?)"_s,
                             {fattura}),
                      riscontro.campo);
    case Luogo::Opzioni:
        return mostraOpzione(riscontro.campo);
    case Luogo::Fattura:
        return mostraFattura(riscontro, fattura);
    }
}

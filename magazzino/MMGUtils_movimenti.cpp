#include "magazzino/MMGUtils_insiemi.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"

using namespace Qt::StringLiterals;

namespace {

void setColumns(data::DataSet &row, const TMoviMaga &movimento)
{
    row.setValue(u"IDMOVI_MAGA"_s, movimento.id);
    row.setValue(u"IDMAGAZZINO"_s, 0);
    row.setValue(u"DATA_MOVIMENTO"_s, movimento.dataMovimento);
    row.setValue(u"CODICE"_s, movimento.codice);
    row.setValue(u"DESCRIZIONE"_s, movimento.descrizione);
    row.setValue(u"IDCATEGORIA_ANA_MAGA"_s, movimento.idCategoria);
    row.setValue(u"TIPO_MOVIMENTO"_s, movimento.tipoMovimento);
    row.setValue(u"PREZZO"_s, movimento.prezzo);
    row.setValue(u"COSTO"_s, movimento.costo);
    row.setValue(u"QUANTITA"_s, movimento.quantita);
    row.setValue(u"VALORE"_s, movimento.valore);
    row.setValue(u"VALORE_IMPORTO"_s, movimento.valoreImporto);
    row.setValue(u"IDCAUSALE_MAGA"_s, movimento.idCausaleMaga);
    row.setValue(u"RIF_DOC_TIPO"_s, movimento.rifDocTipo);
    row.setValue(u"RIF_DOC_ID"_s, movimento.rifDocId);
    row.setValue(u"RIF_DOC_IDRIGA"_s, movimento.rifDocIdRiga);
    row.setValue(u"NOTE"_s, movimento.note);
}

void openMovement(data::DataSet &row, int id)
{
    row.setUpdateTarget({u"MOVI_MAGA"_s, u"IDMOVI_MAGA"_s});
    row.setCommandText(u"SELECT * FROM MOVI_MAGA WHERE IDMOVI_MAGA="_s + QString::number(id));
    row.open();
}

} // namespace

void AggiornaMoviMaga(TMoviMaga &movimento, bool insert)
{
    core::namingErrors(u"AggiornaMoviMaga", [&] {
        data::Connection &connection = ModuleConnection();
        data::DataSet row(&connection);
        openMovement(row, insert ? -1 : movimento.id);
        if (insert)
            row.append();
        else if (row.isEmpty())
            throw core::Error(u"Impossibile trovare il movimento di magazzino!"_s);
        else
            row.edit();
        // An updated row moves to this key as well, while the generator stays: intended.
        movimento.id = GetLastGeneratorValue(u"GN_IDMOVI_MAGA"_s, connection) + 1;
        setColumns(row, movimento);
        row.updateBatch();
        // Another workstation may have inserted in between; the trigger's key is the one that counts.
        movimento.id = row.integer(u"IDMOVI_MAGA"_s);
    });
}

void InserisciMoviMaga(QList<TMoviMaga> &movimenti)
{
    if (movimenti.isEmpty())
        return;
    core::namingErrors(u"AggiornaMoviMaga", [&] {
        data::Connection &connection = ModuleConnection();
        data::DataSet rows(&connection);
        openMovement(rows, -1);
        int key = GetLastGeneratorValue(u"GN_IDMOVI_MAGA"_s, connection);
        for (TMoviMaga &movimento : movimenti) {
            rows.append();
            movimento.id = ++key;
            setColumns(rows, movimento);
        }
        rows.updateBatch();
        for (qsizetype i = 0; i < movimenti.size(); ++i)
            movimenti[i].id = rows.rows().integer(i, u"IDMOVI_MAGA");
    });
}

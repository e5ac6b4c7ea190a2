#include "magazzino/schema/Motore.h"

#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

const QString tabella = u"TABELLA"_s;
const QString versione = u"VERSIONE"_s;

// Stands on the object's row when the step is an upgrade.
bool daEseguire(data::DataSet &versioni, const Passo &passo)
{
    const bool presente = versioni.locate(tabella, passo.oggetto);
    if (passo.daVersione.isEmpty())
        return !presente;
    return presente && versioni.text(versione) == passo.daVersione;
}

void registra(data::DataSet &versioni, const Passo &passo)
{
    if (passo.daVersione.isEmpty()) {
        versioni.append();
        versioni.setValue(tabella, passo.oggetto);
    } else {
        versioni.edit();
    }
    versioni.setValue(versione, passo.aVersione);
    versioni.updateBatch();
}

void esegui(data::Connection &connection, data::DataSet &versioni, const Passo &passo)
{
    data::Transaction transaction(connection);
    for (const QString &comando : passo.comandi)
        connection.execute(comando);
    if (passo.azione)
        passo.azione(connection);
    registra(versioni, passo);
    transaction.commit();
    // A table is known to other statements only from here on. Rows that fail now leave it created and recorded, as
    // intended.
    for (const QString &comando : passo.seguenti)
        connection.execute(comando);
}

// Returns whether the step succeeded. Its transaction is over in either case, so the caller may show a box.
bool tenta(data::Connection &connection, data::DataSet &versioni, const Passo &passo)
{
    try {
        esegui(connection, versioni, passo);
        return true;
    } catch (const std::exception &error) {
        core::logError(u"AggiornaDatabase "_s + passo.oggetto, error);
        return false;
    }
}

} // namespace

void eseguiPassi(data::Connection &connection, const QList<Passo> &elenco)
{
    data::DataSet versioni(&connection);
    versioni.setCommandText(u"SELECT * FROM TABLE_VERSION"_s);
    versioni.setUpdateTarget({u"TABLE_VERSION"_s, tabella});
    versioni.open();
    for (const Passo &passo : elenco) {
        versioni.requery();
        if (daEseguire(versioni, passo) && !tenta(connection, versioni, passo))
            core::showMessage({u"Errore"_s, u"Errore durante l'aggiornamento del database!"_s});
    }
}

} // namespace schema

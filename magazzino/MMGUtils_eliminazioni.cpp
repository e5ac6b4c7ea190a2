#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

// The query gives one row while the record's own table has any; without a row nothing refers to anything.
bool unreferenced(const QString &sql)
{
    const data::Rows rows = ModuleConnection().select(sql);
    return rows.isEmpty() || rows.integer(0, u"NUMERO") <= 0;
}

// How many documents use a transport reason or type.
bool unusedInDocuments(const QString &key, const QString &table, int id)
{
    QStringList counts;
    for (const DocumentKind *kind : documentKinds())
        counts.append(u"(SELECT COUNT(*) FROM %1 WHERE %2=%3)"_s.arg(kind->table, key, QString::number(id)));
    return unreferenced(u"SELECT FIRST 1 (%1) AS NUMERO FROM %2"_s.arg(counts.join(u" + "_s), table));
}

bool supplierWithoutNotes(const QString &codice)
{
    return unreferenced(u"SELECT FIRST 1 ((SELECT COUNT(*) FROM BOLLE_CARICO WHERE FOR_CODICE="_s + codice +
                        u")) AS NUMERO FROM FORNITORI"_s);
}

// Returns whether all statements were run, `may` still allowed it, and they were committed. The transaction is over in
// either case, so the caller may show a box.
bool runAll(const QStringList &statements, const std::function<bool()> &may)
{
    data::Connection &connection = ModuleConnection();
    data::Transaction transaction(connection);
    try {
        for (const QString &statement : statements)
            connection.execute(statement);
        // Asked once more: another workstation may have made use of the record while the user was being asked.
        if (!may())
            return false;
        transaction.commit();
        return true;
    } catch (const std::exception &error) {
        core::logError(u"eliminazione "_s + data::statementKind(statements.constLast()), error);
        return false;
    }
}

bool confirmed()
{
    return core::confirmDeletion(GetMainFormObject());
}

// `statements` end in the equals sign that the key stands behind; `may` is null where the record may always go.
bool deleteRecord(const QStringList &statements, int id, bool ask, bool (*may)(int) = nullptr)
{
    if (ask && !confirmed())
        return false;
    QStringList complete;
    for (const QString &statement : statements)
        complete.append(statement + QString::number(id));
    if (runAll(complete, [may, id] { return !may || may(id); }))
        return true;
    core::showError(GetMainFormObject(),
                    u"Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è "
                    "stata annullata!"_s);
    return false;
}

} // namespace

bool CanDeleteCausaleTrasporto(int id)
{
    return unusedInDocuments(u"IDCAUSALE_TRASPORTO"_s, u"CAUSALI_TRASPORTO"_s, id);
}

bool CanDeleteTipoTrasporto(int id)
{
    return unusedInDocuments(u"IDTIPO_TRASPORTO"_s, u"TIPI_TRASPORTO"_s, id);
}

bool CanDeleteFornitore(int id)
{
    return supplierWithoutNotes(u"(SELECT CODICE FROM FORNITORI WHERE IDFORNITORE="_s + QString::number(id) + u')');
}

bool CanDeleteFornitore(const QString &codice)
{
    return supplierWithoutNotes(data::quoted(codice));
}

// Only accompanying invoices keep a carrier; delivery notes do not, as intended.
bool CanDeleteVettore(int id)
{
    return core::namingErrors(u"CanDeleteVettore", [&] {
        return unreferenced(u"SELECT FIRST 1 ((SELECT COUNT(*) FROM FATT_ACC WHERE FATT_ACC.VETT_CODICE IN (SELECT "
                            "VETTORI.CODICE FROM VETTORI WHERE VETTORI.IDVETTORE = "_s +
                            QString::number(id) + u"))) AS NUMERO FROM VETTORI"_s);
    });
}

bool CanDeleteMovimentoMagazzino(int)
{
    return true;
}

bool CanDeleteBollaCarico(int)
{
    return true;
}

// What was sent must stay to be looked at, and its number must not be given again.
bool CanDeleteFatturaAccompagnatoria(int id)
{
    return unreferenced(u"SELECT COUNT(*) AS NUMERO FROM FATTURE_ELETTRONICHE WHERE DOCUMENTO = 'FATT_ACC' AND "
                        "IDDOCUMENTO = "_s +
                        QString::number(id));
}

bool DeleteMovimentoMagazzino(int id)
{
    return deleteRecord({u"DELETE FROM MOVI_MAGA WHERE IDMOVI_MAGA="_s}, id, true);
}

bool DeleteFornitore(int id)
{
    return deleteRecord({u"DELETE FROM FORNITORI WHERE IDFORNITORE="_s}, id, true);
}

// The stock movements that a document made stay when it goes, as intended.
bool DeleteDocumento(const DocumentKind &kind, int id, bool ask)
{
    const auto remove = [&] {
        const QString statement = u"DELETE FROM %1 WHERE %2="_s;
        return deleteRecord({statement.arg(kind.rowTable(), kind.key), statement.arg(kind.table, kind.key)}, id, ask,
                            kind.canDelete);
    };
    return kind.deletionRoutine.isEmpty() ? remove() : core::namingErrors(kind.deletionRoutine, remove);
}

bool DeleteBollaCarico(int id)
{
    return DeleteDocumento(bollaCarico(), id, true);
}

bool DeleteFatturaAccompagnatoria(int id, bool ask)
{
    return DeleteDocumento(fatturaAccompagnatoria(), id, ask);
}

bool DeleteDdTScarico(int id, bool ask)
{
    return DeleteDocumento(ddtScarico(), id, ask);
}

bool DeleteTipoTrasporto(int id, bool ask)
{
    return core::namingErrors(u"DeleteTipoTrasporto", [&] {
        return deleteRecord({u"DELETE FROM TIPI_TRASPORTO WHERE IDTIPO_TRASPORTO = "_s}, id, ask);
    });
}

bool DeleteCausaleTrasporto(int id, bool ask)
{
    return core::namingErrors(u"DeleteCausaleTrasporto", [&] {
        return deleteRecord({u"DELETE FROM CAUSALI_TRASPORTO WHERE IDCAUSALE_TRASPORTO = "_s}, id, ask);
    });
}

bool DeleteVettore(int id, bool ask)
{
    return core::namingErrors(u"DeleteVettore",
                              [&] { return deleteRecord({u"DELETE FROM VETTORI WHERE IDVETTORE = "_s}, id, ask); });
}

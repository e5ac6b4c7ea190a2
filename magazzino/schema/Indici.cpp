#include "magazzino/schema/Indici.h"

#include "platform/core/Log.h"
#include "platform/data/Connection.h"
#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseFile.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace schema {

namespace {

struct Indice
{
    QStringView nome;
    QStringView tabella;
    QStringView chiave; ///< what stands behind the table's name
    bool discendente = false;
};

// Each one serves a plan that was measured (docs/performance.md). There is none on the movements' date: the reports
// would read all movements through it, seventy times slower than one after the other.
constexpr Indice indici[] = {
    {u"IX_MMG_MOVI_MAGA_CODICE", u"MOVI_MAGA", u"COMPUTED BY (UPPER(CODICE))"},
    {u"IX_MMG_MOVI_MAGA_RIF_DOC", u"MOVI_MAGA", u"(RIF_DOC_ID, RIF_DOC_TIPO)"},
    {u"IX_MMG_BOLLE_CARICO_DETT", u"BOLLE_CARICO_DETT", u"(IDBOLLA_CARICO)"},
    {u"IX_MMG_DDT_SCARICO_DETT", u"DDT_SCARICO_DETT", u"(IDDDT_SCARICO)"},
    {u"IX_MMG_FATT_ACC_DETT", u"FATT_ACC_DETT", u"(IDFATT_ACC)"},
    {u"IX_MMG_BOLLE_CARICO_ANNO", u"BOLLE_CARICO", u"(ANNO, NUMERO)", true},
    {u"IX_MMG_DDT_SCARICO_ANNO", u"DDT_SCARICO", u"(ANNO, NUMERO)", true},
    {u"IX_MMG_FATT_ACC_ANNO", u"FATT_ACC", u"(ANNO, NUMERO)", true},
};

QString comando(const Indice &indice)
{
    return u"CREATE %1INDEX %2 ON %3 %4"_s.arg(indice.discendente ? u"DESCENDING "_s : QString(), indice.nome,
                                               indice.tabella, indice.chiave);
}

QSet<QString> indiciPresenti(data::Connection &connection)
{
    const data::Rows righe = connection.select(
        u"SELECT TRIM(RDB$INDEX_NAME) AS NOME FROM RDB$INDICES WHERE RDB$INDEX_NAME STARTING WITH 'IX_MMG_'"_s);
    QSet<QString> nomi;
    for (qsizetype riga = 0; riga < righe.size(); ++riga)
        nomi.insert(righe.text(riga, u"NOME"));
    return nomi;
}

void crea(const data::DatabaseAddress &indirizzo, const Indice &indice)
{
    try {
        data::executeWithoutWaiting(indirizzo, comando(indice));
    } catch (const std::exception &error) {
        // The program works without it; the next start tries again.
        core::logError(u"creazione dell'indice %1"_s.arg(indice.nome), error);
    }
}

} // namespace

void creaIndiciMancanti(data::Connection &connection)
{
    try {
        const data::DriverSettings impostazioni = data::driverSettings(connection.connectionString());
        // The client library needs the file, and a data source name does not tell it.
        if (impostazioni.isOdbc)
            return;
        const QSet<QString> presenti = indiciPresenti(connection);
        for (const Indice &indice : indici) {
            if (!presenti.contains(indice.nome.toString()))
                crea(impostazioni.address, indice);
        }
    } catch (const std::exception &error) {
        core::logError(u"creaIndiciMancanti"_s, error);
    }
}

} // namespace schema

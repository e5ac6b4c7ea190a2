#include "host/HostOffer.h"

#include "host/users/Users.h"
#include "platform/core/Translation.h"
#include "platform/data/Latest.h"
#include "platform/data/TextSearch.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

SearchSource searchOf(const QString &caption, const QString &action, const data::SearchedTable &table,
                      data::Connection &connection)
{
    return {.caption = caption, .action = action, .find = [table, &connection](const QString &text, const QVariant &) {
                SearchPart part;
                const data::Rows rows = data::findText(connection, table, text, searchHits);
                for (qsizetype row = 0; row < rows.size(); ++row)
                    part.hits.append(
                        {rows.integer(row, u"CHIAVE"), rows.text(row, u"TESTO"), rows.text(row, u"DETTAGLIO")});
                return part;
            }};
}

QList<SearchSource> searches(data::Connection &connection)
{
    const QStringList item = {u"CODICE"_s, u"DESCRIZIONE"_s};
    return {searchOf(core::tr("Clienti"), u"actInserimentoClienti"_s,
                     {.from = u"CLIENTI"_s,
                      .key = u"IDCLIENTE"_s,
                      .text = u"RAGIONESOCIALE"_s,
                      .detail = u"COALESCE(CITTA, '')"_s,
                      .searched = {u"CODICE"_s, u"RAGIONESOCIALE"_s, u"CITTA"_s, u"PARTITAIVA"_s}},
                     connection),
            searchOf(core::tr("Articoli"), u"actInserimentoArticoli"_s,
                     {.from = u"ANA_MAGA"_s,
                      .key = u"IDANA_MAGA"_s,
                      .text = u"DESCRIZIONE"_s,
                      .detail = u"CODICE"_s,
                      .searched = item},
                     connection),
            searchOf(core::tr("Servizi"), u"actInserimentoServizi"_s,
                     {.from = u"SERVIZI"_s,
                      .key = u"IDSERVIZIO"_s,
                      .text = u"DESCRIZIONE"_s,
                      .detail = u"CODICE"_s,
                      .searched = item},
                     connection)};
}

} // namespace

StartOffer hostOffer(data::Connection &connection)
{
    const auto holds = [&connection](const QString &sql) { return !data::latest(connection, sql).isEmpty(); };
    StartOffer offer;
    offer.commands = {{u"actCercaOvunque"_s,
                       core::tr("Cerca ovunque"),
                       core::tr("Documenti di ogni anno, clienti, fornitori, articoli e righe (Ctrl+K)"),
                       {}}};
    offer.searches = searches(connection);
    offer.steps = {{core::tr("Dati dell'azienda: ragione sociale e partita IVA"), u"actAzienda"_s,
                    [holds] {
                        return holds(
                            u"SELECT FIRST 1 1 AS UNO FROM AZIENDA WHERE RAGIONESOCIALE > '' AND PARTITAIVA > ''"_s);
                    }},
                   {core::tr("Utenti: ognuno con la sua password"), u"actRicercaUtenti"_s,
                    [&connection] { return usersWithoutPassword(connection).isEmpty(); }},
                   {core::tr("Articoli: scriverli o importarli"), u"actRicercaArticoli"_s,
                    [holds] { return holds(u"SELECT FIRST 1 1 AS UNO FROM ANA_MAGA"_s); }}};
    return offer;
}

} // namespace host

#include "host/HostOffer.h"

#include "host/Barcodes.h"
#include "host/users/Users.h"
#include "platform/core/Translation.h"
#include "platform/data/Latest.h"
#include "platform/data/TextSearch.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QList<SearchHit> hitsOf(const data::Rows &rows)
{
    QList<SearchHit> hits;
    for (qsizetype row = 0; row < rows.size(); ++row)
        hits.append({rows.integer(row, u"CHIAVE"), rows.text(row, u"TESTO"), rows.text(row, u"DETTAGLIO")});
    return hits;
}

SearchSource searchOf(const QString &caption, const QString &action, const data::SearchedTable &table,
                      data::Connection &connection)
{
    return {.caption = caption, .action = action, .find = [table, &connection](const QString &text, const QVariant &) {
                return SearchPart{hitsOf(data::findText(connection, table, text, searchHits))};
            }};
}

data::SearchedTable items(const QString &table, const QString &key)
{
    return {.from = table,
            .key = key,
            .text = u"DESCRIZIONE"_s,
            .detail = u"CODICE"_s,
            .searched = {u"CODICE"_s, u"DESCRIZIONE"_s}};
}

// By barcode before those that merely have the text somewhere, each article once.
SearchPart findArticles(data::Connection &connection, const QString &text)
{
    SearchPart part;
    const QList<SearchHit> all =
        hitsOf(articlesByBarcode(connection, text, searchHits)) +
        hitsOf(data::findText(connection, items(u"ANA_MAGA"_s, u"IDANA_MAGA"_s), text, searchHits));
    QSet<int> known;
    for (const SearchHit &hit : all) {
        if (part.hits.size() < searchHits && !known.contains(hit.key))
            part.hits.append(hit);
        known.insert(hit.key);
    }
    return part;
}

QList<SearchSource> searches(data::Connection &connection)
{
    return {
        searchOf(core::tr("Clienti"), u"actInserimentoClienti"_s,
                 {.from = u"CLIENTI"_s,
                  .key = u"IDCLIENTE"_s,
                  .text = u"RAGIONESOCIALE"_s,
                  .detail = u"COALESCE(CITTA, '')"_s,
                  .searched = {u"CODICE"_s, u"RAGIONESOCIALE"_s, u"CITTA"_s, u"PARTITAIVA"_s}},
                 connection),
        {.caption = core::tr("Articoli"),
         .action = u"actInserimentoArticoli"_s,
         .find = [&connection](const QString &text, const QVariant &) { return findArticles(connection, text); }},
        searchOf(core::tr("Servizi"), u"actInserimentoServizi"_s, items(u"SERVIZI"_s, u"IDSERVIZIO"_s), connection)};
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

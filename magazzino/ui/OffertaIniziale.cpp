#include "magazzino/ui/OffertaIniziale.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Giornata.h"
#include "magazzino/reports/uMMGModStampaSottoscortaRiordino.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"
#include "platform/data/TextSearch.h"

using namespace Qt::StringLiterals;

namespace {

host::RecentSource recentOf(const DocumentKind &kind)
{
    return {kind.entryAction(), kind.viewRight, [&kind](int most) {
                QList<host::RecentRecord> records;
                for (const DocumentoElencato &one : UltimiDocumenti(kind, most))
                    records.append(
                        {one.head.id, kind.name, QString::number(one.head.numero), one.head.data, one.intestatario});
                return records;
            }};
}

host::SearchPart partOf(const DocumentiTrovati &found)
{
    host::SearchPart part{.next = found.seguito};
    for (const DocumentoElencato &one : found.documenti)
        part.hits.append({one.head.id,
                          core::tr("n. %1 del %2").arg(one.head.numero).arg(core::formatDate(one.head.data)),
                          one.intestatario.simplified()});
    return part;
}

QString plural(const DocumentKind &kind)
{
    return kind.plural.left(1).toUpper() + kind.plural.mid(1);
}

host::SearchSource documentsOf(const DocumentKind &kind)
{
    return {plural(kind), kind.entryAction(), kind.viewRight, [&kind](const QString &text, const QVariant &from) {
                return partOf(CercaDocumenti(kind, text, from, host::searchHits));
            }};
}

host::SearchSource rowsIn(const DocumentKind &kind)
{
    return {core::tr("Righe di ") + kind.plural, kind.entryAction(), kind.viewRight,
            [&kind](const QString &text, const QVariant &from) {
                return partOf(CercaRighe(kind, text, from, host::searchHits));
            },
            true};
}

host::SearchSource firms(const QString &caption, const QString &table, const QString &key)
{
    const data::SearchedTable searched = {.from = table,
                                          .key = key,
                                          .text = u"RAGIONESOCIALE"_s,
                                          .detail = u"COALESCE(CITTA, '')"_s,
                                          .searched = {u"CODICE"_s, u"RAGIONESOCIALE"_s, u"CITTA"_s}};
    return {.caption = caption,
            .action = u"actInserimento"_s + caption,
            .find = [searched](const QString &text, const QVariant &) {
                host::SearchPart part;
                const data::Rows rows = data::findText(ModuleConnection(), searched, text, host::searchHits);
                for (qsizetype row = 0; row < rows.size(); ++row)
                    part.hits.append(
                        {rows.integer(row, u"CHIAVE"), rows.text(row, u"TESTO"), rows.text(row, u"DETTAGLIO")});
                return part;
            }};
}

QList<host::SearchSource> searches()
{
    QList<host::SearchSource> sources;
    for (const DocumentKind *kind : documentKinds())
        sources.append(documentsOf(*kind));
    sources.append(
        {firms(u"Fornitori"_s, u"FORNITORI"_s, u"IDFORNITORE"_s), firms(u"Vettori"_s, u"VETTORI"_s, u"IDVETTORE"_s)});
    for (const DocumentKind *kind : documentKinds())
        sources.append(rowsIn(*kind));
    return sources;
}

// As many as the report lists.
QString contaSottoscorta()
{
    return u"SELECT COUNT(*) AS N FROM (%1) ELENCO"_s.arg(SottoscortaRiordinoSQL(0));
}

} // namespace

host::StartOffer offertaIniziale()
{
    host::StartOffer offer;
    const DocumentKind &fattura = fatturaAccompagnatoria();
    offer.commands = {
        {bollaCarico().entryAction(), core::tr("Nuova bolla di carico"), core::tr("Merce in arrivo"), {}},
        {ddtScarico().entryAction(), core::tr("Nuovo D.d.T. di scarico"), core::tr("Merce in uscita"), {}},
        {fattura.entryAction(),
         core::tr("Nuova fattura accompagnatoria"),
         core::tr("Merce in uscita con la sua fattura"),
         {fattura.viewRight, fattura.editRight}}};
    for (const DocumentKind *kind : documentKinds())
        offer.recent.append(recentOf(*kind));
    offer.figures = {{u"cmdSottoscorta"_s, u"Articoli in sottoscorta"_s, u"actStampaSottoscortaRiordino"_s,
                      contaSottoscorta, PochiMovimenti}};
    offer.steps = {{core::tr("Prima bolla di carico"), bollaCarico().entryAction(),
                    [] { return EsistonoDocumenti(bollaCarico()); }}};
    offer.searches = searches();
    return offer;
}

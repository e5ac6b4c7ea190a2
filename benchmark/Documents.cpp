// Saving, opening and finding documents.
#include "benchmark/Bench.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/data/SqlText.h"

#include <QAbstractButton>
#include <QComboBox>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int keySearches = 50;

struct Document
{
    QString workload;
    QString action;
    QString table;
    QString key;
    QString partner; ///< prefix of the counterpart's columns
    QString partnerCommand;
    QString partnerName;
    QString kind;
    QString movement;
    int sign = 1;
    QString columns; ///< that only this header has, each behind a comma
    QString values;  ///< theirs
};

Document documentOf(const DocumentKind &kind)
{
    return {.action = kind.entryAction(), .table = kind.table, .key = kind.key, .kind = kind.name};
}

Document issueOf(const DocumentKind &kind, const QString &workload)
{
    Document issue = documentOf(kind);
    issue.workload = workload;
    issue.partner = u"CLI"_s;
    issue.partnerCommand = u"actSelezionaCliente"_s;
    issue.partnerName = u"Arredo Bagno Alpi S.r.l."_s;
    issue.movement = u"Scarico"_s;
    issue.sign = -1;
    return issue;
}

const Document &deliveryNote()
{
    static const Document note = issueOf(ddtScarico(), u"save of a delivery note, 10 rows"_s);
    return note;
}

const Document &receipt()
{
    static const Document receipt = [] {
        Document made = documentOf(bollaCarico());
        made.workload = u"save of a goods receipt, 10 rows"_s;
        made.partner = u"FOR"_s;
        made.partnerCommand = u"actSelezionaFornitore"_s;
        made.partnerName = u"Acciaierie Brentane S.p.A."_s;
        made.movement = u"Carico"_s;
        return made;
    }();
    return receipt;
}

const Document &invoice()
{
    static const Document invoice = [] {
        Document made = issueOf(fatturaAccompagnatoria(), u"save of an accompanying invoice, 10 rows"_s);
        made.columns = u", IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, FC_ABILITATO"_s;
        made.values = u", 1, 'Rimessa diretta', 'False', 'False'"_s;
        return made;
    }();
    return invoice;
}

// Other articles at every run, so that their movements are not in the cache for having just been read.
QStringList nextCodes(const DataSize &size)
{
    static int number = 0;
    QStringList codes;
    for (int i = 0; i < rowsPerDocument; ++i)
        codes.append(articleCode(static_cast<int>(qint64{++number} * 7919 % (size.articles - size.articles / 20)) + 1));
    return codes;
}

void enter(Bench &bench, const Document &kind)
{
    auto &form = bench.program().form<TMMGInserimentoDocumento>(kind.action);
    form.NuovoRecord();
    bench.program().choose(form, kind.partnerCommand, kind.partnerName);
    bench.program().choose(form, u"cmdSelezionaTipoTrasporto"_s, u"Mittente"_s);
    if (auto *reason = form.findChild<QComboBox *>(u"txtCausaleTrasporto"_s))
        reason->setCurrentText(u"Vendita"_s);
    else
        bench.program().choose(form, u"cmdSelezionaCausaleTrasporto"_s, u"Vendita"_s);
    if (form.findChild<QAbstractButton *>(u"cmdSelezionaTipoPagamento"_s))
        bench.program().choose(form, u"cmdSelezionaTipoPagamento"_s, u"Rimessa diretta"_s);
    for (const QString &code : nextCodes(bench.size))
        bench.program().choose(form, u"actAggiungiArticolo"_s, code, code);
    settle();
}

void save(Bench &bench, const Document &kind)
{
    if (!bench.program().form<TMMGInserimentoDocumento>(kind.action).SalvaRecord())
        throw core::Error(u"Not saved: "_s + kind.workload);
}

// Header, ten rows and ten movements, issues valued at average cost.
QString saveBlock(const Document &kind, int number, const QStringList &codes)
{
    QString sql = uR"(EXECUTE BLOCK RETURNS (H INTEGER) AS DECLARE K INTEGER; DECLARE C VARCHAR(20);
DECLARE V DECIMAL(13, 2) = 1; BEGIN
  INSERT INTO {table}(NUMERO, DATA, ANNO, {partner}_CODICE, {partner}_RAGIONESOCIALE, {partner}_INDIRIZZO,
    {partner}_CITTA, {partner}_CAP, {partner}_PARTITAIVA, IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO,
    CAUSALE_TRASPORTO, COLLI, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTE{columns})
  VALUES ({number}, CURRENT_DATE, {year}, 'C0001', 'Ditta', 'Via Roma, 1', 'Bassano del Grappa', '36061',
    '01234560241', 1, 'Mittente', 1, 'Vendita', 0, 0, 0, 0, ''{values}) RETURNING {key} INTO :H;
  FOR {codes} INTO :C DO BEGIN
    INSERT INTO {table}_DETT({key}, CODICE, DESCRIZIONE, IDCATEGORIA, CATEGORIA, PREZZO, QUANTITA, IMPORTO,
      IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM, TIPO_RIGA)
    VALUES (:H, :C, 'Articolo di prova numero 1', 1, 'Categoria', 1.4, 1, 1.4, 1, '22', 'Iva 22%', 22, 1, 'PZ',
      'Articolo') RETURNING {key}_DETT INTO :K;
    {cost}
    INSERT INTO MOVI_MAGA(IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, TIPO_MOVIMENTO,
      PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA, NOTE)
    VALUES (0, CURRENT_DATE, :C, 'Articolo di prova numero 1', 1, '{movement}', 1.4, 1, {sign}, :V, {sign} * :V, 2,
      '{kind}', :H, :K, '{kind} n. 1');
  END
  SUSPEND;
END)"_s;
    const QString cost =
        u"SELECT COALESCE(ABS(SUM(VALORE_IMPORTO) / NULLIF(SUM(QUANTITA), 0)), 0) FROM MOVI_MAGA WHERE "
        "UPPER(CODICE) = :C AND DATA_MOVIMENTO <= CURRENT_DATE INTO :V;"_s;
    QStringList queries;
    for (const QString &code : codes)
        queries.append(u"SELECT %1 FROM RDB$DATABASE"_s.arg(data::quoted(code)));
    const QList<std::pair<QString, QString>> names = {{u"{table}"_s, kind.table},
                                                      {u"{partner}"_s, kind.partner},
                                                      {u"{key}"_s, kind.key},
                                                      {u"{number}"_s, QString::number(number)},
                                                      {u"{year}"_s, QString::number(core::today().year())},
                                                      {u"{codes}"_s, queries.join(u" UNION ALL "_s)},
                                                      {u"{cost}"_s, kind.sign > 0 ? QString() : cost},
                                                      {u"{movement}"_s, kind.movement},
                                                      {u"{columns}"_s, kind.columns},
                                                      {u"{values}"_s, kind.values},
                                                      {u"{sign}"_s, QString::number(kind.sign)},
                                                      {u"{kind}"_s, kind.kind}};
    for (const auto &[name, text] : names)
        sql.replace(name, text);
    return sql;
}

// One block inside the server, and its commit.
void saveBare(Bench &bench, const Document &kind)
{
    static int number = 0; // below zero, where the program takes no number
    Bare &bare = bench.bare();
    bare.begin();
    bare.fetch(saveBlock(kind, --number, nextCodes(bench.size)));
    bare.commit();
}

void measureSave(Bench &bench, const Document &kind)
{
    bench.add({.program = [&] { save(bench, kind); },
               .floor = [&] { saveBare(bench, kind); },
               .prepare = [&] { enter(bench, kind); },
               .runs = 9},
              {.workload = kind.workload, .rows = 1 + 2 * rowsPerDocument, .target = 1.5});
}

} // namespace

void measureSaves(Bench &bench)
{
    measureSave(bench, deliveryNote());
    measureSave(bench, receipt());
    measureSave(bench, invoice());
}

// Header, rows and the costs in the movements.
void openBare(Bench &bench, const Document &kind, int key)
{
    const QString id = QString::number(key);
    bench.bare().fetch(u"SELECT * FROM DDT_SCARICO WHERE IDDDT_SCARICO = "_s + id);
    bench.bare().fetch(u"SELECT * FROM DDT_SCARICO_DETT WHERE IDDDT_SCARICO = "_s + id);
    bench.bare().fetch(u"SELECT RIF_DOC_IDRIGA, COSTO FROM MOVI_MAGA WHERE RIF_DOC_TIPO = %1 AND RIF_DOC_ID = %2"_s.arg(
        data::quoted(kind.kind), id));
}

void measureOpening(Bench &bench)
{
    const Document &kind = deliveryNote();
    int key = firstKey(kind.table, kind.key);
    const auto open = [&]() -> TMMGInserimentoDocumento & {
        auto &form = bench.program().form<TMMGInserimentoDocumento>(kind.action);
        form.ApriRecord(key);
        return form;
    };
    bench.add({.program =
                   [&] {
                       open();
                       settle();
                   },
               .floor = [&] { openBare(bench, kind, key); },
               .prepare =
                   [&] {
                       forget(kind.action);
                       key += 7;
                   }},
              {.workload = u"open of a delivery note, 10 rows, form shown"_s,
               .rows = 1 + 2 * rowsPerDocument,
               .target = 12,
               .milliseconds = true});
    // The form is there and shows another one; what it then paints is not waited for.
    bench.add({.program = open,
               .floor = [&] { openBare(bench, kind, key); },
               .prepare =
                   [&] {
                       settle();
                       key += 7;
                   }},
              {.workload = u"open of a delivery note, 10 rows, form there"_s,
               .rows = 1 + 2 * rowsPerDocument,
               .target = 3,
               .milliseconds = true});
}

// The dialog still shows the article from the search before, so that only the row itself is measured.
void measureArticleRow(Bench &bench)
{
    auto &form = bench.program().form<TMMGInserimentoDocumento>(deliveryNote().action);
    form.NuovoRecord();
    const QString code = articleCode(1);
    bench.program().choose(form, u"actAggiungiArticolo"_s, code, code);
    bench.add({.program = [&] { bench.program().choose(form, u"actAggiungiArticolo"_s, code); }},
              {.workload = u"one article row"_s});
    forget(deliveryNote().action);
}

void measureKeySearches(Bench &bench)
{
    const int first = firstKey(u"ANA_MAGA"_s, u"IDANA_MAGA"_s);
    const int year = core::today().year();
    int number = 0;
    bench.add(
        {.program =
             [&] {
                 for (int i = 0; i < keySearches; ++i) {
                     GetArticolo(first + ++number % bench.size.articles);
                     DdTScaricoExists(number, year, -1);
                 }
             },
         .floor =
             [&] {
                 for (int i = 0; i < keySearches; ++i) {
                     bench.bare().fetch(u"SELECT CODICE, DESCRIZIONE, PREZZO, COSTO FROM ANA_MAGA WHERE IDANA_MAGA "
                                        "= %1"_s.arg(first + ++number % bench.size.articles));
                     bench.bare().fetch(
                         u"SELECT COUNT(*) FROM DDT_SCARICO WHERE NUMERO = %1 AND ANNO = %2"_s.arg(number).arg(year));
                 }
             }},
        {.workload = u"100 searches by key"_s, .rows = qint64{2} * keySearches});
    bench.add({.program =
                   [&] {
                       for (const QString &code : nextCodes(bench.size))
                           GetValoreScaricoCostoMedio(code, core::today());
                   },
               .floor =
                   [&] {
                       for (const QString &code : nextCodes(bench.size))
                           bench.bare().fetch(
                               u"SELECT SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA WHERE "
                               "UPPER(CODICE) = %1 AND DATA_MOVIMENTO <= CURRENT_DATE"_s.arg(data::quoted(code)));
                   }},
              {.workload = u"average cost of 10 articles"_s, .rows = rowsPerDocument});
}

} // namespace bench

// Saving, opening and finding documents.
#include "benchmark/Bench.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/data/SqlText.h"

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
};

const Document &deliveryNote()
{
    static const Document note = {.workload = u"save of a delivery note, 10 rows"_s,
                                  .action = u"actInserimentoDdTScarico"_s,
                                  .table = u"DDT_SCARICO"_s,
                                  .key = u"IDDDT_SCARICO"_s,
                                  .partner = u"CLI"_s,
                                  .partnerCommand = u"actSelezionaCliente"_s,
                                  .partnerName = u"Arredo Bagno Alpi S.r.l."_s,
                                  .kind = u"D.d.T. di scarico"_s,
                                  .movement = u"Scarico"_s,
                                  .sign = -1};
    return note;
}

const Document &receipt()
{
    static const Document receipt = {.workload = u"save of a goods receipt, 10 rows"_s,
                                     .action = u"actInserimentoBolleCarico"_s,
                                     .table = u"BOLLE_CARICO"_s,
                                     .key = u"IDBOLLA_CARICO"_s,
                                     .partner = u"FOR"_s,
                                     .partnerCommand = u"actSelezionaFornitore"_s,
                                     .partnerName = u"Acciaierie Brentane S.p.A."_s,
                                     .kind = u"Bolla di carico"_s,
                                     .movement = u"Carico"_s,
                                     .sign = 1};
    return receipt;
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
    for (const QString &code : nextCodes(bench.size))
        bench.program().choose(form, u"actAggiungiArticolo"_s, code, code);
    settle();
}

void save(Bench &bench, const Document &kind)
{
    if (!bench.program().form<TMMGInserimentoDocumento>(kind.action).SalvaRecord())
        throw core::Error(u"Not saved: "_s + kind.workload);
}

QString marks(int count)
{
    return QStringList(count, u"?"_s).join(u", "_s);
}

// Header, ten rows and ten movements by prepared statements, issues valued at average cost, one commit.
void saveBare(Bench &bench, const Document &kind)
{
    static int number = 0; // below zero, where the program takes no number
    Bare &bare = bench.bare();
    const QDate today = core::today();
    bare.begin();
    {
        QSqlQuery header = bare.prepared(
            u"INSERT INTO %1(NUMERO, DATA, ANNO, %2_CODICE, %2_RAGIONESOCIALE, %2_INDIRIZZO, %2_CITTA, %2_CAP, "
            "%2_PARTITAIVA, IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO, CAUSALE_TRASPORTO, COLLI, "
            "TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTE) VALUES(%3) RETURNING %4"_s.arg(
                kind.table, kind.partner, marks(18), kind.key));
        const QVariant key =
            Bare::valueOf(header, {--number, today, today.year(), u"C0001"_s, kind.partnerName, u"Via Roma, 1"_s,
                                   u"Bassano del Grappa"_s, u"36061"_s, u"01234560241"_s, 1, u"Mittente"_s, 1,
                                   u"Vendita"_s, 0, 0.0, 0.0, 0.0, QString()});
        QSqlQuery row = bare.prepared(
            u"INSERT INTO %1_DETT(%2, CODICE, DESCRIZIONE, IDCATEGORIA, CATEGORIA, PREZZO, QUANTITA, IMPORTO, "
            "IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM, TIPO_RIGA) VALUES(%3) RETURNING "
            "%2_DETT"_s.arg(kind.table, kind.key, marks(15)));
        QSqlQuery cost =
            bare.prepared(u"SELECT SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA WHERE UPPER(CODICE) = "
                          "? AND DATA_MOVIMENTO <= ?"_s);
        QSqlQuery movement = bare.prepared(
            u"INSERT INTO MOVI_MAGA(IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, "
            "TIPO_MOVIMENTO, PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA, RIF_DOC_TIPO, "
            "RIF_DOC_ID, RIF_DOC_IDRIGA, NOTE) VALUES(%1)"_s.arg(marks(16)));
        for (const QString &code : nextCodes(bench.size)) {
            const QString description = u"Articolo di prova numero 1"_s;
            const QVariant rowKey = Bare::valueOf(row, {key, code, description, 1, u"Categoria"_s, 1.4, 1.0, 1.4, 1,
                                                        u"22"_s, u"Iva 22%"_s, 22.0, 1, u"PZ"_s, u"Articolo"_s});
            const double value = kind.sign > 0 ? 1.0 : Bare::valueOf(cost, {code, today}).toDouble();
            Bare::run(movement, {0, today, code, description, 1, kind.movement, 1.4, 1.0, kind.sign * 1.0, value,
                                 kind.sign * value, 2, kind.kind, key, rowKey, kind.kind + u" n. 1"_s});
        }
    }
    bare.commit();
}

void measureSave(Bench &bench, const Document &kind)
{
    bench.add({.program = [&] { save(bench, kind); },
               .floor = [&] { saveBare(bench, kind); },
               .prepare = [&] { enter(bench, kind); },
               .runs = 9},
              {.workload = kind.workload, .rows = 1 + 2 * rowsPerDocument, .target = 2.5});
}

} // namespace

void measureSaves(Bench &bench)
{
    measureSave(bench, deliveryNote());
    measureSave(bench, receipt());
}

void measureOpening(Bench &bench)
{
    const Document &kind = deliveryNote();
    int key = bench.firstKey(kind.table, kind.key);
    bench.add({.program =
                   [&] {
                       bench.program().form<TMMGInserimentoDocumento>(kind.action).ApriRecord(key);
                       settle();
                   },
               .floor =
                   [&] {
                       const QString id = QString::number(key);
                       bench.bare().fetch(u"SELECT * FROM DDT_SCARICO WHERE IDDDT_SCARICO = "_s + id);
                       bench.bare().fetch(u"SELECT * FROM DDT_SCARICO_DETT WHERE IDDDT_SCARICO = "_s + id);
                       bench.bare().fetch(u"SELECT RIF_DOC_IDRIGA, COSTO FROM MOVI_MAGA WHERE RIF_DOC_TIPO = %1 AND "
                                          "RIF_DOC_ID = %2"_s.arg(data::quoted(kind.kind), id));
                   },
               .prepare =
                   [&] {
                       bench.program().forget(kind.action);
                       key += 7;
                   }},
              {.workload = u"open of a delivery note, 10 rows, form shown"_s,
               .rows = 1 + 2 * rowsPerDocument,
               .target = 100,
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
    bench.program().forget(deliveryNote().action);
}

void measureKeySearches(Bench &bench)
{
    const int first = bench.firstKey(u"ANA_MAGA"_s, u"IDANA_MAGA"_s);
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

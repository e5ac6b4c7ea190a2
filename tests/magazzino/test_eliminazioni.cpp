#include "tests/support/Kit.h"

namespace {

const QString question = u"Confermare l'eliminazione?"_s;
const QString failure =
    u"Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!"_s;

struct Deletion
{
    const char *name;
    std::function<bool(int id, bool ask)> run;
    QString table;
    QString key;
    QString rows; ///< table of the document's rows, empty for other records
    bool alwaysAsks;
    bool namesErrors;
};

const QList<Deletion> deletions = {
    {"DeleteMovimentoMagazzino", [](int id, bool) { return DeleteMovimentoMagazzino(id); }, u"MOVI_MAGA"_s,
     u"IDMOVI_MAGA"_s, QString(), true, false},
    {"DeleteFornitore", [](int id, bool) { return DeleteFornitore(id); }, u"FORNITORI"_s, u"IDFORNITORE"_s, QString(),
     true, false},
    {"DeleteBollaCarico", [](int id, bool) { return DeleteBollaCarico(id); }, u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s,
     u"BOLLE_CARICO_DETT"_s, true, false},
    {"DeleteFatturaAccompagnatoria", DeleteFatturaAccompagnatoria, u"FATT_ACC"_s, u"IDFATT_ACC"_s, u"FATT_ACC_DETT"_s,
     false, false},
    {"DeleteDdTScarico", DeleteDdTScarico, u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s, u"DDT_SCARICO_DETT"_s, false, true},
    {"DeleteTipoTrasporto", DeleteTipoTrasporto, u"TIPI_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s, QString(), false, true},
    {"DeleteCausaleTrasporto", DeleteCausaleTrasporto, u"CAUSALI_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s, QString(),
     false, true},
    {"DeleteVettore", DeleteVettore, u"VETTORI"_s, u"IDVETTORE"_s, QString(), false, true}};

// What makes a second row differ from the first where the table asks for it.
QVariantMap distinct(const QString &table)
{
    static const QMap<QString, QVariantMap> values = {{u"FORNITORI"_s, {{u"CODICE"_s, u"B"_s}}},
                                                      {u"VETTORI"_s, {{u"CODICE"_s, u"B"_s}}},
                                                      {u"TIPI_TRASPORTO"_s, {{u"TIPO_TRASPORTO"_s, u"B"_s}}},
                                                      {u"CAUSALI_TRASPORTO"_s, {{u"CAUSALE_TRASPORTO"_s, u"B"_s}}},
                                                      {u"MOVI_MAGA"_s, {}}};
    return values.value(table, {{u"NUMERO"_s, 2}});
}

} // namespace

class EliminazioniTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db;

    static void addDeletions()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < deletions.size(); ++i)
            QTest::newRow(deletions[i].name) << i;
    }

    // A record with a row of its own and a second one that must stay. Returns the first one's key.
    int prepare(const Deletion &deletion)
    {
        const int id = db->insert(deletion.table, {});
        const int other = db->insert(deletion.table, distinct(deletion.table));
        if (!deletion.rows.isEmpty()) {
            db->insert(deletion.rows, {{deletion.key, id}});
            db->insert(deletion.rows, {{deletion.key, other}});
            db->insert(u"MOVI_MAGA"_s, {{u"RIF_DOC_ID"_s, id}});
        }
        return id;
    }

    QStringList state(const Deletion &deletion)
    {
        QStringList all = db->lines(u"SELECT %1 FROM %2 ORDER BY 1"_s.arg(deletion.key, deletion.table));
        if (!deletion.rows.isEmpty())
            all << u"rows"_s << db->lines(u"SELECT %1 FROM %2 ORDER BY 1"_s.arg(deletion.key, deletion.rows))
                << u"movements"_s << db->lines(u"SELECT RIF_DOC_ID FROM MOVI_MAGA"_s);
        return all;
    }

private Q_SLOTS:
    void init() { db = std::make_unique<test::ModuleDatabase>(); }
    void cleanup() { db.reset(); }

    void confirmedDeletionTakesTheRecordAndItsRowsOnly_data() { addDeletions(); }
    void confirmedDeletionTakesTheRecordAndItsRowsOnly()
    {
        QFETCH(const int, index);
        const Deletion &deletion = deletions[index];
        const int id = prepare(deletion);
        const QStringList before = state(deletion);
        test::ScriptedMessages messages;
        messages.watch(db->connection());
        messages.expectQuestion(question, core::Answer::No);
        QVERIFY(!deletion.run(id, true));
        QCOMPARE(state(deletion), before);
        messages.expectQuestion(question, core::Answer::Yes);
        QVERIFY(deletion.run(id, true));
        const QStringList after = deletion.rows.isEmpty()
                                      ? QStringList(u"2"_s)
                                      : QStringList({u"2"_s, u"rows"_s, u"2"_s, u"movements"_s, u"1"_s});
        QCOMPARE(state(deletion), after);
    }

    void refusedHeaderBringsTheRowsBack_data() { addDeletions(); }
    void refusedHeaderBringsTheRowsBack()
    {
        QFETCH(const int, index);
        const Deletion &deletion = deletions[index];
        const int id = prepare(deletion);
        const QStringList before = state(deletion);
        db->connection().execute(u"CREATE EXCEPTION REFUSED 'no'"_s);
        db->connection().execute(
            u"CREATE TRIGGER REFUSE FOR %1 BEFORE DELETE AS BEGIN EXCEPTION REFUSED; END"_s.arg(deletion.table));
        test::ScriptedMessages messages;
        messages.watch(db->connection());
        messages.expectQuestion(question, core::Answer::Yes);
        messages.expectError(failure);
        QVERIFY(!deletion.run(id, true));
        QCOMPARE(state(deletion), before);
    }

    void errorsOutsideTheTransactionReachTheCaller_data() { addDeletions(); }
    void errorsOutsideTheTransactionReachTheCaller()
    {
        QFETCH(const int, index);
        const Deletion &deletion = deletions[index];
        const data::Transaction running(db->connection());
        // Without being told to ask, only those ask that always do.
        test::ScriptedMessages messages;
        if (deletion.alwaysAsks)
            messages.expectQuestion(question, core::Answer::Yes);
        const QString prefix = deletion.namesErrors ? u"[%1]\n\r"_s.arg(QLatin1String(deletion.name)) : QString();
        QCOMPARE(test::errorOf([&] { deletion.run(1, false); }), prefix + u"Una transazione è già in corso."_s);
    }

    void transportRecordsInUseStay_data()
    {
        QTest::addColumn<QString>("document");
        for (const QString &table : {u"BOLLE_CARICO"_s, u"DDT_SCARICO"_s, u"FATT_ACC"_s})
            QTest::newRow(qPrintable(table)) << table;
    }
    void transportRecordsInUseStay()
    {
        QFETCH(const QString, document);
        QVERIFY(CanDeleteCausaleTrasporto(3));
        db->insert(u"CAUSALI_TRASPORTO"_s, {});
        db->insert(u"TIPI_TRASPORTO"_s, {});
        db->insert(document, {{u"IDCAUSALE_TRASPORTO"_s, 3}, {u"IDTIPO_TRASPORTO"_s, 4}});
        QVERIFY(!CanDeleteCausaleTrasporto(3));
        QVERIFY(CanDeleteCausaleTrasporto(4));
        QVERIFY(!CanDeleteTipoTrasporto(4));
        QVERIFY(CanDeleteTipoTrasporto(3));
    }

    void suppliersWithReceiptNotesStay()
    {
        const int used = db->insert(u"FORNITORI"_s, {{u"CODICE"_s, u"D'A"_s}});
        const int unused = db->insert(u"FORNITORI"_s, {{u"CODICE"_s, u"B"_s}});
        db->insert(u"BOLLE_CARICO"_s, {{u"FOR_CODICE"_s, u"D'A"_s}});
        QVERIFY(!CanDeleteFornitore(used));
        QVERIFY(!CanDeleteFornitore(u"D'A"_s));
        QVERIFY(CanDeleteFornitore(unused));
        QVERIFY(CanDeleteFornitore(u"B"_s));
    }

    void onlyInvoicesKeepACarrier()
    {
        const int note = db->insert(u"VETTORI"_s, {{u"CODICE"_s, u"A"_s}});
        const int invoice = db->insert(u"VETTORI"_s, {{u"CODICE"_s, u"B"_s}});
        db->insert(u"DDT_SCARICO"_s, {{u"VETT_CODICE"_s, u"A"_s}});
        db->insert(u"FATT_ACC"_s, {{u"VETT_CODICE"_s, u"B"_s}});
        QVERIFY(CanDeleteVettore(note));
        QVERIFY(!CanDeleteVettore(invoice));
        db->connection().close();
        QCOMPARE(test::errorOf([] { CanDeleteVettore(1); }),
                 u"[CanDeleteVettore]\n\rLa connessione al database non è aperta."_s);
        QCOMPARE(test::errorOf([] { CanDeleteFornitore(1); }), u"La connessione al database non è aperta."_s);
        QVERIFY(CanDeleteMovimentoMagazzino(1) && CanDeleteBollaCarico(1));
    }
};

static const test::Registered<EliminazioniTest> registered;

#include "test_eliminazioni.moc"

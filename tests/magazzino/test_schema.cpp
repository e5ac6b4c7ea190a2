#include "magazzino/schema/Tables.h"
#include "tests/support/Kit.h"

namespace {

const QString stepFailed = u"Errore durante l'aggiornamento del database!"_s;

// Without the one of the host's tables.
const QString versions = u"SELECT TABELLA, VERSIONE FROM TABLE_VERSION WHERE TABELLA <> 'CORVANE' ORDER BY TABELLA"_s;

// Every column as "TABLE|COLUMN|TYPE|NOT NULL|DEFAULT ...", in the order of their positions.
const QString columns = uR"(
    SELECT TRIM(F.RDB$RELATION_NAME), TRIM(F.RDB$FIELD_NAME),
        CASE T.RDB$FIELD_TYPE WHEN 8 THEN 'INTEGER' WHEN 12 THEN 'DATE' WHEN 13 THEN 'TIME'
            WHEN 37 THEN 'VARCHAR(' || T.RDB$CHARACTER_LENGTH || ')'
            WHEN 16 THEN 'DECIMAL(' || T.RDB$FIELD_PRECISION || ', ' || ABS(T.RDB$FIELD_SCALE) || ')'
            WHEN 261 THEN 'BLOB SUB_TYPE ' || T.RDB$FIELD_SUB_TYPE END,
        IIF(F.RDB$NULL_FLAG = 1, 'NOT NULL', ''), CAST(F.RDB$DEFAULT_SOURCE AS VARCHAR(50))
    FROM RDB$RELATION_FIELDS F JOIN RDB$FIELDS T ON T.RDB$FIELD_NAME = F.RDB$FIELD_SOURCE
    WHERE F.RDB$RELATION_NAME IN (%1) ORDER BY F.RDB$RELATION_NAME, F.RDB$FIELD_POSITION)"_s;

const QString constraints = uR"(
    SELECT 'CONSTRAINT ' || TRIM(C.RDB$CONSTRAINT_NAME) || ' ' || TRIM(C.RDB$CONSTRAINT_TYPE) || '(' ||
        (SELECT LIST(N, ', ') FROM (SELECT TRIM(S.RDB$FIELD_NAME) AS N FROM RDB$INDEX_SEGMENTS S
            WHERE S.RDB$INDEX_NAME = C.RDB$INDEX_NAME ORDER BY S.RDB$FIELD_POSITION)) || ')'
    FROM RDB$RELATION_CONSTRAINTS C
    WHERE C.RDB$RELATION_NAME IN (%1) AND C.RDB$INDEX_NAME IS NOT NULL)"_s;

const QString triggers = uR"(
    SELECT TRIM(RDB$RELATION_NAME), TRIM(RDB$TRIGGER_NAME), RDB$TRIGGER_TYPE, RDB$TRIGGER_SOURCE FROM RDB$TRIGGERS
    WHERE RDB$RELATION_NAME IN (%1))"_s;

QString tableNames()
{
    QStringList names;
    for (const schema::Table &table : schema::tables())
        names.append(u'\'' + table.name + u'\'');
    return names.join(u", "_s);
}

} // namespace

class SchemaTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db_;

    void start(test::Content content = test::Content::ModuleSchema)
    {
        db_.reset();
        db_ = std::make_unique<test::ModuleDatabase>(content);
    }

    // Of all module tables, in an order that does not depend on the database's.
    QStringList sorted(const QString &query)
    {
        QStringList lines = db_->lines(query.arg(tableNames()));
        lines.sort();
        return lines;
    }

    // Versions, columns in the order in which they stand in their tables, constraints, triggers.
    QStringList catalogue()
    {
        return db_->lines(versions) + db_->lines(columns.arg(tableNames())) + sorted(constraints) + sorted(triggers);
    }

    QStringList everything()
    {
        return catalogue() + db_->lines(u"SELECT * FROM CAUSALI_MAGA ORDER BY 1"_s) +
               db_->lines(u"SELECT ABILITAZIONE_UTENTE, MODULO FROM ABILITAZIONI_UTENTE ORDER BY 1"_s);
    }

private Q_SLOTS:
    void cleanup() { db_.reset(); }

    void freshDatabaseEndsAsCatalogued()
    {
        start();
        QFile golden(QFINDTESTDATA("magazzino/catalogo.txt"));
        QVERIFY(golden.open(QIODevice::ReadOnly));
        const QStringList expected = QString::fromUtf8(golden.readAll()).split(u'\n', Qt::SkipEmptyParts);
        const QStringList found = catalogue();
        for (qsizetype line = 0; line < expected.size(); ++line)
            QCOMPARE(found.value(line), expected[line]);
        QCOMPARE(found.size(), expected.size());
        // And no table besides.
        const QString tables = u"SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$SYSTEM_FLAG = 0"_s;
        const int all = db_->lines(tables).value(0).toInt();
        start(test::Content::HostSchema);
        QCOMPARE(all - db_->lines(tables).value(0).toInt(), int(schema::tables().size()));
    }

    void freshDatabaseHasReasonsAndRights()
    {
        start();
        QCOMPARE(db_->lines(u"SELECT * FROM CAUSALI_MAGA ORDER BY 1"_s), QStringList({u"1|Carico"_s, u"2|Scarico"_s}));
        QCOMPARE(db_->lines(u"SELECT ABILITAZIONE_UTENTE, MODULO FROM ABILITAZIONI_UTENTE WHERE MODULO <> 'Corvane' "
                            "ORDER BY IDABILITAZIONE_UTENTE"_s),
                 QStringList({u"Fatture acc. (visualizzazione)|Magazzzino"_s, u"Fatture acc. (modifica)|Magazzzino"_s,
                              u"Fatture acc. (eliminazione)|Magazzzino"_s}));
    }

    void secondStartChangesNothing()
    {
        test::ScriptedMessages messages;
        start();
        const QStringList before = everything();
        AggiornaDatabase();
        QCOMPARE(everything(), before);
    }

    void stepsFollowTheVersionsInOrder_data()
    {
        test::columns<QStringList, QString>("recorded", "expected");
        const QStringList created = {u"CAUSALI_TRASPORTO"_s, u"CAUSALI_MAGA"_s,     u"TIPI_TRASPORTO"_s,
                                     u"BOLLE_CARICO_DETT"_s, u"DDT_SCARICO_DETT"_s, u"FATT_ACC_DETT"_s,
                                     u"MAGAZZINI"_s,         u"VETTORI"_s,          u"MMG_ABILITAZIONI"_s};
        QStringList latest = {u"FORNITORI=1.1.0"_s, u"BOLLE_CARICO=1.1.0"_s, u"MOVI_MAGA=1.0.1"_s};
        for (const QString &name : created)
            latest += name + u"=1.0.0"_s;
        const auto with = [&latest](const QStringList &more) { return latest + more; };
        QTest::newRow("nothing") << QStringList() << u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23"_s;
        QTest::newRow("latest") << with({u"DDT_SCARICO=1.2.0"_s, u"FATT_ACC=1.4.0"_s}) << QString();
        QTest::newRow("invoices 1.0.0") << with({u"DDT_SCARICO=1.2.0"_s, u"FATT_ACC=1.0.0"_s}) << u"16,18,22,23"_s;
        QTest::newRow("invoices 1.3.0") << with({u"DDT_SCARICO=1.2.0"_s, u"FATT_ACC=1.3.0"_s}) << u"23"_s;
        QTest::newRow("notes 1.0.0") << with({u"DDT_SCARICO=1.0.0"_s, u"FATT_ACC=1.4.0"_s}) << u"14,20"_s;
        QTest::newRow("notes 1.0.1") << with({u"DDT_SCARICO=1.0.1"_s, u"FATT_ACC=1.4.0"_s}) << u"20"_s;
        QTest::newRow("unknown version") << with({u"DDT_SCARICO=1.00"_s, u"FATT_ACC=2.0.0"_s}) << QString();
        QTest::newRow("name in lower case") << with({u"ddt_scarico=1.0.0"_s, u"FATT_ACC=1.4.0"_s}) << u"7,14,20"_s;
    }
    void stepsFollowTheVersionsInOrder()
    {
        const auto [recorded, expected] = test::row<QStringList, QString>();
        start(test::Content::HostSchema);
        for (const QString &entry : recorded)
            db_->insert(u"TABLE_VERSION"_s,
                        {{u"TABELLA"_s, entry.section(u'=', 0, 0)}, {u"VERSIONE"_s, entry.section(u'=', 1)}});
        // The real guards and versions with commands that only leave a trace.
        QStringList trace;
        QList<schema::Step> steps = schema::moduleSteps();
        for (qsizetype i = 0; i < steps.size(); ++i) {
            steps[i].statements.clear();
            steps[i].following.clear();
            steps[i].action = [&trace, i](data::Connection &, core::Progress &) {
                trace.append(QString::number(i + 1));
            };
        }
        schema::runModuleSteps(db_->connection(), steps);
        QCOMPARE(trace.join(u','), expected);
    }

    void interruptedUpgradesEndLikeFreshOnes_data()
    {
        QTest::addColumn<int>("done");
        for (const int done : {5, 13, 17, 21})
            QTest::addRow("after step %d", done) << done;
    }
    void interruptedUpgradesEndLikeFreshOnes()
    {
        QFETCH(const int, done);
        test::ScriptedMessages messages;
        start();
        const QStringList fresh = everything();
        start(test::Content::HostSchema);
        schema::runModuleSteps(db_->connection(), schema::moduleSteps().first(done));
        AggiornaDatabase();
        QCOMPARE(everything(), fresh);
    }

    void tableWithoutVersionRowIsReportedAndLeftAlone()
    {
        start();
        db_->connection().execute(u"DELETE FROM TABLE_VERSION WHERE TABELLA = 'FATT_ACC'"_s);
        const QStringList before = everything();
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        AggiornaDatabase();
        QCOMPARE(everything(), before);
    }

    void failingStepLeavesNothingAndLaterOnesRun()
    {
        start(test::Content::HostSchema);
        const QList<schema::Step> steps = {
            {u"A"_s, {}, {u"CREATE TABLE A(X INTEGER)"_s, u"CREATE NONSENSE"_s}, u"1.0.0"_s},
            {u"B"_s, {}, {u"CREATE TABLE B(X INTEGER)"_s}, u"1.0.0"_s, {u"INSERT INTO NOWHERE VALUES(1)"_s}},
            {u"C"_s, {}, {u"CREATE TABLE C(X INTEGER)"_s}, u"1.0.0"_s, {u"INSERT INTO C VALUES(7)"_s}}};
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        schema::runModuleSteps(db_->connection(), steps);
        QCOMPARE(messages.verify(), QStringList());
        QCOMPARE(db_->lines(versions), QStringList({u"B|1.0.0"_s, u"C|1.0.0"_s}));
        QCOMPARE(db_->lines(u"SELECT RDB$RELATION_NAME FROM RDB$RELATIONS WHERE RDB$RELATION_NAME IN ('A', 'B', "
                            "'C') ORDER BY 1"_s),
                 QStringList({u"B"_s, u"C"_s}));
        QCOMPARE(db_->lines(u"SELECT * FROM C"_s), QStringList(u"7"_s));
        // Tried again at the next start, and only this one.
        messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        schema::runModuleSteps(db_->connection(), steps);
    }

    void stepIsTriedTwiceWhenItsDefinitionsCannotBeMade_data()
    {
        // times: that the COMMIT is refused
        // tries: of the step
        test::columns<data::Refusal, int, int, bool>("refusal", "times", "tries", "told");
        QTest::newRow("once") << data::Refusal::DefinitionNotMade << 1 << 2 << false;
        QTest::newRow("twice") << data::Refusal::DefinitionNotMade << 2 << 2 << true;
        QTest::newRow("for another reason") << data::Refusal::Other << 1 << 1 << true;
    }
    void stepIsTriedTwiceWhenItsDefinitionsCannotBeMade()
    {
        QFETCH(const data::Refusal, refusal);
        QFETCH(const int, times);
        QFETCH(const int, tries);
        QFETCH(const bool, told);
        start(test::Content::HostSchema);
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        if (told)
            messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        QStringList run;
        int refused = 0;
        db_->connection().setStatementHook([&](const QString &sql) {
            if (sql.startsWith(u"CREATE"))
                run.append(sql);
            if (sql == u"COMMIT" && refused++ < times)
                throw data::DatabaseError(u"unsuccessful metadata update"_s, sql, refusal);
        });
        schema::runModuleSteps(db_->connection(), {{u"A"_s, {}, {u"CREATE TABLE A(X INTEGER)"_s}, u"1.0.0"_s}});
        QCOMPARE(messages.verify(), QStringList());
        QCOMPARE(run.size(), tries);
        QCOMPARE(db_->lines(u"SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'A'"_s),
                 told ? QStringList() : QStringList(u"1.0.0"_s));
    }

    void stepWhoseVersionCannotBeRecordedIsUndone()
    {
        start(test::Content::HostSchema);
        db_->connection().execute(u"CREATE EXCEPTION REFUSED 'no'"_s);
        db_->connection().execute(u"CREATE TRIGGER REFUSE FOR TABLE_VERSION BEFORE INSERT AS BEGIN IF (NEW.TABELLA "
                                  "= 'DDT_SCARICO') THEN EXCEPTION REFUSED; END"_s);
        // One box only: the later steps of the object see that it is still absent.
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        AggiornaDatabase();
        QCOMPARE(db_->lines(columns.arg(u"'DDT_SCARICO'"_s)), QStringList());
        QCOMPARE(db_->lines(versions).size(), 13);
    }

    void recostingTakesArticleCostsAndRevaluesIssues()
    {
        start();
        for (const QString &code : {u"A"_s, u"B"_s})
            db_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, code}, {u"COSTO"_s, 2.5}});
        const auto movement = [this](const QString &code, const QString &kind, double quantity) {
            db_->insert(u"MOVI_MAGA"_s, {{u"CODICE"_s, code}, {u"TIPO_MOVIMENTO"_s, kind}, {u"QUANTITA"_s, quantity}});
        };
        movement(u"A"_s, u"Carico"_s, 10);
        movement(u"B"_s, u"Carico"_s, 4);
        movement(u"A"_s, u"Scarico"_s, -2);
        db_->connection().execute(u"UPDATE TABLE_VERSION SET VERSIONE = '1.0.0' WHERE TABELLA = 'MOVI_MAGA'"_s);
        // Given up half-way it leaves nothing of itself, and is due again.
        const auto straight = qScopeGuard([] { schema::setLongRunner({}); });
        const auto stored = [this] {
            return db_->lines(u"SELECT * FROM MOVI_MAGA ORDER BY IDMOVI_MAGA"_s) +
                   db_->lines(u"SELECT * FROM TABLE_VERSION WHERE TABELLA = 'MOVI_MAGA'"_s);
        };
        int longest = 0;
        for (const bool cancelled : {true, false}) {
            schema::setLongRunner([&](const schema::LongWork &work) {
                core::Progress progress;
                if (cancelled)
                    progress.cancel();
                work(progress);
                longest = progress.total();
            });
            test::ScriptedMessages messages;
            if (cancelled)
                messages.expectPart(u"Informazioni"_s, u"è stato annullato"_s, core::Answer::Ok);
            const QStringList before = stored();
            AggiornaDatabase();
            QCOMPARE(stored() == before, cancelled);
        }
        QCOMPARE(longest, 1);
        // The issue sees itself without value: 25 / 8.
        QCOMPARE(db_->lines(u"SELECT CODICE, COSTO, VALORE, VALORE_IMPORTO FROM MOVI_MAGA ORDER BY IDMOVI_MAGA"_s),
                 QStringList({u"A|2.5|2.5|25"_s, u"B|2.5|2.5|10"_s, u"A|0|3.13|-6.25"_s}));
    }

    void recostingWithoutArticleIsRolledBackAsAWhole()
    {
        start();
        db_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, u"A"_s}, {u"COSTO"_s, 2.5}});
        db_->insert(u"MOVI_MAGA"_s, {{u"CODICE"_s, u"A"_s}, {u"TIPO_MOVIMENTO"_s, u"Carico"_s}, {u"QUANTITA"_s, 1}});
        db_->insert(u"MOVI_MAGA"_s, {{u"CODICE"_s, u"GONE"_s}, {u"TIPO_MOVIMENTO"_s, u"Carico"_s}, {u"QUANTITA"_s, 1}});
        db_->connection().execute(u"UPDATE TABLE_VERSION SET VERSIONE = '1.0.0' WHERE TABELLA = 'MOVI_MAGA'"_s);
        test::ScriptedMessages messages;
        messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        AggiornaDatabase();
        QCOMPARE(db_->lines(u"SELECT SUM(COSTO) FROM MOVI_MAGA"_s), QStringList(u"0"_s));
        QCOMPARE(db_->lines(u"SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'MOVI_MAGA'"_s),
                 QStringList(u"1.0.0"_s));
    }

    void missingIndexWaitsForAStartWithoutOpenWrites()
    {
        const QTemporaryDir folder;
        core::setLogFile(folder.filePath(u"log"_s));
        const auto logOff = qScopeGuard([] { core::setLogFile({}); });
        const auto logged = [&folder] {
            QFile log(folder.filePath(u"log"_s));
            return log.open(QIODevice::ReadOnly) ? log.readAll().count("indice IX_MMG_MOVI_MAGA_RIF_DOC") : 0;
        };
        const QString indexes = u"SELECT RDB$INDEX_NAME FROM RDB$INDICES WHERE RDB$INDEX_NAME STARTING WITH "
                                "'IX_MMG_' ORDER BY 1"_s;
        start();
        const QStringList all = db_->lines(indexes);
        QVERIFY(all.contains(u"IX_MMG_MOVI_MAGA_RIF_DOC"_s));
        db_->connection().execute(u"DROP INDEX IX_MMG_MOVI_MAGA_RIF_DOC"_s);
        db_->connection().execute(u"DROP INDEX IX_MMG_FATT_ACC_DETT"_s);
        test::ScriptedMessages messages;

        data::Connection other;
        other.setConnectionString(db_->database().connectionString());
        other.open();
        {
            data::Transaction writing(other);
            test::insertInto(other, u"MOVI_MAGA"_s, {});
            AggiornaDatabase();
            writing.commit();
        }
        QCOMPARE(db_->lines(indexes).size(), all.size() - 1);
        QCOMPARE(logged(), 1);

        AggiornaDatabase();
        QCOMPARE(db_->lines(indexes), all);
        // What is there is not tried again.
        AggiornaDatabase();
        QCOMPARE(logged(), 1);
    }

    void missingModuleIsShownOnce()
    {
        test::ScriptedMessages messages;
        messages.expectError(u"[AggiornaDatabase]\n\rIl modulo \"Magazzino.bpl\" non è caricato."_s);
        start(test::Content::Empty);
        db_.reset();
        AggiornaDatabase();
    }
};

static const test::Registered<SchemaTest> registered;

#include "test_schema.moc"

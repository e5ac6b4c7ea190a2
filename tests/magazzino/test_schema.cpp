#include "tests/support/Kit.h"

namespace {

const QString stepFailed = u"Errore durante l'aggiornamento del database!"_s;

// Without the one of the host's tables.
const QString versions = u"SELECT TABELLA, VERSIONE FROM TABLE_VERSION WHERE TABELLA <> 'CORVANE' ORDER BY TABELLA"_s;

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

    QStringList everything()
    {
        return test::linesOf(db_->connection(), {test::schemaQuery(), u"SELECT * FROM CAUSALI_MAGA ORDER BY 1"_s,
                                                 u"SELECT * FROM ABILITAZIONI_UTENTE ORDER BY 1"_s});
    }

private Q_SLOTS:
    void cleanup() { db_.reset(); }

    // With nothing besides.
    void freshDatabaseEndsAsCatalogued()
    {
        start(test::Content::HostSchema);
        const QStringList before = db_->lines(test::schemaQuery());
        start();
        QStringList found = everything();
        for (const QString &line : before)
            found.removeOne(line);
        const QByteArray golden = test::contentOf(QFINDTESTDATA("magazzino/catalogo.txt"));
        QCOMPARE(found, QString::fromUtf8(golden).split(u'\n', Qt::SkipEmptyParts));
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
        const QString latest =
            u"FORNITORI=1.1.0 BOLLE_CARICO=1.1.0 MOVI_MAGA=1.0.1 CAUSALI_TRASPORTO=1.0.0 CAUSALI_MAGA=1.0.0 "
            "TIPI_TRASPORTO=1.0.0 BOLLE_CARICO_DETT=1.0.0 DDT_SCARICO_DETT=1.0.0 FATT_ACC_DETT=1.0.0 MAGAZZINI=1.0.0 "
            "VETTORI=1.0.0 MMG_ABILITAZIONI=1.0.0 "_s;
        test::table<QString, QString>(
            {{"nothing", {}, u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23"_s},
             {"latest", latest + u"DDT_SCARICO=1.2.0 FATT_ACC=1.4.0"_s, {}},
             {"invoices 1.0.0", latest + u"DDT_SCARICO=1.2.0 FATT_ACC=1.0.0"_s, u"16,18,22,23"_s},
             {"invoices 1.3.0", latest + u"DDT_SCARICO=1.2.0 FATT_ACC=1.3.0"_s, u"23"_s},
             {"notes 1.0.0", latest + u"DDT_SCARICO=1.0.0 FATT_ACC=1.4.0"_s, u"14,20"_s},
             {"notes 1.0.1", latest + u"DDT_SCARICO=1.0.1 FATT_ACC=1.4.0"_s, u"20"_s},
             {"unknown version", latest + u"DDT_SCARICO=1.00 FATT_ACC=2.0.0"_s, {}},
             {"name in lower case", latest + u"ddt_scarico=1.0.0 FATT_ACC=1.4.0"_s, u"7,14,20"_s}});
    }
    void stepsFollowTheVersionsInOrder()
    {
        const auto [recorded, expected] = test::row<QString, QString>();
        start(test::Content::HostSchema);
        for (const QString &entry : recorded.split(u' ', Qt::SkipEmptyParts))
            db_->insert(u"TABLE_VERSION"_s, u"TABELLA="_s + QString(entry).replace(u"="_s, u"|VERSIONE="_s));
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

    // After these steps.
    void interruptedUpgradesEndLikeFreshOnes_data() { test::cases({u"5"_s, u"13"_s, u"17"_s, u"21"_s}); }
    void interruptedUpgradesEndLikeFreshOnes()
    {
        test::ScriptedMessages messages;
        start();
        const QStringList fresh = everything();
        start(test::Content::HostSchema);
        schema::runModuleSteps(db_->connection(), schema::moduleSteps().first(test::currentCase().toInt()));
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
        // How often the COMMIT is refused, how often the step is tried, and whether it is told.
        test::table<data::Refusal, int, int, bool>({{"once", data::Refusal::DefinitionNotMade, 1, 2, false},
                                                    {"twice", data::Refusal::DefinitionNotMade, 2, 2, true},
                                                    {"for another reason", data::Refusal::Other, 1, 1, true}});
    }
    void stepIsTriedTwiceWhenItsDefinitionsCannotBeMade()
    {
        const auto [refusal, times, tries, told] = test::row<data::Refusal, int, int, bool>();
        start(test::Content::HostSchema);
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        if (told)
            messages.expect(u"Errore"_s, stepFailed, core::MessageIcon::None);
        QStringList run;
        int refused = 0;
        db_->connection().setStatementHook([&, times = times, refusal = refusal](const QString &sql) {
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
        QCOMPARE(db_->lines(u"SELECT 1 FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = 'DDT_SCARICO'"_s), QStringList());
        QCOMPARE(db_->lines(versions).size(), 13);
    }

    void recostingTakesArticleCostsAndRevaluesIssues()
    {
        start();
        for (const QString &code : {u"A"_s, u"B"_s})
            db_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, code}, {u"COSTO"_s, 2.5}});
        for (const QString &movement :
             {u"CODICE=A|TIPO_MOVIMENTO=Carico|QUANTITA=10"_s, u"CODICE=B|TIPO_MOVIMENTO=Carico|QUANTITA=4"_s,
              u"CODICE=A|TIPO_MOVIMENTO=Scarico|QUANTITA=-2"_s})
            db_->insert(u"MOVI_MAGA"_s, movement);
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
                messages.expectPart(u"Informazioni"_s, u"è stato annullato"_s);
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
        db_->insert(u"ANA_MAGA"_s, u"CODICE=A|COSTO=2.5"_s);
        for (const QString &code : {u"A"_s, u"GONE"_s})
            db_->insert(u"MOVI_MAGA"_s, u"TIPO_MOVIMENTO=Carico|QUANTITA=1|CODICE="_s + code);
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
            return test::contentOf(folder.filePath(u"log"_s)).count("indice IX_MMG_MOVI_MAGA_RIF_DOC");
        };
        const QString indexes = u"SELECT RDB$INDEX_NAME FROM RDB$INDICES WHERE RDB$INDEX_NAME STARTING WITH "
                                "'IX_MMG_' ORDER BY 1"_s;
        start();
        const QStringList all = db_->lines(indexes);
        QVERIFY(all.contains(u"IX_MMG_MOVI_MAGA_RIF_DOC"_s));
        db_->connection().execute(u"DROP INDEX IX_MMG_MOVI_MAGA_RIF_DOC"_s);
        db_->connection().execute(u"DROP INDEX IX_MMG_FATT_ACC_DETT"_s);
        test::ScriptedMessages messages;

        const auto other = test::connectTo(db_->database().address());
        {
            data::Transaction writing(*other);
            test::insertInto(*other, u"MOVI_MAGA"_s);
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

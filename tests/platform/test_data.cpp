#include "platform/data/DataSet.h"
#include "platform/data/Latest.h"
#include "tests/support/Kit.h"

#include <cmath>

const QString allRows = u"SELECT * FROM PROVA ORDER BY ID"_s;

class TestData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        database_ = std::make_unique<test::TestDatabase>(test::Content::Empty);
        connection_ = test::connectTo(database_->address());
        for (const QString &sql :
             {u"CREATE TABLE PROVA(ID INTEGER NOT NULL, TESTO VARCHAR(10), NOTE BLOB SUB_TYPE 1, IMPORTO "
              "DECIMAL(13, 2), PESO DECIMAL(13,3), GIORNO DATE, ORA TIME, NUMERO INTEGER, CONSTRAINT PK_PROVA "
              "PRIMARY KEY(ID))"_s,
              u"CREATE GENERATOR GN_ID"_s,
              u"CREATE TRIGGER TG_BI_PROVA FOR PROVA BEFORE INSERT AS BEGIN NEW.ID = GEN_ID(GN_ID, 1); END"_s})
            connection_->execute(sql);
    }

    void cleanup()
    {
        set_.reset();
        connection_.reset();
        database_.reset();
    }

    void valuesComeBackAsWritten()
    {
        data::DataSet &set = openSet(u"SELECT * FROM PROVA ORDER BY ID DESC"_s);
        for (const auto &[column, value] : {std::pair(u"TESTO"_s, QVariant(u"D'Amico €è"_s)),
                                            {u"TESTO"_s, u"àèìòùàèìòù"_s}, // as long as the column
                                            {u"TESTO"_s, u""_s},
                                            {u"NOTE"_s, u"perché\ncittà €\n"_s.repeated(2000)},
                                            {u"NOTE"_s, QVariant()},
                                            {u"IMPORTO"_s, 12345678901.23},
                                            {u"IMPORTO"_s, 3.55}, // which scaling misses
                                            {u"GIORNO"_s, QDate(2024, 2, 29)},
                                            {u"ORA"_s, QTime(23, 59, 58)},
                                            {u"ORA"_s, QTime(0, 0)},
                                            {u"NUMERO"_s, -2147483647}}) {
            set.append();
            set.setValue(column, value);
            set.updateBatch();
            set.requery();
            QCOMPARE(set.value(column).isValid(), value.isValid());
            QCOMPARE(set.value(column).toString(), value.toString());
            if (value.metaType().id() == QMetaType::Double)
                QVERIFY(set.number(column) == value.toDouble());
        }
    }

    void missingValueOfARequiredColumnIsRefused_data()
    {
        test::table<QString, QVariant, QVariant>(
            {{"integer", u"NUMERO"_s, 7, {}},
             {"text", u"TESTO"_s, u"sette"_s, {}},
             {"blob", u"NOTE"_s, u"sette"_s, {}},
             {"decimal", u"IMPORTO"_s, 7.5, QVariant(QMetaType(QMetaType::Double))},
             {"date", u"GIORNO"_s, QDate(2026, 1, 2), QDate()},
             {"time", u"ORA"_s, QTime(8, 0), QTime()}});
    }

    // The driver drops such a value: the row got 0, an empty text, or 17/11/1858.
    void missingValueOfARequiredColumnIsRefused()
    {
        const auto [column, former, missing] = test::row<QString, QVariant, QVariant>();
        const QString insert = u"INSERT INTO PROVA(%1, ID) VALUES(?, ?)"_s.arg(column);
        connection_->execute(u"ALTER TABLE PROVA ALTER %1 SET NOT NULL"_s.arg(column));
        data::DataSet &set = openSet(u"SELECT ID, %1 FROM PROVA"_s.arg(column));
        {
            data::Transaction transaction(*connection_);
            // The key is missing too, but a trigger gives it.
            connection_->run(insert, {former, QVariant()});
            QVERIFY_EXCEPTION_THROWN(connection_->run(insert, {missing, 1}), data::DatabaseError);
            QVERIFY_EXCEPTION_THROWN(connection_->run(u"UPDATE PROVA SET %1 = ? /* '?' */"_s.arg(column), {missing}),
                                     data::DatabaseError);
            transaction.commit();
        }
        set.append();
        set.setValue(column, missing);
        QVERIFY_EXCEPTION_THROWN(set.updateBatch(), data::DatabaseError);
        set.requery();
        set.edit();
        set.setValue(column, missing);
        QVERIFY_EXCEPTION_THROWN(set.updateBatch(), data::DatabaseError);
        QCOMPARE(stored(column), QStringList(former.toString()));
        // Nothing is above what is missing, which is not 0.
        QVERIFY(connection_->select(u"SELECT 1 AS NUM FROM PROVA WHERE ID > :ID"_s, {{u"ID"_s, QVariant()}}).isEmpty());
    }

    void emptyTextIsNotMissing()
    {
        connection_->execute(u"ALTER TABLE PROVA ALTER TESTO SET NOT NULL"_s);
        const QString insert = u"INSERT INTO PROVA(TESTO) VALUES(?)"_s;
        data::Transaction transaction(*connection_);
        for (const QString &text : {u"uno"_s, QString(), u"due"_s, u""_s})
            connection_->run(insert, {text});
        transaction.commit();
        QCOMPARE(stored(u"TESTO"_s), QStringList({u"uno"_s, u""_s, u"due"_s, u""_s}));
    }

    void capitalsAreThoseOfTheDatabase()
    {
        const QString sql = u"SELECT %1 AS TESTO FROM RDB$DATABASE"_s.arg(data::inCapitals());
        constexpr uint surrogates = 0xd800;
        QString letters;
        for (uint letter = 0x20; letter < surrogates; ++letter) {
            letters += QChar(letter);
            if (letters.size() < 200 && letter + 1 < surrogates)
                continue;
            QCOMPARE(connection_->run(sql, {data::searchedText(letters)}).text(0, u"TESTO"), data::capitalsOf(letters));
            letters.clear();
        }
        QCOMPARE(data::capitalsOf(u"Straße 𐐨"_s), u"STRAßE 𐐀"_s);
    }

    void decimalsAreRoundedBeforeTheyAreBound()
    {
        data::DataSet &set = openSet();
        for (const double amount : {1.005, -1.005, -0.005, -0.015, 0.1 + 0.2}) {
            set.append();
            set.setValue(u"IMPORTO"_s, amount);
            set.setValue(u"PESO"_s, amount);
            set.post();
        }
        set.first();
        QCOMPARE(set.number(u"IMPORTO"_s), 1.01); // shown as it will be stored
        set.updateBatch();
        QCOMPARE(stored(u"IMPORTO"_s), QStringList({u"1.01"_s, u"-1.01"_s, u"-0.01"_s, u"-0.02"_s, u"0.3"_s}));
        QCOMPARE(stored(u"PESO"_s), QStringList({u"1.005"_s, u"-1.005"_s, u"-0.005"_s, u"-0.015"_s, u"0.3"_s}));
        set.append();
        QCOMPARE(test::errorOf([&set] { set.setValue(u"IMPORTO"_s, std::nan("")); }),
                 u"Il valore di \"IMPORTO\" non è un numero."_s);
    }

    // The driver would store -92233720368547758.08 for them.
    void numbersBeyondTheColumnAreRefused()
    {
        constexpr double tooLarge = 1e16;
        data::DataSet &set = openSet();
        set.append();
        set.setValue(u"IMPORTO"_s, 9e15);
        for (const double value : {tooLarge, -tooLarge}) {
            QVERIFY(test::errorOf([&] { set.setValue(u"IMPORTO"_s, value); }) != u"no error"_s);
            QVERIFY(test::errorOf([&] { connection_->run(u"INSERT INTO PROVA(IMPORTO) VALUES(?)"_s, {value}); }) !=
                    u"no error"_s);
        }
        set.updateBatch();
        QCOMPARE(stored(u"IMPORTO"_s), QStringList(u"9e+15"_s));
    }

    void errorAtTheFirstFetchIsThrown()
    {
        connection_->execute(u"INSERT INTO PROVA(GIORNO) VALUES('2026-01-02')"_s);
        const QString error =
            test::errorOf([this] { connection_->select(u"SELECT * FROM PROVA WHERE GIORNO = '20260102'"_s); });
        QVERIFY2(error.contains(u"conversion error"_s), qPrintable(error));
        QCOMPARE(connection_->select(u"SELECT * FROM PROVA WHERE GIORNO = '2026-01-02'"_s).size(), qsizetype(1));
    }

    void rowsBeforeAnErrorAreKept()
    {
        data::Rows rows;
        const QString sql = u"SELECT 10 / (2 - N) AS X FROM (SELECT 1 AS N FROM RDB$DATABASE UNION ALL SELECT 2 FROM "
                            "RDB$DATABASE)"_s;
        const QString error = test::errorOf([&] { connection_->selectInto(rows, sql); });
        QVERIFY2(error.contains(u"divide"_s), qPrintable(error));
        QCOMPARE(rows.size(), qsizetype(1));
        QCOMPARE(rows.integer(0, u"X"), 10);
    }

    void errorAtTheCommitIsThrown()
    {
        connection_->execute(u"CREATE TABLE DOPPI(CODICE VARCHAR(5))"_s);
        connection_->execute(u"INSERT INTO DOPPI VALUES('A')"_s);
        connection_->execute(u"INSERT INTO DOPPI VALUES('A')"_s);
        // The index is built when the definition is committed.
        QVERIFY_EXCEPTION_THROWN(connection_->execute(u"CREATE UNIQUE INDEX IX_DOPPI ON DOPPI(CODICE)"_s),
                                 data::DatabaseError);
        QVERIFY(!connection_->inTransaction());
        QCOMPARE(connection_->select(u"SELECT * FROM DOPPI"_s).size(), qsizetype(2));
    }

    void preparedReadSeesTheLatestRows()
    {
        const QString count = u"SELECT COUNT(*) AS NUM FROM PROVA WHERE NUMERO = :NUMERO"_s;
        const auto number = [this, &count] {
            return connection_->select(count, {{u"NUMERO"_s, 1}}).integer(0, u"NUM");
        };
        QCOMPARE(number(), 0);
        for (const bool committed : {true, false}) {
            const int before = number();
            data::Transaction transaction(*connection_);
            QCOMPARE(number(), before);
            connection_->run(u"INSERT INTO PROVA(NUMERO) VALUES(?)"_s, {1});
            QCOMPARE(number(), before + 1);
            if (committed)
                transaction.commit();
        }
        QVERIFY(!connection_->inTransaction());
        QCOMPARE(number(), 1);
    }

    // A prepared statement holds on to its tables.
    void keptStatementsDoNotHinderDefinitions()
    {
        connection_->run(u"INSERT INTO PROVA(TESTO) VALUES(?)"_s, {u"uno"_s});
        QCOMPARE(data::latest(*connection_, allRows).columns().size(), 8);
        connection_->execute(u"ALTER TABLE PROVA DROP ORA"_s);
        QCOMPARE(data::latest(*connection_, allRows).columns().size(), 7);
        QCOMPARE(connection_->run(allRows).columns().size(), 7);
        connection_->execute(u"DROP TABLE PROVA"_s);
        QVERIFY_EXCEPTION_THROWN(data::latest(*connection_, allRows), data::DatabaseError);
    }

    // Seven go in two statements; the database gives keys of its own, and texts come back whole whatever their length.
    void rowsWrittenTogetherHoldWhatWasStored()
    {
        const QStringList notes = {
            u"breve"_s, QString(), u""_s, u"è€"_s.repeated(1000), u"è€"_s.repeated(1001), u"x"_s.repeated(40000),
            u"fine"_s};
        connection_->run(u"INSERT INTO PROVA(TESTO) VALUES(?)"_s, {u"prima"_s});
        data::DataSet &set = openSet(u"SELECT * FROM PROVA WHERE ID > 1 ORDER BY ID"_s);
        for (int row = 0; row < notes.size(); ++row) {
            set.append();
            set.setValue(u"ID"_s, 100 + row);
            set.setValue(u"NOTE"_s, notes[row].isNull() ? QVariant() : QVariant(notes[row]));
            set.setValue(u"IMPORTO"_s, row == 3 ? QVariant() : QVariant(row + 0.005));
        }
        set.updateBatch();
        const data::Rows written = set.rows();
        set.requery();
        QCOMPARE(set.recordCount(), notes.size());
        for (int row = 0; row < notes.size(); ++row) {
            QCOMPARE(set.rows().integer(row, u"ID"), row + 2);
            QCOMPARE(set.rows().values(row), written.values(row));
            QCOMPARE(set.rows().text(row, u"NOTE"), notes[row]);
        }
    }

    void nestedTransactionIsRefusedAndTheOuterOneLives()
    {
        data::Transaction outer(*connection_);
        connection_->execute(u"INSERT INTO PROVA(NUMERO) VALUES(1)"_s);
        QCOMPARE(test::errorOf([this] { const data::Transaction inner(*connection_); }),
                 u"Una transazione è già in corso."_s);
        QVERIFY(connection_->inTransaction());
        outer.commit();
        QCOMPARE(stored(u"NUMERO"_s), QStringList(u"1"_s));
    }

    void failedStatementLeavesTheTransactionUsable()
    {
        data::Transaction transaction(*connection_);
        QVERIFY_EXCEPTION_THROWN(connection_->execute(u"INSERT INTO NESSUNA VALUES(1)"_s), data::DatabaseError);
        QVERIFY_EXCEPTION_THROWN(connection_->run(u"INSERT INTO PROVA(TESTO) VALUES(?)"_s, {u"undici lett"_s}),
                                 data::DatabaseError);
        connection_->run(u"INSERT INTO PROVA(TESTO) VALUES(?)"_s, {u"bene"_s});
        transaction.commit();
        QCOMPARE(stored(u"TESTO"_s), QStringList(u"bene"_s));
    }

    // Only the columns that were changed are written, and only to a row that is there.
    void rowChangedElsewhere()
    {
        connection_->execute(u"INSERT INTO PROVA(NUMERO, TESTO) VALUES(1, 'mio')"_s);
        data::DataSet &set = openSet();
        const auto change = [&set](int number) {
            set.edit();
            set.setValue(u"NUMERO"_s, number);
            set.updateBatch();
        };
        connection_->execute(u"UPDATE PROVA SET TESTO = 'altrui'"_s);
        change(2);
        QCOMPARE(stored(u"TESTO"_s), QStringList(u"altrui"_s));
        connection_->execute(u"DELETE FROM PROVA"_s);
        QCOMPARE(test::errorOf([&] { change(3); }), u"La riga da modificare non esiste più."_s);
    }

    void locateComparesExactlyAndKeepsTheRowWhenNothingFits()
    {
        for (const QString &text : {u"abc"_s, u"ABC"_s, u"abc "_s, u""_s})
            connection_->run(u"INSERT INTO PROVA(TESTO) VALUES(?)"_s, {text});
        connection_->execute(u"INSERT INTO PROVA(NUMERO) VALUES(5)"_s);
        data::DataSet &set = openSet();
        QVERIFY(set.locate(u"TESTO"_s, u"abc "_s));
        QCOMPARE(set.integer(u"ID"_s), 3);
        QVERIFY(!set.locate(u"TESTO"_s, u"Abc"_s));
        QCOMPARE(set.integer(u"ID"_s), 3);
        QVERIFY(set.locate(u"TESTO"_s, QVariant()));
        QCOMPARE(set.integer(u"ID"_s), 5); // null, not empty
        QVERIFY(set.locate(u"NUMERO"_s, 5));
    }

    void nativeAddressComesBackAsItWas()
    {
        // Host, port, file and password.
        for (const auto &[host, port, file, password] :
             {std::tuple(QString(), 0, u"/dati/città nuova/a.fdb"_s, QString()),
              {u"server"_s, 3051, u"corvane"_s, u"segreta"_s},
              {u"server"_s, 0, u"a;b.fdb"_s, u"a;Provider=x"_s},
              {u"server"_s, 0, u"a"_s, u" a "_s}}) {
            const data::DatabaseAddress address = {.host = host, .port = port, .file = file, .password = password};
            const data::DriverSettings settings = data::driverSettings(data::nativeConnectionString(address));
            QVERIFY(!settings.isOdbc);
            QCOMPARE(std::tuple(settings.address.host, settings.address.port, settings.address.file,
                                settings.address.password, settings.address.user),
                     std::tuple(host, port, file, password, u"SYSDBA"_s));
        }
    }

    void odbcProviderGoesToItsDataSource()
    {
        const data::DriverSettings settings = data::driverSettings(
            u"provider = msdasql.1;Persist Security Info=False;User ID=UTENTE;Password='a;b';Data Source=CORVANE3_LOCAL"_s);
        QVERIFY(settings.isOdbc);
        QCOMPARE(settings.dataSourceName, u"CORVANE3_LOCAL"_s);
        QCOMPARE(settings.address.user + u'/' + settings.address.password, u"UTENTE/a;b"_s);
        QVERIFY(settings.address.file.isEmpty());
    }

    void commandLineAddressIsRead()
    {
        for (const auto &[text, host, port, file] :
             {std::tuple(QString(), QString(), 0, QString()),
              {u"/dati/a.fdb"_s, QString(), 0, u"/dati/a.fdb"_s},
              {u"  a b.fdb "_s, QString(), 0, u"a b.fdb"_s},
              {u"/dati/a:b.fdb"_s, QString(), 0, u"/dati/a:b.fdb"_s},
              {u"./a:b.fdb"_s, QString(), 0, u"./a:b.fdb"_s},
              {u":a.fdb"_s, QString(), 0, u":a.fdb"_s},
              {u"server:"_s, QString(), 0, u"server:"_s},
              {u"server:archivio"_s, u"server"_s, 0, u"archivio"_s},
              {u"10.0.0.5/3051:/dati/a:b.fdb"_s, u"10.0.0.5"_s, 3051, u"/dati/a:b.fdb"_s},
              {u"server:C:\\dati\\a.fdb"_s, u"server"_s, 0, u"C:\\dati\\a.fdb"_s},
              {u"server/x:/dati/a.fdb"_s, QString(), 0, u"server/x:/dati/a.fdb"_s}}) {
            const data::DatabaseAddress address = data::DatabaseAddress::parse(text);
            QCOMPARE(std::tuple(address.host, address.port, address.file), std::tuple(host, port, file));
            QCOMPARE(address.toString(), text.trimmed());
        }
    }

    void unknownProviderIsRefused()
    {
        QCOMPARE(test::errorOf([] { data::driverSettings(u"Provider=Altro;Password=segreta"_s); }),
                 u"Provider di database sconosciuto: \"Altro\"."_s);
    }

    void logNamesAStatementWithoutItsValues()
    {
        QCOMPARE(data::statementKind(u"SELECT * FROM CLIENTI WHERE CODICE = 'a FROM b'"_s), u"SELECT FROM CLIENTI"_s);
        QCOMPARE(data::statementKind(u"insert into  um (UM) values ('x')"_s), u"INSERT INTO UM"_s);
        QCOMPARE(data::statementKind(u"EXECUTE BLOCK AS BEGIN END"_s), u"EXECUTE"_s);
    }

private:
    data::DataSet &openSet(const QString &sql = allRows)
    {
        set_ = std::make_unique<data::DataSet>(connection_.get());
        set_->setCommandText(sql);
        set_->setUpdateTarget({u"PROVA"_s, u"ID"_s});
        set_->open();
        return *set_;
    }

    QStringList stored(const QString &column)
    {
        return test::linesOf(*connection_, u"SELECT %1 FROM PROVA ORDER BY ID"_s.arg(column));
    }

    std::unique_ptr<test::TestDatabase> database_;
    std::unique_ptr<data::Connection> connection_;
    std::unique_ptr<data::DataSet> set_;
};

static const test::Registered<TestData> registered;
#include "test_data.moc"

#include "tests/server/AtServer.h"

namespace {

/// What two workstations made of one document, had they worked one after the other.
struct OneDocument
{
    int quantity = 0;
    bool stored = true;
    bool asOpened = true;

    /// What the workstation would have replied. A deleted document leaves its movements behind.
    QString apply(const QStringList &order)
    {
        if (order[0] == u"delete"_s) {
            stored = asOpened = false;
            return u"deleted"_s;
        }
        if (!asOpened && order[2] == u"no"_s)
            return u"refused"_s;
        quantity = order[1].toInt();
        stored = true;
        asOpened = false;
        return u"saved"_s;
    }
};

/// Replies of the workstations, number of documents and stock when `early` is done before `late`. A reply "error" is
/// given: of two that really meet the database refuses one, which then has done nothing.
QString outcome(const QString &early, const QString &late, QStringList replies, bool swapped)
{
    OneDocument document{.quantity = 7};
    for (const QString &order : {early, late}) {
        QString &reply = replies[(order == early) == swapped ? 1 : 0];
        if (reply != u"error"_s)
            reply = document.apply(order.split(u' '));
    }
    return u"%1 %2 %3 %4"_s.arg(replies[0], replies[1]).arg(document.stored ? 1 : 0).arg(document.quantity);
}

} // namespace

/// The forms on a database server that other workstations use too, and that may fail.
class TestServerDocuments : public AtServer
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtServer::init();
        test::emptyDocuments(database());
    }

    // Their statements log in by themselves, with the password of the module's connection.
    void startMakesTheIndexesThroughTheServer()
    {
        QVERIFY(lines(u"SELECT TRIM(RDB$INDEX_NAME) FROM RDB$INDICES"_s).contains(u"IX_MMG_MOVI_MAGA_CODICE"_s));
    }

    void anotherWorkstationSavesInBetween()
    {
        const auto addRow = [this](const QString &article) {
            const auto other = connect();
            const QString note =
                test::linesOf(*other, u"SELECT IDDDT_SCARICO FROM DDT_SCARICO WHERE NUMERO = 50"_s).value(0);
            const int row = test::insertInto(*other, u"DDT_SCARICO_DETT"_s,
                                             u"IDDDT_SCARICO=%1|TIPO_RIGA=Articolo|CODICE=%2"_s.arg(note, article));
            test::insertInto(
                *other, u"MOVI_MAGA"_s,
                u"CODICE=%1|TIPO_MOVIMENTO=Scarico|QUANTITA=-1|RIF_DOC_TIPO=D.d.T. di scarico|RIF_DOC_ID=%2|"
                "RIF_DOC_IDRIGA=%3"_s.arg(article, note)
                    .arg(row));
        };
        const test::Document note(place(), test::deliveryNote());
        note.enter(u"7,90"_s, u"5"_s);
        note.addArticle(u"SMA-0750"_s, u"8"_s, u"2"_s);
        int headers = 0;
        int rows = 0;
        connection().setStatementHook([&](const QString &sql) {
            if (sql.startsWith(u"INSERT INTO DDT_SCARICO ") && headers++ == 0) {
                test::insertInto(*connect(), u"DDT_SCARICO"_s, u"NUMERO=50|ANNO=2026|CLI_CODICE=ALTRO"_s);
                addRow(u"ALTRO-1"_s);
            }
            // Both rows go in one statement.
            if (sql.contains(u"INSERT INTO DDT_SCARICO_DETT ") && rows++ == 0)
                addRow(u"ALTRO-2"_s);
        });
        const QString documents = u"SELECT D.NUMERO, R.CODICE, M.CODICE, M.QUANTITA FROM DDT_SCARICO D JOIN "
                                  "DDT_SCARICO_DETT R ON R.IDDDT_SCARICO = D.IDDDT_SCARICO LEFT JOIN MOVI_MAGA M "
                                  "ON M.RIF_DOC_ID = D.IDDDT_SCARICO AND M.RIF_DOC_IDRIGA = R.IDDDT_SCARICO_DETT "
                                  "ORDER BY D.NUMERO, R.IDDDT_SCARICO_DETT"_s;
        const QStringList expected = {u"1|TRA-0018|TRA-0018|-5"_s, u"1|SMA-0750|SMA-0750|-2"_s,
                                      u"50|ALTRO-1|ALTRO-1|-1"_s, u"50|ALTRO-2|ALTRO-2|-1"_s};
        note.save();
        connection().setStatementHook({});
        QCOMPARE(headers, 1);
        QCOMPARE(rows, 1);
        QCOMPARE(note.flags(), u"stored"_s);
        QCOMPARE(lines(documents), expected);
        QCOMPARE(lines(u"SELECT IDDDT_SCARICO FROM DDT_SCARICO WHERE NUMERO = 1"_s),
                 QStringList({QString::number(note.form().IdRecord())}));
        // The form works on the key that it was really given.
        note.saveAgain();
        QCOMPARE(lines(documents), expected);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s), QStringList(u"4"_s));
    }

    void sameNumberAtTheSameMomentIsStoredOnce()
    {
        const test::Document invoice(place(), test::accompanyingInvoice());
        invoice.enter(u"7,90"_s, u"5"_s);
        connection().setStatementHook([&](const QString &sql) {
            if (sql.startsWith(u"INSERT INTO FATT_ACC "))
                test::insertInto(*connect(), u"FATT_ACC"_s, u"NUMERO=1|ANNO=2026|CLI_CODICE=ALTRO"_s);
        });
        place().messages.expectError(test::saveError);
        invoice.save();
        connection().setStatementHook({});
        QCOMPARE(lines(u"SELECT NUMERO, CLI_CODICE FROM FATT_ACC"_s), QStringList(u"1|ALTRO"_s));
        QCOMPARE(lines(u"SELECT COUNT(*) FROM FATT_ACC_DETT"_s) + lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s),
                 QStringList({u"0"_s, u"0"_s}));
        QCOMPARE(invoice.grid()->model()->rowCount(), 1);
        // With another number the loser stores what was typed.
        invoice.control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(2);
        invoice.save();
        QCOMPARE(lines(u"SELECT NUMERO FROM FATT_ACC ORDER BY NUMERO"_s), QStringList({u"1"_s, u"2"_s}));
        QCOMPARE(lines(u"SELECT CODICE, QUANTITA FROM MOVI_MAGA"_s), QStringList(u"TRA-0018|-5"_s));
    }

    void serverLostDuringTheSave_data()
    {
        test::table<QString, bool>({{"header", u"INSERT INTO DDT_SCARICO "_s, false},
                                    {"row", u"INSERT INTO DDT_SCARICO_DETT "_s, false},
                                    {"commit", u"COMMIT"_s, false},
                                    {"row of a stored note", u"INSERT INTO DDT_SCARICO_DETT "_s, true},
                                    {"commit of a stored note", u"COMMIT"_s, true}});
    }

    void serverLostDuringTheSave()
    {
        const auto [statement, stored] = test::row<QString, bool>();
        const QString rows =
            u"SELECT D.ASPETTO_BENI, R.CODICE, R.QUANTITA FROM DDT_SCARICO D JOIN DDT_SCARICO_DETT R ON "
            "R.IDDDT_SCARICO = D.IDDDT_SCARICO ORDER BY R.IDDDT_SCARICO_DETT"_s;
        const QString movements = u"SELECT CODICE, QUANTITA FROM MOVI_MAGA"_s;
        const test::Document note(place(), test::deliveryNote());
        note.enter(u"7,90"_s, u"5"_s);
        if (stored)
            note.save();
        const QStringList before = lines(rows) + lines(movements);
        note.control<QLineEdit>(u"txtAspettoBeni"_s)->setText(u"Sfuso"_s);
        test::typeIntoCell(note.grid(), 0, u"Q.tà"_s, u"6"_s);
        bool crashed = false;
        connection().setStatementHook([&, statement = statement](const QString &sql) {
            if (!crashed && sql.startsWith(statement)) {
                crashed = true;
                server().crash();
            }
        });
        place().messages.expectError(test::saveError);
        note.save();
        connection().setStatementHook({});
        QVERIFY(crashed);
        QCOMPARE(note.shown(u"txtAspettoBeni"_s), u"Sfuso"_s);
        QCOMPARE(test::cellText(note.grid(), 0, u"Q.tà"_s), u"6,00"_s);
        server().start();
        QCOMPARE(lines(rows) + lines(movements), before);
        note.saveAgain();
        QCOMPARE(note.flags(), u"stored"_s);
        QCOMPARE(lines(rows) + lines(movements), QStringList({u"Sfuso|TRA-0018|6"_s, u"TRA-0018|-6"_s}));
    }

    void serverLostBeforeTheSave()
    {
        const test::Document note(place(), test::deliveryNote());
        note.enter(u"7,90"_s, u"5"_s);
        server().crash();
        QStringList shown;
        const core::MessageHandler scripted = core::setMessageHandler([&shown](const core::Message &message) {
            shown.append(message.title);
            return message.answers.last();
        });
        note.save();
        core::setMessageHandler(scripted);
        // The database's own text, from the check of the number; nothing was tried, so the note is as it was.
        QCOMPARE(shown, QStringList(u"Errore"_s));
        QCOMPARE(note.flags(), u"new modified"_s);
        server().start();
        note.save();
        QCOMPARE(note.flags(), u"stored"_s);
        QCOMPARE(lines(u"SELECT CODICE FROM MOVI_MAGA"_s), QStringList(u"TRA-0018"_s));
    }

    void oneDocumentOnTwoWorkstations_data() { test::eachKind(); }

    // Both change (or one deletes) at the same moment, whoever comes first: stock, documents and replies must be those
    // of one order or the other.
    void oneDocumentOnTwoWorkstations()
    {
        const QString kind = QString::fromLatin1(QTest::currentDataTag());
        const QString table = test::kindOfRow().table;
        test::Workstation first(server().address(), {});
        test::Workstation second(server().address(), {});
        const QList<std::pair<QString, QString>> rounds = {{u"save 5 no"_s, u"save 6 no"_s},
                                                           {u"save 5 yes"_s, u"save 6 yes"_s},
                                                           {u"save 5 no"_s, u"delete 0 no"_s},
                                                           {u"delete 0 no"_s, u"save 6 no"_s},
                                                           {u"delete 0 no"_s, u"save 6 yes"_s}};
        int bothRefused = 0;
        for (int i = 0; i < 10; ++i) {
            database().execute(u"DELETE FROM "_s + table);
            database().execute(u"DELETE FROM MOVI_MAGA"_s);
            first.tell(u"%1 0 new 7 no\ngo"_s.arg(kind));
            QCOMPARE(first.answer(), u"ready"_s);
            const QString key = first.answer().section(u' ', 1);
            const auto &[one, other] = rounds[i % rounds.size()];
            first.tell(u"%1 %2 %3"_s.arg(kind, key, one));
            second.tell(u"%1 %2 %3"_s.arg(kind, key, other));
            QCOMPARE(first.answer() + second.answer(), u"readyready"_s);
            (i % 2 ? second : first).tell(u"go"_s);
            (i % 2 ? first : second).tell(u"go"_s);
            const QStringList replies = {first.answer().section(u' ', 0, 0), second.answer().section(u' ', 0, 0)};
            const QString seen = replies.join(u' ') + u' ' + lines(u"SELECT COUNT(*) FROM "_s + table).first() + u' ' +
                                 lines(u"SELECT ABS(SUM(QUANTITA)) FROM MOVI_MAGA"_s).first();
            const QStringList possible = {outcome(one, other, replies, false), outcome(other, one, replies, true)};
            QVERIFY2(possible.contains(seen), qPrintable(seen + u" not in: "_s + possible.join(u", "_s)));
            bothRefused += replies == QStringList(2, u"error"_s);
        }
        // Each may hold what the other one waits for, until both have waited long enough.
        QVERIFY2(bothRefused <= 3, qPrintable(QString::number(bothRefused)));
        for (test::Workstation *workstation : {&first, &second})
            QCOMPARE(workstation->end(60), QString());
    }
};

static const test::Registered<TestServerDocuments> registered;

#include "test_documents.moc"

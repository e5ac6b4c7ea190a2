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
        for (const char *table : {"DDT_SCARICO_DETT", "DDT_SCARICO", "FATT_ACC_DETT", "FATT_ACC", "MOVI_MAGA"})
            database().execute(u"DELETE FROM "_s + QLatin1StringView(table));
    }

    // Their statements log in by themselves, with the password of the module's connection.
    void startMakesTheIndexesThroughTheServer()
    {
        QVERIFY(lines(u"SELECT TRIM(RDB$INDEX_NAME) FROM RDB$INDICES"_s).contains(u"IX_MMG_MOVI_MAGA_CODICE"_s));
    }

    void anotherWorkstationSavesInBetween()
    {
        const QString otherRow =
            u"INSERT INTO DDT_SCARICO_DETT(IDDDT_SCARICO, TIPO_RIGA, CODICE) SELECT IDDDT_SCARICO, 'Articolo', '%1' "
            "FROM DDT_SCARICO WHERE NUMERO = 50"_s;
        const QString otherMovement =
            u"INSERT INTO MOVI_MAGA(IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, "
            "TIPO_MOVIMENTO, PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA, RIF_DOC_TIPO, "
            "RIF_DOC_ID, RIF_DOC_IDRIGA) SELECT 0, CURRENT_DATE, CODICE, '-', 1, 'Scarico', 0, 0, -1, 0, 0, 2, "
            "'D.d.T. di scarico', IDDDT_SCARICO, IDDDT_SCARICO_DETT FROM DDT_SCARICO_DETT WHERE CODICE = '%1'"_s;
        const test::Document note(place(), test::deliveryNote());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"7,90"_s, u"5"_s);
        note.addArticle(u"SMA-0750"_s, u"8"_s, u"2"_s);
        int headers = 0;
        int rows = 0;
        connection().setStatementHook([&](const QString &sql) {
            if (sql.startsWith(u"INSERT INTO DDT_SCARICO ") && headers++ == 0)
                runElsewhere({u"INSERT INTO DDT_SCARICO(NUMERO, DATA, ANNO, TIPO_ANAGRAFICA, CLI_CODICE, "
                              "CLI_RAGIONESOCIALE, IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO, "
                              "CAUSALE_TRASPORTO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO) VALUES(50, "
                              "'2026-03-16', 2026, 0, 'ALTRO', 'Altra', 1, 'X', 1, 'X', 0, 0, 0)"_s,
                              otherRow.arg(u"ALTRO-1"_s), otherMovement.arg(u"ALTRO-1"_s)});
            // Both rows go in one statement.
            if (sql.contains(u"INSERT INTO DDT_SCARICO_DETT ") && rows++ == 0)
                runElsewhere({otherRow.arg(u"ALTRO-2"_s), otherMovement.arg(u"ALTRO-2"_s)});
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
        note.form().DataChanged();
        note.save();
        QCOMPARE(lines(documents), expected);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s), QStringList(u"4"_s));
    }

    void sameNumberAtTheSameMomentIsStoredOnce()
    {
        const test::Document invoice(place(), test::accompanyingInvoice());
        invoice.fillHeader();
        invoice.addArticle(u"TRA-0018"_s, u"7,90"_s, u"5"_s);
        connection().setStatementHook([&](const QString &sql) {
            if (sql.startsWith(u"INSERT INTO FATT_ACC "))
                runElsewhere(
                    {u"INSERT INTO FATT_ACC(NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, "
                     "TIPO_PAGAMENTO, PAGATO, IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO, "
                     "CAUSALE_TRASPORTO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) "
                     "VALUES(1, '2026-03-16', 2026, 'ALTRO', 'Altra', 1, 'X', 'False', 1, 'X', 1, 'X', 0, 0, 0, "
                     "'False')"_s});
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
        test::columns<QString, bool>("statement", "stored");
        QTest::newRow("header") << u"INSERT INTO DDT_SCARICO "_s << false;
        QTest::newRow("row") << u"INSERT INTO DDT_SCARICO_DETT "_s << false;
        QTest::newRow("commit") << u"COMMIT"_s << false;
        QTest::newRow("row of a stored note") << u"INSERT INTO DDT_SCARICO_DETT "_s << true;
        QTest::newRow("commit of a stored note") << u"COMMIT"_s << true;
    }

    void serverLostDuringTheSave()
    {
        QFETCH(QString, statement);
        QFETCH(bool, stored);
        const QString rows =
            u"SELECT D.ASPETTO_BENI, R.CODICE, R.QUANTITA FROM DDT_SCARICO D JOIN DDT_SCARICO_DETT R ON "
            "R.IDDDT_SCARICO = D.IDDDT_SCARICO ORDER BY R.IDDDT_SCARICO_DETT"_s;
        const QString movements = u"SELECT CODICE, QUANTITA FROM MOVI_MAGA"_s;
        const test::Document note(place(), test::deliveryNote());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"7,90"_s, u"5"_s);
        if (stored)
            note.save();
        const QStringList before = lines(rows) + lines(movements);
        note.control<QLineEdit>(u"txtAspettoBeni"_s)->setText(u"Sfuso"_s);
        test::typeIntoCell(note.grid(), 0, u"Q.tà"_s, u"6"_s);
        bool crashed = false;
        connection().setStatementHook([&](const QString &sql) {
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
        note.form().DataChanged();
        note.save();
        QCOMPARE(note.flags(), u"stored"_s);
        QCOMPARE(lines(rows) + lines(movements), QStringList({u"Sfuso|TRA-0018|6"_s, u"TRA-0018|-6"_s}));
    }

    void serverLostBeforeTheSave()
    {
        const test::Document note(place(), test::deliveryNote());
        note.fillHeader();
        note.addArticle(u"TRA-0018"_s, u"7,90"_s, u"5"_s);
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

private:
    void runElsewhere(const QStringList &statements) const
    {
        test::Workstation elsewhere(server().address(), statements, u"run_sql"_s);
        if (const QString complaint = elsewhere.end(20); !complaint.isEmpty())
            throw core::Error(u"run_sql: "_s + complaint);
    }
};

static const test::Registered<TestServerDocuments> registered;

#include "test_documents.moc"

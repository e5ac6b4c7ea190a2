#include "magazzino/MMGUtils_insiemi.h"
#include "platform/core/Progress.h"
#include "tests/support/Fixtures.h"

namespace {

struct Numbering
{
    QString table;
    bool (*exists)(int, int, int);
    int (*next)(int);
};

const QList<Numbering> numberings = {{u"DDT_SCARICO"_s, DdTScaricoExists, GetNextNumeroDdTScarico},
                                     {u"BOLLE_CARICO"_s, BollaCaricoExists, GetNextNumeroBollaCarico},
                                     {u"FATT_ACC"_s, FattAccExists, GetNextNumeroFattAcc}};

const QString failure =
    u"Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!"_s;

struct Deletion
{
    QString name;
    std::function<bool(int id, bool ask)> run;
    QString table;
    QString key;
    QString rows; ///< table of the document's rows, empty for other records
    bool alwaysAsks;
    bool namesErrors;
    QString other = u"NUMERO=2"_s; ///< makes a second record differ from the first, where the table asks for it
};

const QList<Deletion> deletions = {
    {u"DeleteMovimentoMagazzino"_s, [](int id, bool) { return DeleteMovimentoMagazzino(id); }, u"MOVI_MAGA"_s,
     u"IDMOVI_MAGA"_s, QString(), true, false, u"CODICE=B"_s},
    {u"DeleteFornitore"_s, [](int id, bool) { return DeleteFornitore(id); }, u"FORNITORI"_s, u"IDFORNITORE"_s,
     QString(), true, false, u"CODICE=B"_s},
    {u"DeleteBollaCarico"_s, [](int id, bool) { return DeleteBollaCarico(id); }, u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s,
     u"BOLLE_CARICO_DETT"_s, true, false},
    {u"DeleteFatturaAccompagnatoria"_s, DeleteFatturaAccompagnatoria, u"FATT_ACC"_s, u"IDFATT_ACC"_s,
     u"FATT_ACC_DETT"_s, false, false},
    {u"DeleteDdTScarico"_s, DeleteDdTScarico, u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s, u"DDT_SCARICO_DETT"_s, false, true},
    {u"DeleteTipoTrasporto"_s, DeleteTipoTrasporto, u"TIPI_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s, QString(), false, true,
     u"TIPO_TRASPORTO=B"_s},
    {u"DeleteCausaleTrasporto"_s, DeleteCausaleTrasporto, u"CAUSALI_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s, QString(),
     false, true, u"CAUSALE_TRASPORTO=B"_s},
    {u"DeleteVettore"_s, DeleteVettore, u"VETTORI"_s, u"IDVETTORE"_s, QString(), false, true, u"CODICE=B"_s}};

} // namespace

class VerificheTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db_;

    int document(const QString &table, int number, int year = 2026)
    {
        return db_->insert(table, {{u"NUMERO"_s, number}, {u"ANNO"_s, year}});
    }

    void grant(const QString &user, const QString &right)
    {
        const int role = db_->insert(u"RUOLI_UTENTE"_s, {{u"RUOLO"_s, u"Ruolo di "_s + user}});
        db_->insert(u"UTENTI_RUOLI"_s, {{u"USER_NAME"_s, user}, {u"IDRUOLO_UTENTE"_s, role}});
        if (right.isEmpty())
            return;
        const int key = db_->insert(u"ABILITAZIONI_UTENTE"_s, {{u"ABILITAZIONE_UTENTE"_s, right}});
        db_->insert(u"ABILITAZIONI_RUOLI"_s, {{u"IDRUOLO_UTENTE"_s, role}, {u"IDABILITAZIONE_UTENTE"_s, key}});
    }

    static void addDeletions()
    {
        QStringList names;
        for (const Deletion &deletion : deletions)
            names.append(deletion.name);
        test::cases(names);
    }
    static const Deletion &current()
    {
        return *std::find_if(deletions.begin(), deletions.end(),
                             [](const Deletion &one) { return one.name == test::currentCase(); });
    }

    // A record with a row of its own and a second one that must stay. Returns the first one's key.
    int prepare(const Deletion &deletion)
    {
        const int id = db_->insert(deletion.table);
        const int other = db_->insert(deletion.table, deletion.other);
        if (!deletion.rows.isEmpty()) {
            db_->insert(deletion.rows, {{deletion.key, id}});
            db_->insert(deletion.rows, {{deletion.key, other}});
            db_->insert(u"MOVI_MAGA"_s, {{u"RIF_DOC_ID"_s, id}});
        }
        return id;
    }

    QStringList state(const Deletion &deletion)
    {
        QStringList all = db_->lines(u"SELECT %1 FROM %2 ORDER BY 1"_s.arg(deletion.key, deletion.table));
        if (!deletion.rows.isEmpty())
            all << u"rows"_s << db_->lines(u"SELECT %1 FROM %2 ORDER BY 1"_s.arg(deletion.key, deletion.rows))
                << u"movements"_s << db_->lines(u"SELECT RIF_DOC_ID FROM MOVI_MAGA"_s);
        return all;
    }

private Q_SLOTS:
    void init() { db_ = std::make_unique<test::ModuleDatabase>(); }
    void cleanup() { db_.reset(); }

    void numbersArePerYearAndGapsStay()
    {
        for (const Numbering &kind : numberings) {
            QCOMPARE(kind.next(2026), 1);
            for (const int number : {1, 7, 2})
                document(kind.table, number);
            document(kind.table, 20, 2025);
            QCOMPARE(kind.next(2026), 8);
            QCOMPARE(kind.next(2025), 21);
        }
    }

    void ownNumberIsNoDuplicate()
    {
        for (const Numbering &kind : numberings) {
            const int key = document(kind.table, 5);
            QVERIFY(kind.exists(5, 2026, -1));
            QVERIFY(!kind.exists(5, 2026, key));
            QVERIFY(kind.exists(5, 2026, key + 1));
            QVERIFY(!kind.exists(5, 2025, -1));
            QVERIFY(!kind.exists(6, 2026, -1));
        }
    }

    void sharedNumberingCountsSalesInvoices()
    {
        int year = 2020; // another one for each case
        for (const auto &[option, own, sales, expected] : {std::tuple(u"False"_s, 9, 12, 10),
                                                           {u"True"_s, 9, 12, 13},
                                                           {u"true"_s, 14, 12, 15},
                                                           {u"True"_s, 0, 0, 1},
                                                           {u"forse"_s, 9, 12, 10}}) {
            ++year;
            QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, option));
            if (own > 0)
                document(u"FATT_ACC"_s, own, year);
            if (sales > 0)
                document(u"FATT_VEND"_s, sales, year);
            QCOMPARE(GetNextNumeroFattAcc(year), expected);
        }
    }

    void sharedNumberingFindsSalesInvoices()
    {
        document(u"FATT_VEND"_s, 5);
        QVERIFY(!FattAccExists(5, 2026, -1));
        QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, u"True"_s));
        QVERIFY(FattAccExists(5, 2026, -1));
        QVERIFY(!FattAccExists(5, 2025, -1));
        // No key of the accompanying invoices says anything about a sales invoice.
        QVERIFY(FattAccExists(5, 2026, 1));
    }

    void textsAreComparedInTheDatabasesCapitals_data()
    {
        test::table<QString, QString, bool>({{"same", u"For'à"_s, u"For'à"_s, true},
                                             {"capitals", u"For'à"_s, u"FOR'À"_s, true},
                                             {"small", u"FOR'À"_s, u"for'à"_s, true},
                                             // The database compares texts as if padded with blanks.
                                             {"blank behind", u"For'à"_s, u"For'à "_s, true},
                                             {"beginning", u"For'à"_s, u"For"_s, false},
                                             {"nothing", u"For'à"_s, {}, false},
                                             // Letters that the database leaves as they are.
                                             {"sharp s", u"Straße-7"_s, u"sTRAßE-7"_s, true},
                                             {"sharp s is no ss", u"Straße-7"_s, u"STRASSE-7"_s, false},
                                             {"n with apostrophe", u"ŉ1"_s, u"ŉ1"_s, true},
                                             {"ligature", u"ﬁlo"_s, u"ﬁLO"_s, true},
                                             {"longer than any text", u"A"_s, u"A"_s + QString(300, u' '), false}});
    }
    void textsAreComparedInTheDatabasesCapitals()
    {
        const auto [stored, asked, found] = test::row<QString, QString, bool>();
        const int supplier = db_->insert(u"FORNITORI"_s, {{u"CODICE"_s, stored}});
        const int carrier = db_->insert(u"VETTORI"_s, {{u"CODICE"_s, stored}});
        const int type = db_->insert(u"TIPI_TRASPORTO"_s, {{u"TIPO_TRASPORTO"_s, stored}});
        QCOMPARE(CodiceFornitoreExists(asked, -1), found);
        QCOMPARE(CodiceVettoreExists(asked, -1), found);
        QCOMPARE(TipoTrasportoExists(asked, -1), found);
        QVERIFY(!CodiceFornitoreExists(asked, supplier) && !CodiceVettoreExists(asked, carrier) &&
                !TipoTrasportoExists(asked, type));
        db_->insert(u"UTENTI_RUOLI"_s, {{u"USER_NAME"_s, stored}, {u"IDRUOLO_UTENTE"_s, 1}});
        QCOMPARE(UserHasAbilitazione(u"Fatture acc. (modifica)"_s, asked, db_->connection()), found);
        const QString movement = u"DATA_MOVIMENTO=2026-03-01|CODICE="_s + stored;
        db_->insert(u"MOVI_MAGA"_s, movement + u"|TIPO_MOVIMENTO=Carico|QUANTITA=4|VALORE_IMPORTO=24"_s);
        db_->insert(u"MOVI_MAGA"_s, movement + u"|TIPO_MOVIMENTO=Scarico|QUANTITA=-1|VALORE_IMPORTO=-6"_s);
        QCOMPARE(GetValoreScaricoCostoMedio(asked, QDate(2026, 3, 1)), found ? 6.0 : 0.0);
        const auto issueValue = [this] {
            return db_->lines(u"SELECT VALORE FROM MOVI_MAGA WHERE TIPO_MOVIMENTO = 'Scarico'"_s).value(0).toDouble();
        };
        RivalorizzaScarichiMagazzino(asked, true);
        QCOMPARE(issueValue(), found ? 6.0 : 0.0);
        db_->connection().execute(u"UPDATE MOVI_MAGA SET VALORE = 0"_s);
        core::Progress unseen;
        RivalorizzaTuttiGliScarichi(db_->connection(), unseen);
        QCOMPARE(issueValue(), 6.0);
    }

    void customerIsFoundByItsExactCode()
    {
        const int customer = db_->insert(u"CLIENTI"_s, u"CODICE=D'A1"_s);
        QCOMPARE(GetCliente(u"D'A1"_s).id, customer);
        QCOMPARE(GetCliente(u"d'a1"_s).id, -1);
    }

    void errorsNameTheRoutineWhereIntended()
    {
        db_->connection().close();
        const QString text = u"La connessione al database non è aperta."_s;
        const QList<std::pair<QString, std::function<void()>>> named = {
            {QString(), [] { GetArticolo(1); }},
            {QString(), [] { DdTScaricoExists(1, 2026, -1); }},
            {QString(), [] { GetNextNumeroFattAcc(2026); }},
            {QString(), [] { GetUM(1); }},
            {u"GetCategoriaServizio"_s, [] { GetCategoriaServizio(1); }},
            {u"GetCliente"_s, [] { GetCliente(u"A"_s); }},
            {u"BollaCaricoExists"_s, [] { BollaCaricoExists(1, 2026, -1); }},
            {u"CodiceFornitoreExists"_s, [] { CodiceFornitoreExists(u"x"_s, -1); }},
            {u"UserHasAbilitazione"_s, [this] { UserHasAbilitazione(u"x"_s, u"x"_s, db_->connection()); }},
            {u"GetValoreScaricoCostoMedio"_s, [] { GetValoreScaricoCostoMedio(u"A"_s, QDate(2026, 1, 1)); }},
            {u"RivalorizzaScarichiMagazzino"_s, [] { RivalorizzaScarichiMagazzino(u"A"_s, true); }}};
        for (const auto &[name, routine] : named)
            QCOMPARE(test::errorOf(routine), (name.isEmpty() ? QString() : u"[%1]\n\r"_s.arg(name)) + text);
    }

    void missingOptionIsNeitherReadNorCreated()
    {
        const QStringList before = db_->lines(u"SELECT * FROM OPZIONI ORDER BY 1"_s);
        QVariant value = u"intatto"_s;
        QVERIFY(!GetOptionValue(u"MANCA"_s, value));
        QCOMPARE(value.toString(), u"intatto"_s);
        QVERIFY(!SetOptionValue(u"MANCA"_s, u"x"_s));
        QCOMPARE(db_->lines(u"SELECT * FROM OPZIONI ORDER BY 1"_s), before);
    }

    void optionErrorsAreSwallowed()
    {
        QVERIFY(!SetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, QString(300, u'x')));
        db_->connection().execute(u"DROP TABLE OPZIONI"_s);
        QVariant value = u"intatto"_s;
        QVERIFY(!GetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, value));
        QVERIFY(!SetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, u"x"_s));
        QCOMPARE(value.toString(), u"intatto"_s);
    }

    void flagIsStoredAsAWord()
    {
        for (const bool flag : {true, false}) {
            QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, flag));
            QVariant value;
            QVERIFY(GetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, value));
            QCOMPARE(value, QVariant(flag ? u"True"_s : u"False"_s));
            QCOMPARE(NumerazioneUnicaFattura(), flag);
        }
    }

    void rightsComeFromRolesOnly_data()
    {
        // granted: "-": no role at all; empty: a role without rights
        const QString right = u"Fatture acc. (modifica)"_s;
        test::table<QString, QString, QString, bool>(
            {{"granted", u"ROSSI"_s, right, right, true},
             {"user in lower case", u"rossi"_s, right, right, true},
             {"user with apostrophe", u"D'Amico"_s, right, right, true},
             {"another right", u"ROSSI"_s, u"Fatture acc. (eliminazione)"_s, right, false},
             {"trailing blank", u"ROSSI"_s, u"Fatture acc. (modifica) "_s, right, false},
             {"full control", u"ROSSI"_s, u"Controllo completo"_s, right, true},
             {"no role", u"ROSSI"_s, u"-"_s, right, false},
             {"no right asked of such a role", u"ROSSI"_s, {}, {}, false}});
    }
    void rightsComeFromRolesOnly()
    {
        const auto [user, granted, asked, expected] = test::row<QString, QString, QString, bool>();
        if (granted != u"-"_s)
            grant(user.toUpper(), granted);
        QCOMPARE(UserHasAbilitazione(asked, user, db_->connection()), expected);
    }

    void confirmedDeletionTakesTheRecordAndItsRowsOnly_data() { addDeletions(); }
    void confirmedDeletionTakesTheRecordAndItsRowsOnly()
    {
        const Deletion &deletion = current();
        const int id = prepare(deletion);
        const QStringList before = state(deletion);
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        messages.expectQuestion(test::deleting, core::Answer::No);
        QVERIFY(!deletion.run(id, true));
        QCOMPARE(state(deletion), before);
        messages.expectQuestion(test::deleting, core::Answer::Yes);
        QVERIFY(deletion.run(id, true));
        const QStringList after = deletion.rows.isEmpty()
                                      ? QStringList(u"2"_s)
                                      : QStringList({u"2"_s, u"rows"_s, u"2"_s, u"movements"_s, u"1"_s});
        QCOMPARE(state(deletion), after);
    }

    void refusedHeaderBringsTheRowsBack_data() { addDeletions(); }
    void refusedHeaderBringsTheRowsBack()
    {
        const Deletion &deletion = current();
        const int id = prepare(deletion);
        const QStringList before = state(deletion);
        db_->connection().execute(u"CREATE EXCEPTION REFUSED 'no'"_s);
        db_->connection().execute(
            u"CREATE TRIGGER REFUSE FOR %1 BEFORE DELETE AS BEGIN EXCEPTION REFUSED; END"_s.arg(deletion.table));
        test::ScriptedMessages messages;
        messages.watch(db_->connection());
        messages.expectQuestion(test::deleting, core::Answer::Yes);
        messages.expectError(failure);
        QVERIFY(!deletion.run(id, true));
        QCOMPARE(state(deletion), before);
    }

    void errorsOutsideTheTransactionReachTheCaller_data() { addDeletions(); }
    void errorsOutsideTheTransactionReachTheCaller()
    {
        const Deletion &deletion = current();
        const data::Transaction running(db_->connection());
        // Without being told to ask, only those ask that always do.
        test::ScriptedMessages messages;
        if (deletion.alwaysAsks)
            messages.expectQuestion(test::deleting, core::Answer::Yes);
        const QString prefix = deletion.namesErrors ? u"[%1]\n\r"_s.arg(deletion.name) : QString();
        QCOMPARE(test::errorOf([&] { deletion.run(1, false); }), prefix + u"Una transazione è già in corso."_s);
    }

    void transportRecordsInUseStay_data() { test::cases({u"BOLLE_CARICO"_s, u"DDT_SCARICO"_s, u"FATT_ACC"_s}); }
    void transportRecordsInUseStay()
    {
        QVERIFY(CanDeleteCausaleTrasporto(3));
        db_->insert(u"CAUSALI_TRASPORTO"_s);
        db_->insert(u"TIPI_TRASPORTO"_s);
        db_->insert(test::currentCase(), u"IDCAUSALE_TRASPORTO=3|IDTIPO_TRASPORTO=4"_s);
        QVERIFY(!CanDeleteCausaleTrasporto(3));
        QVERIFY(CanDeleteCausaleTrasporto(4));
        QVERIFY(!CanDeleteTipoTrasporto(4));
        QVERIFY(CanDeleteTipoTrasporto(3));
    }

    void suppliersWithReceiptNotesStay()
    {
        const int used = db_->insert(u"FORNITORI"_s, {{u"CODICE"_s, u"D'A"_s}});
        const int unused = db_->insert(u"FORNITORI"_s, {{u"CODICE"_s, u"B"_s}});
        db_->insert(u"BOLLE_CARICO"_s, {{u"FOR_CODICE"_s, u"D'A"_s}});
        QVERIFY(!CanDeleteFornitore(used));
        QVERIFY(!CanDeleteFornitore(u"D'A"_s));
        QVERIFY(CanDeleteFornitore(unused));
        QVERIFY(CanDeleteFornitore(u"B"_s));
    }

    void onlyInvoicesKeepACarrier()
    {
        const int note = db_->insert(u"VETTORI"_s, {{u"CODICE"_s, u"A"_s}});
        const int invoice = db_->insert(u"VETTORI"_s, {{u"CODICE"_s, u"B"_s}});
        db_->insert(u"DDT_SCARICO"_s, {{u"VETT_CODICE"_s, u"A"_s}});
        db_->insert(u"FATT_ACC"_s, {{u"VETT_CODICE"_s, u"B"_s}});
        QVERIFY(CanDeleteVettore(note));
        QVERIFY(!CanDeleteVettore(invoice));
        db_->connection().close();
        QCOMPARE(test::errorOf([] { CanDeleteVettore(1); }),
                 u"[CanDeleteVettore]\n\rLa connessione al database non è aperta."_s);
        QCOMPARE(test::errorOf([] { CanDeleteFornitore(1); }), u"La connessione al database non è aperta."_s);
        QVERIFY(CanDeleteMovimentoMagazzino(1) && CanDeleteBollaCarico(1));
    }
};

static const test::Registered<VerificheTest> registered;

#include "test_verifiche.moc"

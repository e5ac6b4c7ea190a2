#include "magazzino/ui/EntryLine.h"
#include "platform/core/Barcode.h"
#include "platform/ui/Bell.h"
#include "tests/support/Fixtures.h"

// Rows typed in the line under the grid, key by key, in the time that fingers and barcode readers take.
class TestEntryLine : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        core::setClock([this] { return test::workplaceTime().addMSecs(time_); });
        keys_ = beeps_ = 0;
        ui::setBell([this] { ++beeps_; });
    }
    void cleanup() override
    {
        ui::setBell({});
        AtWorkplace::cleanup();
    }

    void receiptOfFiveRows()
    {
        const test::Document receipt = open(test::receipt());
        receipt.fillHeader();
        receipt.form().setFocus();
        const int dialogs = 2; // supplier and transport type
        keys_ = 0;
        press(Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(focus(), u"txtRigaCodice"_s);
        const auto typeAndAdd = [&](const QString &text) {
            type(text);
            press(Qt::Key_Return, Qt::ControlModifier);
        };
        typeAndAdd(u"tra 18\n3"_s);  // words of code and description, the quantity, the proposed cost
        typeAndAdd(u"5*sma-07"_s);   // the quantity before a part of the code
        typeAndAdd(u"4 tra-0055"_s); // and before the whole code
        type(u"tra-0012\n\n\n"_s);   // one piece
        type(u"sma-25\n10\n2,5\n"_s);
        QCOMPARE(focus(), u"txtRigaCodice"_s);
        QCOMPARE(receipt.shown(u"txtRigaCodice"_s), u""_s);
        press(Qt::Key_S, Qt::ControlModifier);
        qInfo("keys receipt 5 rows: %d, dialogs %d (of the header)", keys_, dialogs);

        QCOMPARE(receipt.flags(), u"stored"_s);
        QCOMPARE(lines(u"SELECT CODICE, QUANTITA, COSTO FROM BOLLE_CARICO_DETT ORDER BY 1, 2"_s),
                 lines(u"SELECT CODICE, QUANTITA, COSTO FROM MOVI_MAGA WHERE RIF_DOC_TIPO = 'Bolla di carico' AND "
                       "RIF_DOC_ID = (SELECT MAX(IDBOLLA_CARICO) FROM BOLLE_CARICO) ORDER BY 1, 2"_s));
        QCOMPARE(codes(receipt),
                 QStringList({u"TRA-0018"_s, u"SMA-0750"_s, u"TRA-0055"_s, u"TRA-0012"_s, u"SMA-2500"_s}));
        QCOMPARE(quantities(receipt), QStringList({u"3,00"_s, u"5,00"_s, u"4,00"_s, u"1,00"_s, u"10,00"_s}));
        QCOMPARE(test::cellText(receipt.grid(), 4, u"Costo"_s), u"€ 2,50"_s);
        // What came in is on hand.
        type(u"sma"_s);
        QTRY_COMPARE(test::columnTexts(list(receipt), u"Giacenza"_s).mid(0, 4),
                     QStringList({u"0,00"_s, u"0,00"_s, u"5,00"_s, u"10,00"_s}));
    }

    void rowIsTheOneOfTheCommand_data() { test::eachKind(); }

    void rowIsTheOneOfTheCommand()
    {
        const test::Document document = open(test::kindOfRow());
        document.choose(u"actAggiungiArticolo"_s, test::choosingArticle(u"SMA-2500"_s));
        press(Qt::Key_I, Qt::ControlModifier);
        type(u"SMA-2500\n\n\n"_s);
        const QList<DocumentRow> &rows = document.grid()->rowsModel().rows();
        QCOMPARE(rows.size(), 2);
        const auto values = [&](const DocumentRow &row) {
            return std::tuple(row.tipo, row.codice, row.descrizione, row.idCategoria, row.costo, row.prezzo, row.sconto,
                              row.quantita, row.importo, row.idAliquotaIVA, row.codiceIVA, row.idUM, row.um);
        };
        QCOMPARE(values(rows[1]), values(rows[0]));

        const bool isInvoice = &test::kindOfRow() == &test::accompanyingInvoice();
        // F4 opens the same dialog; what is chosen there stands in the line.
        place().dialogs.expect(test::choosingArticle(u"TRA-0018"_s));
        press(Qt::Key_F4);
        QCOMPARE(focus(), u"txtRigaQuantita"_s);
        type(u"2\n"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focus(), isInvoice ? u"txtRigaSconto"_s : u"txtRigaCodice"_s);
        if (isInvoice)
            type(u"10\n"_s);
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows[2].codice, u"TRA-0018"_s);
        QCOMPARE(rows[2].sconto, isInvoice ? std::optional(10.0) : std::nullopt);
        QCOMPARE(document.flags(), u"new modified"_s);
    }

    void textsFind_data()
    {
        test::table<QString, QStringList>(
            {{"first character", u"sma-"_s, {u"SMA-0125"_s, u"SMA-0500"_s, u"SMA-0750"_s}},
             {"inside the code", u"A-0018"_s, {u"TRA-0018"_s}},
             {"words, any order", u"batteria trap"_s, {u"TRA-0012"_s, u"TRA-0018"_s}},
             {"after a quantity", u"12*sma-07"_s, {u"SMA-0750"_s}},
             {"nothing", u"qqq"_s, {}}});
    }

    void textsFind()
    {
        const auto [text, found] = test::row<QString, QStringList>();
        const test::Document receipt = open(test::receipt());
        type(text);
        QCOMPARE(test::columnTexts(list(receipt), u"Codice"_s).mid(0, found.size()), found);
        QCOMPARE(list(receipt)->isVisible(), !found.isEmpty());
        QTRY_VERIFY(found.isEmpty() || !test::cellText(list(receipt), 0, u"Giacenza"_s).isEmpty());
        if (found.size() < 2)
            return;
        press(Qt::Key_Down);
        press(Qt::Key_Tab);
        QCOMPARE(receipt.shown(u"txtRigaCodice"_s), found[1]);
        QVERIFY(list(receipt)->isHidden());
    }

    void servicesAndTexts()
    {
        const test::Document note = open(test::deliveryNote());
        type(u"2*/consegna piano\n\n"_s);
        type(u"Merce in conto visione"_s);
        QVERIFY(!list(note)->current()); // only when asked
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QCOMPARE(focus(), u"txtRigaCodice"_s);
        QCOMPARE(test::columnTexts(note.grid(), u"Descrizione"_s),
                 QStringList({u"Consegna al piano"_s, u"Merce in conto visione"_s}));
        QCOMPARE(note.grid()->rowsModel().rows()[0].tipo, tipoRiga::servizio);
        QCOMPARE(note.grid()->rowsModel().rows()[0].quantita, 2);
        QCOMPARE(note.grid()->rowsModel().rows()[1].tipo, tipoRiga::testo);

        const test::Document receipt = open(test::receipt());
        type(u"Merce in conto visione"_s);
        press(Qt::Key_Down);
        type(u"\n"_s);
        QCOMPARE(receipt.grid()->rowsModel().rowCount(), 0);
    }

    void unknownCodeIsRefused()
    {
        const test::Document note = open(test::deliveryNote());
        type(u"8001234567890\n"_s);
        QCOMPARE(note.shown(u"lblRigaDescrizione"_s), u"Non trovato: 8001234567890"_s);
        QCOMPARE(focus(), u"txtRigaCodice"_s);
        QVERIFY(isRed(note) && beeps_ == 1);
        QVERIFY(!note.control<QWidget>(u"txtRigaQuantita"_s)->isEnabled());
        type(u"tra-0018\n"_s); // over it
        QVERIFY(!isRed(note) && beeps_ == 1);
        type(u"\n\n"_s);
        QCOMPARE(codes(note), QStringList{u"TRA-0018"_s});
        // An article that another workstation has just made is not in the list, but its code is known.
        type(u"nuovo-9\n"_s);
        database().execute(u"UPDATE ANA_MAGA SET CODICE = 'NUOVO-9' WHERE CODICE = 'TRA-0012'"_s);
        type(u"nuovo-9\n\n\n"_s);
        QCOMPARE(codes(note), QStringList({u"TRA-0018"_s, u"NUOVO-9"_s}));
    }

    void numbersAreThoseOfTheCells()
    {
        const test::Document note = open(test::deliveryNote());
        type(u"tra-0018\n0\n\n"_s);
        QCOMPARE(note.shown(u"lblRigaDescrizione"_s), u"La quantità deve essere maggiore di zero."_s);
        QCOMPARE(focus(), u"txtRigaQuantita"_s);
        type(u"1.5\n1,234\n"_s);
        QCOMPARE(note.shown(u"lblRigaDescrizione"_s), u"\"1,234\" ha più di due decimali."_s);
        QCOMPARE(note.grid()->rowsModel().rowCount(), 0);
        type(u"10\n"_s);
        QCOMPARE(quantities(note), QStringList{u"1,50"_s});
        QCOMPARE(test::cellText(note.grid(), 0, u"Importo"_s), u"€ 15,00"_s);
    }

    void escapeAndNewRecordForget()
    {
        const test::Document note = open(test::deliveryNote());
        type(u"tra-0018\n7"_s);
        press(Qt::Key_Escape);
        QCOMPARE(focus(), u"txtRigaCodice"_s);
        QCOMPARE(note.shown(u"txtRigaCodice"_s) + note.shown(u"txtRigaQuantita"_s), u""_s);
        type(u"tra-0018\n7"_s);
        QCOMPARE(note.flags(), u"new"_s); // it is no row yet
        note.trigger(u"actNuovo"_s);
        QCOMPARE(note.shown(u"txtRigaCodice"_s) + note.shown(u"txtRigaQuantita"_s), u""_s);
    }

    void standsUnderItsColumns_data() { test::eachKind(); }

    void standsUnderItsColumns()
    {
        const test::Document document = open(test::kindOfRow());
        const auto compare = [&] {
            for (const auto &[name, header] :
                 {std::pair(u"txtRigaCodice"_s, u"Codice"_s), std::pair(u"txtRigaQuantita"_s, u"Q.tà"_s),
                  std::pair(u"txtRigaPrezzo"_s, test::kindOfRow().priceHeader)}) {
                const auto *input = document.control<QWidget>(name);
                const int column = test::columnOf(document.grid(), header);
                QCOMPARE(input->width(), document.grid()->columnWidth(column));
                QCOMPARE(input->mapToGlobal(QPoint()).x(), document.grid()->viewport()->mapToGlobal(QPoint()).x() +
                                                               document.grid()->columnViewportPosition(column));
            }
        };
        compare();
        document.form().window()->resize(900, 600);
        test::settle();
        type(u"tra-0018\n1\n99999999\n"_s); // the numbers' columns grow
        compare();
    }

    // Twenty at a time wait in the queue while the first ones are looked up, 1 ms from key to key. SCANS sets how many.
    void scansAreAdded()
    {
        addBarcodes();
        const test::Document note = open(test::deliveryNote());
        const QStringList articles = {u"TRA-0018"_s, u"SMA-0750"_s, u"TRA-0055"_s};
        struct Scan
        {
            QString keys;
            int article; // -1 for none
            double pieces;
        };
        const QChar gs = core::groupSeparator;
        const QList<Scan> scans = {{articles[0], 0, 1},
                                   {u"8001120000019"_s, 0, 1},
                                   {u"]C10108001120000019"_s + u"10LOTTO 1"_s + gs + u"3012"_s, 0, 12},
                                   {u"80012345"_s, -1, 0},
                                   {u"012345678905"_s, 1, 6},
                                   {u"0012345678905"_s, 1, 6},
                                   {u"0100012345678905372"_s, 1, 12},
                                   {u"010800112000001837"_s, -1, 0},
                                   {u"conf-12/x"_s, 2, 12},
                                   {u"3*conf-12/x"_s, 2, 36},
                                   {u"5 tra-0055"_s, 2, 5}};
        const int count = qEnvironmentVariableIsSet("SCANS") ? qEnvironmentVariableIntValue("SCANS") : 400;
        QList<double> pieces(articles.size(), 0);
        int wrong = 0;
        for (int i = 0; i < count; ++i) {
            // No two ones that follow each other are always the same.
            const Scan &scan = scans[(i + i / scans.size()) % scans.size()];
            postScan(scan.keys);
            wrong += scan.article < 0 ? 1 : 0;
            if (scan.article >= 0)
                pieces[scan.article] += scan.pieces;
            if (i % 20 < 19 && i + 1 < count)
                continue;
            test::settle();
            QCOMPARE(note.shown(u"lblRigaDescrizione"_s).startsWith(u"Non trovato"_s), scan.article < 0);
            QVERIFY(isRed(note) == (scan.article < 0) && beeps_ == wrong);
            QCOMPARE(focus(), u"txtRigaCodice"_s);
        }
        QCOMPARE(codes(note), articles);
        for (int i = 0; i < articles.size(); ++i)
            QCOMPARE(note.grid()->rowsModel().rows()[i].quantita.value_or(0), pieces[i]);

        // At another price it is another row, and the command always makes one.
        test::typeIntoCell(note.grid(), 0, u"Prezzo"_s, u"1"_s);
        press(Qt::Key_I, Qt::ControlModifier);
        scan(u"tra-0018"_s);
        note.choose(u"actAggiungiArticolo"_s, test::choosingArticle(u"SMA-0750"_s));
        QCOMPARE(codes(note), articles + QStringList({u"TRA-0018"_s, u"SMA-0750"_s}));
    }

    // For readers that are as slow as fingers: whatever is typed counts as scanned.
    void switchMakesEverythingAScan()
    {
        addBarcodes();
        const test::Document receipt = open(test::receipt());
        const test::Document note = open(test::deliveryNote());
        type(u"0000123456\n"_s);
        QCOMPARE(beeps_, 1);
        press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        for (const test::Document *document : {&note, &receipt})
            QVERIFY(document->control<QCheckBox>(u"chkLettore"_s)->isChecked());
        type(u"012345678905\ntra-0018\ntra-00\n"_s);
        QCOMPARE(quantities(note), QStringList({u"6,00"_s, u"1,00"_s}));
        QCOMPARE(beeps_, 2);
        QVERIFY(isRed(note) && list(note)->isHidden());
        // Also what is scanned over a list that was asked for.
        press(Qt::Key_Down);
        QVERIFY(list(note)->isVisible());
        type(u"sma-0750\n"_s);
        QCOMPARE(quantities(note), QStringList({u"7,00"_s, u"1,00"_s}));
        press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        // By hand it is offered, and the quantity counts the pieces.
        type(u"1234567"_s);
        QCOMPARE(test::columnTexts(list(note), u"Codice"_s), QStringList(u"SMA-0750"_s));
        press(Qt::Key_Escape);
        type(u"2*012345678905\n\n"_s);
        QCOMPARE(quantities(note), QStringList({u"7,00"_s, u"1,00"_s, u"12,00"_s}));
        type(u"0,333*012345678905\n\n"_s);
        QCOMPARE(note.shown(u"lblRigaDescrizione"_s), u"\"1,998\" ha più di due decimali."_s);
    }

    void scanIntoANumberIsAScan()
    {
        const test::Document note = open(test::deliveryNote());
        type(u"tra-0018\n4"_s);
        scan(u"SMA-0750"_s);
        QCOMPARE(codes(note), QStringList({u"TRA-0018"_s, u"SMA-0750"_s}));
        QCOMPARE(quantities(note), QStringList({u"4,00"_s, u"1,00"_s}));
        type(u"tra-0055\n"_s);
        scan(u"8001234567890"_s);
        QCOMPARE(quantities(note), QStringList({u"4,00"_s, u"1,00"_s, u"1,00"_s}));
        QCOMPARE(note.shown(u"lblRigaDescrizione"_s), u"Non trovato: 8001234567890"_s);
    }

private:
    static constexpr int finger = 80; // ms between two keys
    static constexpr int reader = 1;

    /// With the focus in the line.
    test::Document open(const test::DocumentNames &names)
    {
        test::Document document(place(), names);
        document.form().setFocus();
        press(Qt::Key_I, Qt::ControlModifier);
        return document;
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        time_ += finger;
        ++keys_;
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        test::settle();
    }

    void type(const QString &text, int pause = finger)
    {
        for (const QChar character : text) {
            time_ += pause;
            ++keys_;
            if (character == u'\n')
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            else
                QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
        }
        test::settle();
    }

    void addBarcodes() const
    {
        for (const auto &[article, code, pieces] : {std::tuple(u"TRA-0018"_s, u"8001120000019"_s, 1),
                                                    {u"SMA-0750"_s, u"012345678905"_s, 6},
                                                    {u"TRA-0055"_s, u"CONF-12/X"_s, 12}})
            test::insertInto(
                database(), u"BARCODE_ARTICOLI"_s,
                u"CODICE=%1|PEZZI=%2|IDANA_MAGA=%3"_s.arg(code).arg(pieces).arg(
                    lines(u"SELECT IDANA_MAGA FROM ANA_MAGA WHERE CODICE = '%1'"_s.arg(article)).value(0)));
    }

    /// As the platform hands a reader's keys over: to the window, however busy the program is.
    void postScan(const QString &code)
    {
        QWindow *window = QApplication::activeWindow()->windowHandle();
        for (const QChar character : code + u'\r') {
            const bool isEnd = character == u'\r';
            const bool separates = character == core::groupSeparator;
            const int key = isEnd       ? int(Qt::Key_Return)
                            : separates ? int(Qt::Key_BracketRight)
                                        : character.toUpper().unicode();
            auto *press = new QKeyEvent(QEvent::KeyPress, key, separates ? Qt::ControlModifier : Qt::NoModifier,
                                        QString(character));
            press->setTimestamp(static_cast<quint64>(time_ += reader));
            QCoreApplication::postEvent(window, press);
        }
    }

    void scan(const QString &code)
    {
        time_ += 500;
        type(code + u'\n', reader);
    }

    static QString focus() { return QApplication::focusWidget()->objectName(); }
    /// Is what the line says a refusal, in red?
    static bool isRed(const test::Document &document)
    {
        const auto *told = document.control<QWidget>(u"lblRigaDescrizione"_s);
        const QColor colour = told->palette().color(told->foregroundRole());
        return colour.red() > 2 * colour.green() && colour.red() > 2 * colour.blue();
    }
    static EntryList *list(const test::Document &document) { return document.control<EntryList>(u"gridRigaElenco"_s); }
    static QStringList codes(const test::Document &document) { return test::columnTexts(document.grid(), u"Codice"_s); }
    static QStringList quantities(const test::Document &document)
    {
        return test::columnTexts(document.grid(), u"Q.tà"_s);
    }

    qint64 time_ = 0; // ms since the start
    int keys_ = 0;
    int beeps_ = 0;
};

static const test::Registered<TestEntryLine> registered;
#include "test_entry_line.moc"

#include "magazzino/documents/RigheAppunti.h"
#include "tests/support/Fixtures.h"

// Documents and rows of them that are copied, and rows that come from a spreadsheet.
class TestCopies : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        // Whoever looks at it finds it moved on: fingers, no barcode reader.
        core::setClock([this] { return test::workplaceTime().addMSecs(time_ += 40); });
    }

    void cleanup() override
    {
        ui::setSaveFileChooser({});
        AtWorkplace::cleanup();
    }

    void documentIsDuplicated_data() { test::eachKind({u"current"_s, u"own"_s}); }

    void documentIsDuplicated()
    {
        const test::Document document(place(), test::kindOfRow());
        document.fillHeader();
        test::typeOver(document.control<QWidget>(u"txtNumero"_s), u"7"_s);
        test::typeOver(document.control<QWidget>(u"txtData"_s), u"02/03/2026"_s);
        document.addArticle(u"TRA-0018"_s, u"5"_s, u"3"_s);
        document.addArticle(u"SMA-0750"_s, u"4"_s, u"2"_s);
        auto *paid = document.form().findChild<QCheckBox *>(u"chkPagato"_s);
        auto *started = document.form().findChild<QCheckBox *>(u"chkInizioTrasporto"_s);
        for (QCheckBox *mark : {paid, started}) {
            if (mark)
                mark->click();
        }
        place().messages.expectWarning(u"Il documento va prima salvato!"_s);
        document.trigger(u"actDuplica"_s);
        document.save();
        if (QAction *pdf = document.form().command(u"actSalvaPDF"_s)) {
            ui::setSaveFileChooser(
                [this](QWidget *, const ui::SaveFileRequest &) { return folder_.filePath(u"a.pdf"_s); });
            pdf->trigger();
            QVERIFY(document.shown(u"lblStampato"_s).startsWith(u"Stampato il"_s));
        }
        database().execute(u"UPDATE ANA_MAGA SET PREZZO = 77, COSTO = 77 WHERE CODICE = 'TRA-0018'"_s);
        database().execute(u"DELETE FROM ANA_MAGA WHERE CODICE = 'SMA-0750'"_s);
        // Of another article: the document means the code of its own.
        addBarcode(u"SMA-0750"_s, u"TRA-0018"_s);

        expectQuestion(core::Answer::Cancel);
        document.trigger(u"actDuplica"_s);
        QCOMPARE(document.flags(), u"stored"_s);
        const bool current = test::caseOfRow() == u"current"_s;
        expectQuestion(current ? core::Answer::Yes : core::Answer::No);
        place().messages.expectPart(u"Errore"_s, u"rifiutato"_s, core::Answer::Ok);
        test::refusing(
            connection(), [](const QString &sql) { return sql.contains(u"MAX(NUMERO)"_s); },
            [&] { document.trigger(u"actDuplica"_s); });
        QCOMPARE(document.flags() + document.shown(u"txtNumero"_s), u"stored7"_s);
        // From the list it is the same command.
        const QString action = QString(test::kindOfRow().action).replace(u"Inserimento"_s, u"Ricerca"_s);
        ui::SearchForm *list = openList(action);
        test::press(list, u"cmdCerca"_s);
        gridOf(*list)->selectRow(0);
        test::typeOver(document.control<QWidget>(u"txtNote"_s), u"Fragile"_s);
        place().messages.expectQuestion(test::unsaved, core::Answer::No);
        test::trigger(list, u"actDuplica"_s);
        QCOMPARE(document.flags(), u"stored modified"_s);
        document.save();
        const QStringList before = lines(u"SELECT * FROM "_s + test::kindOfRow().table);
        expectQuestion(current ? core::Answer::Yes : core::Answer::No);
        test::trigger(list, u"actDuplica"_s);

        QCOMPARE(document.flags() + document.shown(u"lblStampato"_s), u"new modified"_s);
        QCOMPARE(document.shown(u"txtNumero"_s) + u'|' + document.shown(u"txtData"_s), u"8|16/03/2026"_s);
        QCOMPARE(test::columnTexts(document.grid(), test::kindOfRow().priceHeader),
                 QStringList({current ? u"€ 77,00"_s : u"€ 5,00"_s, u"€ 4,00"_s}));
        QVERIFY(!(paid && paid->isChecked()) && !(started && started->isChecked()));
        document.save();
        QCOMPARE(document.flags(), u"stored"_s);
        const QStringList after = lines(u"SELECT * FROM "_s + test::kindOfRow().table);
        QCOMPARE(after.size(), before.size() + 1);
        QCOMPARE(after.mid(0, before.size()), before);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s), QStringList(u"4"_s));
    }

    void rowsPassThroughTheClipboard()
    {
        const test::Document note = open(test::deliveryNote());
        test::strike(u"3*tra-0018^2*/consegna piano^-Merce in visione"_s);
        test::pressKey(Qt::Key_Down);
        test::strike(u"\n1*sma-0750^"_s);
        QCOMPARE(selected(note), 1);
        test::typeIntoCell(note.grid(), 0, u"Prezzo"_s, u"9,5"_s);
        // One cell is its text, as ever.
        note.grid()->setFocus();
        note.grid()->setCurrentIndex(note.grid()->model()->index(0, 1));
        // Nor is a row that was moved and brought back another one, though Ctrl is held.
        test::pressKey(Qt::Key_Down, Qt::ControlModifier);
        test::pressKey(Qt::Key_Up, Qt::ControlModifier);
        test::pressKey(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), test::cellText(note.grid(), 0, u"Descrizione"_s));
        test::pressKey(Qt::Key_A, Qt::ControlModifier);
        test::pressKey(Qt::Key_C, Qt::ControlModifier);
        const QStringList copied = QGuiApplication::clipboard()->text().split(u'\n');
        QCOMPARE(copied.size(), 4);
        QVERIFY2(copied[0].startsWith(u"TRA-0018\t"_s) && copied[0].endsWith(u"\t3,00\t9,50\t"_s),
                 qPrintable(copied[0]));
        QCOMPARE(copied[2], u"\t'-Merce in visione\t\t\t"_s); // no formula

        // All of them go into the same document, only articles into a receipt, at its own price.
        test::pressKey(Qt::Key_V, Qt::ControlModifier);
        const QList<DocumentRow> &rows = note.grid()->rowsModel().rows();
        QCOMPARE(rows.size(), 8);
        QCOMPARE(selected(note), 1);
        QCOMPARE(rows[4].prezzo, 9.5);
        QCOMPARE(rows[5].tipo, tipoRiga::servizio);
        QCOMPARE(rows[6].descrizione, u"-Merce in visione"_s);
        database().execute(u"UPDATE ANA_MAGA SET CODICE = 'ALTRO' WHERE CODICE = 'SMA-0750'"_s);
        addBarcode(u"SMA-0750"_s, u"ALTRO"_s);
        const test::Document receipt = open(test::receipt());
        receipt.grid()->setFocus();
        QStringList told;
        place().dialogs.expect([&told](QDialog &dialog) {
            told = test::columnTexts(dialog.findChild<QTableView *>(), u"Esito"_s);
            test::press(&dialog, u"cmdOk"_s);
        });
        test::pressKey(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(told, QStringList({u"Trovata"_s, u"Codice non trovato."_s,
                                    u"Questo documento non ha righe di questo tipo."_s, u"Codice non trovato."_s}));
        QCOMPARE(test::columnTexts(receipt.grid(), u"Codice"_s), QStringList(u"TRA-0018"_s));
        QCOMPARE(receipt.flags(), u"new modified"_s);
    }

    void spreadsheetsAreRead_data()
    {
        // read: "code quantity price discount" of each row, "!" for one that cannot be read
        test::columns<QString, QString>("text", "read");
        QTest::newRow("codes") << u"A\r\nB\r\n"_s << u"A - - -|B - - -"_s;
        QTest::newRow("Italian") << u"A\t1.234\t€ 1.234,50\nB\t2\t0,5"_s << u"A 1234 1234.5 -|B 2 0.5 -"_s;
        QTest::newRow("decimal points") << u"A\t1.5\t1,234.50\nB\t2\t.5"_s << u"A 1.5 1234.5 -|B 2 0.5 -"_s;
        QTest::newRow("titles, words, discount")
            << u"Codice\tDescrizione\tQ.tà\tPrezzo\tSconto\nA\tVite 8\t3\t2\t10\nB\t\"Due\nrighe\"\t4\t\t"_s
            << u"A 3 2 10|B 4 - -"_s;
        QTest::newRow("one that is no number") << u"A\t1\nB\tx\nC\t3"_s << u"A 1 - -|!|C 3 - -"_s;
        QTest::newRow("kept from being a formula") << u"'-A\t2"_s << u"-A 2 - -"_s;
        QTest::newRow("nothing") << u"\n\t\n"_s << QString();
    }

    void spreadsheetsAreRead()
    {
        const auto [text, read] = test::row<QString, QString>();
        QStringList found;
        for (const RigaLetta &row : righeDaTesto(text)) {
            const auto shown = [](const std::optional<double> &number) {
                return number ? QString::number(*number) : u"-"_s;
            };
            found.append(
                row.problema.isEmpty()
                    ? QStringList{row.codice, shown(row.quantita), shown(row.prezzo), shown(row.sconto)}.join(u' ')
                    : u"!"_s);
        }
        QCOMPARE(found.join(u'|'), read);
    }

    void spreadsheetRowsAreShownFirst()
    {
        addBarcode(u"CONF"_s, u"SMA-0750"_s);
        const test::Document receipt = open(test::receipt());
        receipt.grid()->setFocus();
        QGuiApplication::clipboard()->setText(u"tra-0018\t2\t1,5\nmanca\t1\t1\nconf\t2\t3\ntra-0018\t1\t1,234\n"_s);
        QStringList told;
        for (const bool accepts : {false, true}) {
            place().dialogs.expect([&told, accepts](QDialog &dialog) {
                told = test::columnTexts(dialog.findChild<QTableView *>(), u"Esito"_s);
                test::press(&dialog, accepts ? u"cmdOk"_s : u"cmdAnnulla"_s);
            });
            test::pressKey(Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(told, QStringList({u"Trovata"_s, u"Codice non trovato."_s, u"Trovata"_s,
                                        u"\"1,234\" ha più di due decimali."_s}));
            QCOMPARE(receipt.grid()->model()->rowCount(), accepts ? 2 : 0);
        }
        QCOMPARE(test::columnTexts(receipt.grid(), u"Q.tà"_s), QStringList({u"2,00"_s, u"12,00"_s}));
        QCOMPARE(test::columnTexts(receipt.grid(), u"Costo"_s), QStringList({u"€ 1,50"_s, u"€ 3,00"_s}));
        QGuiApplication::clipboard()->clear();
        place().messages.expectWarning(
            u"Negli appunti non ci sono righe.\n\rDa un foglio di calcolo: codice, quantità, prezzo."_s);
        test::pressKey(Qt::Key_V, Qt::ControlModifier);
    }

private:
    /// With the focus in the line of the next row.
    test::Document open(const test::DocumentNames &names)
    {
        test::Document document(place(), names);
        document.form().setFocus();
        test::pressKey(Qt::Key_I, Qt::ControlModifier);
        return document;
    }
    static qsizetype selected(const test::Document &document)
    {
        return document.grid()->selectionModel()->selectedIndexes().size();
    }
    void addBarcode(const QString &barcode, const QString &article) const
    {
        const QString key = lines(u"SELECT IDANA_MAGA FROM ANA_MAGA WHERE CODICE = '%1'"_s.arg(article)).value(0);
        test::insertInto(database(), u"BARCODE_ARTICOLI"_s,
                         {{u"CODICE"_s, barcode}, {u"PEZZI"_s, 6}, {u"IDANA_MAGA"_s, key}});
    }
    void expectQuestion(core::Answer answer)
    {
        place().messages.expect(u"Duplica"_s,
                                u"Riprendere i prezzi attuali degli articoli?\n\rNo lascia quelli del documento."_s,
                                core::MessageIcon::Question, answer);
    }

    QTemporaryDir folder_;
    qint64 time_ = 0; // ms since the start
};

static const test::Registered<TestCopies> registered;
#include "test_copies.moc"

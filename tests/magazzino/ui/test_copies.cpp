#include "magazzino/documents/RigheAppunti.h"
#include "tests/support/Fixtures.h"

// Documents and rows of them that are copied, rows that come from a spreadsheet, and what is said of the stock
// meanwhile.
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
        ui::SearchForm *list = openList(QString(test::kindOfRow().action).replace(u"Inserimento"_s, u"Ricerca"_s));
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
        test::table<QString, QString>(
            {// read: "code quantity price discount" of each row, "!" for one that cannot be read
             {"codes", u"A\r\nB\r\n"_s, u"A - - -|B - - -"_s},
             {"Italian", u"A\t1.234\t€ 1.234,50\nB\t2\t0,5"_s, u"A 1234 1234.5 -|B 2 0.5 -"_s},
             {"decimal points", u"A\t1.5\t1,234.50\nB\t2\t.5"_s, u"A 1.5 1234.5 -|B 2 0.5 -"_s},
             {"titles, words, discount",
              u"Codice\tDescrizione\tQ.tà\tPrezzo\tSconto\nA\tVite 8\t3\t2\t10\nB\t\"Due\nrighe\"\t4\t\t"_s,
              u"A 3 2 10|B 4 - -"_s},
             {"one that is no number", u"A\t1\nB\tx\nC\t3"_s, u"A 1 - -|!|C 3 - -"_s},
             {"kept from being a formula", u"'-A\t2"_s, u"-A 2 - -"_s},
             {"nothing", u"\n\t\n"_s, {}}});
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

    void tellsTheRowOneStandsOn_data()
    {
        const QString told = u"TRA-0018 · giacenza 20,00 · questo documento %1 · costo medio € %2 · "
                             "ultimo acquisto € 4,00 il 10/03/2026"_s;
        test::table<QString, QString>(
            {{"note today", {}, told.arg(u"-5,00 · resta 15,00"_s, u"3,00"_s)},
             {"note earlier", u"05/03/2026"_s, told.arg(u"-5,00 · resta 15,00 (al 05/03/2026: 5,00)"_s, u"2,00"_s)},
             {"receipt today", {}, told.arg(u"5,00 · resta 25,00"_s, u"3,00"_s)}});
    }
    void tellsTheRowOneStandsOn()
    {
        stockUp();
        const auto [date, told] = test::row<QString, QString>();
        const test::Document document(place(), test::documentNames(test::currentCase().section(u' ', 0, 0)));
        if (!date.isEmpty())
            test::typeOver(document.control<QWidget>(u"txtData"_s), date);
        document.form().setFocus();
        test::pressKey(Qt::Key_I, Qt::ControlModifier);
        // Already while it is typed.
        test::strike(u"5*tra-0018\n"_s);
        QVERIFY(line(document).startsWith(u"TRA-0018 · giacenza 20,00 · questo documento 0,00"_s));
        test::strike(u"\n"_s);
        QCOMPARE(line(document), told);
        QCOMPARE(warning(document), QString());
    }
    void rowsBelowZeroAreAmber()
    {
        stockUp();
        const test::Document note(place(), test::deliveryNote());
        note.fillHeader();
        note.form().setFocus();
        test::pressKey(Qt::Key_I, Qt::ControlModifier);
        test::strike(u"15*tra-0018^1*vit-0316^5*tra-0018^"_s);
        QCOMPARE(marked(note), u"1"_s);
        test::strike(u"2*tra-0018^"_s);
        QCOMPARE(marked(note), u"1 3"_s);
        QVERIFY(warning(note).startsWith(u"2 righe portano la giacenza sotto zero: "_s));
        QCOMPARE(note.grid()->model()->index(3, 0).data(Qt::ToolTipRole).toString(),
                 u"La giacenza va sotto zero: -2,00 dopo questa riga"_s);
        // A click on the number leads to the row.
        Q_EMIT note.control<QLabel>(u"lblSottoZero"_s)->linkActivated(u"1"_s);
        QCOMPARE(note.grid()->selectedRow(), 1);
        test::typeIntoCell(note.grid(), 0, u"Q.tà"_s, u"13"_s);
        QCOMPARE(marked(note), u"1"_s);
        QVERIFY(warning(note).startsWith(u"1 riga porta"_s));
        // At an earlier date there is less.
        test::typeOver(note.control<QWidget>(u"txtData"_s), u"05/03/2026"_s);
        note.showPage(1);
        test::settle();
        QCOMPARE(marked(note), u"0 1 2 3"_s);
        note.save();
        QCOMPARE(note.flags(), u"stored"_s);
    }
    // A stored note's own movements are not taken off twice.
    void documentCountsOnce()
    {
        stockUp();
        const test::Document note(place(), test::deliveryNote());
        note.store(u"7,9"_s, u"20"_s);
        QVERIFY(line(note).startsWith(u"TRA-0018 · giacenza 20,00 · questo documento -20,00 · resta 0,00"_s));
        QCOMPARE(marked(note), QString());
        note.trigger(u"actNuovo"_s);
        note.enter(u"7,9"_s, u"1"_s);
        QVERIFY(line(note).contains(u"giacenza 0,00"_s));
        QVERIFY(line(note).endsWith(u"a questo cliente € 7,90 il 16/03/2026"_s));
        QCOMPARE(marked(note), u"0"_s);
    }
    // Whoever stores or deletes something: a list as well as a form, or no window at all.
    void followsWhatIsStoredElsewhere()
    {
        stockUp();
        sell(test::deliveryNote(), u"TRA-0018"_s, u"7,9"_s, u"3"_s);
        const ui::SearchForm *notes = openList(u"actRicercaDdTScarico"_s);
        const QWidget *articles = place().commands().openForm(u"actRicercaArticoli"_s);
        test::retype(articles, u"txtCodice"_s, u"TRA-0018"_s);
        test::pressKey(Qt::Key_Return);
        const test::Document note(place(), test::deliveryNote());
        note.enter(u"7"_s, u"1"_s);
        QVERIFY(line(note).contains(u"giacenza 17,00"_s) && line(note).contains(u"a questo cliente € 7,90"_s));
        test::trigger(notes, u"actCerca"_s);
        gridOf(*notes)->selectRow(0);
        place().messages.expectPart(u"Conferma"_s, test::deleting, core::Answer::Yes);
        test::trigger(notes, u"actElimina"_s);
        QVERIFY(line(note).contains(u"giacenza 17,00"_s) && !line(note).contains(u"a questo cliente"_s));
        database().execute(u"DELETE FROM MOVI_MAGA WHERE QUANTITA < 0"_s);
        test::settle();
        QVERIFY(line(note).contains(u"giacenza 20,00"_s));
        QTRY_COMPARE(test::cellText(gridOf(*articles), 0, u"Giacenza"_s), u"20,00"_s);
        note.form().SetModified(false);
    }

    void invoicesAreForThoseWhoMaySeeThem()
    {
        stockUp();
        sell(test::accompanyingInvoice(), u"TRA-0018"_s, u"9,5"_s, u"1"_s);
        const auto told = [this] {
            const test::Document note(place(), test::deliveryNote());
            note.enter(u"7"_s, u"1"_s);
            const QString text = line(note);
            note.form().SetModified(false);
            note.trigger(u"actChiudi"_s);
            return text.section(u" · a questo cliente "_s, 1);
        };
        QCOMPARE(told(), u"€ 9,50 il 16/03/2026"_s);
        database().execute(u"DELETE FROM ABILITAZIONI_RUOLI"_s);
        QCOMPARE(told(), QString());
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
    // 20 pieces of TRA-0018: 10 at 2 on the 1st, 10 at 4 on the 10th of March; today is the 16th.
    void stockUp()
    {
        for (const auto &[date, cost] : {std::pair(u"01/03/2026"_s, u"2"_s), {u"10/03/2026"_s, u"4"_s}}) {
            const test::Document receipt(place(), test::receipt());
            receipt.fillHeader();
            test::typeOver(receipt.control<QWidget>(u"txtData"_s), date);
            receipt.addArticle(u"TRA-0018"_s, cost, u"10"_s);
            receipt.save();
            receipt.trigger(u"actChiudi"_s);
        }
    }
    void sell(const test::DocumentNames &names, const QString &code, const QString &price, const QString &quantity)
    {
        const test::Document document(place(), names);
        document.trigger(u"actNuovo"_s);
        document.fillHeader();
        document.addArticle(code, price, quantity);
        document.save();
        QCOMPARE(document.flags(), u"stored"_s);
        document.trigger(u"actChiudi"_s);
    }
    static QString line(const test::Document &document) { return document.shown(u"lblGiacenzaRiga"_s); }
    static QString warning(const test::Document &document)
    {
        const auto *label = document.control<QLabel>(u"lblSottoZero"_s);
        return label->isHidden() ? QString() : label->text();
    }
    // Positions of the amber rows.
    static QString marked(const test::Document &document)
    {
        QStringList rows;
        const QAbstractItemModel *model = document.grid()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const bool amber = model->index(row, 0).data(Qt::BackgroundRole).isValid();
            if (amber == model->index(row, 0).data(Qt::ToolTipRole).toString().isEmpty())
                return u"colour and tip differ"_s;
            if (amber)
                rows.append(QString::number(row));
        }
        return rows.join(u' ');
    }
};

static const test::Registered<TestCopies> registered;
#include "test_copies.moc"

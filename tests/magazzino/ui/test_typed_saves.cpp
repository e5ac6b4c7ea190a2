#include "platform/core/LineText.h"
#include "platform/ui/FormDialog.h"
#include "tests/support/Fixtures.h"

/// What saving, searching and printing make of what was typed, pasted or left alone.
class TestTypedSaves : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void unreadableIsRefusedBeforeAnythingElse_data()
    {
        test::columns<QString, QString, QString, QString>("kind", "field", "typed", "told");
        for (const char *kind : {"receipt", "note", "invoice"}) {
            QTest::addRow("%s, date", kind) << QString::fromLatin1(kind) << u"txtData"_s << u"31/02/2026"_s
                                            << u"Data: \"31/02/2026\" non è una data valida."_s;
            QTest::addRow("%s, number", kind)
                << QString::fromLatin1(kind) << u"txtNumero"_s << QString() << u"N.: manca il numero."_s;
            QTest::addRow("%s, weight", kind) << QString::fromLatin1(kind) << u"txtPeso"_s << u"1,2,3"_s
                                              << u"Peso: \"1,2,3\" non è un numero valido."_s;
        }
        QTest::newRow("moment") << u"note"_s << u"txtOraInizioTrasporto"_s << u"9"_s
                                << u"Data e ora di inizio trasporto: \"9\" non è un'ora valida."_s;
        QTest::newRow("another page") << u"invoice"_s << u"txtDataFineCiclica"_s << u"20/2/"_s
                                      << u"Data fine: \"20/2/\" non è una data valida."_s;
    }

    void unreadableIsRefusedBeforeAnythingElse()
    {
        const auto [kind, field, typed, told] = test::row<QString, QString, QString, QString>();
        const test::Document document(place(), test::documentNames(kind));
        for (const QString &box : {u"chkInizioTrasporto"_s, u"chkFattureCicliche"_s}) {
            if (auto *check = document.form().findChild<QCheckBox *>(box))
                check->setChecked(true);
        }
        auto *edit = document.control<ui::TypedEdit>(field);
        test::retype(edit, typed);
        document.showPage(1);
        place().messages.expectWarning(told);
        document.save();
        QCOMPARE(place().messages.verify(), QStringList());
        QCOMPARE(document.flags(), u"new modified"_s);
        QCOMPARE(edit->text(), typed);
        QVERIFY(edit->isRed() && edit->hasFocus());
        // Given up by switching it off, it is in nobody's way.
        if (auto *check = document.form().findChild<QCheckBox *>(u"chkFattureCicliche"_s);
            check && field.contains(u"Cicl"))
            check->setChecked(false);
        else
            test::retype(edit, field == u"txtData"_s ? u"20/2"_s : u"1230"_s);
        QVERIFY(edit->problem().isEmpty() || !edit->isEnabled());
        place().messages.expectWarning(kind == u"receipt" ? u"Non è stato selezionato un fornitore!"_s
                                                          : u"Non è stato selezionato un cliente!"_s);
        document.save();
    }

    void rightsAreAskedBeforeDates()
    {
        const test::Document invoice(place(), test::accompanyingInvoice());
        test::retype(invoice.control<QWidget>(u"txtData"_s), u"31/02"_s);
        SetKxCurrentUserName(u"MAGAZZINIERE"_s);
        place().messages.expectWarning(test::noRights);
        invoice.save();
        QCOMPARE(invoice.flags(), u"new modified"_s);
    }

    void listsAndPrintsAreRefusedToo()
    {
        QWidget *movements = open(u"actRicercaMovimentiMagazzino"_s);
        auto *grid = gridOf(*movements);
        auto *from = test::control<ui::DateEdit>(movements, u"txtDataDal"_s);
        const int before = grid->model()->rowCount();
        database().execute(u"DELETE FROM MOVI_MAGA"_s);
        test::retype(from, u"31/4"_s);
        place().messages.expectWarning(u"Dal: \"31/4\" non è una data valida."_s);
        QTest::keyClick(from, Qt::Key_Return);
        QCOMPARE(grid->model()->rowCount(), before);

        QWidget *inventory = open(u"actStampaInventarioValorizzato"_s);
        auto *to = test::control<ui::DateEdit>(inventory, u"txtDataAl"_s);
        test::retype(to, QString());
        place().messages.expectWarning(u"al: manca la data."_s);
        test::trigger(inventory, u"actStampa"_s);
        QVERIFY(to->hasFocus());

        QWidget *notes = open(u"actRicercaDdTScarico"_s);
        auto *year = test::control<ui::YearEdit>(notes, u"txtAnno"_s);
        test::retype(year, u"20262"_s);
        place().messages.expectWarning(u"Anno: \"20262\" non è compreso tra 1.900 e 3.000."_s);
        QTest::keyClick(year, Qt::Key_Return);
        test::retype(year, u"20"_s);
        QTest::keyClick(year, Qt::Key_Return);
        QCOMPARE(year->value(), 2020);
    }

    void dialogsStayOpen()
    {
        ui::FormDialog dialog(u"Prova"_s, nullptr);
        auto *port = new ui::IntegerEdit(&dialog);
        dialog.addRow(u"Porta"_s, port);
        bool checked = false;
        dialog.setCheck([&checked] { return checked = true; });
        dialog.show();
        test::retype(port, u"1,5"_s);
        place().messages.expectWarning(u"Porta: \"1,5\" non è un numero intero."_s);
        QTest::keyClick(port, Qt::Key_Return);
        QVERIFY(dialog.isVisible() && !checked);
        test::retype(port, u"15"_s);
        QTest::keyClick(port, Qt::Key_Return);
        QVERIFY(!dialog.isVisible() && checked);
    }

    // The date as it was typed, whether it was left or saved from.
    void typedDateIsStored()
    {
        const test::Document note(place(), test::deliveryNote());
        note.fillHeader();
        auto *date = note.control<ui::DateEdit>(u"txtData"_s);
        for (const auto &[typed, stored] :
             {std::pair(u"15/02/2025"_s, u"2025-02-15|2025"_s), std::pair(u"5/2/2025"_s, u"2025-02-05|2025"_s),
              std::pair(u"20/2"_s, u"2026-02-20|2026"_s)}) {
            test::retype(date, typed);
            note.save();
            QCOMPARE(lines(u"SELECT DATA, ANNO FROM DDT_SCARICO"_s), QStringList(stored));
        }
    }

    void movementTakesNegativeAmounts()
    {
        QWidget *movement = open(u"actInserimentoMovimentiMagazzino"_s);
        place().dialogs.expect(test::choosingArticle(u"TRA-0018"_s));
        test::press(movement, u"cmdSelezionaArticolo"_s);
        place().dialogs.expect(test::choosing(u"Carico"_s));
        test::press(movement, u"cmdSelezionaCausaleMagazzino"_s);
        for (const QString &name : {u"txtPrezzo"_s, u"txtCosto"_s, u"txtValore"_s})
            test::retype(test::control<QWidget>(movement, name), u"-1234.5"_s);
        test::trigger(movement, u"actSalva"_s);
        QCOMPARE(lines(u"SELECT PREZZO, COSTO, VALORE FROM MOVI_MAGA ORDER BY IDMOVI_MAGA DESC ROWS 1"_s),
                 QStringList(u"-1234.5|-1234.5|-1234.5"_s));
        QCOMPARE(test::shown(movement, u"txtCosto"_s), u"-€ 1.234,50"_s);
    }

    void untouchedIsWrittenBack_data()
    {
        // odd: values that nobody could type
        test::columns<QString, QString>("kind", "odd");
        const QString moment = u", DATA_INIZIO_TRASPORTO = NULL, ORA_INIZIO_TRASPORTO = '10:20:30'"_s;
        const QString common = u"DATA = '1850-02-03', ANNO = 1850, COLLI = -3, PESO = 1.234, NUMERO = "_s;
        for (const char *kind : {"receipt", "note", "invoice"}) {
            const QString own = QString::fromLatin1(kind) == u"receipt" ? QString() : moment;
            QTest::addRow("%s", kind) << QString::fromLatin1(kind)
                                      << common + u"0, NOTE = 'a' || ASCII_CHAR(13) || ASCII_CHAR(10) || 'b'"_s + own;
            QTest::addRow("%s, NULL", kind)
                << QString::fromLatin1(kind) << u"NUMERO = 1000000000, COLLI = NULL, PESO = NULL, NOTE = NULL"_s;
        }
        QTest::newRow("due date") << u"invoice"_s
                                  << u"SCADENZA_PAGAMENTO = NULL, FC_ABILITATO = 'True', FC_GENERA_OGNI = 0, "
                                     "FC_GENERA_OGNI_UM = 'Mese', FC_DATA_INIZIO = '1850-01-01', FC_DATA_FINE = "
                                     "NULL, FC_DATA_NUOVA_FATTURA = ''"_s;
    }

    void untouchedIsWrittenBack()
    {
        QFETCH(QString, kind);
        QFETCH(QString, odd);
        const test::Document document(place(), test::documentNames(kind));
        document.fillHeader();
        document.save();
        const int id = document.form().IdRecord();
        database().execute(u"UPDATE %1 SET ASPETTO_BENI = 'x', %2"_s.arg(test::documentNames(kind).table, odd));
        const auto stored = [this, &kind] {
            return database().select(u"SELECT * FROM "_s + test::documentNames(kind).table).values(0);
        };
        const QVariantList before = stored();
        document.form().ApriRecord(id);
        // Passing through every field touches nothing.
        const QList<ui::TypedEdit *> edits = document.form().findChildren<ui::TypedEdit *>();
        for (ui::TypedEdit *edit : edits) {
            edit->setFocus();
            QTest::keyClick(edit, Qt::Key_Tab);
        }
        QVERIFY(!document.form().Modified());
        auto *appearance = document.control<QLineEdit>(u"txtAspettoBeni"_s);
        QTest::keyClick(appearance, 'y');
        QTest::keyClick(appearance, Qt::Key_Backspace);
        QVERIFY(document.form().Modified());
        document.save();
        QVERIFY(!document.form().Modified());
        QCOMPARE(stored(), before);
    }

    void missingDueDateIsNotTakenFromAnotherInvoice()
    {
        const test::Document invoice(place(), test::accompanyingInvoice());
        invoice.fillHeader();
        invoice.save();
        const int first = invoice.form().IdRecord();
        invoice.form().NuovoRecord();
        invoice.fillHeader();
        auto *due = invoice.control<ui::DateEdit>(u"txtScadenzaPagamento"_s);
        test::retype(due, u"31.5.26"_s);
        invoice.save();
        database().execute(u"UPDATE FATT_ACC SET SCADENZA_PAGAMENTO = NULL WHERE IDFATT_ACC = %1"_s.arg(first));
        invoice.form().ApriRecord(first);
        QCOMPARE(due->text(), QString());
        test::retype(invoice.control<QWidget>(u"txtAspettoBeni"_s), u"y"_s);
        invoice.save();
        const QString dates = u"SELECT SCADENZA_PAGAMENTO FROM FATT_ACC ORDER BY IDFATT_ACC"_s;
        QCOMPARE(lines(dates), QStringList({QString(), u"2026-05-31"_s}));
        // Typed and taken back it is as missing as before; typed it is stored.
        test::retype(due, QString());
        QVERIFY(due->problem().isEmpty());
        test::retype(due, u"1/6"_s);
        invoice.save();
        QCOMPARE(lines(dates), QStringList({u"2026-06-01"_s, u"2026-05-31"_s}));
    }

    void pastedTextBecomesOneLine_data()
    {
        // line: of 20 characters at most
        test::columns<QString, QString>("pasted", "line");
        QTest::newRow("line ends around") << u"\r\nF1\r\n"_s << u"F1"_s;
        QTest::newRow("line ends and tabs inside") << u"a\r\nb\nc\td\u2028e"_s << u"a b c d e"_s;
        QTest::newRow("control characters") << u"F\0\u0007\u0085 1"_s << u"F 1"_s;
        QTest::newRow("halves") << QString(u'a') + QChar(0xD83D) + u'b' + QChar(0xDE00) << u"ab"_s;
        QTest::newRow("whole") << u"a😀b"_s << u"a😀b"_s;
        QTest::newRow("limit in a pair") << u"1234567890123456789😀"_s << u"1234567890123456789"_s;
        QTest::newRow("limit before an accent") << u"1234567890123456789e\u0301"_s << u"1234567890123456789"_s;
        QTest::newRow("limit counts what stays") << u"\n\n\n12345678901234567890x"_s << u"12345678901234567890"_s;
    }

    void pastedTextBecomesOneLine()
    {
        const auto [pasted, line] = test::row<QString, QString>();
        const test::Document note(place(), test::deliveryNote());
        auto *edit = note.control<QLineEdit>(u"txtAspettoBeni"_s);
        edit->setFocus();
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(edit->text(), line);
        edit->clear();
        QContextMenuEvent menuWanted(QContextMenuEvent::Keyboard, {}, edit->mapToGlobal(QPoint()));
        QApplication::sendEvent(edit, &menuWanted);
        auto *menu = test::control<QMenu>(edit, QString());
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            if (action->text().contains(u"Ctrl+V"_s))
                action->trigger();
        }
        menu->close();
        QCOMPARE(edit->text(), line);
        // An input method, like a drop, hands it over without a paste: then at least nothing bad stays.
        edit->clear();
        QInputMethodEvent commit;
        commit.setCommitString(pasted);
        QApplication::sendEvent(edit, &commit);
        QVERIFY(!edit->text().isEmpty());
        QCOMPARE(edit->text(), core::lineOf(edit->text()));
    }
};

static const test::Registered<TestTypedSaves> registered;

#include "test_typed_saves.moc"

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
        const QString date = u"Data: \"31/02/2026\" non è una data valida."_s;
        const QString number = u"N.: manca il numero."_s;
        const QString weight = u"Peso: \"1,2,3\" non è un numero valido."_s;
        test::table<QString, QString, QString>({{"receipt, date", u"txtData"_s, u"31/02/2026"_s, date},
                                                {"note, date", u"txtData"_s, u"31/02/2026"_s, date},
                                                {"invoice, date", u"txtData"_s, u"31/02/2026"_s, date},
                                                {"receipt, number", u"txtNumero"_s, {}, number},
                                                {"note, number", u"txtNumero"_s, {}, number},
                                                {"invoice, number", u"txtNumero"_s, {}, number},
                                                {"receipt, weight", u"txtPeso"_s, u"1,2,3"_s, weight},
                                                {"note, weight", u"txtPeso"_s, u"1,2,3"_s, weight},
                                                {"invoice, weight", u"txtPeso"_s, u"1,2,3"_s, weight},
                                                {"note, moment", u"txtOraInizioTrasporto"_s, u"9"_s,
                                                 u"Data e ora di inizio trasporto: \"9\" non è un'ora valida."_s},
                                                {"invoice, another page", u"txtDataFineCiclica"_s, u"20/2/"_s,
                                                 u"Data fine: \"20/2/\" non è una data valida."_s}});
    }

    void unreadableIsRefusedBeforeAnythingElse()
    {
        const auto [field, typed, told] = test::row<QString, QString, QString>();
        const test::Document document(place(), test::kindOfRow());
        for (const QString &box : {u"chkInizioTrasporto"_s, u"chkFattureCicliche"_s}) {
            if (auto *check = document.form().findChild<QCheckBox *>(box))
                check->setChecked(true);
        }
        auto *edit = document.control<ui::TypedEdit>(field);
        test::retype(edit, typed);
        document.showPage(1);
        place().messages.expectWarning(told);
        document.save();
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
        place().messages.expectWarning(&test::kindOfRow() == &test::receipt()
                                           ? u"Non è stato selezionato un fornitore!"_s
                                           : u"Non è stato selezionato un cliente!"_s);
        document.save();
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

        auto *year = test::control<ui::YearEdit>(open(u"actRicercaDdTScarico"_s), u"txtAnno"_s);
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

    void untouchedIsWrittenBack_data()
    {
        test::columns<QString, QString>();
        // odd: values that nobody could type
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
        const auto [kind, odd] = test::row<QString, QString>();
        const test::Document document(place(), test::documentNames(kind));
        document.fillHeader();
        document.save();
        const int id = document.form().IdRecord();
        database().execute(u"UPDATE %1 SET ASPETTO_BENI = 'x', %2"_s.arg(test::documentNames(kind).table, odd));
        const auto stored = [this, sql = u"SELECT * FROM "_s + test::documentNames(kind).table] {
            return database().select(sql).values(0);
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
        test::table<QString, QString>(
            {// line: of 20 characters at most
             {"line ends around", u"\r\nF1\r\n"_s, u"F1"_s},
             {"line ends and tabs inside", u"a\r\nb\nc\td\u2028e"_s, u"a b c d e"_s},
             {"control characters", u"F\0\u0007\u0085 1"_s, u"F 1"_s},
             {"halves", QString(u'a') + QChar(0xD83D) + u'b' + QChar(0xDE00), u"ab"_s},
             {"whole", u"a😀b"_s, u"a😀b"_s},
             {"limit in a pair", u"1234567890123456789😀"_s, u"1234567890123456789"_s},
             {"limit before an accent", u"1234567890123456789e\u0301"_s, u"1234567890123456789"_s},
             {"limit counts what stays", u"\n\n\n12345678901234567890x"_s, u"12345678901234567890"_s}});
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

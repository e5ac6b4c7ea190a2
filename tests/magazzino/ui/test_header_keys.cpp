#include "platform/ui/LineEdit.h"
#include "platform/ui/OfferList.h"
#include "tests/support/Fixtures.h"

// A document worked key by key: its header, filled by what is typed beside the choosers, and the cells of its rows.
class TestHeaderKeys : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void enterLeadsThroughTheHeader_data()
    {
        const QString supplier = test::receipt().counterpart;
        const QString customer = test::deliveryNote().counterpart;
        test::table<QString, QString, QString>(
            {{"receipt", supplier.left(5) + u"\n|mit\n|v|\n"_s,
              u"txtTipoTrasportoCerca|txtCausaleTrasporto|txtCausaleTrasporto|txtRigaCodice"_s,
              supplier + u"|Mittente|Vendita"_s},
             {"note", u"bagno arredo\n|mit\n|vend\n"_s,
              u"txtTipoTrasportoCerca|txtCausaleTrasportoCerca|txtRigaCodice"_s, customer + u"|Mittente|Vendita|..."_s},
             {"invoice", u"ARREDO B\n|rimessa\n|mit\n|vend\n"_s,
              u"txtTipoPagamentoCerca|txtTipoTrasportoCerca|txtCausaleTrasportoCerca|txtRigaCodice"_s,
              customer + u"|Mittente|Vendita|Rimessa diretta|..."_s}});
    }
    void enterLeadsThroughTheHeader()
    {
        const auto [keys, reached, filled] = test::row<QString, QString, QString>();
        const test::Document document = open(test::kindOfRow());
        const QString first = focus();
        QStringList places;
        for (const QString &typed : keys.split(u'|')) {
            test::strike(typed);
            places.append(focus());
        }
        QCOMPARE(places.join(u'|'), reached);
        QCOMPARE(header(document).join(u'|'), filled);
        QCOMPARE(document.flags(), u"new modified"_s);
        // A new record begins where the first one did.
        document.form().SetModified(false);
        test::pressKey(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(focus(), first);
    }
    void textsFind_data()
    {
        test::table<QString, int, QString>({{"code", u"CODICE"_s, 20, u"\n"_s},
                                            {"VAT number", u"PARTITAIVA"_s, 20, u"\n"_s},
                                            {"begin of the VAT number, Tab", u"PARTITAIVA"_s, 10, u"\t"_s}});
    }
    void textsFind()
    {
        const auto [column, length, end] = test::row<QString, int, QString>();
        const test::Document note = open(test::deliveryNote());
        const QString customer =
            lines(u"SELECT FIRST 1 SKIP 20 RAGIONESOCIALE FROM CLIENTI WHERE PARTITAIVA > ''"_s).value(0);
        const QString typed =
            lines(u"SELECT %1 FROM CLIENTI WHERE RAGIONESOCIALE = '%2'"_s.arg(column, customer)).value(0);
        test::strike(typed.left(length) + end);
        QCOMPARE(note.shown(u"lblRagioneSociale"_s), customer);
        QCOMPARE(focus() == u"txtClienteCerca"_s, false);
    }
    void whatIsNotFoundIsRefused()
    {
        const test::Document note = open(test::deliveryNote());
        test::strike(u"nessuno cosi\n"_s);
        test::strike(u"\t"_s);
        QCOMPARE(focus(), u"txtClienteCerca"_s);
        QCOMPARE(note.shown(u"txtClienteCerca"_s), u"nessuno cosi"_s);
        QCOMPARE(note.flags(), u"new"_s);
        test::pressKey(Qt::Key_Escape);
        QCOMPARE(note.shown(u"txtClienteCerca"_s), u""_s);
        // F4 opens the dialog of the button; one made a moment ago is found.
        place().dialogs.expect(test::choosing(u"Arredo Bagno Alpi S.r.l."_s));
        test::pressKey(Qt::Key_F4);
        QCOMPARE(note.shown(u"lblRagioneSociale"_s), u"Arredo Bagno Alpi S.r.l."_s);
        note.control<QWidget>(u"txtVettoreCerca"_s)->setFocus();
        test::strike(u"bre\n"_s);
        QCOMPARE(header(note).last(), u"Brenta Corriere S.r.l."_s);
    }
    void asTheLastTime_data() { test::eachKind(); }

    void asTheLastTime()
    {
        const test::DocumentNames &names = test::kindOfRow();
        const test::Document document = open(names);
        document.fillHeader();
        if (document.form().command(u"actSelezionaVettore"_s))
            document.choose(u"actSelezionaVettore"_s, test::choosing(u"Brenta Corriere S.r.l."_s, u"B"_s));
        QVERIFY(!document.form().command(u"actComeUltimaVolta"_s)->isEnabled());
        const QStringList filled = header(document);
        document.save();
        QCOMPARE(document.flags(), u"stored"_s);

        document.trigger(u"actNuovo"_s);
        document.form().setFocus();
        test::pressKey(Qt::Key_F8);
        QCOMPARE(document.flags(), u"new"_s);
        test::strike(names.counterpart + u'\n');
        // The told choice copies the counterpart alone.
        QCOMPARE(header(document).filter(u"..."_s).size(), filled.size() - (&names == &test::receipt() ? 2 : 1));
        test::pressKey(Qt::Key_F8);
        QCOMPARE(header(document), filled);
        QCOMPARE(document.flags(), u"new modified"_s);
    }
    void dueDateFollowsThePaymentType_data()
    {
        const QDate untouched = test::workplaceTime().date();
        test::table<QString, QDate, QDate>(
            {{"none", u"NULL, GIORNI = NULL"_s, untouched, untouched},
             {"days", u"'DF', GIORNI = 30"_s, QDate(2026, 3, 2), QDate(2026, 4, 3)},
             {"end of month", u"'FM', GIORNI = 30"_s, QDate(2026, 3, 31), QDate(2026, 4, 30)},
             {"no days", u"'FM', GIORNI = NULL"_s, QDate(2026, 1, 31), QDate(2026, 3, 31)}});
    }
    void dueDateFollowsThePaymentType()
    {
        const auto [rule, first, later] = test::row<QString, QDate, QDate>();
        database().execute(
            u"UPDATE TIPI_PAGAMENTO SET DECORRENZA = %1 WHERE TIPO_PAGAMENTO = 'Rimessa diretta'"_s.arg(rule));
        const test::Document invoice = open(test::accompanyingInvoice());
        const auto *due = invoice.control<ui::DateEdit>(u"txtScadenzaPagamento"_s);
        test::typeOver(invoice.control<QWidget>(u"txtData"_s), u"31/01/2026"_s);
        invoice.control<QWidget>(u"txtTipoPagamentoCerca"_s)->setFocus();
        test::strike(u"rimessa\n"_s);
        QCOMPARE(due->date(), first);
        test::typeOver(invoice.control<QWidget>(u"txtData"_s), u"04/03/2026"_s);
        QCOMPARE(due->date(), later);
        // What is typed stays.
        test::typeOver(invoice.control<QWidget>(u"txtScadenzaPagamento"_s), u"20/12/2026"_s);
        test::typeOver(invoice.control<QWidget>(u"txtData"_s), u"05/03/2026"_s);
        QCOMPARE(due->date(), QDate(2026, 12, 20));
    }
    // Wherever the field stands on the screen, 0 at the top or left, 1 at the bottom or right.
    void listStaysOnTheScreen_data()
    {
        test::table<double, int>(
            {{"first", 0.0, 50}, {"middle", 0.5, 50}, {"low", 0.9, 50}, {"last", 1.0, 50}, {"one line", 1.0, 1}});
    }
    void listStaysOnTheScreen()
    {
        const auto [place, lines] = test::row<double, int>();
        const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
        ui::LineEdit field;
        field.resize(90, 24);
        field.move(room.left() + qRound(place * (room.width() - field.width())),
                   room.top() + qRound(place * (room.height() - field.height())));
        field.show();
        ui::OfferList list({{u"Codice"_s, 90}, {u"Testo"_s}}, 560, &field);
        list.offerLines(QList<QStringList>(lines, {u"A"_s, u"B"_s}), field);
        QVERIFY(room.contains(list.geometry()));
        QVERIFY(!list.geometry().intersects(field.geometry()));
        QVERIFY(list.viewport()->height() >= list.rowHeight(0) * std::min(lines, 5));
    }

    void keypadPointTypesAComma()
    {
        const test::Document note(place(), test::receipt());
        auto *weight = note.control<ui::DecimalEdit>(u"txtPeso"_s);
        weight->selectAll();
        test::type(weight, u"7"_s);
        QTest::keyClick(weight, Qt::Key_Period, Qt::KeypadModifier);
        test::type(weight, u"5"_s);
        QCOMPARE(weight->value(), 7.5);

        note.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        note.grid()->select(0, &DocumentRow::quantita);
        QTest::keyClick(note.grid(), Qt::Key_3); // the first key opens the editor
        auto *editor = test::control<QLineEdit>(note.grid(), u"editorRiga"_s);
        QTest::keyClick(editor, Qt::Key_Period, Qt::KeypadModifier);
        QTest::keyClick(editor, Qt::Key_5);
        QTest::keyClick(editor, Qt::Key_Enter, Qt::KeypadModifier);
        test::settle();
        QCOMPARE(test::cellText(note.grid(), 0, u"Q.tà"_s), u"3,50"_s);
    }

    void tabAndEnterGoThroughTheEditableCells()
    {
        const test::Document receipt = twoArticles();
        const auto digitThen = [&](Qt::Key digit, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            test::pressKey(digit);
            test::pressKey(key, modifiers);
            return where(receipt);
        };
        QCOMPARE(digitThen(Qt::Key_3, Qt::Key_Tab), u"0 Q.tà"_s);
        QCOMPARE(digitThen(Qt::Key_4, Qt::Key_Return), u"1 Costo"_s);
        QCOMPARE(digitThen(Qt::Key_5, Qt::Key_Backtab, Qt::ShiftModifier), u"0 Q.tà"_s);
        test::pressKey(Qt::Key_Tab); // nothing typed
        QCOMPARE(where(receipt), u"1 Costo"_s);
        test::pressKey(Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(digitThen(Qt::Key_6, Qt::Key_Tab), u"1 Q.tà"_s);
        QCOMPARE(digitThen(Qt::Key_7, Qt::Key_Tab), u"1 Q.tà"_s);
        QCOMPARE(digitThen(Qt::Key_0, Qt::Key_Backtab, Qt::ShiftModifier), u"1 Q.tà"_s); // refused
        QCOMPARE(test::columnTexts(receipt.grid(), u"Costo"_s), QStringList({u"€ 3,00"_s, u"€ 5,00"_s}));
        QCOMPARE(test::columnTexts(receipt.grid(), u"Q.tà"_s), QStringList({u"4,00"_s, u"7,00"_s}));
        test::pressKey(Qt::Key_Escape); // nothing is being typed
        QCOMPARE(where(receipt), u"left"_s);
        for (const Qt::KeyboardModifier back : {Qt::NoModifier, Qt::ShiftModifier}) {
            receipt.grid()->setFocus();
            receipt.grid()->select(0, &DocumentRow::costo);
            QCOMPARE(digitThen(Qt::Key_9, Qt::Key_F6, back), u"left"_s);
            QCOMPARE(test::cellText(receipt.grid(), 0, u"Costo"_s), u"€ 9,00"_s);
        }
        QCOMPARE(receipt.shown(u"txtNumero"_s), u"1"_s);
    }

    void descriptionKeepsEnter()
    {
        const test::Document note(place(), test::deliveryNote());
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        note.trigger(u"actAggiungiTesto"_s);
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_B})
            test::pressKey(key);
        test::pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(where(note), u"0 Q.tà"_s);
        QCOMPARE(test::cellText(note.grid(), 1, u"Descrizione"_s), u"a\nb"_s);
        test::pressKey(Qt::Key_Tab);
        for (const Qt::Key key : {Qt::Key_C, Qt::Key_Tab})
            test::pressKey(key);
        QCOMPARE(where(note), u"1 Descrizione"_s);
        QCOMPARE(test::cellText(note.grid(), 1, u"Descrizione"_s), u"c"_s);
    }

    void saveTakesOverTheCellBeingTyped()
    {
        const test::Document receipt = twoArticles();
        receipt.fillHeader();
        receipt.save();
        QCOMPARE(receipt.flags(), u"stored"_s);
        receipt.showPage(1);
        receipt.grid()->setFocus();
        receipt.grid()->select(1, &DocumentRow::quantita);
        test::pressKey(Qt::Key_6);
        test::pressKey(Qt::Key_Escape);
        QCOMPARE(receipt.flags(), u"stored"_s);
        test::pressKey(Qt::Key_6);
        test::pressKey(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(receipt.flags(), u"stored"_s);
        QCOMPARE(lines(u"SELECT QUANTITA FROM MOVI_MAGA WHERE CODICE = 'SMA-0750'"_s), QStringList(u"6"_s));
    }

    void unreadableCellStopsCommands_data()
    {
        test::cases({u"actChiudi"_s, u"actNuovo"_s, u"actSalva"_s, u"actEliminaRiga"_s});
    }

    void unreadableCellStopsCommands()
    {
        const test::Document receipt = twoArticles();
        receipt.fillHeader();
        receipt.showPage(1);
        receipt.grid()->setFocus();
        test::pressKey(Qt::Key_X);
        place().messages.expectError(u"\"x\" non è un numero valido."_s);
        receipt.trigger(test::currentCase());
        QVERIFY(receipt.form().isVisible());
        QCOMPARE(test::columnTexts(receipt.grid(), u"Costo"_s), QStringList({u"€ 2,00"_s, u"€ 8,00"_s}));
        QCOMPARE(receipt.stored(), QStringList());
    }

private:
    test::Document open(const test::DocumentNames &names)
    {
        test::Document document(place(), names);
        document.form().setFocus();
        return document;
    }
    static QString focus() { return QApplication::focusWidget()->objectName(); }
    /// Counterpart, transport type and reason, payment and carrier as far as the form has them.
    static QStringList header(const test::Document &document)
    {
        QStringList texts;
        for (const QString &name : {u"lblRagioneSociale"_s, u"txtTipoTrasporto"_s, u"txtCausaleTrasporto"_s,
                                    u"txtTipoPagamento"_s, u"lblVettRagioneSociale"_s}) {
            if (document.form().findChild<QWidget *>(name))
                texts.append(document.shown(name));
        }
        return texts;
    }
    /// Two articles of a receipt; the cost of the first one is the current cell.
    test::Document twoArticles() const
    {
        test::Document receipt(place(), test::receipt());
        receipt.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        receipt.addArticle(u"SMA-0750"_s, u"8"_s, u"2"_s);
        receipt.grid()->setFocus();
        receipt.grid()->select(0, &DocumentRow::costo);
        return receipt;
    }

    // "row header" of the current cell, or what has the focus instead.
    static QString where(const test::Document &document)
    {
        const QWidget *focus = QApplication::focusWidget();
        if (!focus || (focus != document.grid() && !document.grid()->isAncestorOf(focus)))
            return u"left"_s;
        const QModelIndex cell = document.grid()->currentIndex();
        return u"%1 %2"_s.arg(cell.row())
            .arg(document.grid()->model()->headerData(cell.column(), Qt::Horizontal, Qt::DisplayRole).toString());
    }
};

static const test::Registered<TestHeaderKeys> registered;
#include "test_header_keys.moc"

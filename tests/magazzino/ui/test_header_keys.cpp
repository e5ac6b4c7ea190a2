#include "platform/ui/LineEdit.h"
#include "platform/ui/OfferList.h"
#include "tests/support/Fixtures.h"

// A document's header filled by what is typed beside its choosers, key by key.
class TestHeaderKeys : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:

    void enterLeadsThroughTheHeader_data()
    {
        QTest::addColumn<const test::DocumentNames *>("names");
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QStringList>("reached");
        QTest::addColumn<QStringList>("header");
        const QString supplier = test::receipt().counterpart;
        const QString customer = test::deliveryNote().counterpart;
        QTest::newRow("receipt") << &test::receipt()
                                 << QStringList{supplier.left(5) + u'\n', u"mit\n"_s, u"v"_s, u"\n"_s}
                                 << QStringList{u"txtTipoTrasportoCerca"_s, u"txtCausaleTrasporto"_s,
                                                u"txtCausaleTrasporto"_s, u"txtRigaCodice"_s}
                                 << QStringList{supplier, u"Mittente"_s, u"Vendita"_s};
        QTest::newRow("note") << &test::deliveryNote() << QStringList{u"bagno arredo\n"_s, u"mit\n"_s, u"vend\n"_s}
                              << QStringList{u"txtTipoTrasportoCerca"_s, u"txtCausaleTrasportoCerca"_s,
                                             u"txtRigaCodice"_s}
                              << QStringList{customer, u"Mittente"_s, u"Vendita"_s, u"..."_s};
        QTest::newRow("invoice") << &test::accompanyingInvoice()
                                 << QStringList{u"ARREDO B\n"_s, u"rimessa\n"_s, u"mit\n"_s, u"vend\n"_s}
                                 << QStringList{u"txtTipoPagamentoCerca"_s, u"txtTipoTrasportoCerca"_s,
                                                u"txtCausaleTrasportoCerca"_s, u"txtRigaCodice"_s}
                                 << QStringList{customer, u"Mittente"_s, u"Vendita"_s, u"Rimessa diretta"_s, u"..."_s};
    }
    void enterLeadsThroughTheHeader()
    {
        QFETCH(const test::DocumentNames *, names);
        QFETCH(QStringList, keys);
        QFETCH(QStringList, reached);
        const test::Document document = open(*names);
        const QString first = focus();
        QStringList places;
        for (const QString &typed : keys) {
            test::strike(typed);
            places.append(focus());
        }
        QCOMPARE(places, reached);
        QTEST(header(document), "header");
        QCOMPARE(document.flags(), u"new modified"_s);
        // A new record begins where the first one did.
        document.form().SetModified(false);
        test::pressKey(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(focus(), first);
    }
    void textsFind_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("end");
        QTest::newRow("code") << u"CODICE"_s << 20 << u"\n"_s;
        QTest::newRow("VAT number") << u"PARTITAIVA"_s << 20 << u"\n"_s;
        QTest::newRow("begin of the VAT number, Tab") << u"PARTITAIVA"_s << 10 << u"\t"_s;
    }
    void textsFind()
    {
        QFETCH(QString, column);
        QFETCH(int, length);
        QFETCH(QString, end);
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
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QDate>("due");
        QTest::addColumn<QDate>("dueLater");
        const QDate untouched = test::workplaceTime().date();
        QTest::newRow("none") << u"NULL, GIORNI = NULL"_s << untouched << untouched;
        QTest::newRow("days") << u"'DF', GIORNI = 30"_s << QDate(2026, 3, 2) << QDate(2026, 4, 3);
        QTest::newRow("end of month") << u"'FM', GIORNI = 30"_s << QDate(2026, 3, 31) << QDate(2026, 4, 30);
        QTest::newRow("no days") << u"'FM', GIORNI = NULL"_s << QDate(2026, 1, 31) << QDate(2026, 3, 31);
    }
    void dueDateFollowsThePaymentType()
    {
        QFETCH(QString, rule);
        database().execute(
            u"UPDATE TIPI_PAGAMENTO SET DECORRENZA = %1 WHERE TIPO_PAGAMENTO = 'Rimessa diretta'"_s.arg(rule));
        const test::Document invoice = open(test::accompanyingInvoice());
        const auto *due = invoice.control<ui::DateEdit>(u"txtScadenzaPagamento"_s);
        test::typeOver(invoice.control<QWidget>(u"txtData"_s), u"31/01/2026"_s);
        invoice.control<QWidget>(u"txtTipoPagamentoCerca"_s)->setFocus();
        test::strike(u"rimessa\n"_s);
        QTEST(due->date(), "due");
        test::typeOver(invoice.control<QWidget>(u"txtData"_s), u"04/03/2026"_s);
        QTEST(due->date(), "dueLater");
        // What is typed stays.
        test::typeOver(invoice.control<QWidget>(u"txtScadenzaPagamento"_s), u"20/12/2026"_s);
        test::typeOver(invoice.control<QWidget>(u"txtData"_s), u"05/03/2026"_s);
        QCOMPARE(due->date(), QDate(2026, 12, 20));
    }
    void listStaysOnTheScreen_data()
    {
        QTest::addColumn<double>("place"); // of the field on the screen, 0 at the top or left, 1 at the bottom or right
        QTest::addColumn<int>("lines");
        for (const double place : {0.0, 0.5, 0.9, 1.0})
            QTest::addRow("%.1f", place) << place << 50;
        QTest::newRow("one line") << 1.0 << 1;
    }
    void listStaysOnTheScreen()
    {
        QFETCH(double, place);
        QFETCH(int, lines);
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
};

static const test::Registered<TestHeaderKeys> registered;
#include "test_header_keys.moc"

#include "tests/support/Fixtures.h"

class TestInvoiceList : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        insertInvoice(9, 2026, u"Bottega D'Amico"_s, u"Vite 4x40"_s);
        insertInvoice(10, 2026, u"Rossi 100%"_s, u"Dado d'acciaio"_s);
        insertInvoice(2, 2026, u"Vite & Figli"_s, u"Sconto 50% sul listino"_s);
        insertInvoice(30, 2025, u"Bottega D'Amico"_s, u"Vite 4x40"_s);
        list_ = open(u"actRicercaFattureAccompagnatorie"_s);
        test::settle();
    }

    void filters()
    {
        const QString row = u"txtDescrizioneRiga"_s;
        const QString name = u"txtRagioneSociale"_s;
        for (const auto &[filter, text, year, found] : {std::tuple(name, u""_s, 2026, u"10|9|2"_s),
                                                        {u"txtCodice"_s, u"c9"_s, 2026, u"9"_s},
                                                        {name, u"D'AMICO"_s, 2026, u"9"_s},
                                                        {name, u"vite"_s, 2026, u"2"_s},
                                                        {row, u"vite"_s, 2026, u"9"_s},
                                                        {row, u"50%"_s, 2026, u"2"_s},
                                                        {row, u"vite"_s, 2025, u"30"_s}}) {
            test::trigger(list_, u"actRipristina"_s);
            test::control<ui::IntegerEdit>(list_, u"txtAnno"_s)->setValue(year);
            test::retype(list_, filter, text);
            QTest::keyClick(test::control<QLineEdit>(list_, filter), Qt::Key_Return);
            QVERIFY2(numbers().join(u'|') == found, qPrintable(filter + text));
        }
    }

    // The list of delivery notes; its rows have no filter.
    void notesOfAYear()
    {
        const QString row = u"NUMERO=%1|ANNO=%2|CLI_CODICE=C%1|CLI_RAGIONESOCIALE=%3"_s;
        for (const QString &note :
             {row.arg(u"9"_s, u"2026"_s, u"Ferramenta D'Amico"_s), row.arg(u"10"_s, u"2026"_s, u"Sconti 100%"_s),
              row.arg(u"11"_s, u"2025"_s, u"Ferramenta D'Amico"_s)})
            test::insertInto(database(), u"DDT_SCARICO"_s, note);
        const ui::SearchForm *list = openList(u"actRicercaDdTScarico"_s);
        for (const auto &[year, code, name, found] : {std::tuple(u"2026"_s, u""_s, u""_s, u"10|9"_s),
                                                      {u"2026"_s, u""_s, u"d'a"_s, u"9"_s},
                                                      {u"2026"_s, u""_s, u"100%"_s, u"10"_s},
                                                      {u"2025"_s, u"c1"_s, u"ferramenta"_s, u"11"_s},
                                                      {u"2026"_s, u"C_"_s, u""_s, u""_s}}) {
            test::retype(list, u"txtAnno"_s, year);
            test::retype(list, u"txtCodice"_s, code);
            test::retype(list, u"txtRagioneSociale"_s, name);
            test::press(list, u"cmdCerca"_s);
            QCOMPARE(test::columnTexts(gridOf(*list), u"N."_s).join(u'|'), found);
        }
    }

    void rights()
    {
        test::trigger(list_, u"actCerca"_s);
        test::selectRow(grid(), u"C2"_s);
        // The office may look at invoices only.
        SetKxCurrentUserName(u"UFFICIO"_s);
        for (const QString &command : {u"actNuovo"_s, u"actElimina"_s}) {
            place().messages.expectWarning(test::noRights);
            test::trigger(list_, command);
        }
        QVERIFY(!entryForm());
        QCOMPARE(numbers().size(), 3);
        QCOMPARE(lines(u"SELECT COUNT(*) FROM FATT_ACC"_s), QStringList(u"4"_s));
        test::trigger(list_, u"actModifica"_s);
        QVERIFY(entryForm());
        SetKxCurrentUserName(host::administrator);
        test::trigger(list_, u"actNuovo"_s);
    }

    void listNeedsItsRight()
    {
        test::trigger(list_, u"actChiudi"_s);
        SetKxCurrentUserName(u"MAGAZZINIERE"_s);
        place().messages.expectWarning(test::noRights);
        test::trigger(&place().module(), u"actRicercaFattureAccompagnatorie"_s);
        QVERIFY(!list_->isVisible());
        SetKxCurrentUserName(u"ufficio"_s);
        test::trigger(&place().module(), u"actRicercaFattureAccompagnatorie"_s);
        QVERIFY(list_->isVisible());
    }

private:
    void insertInvoice(int number, int year, const QString &customer, const QString &row) const
    {
        const int id = test::insertInto(
            database(), u"FATT_ACC"_s,
            u"NUMERO=%1|ANNO=%2|DATA=%2-03-02|CLI_CODICE=C%1|CLI_RAGIONESOCIALE=%3"_s.arg(number).arg(year).arg(
                customer));
        test::insertInto(database(), u"FATT_ACC_DETT"_s,
                         u"IDFATT_ACC=%1|TIPO_RIGA=Testo|DESCRIZIONE=%2"_s.arg(id).arg(row));
    }

    QStringList numbers() const { return test::columnTexts(grid(), u"N."_s); }
    QTableView *grid() const { return gridOf(*list_); }
    QWidget *entryForm() const
    {
        return place().window().findChild<QWidget *>(u"MMGInserimentoFattureAccompagnatorie"_s);
    }

    QWidget *list_ = nullptr;
};

static const test::Registered<TestInvoiceList> registered;

#include "test_invoice_list.moc"

#include "magazzino/forms/uMMGInserimentoFattureAccompagnatorie.h"
#include "tests/support/Fixtures.h"

class TestInvoiceForm : public test::AtDocument
{
    Q_OBJECT

public:
    TestInvoiceForm()
        : AtDocument(test::accompanyingInvoice())
    {
    }

private Q_SLOTS:
    void init() override
    {
        AtDocument::init();
        const int rate =
            test::insertInto(database(), u"ALIQUOTE_IVA"_s,
                             {{u"CODICE"_s, u"20"_s}, {u"DESCRIZIONE"_s, u"Aliquota <20%>"_s}, {u"ALIQUOTA"_s, 20.0}});
        database().run(u"UPDATE ANA_MAGA SET IDALIQUOTA_IVA = ?, COSTO = 1.5 WHERE CODICE = 'TRA-0018'"_s, {rate});
    }

    void totals_data()
    {
        test::columns<bool, bool, bool, QString, QString>("exempt", "nonTaxable", "withoutRate", "shown", "stored");
        QTest::newRow("one rate") << false << false << false << u"€ 27,00 + € 5,40 = € 32,40"_s
                                  << u"27|5.4|32.4|False"_s;
        QTest::newRow("exempt") << true << false << false << u"€ 0,00 + € 0,00 = € 27,00"_s << u"0|0|27|True"_s;
        QTest::newRow("non-taxable row") << false << true << false << u"€ 27,00 + € 5,40 = € 39,90"_s
                                         << u"27|5.4|39.9|False"_s;
        QTest::newRow("exempt, non-taxable row")
            << true << true << false << u"€ 0,00 + € 0,00 = € 34,50"_s << u"0|0|34.5|True"_s;
        // Counts for the base, not for the tax.
        QTest::newRow("row without a rate")
            << false << false << true << u"€ 47,00 + € 5,40 = € 52,40"_s << u"47|5.4|52.4|False"_s;
    }

    void totals()
    {
        const auto [exempt, nonTaxable, withoutRate, shown, stored] = test::row<bool, bool, bool, QString, QString>();
        database().execute(u"UPDATE SERVIZI SET IDALIQUOTA_IVA = NULL"_s);
        invoice().fillHeader();
        invoice().control<QCheckBox>(u"chkIVAEsente"_s)->setChecked(exempt);
        if (nonTaxable)
            addNonTaxable(u"7,5"_s);
        if (withoutRate)
            addService(u"CONS-01"_s);
        invoice().addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        const int row = invoice().grid()->model()->rowCount() - 1;
        test::typeIntoCell(invoice().grid(), row, u"Sc."_s, u"10"_s);
        QCOMPARE(test::cellText(invoice().grid(), row, u"Importo"_s), u"€ 27,00"_s);
        QCOMPARE(shownTotals(), shown);
        invoice().save();
        QCOMPARE(storedTotals(), stored);
        invoice().form().ApriRecord(invoice().form().IdRecord());
        QCOMPARE(shownTotals(), shown);
        // A change of the exemption counts at the next event, here the save; a new text row is none.
        invoice().control<QCheckBox>(u"chkIVAEsente"_s)->setChecked(!exempt);
        invoice().trigger(u"actAggiungiTesto"_s);
        QCOMPARE(shownTotals(), shown);
        invoice().save();
        QVERIFY(shownTotals() != shown);
    }

    void movements()
    {
        test::insertInto(database(), u"MOVI_MAGA"_s,
                         {{u"DATA_MOVIMENTO"_s, QDate(2026, 1, 10)},
                          {u"CODICE"_s, u"TRA-0018"_s},
                          {u"TIPO_MOVIMENTO"_s, u"Carico"_s},
                          {u"QUANTITA"_s, 10.0},
                          {u"VALORE"_s, 2.0},
                          {u"VALORE_IMPORTO"_s, 20.0},
                          {u"RIF_DOC_TIPO"_s, u"Bolla di carico"_s}});
        invoice().fillHeader();
        invoice().control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(4);
        invoice().addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        test::typeIntoCell(invoice().grid(), 0, u"Sc."_s, u"50"_s);
        const QString mine =
            u"SELECT M.TIPO_MOVIMENTO, M.QUANTITA, M.PREZZO, M.COSTO, M.VALORE, M.VALORE_IMPORTO, M.IDCAUSALE_MAGA, "
            "M.DATA_MOVIMENTO, M.RIF_DOC_ID - D.IDFATT_ACC, M.NOTE FROM MOVI_MAGA M JOIN FATT_ACC_DETT D ON "
            "D.IDFATT_ACC_DETT = M.RIF_DOC_IDRIGA WHERE M.RIF_DOC_TIPO = 'Fattura accompagnatoria'"_s;
        for (int i = 0; i < 2; ++i) {
            invoice().form().DataChanged();
            invoice().save();
            QCOMPARE(lines(mine), QStringList({u"Scarico|-3|10|1.5|2|-6|2|2026-03-16|0|Fattura immediata "
                                               "accompagnatoria n. 4 del 16/03/2026"_s}));
            QCOMPARE(lines(u"SELECT SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA"_s), QStringList(u"7|14"_s));
        }
    }

    void rightsComeFirst()
    {
        invoice().fillHeader();
        invoice().addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        invoice().save();
        const QStringList before = invoice().stored();
        const auto readOnly = [this] { return invoice().control<QLabel>(u"lblSolaLettura"_s)->isVisible(); };
        QVERIFY(!readOnly());
        SetKxCurrentUserName(u"MAGAZZINIERE"_s);
        invoice().form().ApriRecord(invoice().form().IdRecord());
        QVERIFY(readOnly());
        invoice().form().DataChanged();
        place().messages.expectWarning(test::noRights);
        invoice().save();
        QCOMPARE(invoice().flags(), u"stored modified"_s);
        for (const char *command : {"actElimina", "actNuovo"}) {
            place().messages.expectWarning(test::noRights);
            invoice().trigger(QString::fromLatin1(command));
        }
        QCOMPARE(place().messages.verify(), QStringList());
        // The missing right is told before anything that is wrong with the invoice.
        invoice().form().SetModified(false);
        invoice().form().NuovoRecord();
        invoice().control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(1);
        place().messages.expectWarning(test::noRights);
        invoice().save();
        QCOMPARE(invoice().stored(), before);
    }

    void tabGoesDownThePage()
    {
        invoice().control<QWidget>(u"chkInizioTrasporto"_s)->setFocus();
        QStringList reached;
        for (int i = 0; i < 6; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            reached.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(reached,
                 QStringList({u"txtTipoPagamentoCerca"_s, u"cmdSelezionaTipoPagamento"_s, u"txtScadenzaPagamento"_s,
                              u"chkPagato"_s, u"chkNotificato"_s, u"chkIVAEsente"_s}));
    }

    void everythingComesBack()
    {
        invoice().fillHeader();
        invoice().choose(u"actSelezionaVettore"_s, test::choosing(u"Brenta Corriere S.r.l."_s, u"B"_s));
        invoice().control<QLineEdit>(u"txtDestCitta"_s)->setText(u"Forlì"_s);
        invoice().control<ui::DateEdit>(u"txtScadenzaPagamento"_s)->setDate(QDate(2026, 5, 31));
        for (const char *box : {"chkPagato", "chkNotificato", "chkInizioTrasporto", "chkFattureCicliche"})
            invoice().control<QCheckBox>(QString::fromLatin1(box))->setChecked(true);
        invoice().addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        test::typeIntoCell(invoice().grid(), 0, u"Sc."_s, u"12,5"_s);
        addService(u"CONS-01"_s);
        invoice().trigger(u"actAggiungiTesto"_s);
        test::typeIntoCell(invoice().grid(), 2, u"Descrizione"_s, u"Citofonare \"D'Amico\""_s);
        addNonTaxable(u"4"_s);
        invoice().save();
        QCOMPARE(
            lines(u"SELECT CLI_RAGIONESOCIALE, DEST_CITTA, TIPO_PAGAMENTO, SCADENZA_PAGAMENTO, PAGATO, NOTIFICATO, "
                  "FC_ABILITATO FROM FATT_ACC"_s),
            QStringList(u"Arredo Bagno Alpi S.r.l.|Forlì|Rimessa diretta|2026-05-31|True|True|True"_s));
        QCOMPARE(lines(u"SELECT TIPO_RIGA, CODICE, COSTO, PREZZO, SCONTO, QUANTITA, IMPORTO, IVA_CODICE, IVA_ALIQUOTA, "
                       "UM FROM FATT_ACC_DETT ORDER BY IDFATT_ACC_DETT"_s),
                 QStringList({u"Articolo|TRA-0018|1.5|10|12.5|3|26.25|20|20|PZ"_s,
                              u"Servizio|CONS-01|12|20|0|1|20|22|22|PZ"_s, u"Testo|||||||||"_s,
                              u"Non imponibile||0|4|0|1|4|||"_s}));
        // The article's cost and rate may change: the stored row keeps its cost.
        database().execute(u"UPDATE ANA_MAGA SET COSTO = 99, PREZZO = 99"_s);
        const auto everything = [this] {
            QStringList all = lines(u"SELECT * FROM FATT_ACC"_s);
            for (const char *table : {"FATT_ACC_DETT", "MOVI_MAGA"}) {
                QStringList rows = lines(u"SELECT * FROM %1 ORDER BY 1"_s.arg(QLatin1StringView(table)));
                for (QString &row : rows)
                    row = row.section(u'|', 1).remove(QRegularExpression(u"\\|\\d+\\|Fattura immediata"_s));
                all += rows;
            }
            return all;
        };
        const QStringList before = everything();
        QCOMPARE(before.size(), 6);
        const int id = invoice().form().IdRecord();
        invoice().trigger(u"actNuovo"_s);
        QCOMPARE(shownTotals(), u"€ 0,00 + € 0,00 = € 0,00"_s);
        invoice().form().ApriRecord(id);
        QCOMPARE(invoice().flags(), u"stored"_s);
        invoice().form().DataChanged();
        invoice().save();
        QCOMPARE(everything(), before);
    }

private:
    test::Document &invoice() const { return note(); }

    void addService(const QString &code) const
    {
        invoice().showPage(1);
        invoice().choose(u"actAggiungiServizio"_s, test::choosing(code));
    }

    void addNonTaxable(const QString &price) const
    {
        invoice().showPage(1);
        invoice().trigger(u"actAggiungiNonImponibile"_s);
        const int row = invoice().grid()->model()->rowCount() - 1;
        test::typeIntoCell(invoice().grid(), row, u"Descrizione"_s, u"Spese anticipate"_s);
        test::typeIntoCell(invoice().grid(), row, u"Prezzo"_s, price);
    }

    QString shownTotals() const
    {
        return invoice().shown(u"lblTotaleImponibile"_s) + u" + "_s + invoice().shown(u"lblTotaleImposta"_s) +
               u" = "_s + invoice().shown(u"lblTotaleDocumento"_s);
    }

    QString storedTotals() const
    {
        return lines(u"SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, IVA_ESENTE FROM FATT_ACC"_s)
            .join(u';');
    }
};

static const test::Registered<TestInvoiceForm> registered;

#include "test_invoice_form.moc"

#include "magazzino/forms/uMMGInserimentoFattureAccompagnatorie.h"
#include "magazzino/ui/FatturaCiclicaField.h"
#include "tests/support/Fixtures.h"

namespace {

QRadioButton *dayButton(const QWidget &form, const QString &caption)
{
    const QList<QRadioButton *> buttons = form.findChildren<QRadioButton *>();
    for (QRadioButton *button : buttons) {
        if (button->text() == caption)
            return button;
    }
    test::missing(caption);
}

const QString onThe15th = u"Il giorno 15 del mese"_s;
const QString columns = u"SELECT FC_ABILITATO, FC_GENERA_OGNI, FC_GENERA_OGNI_UM, FC_DATA_INIZIO, FC_DATA_FINE, "
                        "COALESCE(FC_DATA_NUOVA_FATTURA, 'NULL') FROM FATT_ACC"_s;

} // namespace

class TestInvoiceForm : public test::AtDocument
{
    Q_OBJECT
    Q_CLASSINFO("kind", "invoice")

private Q_SLOTS:
    void init() override
    {
        AtDocument::init();
        const int rate =
            test::insertInto(database(), u"ALIQUOTE_IVA"_s, u"CODICE=20|DESCRIZIONE=Aliquota <20%>|ALIQUOTA=20"_s);
        database().run(u"UPDATE ANA_MAGA SET IDALIQUOTA_IVA = ?, COSTO = 1.5 WHERE CODICE = 'TRA-0018'"_s, {rate});
    }

    void totals_data()
    {
        test::table<bool, bool, bool, QString, QString>(
            {{"one rate", false, false, false, u"€ 27,00 + € 5,40 = € 32,40"_s, u"27|5.4|32.4|False"_s},
             {"exempt", true, false, false, u"€ 0,00 + € 0,00 = € 27,00"_s, u"0|0|27|True"_s},
             {"non-taxable row", false, true, false, u"€ 27,00 + € 5,40 = € 39,90"_s, u"27|5.4|39.9|False"_s},
             {"exempt, non-taxable row", true, true, false, u"€ 0,00 + € 0,00 = € 34,50"_s, u"0|0|34.5|True"_s},
             // Counts for the base, not for the tax.
             {"row without a rate", false, false, true, u"€ 47,00 + € 5,40 = € 52,40"_s, u"47|5.4|52.4|False"_s}});
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
        QCOMPARE(lines(u"SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, IVA_ESENTE FROM FATT_ACC"_s),
                 QStringList(stored));
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
                         u"DATA_MOVIMENTO=2026-01-10|CODICE=TRA-0018|TIPO_MOVIMENTO=Carico|QUANTITA=10|VALORE=2|"
                         "VALORE_IMPORTO=20|RIF_DOC_TIPO=Bolla di carico"_s);
        invoice().fillHeader();
        invoice().control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(4);
        invoice().addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        test::typeIntoCell(invoice().grid(), 0, u"Sc."_s, u"50"_s);
        const QString mine =
            u"SELECT M.TIPO_MOVIMENTO, M.QUANTITA, M.PREZZO, M.COSTO, M.VALORE, M.VALORE_IMPORTO, M.IDCAUSALE_MAGA, "
            "M.DATA_MOVIMENTO, M.RIF_DOC_ID - D.IDFATT_ACC, M.NOTE FROM MOVI_MAGA M JOIN FATT_ACC_DETT D ON "
            "D.IDFATT_ACC_DETT = M.RIF_DOC_IDRIGA WHERE M.RIF_DOC_TIPO = 'Fattura accompagnatoria'"_s;
        for (int i = 0; i < 2; ++i) {
            invoice().saveAgain();
            QCOMPARE(lines(mine), QStringList({u"Scarico|-3|10|1.5|2|-6|2|2026-03-16|0|Fattura immediata "
                                               "accompagnatoria n. 4 del 16/03/2026"_s}));
            QCOMPARE(lines(u"SELECT SUM(QUANTITA), SUM(VALORE_IMPORTO) FROM MOVI_MAGA"_s), QStringList(u"7|14"_s));
        }
    }

    void rightsComeFirst()
    {
        invoice().store(u"10"_s, u"3"_s);
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
        for (const QString &command : {u"actElimina"_s, u"actNuovo"_s}) {
            place().messages.expectWarning(test::noRights);
            invoice().trigger(command);
        }
        // The missing right is told before anything that is wrong with the invoice, also what cannot be read.
        invoice().form().SetModified(false);
        invoice().form().NuovoRecord();
        test::retype(invoice().control<QWidget>(u"txtData"_s), u"31/02"_s);
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
        invoice().saveAgain();
        QCOMPARE(everything(), before);
    }

    // Months and years are clipped to what the month has; nothing comes after the last day, the 15th before it does.
    void nextDate()
    {
        const QDate start(2026, 1, 31);
        const QDate end(2029, 12, 31);
        for (const auto &[from, every, unit, on15th, next] :
             {std::tuple(start, 10, u"Giorno"_s, false, QDate(2026, 2, 10)),
              {start, 2, u"Settimana"_s, false, QDate(2026, 2, 14)},
              {start, 1, u"Mese"_s, false, QDate(2026, 2, 28)},
              {start, 2, u"Mese"_s, false, QDate(2026, 3, 31)},
              {QDate(2028, 2, 29), 1, u"Anno"_s, false, QDate(2029, 2, 28)},
              {QDate(2026, 1, 3), 1, u"Mese"_s, true, QDate(2026, 2, 15)},
              {start, 1, u"Mese"_s, true, QDate(2026, 2, 15)},
              {QDate(2029, 12, 30), 1, u"Giorno"_s, false, end},
              {end, 1, u"Giorno"_s, false, QDate()},
              {QDate(2029, 11, 30), 1, u"Mese"_s, true, QDate(2029, 12, 15)}})
            QCOMPARE(nextRecurringInvoice(from, every, unit, on15th, end), next);
    }

    void reminderIsStoredAndComesBack_data()
    {
        const QDate end(2027, 1, 1);
        const QString group = u"True|3|Mese|2026-01-"_s;
        test::table<bool, bool, QDate, QString, QString>(
            {{"the 15th", true, true, end, u"15/04/2026"_s, group + u"31|2027-01-01|2026-04-15"_s},
             {"past the end", true, false, QDate(2026, 4, 29), u"nessuna"_s, group + u"31|2026-04-29|"_s},
             {"unchecked", false, true, end, u"15/04/2026"_s, u"False|||||NULL"_s}});
    }

    void reminderIsStoredAndComesBack()
    {
        const auto [enabled, on15th, end, shown, stored] = test::row<bool, bool, QDate, QString, QString>();
        auto *check = note().control<QCheckBox>(u"chkFattureCicliche"_s);
        note().fillHeader();
        check->setChecked(true);
        note().control<ui::IntegerEdit>(u"txtGeneraOgni"_s)->setValue(3);
        note().control<QComboBox>(u"txtGeneraOgniUM"_s)->setCurrentText(u"Mese"_s);
        note().control<ui::DateEdit>(u"txtDataInizioCiclica"_s)->setDate(QDate(2026, 1, 31));
        note().control<ui::DateEdit>(u"txtDataFineCiclica"_s)->setDate(end);
        if (on15th)
            dayButton(note().form(), onThe15th)->setChecked(true);
        QCOMPARE(note().shown(u"lblDataNuovaFattura"_s), shown);
        check->setChecked(enabled);
        note().save();
        QCOMPARE(lines(columns), QStringList({stored}));
        const int id = note().form().IdRecord();
        note().trigger(u"actNuovo"_s);
        QVERIFY(!check->isChecked());
        note().form().ApriRecord(id);
        QCOMPARE(check->isChecked(), enabled);
        QCOMPARE(dayButton(note().form(), onThe15th)->isChecked(), enabled && on15th);
        QCOMPARE(note().flags(), u"stored"_s);
        if (enabled)
            QCOMPARE(note().shown(u"lblDataNuovaFattura"_s), shown);
        note().saveAgain();
        QCOMPARE(lines(columns), QStringList({stored}));
    }

    void copyOfAnInvoice()
    {
        note().fillHeader();
        note().control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(7);
        note().control<ui::DateEdit>(u"txtData"_s)->setDate(QDate(2026, 2, 1));
        note().control<QCheckBox>(u"chkFattureCicliche"_s)->setChecked(true);
        note().control<QPlainTextEdit>(u"txtNote"_s)->setPlainText(u"Canone"_s);
        note().addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        note().save();
        const int original = note().form().IdRecord();
        const QString stored = u"SELECT * FROM FATT_ACC WHERE IDFATT_ACC = %1"_s.arg(original);
        const QStringList before = lines(stored);
        auto &form = dynamic_cast<TMMGInserimentoFattureAccompagnatorie &>(note().form());
        ModuleConnection().close();
        QVERIFY_EXCEPTION_THROWN(form.ImpostaFatturaCiclica(), core::Error);
        ModuleConnection().open();
        QCOMPARE(note().flags() + note().shown(u"txtNote"_s), u"storedCanone"_s);
        form.ImpostaFatturaCiclica();
        QCOMPARE(note().flags() + QString::number(note().form().IdRecord()), u"new modified-1"_s);
        QCOMPARE(note().shown(u"txtNumero"_s) + u'|' + note().shown(u"txtData"_s), u"8|16/03/2026"_s);
        QVERIFY(!note().control<QCheckBox>(u"chkFattureCicliche"_s)->isChecked());
        QVERIFY(!note().control<QWidget>(u"txtGeneraOgni"_s)->isEnabled());
        QCOMPARE(note().shown(u"txtNote"_s), u"Canone\nFattura ciclica\nRif. Fattura n. 7\ndel 01/02/2026"_s);
        note().save();
        QCOMPARE(lines(stored), before);
        QCOMPARE(lines(u"SELECT NUMERO, DATA, FC_ABILITATO FROM FATT_ACC ORDER BY NUMERO"_s),
                 QStringList({u"7|2026-02-01|True"_s, u"8|2026-03-16|False"_s}));
        QCOMPARE(database().select(u"SELECT NOTE FROM FATT_ACC WHERE NUMERO = 8"_s).text(0, u"NOTE"),
                 u"Canone\n\rFattura ciclica\n\rRif. Fattura n. 7\n\rdel 01/02/2026"_s);
        // Opened again it shows as it did.
        note().form().ApriRecord(note().form().IdRecord());
        QCOMPARE(note().shown(u"txtNote"_s), u"Canone\nFattura ciclica\nRif. Fattura n. 7\ndel 01/02/2026"_s);
        // Each has its own row and movement.
        QCOMPARE(lines(u"SELECT D.CODICE, D.IMPORTO FROM FATT_ACC_DETT D JOIN MOVI_MAGA M ON M.RIF_DOC_IDRIGA "
                       "= D.IDFATT_ACC_DETT AND M.RIF_DOC_ID = D.IDFATT_ACC"_s),
                 QStringList({u"TRA-0018|30"_s, u"TRA-0018|30"_s}));
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
};

static const test::Registered<TestInvoiceForm> registered;

#include "test_invoice_form.moc"

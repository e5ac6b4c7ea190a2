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

/// The reminder for recurring invoices, and the copy that a due one is turned into.
class TestRecurringInvoices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        test::columns<bool, bool, QDate, QString, QString>("enabled", "on15th", "end", "shown", "stored");
        const QDate end(2027, 1, 1);
        const QString group = u"True|3|Mese|2026-01-"_s;
        QTest::newRow("the 15th") << true << true << end << u"15/04/2026"_s << group + u"31|2027-01-01|2026-04-15"_s;
        QTest::newRow("past the end") << true << false << QDate(2026, 4, 29) << u"nessuna"_s
                                      << group + u"31|2026-04-29|"_s;
        QTest::newRow("unchecked") << false << true << end << u"15/04/2026"_s << u"False|||||NULL"_s;
    }

    void reminderIsStoredAndComesBack()
    {
        const auto [enabled, on15th, end, shown, stored] = test::row<bool, bool, QDate, QString, QString>();
        test::Workplace workplace;
        const test::Document invoice(workplace, test::accompanyingInvoice());
        auto *check = invoice.control<QCheckBox>(u"chkFattureCicliche"_s);
        invoice.fillHeader();
        check->setChecked(true);
        invoice.control<ui::IntegerEdit>(u"txtGeneraOgni"_s)->setValue(3);
        invoice.control<QComboBox>(u"txtGeneraOgniUM"_s)->setCurrentText(u"Mese"_s);
        invoice.control<ui::DateEdit>(u"txtDataInizioCiclica"_s)->setDate(QDate(2026, 1, 31));
        invoice.control<ui::DateEdit>(u"txtDataFineCiclica"_s)->setDate(end);
        if (on15th)
            dayButton(invoice.form(), onThe15th)->setChecked(true);
        QCOMPARE(invoice.shown(u"lblDataNuovaFattura"_s), shown);
        check->setChecked(enabled);
        invoice.save();
        QCOMPARE(workplace.lines(columns), QStringList({stored}));
        const int id = invoice.form().IdRecord();
        invoice.trigger(u"actNuovo"_s);
        QVERIFY(!check->isChecked());
        invoice.form().ApriRecord(id);
        QCOMPARE(check->isChecked(), enabled);
        QCOMPARE(dayButton(invoice.form(), onThe15th)->isChecked(), enabled && on15th);
        QCOMPARE(invoice.flags(), u"stored"_s);
        if (enabled)
            QCOMPARE(invoice.shown(u"lblDataNuovaFattura"_s), shown);
        invoice.form().DataChanged();
        invoice.save();
        QCOMPARE(workplace.lines(columns), QStringList({stored}));
    }

    void copyOfAnInvoice()
    {
        test::Workplace workplace;
        const test::Document invoice(workplace, test::accompanyingInvoice());
        invoice.fillHeader();
        invoice.control<ui::IntegerEdit>(u"txtNumero"_s)->setValue(7);
        invoice.control<ui::DateEdit>(u"txtData"_s)->setDate(QDate(2026, 2, 1));
        invoice.control<QCheckBox>(u"chkFattureCicliche"_s)->setChecked(true);
        invoice.control<QPlainTextEdit>(u"txtNote"_s)->setPlainText(u"Canone"_s);
        invoice.addArticle(u"TRA-0018"_s, u"10"_s, u"3"_s);
        invoice.save();
        const int original = invoice.form().IdRecord();
        const QString stored = u"SELECT * FROM FATT_ACC WHERE IDFATT_ACC = %1"_s.arg(original);
        const QStringList before = workplace.lines(stored);
        dynamic_cast<TMMGInserimentoFattureAccompagnatorie &>(invoice.form()).ImpostaFatturaCiclica();
        QCOMPARE(invoice.flags() + QString::number(invoice.form().IdRecord()), u"new modified-1"_s);
        QCOMPARE(invoice.shown(u"txtNumero"_s) + u'|' + invoice.shown(u"txtData"_s), u"8|16/03/2026"_s);
        QVERIFY(!invoice.control<QCheckBox>(u"chkFattureCicliche"_s)->isChecked());
        QVERIFY(!invoice.control<QWidget>(u"txtGeneraOgni"_s)->isEnabled());
        QCOMPARE(invoice.shown(u"txtNote"_s), u"Canone\nFattura ciclica\nRif. Fattura n. 7\ndel 01/02/2026"_s);
        invoice.save();
        QCOMPARE(workplace.lines(stored), before);
        QCOMPARE(workplace.lines(u"SELECT NUMERO, DATA, FC_ABILITATO FROM FATT_ACC ORDER BY NUMERO"_s),
                 QStringList({u"7|2026-02-01|True"_s, u"8|2026-03-16|False"_s}));
        QCOMPARE(workplace.database().select(u"SELECT NOTE FROM FATT_ACC WHERE NUMERO = 8"_s).text(0, u"NOTE"),
                 u"Canone\n\rFattura ciclica\n\rRif. Fattura n. 7\n\rdel 01/02/2026"_s);
        // Opened again it shows as it did.
        invoice.form().ApriRecord(invoice.form().IdRecord());
        QCOMPARE(invoice.shown(u"txtNote"_s), u"Canone\nFattura ciclica\nRif. Fattura n. 7\ndel 01/02/2026"_s);
        // Each has its own row and movement.
        QCOMPARE(
            workplace.lines(u"SELECT D.CODICE, D.IMPORTO FROM FATT_ACC_DETT D JOIN MOVI_MAGA M ON M.RIF_DOC_IDRIGA "
                            "= D.IDFATT_ACC_DETT AND M.RIF_DOC_ID = D.IDFATT_ACC"_s),
            QStringList({u"TRA-0018|30"_s, u"TRA-0018|30"_s}));
    }
};

static const test::Registered<TestRecurringInvoices> registered;

#include "test_recurring_invoices.moc"

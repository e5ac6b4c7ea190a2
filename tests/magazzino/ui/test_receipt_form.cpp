#include "tests/support/Fixtures.h"

class TestReceiptForm : public test::AtDocument
{
    Q_OBJECT
    Q_CLASSINFO("kind", "receipt")

private Q_SLOTS:
    void saveWritesRowsAndMovements()
    {
        note().enter(u"2,35"_s, u"10"_s);
        note().addArticle(u"SEM-0500"_s, u"0"_s, u"2,5"_s);
        note().save();
        QCOMPARE(
            lines(u"SELECT D.CODICE, D.DESCRIZIONE, C.CATEGORIA, D.CATEGORIA, D.COSTO, D.PREZZO, D.QUANTITA, "
                  "D.IMPORTO, A.CODICE, D.IVA_CODICE, D.IVA_DESCRIZIONE, D.IVA_ALIQUOTA, U.UM, D.UM, D.TIPO_RIGA "
                  "FROM BOLLE_CARICO_DETT D LEFT JOIN CATEGORIE_ANA_MAGA C ON C.IDCATEGORIA_ANA_MAGA = "
                  "D.IDCATEGORIA LEFT JOIN ALIQUOTE_IVA A ON A.IDALIQUOTA_IVA = D.IVA_IDALIQUOTA_IVA LEFT JOIN UM "
                  "U ON U.IDUM = D.IDUM ORDER BY D.IDBOLLA_CARICO_DETT"_s),
            QStringList({u"TRA-0018|Trapano avvitatore 18 V a batteria|Trapani e avvitatori|Trapani e "
                         "avvitatori|2.35|0|10|23.5|22|22|Aliquota ordinaria 22%|22|PZ|PZ|Articolo"_s,
                         u"SEM-0500|Semente per prato, busta 500 g|Sementi|Sementi|0|0|2.5|0|10|10|Aliquota ridotta "
                         "10%|10|PZ|PZ|Articolo"_s}));
        QCOMPARE(
            lines(u"SELECT M.IDMAGAZZINO, M.DATA_MOVIMENTO, M.CODICE, M.DESCRIZIONE, C.CATEGORIA, M.TIPO_MOVIMENTO, "
                  "M.PREZZO, M.COSTO, M.QUANTITA, M.VALORE, M.VALORE_IMPORTO, M.IDCAUSALE_MAGA, M.RIF_DOC_TIPO, "
                  "B.NUMERO, D.CODICE, M.NOTE FROM MOVI_MAGA M JOIN CATEGORIE_ANA_MAGA C ON C.IDCATEGORIA_ANA_MAGA "
                  "= M.IDCATEGORIA_ANA_MAGA JOIN BOLLE_CARICO B ON B.IDBOLLA_CARICO = M.RIF_DOC_ID JOIN "
                  "BOLLE_CARICO_DETT D ON D.IDBOLLA_CARICO_DETT = M.RIF_DOC_IDRIGA ORDER BY M.IDMOVI_MAGA"_s),
            QStringList({u"0|2026-03-16|TRA-0018|Trapano avvitatore 18 V a batteria|Trapani e avvitatori|Carico|0|2.35|"
                         "10|2.35|23.5|2|Bolla di carico|1|TRA-0018|Bolla di carico n. 1 del 16/03/2026"_s,
                         u"0|2026-03-16|SEM-0500|Semente per prato, busta 500 g|Sementi|Carico|0|0|2.5|0|0|2|Bolla "
                         "di carico|1|SEM-0500|Bolla di carico n. 1 del 16/03/2026"_s}));
    }

    void amountsBeyondTheColumnsAreRefused()
    {
        const QString huge = u"99999999999,99"_s;
        note().enter(huge, huge); // the quantity is refused
        note().form().SetModified(false);
        for (const auto &[header, refused, kept] : {std::tuple(u"Costo"_s, u"100000000000"_s, u"€ 99.999.999.999,99"_s),
                                                    {u"Q.tà"_s, u"0"_s, u"1,00"_s},
                                                    {u"Q.tà"_s, u"-3"_s, u"1,00"_s}}) {
            test::typeIntoCell(note().grid(), 0, header, refused);
            QCOMPARE(test::cellText(note().grid(), 0, header), kept);
            QVERIFY(!note().form().Modified() && !note().grid()->findChild<QWidget *>(u"editorRiga"_s));
        }
        test::typeIntoCell(note().grid(), 0, u"Q.tà"_s, u"50000"_s);
        note().addArticle(u"TRA-0018"_s, huge, u"50000"_s); // each row fits, the total does not
        place().messages.expectError(test::saveError);
        note().save();
        QCOMPARE(note().flags(), u"new modified"_s);
        test::typeIntoCell(note().grid(), 1, u"Q.tà"_s, u"1"_s);
        note().save();
        QCOMPARE(lines(u"SELECT TOTALE_IMPOSTA FROM BOLLE_CARICO WHERE TOTALE_DOCUMENTO > 0"_s).size(), 1);
    }

    void numberColumnsGrow()
    {
        note().addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
        const auto width = [this](const QString &header) {
            return note().grid()->columnWidth(test::columnOf(note().grid(), header));
        };
        const auto together = [&] {
            int sum = 0;
            for (int column = 0; column < note().grid()->model()->columnCount(); ++column)
                sum += note().grid()->columnWidth(column);
            return sum;
        };
        const int usable = note().grid()->width() - 21;
        const int lineHeight = note().grid()->rowHeight(0);
        QCOMPARE(width(u"Q.tà"_s), 60);
        QCOMPARE(width(u"Importo"_s), 100);
        QCOMPARE(together(), usable);
        test::typeIntoCell(note().grid(), 0, u"Costo"_s, u"123456,78"_s);
        test::typeIntoCell(note().grid(), 0, u"Q.tà"_s, u"12345,67"_s);
        for (const QString &header : {u"Costo"_s, u"Q.tà"_s, u"Importo"_s}) {
            const QString text = test::cellText(note().grid(), 0, header);
            QVERIFY2(width(header) >= note().grid()->fontMetrics().horizontalAdvance(text) + 6, qPrintable(text));
        }
        QCOMPARE(together(), usable);
        QCOMPARE(note().grid()->rowHeight(0), lineHeight);
        // Opened again, on its first page, it has the rows as high as they need to be once they are shown.
        note().fillHeader();
        note().save();
        database().execute(u"UPDATE BOLLE_CARICO_DETT SET DESCRIZIONE = '%1'"_s.arg(u"lunga "_s.repeated(80)));
        note().form().ApriRecord(note().form().IdRecord());
        note().showPage(1);
        QVERIFY(note().grid()->rowHeight(0) >= 2 * note().grid()->fontMetrics().height());
        QCOMPARE(together(), usable);
        // Nor is a total cut where the form is as small as can be.
        QWidget *window = note().form().parentWidget();
        window->resize(window->minimumSizeHint());
        test::settle();
        for (const QString &name : {u"lblTotaleImponibile"_s, u"lblTotaleImposta"_s, u"lblTotaleDocumento"_s}) {
            const auto *total = note().control<QLabel>(name);
            QVERIFY2(total->width() >= total->sizeHint().width(), qPrintable(total->text()));
        }
    }

    void otherRowTypesAreEditedAndKept()
    {
        note().store(u"10"_s, u"1"_s);
        const int id = note().form().IdRecord();
        const auto insert = [&](const QString &type, const QString &text, const QVariant &cost, const QVariant &vat) {
            database().run(
                u"INSERT INTO BOLLE_CARICO_DETT(IDBOLLA_CARICO, TIPO_RIGA, DESCRIZIONE, CODICE, COSTO, PREZZO, "
                "QUANTITA, IMPORTO, IVA_IDALIQUOTA_IVA, IVA_CODICE) VALUES(?, ?, ?, 'COD', ?, 0, 2, 0, ?, '99')"_s,
                {id, type, text, cost, vat});
        };
        insert(u"Non imponibile"_s, u"Cauzione"_s, 5.0, QVariant(QMetaType(QMetaType::Int)));
        insert(u"Servizio"_s, u"Trasporto"_s, 7.0, 9999);
        insert(u"Testo"_s, u"Solo testo"_s, 3.0, 9999);
        insert(u"Articolo"_s, u"Senza costo"_s, QVariant(QMetaType(QMetaType::Double)), 9999);
        note().form().ApriRecord(id);
        note().showPage(1);
        // As stored, not recomputed.
        QCOMPARE(totals(), u"€ 10,00|€ 2,20|€ 12,20"_s);
        QCOMPARE(test::columnTexts(note().grid(), u"Costo"_s),
                 QStringList({u"€ 10,00"_s, u"€ 5,00"_s, u"€ 7,00"_s, QString(), u"€ 0,00"_s}));
        test::typeIntoCell(note().grid(), 1, u"Descrizione"_s, u"Cauzione d'uso"_s);
        test::typeIntoCell(note().grid(), 1, u"Q.tà"_s, u"3"_s);
        // The unknown rate counts for the base and not for the tax.
        QCOMPARE(totals(), u"€ 24,00|€ 2,20|€ 41,20"_s);
        note().save();
        QCOMPARE(lines(u"SELECT TIPO_RIGA, DESCRIZIONE, CODICE, COSTO, PREZZO, QUANTITA, IMPORTO, "
                       "IVA_IDALIQUOTA_IVA, IVA_CODICE FROM BOLLE_CARICO_DETT ORDER BY IDBOLLA_CARICO_DETT"_s)
                     .mid(1),
                 QStringList({u"Non imponibile|Cauzione d'uso||5|0|3|15||"_s, u"Servizio|Trasporto|COD|7|0|2|14||"_s,
                              u"Testo|Solo testo|||||||"_s, u"Articolo|Senza costo|COD|0|0|2|0||"_s}));
        QCOMPARE(lines(u"SELECT DESCRIZIONE FROM MOVI_MAGA ORDER BY IDMOVI_MAGA"_s),
                 QStringList({u"Trapano avvitatore 18 V a batteria"_s, u"Senza costo"_s}));
    }

    void renamedReasons()
    {
        note().fillHeader();
        note().save();
        const int id = note().form().IdRecord();
        auto *list = note().control<QComboBox>(u"txtCausaleTrasporto"_s);
        const int items = list->count();
        const QString reason = u"SELECT IDCAUSALE_TRASPORTO FROM CAUSALI_TRASPORTO WHERE CAUSALE_TRASPORTO = '%1'"_s;
        ui::EntryForm *reasons = openEntry(u"actInserimentoCausaliTrasporto"_s);
        const auto rename = [&](const QString &text) {
            reasons->openRecord(lines(reason.arg(text)).first().toInt());
            auto *edit = test::control<QLineEdit>(reasons, u"txtCausaleTrasporto"_s);
            QTest::keyClick(edit, Qt::Key_End);
            test::type(edit, u" 2"_s);
            test::trigger(reasons, u"actSalva"_s);
        };
        rename(u"Vendita"_s);
        // The stored receipt keeps its text, the list has the new one.
        QCOMPARE(list->currentText(), u"Vendita"_s);
        QCOMPARE(note().flags(), u"stored"_s);
        QVERIFY(list->findText(u"Vendita 2"_s) > 0);
        for (int i = 0; i < 2; ++i) {
            note().form().ApriRecord(id);
            QCOMPARE(list->currentText(), u"Vendita"_s);
            QCOMPARE(list->count(), items + 1);
        }
        note().trigger(u"actNuovo"_s);
        QCOMPARE(list->count(), items);
        QCOMPARE(list->findText(u"Vendita"_s), -1);
        // One that is chosen but not stored yet follows.
        list->setCurrentText(u"Reso"_s);
        rename(u"Reso"_s);
        QCOMPARE(list->currentText(), u"Reso 2"_s);
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        test::trigger(reasons, u"actElimina"_s);
        QCOMPARE(list->findText(u"Reso 2"_s), -1);
        note().form().SetModified(false);
    }

    void rowCommands()
    {
        for (const QString &cost : {u"1"_s, u"2"_s, u"3"_s})
            note().addArticle(u"TRA-0018"_s, cost, u"1"_s);
        const auto costs = [this] { return test::columnTexts(note().grid(), u"Costo"_s).join(u' ').remove(u"€ "_s); };
        note().grid()->select(2, &DocumentRow::costo);
        note().form().SetModified(false);
        note().trigger(u"actSpostaRigaGiu"_s); // the last row stays
        QCOMPARE(note().flags(), u"new"_s);
        note().trigger(u"actSpostaRigaSu"_s);
        QCOMPARE(costs(), u"1,00 3,00 2,00"_s);
        QCOMPARE(note().grid()->selectedRow(), 1);
        QCOMPARE(note().flags(), u"new modified"_s);
        note().trigger(u"actSpostaRigaSu"_s);
        note().trigger(u"actSpostaRigaSu"_s); // the first row stays
        QCOMPARE(costs(), u"3,00 1,00 2,00"_s);

        place().messages.expectQuestion(u"Eliminare la riga selezionata?"_s, core::Answer::No);
        note().trigger(u"actEliminaRiga"_s);
        QCOMPARE(costs(), u"3,00 1,00 2,00"_s);
        place().messages.expectQuestion(u"Eliminare la riga selezionata?"_s, core::Answer::Yes);
        note().trigger(u"actEliminaRiga"_s);
        QCOMPARE(costs(), u"1,00 2,00"_s);
        QCOMPARE(totals(), u"€ 3,00|€ 0,66|€ 3,66"_s);
    }

    void questionBeforeLosingChanges_data() { test::cases({u"actNuovo"_s, u"actEsci"_s}); }

    void questionBeforeLosingChanges()
    {
        const QString action = test::currentCase();
        note().enter(u"2"_s, u"10"_s);
        const QPointer<QWidget> form = &note().form();
        const auto leave = [&] {
            if (action == u"actEsci"_s)
                test::trigger(&place().window(), action);
            else
                note().trigger(action);
        };
        place().messages.expectQuestion(test::unsaved, core::Answer::No);
        leave();
        QVERIFY(form && form->isVisible());
        QCOMPARE(note().flags(), u"new modified"_s);
        QCOMPARE(note().shown(u"lblRagioneSociale"_s), u"Acciaierie Brentane S.p.A."_s);
        QCOMPARE(note().grid()->model()->rowCount(), 1);
        place().messages.expectQuestion(test::unsaved, core::Answer::Yes);
        leave();
        if (form) {
            QCOMPARE(note().grid()->model()->rowCount(), 0);
            QCOMPARE(note().flags(), u"new"_s);
        }
        QCOMPARE(form.isNull(), action == u"actEsci"_s);
    }

    void missingDocumentLeavesTheHeader()
    {
        note().store(u"2"_s, u"10"_s);
        note().form().ApriRecord(note().form().IdRecord() + 100);
        QCOMPARE(note().shown(u"lblRagioneSociale"_s), u"Acciaierie Brentane S.p.A."_s);
        QCOMPARE(note().grid()->model()->rowCount(), 0);
        // The header must not be saved, without its rows, over the document that it belonged to.
        QCOMPARE(note().form().IdRecord(), -1);
        note().form().SetModified(true);
        place().messages.expectWarning(test::numberTaken);
        note().trigger(u"actSalva"_s);
    }

    void deletingKeepsTheMovements()
    {
        test::insertInto(database(), u"BOLLE_CARICO"_s, u"NUMERO=7|ANNO=2025"_s);
        note().store(u"2"_s, u"10"_s);
        const QStringList before = note().stored();
        place().messages.expectQuestion(test::deleting, core::Answer::No);
        note().trigger(u"actElimina"_s);
        QCOMPARE(note().stored(), before);
        QCOMPARE(note().flags(), u"stored"_s);
        place().messages.expectQuestion(test::deleting, core::Answer::Yes);
        note().trigger(u"actElimina"_s);
        QCOMPARE(lines(u"SELECT NUMERO FROM BOLLE_CARICO"_s), QStringList(u"7"_s));
        QCOMPARE(lines(u"SELECT COUNT(*) FROM BOLLE_CARICO_DETT"_s), QStringList(u"0"_s));
        QCOMPARE(lines(u"SELECT CODICE FROM MOVI_MAGA"_s), QStringList(u"TRA-0018"_s));
        QCOMPARE(note().flags(), u"new"_s);
    }

private:
    QString totals() const
    {
        return note().shown(u"lblTotaleImponibile"_s) + u'|' + note().shown(u"lblTotaleImposta"_s) + u'|' +
               note().shown(u"lblTotaleDocumento"_s);
    }
};

static const test::Registered<TestReceiptForm> registered;

#include "test_receipt_form.moc"

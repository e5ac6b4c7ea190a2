#include "magazzino/Azioni.h"
#include "platform/ui/CategoryTree.h"
#include "tests/support/Fixtures.h"

class TestSelectionDialogs : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void articleFilters()
    {
        const QString insert = u"INSERT INTO ANA_MAGA(CODICE, DESCRIZIONE, COSTO, PREZZO) VALUES(?, ?, 0, 0)"_s;
        database().run(insert, {u"ZZ'1"_s, u"Filtro per l'acqua \"X\""_s});
        database().run(insert, {u"ZZ%2"_s, u"Cotone 100%, è così a :ID perché?"_s});
        database().run(insert, {u"ZZ-3-456789012345678"_s, u"Codice lungo"_s});
        TMMGModSelezionaBase &dialog = this->dialog(u"Articolo"_s);
        dialog.show();
        // Code, description, what is found: no wildcards nor parameters, and control characters do not count.
        for (const auto &[code, description, found] : {std::tuple(u"tra"_s, u"18 V"_s, u"TRA-0018"_s),
                                                       {u""_s, u"l'acqua \"x"_s, u"ZZ'1"_s},
                                                       {u""_s, u"100%"_s, u"ZZ%2"_s},
                                                       {u"zz_"_s, u""_s, u""_s},
                                                       {u""_s, u"È COSÌ"_s, u"ZZ%2"_s},
                                                       {u"zz-3-456789012345678"_s, u""_s, u"ZZ-3-456789012345678"_s},
                                                       {u""_s, u"l'ac\1qu"_s + QChar(0) + u"a \"x"_s, u"ZZ'1"_s},
                                                       {u""_s, u"perché?"_s, u"ZZ%2"_s}}) {
            test::retype(&dialog, u"txtCodice"_s, code);
            test::control<QLineEdit>(&dialog, u"txtDescrizione"_s)->setText(description);
            test::press(&dialog, u"actCerca"_s);
            QCOMPARE(codes(dialog).join(u'|'), found);
        }
        dialog.reject();
    }

    void categoryIncludesThoseBelow()
    {
        for (const auto &[dialogName, category, code, count] : {std::tuple(u"Articolo"_s, u"Ferramenta"_s, u""_s, 50),
                                                                {u"Articolo"_s, u"Ferramenta"_s, u"vit"_s, 5},
                                                                {u"Servizio"_s, u"Trasporto"_s, u""_s, 5}}) {
            TMMGModSelezionaBase &dialog = this->dialog(dialogName);
            dialog.show();
            auto *tree = test::control<ui::CategoryTree>(&dialog, u"txtCategoria"_s);
            QCOMPARE(tree->itemText(0).trimmed(), u"Tutte le categorie"_s);
            int entry = 0;
            while (entry < tree->count() && tree->itemText(entry).trimmed() != category)
                ++entry;
            QVERIFY(entry < tree->count());
            tree->setCurrentIndex(entry);
            test::retype(&dialog, u"txtCodice"_s, code);
            test::press(&dialog, u"actCerca"_s);
            QCOMPARE(codes(dialog).size(), count);
            dialog.reject();
        }
    }

    void okWithoutARowWarnsAndStaysOpen()
    {
        for (const ui::ActionSpec &action : moduleActions()) {
            if (action.kind != ui::ActionKind::Selection)
                continue;
            TMMGModSelezionaBase &dialog = place().module().selectionDialog(action.name);
            dialog.show();
            test::settle();
            // With rows to choose from, and with none.
            for (const bool empty : {false, true}) {
                if (empty)
                    dialog.AggiornaGriglia(u"WHERE 1 = 0"_s);
                grid(dialog)->setCurrentIndex({});
                place().messages.expectWarning(u"Nessuna voce selezionata!"_s);
                test::press(&dialog, u"cmdOk"_s);
                QVERIFY2(place().messages.verify().isEmpty() && dialog.isVisible(), qPrintable(action.name));
            }
            test::press(&dialog, u"cmdAnnulla"_s);
            QVERIFY2(!dialog.isVisible() && dialog.result() == QDialog::Rejected, qPrintable(action.name));
        }
    }

    void longNotesReadFromTheirFirstLine()
    {
        database().run(u"INSERT INTO NOTE_DOCUMENTI(TITOLO, TESTO) VALUES('0 righe', ?)"_s,
                       {QStringList(6, u"riga"_s).join(u'\n')});
        TMMGModSelezionaBase &dialog = this->dialog(u"NotaDocumenti"_s);
        dialog.show();
        test::settle();
        QVERIFY(grid(dialog)->rowHeight(0) >= 6 * grid(dialog)->fontMetrics().height());
        for (int column = 0; column < 2; ++column) {
            const QVariant alignment = grid(dialog)->model()->index(0, column).data(Qt::TextAlignmentRole);
            QCOMPARE(Qt::Alignment(alignment.toInt()), Qt::AlignLeft | Qt::AlignTop);
        }
        dialog.reject();
    }

private:
    TMMGModSelezionaBase &dialog(const QString &name)
    {
        return place().module().selectionDialog(u"actModSeleziona"_s + name);
    }
    QTableView *grid(const QWidget &dialog) const { return test::control<QTableView>(&dialog, u"gridRisultati"_s); }
    QStringList codes(const QWidget &dialog) const { return test::columnTexts(grid(dialog), u"Codice"_s); }
};

static const test::Registered<TestSelectionDialogs> registered;

#include "test_selection_dialogs.moc"

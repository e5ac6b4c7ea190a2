#include "magazzino/Azioni.h"
#include "platform/ui/CategoryTree.h"
#include "tests/support/Fixtures.h"

namespace {

QWidget *focused()
{
    return QApplication::focusWidget();
}

} // namespace

/// Lists and selection dialogs worked by the keyboard alone.
class TestListKeys : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void enterTwiceTakesTheOnlyRow_data()
    {
        test::table<QString, QString, bool>({{"one row", u"TRA-0018"_s, {}, true},
                                             {"two rows", u"TRA-00"_s, {}, false},
                                             {"another text", u"TRA-001"_s, u"8"_s, false},
                                             {"no row", u"none"_s, {}, false}});
    }

    void enterTwiceTakesTheOnlyRow()
    {
        const auto [code, typedBetween, taken] = test::row<QString, QString, bool>();
        TMMGModSelezionaBase &dialog = shown(u"Articolo"_s);
        test::type(focused(), code);
        test::pressKey(Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.ApriSelezionato().id, -1);
        test::type(focused(), typedBetween);
        test::pressKey(Qt::Key_Return);
        QCOMPARE(dialog.isVisible(), !taken);
        QCOMPARE(dialog.result() == QDialog::Accepted, taken);
        QCOMPARE(dialog.ApriSelezionato().id > 0, taken);
        // Used again, the same text stands in the filter, and Enter only searches.
        dialog.hide();
        shown(u"Articolo"_s);
        test::pressKey(Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        dialog.hide();
    }

    void downBeginsAtTheFirstRow()
    {
        TMMGModSelezionaBase &dialog = shown(u"Articolo"_s);
        QTableView *grid = gridOf(dialog);
        for (const bool fromFilter : {true, false}) {
            test::retype(&dialog, u"txtCodice"_s, u"T"_s);
            test::pressKey(Qt::Key_Return);
            QVERIFY(grid->model()->rowCount() > 1);
            while (!fromFilter && focused() != grid)
                test::pressKey(Qt::Key_Tab);
            test::pressKey(Qt::Key_Down);
            QCOMPARE(focused(), grid);
            QCOMPARE(grid->selectionModel()->selectedRows().value(0).row(), 0);
        }
        test::pressKey(Qt::Key_Down);
        test::pressKey(Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(grid->selectionModel()->selectedRows().value(0).row(), 1);
    }

    void typedLetterPressesItsButton()
    {
        TMMGModSelezionaBase &dialog = shown(u"Cliente"_s);
        const QStringList withA = names(dialog);
        QVERIFY(withA.first().startsWith(u'A'));
        QTest::keyClick(focused(), Qt::Key_B);
        QCOMPARE(test::control<QLineEdit>(&dialog, u"txtRagioneSociale"_s)->text(), u"b"_s);
        QCOMPARE(names(dialog), withA);
        gridOf(dialog)->setFocus();
        for (const Qt::Key key : {Qt::Key_B, Qt::Key_Down}) // the second one so that a row is selected
            test::pressKey(key);
        QVERIFY(names(dialog).first().startsWith(u'B'));
        QTest::keyClick(focused(), '*');
        QVERIFY(names(dialog).size() > withA.size());
        dialog.hide();
    }

    void lettersAreOneTabStop()
    {
        const TMMGModSelezionaBase &dialog = shown(u"Vettore"_s);
        const auto *letters = test::control<QWidget>(&dialog, u"BarraRicerca"_s);
        const auto tabTo = [letters] {
            while (focused()->parentWidget() != letters)
                test::pressKey(Qt::Key_Tab);
            return qobject_cast<QToolButton *>(focused())->text();
        };
        QCOMPARE(tabTo(), u"A"_s);
        test::pressKey(Qt::Key_Right);
        test::pressKey(Qt::Key_Tab);
        QVERIFY(focused()->parentWidget() != letters);
        QCOMPARE(tabTo(), u"B"_s);
        test::pressKey(Qt::Key_End);
        QCOMPARE(gridOf(dialog)->model()->rowCount(), 0);
        test::pressKey(Qt::Key_Return);
        QVERIFY(gridOf(dialog)->model()->rowCount() > 0);
        test::pressKey(Qt::Key_Down);
        QVERIFY(dialog.ApriSelezionato().id > 0);
    }

    void enterTwiceInAListEdits()
    {
        const QString code = lines(u"SELECT FIRST 1 CODICE FROM FORNITORI"_s).value(0);
        const ui::SearchForm *list = openList(u"actRicercaFornitori"_s);
        test::type(focused(), code);
        test::pressKey(Qt::Key_Return);
        QCOMPARE(list->selectedKey(), -1);
        QVERIFY(list->isAncestorOf(focused()));
        test::pressKey(Qt::Key_Return);
        QCOMPARE(test::shown(openEntry(u"actInserimentoFornitori"_s), u"txtCodice"_s), code);
    }

    void failedSearchShowsNoOldRows()
    {
        const ui::SearchForm *list = openList(u"actRicercaFornitori"_s);
        TMMGModSelezionaBase &dialog = shown(u"Fornitore"_s);
        QVERIFY(!names(*list).isEmpty());
        QVERIFY(!names(dialog).isEmpty());
        connection().setStatementHook([](const QString &) { throw core::Error(u"rete interrotta"_s); });
        place().messages.expectError(u"rete interrotta"_s);
        gridOf(dialog)->setFocus();
        test::pressKey(Qt::Key_B);
        QCOMPARE(names(dialog), QStringList());
        QVERIFY(!QGuiApplication::overrideCursor() && dialog.isVisible());
        dialog.hide();
        place().messages.expectError(u"rete interrotta"_s);
        test::press(list, u"cmdCerca"_s);
        QCOMPARE(names(*list), QStringList());
    }

    void registerTakesAnyText()
    {
        for (const QString &code : {u"ZZ'1"_s, u"ZZ?:2"_s})
            test::insertInto(database(), u"ANA_MAGA"_s, u"DESCRIZIONE=esca|CODICE="_s + code);
        const QWidget *list = place().commands().openForm(u"actRicercaArticoli"_s);
        const QTableView *grid = gridOf(*list);
        // One text is longer than the column, the last one nothing like a pattern.
        for (const auto &[typed, found] :
             {std::pair(u"zz'"_s, u"ZZ'1"_s), {u"?:"_s, u"ZZ?:2"_s}, {QString(90, u'z'), u""_s}, {u"z_"_s, u""_s}}) {
            test::retype(list, u"txtCodice"_s, typed);
            test::pressKey(Qt::Key_Return);
            QCOMPARE(test::columnTexts(grid, u"Codice"_s).join(u'|'), found);
        }
        test::press(list, u"cmdRipristina"_s);
        gridOf(*list)->setFocus();
        for (const auto &[letter, some] : {std::pair(Qt::Key_B, false), {Qt::Key_E, true}, {Qt::Key_Asterisk, true}}) {
            test::pressKey(letter);
            QCOMPARE(test::columnTexts(grid, u"Codice"_s).contains(u"ZZ'1"_s), some);
        }
    }

    void movementListHasNoDelete()
    {
        const ui::SearchForm *list = openList(u"actRicercaMovimentiMagazzino"_s);
        QVERIFY(!list->command(u"actElimina"_s));
        QStringList texts;
        for (const QAction *action : list->formMenu()->actions().mid(0, 4))
            texts.append(action->text());
        QCOMPARE(texts, QStringList({u"Nuovo"_s, u"Modifica"_s, QString(), u"Chiudi"_s}));
    }

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
                gridOf(dialog)->setCurrentIndex({});
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
        QVERIFY(gridOf(dialog)->rowHeight(0) >= 6 * gridOf(dialog)->fontMetrics().height());
        for (int column = 0; column < 2; ++column) {
            const QVariant alignment = gridOf(dialog)->model()->index(0, column).data(Qt::TextAlignmentRole);
            QCOMPARE(Qt::Alignment(alignment.toInt()), Qt::AlignLeft | Qt::AlignTop);
        }
        dialog.reject();
    }

private:
    /// A selection dialog as its caller shows it.
    TMMGModSelezionaBase &shown(const QString &name) const
    {
        TMMGModSelezionaBase &dialog = place().module().selectionDialog(u"actModSeleziona"_s + name);
        dialog.setResult(QDialog::Rejected);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        test::settle();
        return dialog;
    }
    static QTableView *gridOf(const QWidget &window) { return window.findChild<QTableView *>(); }
    static QStringList names(const QWidget &window) { return test::columnTexts(gridOf(window), u"Ragione sociale"_s); }
    TMMGModSelezionaBase &dialog(const QString &name)
    {
        return place().module().selectionDialog(u"actModSeleziona"_s + name);
    }
    QStringList codes(const QWidget &dialog) const { return test::columnTexts(gridOf(dialog), u"Codice"_s); }
};

static const test::Registered<TestListKeys> registered;

#include "test_list_keys.moc"

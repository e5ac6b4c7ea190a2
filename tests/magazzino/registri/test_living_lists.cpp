#include "platform/ui/EntryForm.h"
#include "platform/ui/UserSettings.h"
#include "tests/support/Fixtures.h"

/// What lists and windows do by themselves: rows that follow what is stored, searches while one types, names, places.
class TestLivingLists : public test::AtKeptWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    // Whatever stores it: a form, a deletion, another connection of the program.
    void hostListFollowsAndStaysInPlace()
    {
        for (int i = 0; i < 60; ++i)
            test::insertInto(database(), u"CLIENTI"_s, u"CODICE=ZZ%1|RAGIONESOCIALE=Prova %2"_s.arg(i).arg(10 + i));
        const ui::SearchForm *list = openHost(u"Clienti"_s);
        QTableView *grid = gridOf(*list);
        test::selectRow(grid, u"Prova 40"_s);
        grid->verticalScrollBar()->setValue(grid->currentIndex().row() - 3);
        const int key = list->selectedKey();
        const int top = grid->visualRect(grid->currentIndex()).top();
        ui::EntryForm &entry = place().commands().entryForm(u"actInserimentoClienti"_s);
        entry.openRecord(key);
        test::typeOver(test::control<QWidget>(&entry, u"txtCitta"_s), u"Altrove"_s);
        QVERIFY(entry.saveRecord());
        test::settle();
        QCOMPARE(test::cellText(grid, grid->currentIndex().row(), u"Città"_s), u"Altrove"_s);
        test::insertInto(connection(), u"CLIENTI"_s, u"CODICE=A0|RAGIONESOCIALE=Aaaa"_s);
        database().execute(u"DELETE FROM CLIENTI WHERE CODICE = 'ZZ0' OR CODICE = 'ZZ1'"_s);
        test::settle();
        const QStringList codes = test::columnTexts(grid, u"Codice"_s);
        QVERIFY(codes.contains(u"A0"_s) && !codes.contains(u"ZZ1"_s));
        QCOMPARE(list->selectedKey(), key);
        QCOMPARE(grid->visualRect(grid->currentIndex()).top(), top);
        QCOMPARE(test::shown(list, u"lblQuanteRighe"_s), u"%1 righe"_s.arg(codes.size()));
    }

    // No rows are not "Nessun risultato" when nobody could ask.
    void failedSearchSaysNothingOfRows()
    {
        const ui::SearchForm *list = openHost(u"Clienti"_s);
        const QString count = test::shown(list, u"lblQuanteRighe"_s);
        database().setStatementHook([](const QString &) { throw core::Error(u"perduto"_s); });
        place().messages.expectPart(u"Errore"_s, u"perduto"_s, core::Answer::Ok);
        QTest::keyClick(test::control<QWidget>(list, u"txtCodice"_s), Qt::Key_F5);
        database().setStatementHook({});
        QCOMPARE(test::shown(list, u"lblQuanteRighe"_s), QString());
        QCOMPARE(hint(list), u"Elenco da aggiornare (F5)"_s);
        QTest::keyClick(test::control<QWidget>(list, u"txtCodice"_s), Qt::Key_F5);
        QCOMPARE(test::shown(list, u"lblQuanteRighe"_s), count);
        QCOMPARE(hint(list), QString());
    }

    void moduleListOnlySaysThatItIsOld()
    {
        const ui::SearchForm *list = openList(u"actRicercaFornitori"_s);
        const QTableView *grid = gridOf(*list);
        test::press(list, u"cmdCerca"_s);
        const int rows = grid->model()->rowCount();
        QCOMPARE(hint(list), QString());
        database().execute(u"UPDATE VETTORI SET NOTE = 'x'"_s);
        QCOMPARE(hint(list), QString());
        test::insertInto(database(), u"FORNITORI"_s, {{u"CODICE"_s, u"A1"_s}, {u"RAGIONESOCIALE"_s, u"Aaaa"_s}});
        QCOMPARE(hint(list), u"Elenco da aggiornare (F5)"_s);
        test::type(test::control<QWidget>(list, u"txtCodice"_s), u"A1"_s);
        QTest::qWait(250);
        QCOMPARE(grid->model()->rowCount(), rows);
        QTest::keyClick(test::control<QWidget>(list, u"txtCodice"_s), Qt::Key_F5);
        QCOMPARE(test::columnTexts(grid, u"Codice"_s), QStringList(u"A1"_s));
        QCOMPARE(hint(list), QString());
        // A row that it takes out itself leaves it as true as it was.
        test::selectRow(gridOf(*list), u"A1"_s);
        place().messages.expectPart(u"Conferma"_s, test::deleting, core::Answer::Yes);
        test::trigger(list, u"actElimina"_s);
        QCOMPARE(test::shown(list, u"lblQuanteRighe"_s) + hint(list), u"Nessun risultato"_s);
    }

    void hostListSearchesWhileOneTypes()
    {
        test::insertInto(database(), u"ANA_MAGA"_s, {{u"CODICE"_s, u"CAF"_s}, {u"DESCRIZIONE"_s, u"Caffè in grani"_s}});
        const ui::SearchForm *list = openHost(u"Articoli"_s);
        const QTableView *grid = gridOf(*list);
        const qsizetype all = grid->model()->rowCount();
        auto *filter = test::control<QLineEdit>(list, u"txtDescrizione"_s);
        filter->setFocus();
        test::type(filter, u"  caffe "_s);
        QCOMPARE(grid->model()->rowCount(), all); // nothing while the keys follow each other
        QTRY_COMPARE(test::columnTexts(grid, u"Codice"_s), QStringList(u"CAF"_s));
        QCOMPARE(test::shown(list, u"lblQuanteRighe"_s), u"1 riga"_s);
        test::type(filter, u"x"_s);
        test::press(list, u"cmdRipristina"_s);
        QTest::qWait(250);
        QCOMPARE(grid->model()->rowCount(), 1);
        QTest::keyClick(filter, Qt::Key_F, Qt::ControlModifier);
        test::type(filter, u"GRANÌ"_s);
        QTRY_COMPARE(grid->model()->rowCount(), 1);
        test::type(filter, u"ZZ"_s);
        QTRY_COMPARE(test::shown(list, u"lblQuanteRighe"_s), u"Nessun risultato"_s);
    }

    // For each user, beyond the session; also where the windows were put.
    void filtersAndPlacesAreKept()
    {
        test::trigger(&place().window(), u"actFinestreLibere"_s);
        QWidget *list = openHost(u"Articoli"_s);
        test::type(test::control<QLineEdit>(list, u"txtCodice"_s), u"tra-0018"_s);
        QTRY_COMPARE(gridOf(*list)->model()->rowCount(), 1);
        list->parentWidget()->setGeometry(25, 35, 720, 400);
        test::trigger(list, u"actChiudi"_s);
        startAgain();
        list = openHost(u"Articoli"_s);
        QCOMPARE(test::shown(list, u"txtCodice"_s), u"tra-0018"_s);
        QCOMPARE(test::columnTexts(gridOf(*list), u"Codice"_s), QStringList(u"TRA-0018"_s));
        QCOMPARE(list->parentWidget()->geometry(), QRect(25, 35, 720, 400));
        test::trigger(list, u"actChiudi"_s);
        ui::rememberFor(file(), u"UFFICIO"_s);
        QCOMPARE(test::shown(openHost(u"Articoli"_s), u"txtCodice"_s), QString());
    }

    void windowIsNamedAfterItsRecord()
    {
        const test::Document note(place(), test::deliveryNote());
        const QString caption = u"Inserimento / Modifica D.d.T. di scarico"_s;
        const auto title = [&note] { return note.form().parentWidget()->windowTitle(); };
        const QString number = u" – D.d.T. %1/2026"_s.arg(note.shown(u"txtNumero"_s));
        QCOMPARE(title(), caption + number);
        note.fillHeader();
        const QString whole = caption + number + u" · "_s + test::deliveryNote().counterpart;
        QCOMPARE(title(), whole + u" *"_s);
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
        note.save();
        QCOMPARE(title(), whole);
        QCOMPARE(note.form().windowTitle(), caption);
    }

private:
    static QString hint(const QWidget *list) { return test::shown(list, u"lblElencoDaAggiornare"_s); }

    ui::SearchForm *openHost(const QString &name) const
    {
        auto *form = qobject_cast<ui::SearchForm *>(place().commands().openForm(u"actRicerca"_s + name));
        test::checkModel(gridOf(*form));
        test::settle();
        return form;
    }
};

static const test::Registered<TestLivingLists> registered;

#include "test_living_lists.moc"

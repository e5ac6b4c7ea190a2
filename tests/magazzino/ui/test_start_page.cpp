#include "host/ui/StartPage.h"
#include "host/users/Users.h"
#include "magazzino/reports/uMMGModStampaSottoscortaRiordino.h"
#include "platform/ui/ProgressDialog.h"
#include "tests/support/Fixtures.h"

/// The page without windows, and the search over everything.
class TestStartPage : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        page_ = place().window().findChild<host::StartPage *>();
        QVERIFY(page_);
    }

    void lastDocumentsAreOneKeyAway()
    {
        QVERIFY(page_->isVisible());
        saveOneOfEach();
        QTRY_VERIFY(page_->isVisible());
        test::settle();
        auto *grid = test::control<QTableView>(page_, u"gridUltimiDocumenti"_s);
        QCOMPARE(test::columnTexts(grid, u"Documento"_s),
                 QStringList({u"D.d.T. di scarico"_s, u"Fattura accompagnatoria"_s, u"Bolla di carico"_s}));
        picture(place().window(), u"pagina-iniziale"_s);
        // The focus is on the first command; a few Tabs lead to the documents.
        QCOMPARE(QApplication::focusWidget()->objectName(), u"cmdInizioInserimentoBolleCarico"_s);
        test::pressKey(Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"cmdInizioInserimentoDdTScarico"_s);
        for (int i = 0; i < 12 && QApplication::focusWidget() != grid; ++i)
            test::pressKey(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), grid);
        test::strike(u"\n"_s);
        QVERIFY(!page_->isVisible());
        QCOMPARE(shownIn(u"MMGInserimentoDdTScarico"_s, u"txtNumero"_s), u"1"_s);
    }

    void tellsNothingOfInvoicesWithoutTheRight()
    {
        saveOneOfEach();
        SetKxCurrentUserName(u"MAGAZZINIERE"_s);
        page_->refresh();
        QCOMPARE(test::columnTexts(test::control<QTableView>(page_, u"gridUltimiDocumenti"_s), u"Documento"_s),
                 QStringList({u"D.d.T. di scarico"_s, u"Bolla di carico"_s}));
        const auto command = [this] {
            return page_->findChild<QWidget *>(u"cmdInizioInserimentoFattureAccompagnatorie"_s);
        };
        QVERIFY(!command());
        QCOMPARE(search(u"arredo"_s), QStringList({u"D.d.T. di scarico"_s, u"Clienti"_s}));
        // Who may change invoices without seeing them finds no trace of them either.
        database().execute(
            u"INSERT INTO ABILITAZIONI_RUOLI(IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) SELECT R.IDRUOLO_UTENTE, "
            "A.IDABILITAZIONE_UTENTE FROM UTENTI_RUOLI R, ABILITAZIONI_UTENTE A WHERE R.USER_NAME = 'MAGAZZINIERE' AND "
            "A.ABILITAZIONE_UTENTE = 'Fatture acc. (modifica)'"_s);
        QVERIFY(host::userHasRight(u"MAGAZZINIERE"_s, u"Fatture acc. (modifica)"_s, database()));
        page_->refresh();
        QVERIFY(!command());
    }

    void newFirmIsToldWhatToDo()
    {
        test::settle();
        const auto ticked = [this](const QString &button) {
            return test::control<QPushButton>(page_, button)->text().startsWith(u'☑');
        };
        QVERIFY(test::control<QGroupBox>(page_, u"grpPrimiPassi"_s)->isVisible());
        QVERIFY(ticked(u"cmdPassoAzienda"_s) && ticked(u"cmdPassoRicercaArticoli"_s));
        QVERIFY(!ticked(u"cmdPassoRicercaUtenti"_s) && !ticked(u"cmdPassoInserimentoBolleCarico"_s));
        test::press(page_, u"cmdPassoInserimentoBolleCarico"_s);
        const test::Document receipt(place(), test::receipt());
        receipt.fillAll();
        receipt.save();
        receipt.form().closeForm();
        test::settle();
        QVERIFY(ticked(u"cmdPassoInserimentoBolleCarico"_s));
    }

    void articlesUnderStockAreCountedAsTheReportListsThem()
    {
        // As many movements as nobody counts unasked.
        database().execute(u"SET GENERATOR GN_IDMOVI_MAGA TO 1000000"_s);
        test::settle();
        const auto quiet = ui::setQuietTime({});
        const auto restore = qScopeGuard([quiet] { ui::setQuietTime(quiet); });
        database().execute(u"EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < 40000) DO BEGIN I = I + 1; "
                           "INSERT INTO ANA_MAGA(CODICE, DESCRIZIONE, SOTTOSCORTA) VALUES('L' || :I, '-', 1); "
                           "END END"_s);
        const auto count = [this](const test::ScriptedDialogs::Use &use) {
            place().dialogs.expect(use);
            test::control<QPushButton>(page_, u"cmdSottoscortaConta"_s)->setFocus();
            test::pressKey(Qt::Key_Return);
            return test::control<QPushButton>(page_, u"cmdSottoscorta"_s)->text();
        };
        const QString uncounted = count([](QDialog &dialog) {
            QTest::keyClick(test::control<QPushButton>(&dialog, u"cmdAnnulla"_s), Qt::Key_Space);
            test::waiting()(dialog);
        });
        QCOMPARE(uncounted, u"Articoli in sottoscorta"_s);
        QCOMPARE(count(test::waiting()), u"Articoli in sottoscorta: %1"_s.arg(lines(SottoscortaRiordinoSQL(0)).size()));
        QCOMPARE(test::control<QPushButton>(page_, u"cmdSottoscortaConta"_s)->text(), u"contati alle 10:30"_s);
    }

    void searchFindsByPartsOfWords_data()
    {
        test::table<QString, QStringList>(
            {{"number", u"1"_s,
              QStringList({u"Bolle di carico"_s, u"D.d.T. di scarico"_s, u"Fatture accompagnatorie"_s})},
             {"number and year", u"1/2025"_s, {}},
             {"supplier", u"BRENTANE"_s, {u"Bolle di carico"_s, u"Fornitori"_s}},
             {"accents", u"caorle"_s, QStringList(u"Clienti"_s)},
             {"two words", u"arr alp"_s, {u"D.d.T. di scarico"_s, u"Fatture accompagnatorie"_s, u"Clienti"_s}},
             {"row",
              u"tra-0018"_s,
              {u"Articoli"_s, u"Righe di bolle di carico"_s, u"Righe di D.d.T. di scarico"_s,
               u"Righe di fatture accompagnatorie"_s}},
             {"nothing", u"xyzzy"_s, {}},
             {"no pattern", u"%_'"_s, {}}});
    }

    void searchFindsByPartsOfWords()
    {
        const auto [typed, groups] = test::row<QString, QStringList>();
        saveOneOfEach();
        QStringList found = search(typed);
        if (typed == u"1"_s)
            found = found.mid(0, 3);
        QCOMPARE(found, groups);
    }

    // Only when asked, from the newest to the oldest; until then nobody waits for them.
    void searchGoesOnToOlderDocuments()
    {
        database().execute(uR"(EXECUTE BLOCK AS DECLARE I INTEGER = 1; DECLARE K INTEGER; BEGIN
            WHILE (I <= 650) DO BEGIN
                INSERT INTO DDT_SCARICO(NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_TRASPORTO,
                    TIPO_TRASPORTO, IDCAUSALE_TRASPORTO, CAUSALE_TRASPORTO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA,
                    TOTALE_DOCUMENTO)
                VALUES (:I, '2026-01-01', 2026, 'R', 'Rossi', 1, 'Mittente', 1, 'Vendita', 0, 0, 0)
                RETURNING IDDDT_SCARICO INTO :K;
                INSERT INTO DDT_SCARICO_DETT(IDDDT_SCARICO, CODICE, DESCRIZIONE, PREZZO, QUANTITA, IMPORTO, TIPO_RIGA)
                VALUES (:K, 'X', 'Bancale ' || IIF(:I = 1, 'antico', 'nuovo'), 0, 1, 0, 'Articolo');
                I = I + 1;
            END END)"_s);
        place().dialogs.expect([](QDialog &dialog) {
            look(dialog, u"antico"_s);
            const auto *list = test::control<QTreeWidget>(&dialog, u"lstTrovati"_s);
            const auto *state = test::control<QLabel>(&dialog, u"lblTrovati"_s);
            QCOMPARE(state->text(), u"Nessun risultato"_s);
            QCOMPARE(list->topLevelItemCount(), 1);
            QCOMPARE(list->topLevelItem(0)->text(0), u"Cerca anche nei documenti meno recenti"_s);
            test::strike(u"\n"_s);
            QTRY_COMPARE(state->text(), u"1 risultato"_s);
            QCOMPARE(list->topLevelItemCount(), 1);
            QCOMPARE(list->topLevelItem(0)->text(0), u"Righe di D.d.T. di scarico"_s);
            test::strike(u"\n"_s);
        });
        test::trigger(&place().commands(), u"actCercaOvunque"_s);
        QCOMPARE(shownIn(u"MMGInserimentoDdTScarico"_s, u"txtNumero"_s), u"1"_s);
    }

    void searchOpensWhatIsChosen()
    {
        saveOneOfEach();
        place().dialogs.expect([](QDialog &dialog) {
            look(dialog, u"brentane"_s);
            picture(dialog, u"cerca-ovunque"_s);
            test::pressKey(Qt::Key_Down);
            test::strike(u"\n"_s);
        });
        test::trigger(&place().commands(), u"actCercaOvunque"_s);
        QCOMPARE(shownIn(u"MMGInserimentoFornitori"_s, u"txtRagioneSociale"_s), u"Acciaierie Brentane S.p.A."_s);
    }

private:
    // In a window that has opened.
    QString shownIn(const QString &form, const QString &control) const
    {
        const auto *opened = test::control<QWidget>(&place().window(), form);
        return opened->isVisible() ? test::shown(opened, control) : u"hidden"_s;
    }
    static void picture(QWidget &widget, const QString &name)
    {
        if (const QString path = qEnvironmentVariable("MAGAZZINO_PICTURES"); !path.isEmpty())
            widget.grab().save(u"%1/%2.png"_s.arg(path, name));
    }
    void saveOneOfEach() const
    {
        int day = 0;
        for (const test::DocumentNames *names :
             {&test::receipt(), &test::accompanyingInvoice(), &test::deliveryNote()}) {
            const test::Document document(place(), *names);
            document.fillHeader();
            test::typeOver(document.control<QLineEdit>(u"txtData"_s), u"%1/3/26"_s.arg(++day));
            document.addArticle(u"TRA-0018"_s, u"7"_s, u"3"_s);
            document.save();
            document.form().closeForm();
        }
        test::settle();
    }
    static void look(QDialog &dialog, const QString &text)
    {
        test::type(test::control<QLineEdit>(&dialog, u"txtCercaOvunque"_s), text);
        const auto *state = test::control<QLabel>(&dialog, u"lblTrovati"_s);
        QTRY_VERIFY(state->text().contains(u"risultat"_s));
    }
    // The groups of what is found.
    QStringList search(const QString &text) const
    {
        QStringList groups;
        place().dialogs.expect([&](QDialog &dialog) {
            look(dialog, text);
            const auto *list = test::control<QTreeWidget>(&dialog, u"lstTrovati"_s);
            for (int i = 0; i < list->topLevelItemCount(); ++i)
                groups.append(list->topLevelItem(i)->text(0));
            test::pressKey(Qt::Key_Escape);
        });
        test::trigger(&place().commands(), u"actCercaOvunque"_s);
        return groups;
    }

    host::StartPage *page_ = nullptr;
};

static const test::Registered<TestStartPage> registered;

#include "test_start_page.moc"

#include "platform/ui/ProgressDialog.h"
#include "tests/report/Prints.h"

/// The windows around printing: report forms, the note's commands, the preview.
class TestReportForms : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        database().execute(u"DELETE FROM MOVI_MAGA"_s);
    }

    void cleanup() override
    {
        ui::setSaveFileChooser({});
        AtWorkplace::cleanup();
    }

    void inventoryPrintsAndCloses()
    {
        addMovement(u"TRA-0018"_s, 1000, 2000);
        addMovement(u"TRA-0018"_s, 7.5, 15);
        addMovement(u"SMA-0750"_s, 3, 6);
        addMovement(u"MAI-VISTO"_s, 99, 99);
        const QPointer<QWidget> form = open(u"actStampaInventarioValorizzato"_s);
        test::trigger(form, u"actStampa"_s);
        const QString texts = shownTexts();
        for (const QString &part :
             {u"Inventario valorizzato di magazzino"_s, u"Movimenti dal 01/01/2026 al 31/12/2026"_s, u"Pagina 1 di 1"_s,
              u"|1.007,50|€ 2.015,00|"_s, u"Articoli: 2"_s, u"Totale esistenza|1.010,50"_s,
              u"Totale valore|€ 2.021,00"_s})
            QVERIFY2(texts.contains(part), qPrintable(part + u" in "_s + texts));
        QVERIFY(texts.indexOf(u"SMA-0750"_s) < texts.indexOf(u"TRA-0018"_s));
        QVERIFY(!form);
    }

    void inventoryWithoutRowsStaysOpen()
    {
        addMovement(u"TRA-0018"_s, 1, 1);
        const QPointer<QWidget> form = open(u"actStampaInventario"_s);
        test::control<ui::DateEdit>(form, u"txtDataDal"_s)->setDate({2026, 12, 31});
        test::control<ui::DateEdit>(form, u"txtDataAl"_s)->setDate({2026, 1, 1});
        place().messages.expectInformation(u"Nessun dato da stampare per l'intervallo selezionato."_s);
        test::trigger(form, u"actStampa"_s);
        QVERIFY(!preview());
        QVERIFY(form && form->isVisible());
    }

    // Reading, laying out and writing what is long; each is done again afterwards.
    void longPrintsCanBeCancelled()
    {
        QList<bool> cancelled;
        const auto runner = ui::setModalRunner([&cancelled](QDialog &dialog) {
            if (cancelled.takeFirst()) {
                dialog.reject();
            } else {
                dialog.show();
                test::waiting()(dialog);
            }
            return 0;
        });
        const auto quiet = ui::setQuietTime({});
        const auto restore = qScopeGuard([&] {
            ui::setModalRunner(runner);
            ui::setQuietTime(quiet);
        });
        database().execute(u"EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < 4000) DO BEGIN I = I + 1; "
                           "INSERT INTO ANA_MAGA(CODICE, DESCRIZIONE) VALUES('L' || :I, 'Lungo'); "
                           "INSERT INTO MOVI_MAGA(IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, "
                           "IDCATEGORIA_ANA_MAGA, TIPO_MOVIMENTO, PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, "
                           "IDCAUSALE_MAGA) VALUES(0, DATE '2026-03-01', 'L' || :I, '-', 0, 'Carico', 0, 0, 1, 1, 1, "
                           "0); END END"_s);
        const QPointer<QWidget> form = open(u"actStampaInventario"_s);
        for (const QList<bool> &steps : {QList<bool>{true}, {false, true}, {false, false}}) {
            QVERIFY(form && form->isVisible() && !preview());
            cancelled = steps;
            test::trigger(form, u"actStampa"_s);
            QCOMPARE(cancelled, QList<bool>());
        }
        QVERIFY(!form);
        QVERIFY(shownTexts().contains(u"L1000"_s));
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"lungo.pdf"_s);
        ui::setSaveFileChooser([&file](QWidget *, const ui::SaveFileRequest &) { return file; });
        for (const bool cancel : {true, false}) {
            cancelled = {cancel};
            test::trigger(preview(), u"actSalvaPDF"_s);
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), cancel ? 0 : 1);
        }
        QCOMPARE(test::pdfPages(file).size(), preview()->document().pageCount());
    }

    void inventoriesDifferInTabOrder()
    {
        for (const auto &[action, next] : {std::pair(u"actStampaInventario"_s, u"grpCategoria"_s),
                                           std::pair(u"actStampaInventarioValorizzato"_s, u"grpEsistenza"_s)}) {
            const QWidget *form = open(action);
            const auto *dates = test::control<QWidget>(form, u"grpData"_s);
            test::control<QWidget>(form, u"txtDataDal"_s)->setFocus();
            while (dates->isAncestorOf(QApplication::focusWidget()))
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget()->parentWidget()->objectName(), next);
        }
    }

    void reorderListFollowsTheChoice()
    {
        database().execute(u"DELETE FROM ANA_MAGA"_s);
        const auto article = [this](const QString &code, const QVariant &under, const QVariant &reorder) {
            test::insertInto(database(), u"ANA_MAGA"_s,
                             {{u"CODICE"_s, code}, {u"SOTTOSCORTA"_s, under}, {u"RIORDINO"_s, reorder}});
            if (code != u"A-VUOTO"_s)
                addMovement(code, 5, 5);
        };
        article(u"A-UGUALE"_s, 5, 10);
        article(u"A-RIORDINO"_s, 4.99, 5);
        article(u"A-BASTA"_s, 1, 2);
        article(u"A-NULLO"_s, {}, {});
        article(u"A-VUOTO"_s, 0, 0);
        // What an inventory left as heading must not come out again.
        place().module().rProject->setParameter(u"stringValue"_s, u"Movimenti dal"_s);
        const QList<std::pair<QString, QStringList>> choices = {
            {u"Articoli in sottoscorta"_s, {u"A-UGUALE"_s, u"A-VUOTO"_s}},
            {u"Articoli in riordino"_s, {u"A-RIORDINO"_s, u"A-UGUALE"_s, u"A-VUOTO"_s}}};
        for (int choice = 0; choice < 2; ++choice) {
            place().dialogs.expect([choice](QDialog &dialog) {
                dialog.findChildren<QRadioButton *>().at(choice)->setChecked(true);
                test::press(&dialog, u"cmdStampa"_s);
            });
            test::trigger(&place().module(), u"actStampaSottoscortaRiordino"_s);
            const QString texts = shownTexts();
            QStringList found = texts.split(u'|').filter(QRegularExpression(u"^A-"_s));
            found.sort();
            QCOMPARE(found, choices[choice].second);
            QVERIFY(texts.contains(choices[choice].first) && !texts.contains(u"Movimenti dal"_s));
            test::trigger(preview(), u"actChiudi"_s);
        }
    }

    void changedNoteIsSavedFirst()
    {
        const int transport = lines(u"SELECT FIRST 1 IDTIPO_TRASPORTO FROM TIPI_TRASPORTO"_s).value(0).toInt();
        const ui::EntryForm *form = openNote(
            test::insertNote(database(), 1, {{u"IDTIPO_TRASPORTO"_s, transport}, {u"IDCAUSALE_TRASPORTO"_s, 1}}));
        test::control<QPlainTextEdit>(form, u"txtNote"_s)->setPlainText(u"Nota cambiata"_s);
        const QString question = u"Per stampare il documento è necessario salvarlo.\n\rSalvarlo ora?"_s;
        place().messages.expectQuestion(question, core::Answer::No);
        test::trigger(form, u"actStampa"_s);
        QVERIFY(!preview() && form->Modified());
        place().messages.expectQuestion(question, core::Answer::Yes);
        test::trigger(form, u"actStampa"_s);
        QVERIFY(shownTexts().contains(u"Nota cambiata"_s) && !form->Modified());
    }

    void pdfNameGetsItsExtension()
    {
        const QTemporaryDir folder;
        const ui::EntryForm *form = openNote(test::insertNote(database(), 1, {{u"NUMERO"_s, 1234}}));
        QString proposed;
        ui::setSaveFileChooser([&](QWidget *, const ui::SaveFileRequest &request) {
            proposed = request.proposedName;
            return folder.filePath(u"nota.1"_s);
        });
        test::trigger(form, u"actSalvaPDF"_s);
        QCOMPARE(proposed, u"D.d.T. di scarico 1234-2026.pdf"_s);
        const QString written = folder.filePath(u"nota.1.pdf"_s);
        QCOMPARE(test::pdfPages(written).size(), 1);
        // The dialog did not ask about the name that it does not know.
        place().messages.expectQuestion(u"Il file \"%1\" esiste già.\n\rSovrascriverlo?"_s.arg(written),
                                        core::Answer::No);
        test::trigger(form, u"actSalvaPDF"_s);
        QCOMPARE(place().messages.verify(), QStringList());
        // The list proposes the same name.
        ui::SearchForm *list = openList(u"actRicercaDdTScarico"_s);
        list->search();
        gridOf(*list)->selectRow(0);
        proposed.clear();
        place().messages.expectQuestion(u"Il file \"%1\" esiste già.\n\rSovrascriverlo?"_s.arg(written),
                                        core::Answer::No);
        test::trigger(list, u"actSalvaPDF"_s);
        QCOMPARE(proposed, u"D.d.T. di scarico 1234-2026.pdf"_s);
    }

    void previewSavesAndPrintsItsOwnDocument()
    {
        const QTemporaryDir folder;
        const int first = test::insertNote(database(), 100);
        StampaDdTScarico(first, {}, TKxReportDestination::Anteprima);
        const QPointer<host::PreviewWindow> window = preview();
        const int pages = window->document().pageCount();
        // Another run in between changes neither the window nor what it prints.
        StampaDdTScarico(-1, folder.filePath(u"altro.pdf"_s), TKxReportDestination::FilePDF);

        ui::setSaveFileChooser(
            [&](QWidget *, const ui::SaveFileRequest &request) { return folder.filePath(request.proposedName); });
        test::trigger(window, u"actSalvaPDF"_s);
        // As list and form propose it.
        QCOMPARE(test::pdfPages(folder.filePath(u"D.d.T. di scarico 12-2026.pdf"_s)).size(), pages);

        const QString printed = folder.filePath(u"stampante.pdf"_s);
        place().dialogs.expect([&](QDialog &dialog) {
            auto *print = qobject_cast<QPrintDialog *>(&dialog);
            QCOMPARE(print->maxPage(), pages);
            // Printing to a file takes its name from the document.
            QCOMPARE(print->printer()->docName(), u"Documento di trasporto n. 12-2026"_s);
            print->printer()->setOutputFormat(QPrinter::PdfFormat);
            print->printer()->setOutputFileName(printed);
            print->printer()->setFromTo(2, 3);
            dialog.done(QDialog::Accepted);
        });
        test::trigger(window, u"actStampa"_s);
        const QStringList read = test::pdfPages(printed);
        QCOMPARE(read.size(), 2);
        QVERIFY(read[0].contains(u"2 di %1"_s.arg(pages)) && read[1].contains(u"3 di %1"_s.arg(pages)));
        test::trigger(window, u"actChiudi"_s);
        QVERIFY(!window);
    }

    void oneNoteHasOnePreview()
    {
        const int first = test::insertNote(database(), 100);
        StampaDdTScarico(first, {}, TKxReportDestination::Anteprima);
        const QPointer<host::PreviewWindow> window = preview();
        QVERIFY(window->document().pageCount() > 1);
        window->goToPage(1);
        database().execute(u"DELETE FROM DDT_SCARICO_DETT"_s);
        StampaDdTScarico(first, {}, TKxReportDestination::Anteprima);
        QCOMPARE(place().window().findChildren<host::PreviewWindow *>().size(), 1);
        QCOMPARE(window->document().pageCount(), 1);
        QCOMPARE(test::control<QSpinBox>(window, u"txtPagina"_s)->value(), 1);
        // Every other record has its own, and a list has one for each time that it is printed.
        StampaDdTScarico(test::insertNote(database(), 1, {{u"NUMERO"_s, 13}}), {}, TKxReportDestination::Anteprima);
        for (int i = 0; i < 2; ++i)
            StampaElenco(u"Inventario"_s, {});
        QCOMPARE(place().window().findChildren<host::PreviewWindow *>().size(), 4);
    }

    void remarksStandAboveThePages()
    {
        const int note = test::insertNote(database(), 1, {{u"NUMERO"_s, 3}, {u"CLI_CITTA"_s, QVariant()}});
        test::insertNote(database(), 1, {{u"NUMERO"_s, 1}, {u"DATA"_s, QDate(2026, 3, 17)}});
        StampaDdTScarico(note, {}, TKxReportDestination::Anteprima);
        auto *line = test::control<QToolButton>(preview(), u"cmdRilievi"_s);
        const auto *list = test::control<QListWidget>(preview(), u"lstRilievi"_s);
        QVERIFY(!line->isHidden() && list->isHidden());
        QCOMPARE(line->text(), u"3 rilievi su questo documento"_s);
        QTest::keyClick(line, Qt::Key_Space);
        QVERIFY(!list->isHidden());
        QCOMPARE(list->item(0)->text(), u"Manca la città del cliente."_s);
        QCOMPARE(list->item(1)->text(), u"Prima di questo documento manca il numero 2."_s);
        QCOMPARE(list->item(2)->text(), u"Il numero 1 viene prima di questo, ma ha una data successiva."_s);
        // Printed again once nothing is wrong.
        database().execute(u"UPDATE DDT_SCARICO SET CLI_CITTA = 'Padova', DATA = '2026-03-16'"_s);
        database().execute(u"UPDATE DDT_SCARICO SET NUMERO = 2 WHERE NUMERO = 3"_s);
        StampaDdTScarico(note, {}, TKxReportDestination::Anteprima);
        QVERIFY(line->isHidden() && list->isHidden());
        // An invoice is looked at as a file would be.
        StampaFatturaAccompagnatoria(
            test::insertInvoice(database(), 1, {{u"NUMERO"_s, 1}, {u"CLI_PARTITAIVA"_s, u"01234567897"_s}}), {},
            TKxReportDestination::Anteprima);
        const host::PreviewWindow *second = place().window().findChildren<host::PreviewWindow *>().last();
        QCOMPARE(test::control<QListWidget>(second, u"lstRilievi"_s)->item(0)->text(),
                 u"00306 Il codice fiscale del cliente è sbagliato."_s);
    }

private:
    ui::EntryForm *openNote(int key) const
    {
        ui::EntryForm *form = openEntry(u"actInserimentoDdTScarico"_s);
        form->openRecord(key);
        return form;
    }

    host::PreviewWindow *preview() const
    {
        test::settle();
        return place().window().findChild<host::PreviewWindow *>();
    }

    void addMovement(const QString &code, double quantity, double value) const
    {
        test::insertInto(database(), u"MOVI_MAGA"_s,
                         {{u"CODICE"_s, code},
                          {u"DATA_MOVIMENTO"_s, QDate(2026, 2, 10)},
                          {u"QUANTITA"_s, quantity},
                          {u"VALORE_IMPORTO"_s, value}});
    }

    QString shownTexts() const
    {
        QStringList texts;
        const host::PreviewWindow *window = preview();
        if (!window)
            return {};
        const QList<report::TextRun> runs = window->document().page(0).texts;
        for (const report::TextRun &run : runs)
            texts.append(run.text);
        return texts.join(u'|');
    }
};

static const test::Registered<TestReportForms> registration;

#include "test_report_forms.moc"

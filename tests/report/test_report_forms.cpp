#include "host/ui/MainWindow.h"
#include "host/ui/PreviewWindow.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/data/Connection.h"
#include "platform/ui/CategoryTree.h"
#include "platform/ui/Controls.h"
#include "platform/ui/EntryForm.h"
#include "tests/report/Prints.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QRadioButton>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

/// The windows around printing: report forms, the note's commands, the preview.
class TestReportForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void inventoryPrintsAndCloses_data();
    void inventoryPrintsAndCloses();
    void inventoryWithoutRowsStaysOpen();
    void inventoryTakesSubcategoriesIn();
    void inventoryStartsWithItsDefaults();
    void reorderListFollowsTheChoice_data();
    void reorderListFollowsTheChoice();
    void reorderListCancelledOrEmpty();
    void savedNoteIsPrintedAtOnce();
    void changedNoteIsSavedFirst_data();
    void changedNoteIsSavedFirst();
    void pdfNameGetsItsExtension_data();
    void pdfNameGetsItsExtension();
    void unwritablePdfIsReported();
    void previewTurnsPagesAndZooms();
    void previewSavesAndPrintsItsOwnDocument();

private:
    QWidget *open(const QString &action) const { return workplace_->module().openForm(action); }
    ui::EntryForm *openNote(int key) const;
    host::PreviewWindow *preview() const;
    void addMovement(const QString &code, double quantity, double value) const;
    QString shownTexts() const;

    std::unique_ptr<test::Workplace> workplace_;
};

void TestReportForms::init()
{
    workplace_ = std::make_unique<test::Workplace>();
    workplace_->database().execute(u"DELETE FROM MOVI_MAGA"_s);
}

void TestReportForms::cleanup()
{
    ui::setSaveFileChooser({});
    workplace_.reset();
}

ui::EntryForm *TestReportForms::openNote(int key) const
{
    auto *form = qobject_cast<ui::EntryForm *>(open(u"actInserimentoDdTScarico"_s));
    form->ApriRecord(key);
    return form;
}

host::PreviewWindow *TestReportForms::preview() const
{
    test::settle();
    return workplace_->window().findChild<host::PreviewWindow *>();
}

void TestReportForms::addMovement(const QString &code, double quantity, double value) const
{
    test::insertInto(workplace_->database(), u"MOVI_MAGA"_s,
                     {{u"CODICE"_s, code},
                      {u"DATA_MOVIMENTO"_s, QDate(2026, 2, 10)},
                      {u"QUANTITA"_s, quantity},
                      {u"VALORE_IMPORTO"_s, value}});
}

QString TestReportForms::shownTexts() const
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

void TestReportForms::inventoryPrintsAndCloses_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("plain") << u"actStampaInventario"_s << u"Inventario di magazzino"_s
                           << QStringList{u"|1.007,50|"_s, u"Articoli: 2"_s, u"Totale esistenza|1.010,50"_s};
    QTest::newRow("valued") << u"actStampaInventarioValorizzato"_s << u"Inventario valorizzato di magazzino"_s
                            << QStringList{u"|1.007,50|€ 2.015,00|"_s, u"Articoli: 2"_s, u"Totale esistenza|1.010,50"_s,
                                           u"Totale valore|€ 2.021,00"_s};
}

void TestReportForms::inventoryPrintsAndCloses()
{
    QFETCH(const QString, action);
    QFETCH(const QString, title);
    QFETCH(const QStringList, lines);
    addMovement(u"TRA-0018"_s, 1000, 2000);
    addMovement(u"TRA-0018"_s, 7.5, 15);
    addMovement(u"SMA-0750"_s, 3, 6);
    addMovement(u"MAI-VISTO"_s, 99, 99);
    const QPointer<QWidget> form = open(action);
    test::trigger(form, u"actStampa"_s);
    const QString texts = shownTexts();
    QVERIFY2(texts.contains(title), qPrintable(texts));
    QVERIFY(texts.contains(u"Movimenti dal 01/01/2026 al 31/12/2026"_s));
    QVERIFY(texts.contains(u"Stampato il 16/03/2026 alle 10:30|Pagina 1 di 1"_s));
    QVERIFY(texts.indexOf(u"SMA-0750"_s) < texts.indexOf(u"TRA-0018"_s));
    for (const QString &line : lines)
        QVERIFY2(texts.contains(line), qPrintable(line + u" in "_s + texts));
    QVERIFY(!form);
}

void TestReportForms::inventoryWithoutRowsStaysOpen()
{
    addMovement(u"TRA-0018"_s, 1, 1);
    const QPointer<QWidget> form = open(u"actStampaInventario"_s);
    test::control<ui::DateEdit>(form, u"txtDataDal"_s)->setDate({2026, 12, 31});
    test::control<ui::DateEdit>(form, u"txtDataAl"_s)->setDate({2026, 1, 1});
    workplace_->messages.expect(u"Informazioni"_s, u"Nessun dato da stampare per l'intervallo selezionato."_s,
                                core::MessageIcon::Information);
    test::trigger(form, u"actStampa"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QVERIFY(!preview());
    QVERIFY(form && form->isVisible());
}

void TestReportForms::inventoryTakesSubcategoriesIn()
{
    const int top = test::insertInto(workplace_->database(), u"CATEGORIE_ANA_MAGA"_s, {{u"CATEGORIA"_s, u"Alta"_s}});
    const int below = test::insertInto(workplace_->database(), u"CATEGORIE_ANA_MAGA"_s,
                                       {{u"CATEGORIA"_s, u"Bassa"_s}, {u"IDPADRE"_s, top}});
    workplace_->database().execute(
        u"UPDATE ANA_MAGA SET IDCATEGORIA_ANA_MAGA = %1 WHERE CODICE = 'TRA-0018'"_s.arg(below));
    addMovement(u"TRA-0018"_s, 1, 1);
    addMovement(u"SMA-0750"_s, 1, 1);
    QWidget *form = open(u"actStampaInventario"_s);
    test::control<CategoryTree>(form, u"txtCategoria"_s)->selectKey(top);
    test::trigger(form, u"actStampa"_s);
    const QString texts = shownTexts();
    QVERIFY(texts.contains(u"TRA-0018"_s) && !texts.contains(u"SMA-0750"_s));
}

void TestReportForms::inventoryStartsWithItsDefaults()
{
    QWidget *form = open(u"actStampaInventarioValorizzato"_s);
    const auto state = [form] {
        QStringList found = {test::control<ui::DateEdit>(form, u"txtDataDal"_s)->date().toString(Qt::ISODate),
                             test::control<ui::DateEdit>(form, u"txtDataAl"_s)->date().toString(Qt::ISODate),
                             test::control<CategoryTree>(form, u"txtCategoria"_s)->currentText()};
        const QList<QRadioButton *> buttons = form->findChildren<QRadioButton *>();
        for (const QRadioButton *button : buttons)
            found += button->isChecked() ? QStringList{button->text()} : QStringList();
        return found;
    };
    const QStringList start = {u"2026-01-01"_s, u"2026-12-31"_s, u"Tutte le categorie"_s, u"Maggiore di 0"_s};
    QCOMPARE(state(), start);
    test::control<ui::DateEdit>(form, u"txtDataDal"_s)->setDate({2020, 5, 5});
    form->findChildren<QRadioButton *>().last()->setChecked(true);
    test::control<CategoryTree>(form, u"txtCategoria"_s)->setCurrentIndex(1);
    test::trigger(form, u"actRipristina"_s);
    QCOMPARE(state(), start);
}

void TestReportForms::reorderListFollowsTheChoice_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QStringList>("codes");
    QTest::newRow("under-stock") << 0 << u"Articoli in sottoscorta"_s << QStringList{u"A-UGUALE"_s, u"A-VUOTO"_s};
    QTest::newRow("reorder") << 1 << u"Articoli in riordino"_s
                             << QStringList{u"A-RIORDINO"_s, u"A-UGUALE"_s, u"A-VUOTO"_s};
}

void TestReportForms::reorderListFollowsTheChoice()
{
    QFETCH(const int, choice);
    QFETCH(const QString, heading);
    QFETCH(const QStringList, codes);
    workplace_->database().execute(u"DELETE FROM ANA_MAGA"_s);
    const auto article = [this](const QString &code, const QVariant &under, const QVariant &reorder) {
        test::insertInto(workplace_->database(), u"ANA_MAGA"_s,
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
    workplace_->module().rProject->setParameter(u"stringValue"_s, u"Movimenti dal"_s);
    workplace_->dialogs.expect([choice](QDialog &dialog) {
        dialog.findChildren<QRadioButton *>().at(choice)->setChecked(true);
        test::press(&dialog, u"cmdStampa"_s);
    });
    test::trigger(&workplace_->module(), u"actStampaSottoscortaRiordino"_s);
    QStringList found = shownTexts().split(u'|').filter(QRegularExpression(u"^A-"_s));
    found.sort();
    QCOMPARE(found, codes);
    QVERIFY(shownTexts().contains(heading) && !shownTexts().contains(u"Movimenti dal"_s));
    QVERIFY(shownTexts().contains(u"Articoli: %1"_s.arg(codes.size())));

    // The choice is remembered.
    workplace_->dialogs.expect([choice](QDialog &dialog) {
        QVERIFY(dialog.findChildren<QRadioButton *>().at(choice)->isChecked());
        test::press(&dialog, u"cmdAnnulla"_s);
    });
    test::trigger(&workplace_->module(), u"actStampaSottoscortaRiordino"_s);
    QCOMPARE(workplace_->dialogs.verify(), QStringList());
}

void TestReportForms::reorderListCancelledOrEmpty()
{
    workplace_->database().execute(u"DELETE FROM ANA_MAGA"_s);
    workplace_->dialogs.expect([](QDialog &dialog) { test::press(&dialog, u"cmdAnnulla"_s); });
    test::trigger(&workplace_->module(), u"actStampaSottoscortaRiordino"_s);
    workplace_->dialogs.expect([](QDialog &dialog) { test::press(&dialog, u"cmdStampa"_s); });
    workplace_->messages.expect(u"Informazioni"_s, u"Nessun dato da stampare."_s, core::MessageIcon::Information);
    test::trigger(&workplace_->module(), u"actStampaSottoscortaRiordino"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QVERIFY(!preview());
}

void TestReportForms::savedNoteIsPrintedAtOnce()
{
    const ui::EntryForm *form = openNote(test::insertNote(workplace_->database(), 3));
    test::trigger(form, u"actStampa"_s);
    QVERIFY(shownTexts().contains(u"ART-003"_s));
    QCOMPARE(preview()->windowTitle(), u"Anteprima - Documento di trasporto n. 12/2026"_s);
}

void TestReportForms::changedNoteIsSavedFirst_data()
{
    QTest::addColumn<bool>("agrees");
    QTest::newRow("saved and printed") << true;
    QTest::newRow("left alone") << false;
}

void TestReportForms::changedNoteIsSavedFirst()
{
    QFETCH(const bool, agrees);
    const int transport = workplace_->lines(u"SELECT FIRST 1 IDTIPO_TRASPORTO FROM TIPI_TRASPORTO"_s).value(0).toInt();
    const ui::EntryForm *form = openNote(test::insertNote(
        workplace_->database(), 1, {{u"IDTIPO_TRASPORTO"_s, transport}, {u"IDCAUSALE_TRASPORTO"_s, 1}}));
    test::control<QPlainTextEdit>(form, u"txtNote"_s)->setPlainText(u"Nota cambiata"_s);
    workplace_->messages.expectQuestion(u"Per stampare il documento è necessario salvarlo.\n\rSalvarlo ora?"_s,
                                        agrees ? core::Answer::Yes : core::Answer::No);
    test::trigger(form, u"actStampa"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QCOMPARE(shownTexts().contains(u"Nota cambiata"_s), agrees);
    QCOMPARE(form->Modified(), !agrees);
}

void TestReportForms::pdfNameGetsItsExtension_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("written");
    QTest::newRow("with") << u"nota.PDF"_s << u"nota.PDF"_s;
    QTest::newRow("without") << u"nota"_s << u"nota.pdf"_s;
    QTest::newRow("another") << u"nota.1"_s << u"nota.1.pdf"_s;
}

void TestReportForms::pdfNameGetsItsExtension()
{
    QFETCH(const QString, chosen);
    QFETCH(const QString, written);
    const QTemporaryDir folder;
    const ui::EntryForm *form = openNote(test::insertNote(workplace_->database(), 1));
    QList<ui::SaveFileRequest> requests;
    ui::setSaveFileChooser([&](QWidget *, const ui::SaveFileRequest &request) {
        requests.append(request);
        return folder.filePath(chosen);
    });
    test::trigger(form, u"actSalvaPDF"_s);
    QCOMPARE(test::pdfPages(folder.filePath(written)).size(), 1);
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests[0].title, u"Salva come PDF"_s);
    QCOMPARE(requests[0].filter, u"File PDF (*.pdf)"_s);
    QCOMPARE(requests[0].proposedName, u"D.d.T. di scarico 12-2026.pdf"_s);
    QVERIFY(!preview());

    // The dialog did not ask about the name that it does not know.
    if (chosen != written) {
        workplace_->messages.expectQuestion(
            u"Il file \"%1\" esiste già.\n\rSovrascriverlo?"_s.arg(folder.filePath(written)), core::Answer::No);
        test::trigger(form, u"actSalvaPDF"_s);
    }
    ui::setSaveFileChooser([](QWidget *, const ui::SaveFileRequest &) { return QString(); });
    test::trigger(form, u"actSalvaPDF"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
}

void TestReportForms::unwritablePdfIsReported()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"manca/nota.pdf"_s);
    const ui::EntryForm *form = openNote(test::insertNote(workplace_->database(), 1));
    ui::setSaveFileChooser([&](QWidget *, const ui::SaveFileRequest &) { return path; });
    workplace_->messages.expectError(
        u"[StampaDdTScarico]\n\rImpossibile scrivere il file \"%1\": la cartella non esiste."_s.arg(path));
    test::trigger(form, u"actSalvaPDF"_s);
    QCOMPARE(workplace_->messages.verify(), QStringList());
}

void TestReportForms::previewTurnsPagesAndZooms()
{
    StampaDdTScarico(test::insertNote(workplace_->database(), 100), {}, TKxReportDestination::Anteprima);
    host::PreviewWindow *window = preview();
    QVERIFY(window);
    const auto enabled = [window](const QString &name) { return window->command(name)->isEnabled(); };
    QCOMPARE(window->currentPage(), 0);
    QVERIFY(!enabled(u"actPaginaPrecedente"_s));
    test::press(window, u"cmdPaginaSuccessiva"_s);
    QCOMPARE(window->currentPage(), 1);
    test::trigger(window, u"actUltimaPagina"_s);
    QCOMPARE(window->currentPage(), window->document().pageCount() - 1);
    QVERIFY(!enabled(u"actPaginaSuccessiva"_s) && enabled(u"actPrimaPagina"_s));
    test::control<QSpinBox>(window, u"txtPagina"_s)->setValue(2);
    QCOMPARE(window->currentPage(), 1);

    window->setZoom(host::PreviewWindow::Fit::None, 100);
    test::trigger(window, u"actIngrandisci"_s);
    QCOMPARE(window->zoomPercent(), 125);
    test::trigger(window, u"actRiduci"_s);
    test::trigger(window, u"actRiduci"_s);
    QCOMPARE(test::shown(window, u"lblZoom"_s), u"75%"_s);
    test::trigger(window, u"actPaginaIntera"_s);
    const int wholePage = window->zoomPercent();
    test::trigger(window, u"actAdattaLarghezza"_s);
    QVERIFY(wholePage < window->zoomPercent());
}

void TestReportForms::previewSavesAndPrintsItsOwnDocument()
{
    const QTemporaryDir folder;
    const int first = test::insertNote(workplace_->database(), 100);
    StampaDdTScarico(first, {}, TKxReportDestination::Anteprima);
    const QPointer<host::PreviewWindow> window = preview();
    const int pages = window->document().pageCount();
    // Another run in between changes neither the window nor what it prints.
    StampaDdTScarico(-1, folder.filePath(u"altro.pdf"_s), TKxReportDestination::FilePDF);

    ui::setSaveFileChooser(
        [&](QWidget *, const ui::SaveFileRequest &request) { return folder.filePath(request.proposedName); });
    test::trigger(window, u"actSalvaPDF"_s);
    QCOMPARE(test::pdfPages(folder.filePath(u"Documento di trasporto n. 12-2026.pdf"_s)).size(), pages);

    const QString printed = folder.filePath(u"stampante.pdf"_s);
    workplace_->dialogs.expect([&](QDialog &dialog) {
        auto *print = qobject_cast<QPrintDialog *>(&dialog);
        QCOMPARE(print->maxPage(), pages);
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

static const test::Registered<TestReportForms> registration;

#include "test_report_forms.moc"

#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "platform/report/Document.h"
#include "platform/report/Report.h"
#include "tests/report/Prints.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(QVariantMap)

constexpr auto toPdf = TKxReportDestination::FilePDF;
constexpr auto toPreview = TKxReportDestination::Anteprima;

/// Delivery notes and invoices on paper, from the database to the text that is read back from the PDF.
class TestDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void noteHoldsEverythingInOrder();
    void invoiceHoldsEverythingInOrder();
    void rowsAreAllThereOnAnyNumberOfPages_data();
    void rowsAreAllThereOnAnyNumberOfPages();
    void rowsComeInTheOrderOfTheirKeys();
    void boxesFollowTheData_data();
    void boxesFollowTheData();
    void longNamesAreWhole();
    void textsLongerThanAPageAreWhole();
    void vatSummaryIsRoundedPerRate();
    void manyVatRatesPushTheBlockDown();
    void amountsAreCarriedForward();
    void exemptInvoiceHasItsNote_data();
    void exemptInvoiceHasItsNote();
    void missingDocumentPrintsAnEmptyForm();
    void previewAndFileHaveTheSamePages();
    void fileDestinationIsUndoneAfterASuccess();
    void fileDestinationStaysAfterAFailure();
    void failuresNameTheRoutine_data();
    void failuresNameTheRoutine();
    void missingOrBrokenProjectLeavesTheModuleUsable();

private:
    data::Connection &database() const { return workplace_->database(); }
    report::ReportSystem &system() const { return *workplace_->module().rSystem; }
    QString print(int note) const;
    QString printInvoice(int invoice) const;

    std::unique_ptr<test::Workplace> workplace_;
};

namespace {

// The first of `parts` that does not stand behind the one before it; empty when all do.
QString firstOutOfOrder(const QString &text, const QStringList &parts)
{
    qsizetype position = 0;
    for (const QString &part : parts) {
        position = text.indexOf(part, position);
        if (position < 0)
            return part;
        position += part.size();
    }
    return {};
}

QString allTexts(const report::Document &document)
{
    QStringList texts;
    for (int page = 0; page < document.pageCount(); ++page) {
        const QList<report::TextRun> runs = document.page(page).texts;
        for (const report::TextRun &run : runs)
            texts.append(run.text);
    }
    return texts.join(u' ');
}

} // namespace

void TestDocuments::init()
{
    workplace_ = std::make_unique<test::Workplace>();
}

void TestDocuments::cleanup()
{
    workplace_.reset();
}

QString TestDocuments::print(int note) const
{
    const QString file = test::outputFile(u"ddt.pdf"_s);
    StampaDdTScarico(note, file, toPdf);
    return file;
}

QString TestDocuments::printInvoice(int invoice) const
{
    const QString file = test::outputFile(u"fattura.pdf"_s);
    StampaFatturaAccompagnatoria(invoice, file, toPdf);
    return file;
}

void TestDocuments::noteHoldsEverythingInOrder()
{
    const QString file = print(test::insertNote(database(), 2));
    const QString text = test::pdfText(file);
    QCOMPARE(firstOutOfOrder(text, {u"Casa & Ferro Distribuzione S.r.l."_s,
                                    u"Documento di trasporto (D.d.T.)"_s,
                                    u"D.P.R. 472 del 14/08/1996"_s,
                                    u"12/2026"_s,
                                    u"16/03/2026"_s,
                                    u"1 di 1"_s,
                                    u"Destinazione"_s,
                                    u"Cliente"_s,
                                    u"Cantiere nord"_s,
                                    u"Officine D'Amico & Figli"_s,
                                    u"Via Roma 12"_s,
                                    u"Via Garibaldi 8"_s,
                                    u"47521 Cesena"_s,
                                    u"47121 Forlì (FC)"_s,
                                    u"Partita IVA: 01234567890"_s,
                                    u"Causale"_s,
                                    u"Tipo di trasporto"_s,
                                    u"Conto lavorazione"_s,
                                    u"A mezzo vettore"_s,
                                    u"Codice"_s,
                                    u"Descrizione"_s,
                                    u"U.M."_s,
                                    u"Quantità"_s,
                                    u"ART-001 Articolo numero 1 PZ 1,00"_s,
                                    u"ART-002 Articolo numero 2 PZ 2,00"_s,
                                    u"Aspetto dei beni Colli Peso"_s,
                                    u"Scatole di cartone 14 1.234,5 KG 17/03/2026 08:45"_s,
                                    u"Vettore"_s,
                                    u"Trasporti Veloci S.r.l."_s,
                                    u"Viale dei Trasporti 5 - Padova - codice VET000003"_s,
                                    u"Note"_s,
                                    u"Consegnare entro venerdì"_s,
                                    u"Firma del mittente o del conducente"_s,
                                    u"Firma del vettore"_s,
                                    u"Firma del destinatario"_s}),
             QString());
    for (const QString &caption : {u"P.I.: "_s, u"C.F.: "_s, u"Tel. "_s, u"Fax. "_s, u"e-mail: "_s, u"web: "_s})
        QVERIFY2(text.contains(caption), qPrintable(caption));
    QVERIFY(!text.contains(u'€')); // prices are not printed
    const QString facts = test::pdfFacts(u"pdfinfo"_s, file);
    QVERIFY(facts.contains(u"Title: Documento di trasporto n. 12/2026"_s));
    QVERIFY(facts.contains(u"(A4)"_s));
}

void TestDocuments::invoiceHoldsEverythingInOrder()
{
    const int invoice = test::insertInvoice(database(), 2, {{u"TOTALE_DOCUMENTO"_s, 29.4}});
    const QString text = test::pdfText(printInvoice(invoice));
    QCOMPARE(firstOutOfOrder(text, {u"Fattura accompagnatoria"_s,
                                    u"12/2026"_s,
                                    u"Partita IVA: 01234567890"_s,
                                    u"Cod. fiscale: DMCMRA70A01D704X"_s,
                                    u"Pagamento"_s,
                                    u"Scadenza"_s,
                                    u"Causale"_s,
                                    u"Ricevuta bancaria 30 gg 30/04/2026 Conto lavorazione A mezzo vettore"_s,
                                    u"Codice Descrizione U.M. Quantità Prezzo Sc. % Importo IVA"_s,
                                    u"ART-001 Articolo numero 1 PZ 1,00 € 12,50 20 € 10,00 22"_s,
                                    u"ART-002 Articolo numero 2 PZ 1,00 € 12,50 20 € 10,00 22"_s,
                                    u"Riepilogo IVA"_s,
                                    u"Totale imponibile € 20,00"_s,
                                    u"22 Aliquota ordinaria 22 € 20,00 € 4,40"_s,
                                    u"Totale imposta € 4,40"_s,
                                    u"Importi fuori campo IVA € 5,00"_s,
                                    u"Totale documento € 29,40"_s,
                                    u"Aspetto dei beni"_s,
                                    u"Vettore"_s,
                                    u"Firma del destinatario"_s}),
             QString());
}

void TestDocuments::rowsAreAllThereOnAnyNumberOfPages_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("pages");
    QTest::newRow("none") << 0 << 1;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("exactly full") << 31 << 1;
    QTest::newRow("one more") << 32 << 2;
    QTest::newRow("200") << 200 << 5;
}

void TestDocuments::rowsAreAllThereOnAnyNumberOfPages()
{
    QFETCH(const int, rows);
    QFETCH(const int, pages);
    const QStringList found = test::pdfPages(print(test::insertNote(database(), rows)));
    QCOMPARE(found.size(), pages);
    QStringList expected;
    for (int row = 1; row <= rows; ++row)
        expected.append(u"ART-%1"_s.arg(row, 3, 10, QLatin1Char('0')));
    QCOMPARE(firstOutOfOrder(found.join(u' '), expected), QString());
    for (int page = 0; page < pages; ++page) {
        QVERIFY(found[page].contains(u"%1 di %2"_s.arg(page + 1).arg(pages)));
        QVERIFY(found[page].contains(u"Descrizione"_s));
        QCOMPARE(found[page].contains(u"Firma del vettore"_s), page == pages - 1);
        QCOMPARE(found[page].contains(u"Causale"_s), page == 0);
    }
}

void TestDocuments::rowsComeInTheOrderOfTheirKeys()
{
    const int note = test::insertNote(database(), 9);
    // Stored in one order, with keys in the other, as after rows were moved and written again.
    database().execute(u"UPDATE DDT_SCARICO_DETT SET IDDDT_SCARICO_DETT = 100000 - IDDDT_SCARICO_DETT"_s);
    const QString text = test::pdfText(print(note));
    QCOMPARE(firstOutOfOrder(text, {u"ART-009"_s, u"ART-008"_s, u"ART-005"_s, u"ART-002"_s, u"ART-001"_s}), QString());
}

void TestDocuments::boxesFollowTheData_data()
{
    QTest::addColumn<QVariantMap>("header");
    QTest::addColumn<QStringList>("there");
    QTest::addColumn<QStringList>("absent");
    const QVariant null;
    QTest::newRow("supplier") << QVariantMap{{u"TIPO_ANAGRAFICA"_s, 1}} << QStringList{u"Fornitore"_s}
                              << QStringList{u"Cliente"_s};
    QTest::newRow("no destination") << QVariantMap{{u"DEST_RAGIONESOCIALE"_s, u""_s},
                                                   {u"DEST_INDIRIZZO"_s, null},
                                                   {u"DEST_CITTA"_s, null},
                                                   {u"DEST_CAP"_s, u""_s}}
                                    << QStringList{u"Cliente"_s} << QStringList{u"Destinazione"_s};
    QTest::newRow("no carrier") << QVariantMap{{u"VETT_CODICE"_s, null},
                                               {u"VETT_RAGIONESOCIALE"_s, null},
                                               {u"VETT_INDIRIZZO"_s, null},
                                               {u"VETT_CITTA"_s, null}}
                                << QStringList{u"Vettore"_s} << QStringList{u"VET000003"_s, u"codice"_s, u" - "_s};
    QTest::newRow("no start") << QVariantMap{{u"DATA_INIZIO_TRASPORTO"_s, null}, {u"ORA_INIZIO_TRASPORTO"_s, null}}
                              << QStringList{u"Data inizio trasporto"_s} << QStringList{u"17/03/2026"_s, u"08:45"_s};
}

void TestDocuments::boxesFollowTheData()
{
    QFETCH(const QVariantMap, header);
    QFETCH(const QStringList, there);
    QFETCH(const QStringList, absent);
    const QString text = test::pdfText(print(test::insertNote(database(), 1, header)));
    for (const QString &part : there)
        QVERIFY2(text.contains(part), qPrintable(part));
    for (const QString &part : absent)
        QVERIFY2(!text.contains(part), qPrintable(part));
}

void TestDocuments::longNamesAreWhole()
{
    const QString name =
        u"Società cooperativa a responsabilità limitata fra gli installatori della provincia di Vicenza est"_s;
    QCOMPARE(name.size(), 97);
    const int note = test::insertNote(database(), 1,
                                      {{u"CLI_RAGIONESOCIALE"_s, name + u"uno"_s},
                                       {u"DEST_RAGIONESOCIALE"_s, name + u"due"_s},
                                       {u"VETT_RAGIONESOCIALE"_s, name + u"tre"_s}});
    const QString file = print(note);
    const QString texts = allTexts(*system().document());
    for (const QString &end : {u"uno"_s, u"due"_s, u"tre"_s})
        QVERIFY2(texts.contains(name + end), qPrintable(end));
    QCOMPARE(test::pdfPages(file).size(), 1);
}

void TestDocuments::textsLongerThanAPageAreWhole()
{
    QStringList words;
    for (int word = 1; word <= 2000; ++word)
        words.append(u"parola%1"_s.arg(word));
    QStringList note;
    for (int line = 1; line <= 80; ++line)
        note.append(u"nota%1"_s.arg(line));
    const int key = test::insertNote(database(), 1, {{u"NOTE"_s, note.join(u"\r\n"_s)}});
    test::insertNoteRow(database(), key, {{u"TIPO_RIGA"_s, u"Testo"_s}, {u"DESCRIZIONE"_s, words.join(u' ')}});
    const QStringList pages = test::pdfPages(print(key));
    QVERIFY(pages.size() >= 4);
    const QString text = pages.join(u' ').simplified();
    QCOMPARE(firstOutOfOrder(text, words), QString());
    QVERIFY(text.contains(u"Note (seguito)"_s));
    for (const QString &line : note)
        QVERIFY2(text.contains(line), qPrintable(line));
}

void TestDocuments::vatSummaryIsRoundedPerRate()
{
    const int invoice = test::insertInvoice(
        database(), 0, {{u"TOTALE_IMPONIBILE"_s, 0.5}, {u"TOTALE_IMPOSTA"_s, 0.03}, {u"TOTALE_DOCUMENTO"_s, -1.47}});
    const auto row = [](const QString &code, double amount, double rate) {
        return QVariantMap{{u"TIPO_RIGA"_s, u"Articolo"_s},
                           {u"IMPORTO"_s, amount},
                           {u"IVA_IDALIQUOTA_IVA"_s, 1},
                           {u"IVA_CODICE"_s, code},
                           {u"IVA_DESCRIZIONE"_s, u"Aliq"_s + code},
                           {u"IVA_ALIQUOTA"_s, rate}};
    };
    // 0,25 at 10 % is 0,025 of tax, each rounded away from zero; two such rows together are 0,05, not 0,06.
    test::insertInvoiceRow(database(), invoice, row(u"10"_s, 0.25, 10));
    test::insertInvoiceRow(database(), invoice, row(u"20"_s, -0.25, 10));
    test::insertInvoiceRow(database(), invoice, row(u"30"_s, 0.25, 10));
    test::insertInvoiceRow(database(), invoice, row(u"30"_s, 0.25, 10));
    test::insertInvoiceRow(database(), invoice, {{u"TIPO_RIGA"_s, u"Testo"_s}, {u"DESCRIZIONE"_s, u"Solo testo"_s}});
    const QString text = test::pdfText(printInvoice(invoice));
    QVERIFY2(text.contains(u"Aliq10 10 € 0,25 € 0,03"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Aliq20 10 -€ 0,25 -€ 0,03"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Aliq30 10 € 0,50 € 0,05"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Importi fuori campo IVA -€ 2,00"_s), qPrintable(text));
}

void TestDocuments::manyVatRatesPushTheBlockDown()
{
    const int invoice = test::insertInvoice(database(), 0);
    for (int rate = 10; rate < 30; ++rate) {
        test::insertInvoiceRow(database(), invoice,
                               {{u"TIPO_RIGA"_s, u"Articolo"_s},
                                {u"IMPORTO"_s, 1},
                                {u"IVA_IDALIQUOTA_IVA"_s, rate},
                                {u"IVA_CODICE"_s, QString::number(rate)},
                                {u"IVA_DESCRIZIONE"_s, u"Aliq%1"_s.arg(rate)},
                                {u"IVA_ALIQUOTA"_s, rate}});
    }
    const QString text = test::pdfText(printInvoice(invoice));
    QCOMPARE(firstOutOfOrder(text, {u"Aliq10"_s, u"Aliq20"_s, u"Aliq29"_s, u"Aspetto dei beni"_s}), QString());
}

void TestDocuments::amountsAreCarriedForward()
{
    const QStringList pages = test::pdfPages(printInvoice(test::insertInvoice(database(), 70)));
    QCOMPARE(pages.size(), 2);
    const QString carried = pages[0].simplified().section(u"A riportare € "_s, 1, 1).section(u' ', 0, 0);
    QCOMPARE(pages[1].simplified().section(u"Riporto € "_s, 1, 1).section(u' ', 0, 0), carried);
    QCOMPARE(carried, u"%1,00"_s.arg(pages[0].count(u"ART-"_s) * 10));
    QVERIFY(!pages[0].contains(u"Riporto"_s));
    QVERIFY(!pages[1].contains(u"A riportare"_s));
}

void TestDocuments::exemptInvoiceHasItsNote_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<bool>("exists");
    QTest::newRow("with option") << u"Esente secondo la regola di prova"_s << true;
    QTest::newRow("without option") << u"Esente secondo la regola di prova"_s << false;
}

void TestDocuments::exemptInvoiceHasItsNote()
{
    QFETCH(const QString, option);
    QFETCH(const bool, exists);
    database().execute(u"DELETE FROM OPZIONI WHERE OPZIONE = 'FATT_IVA_ESENTE_NOTE'"_s);
    if (exists)
        database().execute(u"INSERT INTO OPZIONI VALUES('FATT_IVA_ESENTE_NOTE', '%1')"_s.arg(option));
    // What an earlier print left must not come out again.
    workplace_->module().rProject->setParameter(u"Param1"_s, u"Nota di prima"_s);
    const int invoice = test::insertInvoice(database(), 1, {{u"IVA_ESENTE"_s, u"True"_s}});
    const QString text = test::pdfText(printInvoice(invoice));
    QVERIFY(text.contains(u"Titolo di esenzione IVA"_s));
    QCOMPARE(text.contains(option), exists);
    QVERIFY(!text.contains(u"Nota di prima"_s));
    QVERIFY(!text.contains(u"Riepilogo IVA"_s));
}

void TestDocuments::missingDocumentPrintsAnEmptyForm()
{
    const QString note = test::pdfText(print(987654));
    QVERIFY(note.contains(u"Casa & Ferro"_s) && note.contains(u"Firma del vettore"_s) && note.contains(u"1 di 1"_s));
    const QString invoice = test::pdfText(printInvoice(987654));
    QVERIFY(invoice.contains(u"Totale documento"_s) && !invoice.contains(u'€'));
}

void TestDocuments::previewAndFileHaveTheSamePages()
{
    const int invoice = test::insertInvoice(database(), 90);
    StampaFatturaAccompagnatoria(invoice, {}, toPreview);
    const auto shown = system().document();
    const QString file = printInvoice(invoice);
    const auto written = system().document();
    QVERIFY(shown != written);
    QCOMPARE(shown->pageCount(), 3);
    QCOMPARE(written->pageCount(), 3);
    QCOMPARE(test::pdfPages(file).size(), 3);
    for (int page = 0; page < 3; ++page)
        QVERIFY(shown->page(page) == written->page(page));
}

void TestDocuments::fileDestinationIsUndoneAfterASuccess()
{
    const int note = test::insertNote(database(), 1);
    QList<report::Destination> previews;
    system().overridePreview = [&](report::ReportSystem &used, int, QWidget *) {
        previews.append(used.defaultDestination);
    };
    const QString file = print(note);
    QVERIFY(previews.isEmpty());
    QCOMPARE(system().defaultDestination, report::Destination::Preview);
    QVERIFY(system().allowSetup && system().nativeOutput);
    QCOMPARE(system().renderer, workplace_->module().rPDF);
    QCOMPARE(system().outputFileName, file);
    StampaDdTScarico(note, file, TKxReportDestination::Stampante);
    QCOMPARE(previews, QList<report::Destination>{report::Destination::Preview});
}

void TestDocuments::fileDestinationStaysAfterAFailure()
{
    const int note = test::insertNote(database(), 1);
    const QTemporaryDir folder;
    const QString unwritable = folder.filePath(u"manca/ddt.pdf"_s);
    QVERIFY(test::errorOf([&] {
                StampaDdTScarico(note, unwritable, toPdf);
            }).startsWith(u"[StampaDdTScarico]\n\rImpossibile scrivere il file \"%1\": "_s.arg(unwritable)));
    QCOMPARE(system().defaultDestination, report::Destination::File);
    QVERIFY(!system().allowSetup && !system().nativeOutput);
    // The next successful PDF puts everything back.
    print(note);
    QCOMPARE(system().defaultDestination, report::Destination::Preview);
    QVERIFY(system().allowSetup && system().nativeOutput);
}

void TestDocuments::failuresNameTheRoutine_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<bool>("invoice");
    QTest::newRow("company") << u"FROM AZIENDA"_s << false;
    QTest::newRow("note rows") << u"FROM DDT_SCARICO_DETT"_s << false;
    QTest::newRow("invoice") << u"FROM FATT_ACC\r"_s << true;
    QTest::newRow("VAT summary") << u"GROUP BY IVA_CODICE"_s << true;
}

void TestDocuments::failuresNameTheRoutine()
{
    QFETCH(const QString, statement);
    QFETCH(const bool, invoice);
    data::Connection &connection = *workplace_->module().ModADOConn;
    connection.setStatementHook([&](const QString &sql) {
        if (sql.contains(statement))
            throw core::Error(u"guasto"_s);
    });
    const QString file = test::outputFile(u"mai.pdf"_s);
    const QString error = test::errorOf(
        [&] { invoice ? StampaFatturaAccompagnatoria(1, file, toPdf) : StampaDdTScarico(1, file, toPdf); });
    connection.setStatementHook({});
    QCOMPARE(error, invoice ? u"[StampaFatturaAccompagnatoria]\n\rguasto"_s : u"[StampaDdTScarico]\n\rguasto"_s);
    QVERIFY(!QFile::exists(file));
    const int bad = test::insertInvoice(database(), 1, {{u"IVA_ESENTE"_s, u"Forse"_s}});
    QCOMPARE(test::errorOf([&] { StampaFatturaAccompagnatoria(bad, file, toPdf); }),
             u"[StampaFatturaAccompagnatoria]\n\r\"Forse\" non è un valore booleano valido."_s);
}

void TestDocuments::missingOrBrokenProjectLeavesTheModuleUsable()
{
    TMMGModMagazzino &module = workplace_->module();
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"Magazzino.rav"_s);
    workplace_->messages.expectError(u"Impossibile trovare il file delle stampe del modulo Magazzino!"_s);
    module.ApriStampe(path);
    QVERIFY(test::errorOf([] { StampaDdTScarico(1, {}, toPreview); }).startsWith(u"[StampaDdTScarico]\n\rIl file"_s));

    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<project version=\"1\">\n<report>\n</project>");
    file.close();
    const QString problem = u"File delle stampe \"%1\", riga 2: manca l'attributo \"name\" di \"report\"."_s.arg(path);
    workplace_->messages.expectError(problem);
    module.ApriStampe(path);
    QCOMPARE(test::errorOf([] { StampaDdTScarico(1, {}, toPreview); }), u"[StampaDdTScarico]\n\r"_s + problem);
    QCOMPARE(workplace_->messages.verify(), QStringList());
    QVERIFY(module.openForm(u"actInserimentoDdTScarico"_s));
}

static const test::Registered<TestDocuments> registration;

#include "test_documents.moc"

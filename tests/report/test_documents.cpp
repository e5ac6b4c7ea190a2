#include "tests/report/Prints.h"

constexpr auto toPdf = TKxReportDestination::FilePDF;
constexpr auto toPreview = TKxReportDestination::Anteprima;

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

// Each as "left top width height", millimetres.
QStringList framesOf(const report::Page &page)
{
    QStringList frames;
    for (const report::Frame &frame : page.frames) {
        frames.append(u"%1 %2 %3 %4"_s.arg(frame.area.left(), 0, 'f', 0)
                          .arg(frame.area.top(), 0, 'f', 0)
                          .arg(frame.area.width(), 0, 'f', 0)
                          .arg(frame.area.height(), 0, 'f', 0));
    }
    return frames;
}

// Of the first line that begins with `text`, millimetres; -1 when there is none.
double topOf(const report::Page &page, const QString &text)
{
    const auto run = std::find_if(page.texts.begin(), page.texts.end(),
                                  [&text](const report::TextRun &other) { return other.text.startsWith(text); });
    return run == page.texts.end() ? -1 : run->top;
}

} // namespace

/// Delivery notes and invoices on paper, from the database to the text that is read back from the PDF.
class TestDocuments : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void noteHoldsEverythingInOrder()
    {
        const QString text = test::pdfText(print(test::insertNote(database(), 2)));
        const QString expected =
            u"Casa & Ferro Distribuzione S.r.l.|Documento di trasporto (D.d.T.)|D.P.R. 472 del "
            "14/08/1996|12/2026|16/03/2026|1 di 1|Destinazione|Cliente|Cantiere nord|Officine D'Amico & Figli|Via "
            "Roma 12|Via Garibaldi 8|47521 Cesena|47121 Forlì (FC)|Partita IVA: 01234567890|Causale|Tipo di "
            "trasporto|Conto lavorazione|A mezzo vettore|Codice|Descrizione|U.M.|Quantità|ART-001 Articolo numero "
            "1 PZ 1,00|ART-002 Articolo numero 2 PZ 2,00|Aspetto dei beni Colli Peso|Scatole di cartone 14 1.234,5 "
            "KG 17/03/2026 08:45|Vettore|Trasporti Veloci S.r.l.|Viale dei Trasporti 5 - Padova - codice "
            "VET000003|Note|Consegnare entro venerdì|Firma del mittente o del conducente|Firma del vettore|Firma "
            "del destinatario"_s;
        QCOMPARE(firstOutOfOrder(text, expected.split(u'|')), QString());
        QVERIFY(!text.contains(u'€')); // prices are not printed
    }

    void invoiceHoldsEverythingInOrder()
    {
        const int invoice = test::insertInvoice(database(), 2, {{u"TOTALE_DOCUMENTO"_s, 29.4}});
        const QString text = test::pdfText(printInvoice(invoice));
        const QString expected =
            u"Fattura accompagnatoria|12/2026|Partita IVA: 01234567890|Cod. fiscale: "
            "DMCMRA70A01D704X|Pagamento|Scadenza|Causale|Ricevuta bancaria 30 gg 30/04/2026 Conto lavorazione A "
            "mezzo vettore|Codice Descrizione U.M. Quantità Prezzo Sc. % Importo IVA|ART-001 Articolo numero 1 PZ "
            "1,00 € 12,50 20 € 10,00 22|ART-002 Articolo numero 2 PZ 1,00 € 12,50 20 € 10,00 22|Riepilogo "
            "IVA|Totale imponibile € 20,00|22 Aliquota ordinaria 22 € 20,00 € 4,40|Totale imposta € 4,40|Importi "
            "fuori campo IVA € 5,00|Totale documento € 29,40|Aspetto dei beni|Vettore|Firma del destinatario"_s;
        QCOMPARE(firstOutOfOrder(text, expected.split(u'|')), QString());
        QVERIFY(!text.contains(u"Arrotondamento"_s));
    }

    void rowsAreAllThereOnAnyNumberOfPages()
    {
        for (const auto &[rows, pages] : {std::pair(0, 1), {31, 1}, {32, 2}, {200, 5}}) {
            const QStringList found =
                test::pdfPages(print(test::insertNote(database(), rows, {{u"NUMERO"_s, rows + 1}})));
            QCOMPARE(found.size(), pages);
            QStringList expected;
            for (int row = 1; row <= rows; ++row)
                expected.append(u"ART-%1"_s.arg(row, 3, 10, QLatin1Char('0')));
            QCOMPARE(firstOutOfOrder(found.join(u' '), expected), QString());
            for (int page = 0; page < pages; ++page) {
                QVERIFY(found[page].contains(u"%1 di %2"_s.arg(page + 1).arg(pages)));
                QVERIFY(found[page].contains(u"Descrizione"_s) && found[page].contains(u"Officine D'Amico & Figli"_s));
                QCOMPARE(found[page].contains(u"Firma del vettore"_s), page == pages - 1);
                QCOMPARE(found[page].contains(u"Causale"_s), page == 0);
            }
        }
    }

    void rowsComeInTheOrderOfTheirKeys()
    {
        const int note = test::insertNote(database(), 9);
        // Stored in one order, with keys in the other, as after rows were moved and written again.
        database().execute(u"UPDATE DDT_SCARICO_DETT SET IDDDT_SCARICO_DETT = 100000 - IDDDT_SCARICO_DETT"_s);
        const QString text = test::pdfText(print(note));
        QCOMPARE(firstOutOfOrder(text, {u"ART-009"_s, u"ART-008"_s, u"ART-005"_s, u"ART-002"_s, u"ART-001"_s}),
                 QString());
    }

    void textsLongerThanAPageAreWhole()
    {
        QStringList words;
        for (int word = 1; word <= 2000; ++word)
            words.append(u"parola%1"_s.arg(word));
        QStringList note;
        for (int line = 1; line <= 50; ++line)
            note.append(u"nota%1"_s.arg(line));
        const int key = test::insertNote(database(), 1, {{u"NOTE"_s, note.join(u"\n\r"_s)}});
        test::insertNoteRow(database(), key, {{u"TIPO_RIGA"_s, u"Testo"_s}, {u"DESCRIZIONE"_s, words.join(u' ')}});
        const QStringList pages = test::pdfPages(print(key));
        QVERIFY(pages.size() >= 4);
        // The note begins in its box and goes on behind it, its heading on the page that goes on with it.
        QCOMPARE(firstOutOfOrder(pages.join(u' ').simplified(), words + note), QString());
        const QString last = pages.last().simplified();
        const QString closing = pages[pages.size() - 2].simplified();
        QCOMPARE(firstOutOfOrder(closing, {u"Note (continuano a pagina %1) nota1"_s.arg(pages.size()), u"Firma"_s}),
                 QString());
        const qsizetype begun = closing.count(u"nota"_s);
        QCOMPARE(firstOutOfOrder(
                     last, {u"Officine D'Amico & Figli"_s, u"Note (seguito) nota%1 "_s.arg(begun + 1), u"nota50"_s}),
                 QString());
        QVERIFY(!last.contains(u"Firma"_s) && !last.contains(u"Descrizione"_s));
    }

    void valuesThatNobodyEnteredStayBlank()
    {
        const QVariantMap nothing = {{u"COLLI"_s, 0}, {u"PESO"_s, 0}};
        for (const QString &file : {print(test::insertNote(database(), 1, nothing)),
                                    printInvoice(test::insertInvoice(database(), 1, nothing))})
            QVERIFY(test::pdfText(file).contains(u"Scatole di cartone 17/03/2026 08:45"_s));
    }

    void longCompanyNameKeepsTheTitleTogether()
    {
        const QString name = u"Prima parte della ragione sociale\nSeconda parte\nTerza parte"_s;
        database().run(u"UPDATE AZIENDA SET RAGIONESOCIALE = ?, EMAIL = 'posta@prova.it', WEB = 'www.prova.it'"_s,
                       {name});
        print(test::insertNote(database(), 1));
        const report::Page page = system().document()->page(0);
        const QStringList frames = framesOf(page);
        QVERIFY2(frames.contains(u"108 10 92 14"_s) && frames.contains(u"108 24 32 9"_s),
                 qPrintable(frames.join(u'|')));
        // The addressee stands under the title, and below the company's lines.
        const QStringList addressee = frames.filter(QRegularExpression(u"^108 \\d+ 92 31$"_s));
        QCOMPARE(addressee.size(), 1);
        const double top = addressee.first().section(u' ', 1, 1).toDouble();
        QList<double> lines;
        for (const QString &part : {u"Prima"_s, u"Seconda"_s, u"Terza"_s, u"P.I."_s, u"e-mail"_s, u"web: www"_s})
            lines.append(topOf(page, part));
        for (qsizetype i = 1; i < lines.size(); ++i)
            QVERIFY(lines[i] > lines[i - 1] + 3);
        QVERIFY(lines.last() + 3 < top);
    }

    // Rows that fit on the page without the closing block: the last one goes to the next page with it.
    void unusedSpaceIsStruckOut()
    {
        printInvoice(test::insertInvoice(database(), 35));
        const report::Page page = system().document()->page(0);
        QList<QLineF> slanted;
        for (const report::Stroke &stroke : page.strokes) {
            if (stroke.line.dx() > 1 && stroke.line.dy() > 1)
                slanted.append(stroke.line);
        }
        QCOMPARE(slanted.size(), 1);
        QVERIFY(slanted[0].y1() > topOf(page, u"ART-034"_s) + 3 && slanted[0].y2() < topOf(page, u"A riportare"_s));
    }

    void vatSummaryIsRoundedPerRate()
    {
        const int invoice = test::insertInvoice(
            database(), 0, test::fields(u"TOTALE_IMPONIBILE=0.5|TOTALE_IMPOSTA=0.03|TOTALE_DOCUMENTO=-1.47"_s));
        // 0,25 at 10 % is 0,025 of tax, each rounded away from zero; two such rows together are 0,05, not 0,06.
        const QString row = u"TIPO_RIGA=Articolo|IMPORTO=%2|IVA_IDALIQUOTA_IVA=1|IVA_CODICE=%1|IVA_DESCRIZIONE=Aliq%1|"
                            "IVA_ALIQUOTA=10"_s;
        for (const QString &values :
             {row.arg(u"10"_s, u"0.25"_s), row.arg(u"20"_s, u"-0.25"_s), row.arg(u"30"_s, u"0.25"_s),
              row.arg(u"30"_s, u"0.25"_s), u"TIPO_RIGA=Testo|DESCRIZIONE=Solo testo"_s})
            test::insertInvoiceRow(database(), invoice, test::fields(values));
        const QString text = test::pdfText(printInvoice(invoice));
        for (const QString &part : {u"Aliq10 10 € 0,25 € 0,03"_s, u"Aliq20 10 -€ 0,25 -€ 0,03"_s,
                                    u"Aliq30 10 € 0,50 € 0,05"_s, u"Importi fuori campo IVA -€ 2,00"_s})
            QVERIFY2(text.contains(part), qPrintable(text));
    }

    // Three rows of 0,045, printed as 0,05 each, are 0,14; their tax and 0,14 make a cent more than the stored total.
    void roundingHasItsLines()
    {
        const int invoice = test::insertInvoice(
            database(), 0, test::fields(u"TOTALE_IMPONIBILE=0.14|TOTALE_IMPOSTA=0.03|TOTALE_DOCUMENTO=0.16"_s));
        for (int row = 0; row < 3; ++row)
            test::insertInvoiceRow(
                database(), invoice,
                test::fields(u"TIPO_RIGA=Articolo|DESCRIZIONE=Rondella|PREZZO=0.05|SCONTO=10|QUANTITA=1|"
                             "IMPORTO=0.05|IVA_IDALIQUOTA_IVA=1|IVA_CODICE=22|"
                             "IVA_DESCRIZIONE=Ordinaria|IVA_ALIQUOTA=22"_s));
        const QString expected =
            u"€ 0,05 22 Arrotondamento -€ 0,01 22|Totale imponibile € 0,14|Ordinaria 22 € 0,14 € 0,03|"
            "Totale imposta € 0,03|Arrotondamento -€ 0,01|Totale documento € 0,16"_s;
        const QString text = test::pdfText(printInvoice(invoice));
        QVERIFY2(firstOutOfOrder(text, expected.split(u'|')).isEmpty(), qPrintable(text));
        // More than five cents are no rounding.
        database().execute(u"UPDATE FATT_ACC SET TOTALE_DOCUMENTO = 0.23"_s);
        QVERIFY(!test::pdfText(printInvoice(invoice)).contains(u"Arrotondamento"_s));
    }

    void amountsAreCarriedForward()
    {
        const QStringList pages = test::pdfPages(printInvoice(test::insertInvoice(database(), 90)));
        QCOMPARE(pages.size(), 3);
        const auto amount = [&](int page, const QString &caption) {
            return pages[page].simplified().section(caption + u" € "_s, 1, 1).section(u' ', 0, 0);
        };
        const qsizetype first = pages[0].count(u"ART-"_s);
        QCOMPARE(amount(0, u"A riportare"_s), u"%1,00"_s.arg(first * 10));
        QCOMPARE(amount(1, u"Riporto"_s), amount(0, u"A riportare"_s));
        QCOMPARE(amount(1, u"A riportare"_s), u"%1,00"_s.arg((first + pages[1].count(u"ART-"_s)) * 10));
        QCOMPARE(amount(2, u"Riporto"_s), amount(1, u"A riportare"_s));
        QVERIFY(!pages[0].contains(u"Riporto"_s) && !pages[2].contains(u"A riportare"_s));
    }

    void exemptInvoiceHasItsNote()
    {
        database().execute(u"DELETE FROM OPZIONI WHERE OPZIONE = 'FATT_IVA_ESENTE_NOTE'"_s);
        // What an earlier print left must not come out again.
        place().module().rProject->setParameter(u"Param1"_s, u"Nota di prima"_s);
        const int invoice = test::insertInvoice(database(), 1, {{u"IVA_ESENTE"_s, u"True"_s}});
        const QString without = test::pdfText(printInvoice(invoice));
        QVERIFY(without.contains(u"Titolo di esenzione IVA"_s) && !without.contains(u"Nota di prima"_s));
        QVERIFY(!without.contains(u"Riepilogo IVA"_s));
        QVERIFY2(without.contains(u"Sc. % Importo ART-001 Articolo numero 1 PZ 1,00 € 12,50 20 € 10,00 Titolo"_s),
                 qPrintable(without));
        database().execute(
            u"INSERT INTO OPZIONI VALUES('FATT_IVA_ESENTE_NOTE', 'Esente secondo la regola di prova')"_s);
        // Other programs write flags as numbers.
        database().execute(u"UPDATE FATT_ACC SET IVA_ESENTE = '-1'"_s);
        QVERIFY(test::pdfText(printInvoice(invoice)).contains(u"Esente secondo la regola di prova"_s));
    }

    void fileDestinationIsUndoneOnlyAfterASuccess()
    {
        const int note = test::insertNote(database(), 1);
        const QString written = print(note);
        QCOMPARE(system().outputFileName, written);
        QCOMPARE(system().renderer, place().module().rPDF);
        QCOMPARE(system().defaultDestination, report::Destination::Preview);
        const QTemporaryDir folder;
        const QString unwritable = folder.filePath(u"manca/ddt.pdf"_s);
        const QString told = test::errorOf([&] { StampaDdTScarico(note, unwritable, toPdf); });
        QVERIFY(told.startsWith(u"[StampaDdTScarico]\n\rImpossibile scrivere il file \"%1\": "_s.arg(unwritable)));
        QCOMPARE(system().defaultDestination, report::Destination::File);
        QVERIFY(!system().allowSetup && !system().nativeOutput);
        QCOMPARE(test::filesIn(folder.path()), QStringList());
        // The next successful PDF puts everything back.
        print(note);
        QCOMPARE(system().defaultDestination, report::Destination::Preview);
        QVERIFY(system().allowSetup && system().nativeOutput);
    }

    void missingOrBrokenProjectLeavesTheModuleUsable()
    {
        TMMGModMagazzino &module = place().module();
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Magazzino.rav"_s);
        place().messages.expectError(u"Impossibile trovare il file delle stampe del modulo Magazzino!"_s);
        module.ApriStampe(path);
        QVERIFY(
            test::errorOf([] { StampaDdTScarico(1, {}, toPreview); }).startsWith(u"[StampaDdTScarico]\n\rIl file"_s));

        core::saveFile(path, "<project version=\"1\">\n<report>\n</project>");
        const QString problem =
            u"File delle stampe \"%1\", riga 2: manca l'attributo \"name\" di \"report\"."_s.arg(path);
        place().messages.expectError(problem);
        module.ApriStampe(path);
        QCOMPARE(test::errorOf([] { StampaDdTScarico(1, {}, toPreview); }), u"[StampaDdTScarico]\n\r"_s + problem);
        QVERIFY(module.openForm(u"actInserimentoDdTScarico"_s));
    }

private:
    report::ReportSystem &system() const { return *place().module().rSystem; }

    QString print(int note) const
    {
        QString file = test::outputFile(u"ddt.pdf"_s);
        StampaDdTScarico(note, file, toPdf);
        return file;
    }

    QString printInvoice(int invoice) const
    {
        QString file = test::outputFile(u"fattura.pdf"_s);
        StampaFatturaAccompagnatoria(invoice, file, toPdf);
        return file;
    }
};

static const test::Registered<TestDocuments> registration;

#include "test_documents.moc"

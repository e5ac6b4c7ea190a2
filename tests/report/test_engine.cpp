#include "platform/core/Clock.h"
#include "platform/report/Document.h"
#include "platform/report/Output.h"
#include "platform/report/Report.h"
#include "tests/report/Prints.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

/// The engine on small projects of its own. Pages are 100 mm high with margins of 10, so 80 mm hold titles (10), rows
/// (10 each) and what else a test adds.
class TestEngine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expressions_data();
    void expressions();
    void formats_data();
    void formats();
    void brokenProjectsNameFileAndLine_data();
    void brokenProjectsNameFileAndLine();
    void unopenedProjectTellsWhyAtEveryRun();
    void unknownReportAndColumnAreTold();
    void pageCounts_data();
    void pageCounts();
    void everyRowStandsOnceInOrder_data();
    void everyRowStandsOnceInOrder();
    void rowsNeverReachTheClosingBlock_data();
    void rowsNeverReachTheClosingBlock();
    void carriedAmountsMeetAtThePageBreaks();
    void rowThatDoesNotFitGoesWholeToTheNextPage();
    void rowTallerThanAPageIsCutBetweenLines();
    void growingTextPushesDownAndStretches();
    void longNoteContinuesBehindTheRows();
    void wideTextIsSqueezedThenCut();
    void blocksWithoutRoomAreRefused();
    void pdfHasAsManyPagesAndTheTitle();
    void unwritableTargetLeavesNoFile();
    void failedRunKeepsTheOldFile();

private:
    QString projectFile(const QString &reports);
    std::shared_ptr<const report::Document> layOut(const QString &bands, const data::Rows &rows,
                                                   const QString &name = {});

    QTemporaryDir folder_;
    int files_ = 0;
};

namespace {

const QString titles = u"<columnTitles height='10'><text x='0' y='0' width='30' height='5' value='Titolo'/>"
                       "</columnTitles>"_s;
const QString detail = u"<detail height='10' connection='righe'>"
                       "<field x='0' y='0' width='80' height='5' value='NOME' grow='true'/></detail>"_s;
const QString closing =
    u"<lastPage height='20'><text x='0' y='0' width='30' height='5' value='Chiusura'/></lastPage>"_s;
const QString carried =
    u"<carriedForward height='5'><expr x='0' y='0' width='80' height='5' value=\"'Riporto ' || sumBefore(IMPORTO)\"/>"
    "</carriedForward><toCarryForward height='5'><expr x='0' y='0' width='80' height='5' "
    "value=\"'A riportare ' || sumThrough(IMPORTO)\"/></toCarryForward>"_s;

data::Rows rowsOf(const QStringList &names)
{
    QList<QVariantList> values;
    for (const QString &name : names)
        values.append({name, 1.5, QVariant()});
    return {{{.name = u"NOME"_s}, {.name = u"IMPORTO"_s}, {.name = u"NULLO"_s}}, values};
}

data::Rows numbered(int count)
{
    QStringList names;
    for (int row = 1; row <= count; ++row)
        names.append(u"r%1"_s.arg(row));
    return rowsOf(names);
}

QStringList textsOf(const report::Page &page)
{
    QStringList texts;
    for (const report::TextRun &run : page.texts)
        texts.append(run.text);
    return texts;
}

QList<QStringList> pagesOf(const report::Document &document)
{
    QList<QStringList> pages;
    for (int page = 0; page < document.pageCount(); ++page)
        pages.append(textsOf(document.page(page)));
    return pages;
}

} // namespace

QString TestEngine::projectFile(const QString &contents)
{
    const QString path = folder_.filePath(u"stampe%1.rav"_s.arg(++files_));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no temporary file");
    file.write(contents.toUtf8());
    return path;
}

std::shared_ptr<const report::Document> TestEngine::layOut(const QString &bands, const data::Rows &rows,
                                                           const QString &name)
{
    report::ReportProject project;
    project.setProjectFile(projectFile(u"<project version='1'><font name='f' family='Liberation Sans' size='9'/>"
                                       "<report name='prova' title=\"'Titolo: prova'\" width='100' height='100'>%1"
                                       "</report></project>"_s.arg(bands)));
    project.open();
    project.setDataSource([&rows](const QString &) { return rows; });
    project.setParameter(u"nome"_s, u"valore"_s);
    return project.layOut(name.isEmpty() ? u"prova"_s : name);
}

void TestEngine::expressions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *text, const QString &expected) {
        QTest::addRow("%s", text) << QString::fromUtf8(text) << expected;
    };
    row("1 + 2 * 3 - 4 / 2", u"5"_s);
    row("-(1 + 1) * 2", u"-4"_s);
    row("1 / 0", u""_s);
    row("'l''altra' || ' ' || 2.5", u"l'altra 2,5"_s);
    row("NOME || '/' || param.nome", u"r2/valore"_s);
    row("righe.NOME", u"r2"_s);
    row("row || ' di ' || count(righe)", u"2 di 3"_s);
    row("sum(righe, IMPORTO * 2)", u"9"_s);
    row("sum(righe, NULLO)", u"0"_s);
    row("if(NULLO = 0, 'zero', 'nullo')", u"nullo"_s);
    row("if(empty(NULLO) and not empty(NOME), 'sì', 'no')", u"sì"_s);
    row("if(1 < 2 and 2 <= 2 and 3 > 2 and 3 >= 3 and 1 <> 2 and not (1 = 2), 'sì', 'no')", u"sì"_s);
    row("if('b' > 'a' or 1 / 0 = 1, 'sì', 'no')", u"sì"_s);
    row("join(', ', NOME, NULLO, ' ', 'fine')", u"r2, fine"_s);
    row("round(1.005, 2)", u"1,01"_s);
    row("round(-1.005, 2)", u"-1,01"_s);
    row("text(1234.5, 'currency') || text(now, 'date')", u"€ 1.234,5005/02/2026"_s);
    row("page || '/' || pages", u"4/7"_s);
}

void TestEngine::expressions()
{
    QFETCH(const QString, text);
    report::RunData run;
    run.connections.insert(u"righe"_s, numbered(3));
    run.parameters.insert(u"nome"_s, u"valore"_s);
    run.now = QDateTime(QDate(2026, 2, 5), QTime(9, 5));
    const report::Scope scope{.data = &run, .connection = u"righe"_s, .row = 1, .page = 4, .pages = 7};
    QTEST(report::formatted(report::Expression::parse(text).evaluate(scope), {}), "expected");
}

void TestEngine::formats_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    QTest::addRow("currency") << u"currency"_s << QVariant(-1234.565) << u"-€ 1.234,57"_s;
    QTest::addRow("number") << u"number"_s << QVariant(1e6) << u"1.000.000,00"_s;
    QTest::addRow("decimal") << u"decimal"_s << QVariant(12.50) << u"12,5"_s;
    QTest::addRow("decimal, whole") << u"decimal"_s << QVariant(1200.0) << u"1.200"_s;
    QTest::addRow("integer") << u"integer"_s << QVariant(12345) << u"12.345"_s;
    QTest::addRow("date") << u"date"_s << QVariant(QDate(2026, 12, 31)) << u"31/12/2026"_s;
    QTest::addRow("time") << u"time"_s << QVariant(QTime(8, 5, 59)) << u"08:05"_s;
    QTest::addRow("plain year") << u"plain"_s << QVariant(2026) << u"2026"_s;
    QTest::addRow("null") << u"currency"_s << QVariant() << u""_s;
}

void TestEngine::formats()
{
    QFETCH(const QString, format);
    QFETCH(const QVariant, value);
    QTEST(report::formatted(value, {report::formatKind(format)}), "expected");
}

void TestEngine::brokenProjectsNameFileAndLine_data()
{
    QTest::addColumn<QString>("contents");
    QTest::addColumn<QString>("problem");
    const QString font = u"<font name='f' family='Arial' size='9'/>\n"_s;
    const auto inBand = [&font](const QString &item) {
        return u"<project version='1'>\n%1<report name='r'>\n<detail height='5' connection='c'>\n%2\n</detail>"
               "</report></project>"_s.arg(font, item);
    };
    QTest::newRow("not closed") << u"<project version='1'>\n<report name='a'>\n"_s
                                << u"riga 3: il file finisce prima che tutti gli elementi siano chiusi"_s;
    QTest::newRow("empty") << QString() << u"riga 1: il file finisce prima che tutti gli elementi siano chiusi"_s;
    QTest::newRow("other root") << u"<altro/>"_s << u"riga 1: manca l'elemento \"project\""_s;
    QTest::newRow("version") << u"<project version='2'/>"_s << u"riga 1: versione \"2\" non riconosciuta"_s;
    QTest::newRow("unknown element") << inBand(u"<testo/>"_s) << u"riga 5: elemento \"testo\" non previsto"_s;
    QTest::newRow("unknown attribute") << inBand(u"<line x='0' y='0' width='1' height='0' colore='rosso'/>"_s)
                                       << u"riga 5: attributo \"colore\" non previsto in \"line\""_s;
    QTest::newRow("missing attribute") << inBand(u"<line x='0' y='0' width='1'/>"_s)
                                       << u"riga 5: manca l'attributo \"height\" di \"line\""_s;
    QTest::newRow("length") << inBand(u"<line x='-1' y='0' width='1' height='0'/>"_s)
                            << u"riga 5: \"-1\" non è una misura valida per \"x\""_s;
    QTest::newRow("too wide") << inBand(u"<line x='0' y='0' width='191' height='0'/>"_s)
                              << u"riga 5: l'elemento esce dal margine destro"_s;
    QTest::newRow("expression") << inBand(u"<expr x='0' y='0' width='1' height='1' value='1 + )'/>"_s)
                                << u"riga 5: \")\" inatteso nell'espressione"_s;
    QTest::newRow("function") << inBand(u"<expr x='0' y='0' width='1' height='1' value='somma(1)'/>"_s)
                              << u"riga 5: la funzione \"somma\" non esiste"_s;
    QTest::newRow("font") << inBand(u"<text x='0' y='0' width='1' height='1' value='a' font='g'/>"_s)
                          << u"riga 5: il carattere \"g\" non è definito"_s;
    QTest::newRow("format") << inBand(u"<expr x='0' y='0' width='1' height='1' value='1' format='lire'/>"_s)
                            << u"riga 5: il formato \"lire\" non esiste"_s;
    QTest::newRow("block") << inBand(u"<use block='b' x='0' y='0'/>"_s) << u"riga 5: il blocco \"b\" non è definito"_s;
    QTest::newRow("report twice") << u"<project version='1'>\n<report name='a'/>\n<report name='a'/></project>"_s
                                  << u"riga 3: la stampa \"a\" è definita due volte"_s;
}

void TestEngine::brokenProjectsNameFileAndLine()
{
    QFETCH(const QString, contents);
    QFETCH(const QString, problem);
    report::ReportProject project;
    project.setProjectFile(projectFile(contents));
    QCOMPARE(test::errorOf([&] { project.open(); }),
             u"File delle stampe \"%1\", %2."_s.arg(project.projectFile(), problem));
}

void TestEngine::unopenedProjectTellsWhyAtEveryRun()
{
    report::ReportProject project;
    project.setProjectFile(folder_.filePath(u"manca.rav"_s));
    const QString unreadable = u"Impossibile leggere il file delle stampe \"%1\"."_s.arg(project.projectFile());
    QCOMPARE(test::errorOf([&] { (void)project.layOut(u"a"_s); }),
             u"Il file delle stampe \"%1\" non è aperto."_s.arg(project.projectFile()));
    QCOMPARE(test::errorOf([&] { project.open(); }), unreadable);
    QCOMPARE(test::errorOf([&] { (void)project.layOut(u"a"_s); }), unreadable);
}

void TestEngine::unknownReportAndColumnAreTold()
{
    QVERIFY(test::errorOf([this] { layOut({}, {}, u"altra"_s); }).startsWith(u"La stampa \"altra\" non esiste"_s));
    const QString bands = u"<detail height='5' connection='righe'>\n<field x='0' y='0' width='9' height='5' "
                          "value='ALTRO' grow='true'/></detail>"_s;
    QCOMPARE(test::errorOf([&] { layOut(bands, numbered(1)); }),
             u"Riga 2 del file delle stampe: il campo \"ALTRO\" non esiste in \"righe\"."_s);
}

// Seven rows fill a page; with the closing block (20) five.
void TestEngine::pageCounts_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<QList<int>>("rowsPerPage");
    QTest::newRow("none") << 0 << true << QList<int>{0};
    QTest::newRow("one") << 1 << true << QList<int>{1};
    QTest::newRow("exactly full") << 5 << true << QList<int>{5};
    QTest::newRow("one more") << 6 << true << QList<int>{5, 1};
    QTest::newRow("full without the block") << 7 << true << QList<int>{6, 1};
    QTest::newRow("one more than that") << 8 << true << QList<int>{7, 1};
    QTest::newRow("two pages exactly full") << 12 << true << QList<int>{7, 5};
    QTest::newRow("no block, exactly full") << 7 << false << QList<int>{7};
    QTest::newRow("no block, one more") << 8 << false << QList<int>{7, 1};
}

void TestEngine::pageCounts()
{
    QFETCH(const int, rows);
    QFETCH(const bool, closes);
    QFETCH(const QList<int>, rowsPerPage);
    const auto document = layOut(titles + detail + (closes ? closing : QString()), numbered(rows));
    QList<int> found;
    const QList<QStringList> pages = pagesOf(*document);
    for (const QStringList &texts : pages) {
        QCOMPARE(texts.count(u"Titolo"_s), 1);
        found.append(static_cast<int>(texts.filter(QRegularExpression(u"^r\\d+$"_s)).size()));
    }
    QCOMPARE(pages.last().count(u"Chiusura"_s), closes ? 1 : 0);
    QCOMPARE(found, rowsPerPage);
}

void TestEngine::everyRowStandsOnceInOrder_data()
{
    QTest::addColumn<int>("rows");
    for (const int rows : {5, 6, 7, 8, 9, 13, 200, 1000})
        QTest::addRow("%d", rows) << rows;
}

void TestEngine::everyRowStandsOnceInOrder()
{
    QFETCH(const int, rows);
    const QString footer = u"<pageFooter height='5'><expr x='0' y='0' width='80' height='5' "
                           "value=\"'p ' || page || ' di ' || pages\"/></pageFooter>"_s;
    const auto document = layOut(titles + detail + closing + carried + footer, numbered(rows));
    QStringList found;
    const QList<QStringList> pages = pagesOf(*document);
    for (qsizetype page = 0; page < pages.size(); ++page) {
        found += pages[page].filter(QRegularExpression(u"^r\\d+$"_s));
        QCOMPARE(pages[page].last(), u"p %1 di %2"_s.arg(page + 1).arg(pages.size()));
    }
    QStringList expected;
    for (int row = 1; row <= rows; ++row)
        expected.append(u"r%1"_s.arg(row));
    QCOMPARE(found, expected);
}

void TestEngine::rowsNeverReachTheClosingBlock_data()
{
    QTest::addColumn<int>("rows");
    for (int rows = 1; rows <= 20; ++rows)
        QTest::addRow("%d", rows) << rows;
}

// Rows of many heights; what overlaps would be two texts at the same height.
void TestEngine::rowsNeverReachTheClosingBlock()
{
    QFETCH(const int, rows);
    QStringList names;
    for (int row = 0; row < rows; ++row)
        names.append(QStringList(row % 5 + 1, u"r%1"_s.arg(row)).join(u'\n'));
    const auto document = layOut(titles + detail + closing + carried, rowsOf(names));
    for (int page = 0; page < document->pageCount(); ++page) {
        QList<std::pair<double, double>> spans;
        for (const report::TextRun &run : document->page(page).texts)
            spans.append({run.top, run.bottom});
        std::sort(spans.begin(), spans.end());
        for (qsizetype i = 1; i < spans.size(); ++i)
            QVERIFY2(spans[i].first >= spans[i - 1].second - 0.01,
                     qPrintable(textsOf(document->page(page)).join(u'|')));
        QVERIFY(spans.last().second <= 90.01);
    }
}

void TestEngine::carriedAmountsMeetAtThePageBreaks()
{
    const QList<QStringList> pages = pagesOf(*layOut(titles + detail + closing + carried, numbered(15)));
    QCOMPARE(pages.size(), 3);
    QCOMPARE(pages[0].filter(u"port"_s), QStringList{u"A riportare 9"_s});
    QCOMPARE(pages[1].filter(u"port"_s), QStringList({u"Riporto 9"_s, u"A riportare 18"_s}));
    QCOMPARE(pages[2].filter(u"port"_s), QStringList{u"Riporto 18"_s});
}

void TestEngine::rowThatDoesNotFitGoesWholeToTheNextPage()
{
    QStringList names = {u"a"_s, u"b"_s, u"c"_s, u"d"_s};
    names.append(QStringList(12, u"alta"_s).join(u'\n'));
    const QList<QStringList> pages = pagesOf(*layOut(titles + detail + closing, rowsOf(names)));
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages[0].count(u"alta"_s), 0);
    QCOMPARE(pages[1].count(u"alta"_s), 12);
}

void TestEngine::rowTallerThanAPageIsCutBetweenLines()
{
    QStringList lines;
    for (int line = 1; line <= 70; ++line)
        lines.append(u"l%1"_s.arg(line));
    const auto document =
        layOut(titles + detail + closing + carried, rowsOf({u"prima"_s, lines.join(u'\n'), u"ultima"_s}));
    QCOMPARE(document->pageCount(), 5);
    QStringList found;
    for (const QStringList &texts : pagesOf(*document))
        found += texts.filter(QRegularExpression(u"^l\\d+$"_s));
    QCOMPARE(found, lines);
    for (int page = 0; page < document->pageCount(); ++page) {
        for (const report::TextRun &run : document->page(page).texts)
            QVERIFY(run.top >= 9.99 && run.bottom <= 90.01);
    }
    // Its amount counts on the page where it begins.
    QVERIFY(textsOf(document->page(0)).contains(u"A riportare 3"_s));
}

void TestEngine::growingTextPushesDownAndStretches()
{
    const QString bands = u"<firstPage height='20'><box x='0' y='0' width='80' height='20'/>"
                          "<text x='0' y='0' width='80' height='4' value='una&#10;due&#10;tre' grow='true'/>"
                          "<text x='0' y='5' width='80' height='4' value='sotto'/>"
                          "<text x='0' y='0' width='80' height='3' value='accanto'/></firstPage>"_s;
    const report::Page page = layOut(bands, {})->page(0);
    const QStringList texts = textsOf(page);
    const double lineHeight = page.texts[1].top - page.texts[0].top;
    const double growth = 3 * lineHeight - 4;
    QVERIFY(growth > 0);
    QVERIFY(qAbs(page.frames[0].area.height() - (20 + growth)) < 0.01);
    QVERIFY(qAbs(page.texts[texts.indexOf(u"sotto"_s)].top - (10 + 5 + growth)) < 0.01);
    QCOMPARE(page.texts[texts.indexOf(u"accanto"_s)].top, 10.0);
}

void TestEngine::longNoteContinuesBehindTheRows()
{
    const QString note =
        u"<lastPage height='20'><expr x='0' y='0' width='80' height='8' wrap='true' value='param.note' "
        "continuation='Note (seguito)'/></lastPage>"_s;
    report::ReportProject project;
    project.setProjectFile(projectFile(u"<project version='1'><font name='f' family='Liberation Sans' size='9'/>"
                                       "<report name='prova' width='100' height='100'>"_s +
                                       detail + note + u"</report></project>"_s));
    project.open();
    project.setDataSource([](const QString &) { return numbered(2); });
    project.setParameter(u"note"_s, u"uno\ndue\ntre\nquattro\ncinque"_s);
    const QStringList texts = textsOf(project.layOut(u"prova"_s)->page(0));
    QCOMPARE(texts, QStringList({u"r1"_s, u"r2"_s, u"Note (seguito)"_s, u"tre"_s, u"quattro"_s, u"cinque"_s, u"uno"_s,
                                 u"due…"_s}));
    project.setParameter(u"note"_s, u"uno\ndue"_s);
    QCOMPARE(textsOf(project.layOut(u"prova"_s)->page(0)), QStringList({u"r1"_s, u"r2"_s, u"uno"_s, u"due"_s}));
}

void TestEngine::wideTextIsSqueezedThenCut()
{
    const QString bands = u"<firstPage height='20'><text x='0' y='0' width='20' height='4' value='Quasi della misura'/>"
                          "<text x='0' y='5' width='20' height='4' value='Troppo lungo per la larghezza disponibile'/>"
                          "</firstPage>"_s;
    const report::Page page = layOut(bands, {})->page(0);
    QCOMPARE(page.texts[0].text, u"Quasi della misura"_s);
    QVERIFY(page.texts[0].scale < 1);
    QCOMPARE(page.texts[1].scale, 0.6);
    QVERIFY(page.texts[1].text.endsWith(u'…'));
}

void TestEngine::blocksWithoutRoomAreRefused()
{
    const QString high = u"<lastPage height='75'><line x='0' y='0' width='1' height='0'/></lastPage>"_s;
    QCOMPARE(test::errorOf([&] { layOut(titles + detail + high, numbered(1)); }),
             u"I blocchi fissi della stampa \"prova\" non lasciano spazio sulla pagina."_s);
}

void TestEngine::pdfHasAsManyPagesAndTheTitle()
{
    const auto document = layOut(titles + detail + closing, numbered(20));
    const QString file = test::outputFile(u"motore.pdf"_s);
    report::writePdf(*document, file, 300);
    QCOMPARE(test::pdfPages(file).size(), document->pageCount());
    QVERIFY(test::pdfFacts(u"pdfinfo"_s, file).contains(u"Title: Titolo: prova"_s));
    const QString fonts = test::pdfFacts(u"pdffonts"_s, file);
    QVERIFY2(fonts.contains(u"LiberationSans"_s) && !fonts.contains(u" no no"_s), qPrintable(fonts));
}

void TestEngine::unwritableTargetLeavesNoFile()
{
    const auto document = layOut(titles + detail, numbered(1));
    const QString missing = folder_.filePath(u"manca/x.pdf"_s);
    QCOMPARE(test::errorOf([&] { report::writePdf(*document, missing, 300); }),
             u"Impossibile scrivere il file \"%1\": la cartella non esiste."_s.arg(missing));
    const QString aFolder = folder_.filePath(u"cartella.pdf"_s);
    QVERIFY(QDir().mkpath(aFolder));
    QCOMPARE(test::errorOf([&] { report::writePdf(*document, aFolder, 300); }),
             u"Impossibile scrivere il file \"%1\": esiste una cartella con questo nome."_s.arg(aFolder));
    QCOMPARE(QDir(folder_.path()).entryList({u"*.pdf*"_s}, QDir::Files), QStringList());
}

// The pages are made while they are written, so a fault can come late.
void TestEngine::failedRunKeepsTheOldFile()
{
    const QString file = folder_.filePath(u"vecchio.pdf"_s);
    QFile old(file);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("vecchio");
    old.close();
    const QString late = u"<pageFooter height='5'><expr x='0' y='0' width='9' height='5' "
                         "value='if(pages > 1 and page = pages, ALTRO, 0)'/></pageFooter>"_s;
    const auto document = layOut(titles + detail + QString(late).replace(u" > "_s, u" &gt; "_s), numbered(20));
    QVERIFY(test::errorOf([&] { report::writePdf(*document, file, 300); }).contains(u"non esiste"_s));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("vecchio"));
    QCOMPARE(QDir(folder_.path()).entryList({u"vecchio*"_s}).size(), 1);
}

static const test::Registered<TestEngine> registration;

#include "test_engine.moc"

#include "platform/report/Output.h"
#include "tests/report/Prints.h"

namespace {

const QString titles = u"<columnTitles height='10'><text x='0' y='0' width='30' height='5' "
                       "value='Titolo'/></columnTitles>"_s;
const QString detail = u"<detail height='10' connection='righe'><field x='0' y='0' width='80' height='5' "
                       "value='NOME' grow='true'/></detail>"_s;
const QString closing =
    u"<lastPage height='20'><text x='0' y='0' width='30' height='5' value='Chiusura'/></lastPage>"_s;
const QString carried =
    u"<carriedForward height='5'><expr x='0' y='0' width='80' height='5' value=\"'Riporto ' || "
    "sumBefore(IMPORTO)\"/></carriedForward><toCarryForward height='5'><expr x='0' y='0' width='80' height='5' "
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

} // namespace

/// The engine on small projects of its own. Pages are 100 mm high with margins of 10, so 80 mm hold titles (10), rows
/// (10 each) and what else a test adds.
class TestEngine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expressions()
    {
        report::RunData run;
        run.connections.insert(u"righe"_s, numbered(3));
        const report::Scope scope{.data = &run, .connection = u"righe"_s, .row = 1};
        for (const auto &[text, expected] :
             {std::pair(u"1 + 2 * 3 - 4 / 2"_s, u"5"_s),
              {u"1 / 0"_s, u""_s},
              {u"'l''altra' || ' ' || 2.5"_s, u"l'altra 2,5"_s},
              {u"sum(righe, IMPORTO * 2)"_s, u"9"_s},
              {u"if(NULLO = 0, 'zero', 'nullo')"_s, u"nullo"_s},
              {u"if(empty(NULLO) and not empty(NOME), 'sì', 'no')"_s, u"sì"_s},
              {u"if(1 < 2 and 2 <= 2 and 3 > 2 and 3 >= 3 and 1 <> 2 and not (1 = 2), 'sì', 'no')"_s, u"sì"_s},
              {u"join(', ', NOME, NULLO, ' ', 'fine')"_s, u"r2, fine"_s},
              {u"round(1.005, 2)"_s, u"1,01"_s}})
            QCOMPARE(report::formatted(report::Expression::parse(text).evaluate(scope), {}), expected);
    }

    void brokenProjectsNameFileAndLine()
    {
        const auto inBand = [](const QString &item) {
            return u"<project version='1'>\n<font name='f' family='Arial' size='9'/>\n<report name='r'>\n"
                   "<detail height='5' connection='c'>\n%1\n</detail></report></project>"_s.arg(item);
        };
        const auto expression = [&inBand](const QString &text) {
            return inBand(u"<expr x='0' y='0' width='1' height='1' value='%1'/>"_s.arg(text));
        };
        const QString tooDeep = u"riga 5: espressione annidata troppo in profondità"_s;
        constexpr int deep = 20'000;
        for (const auto &[contents, problem] :
             {std::pair(u"<project version='1'>\n<report name='a'>\n"_s,
                        u"riga 3: il file finisce prima che tutti gli elementi siano chiusi"_s),
              {u"<project version='2'/>"_s, u"riga 1: versione \"2\" non riconosciuta"_s},
              {inBand(u"<line x='0' y='0' width='1' height='0' colore='rosso'/>"_s),
               u"riga 5: attributo \"colore\" non previsto in \"line\""_s},
              {expression(u"1 + )"_s), u"riga 5: \")\" inatteso nell'espressione"_s},
              {expression(QString(deep, u'-') + u'1'), tooDeep},
              {expression(u"1 + "_s.repeated(deep) + u'1'), tooDeep},
              {expression(QString(deep, u'(') + u'1' + QString(deep, u')')), tooDeep},
              {inBand(u"<rows x='0' y='0' width='1' height='1' rowHeight='1' connection='c'>"_s.repeated(deep)),
               u"riga 5: elementi annidati troppo in profondità"_s},
              {u"<project version='1'>\n<report name='a'/>\n<report name='a'/></project>"_s,
               u"riga 3: la stampa \"a\" è definita due volte"_s}}) {
            report::ReportProject project;
            project.setProjectFile(projectFile(contents));
            QCOMPARE(test::errorOf([&] { project.open(); }),
                     u"File delle stampe \"%1\", "_s.arg(project.projectFile()) + problem + u'.');
        }
    }

    // Seven rows fill a page; with the closing block (20) five.
    void everyRowStandsOnceInOrder()
    {
        for (const auto &[rows, closes, rowsPerPage] : {std::tuple(0, true, u"0"_s),
                                                        {5, true, u"5"_s},
                                                        {6, true, u"5|1"_s},
                                                        {8, true, u"7|1"_s},
                                                        {8, false, u"7|1"_s}}) {
            const auto document = layOut(titles + detail + (closes ? closing : QString()), numbered(rows));
            QStringList found;
            int row = 0;
            QStringList texts;
            for (int page = 0; page < document->pageCount(); ++page) {
                texts = textsOf(document->page(page));
                QCOMPARE(texts.count(u"Titolo"_s), 1);
                const QStringList names = texts.filter(QRegularExpression(u"^r\\d+$"_s));
                for (const QString &name : names)
                    QCOMPARE(name, u"r%1"_s.arg(++row));
                found.append(QString::number(names.size()));
            }
            QCOMPARE(texts.count(u"Chiusura"_s), closes ? 1 : 0);
            QCOMPARE(found.join(u'|'), rowsPerPage);
        }
    }

    // Rows of many heights; what overlaps would be two texts at the same height.
    void rowsAreNeverSplitAndNeverReachTheClosingBlock()
    {
        QStringList names;
        for (int row = 0; row < 60; ++row)
            names.append(QStringList(row % 5 + 1, u"r%1"_s.arg(row)).join(u'\n'));
        const auto document = layOut(titles + detail + closing + carried, rowsOf(names));
        for (qsizetype row = 0; row < names.size(); ++row) {
            QList<qsizetype> lines; // of the row, on each page that has some
            for (int page = 0; page < document->pageCount(); ++page) {
                const qsizetype found = textsOf(document->page(page)).count(u"r%1"_s.arg(row));
                lines += found > 0 ? QList{found} : QList<qsizetype>();
            }
            QCOMPARE(lines, QList{row % 5 + 1});
        }
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

    // The pages are made while they are written, so a fault can come late.
    void failedRunKeepsTheOldFile()
    {
        const QString file = folder_.filePath(u"vecchio.pdf"_s);
        core::saveFile(file, "vecchio");
        const QString late = u"<pageFooter height='5'><expr x='0' y='0' width='9' height='5' value='if(pages > 1 "
                             "and page = pages, ALTRO, 0)'/></pageFooter>"_s;
        const auto document = layOut(titles + detail + QString(late).replace(u" > "_s, u" &gt; "_s), numbered(20));
        QVERIFY(
            test::errorOf([&] { report::writePdf(*document, file, report::PdfRenderer()); }).contains(u"non esiste"_s));
        QCOMPARE(test::contentOf(file), QByteArray("vecchio"));
        QCOMPARE(QDir(folder_.path()).entryList({u"vecchio*"_s}).size(), 1);
    }

    void settingsOfThePdfTakeEffect()
    {
        QImage noise(200, 200, QImage::Format_RGB32);
        for (int x = 0; x < noise.width(); ++x) {
            for (int y = 0; y < noise.height(); ++y)
                noise.setPixel(x, y, qRgb(x * 37 % 256, y * 91 % 256, x * y % 256));
        }
        QVERIFY(noise.save(folder_.filePath(u"marchio.png"_s)));
        const auto document = layOut(
            titles + detail +
                u"<pageFooter height='20'><image x='0' y='0' width='20' height='20' file='marchio.png'/></pageFooter>"_s,
            numbered(9));
        QVERIFY(document->pageCount() > 1);
        const auto written = [&](bool embedFonts, int quality, int dpi) {
            report::PdfRenderer settings;
            settings.embedFonts = embedFonts;
            settings.imageQuality = quality;
            settings.metafileDpi = dpi;
            const QString path = folder_.filePath(u"prova.pdf"_s);
            report::writePdf(*document, path, settings);
            return test::contentOf(path);
        };
        const QByteArray usual = written(true, 90, 300);
        QVERIFY(usual.contains("/FontFile"));
        QCOMPARE(usual.count("/Subtype /Image"), 1);
        QVERIFY(!written(false, 90, 300).contains("/FontFile"));
        QVERIFY(written(true, 10, 300).size() < usual.size());
        QVERIFY(written(true, 90, 72) != written(true, 90, 1200));
    }

    void titleBecomesAFileName()
    {
        QCOMPARE(report::fileNameOf(u" a/b: \"c\".. "_s), u"a-b- -c-"_s);
        const QString cut = report::fileNameOf(QString(120, QChar(0x6f22)));
        QVERIFY(cut.toUtf8().size() > 190 && cut.toUtf8().size() <= 200);
    }

private:
    QString projectFile(const QString &contents)
    {
        QString path = folder_.filePath(u"stampe%1.rav"_s.arg(++files_));
        core::saveFile(path, contents.toUtf8());
        return path;
    }

    std::shared_ptr<const report::Document> layOut(const QString &bands, const data::Rows &rows)
    {
        report::ReportProject project;
        project.setProjectFile(projectFile(u"<project version='1'><font name='f' family='Liberation Sans' "
                                           "size='9'/><report name='prova' title=\"'Titolo: prova'\" width='100' "
                                           "height='100'>%1</report></project>"_s.arg(bands)));
        project.open();
        project.setDataSource([&rows](const QString &) { return rows; });
        project.setParameter(u"nome"_s, u"valore"_s);
        return project.layOut(u"prova"_s);
    }

    QTemporaryDir folder_;
    int files_ = 0;
};

static const test::Registered<TestEngine> registration;

#include "test_engine.moc"

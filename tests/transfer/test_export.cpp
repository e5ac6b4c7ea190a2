#include "magazzino/ui/DocumentGrid.h"
#include "platform/ui/ListExport.h"
#include "platform/ui/ProgressDialog.h"
#include "tests/support/Fixtures.h"
#include "tests/support/FullDisk.h"

using ui::ListColumn;

namespace {

// Prints every cell of the sheet: type (n, s or f for a formula), value, number format.
const QString readSheet = uR"(
import sys, zipfile, xml.etree.ElementTree as tree
book = zipfile.ZipFile(sys.argv[1])
part = lambda name: tree.fromstring(book.read('xl/' + name))
q = lambda tag: '{http://schemas.openxmlformats.org/spreadsheetml/2006/main}' + tag
texts = [''.join(t.text or '' for t in s.iter(q('t'))) for s in part('sharedStrings.xml')]
styles = part('styles.xml')
codes = {f.get('numFmtId'): f.get('formatCode') for f in styles.iter(q('numFmt'))}
formats = [codes.get(x.get('numFmtId'), x.get('numFmtId')) for x in styles.find(q('cellXfs'))]
sheet = part('worksheets/sheet1.xml')
print('frozen', sheet.find('.//' + q('pane')).get('ySplit'))
for row in sheet.iter(q('row')):
    cells = []
    for cell in row:
        kind = 'f' if cell.find(q('f')) is not None else cell.get('t', 'n')
        value = cell.findtext(q('v'))
        cells.append(' '.join([cell.get('r'), kind, texts[int(value)] if kind == 's' else value,
                               formats[int(cell.get('s', 0))]]))
    print('|'.join(cells))
)"_s;

QStringList sheetLines(const QString &path)
{
    QProcess python;
    python.start(u"python3"_s, {u"-X"_s, u"utf8"_s, u"-c"_s, readSheet, path});
    python.waitForFinished();
    const QByteArray errors = python.readAllStandardError();
    return QString::fromUtf8(python.readAllStandardOutput() + errors).trimmed().split(u'\n');
}

// Empty where there is none; an office suite may be installed without the library of its spreadsheets.
QString spreadsheetProgram()
{
    QString program = QFileInfo(QStandardPaths::findExecutable(u"soffice"_s)).canonicalFilePath();
    const bool complete = !program.isEmpty() && QFileInfo(program).dir().exists(u"libsclo.so"_s);
    return complete ? program : QString();
}

void fill(ui::ResultGrid &grid)
{
    const QList<data::Column> columns = {{u"ID"_s},
                                         {u"CODICE"_s, 0, true},
                                         {u"NOME"_s, 0, true},
                                         {u"DATA"_s},
                                         {u"PREZZO"_s, 2, false, true},
                                         {u"PESO"_s, 3, false, true},
                                         {u"ATTIVO"_s, 0, true}};
    grid.setRows({columns,
                  {{1, u"0012"_s, u"Müller \"è\"; figli\nMilano"_s, QDate(2026, 3, 9), -1234.5, 0.125, u"True"_s},
                   {2, u"=1+1"_s, u"@x"_s, {}, 1234567.89, {}, u"False"_s},
                   {3, u"+39"_s, {}, QDate(1899, 12, 31), 0.1 + 0.2, 2.0, {}}}});
}

} // namespace

class TestExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        previous_ = ui::setSaveFileChooser([this](QWidget *, const ui::SaveFileRequest &request) {
            asked_ = request;
            return answer_;
        });
    }

    void init()
    {
        form_ = std::make_unique<QWidget>();
        form_->setWindowTitle(u"Elenco: prove / uno"_s);
        grid_ = new ui::ResultGrid(
            u"ID"_s,
            {{u"Codice"_s, u"CODICE"_s, 80},
             {u"Nome"_s, u"NOME"_s, 0, ListColumn::Width::Rest},
             {u"Data"_s, u"DATA"_s, 80, ListColumn::Width::Pixels, ListColumn::Display::Date},
             {u"Prezzo"_s, u"PREZZO"_s, 80, ListColumn::Width::Pixels, ListColumn::Display::Currency},
             {u"Peso"_s, u"PESO"_s, 80},
             {u"Attivo"_s, u"ATTIVO"_s, 80, ListColumn::Width::Pixels, ListColumn::Display::Flag}},
            form_.get());
        fill(*grid_);
    }

    void cleanup() { form_.reset(); }

    void csvShowsWhatIsOnScreen()
    {
        grid_->horizontalHeader()->moveSection(3, 0);
        grid_->setColumnHidden(5, true);
        grid_->rows().sort(4, Qt::DescendingOrder);
        answer_ = path(u"a.csv"_s);
        test::trigger(grid_, u"actEsportaCSV"_s);
        QCOMPARE(asked_.proposedName, u"Elenco - prove - uno.csv"_s);
        const QByteArray expected = "\xEF\xBB\xBF"
                                    "Prezzo;Codice;Nome;Data;Peso\r\n"
                                    "0,30;'+39;;31/12/1899;2,000\r\n"
                                    "-1234,50;0012;\"Müller \"\"è\"\"; figli\nMilano\";09/03/2026;0,125\r\n"
                                    "1234567,89;'=1+1;'@x;;\r\n";
        QCOMPARE(test::contentOf(answer_), expected);
    }

    void workbookHasNumbersDatesAndTexts()
    {
        answer_ = path(u"a.xlsx"_s);
        test::trigger(grid_, u"actEsportaXLSX"_s);
        const QString euro = u"\"€ \"#,##0.00;-\"€ \"#,##0.00"_s;
        const QStringList lines =
            sheetLines(answer_).join(u'\n').replace(u"figli\nMilano"_s, u"figli Milano"_s).split(u'\n');
        QCOMPARE(lines.value(0), u"frozen 1"_s);
        QCOMPARE(lines.value(1), u"A1 s Codice 0|B1 s Nome 0|C1 s Data 0|D1 s Prezzo 0|E1 s Peso 0|F1 s Attivo 0"_s);
        QCOMPARE(lines.value(2), u"A2 s 0012 0|B2 s Müller \"è\"; figli Milano 0|C2 n 46090 dd/mm/yyyy|D2 n -1234.5 "
                                 "%1|E2 n 0.125 #,##0.000|F2 s Sì 0"_s.arg(euro));
        QCOMPARE(lines.value(3), u"A3 s =1+1 0|B3 s @x 0|D3 n 1234567.89 %1|F3 s No 0"_s.arg(euro));
        QCOMPARE(lines.value(4), u"A4 s +39 0|C4 s 31/12/1899 0|D4 n 0.3 %1|E4 n 2 #,##0.000"_s.arg(euro));
    }

    void workbookHoldsAnyText()
    {
        const QString odd =
            u"a"_s + QChar(0) + QChar(1) + QChar(0xFFFE) + QChar(0xFFFF) + QChar(0xD800) + u"z <&> _x0041_"_s;
        grid_->setRows({{{u"ID"_s}, {u"CODICE"_s, 0, true}, {u"NOME"_s, 0, true}}, {{1, odd, u" \U0001F4E6\t"_s}}});
        answer_ = path(u"c.xlsx"_s);
        test::trigger(grid_, u"actEsportaXLSX"_s);
        QCOMPARE(sheetLines(answer_).value(2), u"A2 s a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz <&> _x005F_x0041_ 0|"
                                               "B2 s  \U0001F4E6\t 0"_s);
    }

    void spreadsheetProgramReadsTheSame()
    {
        const QString program = spreadsheetProgram();
        if (program.isEmpty())
            QSKIP("no spreadsheet program on this machine");
        answer_ = path(u"b.xlsx"_s);
        test::trigger(grid_, u"actEsportaXLSX"_s);
        QProcess converter;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        converter.setProcessEnvironment(environment);
        // Semicolons, UTF-8, values as the cells show them.
        converter.start(program, {u"-env:UserInstallation=file://"_s + path(u"profilo"_s), u"--headless"_s,
                                  u"--convert-to"_s, u"csv:Text - txt - csv (StarCalc):59,34,76,1,,1040,false,true"_s,
                                  u"--outdir"_s, folder_.path(), answer_});
        QVERIFY(converter.waitForFinished(120'000));
        QCOMPARE(QString::fromUtf8(test::contentOf(path(u"b.csv"_s))),
                 u"Codice;Nome;Data;Prezzo;Peso;Attivo\n"
                 "0012;\"Müller \"\"è\"\"; figli\nMilano\";09/03/2026;-€ 1,234.50;0.125;Sì\n"
                 "=1+1;@x;;€ 1,234,567.89;;No\n"
                 "+39;;31/12/1899;€ 0.30;2.000;\n"_s);
    }

    void clipboardTakesListOrSelection()
    {
        test::trigger(grid_, u"actCopiaElenco"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"Codice\tNome\tData\tPrezzo\tPeso\tAttivo\n"
                 "0012\tMüller \"è\"; figli Milano\t09/03/2026\t-1234,50\t0,125\tSì\n"
                 "'=1+1\t'@x\t\t1234567,89\t\tNo\n'+39\t\t31/12/1899\t0,30\t2,000\t\n"_s);
        grid_->selectRow(1);
        form_->show();
        QApplication::setActiveWindow(form_.get());
        grid_->setFocus();
        test::settle();
        QTest::keyClick(grid_, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"'=1+1\t'@x\t\t1234567,89\t\tNo"_s);
    }

    // Between two steps of the reading Esc is heard, and a list may be filled anew.
    void longReadingLivesOn()
    {
        const auto quiet = ui::setQuietTime({});
        const auto restore = qScopeGuard([&] { ui::setQuietTime(quiet); });
        QGuiApplication::clipboard()->setText(u"di prima"_s);
        answer_ = path(u"annullato.csv"_s);
        for (const QString &command : {u"actCopiaElenco"_s, u"actEsportaCSV"_s}) {
            QTimer::singleShot(0, grid_, [] { test::pressInModal(Qt::Key_Escape); });
            test::trigger(grid_, command);
        }
        QCOMPARE(QGuiApplication::clipboard()->text(), u"di prima"_s);
        QCOMPARE(QDir(folder_.path()).entryList({u"annullato*"_s}), QStringList());

        const auto rows = [](const QString &text, qsizetype count) {
            return data::Rows({{u"ID"_s}, {u"CODICE"_s, 0, true}}, QList<QVariantList>(count, {1, text}));
        };
        grid_->setRows(rows(u"vecchia"_s, 1000));
        QTimer::singleShot(0, grid_, [&] { grid_->setRows(rows(u"nuova"_s, 600)); });
        test::trigger(grid_, u"actCopiaElenco"_s);
        const QString copied = QGuiApplication::clipboard()->text();
        QCOMPARE(copied.count(u"nuova"_s), 600);
        QCOMPARE(copied.count(u'\n'), 601);
    }

    void failureIsToldAndLeavesTheOldFile()
    {
        test::ScriptedMessages messages;
        answer_ = path(u"manca/a.csv"_s);
        messages.expectError(u"Impossibile scrivere il file \"%1\": la cartella non esiste."_s.arg(answer_));
        test::trigger(grid_, u"actEsportaCSV"_s);

        answer_ = path(u"vecchio.xlsx"_s);
        core::saveFile(answer_, "vecchio");
        grid_->setRows(
            {{{u"ID"_s}, {u"CODICE"_s, 0, true}, {u"NOME"_s, 0, true}}, {{1, u"A"_s, QString(40000, u'x')}}});
        messages.expectError(u"Il testo della riga 1, colonna \"Nome\", supera i 32.767 caratteri ammessi da Excel. "
                             "Esportare in CSV."_s);
        test::trigger(grid_, u"actEsportaXLSX"_s);
        QCOMPARE(test::contentOf(answer_), "vecchio");

        grid_->setRows({});
        messages.expectWarning(u"L'elenco è vuoto: non c'è nulla da esportare."_s);
        test::trigger(grid_, u"actCopiaElenco"_s);
    }

    void commandStaysVisibleInTheNarrowestList()
    {
        const test::Workplace workplace;
        // The list with the most commands, as narrow as it gets.
        auto *invoices =
            qobject_cast<ui::SearchForm *>(workplace.module().openForm(u"actRicercaFattureAccompagnatorie"_s));
        invoices->parentWidget()->resize(invoices->parentWidget()->minimumSizeHint());
        test::settle();
        auto *bar = test::control<QToolBar>(invoices, u"tBarStandard"_s);
        const QWidget *button = bar->widgetForAction(test::control<QAction>(invoices, u"actEsporta"_s));
        QVERIFY(button->isVisible() && bar->rect().contains(button->geometry()));
        QVERIFY(invoices->formMenu()->actions().contains(test::control<QAction>(invoices, u"actEsporta"_s)));
    }

    void documentRowsExport()
    {
        DocumentGrid grid(bollaCarico(), nullptr);
        grid.rowsModel().append({.codice = u"A1"_s, .descrizione = u"-10 cm"_s, .costo = 1.5, .quantita = 3});
        grid.rowsModel().append({.tipo = tipoRiga::testo, .descrizione = u"Nota"_s});
        const core::Table table = ui::tableOf(grid);
        const QVariant none = QString();
        QCOMPARE(table.rows, (QList<QVariantList>{{u"A1"_s, u"-10 cm"_s, 1.5, 3.0, 0.0, none, none},
                                                  {none, u"Nota"_s, {}, {}, {}, none, none}}));
        QVERIFY(table.columns[2].currency && !table.columns[3].currency);
    }

private:
    QString path(const QString &name) const { return folder_.filePath(name); }

    const QTemporaryDir folder_;
    ui::SaveFileChooser previous_;
    ui::SaveFileRequest asked_;
    QString answer_;
    std::unique_ptr<QWidget> form_;
    ui::ResultGrid *grid_ = nullptr;
};

static const test::Registered<TestExport> registered;

int main(int argc, char **argv)
{
    test::preloadFullDisk(argv);
    return test::runAll(argc, argv);
}

#include "test_export.moc"

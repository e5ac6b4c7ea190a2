// Stock reports: their data, and the PDF of the longest one.
#include "benchmark/Bench.h"

#include "magazzino/reports/uMMGModStampaSottoscortaRiordino.h"
#include "magazzino/reports/uMMGStampaInventarioBase.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Clock.h"
#include "platform/data/DataSet.h"
#include "platform/report/Document.h"
#include "platform/report/Output.h"
#include "platform/report/Report.h"

#include <QPainter>
#include <QPdfWriter>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int dpi = 300;

// The movements grouped once, nothing else.
const QString stockOnly = u"SELECT CODICE, SUM(QUANTITA) FROM MOVI_MAGA GROUP BY CODICE"_s;
const QString stockAndValue = u"SELECT CODICE, SUM(QUANTITA), SUM(VALORE_IMPORTO), MAX(DATA_MOVIMENTO) FROM MOVI_MAGA "
                              "GROUP BY CODICE"_s;

data::DataSet &open(const QString &query, const QString &sql)
{
    data::DataSet &rows = Modulo().dmStampe->query(query);
    rows.close();
    rows.setCommandText(sql);
    rows.open();
    return rows;
}

InventarioFilter thisYear()
{
    const int year = core::today().year();
    return {.dal = QDate(year, 1, 1), .al = QDate(year, 12, 31), .esistenza = 0};
}

void measureReport(Bench &bench, const QString &name, const QString &query, const QString &sql, const QString &floor,
                   double target)
{
    bench.add({.program = [&] { open(query, sql); }, .floor = [&] { bench.bare().fetch(floor); }, .runs = 5},
              {.workload = name, .rows = movements(), .target = target});
}

// The pages' primitives, made beforehand, painted and nothing else.
void paint(const QList<report::Page> &pages, const report::Document &document, const QString &file)
{
    QPdfWriter writer(file);
    writer.setPageSize(QPageSize(document.pageSize(), QPageSize::Millimeter, {}, QPageSize::FuzzyMatch));
    writer.setResolution(dpi);
    QPainter painter(&writer);
    for (qsizetype i = 0; i < pages.size(); ++i) {
        if (i > 0)
            writer.newPage();
        report::paintPage(painter, pages[i], document.fonts(), dpi / 25.4);
    }
}

} // namespace

void measureInventories(Bench &bench)
{
    measureReport(bench, u"inventory, data ready"_s, u"adsInventario"_s, InventarioSQL(thisYear(), false),
                  stockAndValue, 1.3);
    measureReport(bench, u"valued inventory, data ready"_s, u"adsInventarioValorizzato"_s,
                  InventarioSQL(thisYear(), true), stockAndValue, 1.3);
}

void measureLevelReports(Bench &bench)
{
    measureReport(bench, u"under-stock report, data ready"_s, u"adsSottoscortaRiordino"_s, SottoscortaRiordinoSQL(0),
                  stockOnly, 1.5);
    measureReport(bench, u"reorder report, data ready"_s, u"adsSottoscortaRiordino"_s, SottoscortaRiordinoSQL(1),
                  stockOnly, 1.5);
}

void measurePdf(Bench &bench)
{
    InventarioFilter every = thisYear();
    every.dal = every.dal.addYears(-years);
    every.esistenza = -1;
    open(u"adsInventarioValorizzato"_s, InventarioSQL(every, true));
    Modulo().dmStampe->query(u"adsAzienda"_s).open();
    const report::ReportProject &project = *Modulo().rProject;
    const QString name = u"InventarioValorizzato1"_s;
    const auto document = project.layOut(name);
    QList<report::Page> pages;
    for (int page = 0; page < document->pageCount(); ++page)
        pages.append(document->page(page));
    bench.add(
        {.program =
             [&] { report::writePdf(*project.layOut(name), bench.filePath(u"program.pdf"_s), report::PdfRenderer()); },
         .floor = [&] { paint(pages, *document, bench.filePath(u"floor.pdf"_s)); },
         .runs = 5},
        {.workload = u"PDF of the valued inventory, per page"_s,
         .rows = Modulo().dmStampe->query(u"adsInventarioValorizzato"_s).recordCount(),
         .pages = document->pageCount(),
         .target = 2});
}

} // namespace bench

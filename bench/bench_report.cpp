#include "platform/core/Error.h"
#include "platform/report/Document.h"
#include "platform/report/Output.h"
#include "platform/report/Report.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

// Layout and PDF of valued inventories of growing length: milliseconds per page, and by how much the peak of resident
// memory grows beyond the rows themselves. Measured with two cores busy: 6 ms a page from 200 to 1.000 pages; 1,3 MB
// for 206 pages and 3,4 MB for 1.030 (page breaks, and the table of objects that the PDF writer keeps until the end).

namespace {

data::Rows articles(int count)
{
    QList<QVariantList> values;
    values.reserve(count);
    for (int i = 0; i < count; ++i)
        values.append(
            {u"ART-%1"_s.arg(i), u"Descrizione di un articolo qualunque numero %1"_s.arg(i), i * 1.5, i * 2.25});
    return {{{.name = u"CODICE"_s}, {.name = u"DESCRIZIONE"_s}, {.name = u"ESISTENZA"_s}, {.name = u"VALORE"_s}},
            values};
}

// Kilobytes; 0 where the system does not tell.
long peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').constFirst().toLong();
    }
    return 0;
}

void measure(report::ReportProject &project, int count, const QString &file)
{
    const data::Rows company({{.name = u"RAGIONESOCIALE"_s}}, {{u"Ditta di prova"_s}});
    const data::Rows rows = articles(count);
    project.setDataSource([&](const QString &name) { return name == u"MMGdsAzienda"_s ? company : rows; });
    const long before = peakMemory();
    QElapsedTimer timer;
    timer.start();
    const auto document = project.layOut(u"InventarioValorizzato1"_s);
    const qint64 layout = timer.elapsed();
    report::writePdf(*document, file, 300);
    const qint64 all = timer.elapsed();
    std::printf("%5d pages: layout %lld ms, with PDF %lld ms, %.2f ms/page, memory peak +%ld kB\n",
                document->pageCount(), layout, all, double(all) / document->pageCount(), peakMemory() - before);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    try {
        const QTemporaryDir folder;
        report::ReportProject project;
        project.setProjectFile(QString::fromUtf8(REPORT_PROJECT));
        project.open();
        // The first one also loads the fonts.
        for (const int count : {50, 2'500, 10'000, 50'000})
            measure(project, count, folder.filePath(u"inventario.pdf"_s));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

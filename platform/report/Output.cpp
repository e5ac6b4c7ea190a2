#include "platform/report/Output.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/report/Document.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace report {

namespace {

QPageLayout layoutOf(const Document &document)
{
    const QPageSize size(document.pageSize(), QPageSize::Millimeter, {}, QPageSize::FuzzyMatch);
    QPageLayout layout(size, QPageLayout::Portrait, {}, QPageLayout::Millimeter);
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

// Numbers of the first and the last page, from 0.
struct Pages
{
    int first = 0;
    int last = 0;
};

Pages pagesOf(const Document &document, const QPrinter &printer)
{
    const int all = document.pageCount();
    return {printer.fromPage() > 0 ? printer.fromPage() - 1 : 0,
            (printer.toPage() > 0 ? qMin(printer.toPage(), all) : all) - 1};
}

void paintPages(const Document &document, QPagedPaintDevice &device, int dpi, const Pages &pages)
{
    QPainter painter;
    if (!painter.begin(&device))
        throw core::Error(u"La stampante non accetta la stampa."_s);
    for (int index = pages.first; index <= pages.last; ++index) {
        if (index > pages.first && !device.newPage())
            throw core::Error(u"La stampante ha interrotto la stampa."_s);
        paintPage(painter, document.page(index), document.fonts(), dpi / 25.4);
    }
}

// Made in memory: the painter does not look whether a file takes what it writes.
void writePages(const Document &document, const QString &path, int dpi, const Pages &pages)
{
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&content);
        writer.setTitle(document.title());
        writer.setCreator(u"Corvane"_s);
        writer.setPageLayout(layoutOf(document));
        writer.setResolution(dpi);
        paintPages(document, writer, dpi, pages);
    }
    core::saveFile(path, content.data());
}

} // namespace

void writePdf(const Document &document, const QString &path, int dpi)
{
    writePages(document, path, dpi, {0, document.pageCount() - 1});
}

void printDocument(const Document &document, QPrinter &printer)
{
    const Pages pages = pagesOf(document, printer);
    // The print dialog also offers a file; the printer itself would not notice that it was cut short.
    if (!printer.outputFileName().isEmpty()) {
        writePages(document, printer.outputFileName(), printer.resolution(), pages);
        return;
    }
    printer.setDocName(fileNameOf(document.title()));
    printer.setPageLayout(layoutOf(document));
    printer.setFullPage(true);
    paintPages(document, printer, printer.resolution(), pages);
}

QString fileNameOf(const QString &title)
{
    static const QRegularExpression unsuitable(u"[\\\\/:*?\"<>|]"_s);
    return QString(title).replace(unsuitable, u"-"_s);
}

QString withPdfExtension(const QString &path)
{
    return path.endsWith(u".pdf"_s, Qt::CaseInsensitive) ? path : path + u".pdf"_s;
}

} // namespace report

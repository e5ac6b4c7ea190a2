#include "platform/report/Output.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/report/Document.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QRegularExpression>
#include <QSaveFile>

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

} // namespace

void writePdf(const Document &document, const QString &path, int dpi)
{
    // The temporary file lies beside the target and takes its name only when everything has been written.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        core::failWriting(file);
    {
        QPdfWriter writer(&file);
        writer.setTitle(document.title());
        writer.setCreator(u"Corvane"_s);
        writer.setPageLayout(layoutOf(document));
        writer.setResolution(dpi);
        QPainter painter;
        if (!painter.begin(&writer))
            core::failWriting(file);
        for (int index = 0; index < document.pageCount(); ++index) {
            if (index > 0 && !writer.newPage())
                core::failWriting(file);
            paintPage(painter, document.page(index), document.fonts(), dpi / 25.4);
        }
    }
    if (!file.commit())
        core::failWriting(file);
}

void printDocument(const Document &document, QPrinter &printer)
{
    printer.setDocName(fileNameOf(document.title()));
    printer.setPageLayout(layoutOf(document));
    printer.setFullPage(true);
    const int first = printer.fromPage() > 0 ? printer.fromPage() : 1;
    const int last = printer.toPage() > 0 ? qMin(printer.toPage(), document.pageCount()) : document.pageCount();
    QPainter painter;
    if (!painter.begin(&printer))
        throw core::Error(u"La stampante non accetta la stampa."_s);
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage())
            throw core::Error(u"La stampante ha interrotto la stampa."_s);
        paintPage(painter, document.page(page - 1), document.fonts(), printer.resolution() / 25.4);
    }
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

#include "platform/report/Output.h"

#include "platform/core/Error.h"
#include "platform/core/LineText.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/report/Document.h"
#include "platform/report/Report.h"

#include <QBuffer>
#include <QHash>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include <optional>

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

struct Painting
{
    Pages pages;
    int dpi = 300;
    TextStyle texts = TextStyle::Fonts;
    std::optional<int> pictureQuality = {}; ///< per cent; pictures stay as they are without it
    core::Progress *progress = nullptr;
    QStringList copies = {QString()}; ///< labels
};

// The picture as a JPEG of this quality has it. One with transparency stays as it is.
QImage withQuality(const QImage &image, int quality)
{
    QBuffer content;
    content.open(QIODevice::ReadWrite);
    return !image.hasAlphaChannel() && image.save(&content, "JPEG", quality) ? QImage::fromData(content.data()) : image;
}

void tell(const Painting &painting, int page, int pages)
{
    if (!painting.progress)
        return;
    painting.progress->setTotal(pages);
    painting.progress->setText(core::tr("Pagina %1 di %2").arg(page + 1).arg(pages));
    painting.progress->step(page);
}

void paintPages(const Document &document, QPagedPaintDevice &device, const Painting &painting)
{
    QPainter painter;
    if (!painter.begin(&device))
        throw core::Error(core::tr("La stampante non accetta la stampa."));
    // A picture of many pages, as the firm's logo, is written once into the file.
    QHash<qint64, QImage> pictures;
    const auto encoded = [&](const QImage &image) {
        QImage &known = pictures[image.cacheKey()];
        if (known.isNull())
            known = withQuality(image, *painting.pictureQuality);
        return known;
    };
    bool first = true;
    int done = 0;
    const int all = (painting.pages.last - painting.pages.first + 1) * static_cast<int>(painting.copies.size());
    for (const QString &copy : painting.copies) {
        for (int index = painting.pages.first; index <= painting.pages.last; ++index) {
            tell(painting, done++, all);
            if (!std::exchange(first, false) && !device.newPage())
                throw core::Error(core::tr("La stampante ha interrotto la stampa."));
            Page page = document.page(index, copy);
            for (Picture &picture : page.pictures) {
                if (painting.pictureQuality)
                    picture.image = encoded(picture.image);
            }
            paintPage(painter, page, document.fonts(), painting.dpi / 25.4, painting.texts);
        }
    }
}

// Made in memory: the painter does not look whether a file takes what it writes.
QByteArray pagesAsPdf(const Document &document, const Painting &painting)
{
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&content);
        writer.setTitle(document.title());
        writer.setCreator(u"Corvane"_s);
        writer.setPageLayout(layoutOf(document));
        writer.setResolution(painting.dpi);
        paintPages(document, writer, painting);
    }
    if (painting.progress)
        painting.progress->check();
    return content.data();
}

} // namespace

QByteArray pdfContent(const Document &document, const PdfRenderer &settings, core::Progress *progress,
                      const QString &copy)
{
    return pagesAsPdf(document, {.pages = {0, document.pageCount() - 1},
                                 .dpi = settings.metafileDpi,
                                 .texts = settings.embedFonts ? TextStyle::Fonts : TextStyle::Outlines,
                                 .pictureQuality = settings.imageQuality,
                                 .progress = progress,
                                 .copies = {copy}});
}

void writePdf(const Document &document, const QString &path, const PdfRenderer &settings, core::Progress *progress,
              const QString &copy)
{
    core::saveFile(path, pdfContent(document, settings, progress, copy));
}

void printDocument(const Document &document, QPrinter &printer, const QStringList &copies, core::Progress *progress)
{
    const Painting painting{
        .pages = pagesOf(document, printer), .dpi = printer.resolution(), .progress = progress, .copies = copies};
    // The print dialog also offers a file; the printer itself would not notice that it was cut short.
    if (!printer.outputFileName().isEmpty()) {
        core::saveFile(printer.outputFileName(), pagesAsPdf(document, painting));
        return;
    }
    printer.setDocName(fileNameOf(document.title()));
    printer.setPageLayout(layoutOf(document));
    printer.setFullPage(true);
    paintPages(document, printer, painting);
}

QString fileNameOf(const QString &title)
{
    static const QRegularExpression unsuitable(u"[\\\\/:*?\"<>|\\x00-\\x1f\\x7f]"_s);
    static const QRegularExpression atEnds(u"^[ .]+|[ .]+$"_s);
    constexpr qsizetype most = 150;
    constexpr qsizetype mostBytes = 200; // a name of more than 255 fits nowhere, and others add to it
    QString name = core::cutTo(QString(title).replace(unsuitable, u"-"_s), most);
    while (name.toUtf8().size() > mostBytes)
        name = core::cutTo(name, name.size() - 1);
    return name.remove(atEnds);
}

QString withPdfExtension(const QString &path)
{
    return path.endsWith(u".pdf"_s, Qt::CaseInsensitive) ? path : path + u".pdf"_s;
}

} // namespace report

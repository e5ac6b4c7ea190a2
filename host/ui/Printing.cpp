#include "host/ui/Printing.h"

#include "host/ui/MainWindow.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Settings.h"
#include "platform/core/Translation.h"
#include "platform/report/Output.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/ProgressDialog.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString settings;

// A slash in a name would open a group of its own.
QString keyOf(const QString &kind)
{
    return u"stampanti/"_s + QString::fromLatin1(QUrl::toPercentEncoding(kind));
}

void propose(const QString &kind, QPrinter &printer)
{
    const QString kept = keptPrinter(kind);
    if (!kept.isEmpty() && QPrinterInfo::availablePrinterNames().contains(kept))
        printer.setPrinterName(kept);
}

void print(const report::Document &document, QPrinter &printer, const QStringList &copies, QWidget *owner)
{
    try {
        ui::runInSteps(owner, core::tr("Stampa"), [&](core::Progress &progress) {
            report::printDocument(document, printer, copies.isEmpty() ? QStringList{QString()} : copies, &progress);
        });
    } catch (const core::Cancelled &) {
        if (printer.outputFileName().isEmpty())
            core::inform(owner,
                         core::tr("La stampa è stata annullata: possono uscire le pagine già passate alla stampante."));
        throw;
    }
}

} // namespace

void keepPrinters(const QString &settingsFile)
{
    settings = settingsFile;
}

QString keptPrinter(const QString &kind)
{
    if (settings.isEmpty() || kind.isEmpty())
        return {};
    return QSettings(settings, QSettings::IniFormat).value(keyOf(kind)).toString();
}

void keepPrinter(const QString &kind, const QString &printer)
{
    if (settings.isEmpty() || kind.isEmpty() || printer.isEmpty() || printer == keptPrinter(kind))
        return;
    try {
        core::changeSettings(settings, [&](QSettings &file) { file.setValue(keyOf(kind), printer); });
    } catch (const core::Error &error) {
        core::logError(u"stampanti"_s, error);
        if (auto *window = MainWindow::instance())
            window->statusBar()->showMessage(
                core::tr("La stampante scelta non si può ricordare: %1").arg(core::errorText(error)));
    }
}

bool printWithDialog(const report::Document &document, const report::Subject &subject, QWidget *owner)
{
    QPrinter printer(QPrinter::HighResolution);
    propose(subject.kind, printer);
    // The dialog proposes it as the name of a file to print to.
    printer.setDocName(report::fileNameOf(document.title()));
    QPrintDialog dialog(&printer, owner);
    dialog.setWindowTitle(u"Stampa"_s);
    dialog.setMinMax(1, document.pageCount());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return false;
    print(document, printer, subject.copies, owner);
    if (printer.outputFileName().isEmpty())
        keepPrinter(subject.kind, printer.printerName());
    return true;
}

} // namespace host

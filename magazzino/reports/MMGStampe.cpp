#include "magazzino/reports/MMGStampe.h"

#include "host/DocumentOptions.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Diritti.h"
#include "magazzino/reports/ArchivioStampe.h"
#include "magazzino/reports/RilieviStampa.h"
#include "magazzino/reports/TotaliFattura.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/core/Progress.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/report/Report.h"

using namespace Qt::StringLiterals;

namespace {

data::DataSet &openByKey(TMMGModMagazzino &module, const QString &query, const QString &key, int id)
{
    data::DataSet &rows = module.dmStampe->query(query);
    rows.close();
    rows.setParameter(key, id);
    rows.open();
    return rows;
}

// The database returns rows in any order once some were deleted and written again; their keys keep the order in which
// the user arranged them.
const data::DataSet &openRows(TMMGModMagazzino &module, const QString &query, const QString &key, int id,
                              const QString &rowKey)
{
    data::DataSet &rows = openByKey(module, query, key, id);
    rows.sortByInteger(rowKey);
    return rows;
}

void openCompany(TMMGModMagazzino &module)
{
    data::DataSet &company = module.dmStampe->query(u"adsAzienda"_s);
    company.close();
    company.open();
}

// Which record a run is about, while it runs.
class PrintedRecord
{
public:
    PrintedRecord(report::ReportSystem &system, report::Subject subject)
        : system_(system)
    {
        system_.subject = std::move(subject);
    }
    ~PrintedRecord() { system_.subject = {}; }
    PrintedRecord(const PrintedRecord &) = delete;
    PrintedRecord &operator=(const PrintedRecord &) = delete;

private:
    report::ReportSystem &system_;
};

DocumentoStampato printedDocument(const DocumentKind &kind, const data::DataSet &document, const data::DataSet &rows)
{
    return {.kind = &kind,
            .testata = {document.integer(kind.key), document.integer(u"NUMERO"_s), document.date(u"DATA"_s)},
            .intestatario = document.text(kind.counterpart + u"RAGIONESOCIALE"_s),
            .impronta = improntaDocumento(kind, document.rows(), rows.rows())};
}

// Without a document the form comes out empty and is nobody's.
report::Subject subjectOf(const DocumentKind &kind, const data::DataSet &document, const data::DataSet &rows,
                          const QStringList &remarks)
{
    report::Subject subject{.remarks = remarks, .kind = kind.name};
    if (document.isEmpty())
        return subject;
    subject.record = kind.key + document.text(kind.key);
    const DocumentoStampato printed = printedDocument(kind, document, rows);
    subject.proposedName = NomePDF(kind.name, printed.testata.numero, printed.testata.data);
    if (!puoVedere(kind))
        return subject;
    subject.copies = copieDi(kind);
    subject.issued = [printed](const report::Document &pages) { annotaStampa(printed, pages); };
    return subject;
}

// False when the user cancelled it.
bool runDocument(TMMGModMagazzino &module, const QString &report, const QString &file, TKxReportDestination destination)
{
    report::ReportSystem &system = *module.rSystem;
    if (destination == TKxReportDestination::FilePDF) {
        system.renderer = module.rPDF;
        system.defaultDestination = report::Destination::File;
        system.allowSetup = false;
        system.nativeOutput = false;
        system.outputFileName = file;
    }
    bool finished = true;
    try {
        module.rProject->execute(report, system);
    } catch (const core::Cancelled &) {
        finished = false;
    }
    // Not reached after a failed run: the file destination then stays until the next successful print; this is
    // intended.
    system.defaultDestination = report::Destination::Preview;
    system.nativeOutput = true;
    system.allowSetup = true;
    return finished;
}

// Without an invoice there is no flag, and the ordinary form comes out empty.
bool isExempt(const data::DataSet &invoice)
{
    if (invoice.isEmpty())
        return false;
    const QString text = invoice.text(u"IVA_ESENTE"_s);
    const std::optional<bool> exempt = core::parseFlag(text);
    if (!exempt)
        throw core::Error(core::tr("\"%1\" non è un valore booleano valido.").arg(text));
    return *exempt;
}

bool withPrices(const DocumentKind &kind)
{
    return !kind.print.pricedReport.isEmpty() &&
           core::parseFlag(ValoreOpzione(host::pricesOption(kind.table))).value_or(false);
}

QString exemptionNote()
{
    QVariant note;
    return GetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, note) ? note.toString() : QString();
}

} // namespace

void StampaDocumento(const DocumentKind &kind, int id, const QString &file, TKxReportDestination destination)
{
    bool cancelled = false; // no error, which would be given the routine's name
    core::namingErrors(kind.print.routine, [&] {
        TMMGModMagazzino &module = Modulo();
        openCompany(module);
        const data::DataSet &document = openByKey(module, kind.dataSet(), kind.key, id);
        const data::DataSet &rows = openRows(module, kind.rowsDataSet(), kind.key, id, kind.rowKey());
        if (!kind.print.vatQuery.isEmpty())
            openByKey(module, kind.print.vatQuery, kind.key, id);
        PreparaTotaliStampa(*module.dmStampe, kind);
        QString report = kind.print.report;
        if (withPrices(kind))
            report = kind.print.pricedReport;
        if (!kind.print.exemptReport.isEmpty() && isExempt(document)) {
            report = kind.print.exemptReport;
            module.rProject->setParameter(u"Param1"_s, exemptionNote());
        }
        // Nobody looks at a file while it is written.
        const bool toFile = destination == TKxReportDestination::FilePDF;
        const QStringList remarks = toFile ? QStringList() : RilieviStampa(*module.dmStampe, kind);
        const PrintedRecord printed(*module.rSystem, subjectOf(kind, document, rows, remarks));
        cancelled = !runDocument(module, report, file, destination);
    });
    if (cancelled)
        throw core::Cancelled();
}

void StampaDdTScarico(int id, const QString &file, TKxReportDestination destination)
{
    StampaDocumento(ddtScarico(), id, file, destination);
}

void StampaFatturaAccompagnatoria(int id, const QString &file, TKxReportDestination destination)
{
    StampaDocumento(fatturaAccompagnatoria(), id, file, destination);
}

QString NomePDF(const QString &documentKind, int numero, QDate data)
{
    return u"%1 %2-%3"_s.arg(documentKind).arg(numero).arg(data.year());
}

void StampaElenco(const QString &report, const QString &heading)
{
    TMMGModMagazzino &module = Modulo();
    openCompany(module);
    module.rProject->setParameter(u"stringValue"_s, heading);
    module.rProject->execute(report, *module.rSystem);
}

void StampaFatturaElettronica(const data::Rows &contents, const QString &name, const QString &heading)
{
    TMMGModMagazzino &module = Modulo();
    module.dmStampe->setRows(u"dsFattElettronica"_s, contents);
    const PrintedRecord printed(*module.rSystem, {.record = name, .proposedName = name});
    StampaElenco(u"FatturaElettronica"_s, heading);
}

#include "platform/report/Report.h"

#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/report/Document.h"
#include "platform/report/Output.h"

using namespace Qt::StringLiterals;

namespace report {

namespace {

// What is less is over before anybody could cancel it.
constexpr qsizetype rowsAtOnce = 2000;
constexpr int pagesAtOnce = 50;

} // namespace

void ReportSystem::run(bool isLong, const QString &title, const Work &work) const
{
    if (isLong && runLong) {
        runLong(title, work);
        return;
    }
    core::Progress unseen;
    work(unseen);
}

void ReportSystem::writeFile(const Document &document, const QString &path, const QString &copy) const
{
    const PdfRenderer standard;
    const PdfRenderer &settings = renderer ? *renderer : standard;
    run(document.pageCount() > pagesAtOnce, core::tr("Scrittura del file PDF"), [&](core::Progress &progress) {
        // Its window may be painted meanwhile.
        writePdf(document.withOwnFonts(), path, settings, &progress, copy);
    });
}

void ReportSystem::output(std::shared_ptr<const Document> document)
{
    document_ = std::move(document);
    switch (defaultDestination) {
    case Destination::File:
        writeFile(*document_, outputFileName);
        if (subject.issued)
            subject.issued(*document_);
        return;
    case Destination::Preview:
        if (!overridePreview)
            throw core::Error(core::tr("Manca la finestra di anteprima."));
        overridePreview(*this, ShowWindow, nullptr);
        return;
    case Destination::Printer:
        if (!overrideSetup)
            throw core::Error(core::tr("Manca la finestra di stampa."));
        overrideSetup(*this, ShowWindow, nullptr);
        return;
    }
}

void ReportProject::close()
{
    project_.reset();
    problem_.clear();
}

void ReportProject::open()
{
    close();
    try {
        project_ = std::make_shared<const Project>(readProject(file_));
    } catch (const core::Error &error) {
        problem_ = error.text();
        throw;
    }
}

QStringList ReportProject::reportNames() const
{
    QStringList names;
    if (project_) {
        for (const auto &report : project_->reports)
            names.append(report->name);
    }
    return names;
}

std::shared_ptr<const Report> ReportProject::reportOf(const QString &name) const
{
    if (!project_)
        throw core::Error(problem_.isEmpty() ? core::tr("Il file delle stampe \"%1\" non è aperto.").arg(file_)
                                             : problem_);
    const qsizetype index = reportNames().indexOf(name);
    if (index < 0)
        throw core::Error(core::tr("La stampa \"%1\" non esiste nel file \"%2\".").arg(name, file_));
    return project_->reports[index];
}

RunData ReportProject::dataOf(const Report &report) const
{
    RunData data;
    data.parameters = parameters_;
    data.now = core::now();
    for (const QString &connection : report.connections)
        data.connections.insert(connection, source_(connection));
    return data;
}

std::shared_ptr<const Document> ReportProject::layOut(const QString &name) const
{
    const std::shared_ptr<const Report> report = reportOf(name);
    return std::make_shared<const Document>(report, project_->fonts, dataOf(*report));
}

void ReportProject::execute(const QString &name, ReportSystem &system) const
{
    const std::shared_ptr<const Report> report = reportOf(name);
    const RunData data = dataOf(*report);
    const bool isLong = report->detail.exists() && data.rows(report->detail.connection).size() > rowsAtOnce;
    std::shared_ptr<const Document> document;
    system.run(isLong, core::tr("Composizione della stampa"), [&](core::Progress &progress) {
        document = std::make_shared<const Document>(report, project_->fonts, data, &progress);
    });
    system.output(document);
}

} // namespace report

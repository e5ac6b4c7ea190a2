#include "platform/report/Report.h"

#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/report/Document.h"
#include "platform/report/Output.h"

using namespace Qt::StringLiterals;

namespace report {

void ReportSystem::output(std::shared_ptr<const Document> document)
{
    document_ = std::move(document);
    const PdfRenderer standard;
    switch (defaultDestination) {
    case Destination::File:
        writePdf(*document_, outputFileName, renderer ? *renderer : standard);
        return;
    case Destination::Preview:
        if (!overridePreview)
            throw core::Error(u"Manca la finestra di anteprima."_s);
        overridePreview(*this, ShowWindow, nullptr);
        return;
    case Destination::Printer:
        if (!overrideSetup)
            throw core::Error(u"Manca la finestra di stampa."_s);
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

std::shared_ptr<const Document> ReportProject::layOut(const QString &name) const
{
    if (!project_)
        throw core::Error(problem_.isEmpty() ? u"Il file delle stampe \"%1\" non è aperto."_s.arg(file_) : problem_);
    const qsizetype index = reportNames().indexOf(name);
    if (index < 0)
        throw core::Error(u"La stampa \"%1\" non esiste nel file \"%2\"."_s.arg(name, file_));
    const std::shared_ptr<const Report> &report = project_->reports[index];
    RunData data;
    data.parameters = parameters_;
    data.now = core::now();
    for (const QString &connection : report->connections)
        data.connections.insert(connection, source_(connection));
    return std::make_shared<const Document>(report, project_->fonts, std::move(data));
}

void ReportProject::execute(const QString &report, ReportSystem &system) const
{
    system.output(layOut(report));
}

} // namespace report

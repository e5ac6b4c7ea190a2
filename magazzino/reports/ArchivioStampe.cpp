#include "magazzino/reports/ArchivioStampe.h"

#include "host/DocumentOptions.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"
#include "platform/report/Output.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

// "D.d.T. di scarico 12-2026 Officine D'Amico & Figli.pdf", with a number behind it when an earlier state of the
// document has the name. The end of a long customer is left out where the whole path would not fit the note.
QString freePath(const QDir &folder, const DocumentoStampato &stampato)
{
    constexpr int longest = 255; // characters that the note keeps
    const DocumentHead &head = stampato.testata;
    const qsizetype room = longest - folder.filePath(u" (9999).pdf"_s).size();
    const QString name =
        report::fileNameOf(NomePDF(stampato.kind->name, head.numero, head.data) + u' ' + stampato.intestatario)
            .left(room)
            .trimmed();
    QString path = folder.filePath(name + u".pdf"_s);
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = folder.filePath(u"%1 (%2).pdf"_s.arg(name).arg(number));
    return path;
}

QDir folderOf(const QString &archive, int year)
{
    if (!QFileInfo(archive).isDir())
        throw core::Error(core::tr("la cartella \"%1\" non esiste").arg(archive));
    if (archive.size() > host::longestArchive)
        throw core::Error(core::tr("il percorso della cartella \"%1\" è troppo lungo: al massimo %2 caratteri")
                              .arg(archive)
                              .arg(host::longestArchive));
    const QString name = QString::number(year);
    if (!QDir(archive).mkpath(name))
        throw core::Error(core::tr("la cartella \"%1/%2\" non si può creare").arg(archive, name));
    return QDir(archive + u'/' + name);
}

// What only some users may see is the account's alone.
core::Readers readersOf(const DocumentKind &kind)
{
    return kind.viewRight.isEmpty() ? core::Readers::AsUsual : core::Readers::OwnerOnly;
}

// The file that this made, if any.
QString file(const DocumentoStampato &stampato, const report::Document &pages, StampaFatta &stampa)
{
    const QString archive = ValoreOpzione(host::archiveOption());
    if (archive.isEmpty())
        return {};
    const auto last = ultimaStampa(*stampato.kind, stampato.testata.id);
    if (last && stampato.impronta.vale(last->impronta) && QFileInfo::exists(last->file)) {
        stampa.file = last->file;
        stampa.improntaFile = last->improntaFile;
        return {};
    }
    const QByteArray content = report::pdfContent(pages, *Modulo().rPDF);
    QString path = freePath(folderOf(archive, stampato.testata.data.year()), stampato);
    core::saveNewFile(path, content, readersOf(*stampato.kind));
    stampa.file = path;
    stampa.improntaFile = core::sha256Text(content);
    return path;
}

// A file that no note knows would get a second one beside it at every print.
void noteWithFile(const DocumentoStampato &stampato, const report::Document &pages, StampaFatta stampa)
{
    const QString made = file(stampato, pages, stampa);
    try {
        registraStampa(*stampato.kind, stampato.testata.id, stampa);
    } catch (const std::exception &) {
        if (!made.isEmpty())
            QFile::remove(made);
        throw;
    }
}

// What the user is told of it; nothing when it did not fail.
std::optional<QString> failureOf(const std::function<void()> &work)
{
    try {
        work();
        return {};
    } catch (const std::exception &error) {
        core::logError(u"archivio delle stampe"_s, error);
        return core::errorText(error);
    }
}

} // namespace

QStringList copieDi(const DocumentKind &kind)
{
    const int copies = std::clamp(ValoreOpzione(host::copiesOption(kind.table)).toInt(), 1, 9);
    if (copies == 1)
        return {};
    QStringList labels = ValoreOpzione(host::labelsOption(kind.table)).split(u';');
    labels.resize(copies);
    for (QString &label : labels)
        label = label.trimmed();
    return labels;
}

void annotaStampa(const DocumentoStampato &stampato, const report::Document &pages)
{
    const DocumentKind &kind = *stampato.kind;
    const StampaFatta withoutFile{
        .il = core::now(), .impronta = stampato.impronta.valore, .file = {}, .improntaFile = {}};
    const int id = stampato.testata.id;
    // Without the file the note is still true, and without the note the paper is out all the same.
    QString problem;
    if (const auto notFiled = failureOf([&] { noteWithFile(stampato, pages, withoutFile); })) {
        const auto notNoted = failureOf([&] { registraStampa(kind, id, withoutFile); });
        problem = notNoted ? core::tr("La stampa non è stata annotata:\n\r") + *notNoted
                           : core::tr("Il documento non è stato archiviato:\n\r") + *notFiled;
    }
    Q_EMIT Modulo().stampato(kind.table, id);
    if (!problem.isEmpty())
        core::showError(GetMainFormObject(), problem);
}

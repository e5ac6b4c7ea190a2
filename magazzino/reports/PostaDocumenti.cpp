#include "magazzino/reports/PostaDocumenti.h"

#include "host/DocumentOptions.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/report/Output.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int keptDays = 7;

// Files there are of former versions, which had no folder for each message.
void removeOld(const QDir &attachments)
{
    for (const QFileInfo &entry : attachments.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (entry.lastModified().daysTo(core::now()) <= keptDays)
            continue;
        if (entry.isDir())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

// For one message: a mail program still reads the attachment of the last one when the same document is sent again. Of
// this account alone, as all that the program makes.
QDir newFolder()
{
    const QDir attachments(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/posta"_s);
    if (attachments.mkpath(u"."_s))
        removeOld(attachments);
    QTemporaryDir folder(attachments.filePath(u"XXXXXX"_s));
    if (!folder.isValid())
        throw core::Error(core::tr("La cartella \"%1\" non si può creare.").arg(attachments.path()));
    folder.setAutoRemove(false);
    return QDir(folder.path());
}

bool isSupplier(const data::DataSet &document)
{
    constexpr auto supplier = static_cast<int>(TTipoAnagrafica::Fornitore);
    return document.rows().indexOf(u"TIPO_ANAGRAFICA") >= 0 && document.integer(u"TIPO_ANAGRAFICA"_s) == supplier;
}

QString addressOf(const DocumentKind &kind, const data::DataSet &document)
{
    const QString code = document.text(kind.counterpart + u"CODICE"_s);
    return isSupplier(document) ? GetFornitore(code).email : GetCliente(code).email;
}

} // namespace

ui::Mail messaggioDi(const DocumentKind &kind, int id)
{
    const QDir folder = newFolder();
    // It reads the document; its queries stay open.
    const QString made = folder.filePath(u"%1-%2.pdf"_s.arg(kind.dataName).arg(id));
    StampaDocumento(kind, id, made, TKxReportDestination::FilePDF);
    const TMMGdmStampe &queries = *Modulo().dmStampe;
    const data::DataSet &document = queries.query(kind.dataSet());
    if (document.isEmpty())
        throw core::Error(core::tr("Il documento è stato eliminato nel frattempo."));
    const int number = document.integer(u"NUMERO"_s);
    const QDate date = document.date(u"DATA"_s);
    const QString file = folder.filePath(report::fileNameOf(NomePDF(kind.name, number, date)) + u".pdf"_s);
    if (!QFile::rename(made, file))
        throw core::Error(core::tr("Il file \"%1\" non si può scrivere.").arg(file));
    const data::DataSet &company = queries.query(u"adsAzienda"_s);
    QString text = ValoreOpzione(host::mailOption(kind.table));
    text.replace(u"{documento}"_s, kind.name)
        .replace(u"{numero}"_s, QString::number(number))
        .replace(u"{data}"_s, core::formatDate(date))
        .replace(u"{cliente}"_s, document.text(kind.counterpart + u"RAGIONESOCIALE"_s))
        .replace(u"{azienda}"_s, company.isEmpty() ? QString() : company.text(u"RAGIONESOCIALE"_s));
    return {.to = addressOf(kind, document),
            .subject = u"%1 n. %2 del %3"_s.arg(kind.name).arg(number).arg(core::formatDate(date)),
            .text = text,
            .attachment = file};
}

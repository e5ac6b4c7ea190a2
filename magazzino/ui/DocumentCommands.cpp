#include "magazzino/ui/DocumentCommands.h"

#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Diritti.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/reports/PostaDocumenti.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

void savePdf(const DocumentKind &kind, QWidget *form, const DocumentHead &document)
{
    const QString file = Modulo().ScegliFilePDF(form, NomePDF(kind.name, document.numero, document.data));
    if (file.isEmpty())
        return;
    const ui::WaitCursor wait;
    StampaDocumento(kind, document.id, file, TKxReportDestination::FilePDF);
}

void sendByMail(const DocumentKind &kind, QWidget *form, const DocumentHead &document)
{
    if (!puoVedere(kind))
        return host::refuseForRights(form);
    const ui::Mail mail = [&] {
        const ui::WaitCursor wait;
        return messaggioDi(kind, document.id);
    }();
    ui::openMail(form, mail);
}

void preview(const DocumentKind &kind, const DocumentHead &document)
{
    const ui::WaitCursor wait;
    StampaDocumento(kind, document.id, {}, TKxReportDestination::Anteprima);
}

} // namespace

QList<ui::Command> printCommands(const DocumentKind &kind, QWidget *form,
                                 const std::function<std::optional<DocumentHead>()> &document)
{
    if (kind.print.report.isEmpty())
        return {};
    const auto print = [&kind, document] {
        if (const auto chosen = document())
            preview(kind, *chosen);
    };
    const auto save = [&kind, form, document] {
        if (const auto chosen = document())
            savePdf(kind, form, *chosen);
    };
    const auto send = [&kind, form, document] {
        if (const auto chosen = document())
            sendByMail(kind, form, *chosen);
    };
    return {{.name = u"actStampa"_s,
             .caption = u"Stampa"_s,
             .run = print,
             .icon = ui::Icon::Print,
             .shortcut = QKeySequence(u"Ctrl+P"_s)},
            {.name = u"actSalvaPDF"_s,
             .caption = u"Salva in PDF"_s,
             .run = save,
             .icon = ui::Icon::Pdf,
             .shortcut = QKeySequence(u"Ctrl+Shift+P"_s)},
            {.name = u"actInviaPosta"_s,
             .caption = core::tr("Invia per posta"),
             .run = send,
             .icon = ui::Icon::Send,
             .shortcut = {},
             .hint = core::tr("Prepara un messaggio di posta con il PDF del documento")}};
}

bool mayEdit(const DocumentKind &kind)
{
    return haDiritto(kind.editRight);
}

bool deleteDocument(const DocumentKind &kind, QWidget *owner, int id)
{
    if (!haDiritto(kind.deleteRight)) {
        host::refuseForRights(owner);
        return false;
    }
    if (kind.canDelete && !kind.canDelete(id)) {
        core::warn(owner, kind.keptText);
        return false;
    }
    return DeleteDocumento(kind, id, true);
}

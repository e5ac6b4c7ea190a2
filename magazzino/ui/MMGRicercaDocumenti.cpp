#include "magazzino/ui/MMGRicercaDocumenti.h"

#include "host/users/Users.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

ui::SearchSpec documentList(const DocumentKind &kind, const QString &yearCondition)
{
    using Column = ui::ListColumn;
    const QString code = kind.counterpart + u"CODICE"_s;
    const QString name = kind.counterpart + u"RAGIONESOCIALE"_s;
    return {.caption = kind.listCaption(),
            .menuCaption = kind.listMenu(),
            .list = {.selectText = u"SELECT * FROM %1 "_s.arg(kind.table),
                     .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
                     .keyField = kind.key,
                     .columns = {{u"N."_s, u"NUMERO"_s, 50, Column::Width::Pixels, Column::Display::Integer},
                                 {u"Data"_s, u"DATA"_s, 80, Column::Width::Pixels, Column::Display::Date},
                                 {u"Codice"_s, code, 120},
                                 {u"Ragione sociale"_s, name, 350}},
                     .filters = {ui::containing(u"txtCodice"_s, u"Codice"_s, code),
                                 ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, name),
                                 ui::yearFilter(u"txtAnno"_s, u"Anno"_s, yearCondition)}},
            .newHint = kind.captions.newHint,
            .editHint = kind.captions.editHint};
}

TMMGRicercaDocumenti::TMMGRicercaDocumenti(const DocumentKind &kind, const ui::SearchSpec &spec, QWidget *owner)
    : TMMGRicercaBase(spec, kind.entryAction(), owner)
    , kind_(kind)
{
    setObjectName(u"MMGRicerca"_s + kind.formName);
    const QList<ui::Command> print = printCommands(kind, this, [this] { return selectedDocument(); });
    for (const ui::Command &command : print)
        addCommand(command);
    addCommand({.name = u"actDuplica"_s,
                .caption = core::tr("Duplica"),
                .run = [this] { duplicate(); },
                .icon = ui::Icon::Duplicate,
                .shortcut = QKeySequence(u"Ctrl+Shift+D"_s)});
    // The narrowest list shows no more beside the export; the menu has them all.
    QStringList shown = ui::listCommands;
    QStringList all = ui::listCommands;
    if (!print.isEmpty()) {
        shown += {{}, u"actStampa"_s, u"actSalvaPDF"_s};
        all += {{}, u"actStampa"_s, u"actSalvaPDF"_s, u"actInviaPosta"_s};
    }
    start(shown, all + QStringList{{}, u"actDuplica"_s});
}

std::optional<DocumentHead> TMMGRicercaDocumenti::selectedDocument() const
{
    if (selectedKey() <= 0)
        return {};
    return DocumentHead{selectedKey(), grid().selectedValue(u"NUMERO"_s).toInt(),
                        grid().selectedValue(u"DATA"_s).toDate()};
}

void TMMGRicercaDocumenti::newRecord()
{
    if (mayEdit(kind_))
        TMMGRicercaBase::newRecord();
    else
        host::refuseForRights(this);
}

// In its form, where it is shown first.
void TMMGRicercaDocumenti::duplicate()
{
    const int key = selectedKey();
    if (key <= 0)
        return;
    if (!mayEdit(kind_)) {
        host::refuseForRights(this);
        return;
    }
    auto &form = dynamic_cast<TMMGInserimentoDocumento &>(entryForm());
    form.openRecord(key);
    // With changes still there the user has chosen to stay with them.
    if (form.IdRecord() == key && !form.Modified())
        form.duplica();
}

bool TMMGRicercaDocumenti::deleteRecord(int id)
{
    return deleteDocument(kind_, this, id);
}

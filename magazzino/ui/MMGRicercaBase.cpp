#include "magazzino/ui/MMGRicercaBase.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Error.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/EntryForm.h"

using namespace Qt::StringLiterals;

namespace {

// The statements' texts are fixed, values included: no blank before LIKE and two behind it.
ui::SearchSpec withFixedText(ui::SearchSpec spec)
{
    spec.list.way = data::Values::Way::Written;
    spec.list.letterLike = u"LIKE  "_s;
    spec.closeHint = u"Chiude la maschera."_s;
    return spec;
}

} // namespace

TMMGRicercaBase::TMMGRicercaBase(const ui::SearchSpec &spec, const QString &entryAction, QWidget *owner)
    : SearchForm(withFixedText(spec), ModuleConnection(), owner)
    , entryAction_(entryAction)
{
    setOnClose(ui::OnClose::Hide);
}

ui::EntryForm &TMMGRicercaBase::entryForm()
{
    auto *form = qobject_cast<ui::EntryForm *>(Modulo().openForm(entryAction_));
    if (!form)
        throw core::Error(u"La maschera di inserimento non è disponibile."_s);
    return *form;
}

void TMMGRicercaBase::addPrintCommands(const PrintRoutine &print, const QString &documentKind)
{
    addCommand({.name = u"actStampa"_s,
                .caption = u"Stampa"_s,
                .run =
                    [this, print] {
                        if (const int id = selectedKey(); id > 0)
                            print(id, {}, TKxReportDestination::Anteprima);
                    },
                .icon = ui::Icon::Print,
                .shortcut = QKeySequence(u"Ctrl+P"_s)});
    addCommand({.name = u"actSalvaPDF"_s,
                .caption = u"Salva in PDF"_s,
                .run =
                    [this, print, documentKind] {
                        const int id = selectedKey();
                        if (id <= 0)
                            return;
                        const QString name = NomePDF(documentKind, grid().selectedValue(u"NUMERO"_s).toInt(),
                                                     grid().selectedValue(u"DATA"_s).toDate());
                        const QString file = Modulo().ScegliFilePDF(this, name);
                        if (file.isEmpty())
                            return;
                        const ui::WaitCursor wait;
                        print(id, file, TKxReportDestination::FilePDF);
                    },
                .icon = ui::Icon::Pdf});
}

QList<ui::ListColumn> anagraficaColumns()
{
    return {{u"Codice"_s, u"CODICE"_s, 100},
            {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 490},
            {u"Telefono 1"_s, u"TELEFONO1"_s, 90},
            {u"Telefono 2"_s, u"TELEFONO2"_s, 90}};
}

QList<ui::ListFilter> anagraficaFilters()
{
    return {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
            ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s)};
}

QList<ui::ListColumn> documentColumns(const QString &prefix)
{
    using Column = ui::ListColumn;
    return {{u"N."_s, u"NUMERO"_s, 50, Column::Width::Pixels, Column::Display::Integer},
            {u"Data"_s, u"DATA"_s, 80, Column::Width::Pixels, Column::Display::Date},
            {u"Codice"_s, prefix + u"CODICE"_s, 120},
            {u"Ragione sociale"_s, prefix + u"RAGIONESOCIALE"_s, 350}};
}

QList<ui::ListFilter> documentFilters(const QString &prefix, const QString &yearCondition)
{
    return {ui::containing(u"txtCodice"_s, u"Codice"_s, prefix + u"CODICE"_s),
            ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, prefix + u"RAGIONESOCIALE"_s),
            ui::yearFilter(u"txtAnno"_s, u"Anno"_s, yearCondition)};
}

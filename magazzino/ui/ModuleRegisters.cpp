#include "magazzino/ui/ModuleRegisters.h"

#include "host/registers/FirmGroups.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/RegisterParts.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace ui::parts;

namespace {

using Deletion = ui::RegisterSpec::Deletion;
using Kind = ui::RegisterField::Kind;
using Width = ui::ListColumn::Width;

const QString related = u"Impossibile eliminare, esistono dei dati correlati!"_s;

Deletion unlessRelated(const std::function<bool(int, QWidget &)> &may, const std::function<bool(int)> &remove,
                       const QString &refusal)
{
    return [=](int id, QWidget &form) {
        if (may(id, form))
            return remove(id);
        core::warn(&form, refusal);
        return false;
    };
}

/// What all of them have in common; `one` is "il fornitore selezionato" in "Modifica il fornitore selezionato.".
ui::RegisterSpec inModule(ui::RegisterSpec spec, const QString &newOne, const QString &selectedOne)
{
    spec.owner = u"MMG"_s;
    spec.entryMenu = u">Inserimento %1<"_s.arg(spec.lowerCaption());
    spec.newHint = core::tr("Crea %1.").arg(newOne);
    spec.editHint = core::tr("Modifica %1.").arg(selectedOne);
    spec.closeHint = u"Chiude la maschera."_s;
    // The statements' texts are fixed, values included: no blank before LIKE and two behind it.
    spec.habits = {.closing = ui::ClosingQuestion::ContinueAnyway,
                   .onClose = ui::OnClose::Hide,
                   .blanksCount = true,
                   .tellsMissing = false,
                   .liveList = false,
                   .way = data::Values::Way::Written,
                   .letterLike = u"LIKE  "_s};
    if (!spec.firstRows->isEmpty())
        return spec;
    // The others open empty.
    spec.firstRows.reset();
    return spec;
}

/// What suppliers and carriers have in common. Their tax codes are taken as they are typed.
ui::RegisterSpec firms(host::FirmKind kind)
{
    QList<ui::RegisterGroup> groups = host::firmGroups(kind);
    for (ui::RegisterField &field : groups[static_cast<int>(host::FirmBox::TaxData)].fields)
        field.isRight = nullptr;
    groups.append(
        {u"Note"_s, {}, {{.name = u"txtNote"_s, .label = u"Note"_s, .column = u"NOTE"_s, .kind = Kind::Memo}}});
    return {.groups = groups,
            .uniqueColumn = u"CODICE"_s,
            .openingSize = {760, 500},
            .listColumns = {{u"Codice"_s, u"CODICE"_s, 100},
                            {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 490},
                            {u"Telefono 1"_s, u"TELEFONO1"_s, 90},
                            {u"Telefono 2"_s, u"TELEFONO2"_s, 90}},
            .listFilters = {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                            ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s)},
            .letterColumn = u"RAGIONESOCIALE"_s};
}

ui::RegisterSpec makeSuppliers()
{
    const QString refusal = u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s;
    ui::RegisterSpec spec = firms(host::FirmKind::Supplier);
    spec.name = spec.caption = u"Fornitori"_s;
    spec.table = u"FORNITORI"_s;
    spec.key = u"IDFORNITORE"_s;
    spec.codePrefix = u"FOR"_s;
    spec.groups[static_cast<int>(host::FirmBox::TaxData)].fields.append(
        {.name = u"txtTipoPagamento"_s,
         .label = u"Tipo di pagamento"_s,
         .column = u"IDTIPO_PAGAMENTO"_s,
         .kind = Kind::Choice,
         .row = 1,
         .span = 3,
         .choice = {.buttonName = u"cmdSelezionaTipoPagamento"_s,
                    .choose = [] { return chooseRecord(u"actModSelezionaTipoPagamento"_s); },
                    .textOf = [](int key) { return GetTipoPagamento(key).testo; },
                    .clearable = true}});
    spec.required = {{u"CODICE"_s, codeIsMissing}, {u"RAGIONESOCIALE"_s, nameIsMissing}};
    spec.isTaken = CodiceFornitoreExists;
    spec.duplicateText = codeIsTaken;
    spec.deleteFromEntry =
        unlessRelated([](int id, QWidget &) { return CanDeleteFornitore(id); }, DeleteFornitore, refusal);
    // The check asks for the code typed in the filter, not for the selected supplier; this is intended.
    spec.deleteFromList = unlessRelated(
        [](int, QWidget &list) { return CanDeleteFornitore(list.findChild<QLineEdit *>(u"txtCodice"_s)->text()); },
        DeleteFornitore, refusal);
    spec.orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s;
    spec.firstRows = u"WHERE UPPER(RAGIONESOCIALE) LIKE 'A%'"_s;
    return inModule(spec, core::tr("un nuovo fornitore"), core::tr("il fornitore selezionato"));
}

ui::RegisterSpec makeCarriers()
{
    ui::RegisterSpec spec = firms(host::FirmKind::Carrier);
    spec.name = spec.caption = u"Vettori"_s;
    spec.entryCaption = u"Inserimento / Modifica vettore"_s;
    spec.table = u"VETTORI"_s;
    spec.key = u"IDVETTORE"_s;
    spec.codePrefix = u"VET"_s;
    for (ui::RegisterGroup &group : spec.groups) {
        for (ui::RegisterField &field : group.fields) {
            if (field.column == u"PARTITAIVA")
                field.maxLength = 11;
            // Although the column holds 50: the database refuses a longer one and the text stays in the form; this is
            // intended.
            if (field.column == u"INDIRIZZO")
                field.maxLength = 100;
        }
    }
    const QString bothAreRequired = u"Codice e ragione sociale sono obbligatori!"_s;
    spec.required = {{u"CODICE"_s, bothAreRequired}, {u"RAGIONESOCIALE"_s, bothAreRequired}};
    spec.isTaken = CodiceVettoreExists;
    spec.duplicateText = u"Codice già utilizzato da un altro vettore!"_s;
    spec.deleteFromEntry = spec.deleteFromList = unlessRelated([](int id, QWidget &) { return CanDeleteVettore(id); },
                                                               [](int id) { return DeleteVettore(id, true); }, related);
    spec.orderText = u" ORDER BY UPPER(CODICE)"_s;
    return inModule(spec, core::tr("un nuovo vettore"), core::tr("il vettore selezionato"));
}

/// A table of one text; `name` is that of its control, `label` also the list's header.
ui::RegisterSpec texts(const QString &name, const QString &label, const QString &column, int maxLength)
{
    return {.groups = {{general, {}, {text(name, label, column, maxLength, 0)}}},
            .openingSize = {560, 180},
            .listColumns = {{label, column, 350, Width::Rest}},
            .orderText = u" ORDER BY UPPER(%1)"_s.arg(column),
            .listSize = {700, 440}};
}

ui::RegisterSpec makeTransportTypes()
{
    const auto may = [](int id, QWidget &) { return CanDeleteTipoTrasporto(id); };
    const auto remove = [](int id) { return DeleteTipoTrasporto(id, true); };
    ui::RegisterSpec spec = texts(u"txtTipoTrasporto"_s, u"Tipo di trasporto"_s, u"TIPO_TRASPORTO"_s, 50);
    spec.name = u"TipiTrasporto"_s;
    spec.caption = u"Tipi di trasporto"_s;
    spec.table = u"TIPI_TRASPORTO"_s;
    spec.key = u"IDTIPO_TRASPORTO"_s;
    spec.required = {{u"TIPO_TRASPORTO"_s, u"Non è stato indicato il tipo di trasporto!"_s}};
    spec.uniqueColumn = u"TIPO_TRASPORTO"_s;
    spec.isTaken = TipoTrasportoExists;
    spec.duplicateText = u"Esiste già un tipo di trasporto con questo nome!"_s;
    spec.deleteFromEntry =
        unlessRelated(may, remove, u"Non è possibile eliminare questa tipologia,\n\resistono dei dati correlati!"_s);
    spec.deleteFromList = unlessRelated(may, remove, related);
    return inModule(spec, core::tr("un nuovo tipo di trasporto"), core::tr("il tipo di trasporto selezionato"));
}

// No check before a save, unlike the transport types, and a limit above the column's 20 characters; both are intended.
// What the database refuses shows as the save error and stays in the form.
ui::RegisterSpec makeTransportReasons()
{
    const auto may = [](int id, QWidget &) { return CanDeleteCausaleTrasporto(id); };
    ui::RegisterSpec spec = texts(u"txtCausaleTrasporto"_s, u"Causale di trasporto"_s, u"CAUSALE_TRASPORTO"_s, 30);
    spec.name = u"CausaliTrasporto"_s;
    spec.caption = u"Causali di trasporto"_s;
    spec.table = u"CAUSALI_TRASPORTO"_s;
    spec.key = u"IDCAUSALE_TRASPORTO"_s;
    spec.deleteFromEntry = unlessRelated(
        may, [](int id) { return DeleteCausaleTrasporto(id, true); },
        u"Non è possibile eliminare questa causale,\n\resistono dei dati correlati!"_s);
    // The deletion runs on the transport types: the type with the key of the chosen reason goes, the reason stays.
    // Required as it stands.
    spec.deleteFromList = unlessRelated(
        may, [](int id) { return DeleteTipoTrasporto(id, true); }, related);
    return inModule(spec, core::tr("una nuova causale di trasporto"), core::tr("la causale di trasporto selezionata"));
}

} // namespace

const ui::RegisterSpec &suppliers()
{
    static const ui::RegisterSpec spec = makeSuppliers();
    return spec;
}

const ui::RegisterSpec &carriers()
{
    static const ui::RegisterSpec spec = makeCarriers();
    return spec;
}

const ui::RegisterSpec &transportTypes()
{
    static const ui::RegisterSpec spec = makeTransportTypes();
    return spec;
}

const ui::RegisterSpec &transportReasons()
{
    static const ui::RegisterSpec spec = makeTransportReasons();
    return spec;
}

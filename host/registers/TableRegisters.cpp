#include "host/registers/Registers.h"

#include "host/InvoiceCodes.h"
#include "platform/core/Translation.h"
#include "platform/ui/RegisterParts.h"

using namespace Qt::StringLiterals;

// The small tables that other records refer to.
namespace host {

using namespace ui::parts;

namespace {

using Kind = ui::RegisterField::Kind;
using Display = ui::ListColumn::Display;
using Width = ui::ListColumn::Width;

ui::RegisterField codeChoice(const QString &name, const QString &label, const QString &column, int row,
                             const QList<core::CodeText> &codes, const QString &help)
{
    return {
        .name = name, .label = label, .column = column, .kind = Kind::Code, .row = row, .help = help, .codes = codes};
}

} // namespace

const ui::RegisterSpec &vatRates()
{
    static const ui::RegisterSpec spec = {
        .name = u"AliquoteIVA"_s,
        .caption = core::tr("Aliquote IVA"),
        .oneRecord = core::tr("questa aliquota IVA"),
        .table = u"ALIQUOTE_IVA"_s,
        .key = u"IDALIQUOTA_IVA"_s,
        .groups = {{general,
                    {},
                    {upperText(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s, 2, 0),
                     text(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s, 30, 1),
                     number(Kind::Quantity, u"txtAliquota"_s, core::tr("Aliquota %"), u"ALIQUOTA"_s, 2),
                     codeChoice(u"txtNatura"_s, core::tr("Natura"), u"NATURA"_s, 3, vatNatures(),
                                core::tr("Perché non c'è IVA: serve alla fattura elettronica per le aliquote a zero, e "
                                         "soltanto per quelle.")),
                     {.name = u"txtRiferimentoNormativo"_s,
                      .label = core::tr("Riferimento normativo"),
                      .column = u"RIFERIMENTO_NORMATIVO"_s,
                      .row = 4,
                      .maxLength = 100,
                      .help = core::tr("La norma per cui non c'è IVA, per esempio: Art. 10 DPR 633/72. Sta nella "
                                       "fattura elettronica.")}}}},
        .required = {{u"CODICE"_s, codeIsMissing}, {u"DESCRIZIONE"_s, descriptionIsMissing}},
        .uniqueColumn = u"CODICE"_s,
        .duplicateText = codeIsTaken,
        .openingSize = {640, 290},
        .listColumns = {{u"Codice"_s, u"CODICE"_s, 80},
                        {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, Width::Rest},
                        {core::tr("Aliquota %"), u"ALIQUOTA"_s, 100, Width::Pixels, Display::Quantity}},
        .listFilters = {ui::containingLoosely(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s)},
        .orderText = u" ORDER BY UPPER(CODICE)"_s};
    return spec;
}

const ui::RegisterSpec &units()
{
    static const ui::RegisterSpec spec = {
        .name = u"UnitaMisura"_s,
        .caption = u"Unità di misura"_s,
        .oneRecord = core::tr("questa unità di misura"),
        .table = u"UM"_s,
        .key = u"IDUM"_s,
        .groups = {{general, {}, {upperText(u"txtUM"_s, u"Unità di misura"_s, u"UM"_s, 5, 0)}}},
        .required = {{u"UM"_s, core::tr("Non è stata indicata l'unità di misura!")}},
        .uniqueColumn = u"UM"_s,
        .duplicateText = core::tr("Esiste già un'unità di misura con questo nome!"),
        .openingSize = {460, 160},
        .listColumns = {{u"Unità di misura"_s, u"UM"_s, 0, Width::Rest}},
        .listFilters = {ui::containingLoosely(u"txtUM"_s, u"Unità di misura"_s, u"UM"_s)},
        .orderText = u" ORDER BY UPPER(UM)"_s};
    return spec;
}

const ui::RegisterSpec &paymentTypes()
{
    static const ui::RegisterSpec spec = {
        .name = u"TipiPagamento"_s,
        .caption = core::tr("Tipi di pagamento"),
        .oneRecord = core::tr("questo tipo di pagamento"),
        .table = u"TIPI_PAGAMENTO"_s,
        .key = u"IDTIPO_PAGAMENTO"_s,
        .groups = {{general,
                    {},
                    {text(u"txtTipoPagamento"_s, u"Tipo di pagamento"_s, u"TIPO_PAGAMENTO"_s, 30, 0),
                     codeChoice(u"txtModalita"_s, core::tr("Modalità"), u"MODALITA"_s, 1, paymentMethods(),
                                core::tr("Come si paga, con il codice della fattura elettronica.")),
                     codeChoice(
                         u"txtCondizioni"_s, core::tr("Condizioni"), u"CONDIZIONI"_s, 2, paymentTerms(),
                         core::tr("In una volta sola, a rate o in anticipo; vuoto vale TP02, pagamento completo.")),
                     codeChoice(u"txtDecorrenza"_s, core::tr("Scadenza"), u"DECORRENZA"_s, 3,
                                {{u"DF"_s, core::tr("giorni dalla data del documento")},
                                 {u"FM"_s, core::tr("giorni dalla data del documento, fine mese")}},
                                core::tr("Vuota, la scadenza del pagamento non viene proposta.")),
                     number(Kind::Integer, u"txtGiorni"_s, core::tr("Giorni"), u"GIORNI"_s, 4)}}},
        .required = {{u"TIPO_PAGAMENTO"_s, core::tr("Non è stato indicato il tipo di pagamento!")}},
        .uniqueColumn = u"TIPO_PAGAMENTO"_s,
        .duplicateText = core::tr("Esiste già un tipo di pagamento con questo nome!"),
        .openingSize = {560, 290},
        .listColumns = {{u"Tipo di pagamento"_s, u"TIPO_PAGAMENTO"_s, 0, Width::Rest}},
        .listFilters = {ui::containingLoosely(u"txtTipoPagamento"_s, u"Tipo di pagamento"_s, u"TIPO_PAGAMENTO"_s)},
        .orderText = u" ORDER BY UPPER(TIPO_PAGAMENTO)"_s};
    return spec;
}

// Documents copy a note's text, so nothing refers to one.
const ui::RegisterSpec &documentNotes()
{
    static const ui::RegisterSpec spec = {
        .name = u"NoteDocumenti"_s,
        .caption = core::tr("Note per i documenti"),
        .oneRecord = core::tr("questa nota"),
        .table = u"NOTE_DOCUMENTI"_s,
        .key = u"IDNOTA_DOCUMENTI"_s,
        .groups =
            {{general,
              {},
              {text(u"txtTitolo"_s, u"Titolo"_s, u"TITOLO"_s, 100, 0),
               {.name = u"txtTesto"_s, .label = u"Testo"_s, .column = u"TESTO"_s, .kind = Kind::Memo, .row = 1}}}},
        .required = {{u"TITOLO"_s, core::tr("Non è stato indicato il titolo!")}},
        .openingSize = {640, 340},
        .listColumns = {{u"Titolo"_s, u"TITOLO"_s, 0, Width::Rest}},
        .listFilters = {ui::containingLoosely(u"txtTitolo"_s, u"Titolo"_s, u"TITOLO"_s)},
        .orderText = u" ORDER BY UPPER(TITOLO)"_s};
    return spec;
}

} // namespace host

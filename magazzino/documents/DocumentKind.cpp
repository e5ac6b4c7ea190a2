#include "magazzino/documents/DocumentKind.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

enum class Kind : quint8
{
    Bolla = 1,
    DdT = 2,
    Fattura = 4
};
Q_DECLARE_FLAGS(Kinds, Kind)
Q_DECLARE_OPERATORS_FOR_FLAGS(Kinds)

constexpr Kinds all = Kind::Bolla | Kind::DdT | Kind::Fattura;
constexpr Kinds issues = Kind::DdT | Kind::Fattura;

struct RowColumnUse
{
    RowColumn column;
    Kinds storedIn;
    Kinds shownIn = {};
};

// Copied from the registers when a row is stored.
RowColumn copied(const QString &column, const RowMember &member)
{
    return {.column = column, .member = member, .types = rowsOfGoods};
}

RowColumn shown(const QString &column, const RowMember &member, RowFormat format, const QString &header, int width)
{
    return {
        .column = column, .member = member, .types = rowsOfGoods, .format = format, .header = header, .width = width};
}

RowColumn amount(const QString &column, const RowMember &member, RowFormat format, const QString &header, int width)
{
    RowColumn own = shown(column, member, format, header, width);
    own.types = rowsWithAmounts;
    return own;
}

// A number that is typed; `refusal` is what is said of one out of range.
RowColumn typed(RowColumn own, const QString &refusal)
{
    own.editable = own.types;
    own.refusal = refusal;
    return own;
}

RowColumn code()
{
    RowColumn own = shown(u"CODICE"_s, &DocumentRow::codice, RowFormat::Text, u"Codice"_s, 13);
    own.percent = true;
    return own;
}

RowColumn discount()
{
    RowColumn own = typed(amount(u"SCONTO"_s, &DocumentRow::sconto, RowFormat::Number, u"Sc."_s, 60),
                          core::tr("Lo sconto va da 0 a 100."));
    own.maximum = 100;
    return own;
}

RowColumn quantity()
{
    RowColumn own = typed(amount(u"QUANTITA"_s, &DocumentRow::quantita, RowFormat::Number, u"Q.tà"_s, 60),
                          core::tr("La quantità deve essere maggiore di zero."));
    own.zeroAllowed = false;
    return own;
}

// Outside the VAT base the cell where a rate would stand is grey.
RowColumn vatCode()
{
    RowColumn own = shown(u"IVA_CODICE"_s, &DocumentRow::codiceIVA, RowFormat::ShortText, u"IVA"_s, 40);
    own.greyed = RowType::NonImponibile;
    return own;
}

// Every column of document rows, in the order in which they are shown: what stores it, and what shows it.
const QList<RowColumnUse> &rowColumns()
{
    static const QList<RowColumnUse> columns = {
        {{.column = u"TIPO_RIGA"_s, .member = &DocumentRow::tipo}, all},
        {code(), all, all},
        {{.column = u"DESCRIZIONE"_s,
          .member = &DocumentRow::descrizione,
          .editable = RowType::Testo | RowType::NonImponibile,
          .format = RowFormat::Memo,
          .header = u"Descrizione"_s},
         all,
         all},
        {copied(u"IDCATEGORIA"_s, &DocumentRow::idCategoria), all},
        {copied(u"CATEGORIA"_s, &DocumentRow::categoria), all},
        // A delivery note leaves its costs to the movements.
        {typed(amount(u"COSTO"_s, &DocumentRow::costo, RowFormat::Currency, u"Costo"_s, 100),
               core::tr("Il costo non può essere negativo.")),
         Kind::Bolla | Kind::Fattura, Kind::Bolla},
        // What comes in has no sale price.
        {{.column = u"PREZZO"_s, .member = 0.0, .types = rowsWithAmounts}, Kind::Bolla},
        {typed(amount(u"PREZZO"_s, &DocumentRow::prezzo, RowFormat::Currency, u"Prezzo"_s, 100),
               core::tr("Il prezzo non può essere negativo.")),
         issues, issues},
        {discount(), Kind::Fattura, Kind::Fattura},
        {quantity(), all, all},
        {amount(u"IMPORTO"_s, &DocumentRow::importo, RowFormat::Currency, u"Importo"_s, 100), all, all},
        {copied(u"IVA_IDALIQUOTA_IVA"_s, &DocumentRow::idAliquotaIVA), all},
        {vatCode(), all, all},
        {copied(u"IVA_DESCRIZIONE"_s, &DocumentRow::descrizioneIVA), all},
        {copied(u"IVA_ALIQUOTA"_s, &DocumentRow::aliquotaIVA), all},
        {copied(u"IDUM"_s, &DocumentRow::idUM), all},
        {shown(u"UM"_s, &DocumentRow::um, RowFormat::ShortText, u"U.M."_s, 50), all, all},
    };
    return columns;
}

QList<RowColumn> columnsOf(Kind kind, Kinds RowColumnUse::*use)
{
    const auto isUsed = [kind, use](const RowColumnUse &entry) { return (entry.*use).testFlag(kind); };
    return core::mapped(core::filtered(rowColumns(), isUsed), &RowColumnUse::column);
}

DocumentKind withColumns(Kind kind, DocumentKind own)
{
    own.storedColumns = columnsOf(kind, &RowColumnUse::storedIn);
    own.shownColumns = columnsOf(kind, &RowColumnUse::shownIn);
    return own;
}

QList<DocumentTotal> totals()
{
    return {{u"TOTALE_IMPONIBILE"_s, u"lblTotaleImponibile"_s, u"Totale imponibile"_s,
             [](const DocumentTotals &sums) { return sums.imponibile; }},
            {u"TOTALE_IMPOSTA"_s, u"lblTotaleImposta"_s, u"Totale imposta"_s,
             [](const DocumentTotals &sums) { return sums.imposta; }},
            {u"TOTALE_DOCUMENTO"_s, u"lblTotaleDocumento"_s, u"Totale documento"_s,
             [](const DocumentTotals &sums) { return sums.documento(); }}};
}

QList<DocumentTotal> storedAsZero()
{
    QList<DocumentTotal> list = totals();
    for (DocumentTotal &total : list) {
        total.caption.clear();
        total.value = [](const DocumentTotals &) { return 0.0; };
    }
    return list;
}

// What delivery notes and accompanying invoices have in common.
DocumentKind issue(Kind kind, DocumentKind own)
{
    own.counterpart = u"CLI_"_s;
    own.unitPrice = &DocumentRow::prezzo;
    own.movement.type = u"Scarico"_s;
    own.movement.sign = -1;
    own.movement.price = &DocumentRow::prezzo;
    own.movement.atAverageCost = true;
    own.captions.generalPage = u"Generale"_s;
    own.captions.rowsPage = u"Righe documento "_s;
    own.captions.notesPage = u"Note"_s;
    RowCommandCaptions &rows = own.captions.rows;
    rows.articolo = u"Aggiungi articolo"_s;
    rows.servizio = u"Aggiungi servizio"_s;
    rows.testo = u"Aggiungi testo"_s;
    rows.elimina = u"Elimina riga"_s;
    rows.su = u"Sposta riga in alto"_s;
    rows.giu = u"Sposta riga in basso"_s;
    return withColumns(kind, own);
}

// A number stands for no member.
bool holdsValue(const RowColumnUse &use)
{
    return !std::holds_alternative<double>(use.column.member);
}

} // namespace

QVariantList valuesOf(const QList<DocumentRow> &rows)
{
    QVariantList all;
    for (const DocumentRow &row : rows) {
        QVariantMap values;
        for (const RowColumnUse &use : rowColumns()) {
            if (holdsValue(use))
                values.insert(use.column.column, storedValue(use.column, row));
        }
        all.append(values);
    }
    return all;
}

QList<DocumentRow> rowsOf(const QVariantList &values)
{
    QList<DocumentRow> rows;
    for (const QVariant &value : values) {
        const QVariantMap columns = value.toMap();
        DocumentRow row;
        for (const RowColumnUse &use : rowColumns()) {
            if (holdsValue(use) && columns.contains(use.column.column))
                readValue(use.column, columns.value(use.column.column), row);
        }
        rows.append(row);
    }
    return rows;
}

const DocumentKind &bollaCarico()
{
    static const DocumentKind kind =
        withColumns(Kind::Bolla,
                    {.name = u"Bolla di carico"_s,
                     .plural = u"bolle di carico"_s,
                     .table = u"BOLLE_CARICO"_s,
                     .key = u"IDBOLLA_CARICO"_s,
                     .dataName = u"BollaCarico"_s,
                     .formName = u"BolleCarico"_s,
                     .counterpart = u"FOR_"_s,
                     .checkRoutine = u"BollaCaricoExists"_s,
                     .canDelete = CanDeleteBollaCarico,
                     .keptText = u"Non è possibile eliminare questa bolla di carico,\n\resistono dei dati correlati!"_s,
                     .unitPrice = &DocumentRow::costo,
                     .movement = {.type = u"Carico"_s, .note = u"Bolla di carico n. "_s},
                     .captions = {.shortName = core::tr("Bolla"),
                                  .generalPage = u" Generale "_s,
                                  .rowsPage = u" Righe documento "_s,
                                  .notesPage = u" Note "_s,
                                  .rowsGrid = u"gridRigheDocumento"_s,
                                  .rows = {.articolo = u"Articolo"_s,
                                           .elimina = u"Rimuovi riga"_s,
                                           .su = u"Sposta in alto"_s,
                                           .giu = u"Sposta in basso"_s},
                                  .newHint = u"Crea una nuova bolla di carico."_s,
                                  .editHint = u"Modifica la bolla di carico selezionata."_s},
                     .totals = totals()});
    return kind;
}

const DocumentKind &ddtScarico()
{
    static const DocumentKind kind = issue(
        Kind::DdT,
        {.name = u"D.d.T. di scarico"_s,
         .plural = u"D.d.T. di scarico"_s,
         .table = u"DDT_SCARICO"_s,
         .key = u"IDDDT_SCARICO"_s,
         .dataName = u"DdTScarico"_s,
         .formName = u"DdTScarico"_s,
         .deletionRoutine = u"DeleteDdTScarico"_s,
         .movement = {.note = u"D.d.T. di scarico n. "_s},
         .print = {.routine = u"StampaDdTScarico"_s, .report = u"DdTScarico"_s, .pricedReport = u"DdTScaricoPrezzi"_s},
         .captions = {.shortName = u"D.d.T."_s,
                      .rowsGrid = u"gridRigheDocumento"_s,
                      .newHint = core::tr("Crea un nuovo D.d.T. di scarico."),
                      .editHint = core::tr("Modifica il D.d.T. di scarico selezionato.")},
         .totals = storedAsZero()});
    return kind;
}

const DocumentKind &fatturaAccompagnatoria()
{
    static const DocumentKind kind =
        issue(Kind::Fattura,
              {.name = u"Fattura accompagnatoria"_s,
               .plural = u"fatture accompagnatorie"_s,
               .table = u"FATT_ACC"_s,
               .key = u"IDFATT_ACC"_s,
               .dataName = u"FattAcc"_s,
               .formName = u"FattureAccompagnatorie"_s,
               .numbersTable = u"FATT_VEND"_s,
               .canDelete = CanDeleteFatturaAccompagnatoria,
               .keptText = core::tr(
                   "Non è possibile eliminare questa fattura,\n\ril suo file elettronico è già stato scritto!"),
               .viewRight = u"Fatture acc. (visualizzazione)"_s,
               .editRight = u"Fatture acc. (modifica)"_s,
               .deleteRight = u"Fatture acc. (eliminazione)"_s,
               .movement = {.note = u"Fattura immediata accompagnatoria n. "_s},
               .print = {.routine = u"StampaFatturaAccompagnatoria"_s,
                         .report = u"FatturaAccompagnatoria"_s,
                         .exemptReport = u"FatturaAccompagnatoriaIVAEsente"_s,
                         .vatQuery = u"adsFattAccIva"_s},
               .captions = {.shortName = core::tr("Fattura"),
                            .rowsGrid = u"gridRigheFattura"_s,
                            .rows = {.nonImponibile = core::tr("Aggiungi non imponibile")},
                            .newHint = core::tr("Crea una nuova fattura accompagnatoria."),
                            .editHint = core::tr("Modifica la fattura accompagnatoria selezionata.")},
               .totals = totals()});
    return kind;
}

const QList<const DocumentKind *> &documentKinds()
{
    static const QList<const DocumentKind *> kinds = {&bollaCarico(), &ddtScarico(), &fatturaAccompagnatoria()};
    return kinds;
}

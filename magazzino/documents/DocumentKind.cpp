#include "magazzino/documents/DocumentKind.h"

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

// Every column of document rows, in the order in which they are shown. What has no header is never shown.
const QList<RowColumnUse> &rowColumns()
{
    static const QList<RowColumnUse> columns = {
        {{.column = u"TIPO_RIGA"_s, .member = &DocumentRow::tipo}, all},
        {{.column = u"CODICE"_s,
          .member = &DocumentRow::codice,
          .types = rowsOfGoods,
          .header = u"Codice"_s,
          .width = 13,
          .percent = true},
         all,
         all},
        {{.column = u"DESCRIZIONE"_s,
          .member = &DocumentRow::descrizione,
          .editable = RowType::Testo | RowType::NonImponibile,
          .format = RowFormat::Memo,
          .header = u"Descrizione"_s},
         all,
         all},
        {{.column = u"IDCATEGORIA"_s, .member = &DocumentRow::idCategoria, .types = rowsOfGoods}, all},
        {{.column = u"CATEGORIA"_s, .member = &DocumentRow::categoria, .types = rowsOfGoods}, all},
        // A delivery note leaves its costs to the movements.
        {{.column = u"COSTO"_s,
          .member = &DocumentRow::costo,
          .types = rowsWithAmounts,
          .editable = rowsWithAmounts,
          .format = RowFormat::Currency,
          .header = u"Costo"_s,
          .width = 100,
          .refusal = u"Il costo non può essere negativo."_s},
         Kind::Bolla | Kind::Fattura,
         Kind::Bolla},
        // What comes in has no sale price.
        {{.column = u"PREZZO"_s, .member = 0.0, .types = rowsWithAmounts}, Kind::Bolla},
        {{.column = u"PREZZO"_s,
          .member = &DocumentRow::prezzo,
          .types = rowsWithAmounts,
          .editable = rowsWithAmounts,
          .format = RowFormat::Currency,
          .header = u"Prezzo"_s,
          .width = 100,
          .refusal = u"Il prezzo non può essere negativo."_s},
         issues,
         issues},
        {{.column = u"SCONTO"_s,
          .member = &DocumentRow::sconto,
          .types = rowsWithAmounts,
          .editable = rowsWithAmounts,
          .format = RowFormat::Number,
          .header = u"Sc."_s,
          .width = 60,
          .maximum = 100,
          .refusal = u"Lo sconto va da 0 a 100."_s},
         Kind::Fattura,
         Kind::Fattura},
        {{.column = u"QUANTITA"_s,
          .member = &DocumentRow::quantita,
          .types = rowsWithAmounts,
          .editable = rowsWithAmounts,
          .format = RowFormat::Number,
          .header = u"Q.tà"_s,
          .width = 60,
          .zeroAllowed = false,
          .refusal = u"La quantità deve essere maggiore di zero."_s},
         all,
         all},
        {{.column = u"IMPORTO"_s,
          .member = &DocumentRow::importo,
          .types = rowsWithAmounts,
          .format = RowFormat::Currency,
          .header = u"Importo"_s,
          .width = 100},
         all,
         all},
        {{.column = u"IVA_IDALIQUOTA_IVA"_s, .member = &DocumentRow::idAliquotaIVA, .types = rowsOfGoods}, all},
        // Outside the VAT base the cell where a rate would stand is grey.
        {{.column = u"IVA_CODICE"_s,
          .member = &DocumentRow::codiceIVA,
          .types = rowsOfGoods,
          .format = RowFormat::ShortText,
          .header = u"IVA"_s,
          .width = 40,
          .greyed = RowType::NonImponibile},
         all,
         all},
        {{.column = u"IVA_DESCRIZIONE"_s, .member = &DocumentRow::descrizioneIVA, .types = rowsOfGoods}, all},
        {{.column = u"IVA_ALIQUOTA"_s, .member = &DocumentRow::aliquotaIVA, .types = rowsOfGoods}, all},
        {{.column = u"IDUM"_s, .member = &DocumentRow::idUM, .types = rowsOfGoods}, all},
        {{.column = u"UM"_s,
          .member = &DocumentRow::um,
          .types = rowsOfGoods,
          .format = RowFormat::ShortText,
          .header = u"U.M."_s,
          .width = 50},
         all,
         all},
    };
    return columns;
}

QList<RowColumn> columnsOf(Kind kind, Kinds RowColumnUse::*use)
{
    QList<RowColumn> columns;
    for (const RowColumnUse &entry : rowColumns()) {
        if ((entry.*use).testFlag(kind))
            columns.append(entry.column);
    }
    return columns;
}

DocumentKind withColumns(Kind kind, DocumentKind own)
{
    own.storedColumns = columnsOf(kind, &RowColumnUse::storedIn);
    own.shownColumns = columnsOf(kind, &RowColumnUse::shownIn);
    return own;
}

} // namespace

const DocumentKind &bollaCarico()
{
    static const DocumentKind kind = withColumns(Kind::Bolla, {.unitPrice = &DocumentRow::costo});
    return kind;
}

const DocumentKind &ddtScarico()
{
    static const DocumentKind kind = withColumns(Kind::DdT, {.unitPrice = &DocumentRow::prezzo});
    return kind;
}

const DocumentKind &fatturaAccompagnatoria()
{
    static const DocumentKind kind = withColumns(Kind::Fattura, {.unitPrice = &DocumentRow::prezzo});
    return kind;
}

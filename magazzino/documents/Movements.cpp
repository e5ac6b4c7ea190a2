#include "magazzino/documents/Movements.h"

#include "magazzino/MMGUtils_insiemi.h"
#include "platform/core/Format.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

// Every issue and every receipt is booked under this reason.
constexpr int documentReason = 2;

// At the row's cost.
TMoviMaga movementOf(const DocumentKind &kind, const DocumentHead &document, const DocumentRow &row)
{
    const MovementRule &rule = kind.movement;
    const double cost = row.costo.value_or(0);
    const double quantity = row.quantita.value_or(0) * rule.sign;
    return {.dataMovimento = document.data,
            .codice = row.codice,
            .descrizione = row.descrizione,
            .idCategoria = row.idCategoria.value_or(-1),
            .tipoMovimento = rule.type,
            .prezzo = rule.price ? (row.*rule.price).value_or(0) : 0,
            .costo = cost,
            .quantita = quantity,
            .valore = cost,
            .valoreImporto = cost * quantity,
            .idCausaleMaga = documentReason,
            .rifDocTipo = kind.name,
            .rifDocId = document.id,
            .rifDocIdRiga = row.idRiga,
            .note = rule.note + QString::number(document.numero) + u" del "_s + core::formatDate(document.data)};
}

} // namespace

void deleteMovements(const DocumentKind &kind, int id)
{
    ModuleConnection().execute(u"DELETE FROM MOVI_MAGA WHERE RIF_DOC_TIPO="_s + data::quoted(kind.name) +
                               u" AND RIF_DOC_ID="_s + QString::number(id));
}

void writeMovements(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows)
{
    QList<TMoviMaga> movements;
    for (const DocumentRow &row : rows)
        movements.append(movementOf(kind, document, row));
    if (kind.movement.atAverageCost)
        ValutaAlCostoMedio(movements, document.data);
    InserisciMoviMaga(movements);
}

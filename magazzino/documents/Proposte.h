#pragma once
#include "platform/data/DataSet.h"

#include <QDate>

#include <optional>

struct DocumentKind;

/// What is proposed for a document from what is stored.

/// Opens `ultimo` on the header of the counterpart's last document of that kind; without rows when there is none.
/// `tipoAnagrafica` tells customers from suppliers where documents go to both. Throws data::DatabaseError.
void ApriUltimoDocumento(const DocumentKind &kind, const QString &codice, std::optional<int> tipoAnagrafica,
                         data::DataSet &ultimo);

/// Key of the document that stands below the one of that year and number in the kind's list, newest first; above it
/// when `below` is false. -1 when there is none. Throws data::DatabaseError.
int DocumentoAccanto(const DocumentKind &kind, int anno, int numero, bool below);

/// When a document of the date `documento` is due by its payment type: the type's days later, at the end of that month
/// where it says so. Invalid when the type says nothing or does not exist. Throws data::DatabaseError.
QDate ScadenzaPagamento(int idTipoPagamento, QDate documento);

#pragma once

class TMMGdmStampe;
struct DocumentKind;

/// Sets what the print of the document that is open in `stampe` sums up: the connections "ds...Totali" (one row:
/// IMPONIBILE, IMPOSTA, ALTRI, ARROTONDAMENTO) and "ds...Arrotondamenti" (IVA_CODICE, IMPORTO: what the printed rows
/// lack to the summary), and bases and taxes of its VAT query. For kinds without VAT query there is nothing to set.
void PreparaTotaliStampa(TMMGdmStampe &stampe, const DocumentKind &kind);

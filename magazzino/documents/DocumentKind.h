#pragma once
#include "magazzino/documents/RowColumn.h"

/// Everything in which one kind of stock document differs from another, but for the fields of its header.
struct DocumentKind
{
    UnitPrice unitPrice = nullptr;  ///< the price that is typed: cost of a receipt, sale price of an issue
    QList<RowColumn> storedColumns; ///< of its rows
    QList<RowColumn> shownColumns;  ///< of its rows grid, from left to right
};

const DocumentKind &bollaCarico();
const DocumentKind &ddtScarico();
const DocumentKind &fatturaAccompagnatoria();

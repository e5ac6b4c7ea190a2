#pragma once
#include <QFlags>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

/// Kinds of document rows, as stored in TIPO_RIGA.
namespace tipoRiga {
inline const QString articolo = QStringLiteral("Articolo");
inline const QString servizio = QStringLiteral("Servizio");
inline const QString testo = QStringLiteral("Testo");
inline const QString nonImponibile = QStringLiteral("Non imponibile");
} // namespace tipoRiga

enum class RowType : quint8
{
    Testo = 1,
    NonImponibile = 2,
    Articolo = 4,
    Servizio = 8
};
Q_DECLARE_FLAGS(RowTypes, RowType)
Q_DECLARE_OPERATORS_FOR_FLAGS(RowTypes)

/// One row of a document as it stands in the grid. Which column of the database holds a member, and how it is shown and
/// typed, tells the table of row columns (DocumentKind.cpp).
struct DocumentRow
{
    int idRiga = -1; ///< key of the stored row; -1 for one that was never saved
    QString tipo = tipoRiga::articolo;
    QString codice;
    QString descrizione;
    std::optional<int> idCategoria;
    std::optional<QString> categoria;
    std::optional<double> costo;    ///< EUR per unit
    std::optional<double> prezzo;   ///< EUR per unit
    std::optional<double> sconto;   ///< per cent
    std::optional<double> quantita; ///< always positive here
    std::optional<double> importo;  ///< EUR
    std::optional<int> idAliquotaIVA;
    std::optional<QString> codiceIVA;
    std::optional<QString> descrizioneIVA;
    std::optional<double> aliquotaIVA; ///< per cent
    std::optional<int> idUM;
    QString um;

    /// What `tipo` says; a kind that is not one of the four counts as a service.
    RowType type() const;
};

/// What a document counts as its unit price.
using UnitPrice = std::optional<double> DocumentRow::*;

/// Sums of a document, EUR, not rounded.
struct DocumentTotals
{
    double imponibile = 0;
    double imposta = 0;
    double nonImponibile = 0;
    double esente = 0;

    /// The document's total.
    double documento() const { return imponibile + imposta + nonImponibile + esente; }
};

/// Per cent of the VAT rate with a key; nothing when there is no such rate.
using VatRateOf = std::function<std::optional<double>(int)>;

/// Writes every row's amount (unit price less discount, times quantity; text rows are left alone) and sums the
/// document. With `exempt` every amount counts as exempt and no VAT arises. Each rate is looked up once.
DocumentTotals recomputeDocument(QList<DocumentRow> &rows, UnitPrice unitPrice, const VatRateOf &rateOf,
                                 bool exempt = false);

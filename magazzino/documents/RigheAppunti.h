#pragma once
#include "magazzino/documents/DocumentKind.h"

/// Rows of documents on their way through the clipboard.

/// A row as somebody copied it, here or in a spreadsheet. What is missing was not given.
struct RigaLetta
{
    int linea = 0;       ///< of what was pasted, from 1
    QString tipo = {};   ///< see tipoRiga; empty where only the code tells
    QString codice = {}; ///< of article or service, or a barcode
    QString descrizione = {};
    std::optional<double> quantita = {};
    std::optional<double> prezzo = {}; ///< EUR per unit; of a spreadsheet the price that the document's kind types
    std::optional<double> costo = {};  ///< EUR per unit
    std::optional<double> sconto = {}; ///< per cent
    QString problema = {};             ///< why it cannot be read; empty when it can
};

/// The form in which rows pass from one document to another.
inline const QString tipoAppuntiRighe = QStringLiteral("application/x-righe-documento");
/// `rows` in that form, and what it holds; none for bytes that are not in it.
///@{
QByteArray righeInAppunti(const QList<DocumentRow> &rows);
QList<RigaLetta> righeDaAppunti(const QByteArray &appunti);
///@}

/// `rows` for a spreadsheet: code, description, quantity, price that `kind` types, discount; divided by tabs, a line
/// each, no line's end behind the last one. Texts are as in core::clipboardText(), and righeDaTesto() reads them back.
QString testoDiRighe(const QList<DocumentRow> &rows, const DocumentKind &kind);
/// Rows as a spreadsheet copies them: the code first, then in this order as far as there are columns of numbers
/// quantity, price and discount; columns of words are passed over, and so is a first line of titles. Numbers of a
/// column are written the Italian way or with a decimal point, see core::NumberReader.
QList<RigaLetta> righeDaTesto(const QString &testo);

/// The row that an article or a service makes, by its key; nothing when it does not exist.
std::optional<DocumentRow> rigaDi(const QString &tipo, int id);

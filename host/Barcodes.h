#pragma once
#include <QMultiHash>
#include <QString>

namespace data {
class Connection;
class Rows;
class Values;
} // namespace data

/// The barcodes of articles. Whoever looks for an article by one asks here: the entry line, lists, the search over
/// everything, the form and the import. A number is the same with and without the zeros that fill it up to 14 digits,
/// and a GS1 code stands for the number in it.
namespace host {

/// A code by which readers know an article, and the pieces that it stands for.
struct Barcode
{
    QString code;
    double pieces = 1;
    bool operator==(const Barcode &) const = default;
};

/// What a whole code stands for.
struct BarcodeMatch
{
    int article = -1; ///< IDANA_MAGA; -1 for none
    double pieces = 1;
};

inline constexpr int longestBarcode = 48;

/// The article that the whole text stands for, whatever its case; the code as it is goes before the same number with
/// more or fewer zeros, and both before what a GS1 code says. Throws data::DatabaseError, as do the others.
BarcodeMatch findBarcode(data::Connection &connection, const QString &text);
/// All codes, by article.
QMultiHash<int, QString> readBarcodes(data::Connection &connection);
/// The one text for all spellings of a code: two codes are the same when theirs are.
QString barcodeIdentity(const QString &code);
/// Is `code`, however it is spelled, one of an article other than the one with the key `article`?
bool isBarcodeOfAnother(data::Connection &connection, const QString &code, int article);
/// Condition on ANA_MAGA: the article has a code that begins with `text`, or is found by it as a whole.
QString hasBarcode(const QString &text, data::Values &values);
/// CHIAVE, TESTO and DETTAGLIO, its codes, of at most `most` articles that have such a code; the shortest codes, and so
/// the whole one, first. An article comes once for each of its codes.
data::Rows articlesByBarcode(data::Connection &connection, const QString &text, int most);

/// The pieces that a row of BARCODE_ARTICOLI says; an import may have left them out.
double piecesOf(double stored);

} // namespace host

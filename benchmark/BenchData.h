#pragma once
#include <QList>
#include <QString>

namespace data {
class Connection;
}

/// The data of a busy firm over five years, the same at every run.
namespace bench {

struct DataSize
{
    int articles = 0;
    int documents = 0; ///< delivery notes; as many goods receipts. Each has ten rows, and each row a stock movement.
};

constexpr int rowsPerDocument = 10;
constexpr int years = 5; ///< up to the current one, the documents spread evenly over them

constexpr DataSize huge = {.articles = 200'000, .documents = 500'000}; // 10.000.000 movements
constexpr DataSize large = {.articles = 20'000, .documents = 50'000};  // 1.000.000 movements
constexpr DataSize small = {.articles = 200, .documents = 500};        // 10.000 movements

/// The articles number `first` to `last` (counted from 1); the first ones take the place of the demonstration articles.
/// Some have no category or no levels.
void makeArticles(data::Connection &connection, int first, int last);

/// The documents number `first` to `last` (counted from 1 over all years) of both kinds with rows and movements. One
/// article in twenty never moves; some codes are written in small letters, some belong to no article. Firebird keeps
/// the statistics that its indexes had before, as in a database that grew.
void makeDocuments(data::Connection &connection, const DataSize &size, int first, int last);

/// `count` invoices of ten rows each, which can become electronic ones; their keys.
QList<int> makeInvoices(data::Connection &connection, int count);

/// Code of the article with `number` from 1.
QString articleCode(int number);

/// Takes the module's indexes away (false) or makes them anew: millions of rows are written much faster without.
/// Nothing else may use the tables meanwhile.
void setIndexes(data::Connection &connection, bool active);

/// `count` movements of one article, by turns two loads and two issues, entered by hand.
void makeMovements(data::Connection &connection, const QString &code, int count);

} // namespace bench

#include "magazzino/MMGUtils_insiemi.h"
#include "platform/core/Decimal.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Progress.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Quantity and value in stock, in exact hundredths.
struct Giacenza
{
    qint64 quantita = 0;
    qint64 valore = 0;

    // A negative stock with a positive value, or the reverse, still has a positive cost.
    double costoMedio() const
    {
        return quantita == 0 ? 0 : std::fabs(core::fromHundredths(valore) / core::fromHundredths(quantita));
    }
};

struct Movimento
{
    int id = 0;
    QDate data;
    bool scarico = false;
    qint64 quantita = 0;
    qint64 importo = 0;
    double valore = 0;       ///< of an issue, as revalued
    double nuovoImporto = 0; ///< EUR; the same as `importo` after a revaluation
};

// The code is a parameter, so that a document's rows share one prepared statement.
const QString ofArticle = u" FROM MOVI_MAGA WHERE UPPER(CODICE) = "_s + data::inCapitals();
const QString isIssue = u"TIPO_MOVIMENTO = 'Scarico'"_s;

// What revaluing needs to know of a movement; the database decides what an issue is.
const QString revaluedColumns =
    u"SELECT IDMOVI_MAGA, DATA_MOVIMENTO, IIF(%1, 1, 0) AS SCARICO, QUANTITA, VALORE_IMPORTO"_s.arg(isIssue);

// What stands behind them where all articles are read.
constexpr int capitalsColumn = 5;
constexpr int codeColumn = 6;

// Blanks at the end do not tell codes apart.
QString trimmedRight(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

Movimento movementOf(const QVariantList &row)
{
    return {.id = row[0].toInt(),
            .data = row[1].toDate(),
            .scarico = row[2].toInt() != 0,
            .quantita = core::toHundredths(row[3].toDouble()),
            .importo = core::toHundredths(row[4].toDouble())};
}

// All movements of an article by date, those of one day by key.
QList<Movimento> readMovements(const QString &codice)
{
    const data::Rows rows = ModuleConnection().run(
        revaluedColumns + ofArticle + u" ORDER BY DATA_MOVIMENTO, IDMOVI_MAGA"_s, {data::searchedText(codice)});
    QList<Movimento> movements;
    movements.reserve(rows.size());
    for (qsizetype row = 0; row < rows.size(); ++row)
        movements.append(movementOf(rows.values(row)));
    return movements;
}

// Which codes are one article's.
QString articleOf(const QString &codice)
{
    return data::capitalsOf(trimmedRight(codice));
}

const QString stockAtDate =
    u"SELECT SUM(QUANTITA) AS QTA,SUM(VALORE_IMPORTO) AS VALORE"_s + ofArticle + u" AND DATA_MOVIMENTO <= ?"_s;

Giacenza stockOf(const data::Rows &rows, qsizetype row)
{
    return {core::toHundredths(rows.number(row, u"QTA")), core::toHundredths(rows.number(row, u"VALORE"))};
}

// By article. Each answer has the number of its code, since the database compares codes in its own way.
QHash<QString, Giacenza> readStock(const QStringList &codes, QDate date)
{
    constexpr qsizetype codesPerQuery = 10;
    QHash<QString, Giacenza> stock;
    for (qsizetype first = 0; first < codes.size(); first += codesPerQuery) {
        const QStringList group = codes.mid(first, codesPerQuery);
        QStringList queries;
        QVariantList values;
        for (const QString &codice : group) {
            queries.append(u"SELECT %1 AS NUMERO, S.QTA, S.VALORE FROM (%2) S"_s.arg(queries.size()).arg(stockAtDate));
            values << data::searchedText(codice) << date;
        }
        const data::Rows rows = ModuleConnection().run(queries.join(u" UNION ALL "_s), values);
        for (qsizetype row = 0; row < rows.size(); ++row)
            stock.insert(articleOf(group[rows.integer(row, u"NUMERO")]), stockOf(rows, row));
    }
    return stock;
}

bool hasIssues(const QString &codice)
{
    return ModuleConnection().finds(u"SELECT FIRST 1 1 AS NUM"_s + ofArticle + u" AND "_s + isIssue,
                                    {data::searchedText(codice)});
}

// The average at an issue's date takes in the whole day: loads, the issue itself and the day's later issues with the
// amounts they had, its earlier issues with their new ones. Intended, since it decides the figures stored.
void revalue(QList<Movimento> &movements)
{
    Giacenza giacenza;
    qsizetype counted = 0;
    for (Movimento &movement : movements) {
        for (; counted < movements.size() && movements[counted].data <= movement.data; ++counted) {
            giacenza.quantita += movements[counted].quantita;
            giacenza.valore += movements[counted].importo;
        }
        if (!movement.scarico)
            continue;
        movement.valore = giacenza.costoMedio();
        movement.nuovoImporto = core::roundDecimal(core::fromHundredths(movement.quantita) * movement.valore, 2);
        giacenza.valore += core::toHundredths(movement.nuovoImporto) - movement.importo;
        movement.importo = core::toHundredths(movement.nuovoImporto);
    }
}

/// An issue with the value that it is to be given.
struct Scarico
{
    int id = 0;
    int articolo = 0; ///< which of those that are revalued together
    double valore = 0;
    double importo = 0;
};

void writeValue(data::Connection &connection, const Scarico &issue)
{
    connection.run(u"UPDATE MOVI_MAGA SET VALORE = ?, VALORE_IMPORTO = ? WHERE IDMOVI_MAGA = ?"_s,
                   {core::roundDecimal(issue.valore, 2), issue.importo, issue.id});
}

// On a network every statement is waited for.
constexpr qsizetype issuesPerBlock = 25;

const QString blockOfIssues = [] {
    QStringList parameters;
    QString body;
    for (qsizetype i = 0; i < issuesPerBlock; ++i) {
        parameters.append(u"V%1 TYPE OF COLUMN MOVI_MAGA.VALORE = ?, A%1 TYPE OF COLUMN MOVI_MAGA.VALORE_IMPORTO "
                          "= ?, I%1 INTEGER = ?"_s.arg(i));
        body += u"UPDATE MOVI_MAGA SET VALORE = :V%1, VALORE_IMPORTO = :A%1 WHERE IDMOVI_MAGA = :I%1; "_s.arg(i);
    }
    return u"EXECUTE BLOCK (%1) AS BEGIN %2END"_s.arg(parameters.join(u", "_s), body);
}();

// False when the database has refused one of them; it has written none then.
bool writeTogether(data::Connection &connection, const QList<Scarico> &issues)
{
    QVariantList values;
    for (const Scarico &issue : issues)
        values << core::roundDecimal(issue.valore, 2) << issue.importo << issue.id;
    try {
        connection.run(blockOfIssues, values);
        return true;
    } catch (const std::exception &) {
        // Which one and why is told when they are written one by one.
        return false;
    }
}

// As `single` would for each of them in their order; issues of the articles in `left` are for it alone.
void writeAll(data::Connection &connection, const QList<Scarico> &issues, const QSet<int> &left,
              core::Progress &progress, const std::function<void(const Scarico &)> &single)
{
    progress.setTotal(static_cast<int>(issues.size()));
    for (qsizetype first = 0; first < issues.size(); first += issuesPerBlock) {
        progress.step(static_cast<int>(first));
        const QList<Scarico> group = issues.mid(first, issuesPerBlock);
        const bool together = group.size() == issuesPerBlock &&
                              std::none_of(group.begin(), group.end(),
                                           [&left](const Scarico &issue) { return left.contains(issue.articolo); }) &&
                              writeTogether(connection, group);
        if (!together)
            std::for_each(group.begin(), group.end(), single);
    }
}

// Swallowed on purpose: a revaluation that fails leaves the values as they were and never stops its caller.
void logFailure(const std::exception &error)
{
    core::logError(u"RivalorizzaScarichiMagazzino MOVI_MAGA"_s, error);
}

/// Revalues the issues of all articles in one pass over the movements, given in the order of the codes in capitals and
/// then of their dates.
class OgniArticolo
{
public:
    void read(const QVariantList &row);
    /// Behind the last row.
    void finishArticle();
    void write(data::Connection &connection, core::Progress &progress);

private:
    int article_ = 0;
    QString capitals_;
    QSet<QString> spellings_; ///< the ways in which the article's code is written
    QList<Movimento> movements_;
    QList<Scarico> issues_;
};

void OgniArticolo::read(const QVariantList &row)
{
    const QString capitals = trimmedRight(row[capitalsColumn].toString());
    if (capitals != capitals_)
        finishArticle();
    capitals_ = capitals;
    spellings_.insert(trimmedRight(row[codeColumn].toString()));
    movements_.append(movementOf(row));
}

void OgniArticolo::finishArticle()
{
    // As if each spelling had been revalued after the other: every one starts from what the last one left.
    for (qsizetype spelling = 0; spelling < spellings_.size(); ++spelling)
        revalue(movements_);
    for (const Movimento &movement : std::as_const(movements_)) {
        if (movement.scarico)
            issues_.append({movement.id, article_, movement.valore, movement.nuovoImporto});
    }
    ++article_;
    spellings_.clear();
    movements_.clear();
}

// In the order of their keys, which is about the order in which they are stored: article by article, every issue would
// mean reading and writing another page of the database.
void OgniArticolo::write(data::Connection &connection, core::Progress &progress)
{
    std::sort(issues_.begin(), issues_.end(), [](const Scarico &a, const Scarico &b) { return a.id < b.id; });
    QSet<int> failed;
    writeAll(connection, issues_, failed, progress, [&](const Scarico &issue) {
        if (failed.contains(issue.articolo))
            return;
        try {
            writeValue(connection, issue);
        } catch (const std::exception &error) {
            failed.insert(issue.articolo);
            logFailure(error);
        }
    });
}

} // namespace

double GetValoreScaricoCostoMedio(const QString &codice, QDate date)
{
    return core::namingErrors(u"GetValoreScaricoCostoMedio", [&] {
        const data::Rows rows = ModuleConnection().run(stockAtDate, {data::searchedText(codice), date});
        return rows.isEmpty() ? 0.0 : stockOf(rows, 0).costoMedio();
    });
}

void ValutaAlCostoMedio(QList<TMoviMaga> &movimenti, QDate date)
{
    core::namingErrors(u"GetValoreScaricoCostoMedio", [&] {
        QStringList codes;
        QSet<QString> articles;
        for (const TMoviMaga &movimento : std::as_const(movimenti)) {
            if (const QString article = articleOf(movimento.codice); !articles.contains(article)) {
                articles.insert(article);
                codes.append(movimento.codice);
            }
        }
        QHash<QString, Giacenza> stock = readStock(codes, date);
        for (TMoviMaga &movimento : movimenti) {
            Giacenza &giacenza = stock[articleOf(movimento.codice)];
            movimento.valore = giacenza.costoMedio();
            movimento.valoreImporto = movimento.valore * movimento.quantita;
            // What the columns will hold of it.
            giacenza.quantita += core::toHundredths(core::roundDecimal(movimento.quantita, 2));
            giacenza.valore += core::toHundredths(core::roundDecimal(movimento.valoreImporto, 2));
        }
    });
}

void RivalorizzaScarichiMagazzino(const QString &codice, bool useTransaction)
{
    // Without issues no transaction is begun.
    if (!core::namingErrors(u"RivalorizzaScarichiMagazzino", [&] { return hasIssues(codice); }))
        return;
    try {
        data::Connection &connection = ModuleConnection();
        std::optional<data::Transaction> transaction;
        if (useTransaction)
            transaction.emplace(connection);
        // Inside it, so that what is written follows from what stood there at one moment.
        QList<Movimento> movements = readMovements(codice);
        revalue(movements);
        QList<Scarico> issues;
        for (const Movimento &movement : std::as_const(movements)) {
            if (movement.scarico)
                issues.append({.id = movement.id, .valore = movement.valore, .importo = movement.nuovoImporto});
        }
        core::Progress unseen;
        writeAll(connection, issues, {}, unseen, [&](const Scarico &issue) { writeValue(connection, issue); });
        if (transaction)
            transaction->commit();
    } catch (const std::exception &error) {
        logFailure(error);
    }
}

void RivalorizzaTuttiGliScarichi(data::Connection &connection, core::Progress &progress)
{
    progress.setText(core::tr("Lettura dei movimenti…"));
    OgniArticolo articles;
    connection.forEach(revaluedColumns + u", UPPER(CODICE), CODICE FROM MOVI_MAGA ORDER BY UPPER(CODICE), "
                                         "DATA_MOVIMENTO, IDMOVI_MAGA"_s,
                       [&](const QVariantList &row) {
                           progress.check();
                           articles.read(row);
                       });
    articles.finishArticle();
    progress.setText(core::tr("Valori degli scarichi…"));
    articles.write(connection, progress);
}

#include "host/Barcodes.h"

#include "platform/core/Barcode.h"
#include "platform/core/Lists.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

/// A text that a code may be stored as, and what such a code is multiplied by.
struct Spelling
{
    QString code;
    double count = 1;
};

// A text that is longer than any code is none.
QList<Spelling> spellingsOf(const QString &code, double count = 1)
{
    return core::mapped(core::sameNumbers(code.left(longestBarcode + 1)), [count](const QString &spelling) {
        return Spelling{spelling, count};
    });
}

QList<Spelling> spellings(const QString &text)
{
    const std::optional<core::Gs1Code> gs1 = core::readGs1(text);
    return spellingsOf(text) + (gs1 ? spellingsOf(gs1->gtin, gs1->count) : QList<Spelling>());
}

QString isOneOf(const QList<Spelling> &wanted, data::Values &values)
{
    const QStringList placeholders = core::mapped(
        wanted, [&values](const Spelling &spelling) { return u"UPPER(%1)"_s.arg(values.add(spelling.code)); });
    return u"UPPER(B.CODICE) IN (%1)"_s.arg(placeholders.join(u", "_s));
}

// By the index over the capitals.
QString fits(const QString &text, data::Values &values)
{
    const QString begins = u"UPPER(B.CODICE) STARTING WITH UPPER(%1)"_s.arg(values.add(text.left(longestBarcode + 1)));
    const QList<Spelling> others = spellings(text).mid(1);
    return others.isEmpty() ? begins : u"(%1 OR %2)"_s.arg(begins, isOneOf(others, values));
}

} // namespace

double piecesOf(double stored)
{
    return stored > 0 ? stored : 1;
}

BarcodeMatch findBarcode(data::Connection &connection, const QString &text)
{
    const QList<Spelling> wanted = spellings(text);
    data::Values values(data::Values::Way::Bound);
    const QString condition = isOneOf(wanted, values);
    const data::Rows rows = connection.run(
        u"SELECT UPPER(B.CODICE), B.IDANA_MAGA, B.PEZZI FROM BARCODE_ARTICOLI B WHERE "_s + condition, values.bound());
    for (const Spelling &spelling : wanted) {
        for (qsizetype row = 0; row < rows.size(); ++row) {
            const QVariantList &found = rows.values(row);
            if (found[0].toString() == data::capitalsOf(spelling.code))
                return {found[1].toInt(), piecesOf(found[2].toDouble()) * spelling.count};
        }
    }
    return {};
}

QMultiHash<int, QString> readBarcodes(data::Connection &connection)
{
    const data::Rows rows = connection.run(u"SELECT IDANA_MAGA, CODICE FROM BARCODE_ARTICOLI"_s);
    QMultiHash<int, QString> barcodes;
    for (qsizetype row = 0; row < rows.size(); ++row)
        barcodes.insert(rows.values(row)[0].toInt(), rows.values(row)[1].toString());
    return barcodes;
}

QString barcodeIdentity(const QString &code)
{
    return data::capitalsOf(core::wholeNumber(code));
}

bool isBarcodeOfAnother(data::Connection &connection, const QString &code, int article)
{
    data::Values values(data::Values::Way::Bound);
    const QString condition = isOneOf(spellingsOf(code), values);
    return connection.finds(u"SELECT FIRST 1 1 AS NUM FROM BARCODE_ARTICOLI B WHERE %1 AND B.IDANA_MAGA <> %2"_s.arg(
                                condition, values.add(article)),
                            values.bound());
}

// A subquery that depends on the article is asked for every row of the list. The two before it are asked once, and
// leave it few rows to be asked for: none for a text that no code begins with, for which they give NULL. Without the
// index over the codes it takes the one over the articles, which gives it one or two codes instead of all that begin
// so.
QString hasBarcode(const QString &text, data::Values &values)
{
    const auto limit = [&](const QString &function, int forNone) {
        return u"COALESCE((SELECT %1(B.IDANA_MAGA) FROM BARCODE_ARTICOLI B WHERE %2), %3)"_s.arg(
            function, fits(text, values), QString::number(forNone));
    };
    const QString first = limit(u"MIN"_s, 0);
    const QString last = limit(u"MAX"_s, -1);
    return u"(ANA_MAGA.IDANA_MAGA BETWEEN %1 AND %2 AND ANA_MAGA.IDANA_MAGA IN (SELECT B.IDANA_MAGA FROM "
           "BARCODE_ARTICOLI B WHERE %3))"_s.arg(
               first, last, fits(text, values).replace(u"UPPER(B.CODICE)"_s, u"UPPER(B.CODICE) || ''"_s));
}

data::Rows articlesByBarcode(data::Connection &connection, const QString &text, int most)
{
    data::Values values(data::Values::Way::Bound);
    const QString condition = fits(text, values);
    return connection.run(
        u"SELECT FIRST %1 A.IDANA_MAGA AS CHIAVE, A.DESCRIZIONE AS TESTO, A.CODICE || ' · ' || B.CODICE AS DETTAGLIO "
        "FROM BARCODE_ARTICOLI B JOIN ANA_MAGA A ON A.IDANA_MAGA = B.IDANA_MAGA WHERE %2 ORDER BY UPPER(B.CODICE)"_s
            .arg(most)
            .arg(condition),
        values.bound());
}

} // namespace host

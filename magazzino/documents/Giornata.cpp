#include "magazzino/documents/Giornata.h"

#include "magazzino/MMGUtils.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"
#include "platform/data/TextSearch.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// How many documents one question looks through: it takes some hundredths of a second then. Rows are ten times as many,
// and their texts lie apart from them.
constexpr int headersAtOnce = 2'000;
constexpr int documentsOfRowsAtOnce = 200;

/// The documents of a kind behind some document, the newest first; year and number have an index.
struct Slice
{
    QString sql; ///< "FROM ... WHERE ... ORDER BY ..."
    QVariantList values;

    Slice(const DocumentKind &kind, const QVariant &behind)
    {
        sql = u" FROM "_s + kind.table;
        if (const QVariantList last = behind.toList(); last.size() == 2) {
            sql += u" WHERE ANNO <= ? AND (ANNO < ? OR NUMERO < ?)"_s;
            values = {last[0], last[0], last[1]};
        }
        sql += u" ORDER BY ANNO DESC, NUMERO DESC"_s;
    }
    // Year and number of the last of so many.
    QVariant end(int count) const
    {
        const data::Rows rows =
            data::latest(ModuleConnection(), u"SELECT FIRST 1 SKIP %1 ANNO, NUMERO"_s.arg(count - 1) + sql, values);
        return rows.isEmpty() ? QVariant() : QVariant(rows.values(0));
    }
};

QList<DocumentoElencato> listed(const data::Rows &rows)
{
    QList<DocumentoElencato> found;
    for (qsizetype row = 0; row < rows.size(); ++row)
        found.append({{rows.integer(row, u"CHIAVE"), rows.integer(row, u"NUMERO"), rows.at(row, u"DATA").toDate()},
                      rows.text(row, u"NOME")});
    return found;
}

// Numbers have an index, too.
QList<DocumentoElencato> withNumber(const DocumentKind &kind, const QString &testo, int most)
{
    static const QRegularExpression shape(u"^(\\d{1,9})(?:/(\\d{4}))?$"_s);
    const auto match = shape.match(testo.trimmed());
    if (!match.hasMatch())
        return {};
    QVariantList values = {match.captured(1).toInt()};
    QString year;
    if (match.hasCaptured(2)) {
        year = u" AND ANNO = ?"_s;
        values.append(match.captured(2).toInt());
    }
    return listed(data::latest(
        ModuleConnection(),
        u"SELECT FIRST %1 %2 AS CHIAVE, NUMERO, DATA, %3RAGIONESOCIALE AS NOME FROM %4 WHERE "
        "NUMERO = ?%5 ORDER BY ANNO DESC"_s.arg(QString::number(most), kind.key, kind.counterpart, kind.table, year),
        values));
}

} // namespace

DocumentiTrovati CercaDocumenti(const DocumentKind &kind, const QString &testo, const QVariant &seguito, int most)
{
    const Slice slice(kind, seguito);
    data::Values wanted(data::Values::Way::Bound);
    const QString condition = data::containingWords({u"D.CODICE"_s, u"D.NOME"_s}, testo, wanted);
    DocumentiTrovati found{.seguito = slice.end(headersAtOnce)};
    if (!seguito.isValid())
        found.documenti = withNumber(kind, testo, most);
    found.documenti += listed(ModuleConnection().run(
        u"SELECT FIRST %1 D.CHIAVE, D.NUMERO, D.DATA, D.NOME FROM (SELECT FIRST %2 %3 AS CHIAVE, NUMERO, DATA, "
        "%4CODICE AS CODICE, %4RAGIONESOCIALE AS NOME%5) D WHERE %6"_s.arg(
            QString::number(most), QString::number(headersAtOnce), kind.key, kind.counterpart, slice.sql, condition),
        slice.values + wanted.bound()));
    return found;
}

DocumentiTrovati CercaRighe(const DocumentKind &kind, const QString &testo, const QVariant &seguito, int most)
{
    const Slice slice(kind, seguito);
    data::Values wanted(data::Values::Way::Bound);
    const QString description = u"CAST(SUBSTRING(R.DESCRIZIONE FROM 1 FOR 1000) AS VARCHAR(1000))"_s;
    const QString condition = data::containingWords({u"R.CODICE"_s, description}, testo, wanted);
    return {listed(ModuleConnection().run(
                u"SELECT FIRST %1 D.CHIAVE, D.NUMERO, D.DATA, SUBSTRING(R.DESCRIZIONE FROM 1 FOR 100) AS NOME FROM "
                "(SELECT FIRST %2 %3 AS CHIAVE, NUMERO, DATA%4) D JOIN %5 R ON R.%3 = D.CHIAVE WHERE %6"_s.arg(
                    QString::number(most), QString::number(documentsOfRowsAtOnce), kind.key, slice.sql, kind.rowTable(),
                    condition),
                slice.values + wanted.bound())),
            slice.end(documentsOfRowsAtOnce)};
}

// Year and number have an index.
QList<DocumentoElencato> UltimiDocumenti(const DocumentKind &kind, int most)
{
    const data::Rows rows =
        data::latest(ModuleConnection(),
                     u"SELECT FIRST %1 %2 AS CHIAVE, NUMERO, DATA, %3RAGIONESOCIALE AS NOME FROM %4 ORDER BY "
                     "ANNO DESC, NUMERO DESC"_s.arg(QString::number(most), kind.key, kind.counterpart, kind.table));
    return listed(rows);
}

bool EsistonoDocumenti(const DocumentKind &kind)
{
    return !data::latest(ModuleConnection(), u"SELECT FIRST 1 1 AS UNO FROM "_s + kind.table).isEmpty();
}

// By the last key given: counting them would take as long.
bool PochiMovimenti()
{
    constexpr int few = 20'000;
    return ModuleConnection().lastGeneratorValue(u"GN_IDMOVI_MAGA"_s) < few;
}

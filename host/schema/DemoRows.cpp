#include "host/schema/DemoRows.h"

#include "host/TaxCodes.h"
#include "host/schema/DemoTables.h"

using namespace Qt::StringLiterals;

namespace host::demo {

namespace {

/// The letters of a name as an Internet name has them: "D'Amico S.n.c." gives "damicosnc".
QString domainLabel(const QString &name)
{
    QString label;
    const QString decomposed = name.normalized(QString::NormalizationForm_D).toLower();
    for (const QChar letter : decomposed) {
        if (letter.unicode() < 128 && letter.isLetter())
            label.append(letter);
    }
    return label;
}

} // namespace

QVariant insertRow(data::Connection &connection, const QString &table, const QString &key, const QList<Column> &columns)
{
    QStringList names;
    QVariantList values;
    for (const Column &column : columns) {
        names.append(column.name);
        values.append(column.value);
    }
    QString sql = u"INSERT INTO %1(%2) VALUES(%3)"_s.arg(table, names.join(u", "_s),
                                                         QStringList(names.size(), u"?"_s).join(u", "_s));
    if (key.isEmpty()) {
        connection.run(sql, values);
        return {};
    }
    return connection.run(sql + u" RETURNING "_s + key, values).at(0, key);
}

Keys insertTexts(data::Connection &connection, const QString &table, const QString &key, const QString &column,
                 const QStringList &texts)
{
    Keys keys;
    for (const QString &text : texts)
        keys.insert(text, insertRow(connection, table, key, {{column, text}}));
    return keys;
}

QString vatNumber(int number, const QString &office)
{
    const QString digits = QString::number(1000000 + number * 104729 % 8999999) + office;
    return digits + host::vatCheckDigit(digits);
}

QList<Column> firmColumns(const QString &name, const QString &code, int number)
{
    const Town &town = towns()[qsizetype{number} * 7 % towns().size()];
    const QString vat = vatNumber(number, town.vatOffice);
    const QString host = domainLabel(name) + u".example"_s;
    return {{u"CODICE"_s, code},
            {u"RAGIONESOCIALE"_s, name},
            {u"INDIRIZZO"_s, u"%1, %2"_s.arg(streets()[qsizetype{number} * 3 % streets().size()]).arg(number % 97 + 1)},
            {u"CITTA"_s, town.name},
            {u"CAP"_s, town.postcode},
            {u"PROVINCIA"_s, town.province},
            {u"NAZIONE"_s, u"Italia"_s},
            {u"CODICEFISCALE"_s, vat},
            {u"PARTITAIVA"_s, vat},
            {u"TELEFONO1"_s, u"%1 %2"_s.arg(town.areaCode).arg(5550000 + number)},
            {u"FAX"_s, u"%1 %2"_s.arg(town.areaCode).arg(5559000 + number)},
            {u"EMAIL"_s, u"info@"_s + host},
            {u"WEB"_s, u"www."_s + host}};
}

QString code(const QString &prefix, qsizetype index)
{
    return prefix + QString::number(index + 1).rightJustified(4, u'0');
}

} // namespace host::demo

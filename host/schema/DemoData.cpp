#include "host/schema/DemoData.h"

#include "host/TaxCodes.h"
#include "host/schema/DemoTables.h"
#include "platform/core/Decimal.h"
#include "platform/data/Catalogue.h"
#include "platform/data/Connection.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace host {

namespace {

struct Column
{
    QString name;
    QVariant value;
};

using Keys = QHash<QString, QVariant>;

const QString officeRole = u"Ufficio"_s;

/// Inserts a row and returns its key; a null key name stands for a table whose key needs no reading.
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

/// The key of the category at the end of `path`, made with all those above it that are not in `known` yet.
QVariant categoryKey(data::Connection &connection, const QString &table, const QString &key, const QString &path,
                     Keys &known)
{
    if (path.isEmpty())
        return QVariant(QMetaType(QMetaType::Int));
    if (const auto it = known.constFind(path); it != known.constEnd())
        return *it;
    const qsizetype slash = path.lastIndexOf(u'/');
    const QVariant parent = categoryKey(connection, table, key, slash < 0 ? QString() : path.left(slash), known);
    QVariant id = insertRow(connection, table, key, {{u"IDPADRE"_s, parent}, {u"CATEGORIA"_s, path.mid(slash + 1)}});
    known.insert(path, id);
    return id;
}

void insertFamily(data::Connection &connection, const demo::Family &family, const Keys &vat, const Keys &units,
                  Keys &categories)
{
    const QVariant category =
        categoryKey(connection, u"CATEGORIE_ANA_MAGA"_s, u"IDCATEGORIA_ANA_MAGA"_s, family.category, categories);
    const QStringList sizes = family.sizes.split(u'|');
    const double step = (family.lastCost - family.firstCost) / static_cast<double>(sizes.size() - 1);
    for (qsizetype i = 0; i < sizes.size(); ++i) {
        const double cost = core::roundDecimal(family.firstCost + step * static_cast<double>(i), 2);
        insertRow(connection, u"ANA_MAGA"_s, {},
                  {{u"CODICE"_s, family.prefix + u'-' + sizes[i].section(u':', 0, 0)},
                   {u"DESCRIZIONE"_s, family.description.arg(sizes[i].section(u':', 1))},
                   {u"IDCATEGORIA_ANA_MAGA"_s, category},
                   {u"COSTO"_s, cost},
                   {u"PREZZO"_s, core::roundDecimal(cost * 1.6 + 0.05, 1)},
                   {u"SOTTOSCORTA"_s, family.understock},
                   {u"RIORDINO"_s, 2 * family.understock},
                   {u"IDALIQUOTA_IVA"_s, vat.value(family.vatCode)},
                   {u"IDUM"_s, units.value(family.unit)}});
    }
}

void insertArticlesAndServices(data::Connection &connection, const Keys &vat, const Keys &units)
{
    Keys articleCategories;
    for (const demo::Family &family : demo::families())
        insertFamily(connection, family, vat, units, articleCategories);
    Keys serviceCategories;
    for (const demo::Service &service : demo::services()) {
        const QVariant category = categoryKey(connection, u"CATEGORIE_SERVIZI"_s, u"IDCATEGORIA_SERVIZI"_s,
                                              service.category, serviceCategories);
        insertRow(connection, u"SERVIZI"_s, {},
                  {{u"CODICE"_s, service.code},
                   {u"DESCRIZIONE"_s, service.description},
                   {u"IDCATEGORIA_SERVIZI"_s, category},
                   {u"COSTO"_s, service.cost},
                   {u"PREZZO"_s, service.price},
                   {u"IDALIQUOTA_IVA"_s, vat.value(service.vatCode)},
                   {u"IDUM"_s, units.value(service.unit)}});
    }
}

Keys insertVatRates(data::Connection &connection)
{
    Keys keys;
    for (const demo::VatRate &rate : demo::vatRates())
        keys.insert(
            rate.code,
            insertRow(connection, u"ALIQUOTE_IVA"_s, u"IDALIQUOTA_IVA"_s,
                      {{u"CODICE"_s, rate.code}, {u"DESCRIZIONE"_s, rate.description}, {u"ALIQUOTA"_s, rate.rate}}));
    return keys;
}

/// Eleven digits: seven from `number`, three of the tax office and the check digit.
QString vatNumber(int number, const QString &office)
{
    const QString digits = QString::number(1000000 + number * 104729 % 8999999) + office;
    return digits + host::vatCheckDigit(digits);
}

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

/// What customers, suppliers and carriers have in common; `number` is unique over all of them.
QList<Column> address(const QString &name, const QString &code, int number)
{
    const demo::Town &town = demo::towns()[qsizetype{number} * 7 % demo::towns().size()];
    const QString vat = vatNumber(number, town.vatOffice);
    const QString host = domainLabel(name) + u".example"_s;
    return {{u"CODICE"_s, code},
            {u"RAGIONESOCIALE"_s, name},
            {u"INDIRIZZO"_s,
             u"%1, %2"_s.arg(demo::streets()[qsizetype{number} * 3 % demo::streets().size()]).arg(number % 97 + 1)},
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

void insertCustomers(data::Connection &connection, const QVariantList &payments)
{
    const QStringList &names = demo::customers();
    for (qsizetype i = 0; i < names.size(); ++i) {
        QList<Column> columns = address(names[i], code(u"C"_s, i), static_cast<int>(i) + 1);
        // The first one is a private person.
        if (i == 0)
            columns.removeIf([](const Column &column) {
                return column.name == u"PARTITAIVA"_s || column.name == u"CODICEFISCALE"_s || column.name == u"WEB"_s;
            });
        else
            columns.append({u"IDTIPO_PAGAMENTO"_s, payments[i % payments.size()]});
        insertRow(connection, u"CLIENTI"_s, {}, columns);
    }
}

void insertCompany(data::Connection &connection)
{
    const QString vat = vatNumber(4711, u"024"_s);
    insertRow(connection, u"AZIENDA"_s, {},
              {{u"RAGIONESOCIALE"_s, u"Casa & Ferro Distribuzione S.r.l."_s},
               {u"INDIRIZZO"_s, u"Via dell'Artigianato, 14"_s},
               {u"CITTA"_s, u"Bassano del Grappa"_s},
               {u"CAP"_s, u"36061"_s},
               {u"PROVINCIA"_s, u"VI"_s},
               {u"NAZIONE"_s, u"Italia"_s},
               {u"PARTITAIVA"_s, vat},
               {u"CODICEFISCALE"_s, vat},
               {u"TELEFONO"_s, u"0424 5550100"_s},
               {u"FAX"_s, u"0424 5550101"_s},
               {u"EMAIL"_s, u"info@casaeferro.example"_s},
               {u"WEB"_s, u"www.casaeferro.example"_s}});
}

void insertUser(data::Connection &connection, const QString &userName, const QString &name, const QString &role)
{
    const QVariant id = insertRow(connection, u"RUOLI_UTENTE"_s, u"IDRUOLO_UTENTE"_s, {{u"RUOLO"_s, role}});
    insertRow(connection, u"UTENTI"_s, {}, {{u"USER_NAME"_s, userName}, {u"NOME"_s, name}});
    insertRow(connection, u"UTENTI_RUOLI"_s, {}, {{u"USER_NAME"_s, userName}, {u"IDRUOLO_UTENTE"_s, id}});
}

bool isEmptyTable(data::Connection &connection, const QString &table)
{
    return data::hasTable(connection, table) && connection.select(u"SELECT FIRST 1 1 AS NUM FROM "_s + table).isEmpty();
}

void insertSuppliers(data::Connection &connection)
{
    const data::Rows payments = connection.select(u"SELECT IDTIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY 1"_s);
    const QStringList &names = demo::suppliers();
    for (qsizetype i = 0; i < names.size(); ++i) {
        QList<Column> columns = address(names[i], code(u"F"_s, i), static_cast<int>(i) + 201);
        if (!payments.isEmpty())
            columns.append({u"IDTIPO_PAGAMENTO"_s, payments.at(i % payments.size(), u"IDTIPO_PAGAMENTO")});
        insertRow(connection, u"FORNITORI"_s, {}, columns);
    }
}

void insertCarriers(data::Connection &connection)
{
    const QStringList &names = demo::carriers();
    for (qsizetype i = 0; i < names.size(); ++i)
        insertRow(connection, u"VETTORI"_s, {}, address(names[i], code(u"V"_s, i), static_cast<int>(i) + 301));
}

void insertTransportTables(data::Connection &connection, const QStringList &reasons)
{
    if (isEmptyTable(connection, u"TIPI_TRASPORTO"_s))
        insertTexts(connection, u"TIPI_TRASPORTO"_s, {}, u"TIPO_TRASPORTO"_s, demo::transportTypes());
    if (isEmptyTable(connection, u"CAUSALI_TRASPORTO"_s))
        insertTexts(connection, u"CAUSALI_TRASPORTO"_s, {}, u"CAUSALE_TRASPORTO"_s, reasons);
}

/// Keys of what every firm starts with, by text.
struct TableKeys
{
    Keys vatRates;
    Keys units;
    Keys paymentTypes;
};

TableKeys insertTables(data::Connection &connection)
{
    TableKeys keys;
    keys.vatRates = insertVatRates(connection);
    keys.units = insertTexts(connection, u"UM"_s, u"IDUM"_s, u"UM"_s, demo::units());
    keys.paymentTypes =
        insertTexts(connection, u"TIPI_PAGAMENTO"_s, u"IDTIPO_PAGAMENTO"_s, u"TIPO_PAGAMENTO"_s, demo::paymentTypes());
    for (const demo::Note &note : demo::documentNotes())
        insertRow(connection, u"NOTE_DOCUMENTI"_s, {}, {{u"TITOLO"_s, note.title}, {u"TESTO"_s, note.text}});
    return keys;
}

void grantInvoiceView(data::Connection &connection)
{
    connection.run(u"INSERT INTO ABILITAZIONI_RUOLI(IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) "
                   "SELECT R.IDRUOLO_UTENTE, A.IDABILITAZIONE_UTENTE FROM RUOLI_UTENTE R, ABILITAZIONI_UTENTE A "
                   "WHERE R.RUOLO = ? AND A.ABILITAZIONE_UTENTE = ? AND NOT EXISTS (SELECT 1 FROM ABILITAZIONI_RUOLI G "
                   "WHERE G.IDRUOLO_UTENTE = R.IDRUOLO_UTENTE AND G.IDABILITAZIONE_UTENTE = A.IDABILITAZIONE_UTENTE)"_s,
                   {officeRole, u"Fatture acc. (visualizzazione)"_s});
}

} // namespace

void insertCommonTables(data::Connection &connection)
{
    data::Transaction transaction(connection);
    insertTables(connection);
    // A movement has to have one.
    insertRow(connection, u"CATEGORIE_ANA_MAGA"_s, {}, {{u"CATEGORIA"_s, u"Generale"_s}});
    transaction.commit();
}

void insertCommonWarehouseTables(data::Connection &connection)
{
    data::Transaction transaction(connection);
    // With what goods are received by.
    insertTransportTables(connection, demo::transportReasons() + QStringList(u"Acquisto"_s));
    transaction.commit();
}

void insertDemoMasterData(data::Connection &connection)
{
    data::Transaction transaction(connection);
    const auto [vat, units, payments] = insertTables(connection);
    QVariantList paymentKeys;
    for (const QString &type : demo::paymentTypes())
        paymentKeys.append(payments.value(type));
    insertArticlesAndServices(connection, vat, units);
    insertCustomers(connection, paymentKeys);
    insertCompany(connection);
    insertUser(connection, u"MAGAZZINIERE"_s, u"Mauro Magazziniere"_s, u"Magazzino"_s);
    insertUser(connection, u"UFFICIO"_s, u"Ugo Ufficio"_s, officeRole);
    transaction.commit();
}

void insertDemoWarehouseData(data::Connection &connection)
{
    data::Transaction transaction(connection);
    if (isEmptyTable(connection, u"FORNITORI"_s))
        insertSuppliers(connection);
    if (isEmptyTable(connection, u"VETTORI"_s))
        insertCarriers(connection);
    insertTransportTables(connection, demo::transportReasons());
    grantInvoiceView(connection);
    transaction.commit();
}

} // namespace host

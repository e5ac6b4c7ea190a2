#include "host/schema/DemoData.h"

#include "host/schema/DemoRows.h"
#include "host/schema/DemoTables.h"
#include "platform/core/Decimal.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

using namespace demo;

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
        keys.insert(rate.code, insertRow(connection, u"ALIQUOTE_IVA"_s, u"IDALIQUOTA_IVA"_s,
                                         {{u"CODICE"_s, rate.code},
                                          {u"DESCRIZIONE"_s, rate.description},
                                          {u"ALIQUOTA"_s, rate.rate},
                                          {u"NATURA"_s, rate.nature},
                                          {u"RIFERIMENTO_NORMATIVO"_s, rate.reference}}));
    return keys;
}

Keys insertPaymentTypes(data::Connection &connection)
{
    Keys keys;
    for (const demo::PaymentType &type : demo::paymentTypes())
        keys.insert(
            type.text,
            insertRow(connection, u"TIPI_PAGAMENTO"_s, u"IDTIPO_PAGAMENTO"_s,
                      {{u"TIPO_PAGAMENTO"_s, type.text}, {u"MODALITA"_s, type.method}, {u"CONDIZIONI"_s, type.terms}}));
    return keys;
}

// Every third firm reads its invoices in a certified mailbox, the others through a provider.
QList<Column> invoiceColumns(const QString &name, qsizetype index)
{
    if (index == 0)
        return {{u"CODICEFISCALE"_s, u"GSTLCU80A52A703H"_s},
                {u"NAZIONEISO"_s, u"IT"_s},
                {u"COGNOMEPERSONA"_s, name.section(u' ', 0, 0)},
                {u"NOMEPERSONA"_s, name.section(u' ', 1)}};
    if (index % 3 == 0)
        return {{u"NAZIONEISO"_s, u"IT"_s}, {u"PEC"_s, u"fatture%1@pec.example"_s.arg(index)}};
    return {{u"NAZIONEISO"_s, u"IT"_s}, {u"CODICEDESTINATARIO"_s, u"DEMO%1"_s.arg(index % 10, 3, 10, QChar(u'0'))}};
}

void insertCustomers(data::Connection &connection, const QVariantList &payments)
{
    const QStringList &names = demo::customers();
    for (qsizetype i = 0; i < names.size(); ++i) {
        QList<Column> columns = firmColumns(names[i], code(u"C"_s, i), static_cast<int>(i) + 1);
        // The first one is a private person.
        if (i == 0)
            columns.removeIf([](const Column &column) {
                return column.name == u"PARTITAIVA"_s || column.name == u"CODICEFISCALE"_s || column.name == u"WEB"_s;
            });
        else
            columns.append({u"IDTIPO_PAGAMENTO"_s, payments[i % payments.size()]});
        columns += invoiceColumns(names[i], i);
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
               {u"WEB"_s, u"www.casaeferro.example"_s},
               {u"REGIMEFISCALE"_s, u"RF01"_s},
               {u"REAUFFICIO"_s, u"VI"_s},
               {u"REANUMERO"_s, u"345678"_s},
               {u"CAPITALESOCIALE"_s, 100000},
               {u"STATOLIQUIDAZIONE"_s, u"LN"_s},
               {u"IBAN"_s, u"IT60X0542811101000000123456"_s},
               {u"PEC"_s, u"casaeferro@pec.example"_s}});
}

void insertUser(data::Connection &connection, const QString &userName, const QString &name, const QString &role)
{
    const QVariant id = insertRow(connection, u"RUOLI_UTENTE"_s, u"IDRUOLO_UTENTE"_s, {{u"RUOLO"_s, role}});
    insertRow(connection, u"UTENTI"_s, {}, {{u"USER_NAME"_s, userName}, {u"NOME"_s, name}});
    insertRow(connection, u"UTENTI_RUOLI"_s, {}, {{u"USER_NAME"_s, userName}, {u"IDRUOLO_UTENTE"_s, id}});
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
    keys.paymentTypes = insertPaymentTypes(connection);
    for (const demo::Note &note : demo::documentNotes())
        insertRow(connection, u"NOTE_DOCUMENTI"_s, {}, {{u"TITOLO"_s, note.title}, {u"TESTO"_s, note.text}});
    return keys;
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

void insertDemoMasterData(data::Connection &connection)
{
    data::Transaction transaction(connection);
    const auto [vat, units, payments] = insertTables(connection);
    QVariantList paymentKeys;
    for (const demo::PaymentType &type : demo::paymentTypes())
        paymentKeys.append(payments.value(type.text));
    insertArticlesAndServices(connection, vat, units);
    insertCustomers(connection, paymentKeys);
    insertCompany(connection);
    insertUser(connection, u"MAGAZZINIERE"_s, u"Mauro Magazziniere"_s, u"Magazzino"_s);
    insertUser(connection, u"UFFICIO"_s, u"Ugo Ufficio"_s, officeRole);
    transaction.commit();
}

} // namespace host

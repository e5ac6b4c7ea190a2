#include "magazzino/schema/InitialRows.h"

#include "host/schema/DemoRows.h"
#include "platform/data/Catalogue.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

namespace demo = host::demo;

const QStringList suppliers =
    u"Acciaierie Brentane S.p.A.|Bulloneria Lombarda S.r.l.|Chiusure & Sicurezza S.r.l.|Dell'Orto Sementi S.r.l.|"
    "Elettroforniture Nord S.p.A.|Fonderie Càmuna S.p.A.|Giardino Italiano S.r.l.|Inox Casa S.r.l.|"
    "Lampade e Luce S.r.l.|Meccanica Utensili S.p.A.|Plastiche Adriatiche S.r.l.|Scope Friulane S.n.c.|"
    "Tubificio Padano S.r.l.|Vernici Alba S.p.A.|Zincheria Orobica S.r.l."_s.split(u'|');

const QStringList carriers =
    u"Autotrasporti Fratelli Conti S.n.c.|Brenta Corriere S.r.l.|Corriere dell'Adige S.r.l.|"
    "Logistica Tre Valli S.r.l.|Spedizioni Sant'Anna S.r.l.|Trasporti Zoppé S.a.s."_s.split(u'|');

const QStringList transportTypes = {u"Mittente"_s, u"Vettore"_s, u"Destinatario"_s};

const QStringList transportReasons = {
    u"Vendita"_s,           u"Reso"_s,        u"Conto visione"_s,     u"Conto deposito"_s,
    u"Conto riparazione"_s, u"Omaggio"_s,     u"Conto lavorazione"_s, u"Reso da c/visione"_s,
    u"Sostituzione"_s,      u"Campionatura"_s};

bool isEmpty(data::Connection &connection, const QString &table)
{
    return data::hasTable(connection, table) && !connection.finds(u"SELECT FIRST 1 1 AS NUM FROM "_s + table);
}

void insertSuppliers(data::Connection &connection)
{
    const data::Rows payments = connection.select(u"SELECT IDTIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY 1"_s);
    for (qsizetype i = 0; i < suppliers.size(); ++i) {
        QList<demo::Column> columns = demo::firmColumns(suppliers[i], demo::code(u"F"_s, i), static_cast<int>(i) + 201);
        if (!payments.isEmpty())
            columns.append({u"IDTIPO_PAGAMENTO"_s, payments.at(i % payments.size(), u"IDTIPO_PAGAMENTO")});
        demo::insertRow(connection, u"FORNITORI"_s, {}, columns);
    }
}

void insertCarriers(data::Connection &connection)
{
    for (qsizetype i = 0; i < carriers.size(); ++i)
        demo::insertRow(connection, u"VETTORI"_s, {},
                        demo::firmColumns(carriers[i], demo::code(u"V"_s, i), static_cast<int>(i) + 301));
}

void insertTransportTables(data::Connection &connection, const QStringList &reasons)
{
    if (isEmpty(connection, u"TIPI_TRASPORTO"_s))
        demo::insertTexts(connection, u"TIPI_TRASPORTO"_s, {}, u"TIPO_TRASPORTO"_s, transportTypes);
    if (isEmpty(connection, u"CAUSALI_TRASPORTO"_s))
        demo::insertTexts(connection, u"CAUSALI_TRASPORTO"_s, {}, u"CAUSALE_TRASPORTO"_s, reasons);
}

void grantInvoiceView(data::Connection &connection)
{
    connection.run(u"INSERT INTO ABILITAZIONI_RUOLI(IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) "
                   "SELECT R.IDRUOLO_UTENTE, A.IDABILITAZIONE_UTENTE FROM RUOLI_UTENTE R, ABILITAZIONI_UTENTE A "
                   "WHERE R.RUOLO = ? AND A.ABILITAZIONE_UTENTE = ? AND NOT EXISTS (SELECT 1 FROM ABILITAZIONI_RUOLI G "
                   "WHERE G.IDRUOLO_UTENTE = R.IDRUOLO_UTENTE AND G.IDABILITAZIONE_UTENTE = A.IDABILITAZIONE_UTENTE)"_s,
                   {demo::officeRole, u"Fatture acc. (visualizzazione)"_s});
}

} // namespace

void insertDemoRows(data::Connection &connection)
{
    data::Transaction transaction(connection);
    if (isEmpty(connection, u"FORNITORI"_s))
        insertSuppliers(connection);
    if (isEmpty(connection, u"VETTORI"_s))
        insertCarriers(connection);
    insertTransportTables(connection, transportReasons);
    grantInvoiceView(connection);
    transaction.commit();
}

void insertCommonRows(data::Connection &connection)
{
    data::Transaction transaction(connection);
    // With what goods are received by.
    insertTransportTables(connection, transportReasons + QStringList(u"Acquisto"_s));
    transaction.commit();
}

} // namespace schema

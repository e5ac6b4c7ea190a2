#include "magazzino/schema/ModuleUses.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

QString withCode(const QString &column, const QString &table, const QString &key)
{
    return u"UPPER(%1) = (SELECT UPPER(CODICE) FROM %2 WHERE %3 = :ID)"_s.arg(column, table, key);
}

struct Document
{
    QString name; ///< in the plural
    QString table;
};

QList<data::RecordUse> inRows(const Document &document)
{
    const QString name = u"righe di "_s + document.name;
    const QString table = document.table + u"_DETT"_s;
    return {
        {u"ANA_MAGA"_s, name, table,
         withCode(u"CODICE"_s, u"ANA_MAGA"_s, u"IDANA_MAGA"_s) + u" AND TIPO_RIGA = 'Articolo'"_s},
        {u"SERVIZI"_s, name, table,
         withCode(u"CODICE"_s, u"SERVIZI"_s, u"IDSERVIZIO"_s) + u" AND TIPO_RIGA = 'Servizio'"_s},
        {u"ALIQUOTE_IVA"_s, name, table, u"IVA_IDALIQUOTA_IVA = :ID"_s},
        {u"UM"_s, name, table, u"IDUM = :ID"_s},
    };
}

} // namespace

QList<data::RecordUse> moduleUses()
{
    const QString notes = u"D.d.T. di scarico"_s;
    const QString invoices = u"fatture accompagnatorie"_s;
    const QList<Document> documents = {
        {u"bolle di carico"_s, u"BOLLE_CARICO"_s}, {notes, u"DDT_SCARICO"_s}, {invoices, u"FATT_ACC"_s}};
    QList<data::RecordUse> all;
    for (const Document &document : documents)
        all += inRows(document);
    for (const Document &document : documents)
        all.append({u"UM"_s, document.name, document.table, u"PESO_IDUM = :ID"_s});
    const QString ofCustomer = withCode(u"CLI_CODICE"_s, u"CLIENTI"_s, u"IDCLIENTE"_s);
    return all +
           QList<data::RecordUse>{
               {u"ANA_MAGA"_s, u"movimenti di magazzino"_s, u"MOVI_MAGA"_s,
                withCode(u"CODICE"_s, u"ANA_MAGA"_s, u"IDANA_MAGA"_s)},
               {u"CATEGORIE_ANA_MAGA"_s, u"movimenti di magazzino"_s, u"MOVI_MAGA"_s, u"IDCATEGORIA_ANA_MAGA = :ID"_s},
               {u"CLIENTI"_s, notes, u"DDT_SCARICO"_s, ofCustomer + u" AND TIPO_ANAGRAFICA = 0"_s},
               {u"CLIENTI"_s, invoices, u"FATT_ACC"_s, ofCustomer},
               {u"TIPI_PAGAMENTO"_s, u"fornitori"_s, u"FORNITORI"_s, u"IDTIPO_PAGAMENTO = :ID"_s},
               {u"TIPI_PAGAMENTO"_s, invoices, u"FATT_ACC"_s, u"IDTIPO_PAGAMENTO = :ID"_s},
           };
}

} // namespace schema

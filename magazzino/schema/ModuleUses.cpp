#include "magazzino/schema/ModuleUses.h"

#include "magazzino/documents/DocumentKind.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

QString withCode(const QString &column, const QString &table, const QString &key)
{
    return u"UPPER(%1) = (SELECT UPPER(CODICE) FROM %2 WHERE %3 = :ID)"_s.arg(column, table, key);
}

QList<data::RecordUse> inRows(const DocumentKind &kind)
{
    const QString rows = core::tr("righe di ") + kind.plural;
    return {
        {u"ANA_MAGA"_s, rows, kind.rowTable(),
         withCode(u"CODICE"_s, u"ANA_MAGA"_s, u"IDANA_MAGA"_s) + u" AND TIPO_RIGA = 'Articolo'"_s},
        {u"SERVIZI"_s, rows, kind.rowTable(),
         withCode(u"CODICE"_s, u"SERVIZI"_s, u"IDSERVIZIO"_s) + u" AND TIPO_RIGA = 'Servizio'"_s},
        {u"ALIQUOTE_IVA"_s, rows, kind.rowTable(), u"IVA_IDALIQUOTA_IVA = :ID"_s},
        {u"UM"_s, rows, kind.rowTable(), u"IDUM = :ID"_s},
    };
}

QString ofCustomer(const DocumentKind &kind)
{
    const QString condition = withCode(u"CLI_CODICE"_s, u"CLIENTI"_s, u"IDCLIENTE"_s);
    // A delivery note may be addressed to a supplier as well.
    return &kind == &ddtScarico() ? condition + u" AND TIPO_ANAGRAFICA = 0"_s : condition;
}

} // namespace

QList<data::RecordUse> moduleUses()
{
    QList<data::RecordUse> all;
    for (const DocumentKind *kind : documentKinds())
        all += inRows(*kind);
    for (const DocumentKind *kind : documentKinds()) {
        all.append({u"UM"_s, kind->plural, kind->table, u"PESO_IDUM = :ID"_s});
        if (kind->counterpart == u"CLI_")
            all.append({u"CLIENTI"_s, kind->plural, kind->table, ofCustomer(*kind)});
    }
    const QString movements = core::tr("movimenti di magazzino");
    const QString ofPayment = u"IDTIPO_PAGAMENTO = :ID"_s;
    return all + QList<data::RecordUse>{
                     {u"ANA_MAGA"_s, movements, u"MOVI_MAGA"_s, withCode(u"CODICE"_s, u"ANA_MAGA"_s, u"IDANA_MAGA"_s)},
                     {u"CATEGORIE_ANA_MAGA"_s, movements, u"MOVI_MAGA"_s, u"IDCATEGORIA_ANA_MAGA = :ID"_s},
                     {u"TIPI_PAGAMENTO"_s, core::tr("fornitori"), u"FORNITORI"_s, ofPayment},
                     {u"TIPI_PAGAMENTO"_s, fatturaAccompagnatoria().plural, u"FATT_ACC"_s, ofPayment},
                 };
}

} // namespace schema

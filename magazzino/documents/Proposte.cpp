#include "magazzino/documents/Proposte.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "platform/data/Latest.h"

using namespace Qt::StringLiterals;

void ApriUltimoDocumento(const DocumentKind &kind, const QString &codice, std::optional<int> tipoAnagrafica,
                         data::DataSet &ultimo)
{
    const QString type = tipoAnagrafica ? u" AND TIPO_ANAGRAFICA = %1"_s.arg(*tipoAnagrafica) : QString();
    ultimo.setCommandText(u"SELECT FIRST 1 * FROM %1 WHERE %2CODICE = CAST(:CODICE AS VARCHAR(255))%3 "
                          "ORDER BY DATA DESC, %4 DESC"_s.arg(kind.table, kind.counterpart, type, kind.key));
    ultimo.setParameter(u"CODICE"_s, codice);
    ultimo.open();
}

int DocumentoAccanto(const DocumentKind &kind, int anno, int numero, bool below)
{
    const QString order = below ? u" DESC"_s : QString();
    const data::Rows rows =
        data::latest(ModuleConnection(),
                     u"SELECT FIRST 1 %1 FROM %2 WHERE ANNO = ? AND NUMERO %3 ? OR ANNO %3 ? "
                     "ORDER BY ANNO%4, NUMERO%4"_s.arg(kind.key, kind.table, below ? u"<"_s : u">"_s, order),
                     {anno, numero, anno});
    return rows.isEmpty() ? -1 : rows.integer(0, kind.key);
}

QDate ScadenzaPagamento(int idTipoPagamento, QDate documento)
{
    const data::Rows rows =
        data::latest(ModuleConnection(), u"SELECT DECORRENZA, GIORNI FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO = ?"_s,
                     {idTipoPagamento});
    if (rows.isEmpty() || rows.text(0, u"DECORRENZA").isEmpty())
        return {};
    const QDate due = documento.addDays(rows.integer(0, u"GIORNI"));
    return rows.text(0, u"DECORRENZA") == u"FM" ? QDate(due.year(), due.month(), due.daysInMonth()) : due;
}

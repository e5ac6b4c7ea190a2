#include "magazzino/reports/RilieviStampa.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/ControlliCarta.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"

using namespace Qt::StringLiterals;

namespace {

QList<fatturapa::Riscontro> findings(const TMMGdmStampe &stampe, const DocumentKind &kind, int id)
{
    if (&kind == &fatturaAccompagnatoria()) {
        // Rows of one moment, and fewer turns with a server.
        const data::Transaction transaction(ModuleConnection());
        return fatturapa::esamina(fatturapa::leggi(id, {})).riscontri;
    }
    fatturapa::Dati dati;
    dati.azienda = fatturapa::recordDi(stampe.query(u"adsAzienda"_s).rows()).value(0);
    dati.testata = fatturapa::recordDi(stampe.query(kind.dataSet()).rows()).value(0);
    dati.righe = fatturapa::recordDi(stampe.query(kind.rowsDataSet()).rows());
    return fatturapa::controllaCarta(dati);
}

QStringList numberRemarks(const NumeriVicini &near, int number)
{
    QStringList remarks;
    const int first = near.precedente + 1;
    if (first == number - 1)
        remarks.append(core::tr("Prima di questo documento manca il numero %1.").arg(first));
    else if (first < number)
        remarks.append(core::tr("Prima di questo documento mancano i numeri da %1 a %2.").arg(first).arg(number - 1));
    if (near.datatoDopo > 0)
        remarks.append(core::tr("Il numero %1 viene prima di questo, ma ha una data successiva.").arg(near.datatoDopo));
    if (near.datatoPrima > 0)
        remarks.append(core::tr("Il numero %1 viene dopo questo, ma ha una data precedente.").arg(near.datatoPrima));
    return remarks;
}

} // namespace

QStringList RilieviStampa(const TMMGdmStampe &stampe, const DocumentKind &kind)
{
    const data::DataSet &document = stampe.query(kind.dataSet());
    if (document.isEmpty())
        return {};
    QStringList remarks;
    for (const fatturapa::Riscontro &finding : findings(stampe, kind, document.integer(kind.key))) {
        // What the file only leaves out stands on the paper.
        if (finding.blocca)
            remarks.append(finding.codice.isEmpty() ? finding.testo : finding.codice + u' ' + finding.testo);
    }
    const int number = document.integer(u"NUMERO"_s);
    return remarks + numberRemarks(GetNumeriVicini(kind, number, document.date(u"DATA"_s)), number);
}

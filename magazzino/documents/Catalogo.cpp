#include "magazzino/documents/Catalogo.h"

#include "host/Barcodes.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentRow.h"
#include "platform/core/Clock.h"
#include "platform/core/Lists.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

// What other workstations change meanwhile is offered late; what is taken is read anew in any case.
constexpr qint64 keptSeconds = 60;

QString tableOf(const QString &tipo)
{
    return tipo == tipoRiga::servizio ? u"SERVIZI"_s : u"ANA_MAGA"_s;
}

QString keyOfTable(const QString &tipo)
{
    return tipo == tipoRiga::servizio ? u"IDSERVIZIO"_s : u"IDANA_MAGA"_s;
}

void addOnHand(const QStringList &codici, QHash<QString, double> &giacenze)
{
    const data::Rows rows = ModuleConnection().run(
        u"SELECT %1, SUM(QUANTITA) FROM MOVI_MAGA WHERE UPPER(CODICE) IN (%2) GROUP BY 1"_s.arg(
            data::withoutIndex(u"UPPER(CODICE)"_s), QStringList(codici.size(), data::inCapitals()).join(u", "_s)),
        core::mapped(codici, data::searchedText));
    QHash<QString, double> byCapitals;
    for (qsizetype row = 0; row < rows.size(); ++row)
        byCapitals.insert(rows.values(row)[0].toString(), rows.values(row)[1].toDouble());
    for (const QString &codice : codici) {
        if (const auto found = byCapitals.constFind(data::capitalsOf(codice)); found != byCapitals.constEnd())
            giacenze.insert(codice, *found);
    }
}

} // namespace

Catalogo::Catalogo(const QString &tipo)
    : tipo_(tipo)
{
}

void Catalogo::refresh()
{
    const QDateTime now = core::now();
    if (readAt_.isValid() && readAt_.secsTo(now) < keptSeconds)
        return;
    const data::Rows rows = ModuleConnection().run(
        u"SELECT VOCI.%1, VOCI.CODICE, VOCI.DESCRIZIONE, VOCI.PREZZO, VOCI.COSTO, UM.UM FROM %2 VOCI "
        "LEFT JOIN UM ON UM.IDUM = VOCI.IDUM ORDER BY UPPER(VOCI.CODICE)"_s.arg(keyOfTable(tipo_), tableOf(tipo_)));
    const bool areArticles = tipo_ == tipoRiga::articolo;
    const QMultiHash<int, QString> barcodes =
        areArticles ? host::readBarcodes(ModuleConnection()) : QMultiHash<int, QString>();
    QList<VoceCatalogo> voci;
    voci.reserve(rows.size());
    words_.reset(rows.size());
    for (qsizetype row = 0; row < rows.size(); ++row) {
        const QVariantList &values = rows.values(row);
        const VoceCatalogo voce{.id = values[0].toInt(),
                                .codice = values[1].toString(),
                                .descrizione = values[2].toString(),
                                .um = values[5].toString(),
                                .prezzo = values[3].toDouble(),
                                .costo = values[4].toDouble()};
        words_.add({voce.codice}, QStringList{voce.descrizione} + barcodes.values(voce.id));
        voci.append(voce);
    }
    voci_ = std::move(voci);
    readAt_ = now;
}

QList<VoceCatalogo> Catalogo::find(const QString &text, qsizetype most) const
{
    return core::mapped(words_.find(text, most), [this](qsizetype position) { return voci_[position]; });
}

int Catalogo::trovaCodice(const QString &codice) const
{
    const data::Rows rows = ModuleConnection().run(
        u"SELECT %1 FROM %2 WHERE UPPER(CODICE) = %3"_s.arg(keyOfTable(tipo_), tableOf(tipo_), data::inCapitals()),
        {data::searchedText(codice)});
    return rows.isEmpty() ? -1 : rows.values(0).first().toInt();
}

CodiceTrovato Catalogo::trova(const QString &codice) const
{
    if (const int id = trovaCodice(codice); id >= 0)
        return {id};
    if (tipo_ != tipoRiga::articolo || codice.isEmpty())
        return {};
    const host::BarcodeMatch found = host::findBarcode(ModuleConnection(), codice);
    return {found.article, found.pieces};
}

QHash<QString, double> GiacenzeAttuali(const QStringList &codici)
{
    constexpr qsizetype codesPerStatement = 100;
    QHash<QString, double> giacenze;
    for (qsizetype first = 0; first < codici.size(); first += codesPerStatement)
        addOnHand(codici.mid(first, codesPerStatement), giacenze);
    return giacenze;
}

#include "magazzino/reports/uMMGdmStampe.h"

#include "magazzino/documents/DocumentKind.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

struct PrintQuery
{
    QString name;
    QString connectionName;
    QString text;
};

// "P.I.: 01234567890 " or empty text; a null column falls into the ELSE branch as well.
QString captioned(const QString &column, const QString &caption)
{
    return u"CASE WHEN NOT %1 = '' THEN '%2' || %1 || ' ' ELSE '' END AS %1_DESC"_s.arg(column, caption);
}

QString companyText()
{
    return u"SELECT\r\nAZIENDA.*,\r\n"_s +
           QStringList{captioned(u"PARTITAIVA"_s, u"P.I.: "_s), captioned(u"CODICEFISCALE"_s, u"C.F.: "_s),
                       captioned(u"TELEFONO"_s, u"Tel. "_s),    captioned(u"FAX"_s, u"Fax. "_s),
                       captioned(u"EMAIL"_s, u"e-mail: "_s),    captioned(u"WEB"_s, u"web: "_s)}
               .join(u",\r\n"_s) +
           u"\r\nFROM AZIENDA"_s;
}

QString byKey(const QString &table, const QString &key)
{
    return u"SELECT\r\n*\r\nFROM %1\r\nWHERE %2=:%2"_s.arg(table, key);
}

QString sumOf(const QString &column, const QString &alias)
{
    return u"(SELECT SUM(MOVI_MAGA.%1) FROM MOVI_MAGA WHERE MOVI_MAGA.CODICE = ANA_MAGA.CODICE) AS %2"_s.arg(column,
                                                                                                             alias);
}

// Header and rows of every kind of document that is printed.
QList<PrintQuery> documentQueries()
{
    QList<PrintQuery> queries;
    for (const DocumentKind *kind : documentKinds()) {
        if (kind->print.report.isEmpty())
            continue;
        const QString connection = u"ds"_s + kind->dataName;
        queries.append({kind->dataSet(), connection, byKey(kind->table, kind->key)});
        queries.append({kind->rowsDataSet(), connection + u"Dett"_s, byKey(kind->rowTable(), kind->key)});
    }
    return queries;
}

const QList<PrintQuery> &printQueries()
{
    static const QString stock = sumOf(u"QUANTITA"_s, u"ESISTENZA"_s);
    static const QString article = u"SELECT ANA_MAGA.CODICE, ANA_MAGA.DESCRIZIONE, "_s;
    static const QList<PrintQuery> queries =
        documentQueries() +
        QList<PrintQuery>{
            {u"adsAzienda"_s, u"MMGdsAzienda"_s, companyText()},
            {u"adsFattAccIva"_s, u"dsFattAccIva"_s,
             u"SELECT\r\nSUM(IMPORTO) AS IMPONIBILE,\r\nSUM((IMPORTO * IVA_ALIQUOTA) / 100) AS IMPOSTA,\r\n"
             "IVA_CODICE,\r\nIVA_DESCRIZIONE,\r\nIVA_ALIQUOTA\r\nFROM FATT_ACC_DETT\r\n"
             "WHERE IDFATT_ACC = :IDFATT_ACC AND IVA_IDALIQUOTA_IVA IS NOT NULL\r\n"
             "GROUP BY IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA\r\nORDER BY IVA_CODICE"_s},
            {u"adsInventario"_s, u"dsInventario"_s, article + stock + u" FROM ANA_MAGA"_s},
            {u"adsSottoscortaRiordino"_s, u"dsSottoscortaRiordino"_s,
             article + u"ANA_MAGA.SOTTOSCORTA, ANA_MAGA.RIORDINO, "_s + stock + u" FROM ANA_MAGA"_s},
            {u"adsInventarioValorizzato"_s, u"dsInventarioValorizzato"_s,
             article + stock + u", "_s + sumOf(u"VALORE_IMPORTO"_s, u"VALORE"_s) + u" FROM ANA_MAGA"_s},
        };
    return queries;
}

} // namespace

TMMGdmStampe::TMMGdmStampe(data::Connection *connection, QObject *parent)
    : QObject(parent)
{
    setObjectName(u"dmStampe"_s);
    for (const PrintQuery &spec : printQueries()) {
        auto *query = new data::DataSet(connection, this);
        query->setObjectName(spec.name);
        query->setCommandText(spec.text);
        query->setCursorType(data::CursorType::Static);
    }
}

data::DataSet &TMMGdmStampe::query(const QString &name) const
{
    auto *found = findChild<data::DataSet *>(name, Qt::FindDirectChildrenOnly);
    if (!found)
        throw core::Error(core::tr("La query di stampa \"%1\" non esiste.").arg(name));
    return *found;
}

data::DataSet &TMMGdmStampe::dataConnection(const QString &name) const
{
    for (const PrintQuery &spec : printQueries()) {
        if (spec.connectionName == name)
            return query(spec.name);
    }
    throw core::Error(core::tr("La connessione dati \"%1\" non esiste.").arg(name));
}

data::Rows TMMGdmStampe::rows(const QString &name) const
{
    const auto given = given_.find(name);
    return given == given_.end() ? dataConnection(name).rows() : *given;
}

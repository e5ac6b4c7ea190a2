#include "magazzino/documents/StampeDocumenti.h"

#include "magazzino/MMGUtils.h"
#include "platform/data/Connection.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace {

QString textOf(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'f', 6);
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return value.toDateTime().isValid() ? value.toDateTime().toString(Qt::ISODateWithMs) : value.toString();
    default:
        return value.toString();
    }
}

// Told of a document that went out: what stands on its paper stays the same.
bool becameOfIt(const QString &column)
{
    return column == u"PAGATO" || column == u"NOTIFICATO" || column.startsWith(u"FC_"_s);
}

using Counts = std::function<bool(const QString &column)>;

void add(const data::Rows &rows, qsizetype row, const Counts &counts, QCryptographicHash &hash)
{
    QStringList texts;
    for (qsizetype i = 0; i < rows.columns().size(); ++i) {
        const QString column = rows.columns()[i].name;
        const QVariant &value = rows.values(row)[i];
        if (counts(column) && !value.isNull())
            texts.append(column + u'=' + textOf(value) + QChar(0));
    }
    // Columns that are added, or added in another order, must not make it another document.
    texts.sort();
    hash.addData(texts.join(QString()).toUtf8());
    hash.addData(QByteArrayView("\n"));
}

// `righe` in the order of their keys.
QString hashOf(const data::Rows &testata, const data::Rows &righe, const Counts &counts)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (qsizetype row = 0; row < testata.size(); ++row)
        add(testata, row, counts, hash);
    for (qsizetype row = 0; row < righe.size(); ++row)
        add(righe, row, counts, hash);
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace

std::optional<StampaFatta> ultimaStampa(const DocumentKind &kind, int id)
{
    const data::Rows rows = ModuleConnection().run(
        u"SELECT FIRST 1 STAMPATO_IL, IMPRONTA_DATI, NOME_FILE, IMPRONTA_FILE FROM STAMPE_DOCUMENTI WHERE "
        "IDDOCUMENTO = ? AND DOCUMENTO = ? ORDER BY IDSTAMPA_DOCUMENTO DESC"_s,
        {id, kind.table});
    if (rows.isEmpty())
        return {};
    return StampaFatta{rows.at(0, u"STAMPATO_IL").toDateTime(), rows.text(0, u"IMPRONTA_DATI"),
                       rows.text(0, u"NOME_FILE"), rows.text(0, u"IMPRONTA_FILE")};
}

void registraStampa(const DocumentKind &kind, int id, const StampaFatta &stampa)
{
    const auto orNull = [](const QString &text) { return text.isEmpty() ? QVariant() : QVariant(text); };
    ModuleConnection().run(u"INSERT INTO STAMPE_DOCUMENTI(DOCUMENTO, IDDOCUMENTO, STAMPATO_IL, UTENTE, IMPRONTA_DATI, "
                           "NOME_FILE, IMPRONTA_FILE) VALUES(?, ?, ?, ?, ?, ?, ?)"_s,
                           {kind.table, id, stampa.il, GetKxCurrentUserName(), stampa.impronta, orNull(stampa.file),
                            orNull(stampa.improntaFile)});
}

ImprontaDocumento improntaDocumento(const DocumentKind &kind, const data::Rows &testata, data::Rows righe)
{
    righe.sortByInteger(kind.rowKey());
    const Counts isNoKey = [&kind](const QString &column) { return column != kind.key && column != kind.rowKey(); };
    const Counts isOfThePaper = [&isNoKey](const QString &column) { return isNoKey(column) && !becameOfIt(column); };
    return {hashOf(testata, righe, isOfThePaper), hashOf(testata, righe, isNoKey)};
}

ImprontaDocumento improntaAttuale(const DocumentKind &kind, int id)
{
    data::Connection &connection = ModuleConnection();
    data::Transaction transaction(connection);
    const QString stored = u"SELECT * FROM %1 WHERE %2 = ?"_s;
    const data::Rows header = connection.run(stored.arg(kind.table, kind.key), {id});
    const data::Rows rows = connection.run(stored.arg(kind.rowTable(), kind.key), {id});
    transaction.commit();
    return improntaDocumento(kind, header, rows);
}

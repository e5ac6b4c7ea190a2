#include "magazzino/fatturapa/Lettura.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Clock.h"
#include "platform/core/Format.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

QList<Record> recordDi(const data::Rows &righe)
{
    QList<Record> records;
    for (qsizetype riga = 0; riga < righe.size(); ++riga) {
        QHash<QString, QVariant> record;
        for (qsizetype colonna = 0; colonna < righe.columns().size(); ++colonna)
            record.insert(righe.columns()[colonna].name, righe.values(riga)[colonna]);
        records.append(Record(record));
    }
    return records;
}

namespace {

QList<Record> recordDi(data::Connection &connection, const QString &sql, const QVariantList &valori = {})
{
    return fatturapa::recordDi(connection.run(sql, valori));
}

Record primo(data::Connection &connection, const QString &sql, const QVariantList &valori = {})
{
    return recordDi(connection, sql, valori).value(0);
}

// An option that was never stored keeps what it is by default.
Opzioni leggiOpzioni(data::Connection &connection)
{
    Opzioni opzioni;
    QString unica;
    const QHash<QString, QString *> lette = {{u"NUMERAZIONE_UNICA_FATTURE"_s, &unica},
                                             {u"FATT_IVA_ESENTE_NOTE"_s, &opzioni.notaEsente},
                                             {u"FATT_XML_NATURA_ESENTE"_s, &opzioni.naturaEsente},
                                             {u"FATT_XML_NATURA_NON_IMPONIBILE"_s, &opzioni.naturaNonImponibile},
                                             {u"FATT_XML_SUFFISSO"_s, &opzioni.suffisso}};
    const data::Rows rows = connection.run(u"SELECT OPZIONE, VALORE FROM OPZIONI"_s);
    for (qsizetype riga = 0; riga < rows.size(); ++riga) {
        if (QString *valore = lette.value(rows.text(riga, u"OPZIONE")))
            *valore = rows.text(riga, u"VALORE");
    }
    opzioni.numerazioneUnica = core::parseFlag(unica).value_or(false);
    return opzioni;
}

} // namespace

Dati leggi(int id, const QString &progressivo)
{
    return leggi(ModuleConnection(), id, progressivo);
}

Dati leggi(data::Connection &connection, int id, const QString &progressivo)
{
    Dati dati{.progressivo = progressivo};
    dati.oggi = core::today();
    dati.opzioni = leggiOpzioni(connection);
    dati.testata = primo(connection, u"SELECT * FROM FATT_ACC WHERE IDFATT_ACC = ?"_s, {id});
    dati.righe =
        recordDi(connection, u"SELECT * FROM FATT_ACC_DETT WHERE IDFATT_ACC = ? ORDER BY IDFATT_ACC_DETT"_s, {id});
    dati.azienda = primo(connection, u"SELECT FIRST 1 * FROM AZIENDA ORDER BY IDAZIENDA"_s);
    dati.cliente =
        primo(connection, u"SELECT * FROM CLIENTI WHERE CODICE = ?"_s, {dati.testata.testo(u"CLI_CODICE"_s)});
    dati.vettore =
        primo(connection, u"SELECT * FROM VETTORI WHERE CODICE = ?"_s, {dati.testata.testo(u"VETT_CODICE"_s)});
    dati.tipoPagamento = primo(connection, u"SELECT * FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO = ?"_s,
                               {dati.testata.intero(u"IDTIPO_PAGAMENTO"_s)});
    const QList<Record> aliquote = recordDi(connection, u"SELECT * FROM ALIQUOTE_IVA"_s);
    for (const Record &aliquota : aliquote)
        dati.aliquote.insert(aliquota.intero(u"IDALIQUOTA_IVA"_s), aliquota);
    const int numero = dati.testata.intero(u"NUMERO"_s);
    const int anno = dati.testata.intero(u"ANNO"_s);
    const Record stessoNumero =
        primo(connection,
              u"SELECT (SELECT COUNT(*) FROM FATT_VEND WHERE NUMERO = ? AND ANNO = ?) AS VENDITA, "
              "(SELECT COUNT(*) FROM FATT_ACC WHERE NUMERO = ? AND ANNO = ? AND IDFATT_ACC <> ?) "
              "AS DOPPI FROM RDB$DATABASE"_s,
              {numero, anno, numero, anno, id});
    dati.numeroInVendita = stessoNumero.intero(u"VENDITA"_s) > 0;
    dati.numeroDoppio = stessoNumero.intero(u"DOPPI"_s) > 0;
    return dati;
}

} // namespace fatturapa

#include "magazzino/fatturapa/Lettura.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Clock.h"
#include "platform/data/Connection.h"

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

QList<Record> recordDi(const QString &sql, const QVariantList &valori)
{
    return fatturapa::recordDi(ModuleConnection().run(sql, valori));
}

Record primo(const QString &sql, const QVariantList &valori = {})
{
    return recordDi(sql, valori).value(0);
}

// An option that was never stored keeps what it is by default.
void leggiOpzione(const QString &opzione, QString &valore)
{
    QVariant letto;
    if (GetOptionValue(opzione, letto))
        valore = letto.toString();
}

Opzioni leggiOpzioni()
{
    Opzioni opzioni;
    opzioni.numerazioneUnica = NumerazioneUnicaFattura();
    leggiOpzione(u"FATT_IVA_ESENTE_NOTE"_s, opzioni.notaEsente);
    leggiOpzione(u"FATT_XML_NATURA_ESENTE"_s, opzioni.naturaEsente);
    leggiOpzione(u"FATT_XML_NATURA_NON_IMPONIBILE"_s, opzioni.naturaNonImponibile);
    leggiOpzione(u"FATT_XML_SUFFISSO"_s, opzioni.suffisso);
    return opzioni;
}

} // namespace

Dati leggi(int id, const QString &progressivo)
{
    Dati dati{.progressivo = progressivo};
    dati.oggi = core::today();
    dati.opzioni = leggiOpzioni();
    dati.testata = primo(u"SELECT * FROM FATT_ACC WHERE IDFATT_ACC = ?"_s, {id});
    dati.righe = recordDi(u"SELECT * FROM FATT_ACC_DETT WHERE IDFATT_ACC = ? ORDER BY IDFATT_ACC_DETT"_s, {id});
    dati.azienda = primo(u"SELECT FIRST 1 * FROM AZIENDA ORDER BY IDAZIENDA"_s);
    dati.cliente = primo(u"SELECT * FROM CLIENTI WHERE CODICE = ?"_s, {dati.testata.testo(u"CLI_CODICE"_s)});
    dati.vettore = primo(u"SELECT * FROM VETTORI WHERE CODICE = ?"_s, {dati.testata.testo(u"VETT_CODICE"_s)});
    dati.tipoPagamento = primo(u"SELECT * FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO = ?"_s,
                               {dati.testata.intero(u"IDTIPO_PAGAMENTO"_s)});
    const QList<Record> aliquote = recordDi(u"SELECT * FROM ALIQUOTE_IVA"_s, {});
    for (const Record &aliquota : aliquote)
        dati.aliquote.insert(aliquota.intero(u"IDALIQUOTA_IVA"_s), aliquota);
    const int numero = dati.testata.intero(u"NUMERO"_s);
    const int anno = dati.testata.intero(u"ANNO"_s);
    const Record stessoNumero =
        primo(u"SELECT (SELECT COUNT(*) FROM FATT_VEND WHERE NUMERO = ? AND ANNO = ?) AS VENDITA, "
              "(SELECT COUNT(*) FROM FATT_ACC WHERE NUMERO = ? AND ANNO = ? AND IDFATT_ACC <> ?) "
              "AS DOPPI FROM RDB$DATABASE"_s,
              {numero, anno, numero, anno, id});
    dati.numeroInVendita = stessoNumero.intero(u"VENDITA"_s) > 0;
    dati.numeroDoppio = stessoNumero.intero(u"DOPPI"_s) > 0;
    return dati;
}

} // namespace fatturapa

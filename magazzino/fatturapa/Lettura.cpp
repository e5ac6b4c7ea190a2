#include "magazzino/fatturapa/Lettura.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Clock.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

QList<Record> recordDi(const QString &sql, const QVariantList &valori)
{
    const data::Rows rows = ModuleConnection().run(sql, valori);
    QList<Record> records;
    for (qsizetype riga = 0; riga < rows.size(); ++riga) {
        QHash<QString, QVariant> record;
        for (qsizetype colonna = 0; colonna < rows.columns().size(); ++colonna)
            record.insert(rows.columns()[colonna].name, rows.values(riga)[colonna]);
        records.append(Record(record));
    }
    return records;
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
    dati.numeroInVendita = !primo(u"SELECT NUMERO FROM FATT_VEND WHERE NUMERO = ? AND ANNO = ?"_s,
                                  {dati.testata.intero(u"NUMERO"_s), dati.testata.intero(u"ANNO"_s)})
                                .isEmpty();
    return dati;
}

} // namespace fatturapa

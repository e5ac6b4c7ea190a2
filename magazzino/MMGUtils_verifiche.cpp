#include "magazzino/MMGUtils.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

bool countsAny(const data::Rows &rows)
{
    return !rows.isEmpty() && rows.integer(0, u"NUM") > 0;
}

bool documentExists(const QString &table, const QString &key, int numero, int anno, int idEscluso)
{
    return countsAny(ModuleConnection().run(
        u"SELECT COUNT(*) AS NUM FROM %1 WHERE NUMERO = ? AND ANNO = ? AND NOT %2=?"_s.arg(table, key),
        {numero, anno, idEscluso}));
}

// `skip` is the comparison with the key to leave out, up to and with its equals sign.
bool textExists(const QString &table, const QString &column, const QString &text, const QString &skip, int idEscluso)
{
    return countsAny(ModuleConnection().run(u"SELECT COUNT(*) AS NUM FROM %1 WHERE UPPER(%2) = "_s.arg(table, column) +
                                                data::inCapitals() + u" AND NOT "_s + skip + u'?',
                                            {data::searchedText(text), idEscluso}));
}

} // namespace

bool DdTScaricoExists(int numero, int anno, int idEscluso)
{
    return documentExists(u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s, numero, anno, idEscluso);
}

bool BollaCaricoExists(int numero, int anno, int idEscluso)
{
    return core::namingErrors(u"BollaCaricoExists", [&] {
        return documentExists(u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s, numero, anno, idEscluso);
    });
}

bool FattAccExists(int numero, int anno, int idEscluso)
{
    const bool found = documentExists(u"FATT_ACC"_s, u"IDFATT_ACC"_s, numero, anno, idEscluso);
    if (!NumerazioneUnicaFattura())
        return found;
    // The record being edited is never a sales invoice, so no key is left out.
    return countsAny(ModuleConnection().select(
               u"SELECT COUNT(*) AS NUM FROM FATT_VEND WHERE NUMERO = :NUMERO AND ANNO = :ANNO"_s,
               {{u"NUMERO"_s, numero}, {u"ANNO"_s, anno}})) ||
           found;
}

bool TipoTrasportoExists(const QString &testo, int idEscluso)
{
    return textExists(u"TIPI_TRASPORTO"_s, u"TIPO_TRASPORTO"_s, testo, u"IDTIPO_TRASPORTO="_s, idEscluso);
}

bool CodiceFornitoreExists(const QString &codice, int idEscluso)
{
    return core::namingErrors(u"CodiceFornitoreExists", [&] {
        return textExists(u"FORNITORI"_s, u"CODICE"_s, codice, u"IDFORNITORE="_s, idEscluso);
    });
}

bool CodiceVettoreExists(const QString &codice, int idEscluso)
{
    return core::namingErrors(u"CodiceVettoreExists", [&] {
        return textExists(u"VETTORI"_s, u"CODICE"_s, codice, u"IDVETTORE = "_s, idEscluso);
    });
}

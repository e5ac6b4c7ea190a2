#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "platform/core/Error.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

bool countsAny(const data::Rows &rows)
{
    return !rows.isEmpty() && rows.integer(0, u"NUM") > 0;
}

bool numberExists(const DocumentKind &kind, int numero, int anno, int idEscluso)
{
    const bool found = countsAny(data::latest(
        ModuleConnection(),
        u"SELECT COUNT(*) AS NUM FROM %1 WHERE NUMERO = ? AND ANNO = ? AND NOT %2=?"_s.arg(kind.table, kind.key),
        {numero, anno, idEscluso}));
    if (kind.numbersTable.isEmpty() || !NumerazioneUnicaFattura())
        return found;
    // The document being edited never stands there, so no key is left out.
    return countsAny(
               data::latest(ModuleConnection(),
                            u"SELECT COUNT(*) AS NUM FROM %1 WHERE NUMERO = ? AND ANNO = ?"_s.arg(kind.numbersTable),
                            {numero, anno})) ||
           found;
}

// `skip` is the comparison with the key to leave out, up to and with its equals sign.
bool textExists(const QString &table, const QString &column, const QString &text, const QString &skip, int idEscluso)
{
    return countsAny(data::latest(ModuleConnection(),
                                  u"SELECT COUNT(*) AS NUM FROM %1 WHERE UPPER(%2) = "_s.arg(table, column) +
                                      data::inCapitals() + u" AND NOT "_s + skip + u'?',
                                  {data::searchedText(text), idEscluso}));
}

} // namespace

bool DocumentoExists(const DocumentKind &kind, int numero, int anno, int idEscluso)
{
    const auto check = [&] { return numberExists(kind, numero, anno, idEscluso); };
    return kind.checkRoutine.isEmpty() ? check() : core::namingErrors(kind.checkRoutine, check);
}

bool DdTScaricoExists(int numero, int anno, int idEscluso)
{
    return DocumentoExists(ddtScarico(), numero, anno, idEscluso);
}

bool BollaCaricoExists(int numero, int anno, int idEscluso)
{
    return DocumentoExists(bollaCarico(), numero, anno, idEscluso);
}

bool FattAccExists(int numero, int anno, int idEscluso)
{
    return DocumentoExists(fatturaAccompagnatoria(), numero, anno, idEscluso);
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

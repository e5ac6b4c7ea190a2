#include "platform/data/RecordUses.h"

#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

// What the host's own tables use. Modules register theirs.
QList<data::RecordUse> hostUses()
{
    return {
        {u"ALIQUOTE_IVA"_s, core::tr("articoli"), u"ANA_MAGA"_s, u"IDALIQUOTA_IVA = :ID"_s},
        {u"ALIQUOTE_IVA"_s, core::tr("servizi"), u"SERVIZI"_s, u"IDALIQUOTA_IVA = :ID"_s},
        {u"UM"_s, core::tr("articoli"), u"ANA_MAGA"_s, u"IDUM = :ID"_s},
        {u"UM"_s, core::tr("servizi"), u"SERVIZI"_s, u"IDUM = :ID"_s},
        {u"TIPI_PAGAMENTO"_s, core::tr("clienti"), u"CLIENTI"_s, u"IDTIPO_PAGAMENTO = :ID"_s},
        {u"CATEGORIE_ANA_MAGA"_s, core::tr("sottocategorie"), u"CATEGORIE_ANA_MAGA"_s, u"IDPADRE = :ID"_s},
        {u"CATEGORIE_ANA_MAGA"_s, core::tr("articoli"), u"ANA_MAGA"_s, u"IDCATEGORIA_ANA_MAGA = :ID"_s},
        {u"CATEGORIE_SERVIZI"_s, core::tr("sottocategorie"), u"CATEGORIE_SERVIZI"_s, u"IDPADRE = :ID"_s},
        {u"CATEGORIE_SERVIZI"_s, core::tr("servizi"), u"SERVIZI"_s, u"IDCATEGORIA_SERVIZI = :ID"_s},
        {u"RUOLI_UTENTE"_s, core::tr("utenti"), u"UTENTI_RUOLI"_s, u"IDRUOLO_UTENTE = :ID"_s},
        {u"CLIENTI"_s, core::tr("fatture di vendita"), u"FATT_VEND"_s,
         u"UPPER(CLI_CODICE) = (SELECT UPPER(CODICE) FROM CLIENTI WHERE IDCLIENTE = :ID)"_s},
    };
}

const bool registered = [] {
    data::registerUses(hostUses);
    return true;
}();

} // namespace

#include "platform/data/RecordUses.h"

using namespace Qt::StringLiterals;

namespace {

// What the host's own tables use. Modules register theirs.
QList<data::RecordUse> hostUses()
{
    return {
        {u"ALIQUOTE_IVA"_s, u"articoli"_s, u"ANA_MAGA"_s, u"IDALIQUOTA_IVA = :ID"_s},
        {u"ALIQUOTE_IVA"_s, u"servizi"_s, u"SERVIZI"_s, u"IDALIQUOTA_IVA = :ID"_s},
        {u"UM"_s, u"articoli"_s, u"ANA_MAGA"_s, u"IDUM = :ID"_s},
        {u"UM"_s, u"servizi"_s, u"SERVIZI"_s, u"IDUM = :ID"_s},
        {u"TIPI_PAGAMENTO"_s, u"clienti"_s, u"CLIENTI"_s, u"IDTIPO_PAGAMENTO = :ID"_s},
        {u"CATEGORIE_ANA_MAGA"_s, u"sottocategorie"_s, u"CATEGORIE_ANA_MAGA"_s, u"IDPADRE = :ID"_s},
        {u"CATEGORIE_ANA_MAGA"_s, u"articoli"_s, u"ANA_MAGA"_s, u"IDCATEGORIA_ANA_MAGA = :ID"_s},
        {u"CATEGORIE_SERVIZI"_s, u"sottocategorie"_s, u"CATEGORIE_SERVIZI"_s, u"IDPADRE = :ID"_s},
        {u"CATEGORIE_SERVIZI"_s, u"servizi"_s, u"SERVIZI"_s, u"IDCATEGORIA_SERVIZI = :ID"_s},
        {u"RUOLI_UTENTE"_s, u"utenti"_s, u"UTENTI_RUOLI"_s, u"IDRUOLO_UTENTE = :ID"_s},
        {u"CLIENTI"_s, u"fatture di vendita"_s, u"FATT_VEND"_s,
         u"UPPER(CLI_CODICE) = (SELECT UPPER(CODICE) FROM CLIENTI WHERE IDCLIENTE = :ID)"_s},
    };
}

const bool registered = [] {
    data::registerUses(hostUses);
    return true;
}();

} // namespace

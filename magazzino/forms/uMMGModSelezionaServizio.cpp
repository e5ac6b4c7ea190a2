#include "magazzino/forms/uMMGModSelezionaServizio.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaServizio::TMMGModSelezionaServizio(QWidget *owner)
    : TMMGModSelezionaBase(
          {.caption = u"Seleziona un servizio"_s,
           .selectText = u"SELECT SERVIZI.*, CATEGORIE_SERVIZI.CATEGORIA FROM SERVIZI LEFT JOIN CATEGORIE_SERVIZI ON "
                         "CATEGORIE_SERVIZI.IDCATEGORIA_SERVIZI=SERVIZI.IDCATEGORIA_SERVIZI "_s,
           .orderText = u" ORDER BY UPPER(CODICE)"_s,
           .keyField = u"IDSERVIZIO"_s,
           .columns = {{u"Codice"_s, u"CODICE"_s, 168},
                       {u"Descrizione"_s, u"DESCRIZIONE"_s, 350},
                       {u"Categoria"_s, u"CATEGORIA"_s, 250}},
           .filters = {{u"txtCodice"_s, u"Codice"_s, u"CODICE"_s},
                       {u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s}},
           .category = {u"CATEGORIE_SERVIZI"_s, u"IDCATEGORIA_SERVIZI"_s, u"SERVIZI.IDCATEGORIA_SERVIZI"_s},
           .searchCommands = true},
          owner)
{
    setObjectName(u"MMGModSelezionaServizio"_s);
}

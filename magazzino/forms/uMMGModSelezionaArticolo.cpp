#include "magazzino/forms/uMMGModSelezionaArticolo.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaArticolo::TMMGModSelezionaArticolo(QWidget *owner)
    : TMMGModSelezionaBase(
          {.caption = u"Seleziona un articolo"_s,
           .selectText =
               u"SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM ANA_MAGA LEFT JOIN CATEGORIE_ANA_MAGA ON "
               "CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA=ANA_MAGA.IDCATEGORIA_ANA_MAGA "_s,
           .orderText = u" ORDER BY UPPER(CODICE)"_s,
           .keyField = u"IDANA_MAGA"_s,
           .columns = {{u"Codice"_s, u"CODICE"_s, 168},
                       {u"Descrizione"_s, u"DESCRIZIONE"_s, 350},
                       {u"Categoria"_s, u"CATEGORIA"_s, 250}},
           .filters = {{u"txtCodice"_s, u"Codice"_s, u"CODICE"_s},
                       {u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s}},
           .category = {u"CATEGORIE_ANA_MAGA"_s, u"IDCATEGORIA_ANA_MAGA"_s, u"ANA_MAGA.IDCATEGORIA_ANA_MAGA"_s},
           .searchCommands = true},
          owner)
{
    setObjectName(u"MMGModSelezionaArticolo"_s);
}

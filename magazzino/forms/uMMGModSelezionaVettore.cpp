#include "magazzino/forms/uMMGModSelezionaVettore.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaVettore::TMMGModSelezionaVettore(QWidget *owner)
    : TMMGModSelezionaBase(
          {.caption = u"Seleziona un vettore"_s,
           .list = {.selectText = u"SELECT * FROM VETTORI "_s,
                    .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
                    .keyField = u"IDVETTORE"_s,
                    .columns = {{u"Codice"_s, u"CODICE"_s, 100},
                                {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 0, ui::ListColumn::Width::Rest},
                                {u"Indirizzo"_s, u"INDIRIZZO"_s, 150},
                                {u"Città"_s, u"CITTA"_s, 170},
                                {u"Pr."_s, u"PROVINCIA"_s, 60}},
                    .letterColumn = u"RAGIONESOCIALE"_s},
           .searchCommands = true},
          owner)
{
}

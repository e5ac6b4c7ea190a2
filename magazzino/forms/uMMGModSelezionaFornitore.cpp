#include "magazzino/forms/uMMGModSelezionaFornitore.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaFornitore::TMMGModSelezionaFornitore(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona un fornitore"_s,
                            .selectText = u"SELECT * FROM FORNITORI "_s,
                            .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
                            .keyField = u"IDFORNITORE"_s,
                            .columns = {{u"Codice"_s, u"CODICE"_s, 120},
                                        {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 358},
                                        {u"Codice fiscale"_s, u"CODICEFISCALE"_s, 160},
                                        {u"Partita IVA"_s, u"PARTITAIVA"_s, 130}},
                            .letterColumn = u"RAGIONESOCIALE"_s,
                            .onShow = OnShow::LoadLetterA},
                           owner)
{
    setObjectName(u"MMGModSelezionaFornitore"_s);
}

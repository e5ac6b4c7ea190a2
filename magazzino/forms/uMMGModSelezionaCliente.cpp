#include "magazzino/forms/uMMGModSelezionaCliente.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaCliente::TMMGModSelezionaCliente(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona un cliente"_s,
                            .selectText = u"SELECT * FROM CLIENTI "_s,
                            .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
                            .keyField = u"IDCLIENTE"_s,
                            .columns = {{u"Codice"_s, u"CODICE"_s, 120},
                                        {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 358},
                                        {u"Codice fiscale"_s, u"CODICEFISCALE"_s, 160},
                                        {u"Partita IVA"_s, u"PARTITAIVA"_s, 130}},
                            .filters = {{u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s}},
                            .letterColumn = u"RAGIONESOCIALE"_s,
                            .searchCommands = true,
                            .onShow = OnShow::LoadLetterA},
                           owner)
{
    setObjectName(u"MMGModSelezionaCliente"_s);
}

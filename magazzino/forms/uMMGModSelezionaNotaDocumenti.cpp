#include "magazzino/forms/uMMGModSelezionaNotaDocumenti.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaNotaDocumenti::TMMGModSelezionaNotaDocumenti(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona nota documenti"_s,
                            .list = {.selectText = u"SELECT * FROM NOTE_DOCUMENTI "_s,
                                     .orderText = u" ORDER BY UPPER(TITOLO)"_s,
                                     .keyField = u"IDNOTA_DOCUMENTI"_s,
                                     .columns = {{u"Titolo"_s, u"TITOLO"_s, 350},
                                                 {u"Testo"_s, u"TESTO"_s, 0, ui::ListColumn::Width::Rest}},
                                     .longTexts = true},
                            .searchCommands = true,
                            .onShow = OnShow::LoadAll},
                           owner)
{
}

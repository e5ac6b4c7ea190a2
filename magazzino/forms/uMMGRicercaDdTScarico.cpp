#include "magazzino/forms/uMMGRicercaDdTScarico.h"

using namespace Qt::StringLiterals;

TMMGRicercaDdTScarico::TMMGRicercaDdTScarico(QWidget *owner)
    : TMMGRicercaDocumenti(ddtScarico(), documentList(ddtScarico(), u"ANNO = "_s), owner)
{
}

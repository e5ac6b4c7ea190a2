#include "magazzino/ui/FattureElettroniche.h"

#include "magazzino/uMMGModMagazzino.h"

#include <QMetaObject>

using namespace Qt::StringLiterals;

void mostraFatturaElettronica(int id)
{
    QWidget *finestra = Modulo().openForm(u"actFattureElettroniche"_s);
    if (finestra && finestra->isVisible() && id > 0)
        QMetaObject::invokeMethod(finestra, "MostraFattura", Q_ARG(int, id));
}

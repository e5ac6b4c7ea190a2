#pragma once
#include "magazzino/ui/InserimentoAnagrafica.h"

/// Entry form of the carriers.
class TMMGInserimentoVettori : public TMMGInserimentoAnagrafica
{
    Q_OBJECT

public:
    explicit TMMGInserimentoVettori(QWidget *owner);

protected:
    bool deleteStored(int id) override;
};

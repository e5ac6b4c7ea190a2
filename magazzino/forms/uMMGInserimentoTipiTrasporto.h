#pragma once
#include "magazzino/ui/InserimentoVoce.h"

/// Entry form of the transport types.
class TMMGInserimentoTipiTrasporto : public TMMGInserimentoVoce
{
    Q_OBJECT

public:
    explicit TMMGInserimentoTipiTrasporto(QWidget *owner);

protected:
    bool deleteStored(int id) override;
};

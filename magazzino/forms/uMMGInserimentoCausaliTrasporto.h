#pragma once
#include "magazzino/ui/InserimentoVoce.h"

/// Entry form of the transport reasons.
class TMMGInserimentoCausaliTrasporto : public TMMGInserimentoVoce
{
    Q_OBJECT

public:
    explicit TMMGInserimentoCausaliTrasporto(QWidget *owner);

protected:
    bool deleteStored(int id) override;
};

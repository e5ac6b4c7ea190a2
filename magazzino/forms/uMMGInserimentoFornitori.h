#pragma once
#include "magazzino/ui/InserimentoAnagrafica.h"

/// Entry form of the suppliers.
class TMMGInserimentoFornitori : public TMMGInserimentoAnagrafica
{
    Q_OBJECT

public:
    explicit TMMGInserimentoFornitori(QWidget *owner);

protected:
    bool deleteStored(int id) override;
};

#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the stored document notes.
class TMMGModSelezionaNotaDocumenti : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaNotaDocumenti(QWidget *owner);
};

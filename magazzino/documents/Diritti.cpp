#include "magazzino/documents/Diritti.h"

#include "magazzino/MMGUtils.h"

bool haDiritto(const QString &diritto)
{
    return diritto.isEmpty() || UserHasAbilitazione(diritto, GetKxCurrentUserName(), ModuleConnection());
}

bool puoVedere(const DocumentKind &kind)
{
    return haDiritto(kind.viewRight);
}

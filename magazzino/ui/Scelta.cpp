#include "magazzino/ui/Scelta.h"

#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/SelectionDialog.h"

std::optional<ui::Choice> scegli(const QString &action)
{
    TMMGModSelezionaBase &dialog = Modulo().selectionDialog(action);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    const TCodiceTesto chosen = dialog.ApriSelezionato();
    if (chosen.id <= 0)
        return {};
    return ui::Choice{chosen.id, chosen.testo};
}

QStringList valoriAnagrafica(const TAnagrafica &anagrafica)
{
    return {anagrafica.codice,    anagrafica.ragioneSociale, anagrafica.indirizzo, anagrafica.citta,
            anagrafica.cap,       anagrafica.provincia,      anagrafica.nazione,   anagrafica.codiceFiscale,
            anagrafica.partitaIVA};
}

#include "magazzino/ui/RecordChoice.h"

#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/SelectionDialog.h"

using namespace Qt::StringLiterals;

std::optional<ui::Choice> chooseRecord(const QString &action)
{
    TMMGModSelezionaBase &dialog = Modulo().selectionDialog(action);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return {};
    const TCodiceTesto chosen = dialog.ApriSelezionato();
    if (chosen.id <= 0)
        return {};
    return ui::Choice{chosen.id, chosen.testo};
}

QStringList anagraficaValues(const TAnagrafica &anagrafica)
{
    return {anagrafica.codice,    anagrafica.ragioneSociale, anagrafica.indirizzo, anagrafica.citta,
            anagrafica.cap,       anagrafica.provincia,      anagrafica.nazione,   anagrafica.codiceFiscale,
            anagrafica.partitaIVA};
}

QList<ui::RecordLabel> anagraficaLabels(const QString &namePrefix, const QString &columnPrefix, bool withTaxCodes)
{
    const auto label = [&](const QString &name, const QString &caption, const QString &column, int line,
                           int characters) {
        return ui::RecordLabel{namePrefix + name, caption, columnPrefix + column, line, characters};
    };
    QList<ui::RecordLabel> labels = {label(u"Codice"_s, u"Codice:"_s, u"CODICE"_s, 0, 20),
                                     label(u"RagioneSociale"_s, u"Ragione sociale:"_s, u"RAGIONESOCIALE"_s, 1, 20),
                                     label(u"Indirizzo"_s, u"Indirizzo:"_s, u"INDIRIZZO"_s, 2, 20),
                                     label(u"Citta"_s, u"Città:"_s, u"CITTA"_s, 3, 12),
                                     label(u"Cap"_s, u"CAP:"_s, u"CAP"_s, 3, 5),
                                     label(u"Provincia"_s, u"Prov.:"_s, u"PROVINCIA"_s, 3, 3),
                                     label(u"Nazione"_s, u"Nazione:"_s, u"NAZIONE"_s, 4, 20)};
    if (withTaxCodes) {
        // Somebody is always addressed; a document without a carrier has none of its columns.
        labels[0].required = labels[1].required = true;
        labels.append(label(u"CodiceFiscale"_s, u"Codice fiscale:"_s, u"CODICEFISCALE"_s, 5, 16));
        labels.append(label(u"PartitaIVA"_s, u"Partita IVA:"_s, u"PARTITAIVA"_s, 5, 12));
    }
    return labels;
}

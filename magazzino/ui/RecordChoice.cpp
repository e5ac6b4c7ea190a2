#include "magazzino/ui/RecordChoice.h"

#include "host/FirmFields.h"
#include "magazzino/documents/Rubrica.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "platform/core/Lists.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostOffers = 50;

ui::PickSource sourceOf(const QList<ui::OfferColumn> &columns, const Rubrica &records)
{
    const auto kept = std::make_shared<Rubrica>(records);
    const auto find = [kept](const QString &text) {
        const auto offer = [](const VoceRubrica &voce) { return ui::PickOffer{voce.id, voce.testi}; };
        return core::mapped(kept->find(text, mostOffers), offer);
    };
    return {columns, [kept] { kept->refresh(); }, find};
}

} // namespace

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
    const auto isCopied = [](const host::FirmField &field) { return field.copy.line >= 0; };
    return core::mapped(core::filtered(host::firmFields(), isCopied),
                        [&anagrafica](const host::FirmField &field) { return anagrafica.*field.member; });
}

QList<ui::RecordLabel> anagraficaLabels(const QString &namePrefix, const QString &columnPrefix, bool withTaxCodes)
{
    QList<ui::RecordLabel> labels;
    for (const host::FirmField &field : host::firmFields()) {
        if (field.copy.line < 0 || (field.box == host::FirmBox::TaxData && !withTaxCodes))
            continue;
        // Somebody is always addressed; a document without a carrier has none of its columns.
        labels.append({namePrefix + field.name, field.label + u':', columnPrefix + field.column, field.copy.line,
                       field.copy.characters, withTaxCodes && field.required});
    }
    return labels;
}

ui::PickSource anagraficaSource(const QString &table, const QString &key, bool withTaxCodes)
{
    QList<ui::OfferColumn> columns = {{u"Ragione sociale"_s}, {u"Codice"_s, 90}, {u"Città"_s, 130}};
    QList<ColonnaRubrica> read = {{u"RAGIONESOCIALE"_s}, {u"CODICE"_s}, {u"CITTA"_s, false}};
    if (withTaxCodes) {
        columns.append({u"Partita IVA"_s, 110});
        read.append({u"PARTITAIVA"_s});
    }
    return sourceOf(columns, Rubrica(table, key, read));
}

ui::PickSource textSource(const QString &table, const QString &key, const QString &column)
{
    return sourceOf({{column}}, Rubrica(table, key, {{column}}));
}

#include "magazzino/ui/TransportFields.h"

#include "magazzino/ui/RecordChoice.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

ui::ChoiceField *transportTypeField(const std::function<std::optional<ui::Choice>()> &choose, QWidget *box)
{
    auto *field =
        new ui::ChoiceField({.name = u"txtTipoTrasporto"_s,
                             .buttonName = u"cmdSelezionaTipoTrasporto"_s,
                             .label = u"Tipo di trasporto"_s,
                             .keyColumn = u"IDTIPO_TRASPORTO"_s,
                             .textColumn = u"TIPO_TRASPORTO"_s,
                             .choose = choose,
                             .source = textSource(u"TIPI_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s, u"TIPO_TRASPORTO"_s)},
                            box);
    field->setRequired();
    field->widget()->setToolTip(core::tr("Chi trasporta la merce: mittente, destinatario o vettore."));
    return field;
}

ui::TextField *appearanceField(const QString &label, QWidget *box)
{
    auto *field = new ui::TextField(
        {.name = u"txtAspettoBeni"_s, .label = label, .column = u"ASPETTO_BENI"_s, .maxLength = 20}, box);
    field->widget()->setToolTip(core::tr("Come si presenta la merce: scatole, pallet, sfusa."));
    return field;
}

ui::IntegerField *packagesField(QWidget *box)
{
    auto *field = new ui::IntegerField({.name = u"txtColli"_s, .label = u"Colli"_s, .column = u"COLLI"_s}, box);
    field->widget()->setToolTip(core::tr("Quanti pacchi, scatole o pallet si consegnano."));
    return field;
}

ui::DecimalField *weightField(QWidget *box)
{
    return new ui::DecimalField({.name = u"txtPeso"_s, .label = u"Peso"_s, .column = u"PESO"_s}, box);
}

#include "magazzino/forms/uMMGInserimentoBolleCarico.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/RecordChoice.h"
#include "magazzino/ui/TransportFields.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

TMMGInserimentoBolleCarico::TMMGInserimentoBolleCarico(QWidget *owner)
    : TMMGInserimentoDocumento(bollaCarico(), {}, owner)
{
    auto *layout = new QVBoxLayout(generalPage());
    layout->addWidget(createSupplier());
    layout->addWidget(createTransportType());
    layout->addWidget(createTransport());
    layout->addStretch();

    require(
        supplierInput_, [this] { return supplier_->isEmpty(0); }, u"Non è stato selezionato un fornitore!"_s);
    require(
        transportType_->input(), [this] { return transportType_->key() < 1; },
        u"Non è stato selezionato un tipo di trasporto!"_s);
    require(
        transportReason_->widget(), [this] { return transportReason_->key() < 1; },
        u"Non è stata indicata la causale del trasporto!"_s);
    finishLayout();
    // "Nuovo" leaves the list as it is; this is intended.
    connect(&Modulo(), &TMMGModMagazzino::tableChanged, this, [this](const QString &table) {
        if (table == u"CAUSALI_TRASPORTO"_s)
            core::guarded(this, [this] { withoutTracking([this] { transportReason_->fill(connection()); }); });
    });
}

QGroupBox *TMMGInserimentoBolleCarico::createSupplier()
{
    auto *box = ui::named(u"grpFornitore"_s, new QGroupBox(u" Fornitore "_s, generalPage()));
    auto *layout = new QVBoxLayout(box);
    supplier_ = declare(new ui::RecordLabels(anagraficaLabels(u"lbl"_s, u"FOR_"_s), box));
    QAction *choose = addCommand({.name = u"actSelezionaFornitore"_s,
                                  .caption = core::tr("Seleziona fornitore..."),
                                  .run = [this] { selezionaFornitore(); },
                                  .icon = ui::Icon::Choose,
                                  .shortcut = QKeySequence(u"Ctrl+F"_s)});
    layout->addWidget(supplier_->widget());
    supplierInput_ = createPick(
        u"txtFornitoreCerca"_s, anagraficaSource(u"FORNITORI"_s, u"IDFORNITORE"_s), [this](int id) { setSupplier(id); },
        [choose] { choose->trigger(); }, box);
    auto *line = new QHBoxLayout;
    line->addWidget(commandButton(choose, u"cmdSelezionaFornitore"_s, box));
    line->addWidget(ui::requiredMark(box));
    line->addWidget(supplierInput_, 1);
    line->addStretch();
    layout->addLayout(line);
    return box;
}

QGroupBox *TMMGInserimentoBolleCarico::createTransportType()
{
    auto *box = ui::named(u"grpTipoTrasporto"_s, new QGroupBox(u" Tipo di trasporto "_s, generalPage()));
    QAction *choose = addCommand({.name = u"actSelezionaTipoTrasporto"_s,
                                  .caption = core::tr("Seleziona tipo di trasporto..."),
                                  .run = [this] { selezionaTipoTrasporto(); },
                                  .icon = ui::Icon::Choose});
    const auto run = [choose]() -> std::optional<ui::Choice> {
        choose->trigger();
        return {};
    };
    transportType_ = declare(transportTypeField(run, box));
    auto *layout = new QVBoxLayout(box);
    layout->addLayout(marked(transportType_->widget()));
    return box;
}

QGroupBox *TMMGInserimentoBolleCarico::createTransport()
{
    auto *box = ui::named(u"grpTrasporto"_s, new QGroupBox(u" Trasporto "_s, generalPage()));
    transportReason_ =
        declare(new ui::DropDownField({.name = u"txtCausaleTrasporto"_s,
                                       .label = u"Causale del trasporto"_s,
                                       .keyColumn = u"IDCAUSALE_TRASPORTO"_s,
                                       .textColumn = u"CAUSALE_TRASPORTO"_s,
                                       .sql = u"SELECT * FROM CAUSALI_TRASPORTO ORDER BY UPPER(CAUSALE_TRASPORTO)"_s},
                                      u"IDCAUSALE_TRASPORTO"_s, u"CAUSALE_TRASPORTO"_s, box));
    transportReason_->setRequired();
    transportReason_->widget()->setToolTip(core::tr("Perché la merce è arrivata: vendita, conto lavorazione, reso."));
    auto *appearance = declare(appearanceField(u"Aspetto esteriore dei beni"_s, box));
    auto *packages = declare(packagesField(box));
    auto *weight = declare(weightField(box));
    auto *weightUnit = declare(new ui::DropDownField({.name = u"txtPesoUm"_s,
                                                      .label = u"U.M."_s,
                                                      .keyColumn = u"PESO_IDUM"_s,
                                                      .textColumn = u"PESO_UM"_s,
                                                      .sql = u"SELECT * FROM UM ORDER BY UPPER(UM)"_s},
                                                     u"IDUM"_s, u"UM"_s, box));
    transportReason_->fill(connection());
    weightUnit->fill(connection());

    auto *grid = new QGridLayout(box);
    place(grid, transportReason_, 0, 0, 2);
    place(grid, appearance, 1, 0);
    place(grid, packages, 1, 1);
    place(grid, weight, 2, 0);
    place(grid, weightUnit, 2, 1);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(5, 1);
    return box;
}

void TMMGInserimentoBolleCarico::selezionaTipoTrasporto()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaTipoTrasporto"_s)) {
        transportType_->setChoice(*chosen);
        DataChanged();
    }
}

void TMMGInserimentoBolleCarico::selezionaFornitore()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaFornitore"_s))
        setSupplier(chosen->key);
}

void TMMGInserimentoBolleCarico::setSupplier(int id)
{
    const TFornitore supplier = GetFornitore(id);
    if (supplier.id <= 0)
        return;
    supplier_->setValues(anagraficaValues(supplier));
    DataChanged();
    counterpartChosen(supplier.codice);
}

QString TMMGInserimentoBolleCarico::counterpartName() const
{
    constexpr int nameLabel = 1;
    return supplier_->isEmpty(nameLabel) ? QString() : supplier_->text(nameLabel);
}

QList<std::pair<ui::Field *, QString>> TMMGInserimentoBolleCarico::asLastTime() const
{
    return {{transportType_, u"TIPO_TRASPORTO"_s}, {transportReason_, u"CAUSALE_TRASPORTO"_s}};
}

#include "magazzino/forms/uMMGInserimentoDdTScarico.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/data/DataSet.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;

TMMGInserimentoDdTScarico::TMMGInserimentoDdTScarico(QWidget *owner)
    : TMMGInserimentoScarico(ddtScarico(), owner)
{
    layOutGeneralPage(createAddressee());
    refuseWithoutCustomer();
    require(
        transportType()->input(), [this] { return transportType()->key() <= 0; },
        u"Non è stato selezionato un tipo di trasporto!"_s);
    require(
        transportReason()->input(), [this] { return transportReason()->key() <= 0; },
        u"Non è stato selezionata una causale di trasporto!"_s);
    askWithoutTaxData();
    finishLayout();
}

QGroupBox *TMMGInserimentoDdTScarico::createAddressee()
{
    QAction *supplier = addCommand({.name = u"actSelezionaFornitore"_s,
                                    .caption = u"Fornitore"_s,
                                    .run =
                                        [this] {
                                            if (const auto chosen = chooseRecord(u"actModSelezionaFornitore"_s))
                                                setAddressee(TTipoAnagrafica::Fornitore, GetFornitore(chosen->key));
                                        },
                                    .icon = ui::Icon::Choose,
                                    .shortcut = QKeySequence(u"Ctrl+F"_s)});
    addresseeBox_ = createAddresseeBox();
    ui::PickInput *customerInput = createCustomerInput(addresseeBox_);
    ui::PickInput *supplierInput = createPick(
        u"txtFornitoreCerca"_s, anagraficaSource(u"FORNITORI"_s, u"IDFORNITORE"_s),
        [this](int id) { setAddressee(TTipoAnagrafica::Fornitore, GetFornitore(id)); },
        [supplier] { supplier->trigger(); }, addresseeBox_);
    followUp(supplierInput);
    fillAddresseeBox(addresseeBox_, {{customerCommand(), u"cmdSelezionaCliente"_s, customerInput},
                                     {supplier, u"cmdSelezionaFornitore"_s, supplierInput}});
    return addresseeBox_;
}

void TMMGInserimentoDdTScarico::SetTipoAnagrafica(TTipoAnagrafica tipo)
{
    tipoAnagrafica_ = tipo;
    addresseeBox_->setTitle(tipo == TTipoAnagrafica::Cliente ? u" Cliente "_s : u" Fornitore "_s);
}

void TMMGInserimentoDdTScarico::setAddressee(TTipoAnagrafica tipo, const TCliente &chosen)
{
    if (chosen.id <= 0)
        return;
    SetTipoAnagrafica(tipo);
    showAddressee(chosen);
}

void TMMGInserimentoDdTScarico::customerChosen(const TCliente &customer)
{
    setAddressee(TTipoAnagrafica::Cliente, customer);
}

void TMMGInserimentoDdTScarico::resetDetails()
{
    TMMGInserimentoScarico::resetDetails();
    SetTipoAnagrafica(TTipoAnagrafica::Cliente);
}

void TMMGInserimentoDdTScarico::loadDetails()
{
    TMMGInserimentoScarico::loadDetails();
    SetTipoAnagrafica(static_cast<TTipoAnagrafica>(record().integer(u"TIPO_ANAGRAFICA"_s)));
}

void TMMGInserimentoDdTScarico::writeComputed(data::DataSet &record) const
{
    record.setValue(u"TIPO_ANAGRAFICA"_s, static_cast<int>(tipoAnagrafica_));
    TMMGInserimentoScarico::writeComputed(record);
}

QVariant TMMGInserimentoDdTScarico::detailState() const
{
    return QVariantList{TMMGInserimentoScarico::detailState(), static_cast<int>(tipoAnagrafica_)};
}

void TMMGInserimentoDdTScarico::restoreDetails(const QVariant &state)
{
    TMMGInserimentoScarico::restoreDetails(state.toList().value(0));
    SetTipoAnagrafica(static_cast<TTipoAnagrafica>(state.toList().value(1).toInt()));
}

#include "magazzino/Azioni.h"

#include "magazzino/forms/uMMGFattureElettroniche.h"
#include "magazzino/forms/uMMGInserimentoBolleCarico.h"
#include "magazzino/forms/uMMGInserimentoCausaliTrasporto.h"
#include "magazzino/forms/uMMGInserimentoDdTScarico.h"
#include "magazzino/forms/uMMGInserimentoFattureAccompagnatorie.h"
#include "magazzino/forms/uMMGInserimentoFornitori.h"
#include "magazzino/forms/uMMGInserimentoMovimentiMagazzino.h"
#include "magazzino/forms/uMMGInserimentoTipiTrasporto.h"
#include "magazzino/forms/uMMGInserimentoVettori.h"
#include "magazzino/forms/uMMGModSelezionaArticolo.h"
#include "magazzino/forms/uMMGModSelezionaCausaleMagazzino.h"
#include "magazzino/forms/uMMGModSelezionaCausaleTrasporto.h"
#include "magazzino/forms/uMMGModSelezionaCliente.h"
#include "magazzino/forms/uMMGModSelezionaFornitore.h"
#include "magazzino/forms/uMMGModSelezionaNotaDocumenti.h"
#include "magazzino/forms/uMMGModSelezionaServizio.h"
#include "magazzino/forms/uMMGModSelezionaTipoPagamento.h"
#include "magazzino/forms/uMMGModSelezionaTipoTrasporto.h"
#include "magazzino/forms/uMMGModSelezionaUM.h"
#include "magazzino/forms/uMMGModSelezionaVettore.h"
#include "magazzino/forms/uMMGRicercaBolleCarico.h"
#include "magazzino/forms/uMMGRicercaCausaliTrasporto.h"
#include "magazzino/forms/uMMGRicercaDdTScarico.h"
#include "magazzino/forms/uMMGRicercaFattureAccompagnatorie.h"
#include "magazzino/forms/uMMGRicercaFornitori.h"
#include "magazzino/forms/uMMGRicercaMovimentiMagazzino.h"
#include "magazzino/forms/uMMGRicercaTipiTrasporto.h"
#include "magazzino/forms/uMMGRicercaVettori.h"
#include "magazzino/reports/uMMGModStampaSottoscortaRiordino.h"
#include "magazzino/reports/uMMGStampaInventario.h"
#include "magazzino/reports/uMMGStampaInventarioValorizzato.h"

using namespace Qt::StringLiterals;

namespace {

// A form's object name is its class's without the leading T.
template <typename Form>
QWidget *make(QWidget *owner)
{
    auto *form = new Form(owner);
    form->setObjectName(QString::fromLatin1(Form::staticMetaObject.className()).mid(1));
    return form;
}

const QString inserimento = u"Inserimento"_s;
const QString ricerca = u"Ricerca"_s;
const QString modali = u"Modali"_s;
const QString stampe = u"Stampe"_s;
void runReorderReport(QWidget *dialog)
{
    StampaSottoscortaRiordino(*qobject_cast<TMMGModStampaSottoscortaRiordino *>(dialog));
}

constexpr auto selection = ui::ActionKind::Selection;
constexpr auto form = ui::ActionKind::Form;

} // namespace

const QList<ui::ActionSpec> &moduleActions()
{
    static const QList<ui::ActionSpec> actions = {
        {u"actInserimentoCausaliTrasporto"_s, inserimento, u"Inserimento causali di trasporto"_s, form,
         make<TMMGInserimentoCausaliTrasporto>},
        {u"actRicercaCausaliTrasporto"_s, ricerca, u"Causali di trasporto"_s, form, make<TMMGRicercaCausaliTrasporto>},
        {u"actModSelezionaCausaleTrasporto"_s, modali, u"Seleziona causale di trasporto"_s, selection,
         make<TMMGModSelezionaCausaleTrasporto>},
        {u"actInserimentoDdTScarico"_s, inserimento, u"Inserimento D.d.T. di scarico"_s, form,
         make<TMMGInserimentoDdTScarico>},
        {u"actModSelezionaArticolo"_s, modali, u"Seleziona un articolo"_s, selection, make<TMMGModSelezionaArticolo>},
        {u"actModSelezionaServizio"_s, modali, u"Seleziona un servizio"_s, selection, make<TMMGModSelezionaServizio>},
        {u"actModSelezionaCliente"_s, modali, u"Seleziona un cliente"_s, selection, make<TMMGModSelezionaCliente>},
        {u"actInserimentoTipiTrasporto"_s, inserimento, u"Inserimento tipi di trasporto"_s, form,
         make<TMMGInserimentoTipiTrasporto>},
        {u"actRicercaTipiTrasporto"_s, ricerca, u"Tipi di trasporto"_s, form, make<TMMGRicercaTipiTrasporto>},
        {u"actModSelezionaTipoTrasporto"_s, modali, u"Seleziona un tipo di trasporto"_s, selection,
         make<TMMGModSelezionaTipoTrasporto>},
        {u"actModSelezionaUM"_s, modali, u"Seleziona un'unità di misura"_s, selection, make<TMMGModSelezionaUM>},
        {u"actRicercaDdTScarico"_s, ricerca, u"D.d.T."_s, form, make<TMMGRicercaDdTScarico>},
        {u"actModSelezionaTipoPagamento"_s, modali, u"Seleziona tipo di pagamento"_s, selection,
         make<TMMGModSelezionaTipoPagamento>},
        {u"actInserimentoFattureAccompagnatorie"_s, inserimento, u"Inserimento fatture accompagnatorie"_s, form,
         make<TMMGInserimentoFattureAccompagnatorie>},
        {u"actRicercaFattureAccompagnatorie"_s, ricerca, u"Fatt. Acc."_s, form, make<TMMGRicercaFattureAccompagnatorie>,
         u"Fatture acc. (visualizzazione)"_s},
        {u"actFattureElettroniche"_s, ricerca, u"Fatture elettroniche"_s, form, make<TMMGFattureElettroniche>,
         u"Fatture acc. (visualizzazione)"_s},
        {u"actRicercaMovimentiMagazzino"_s, ricerca, u"Gestione movimenti di magazzino"_s, form,
         make<TMMGRicercaMovimentiMagazzino>},
        {u"actStampaInventario"_s, stampe, u"Stampa inventario"_s, form, make<TMMGStampaInventario>},
        {u"actInserimentoMovimentiMagazzino"_s, inserimento, u"Nuovo movimento di magazzino"_s, form,
         make<TMMGInserimentoMovimentiMagazzino>},
        {u"actModSelezionaCausaleMagazzino"_s, modali, u"Seleziona una causale di magazzino"_s, selection,
         make<TMMGModSelezionaCausaleMagazzino>},
        {u"actInserimentoFornitori"_s, inserimento, u"Inserimento fornitori"_s, form, make<TMMGInserimentoFornitori>},
        {u"actRicercaFornitori"_s, ricerca, u"Fornitori"_s, form, make<TMMGRicercaFornitori>},
        {u"actInserimentoBolleCarico"_s, inserimento, u"Inserimento bolle di carico"_s, form,
         make<TMMGInserimentoBolleCarico>},
        {u"actModSelezionaFornitore"_s, modali, u"Seleziona un fornitore"_s, selection,
         make<TMMGModSelezionaFornitore>},
        {u"actRicercaBolleCarico"_s, ricerca, u"Bolle di carico"_s, form, make<TMMGRicercaBolleCarico>},
        {u"actStampaSottoscortaRiordino"_s,
         stampe,
         u"Stampa sottoscorta / riordino"_s,
         ui::ActionKind::Report,
         make<TMMGModStampaSottoscortaRiordino>,
         {},
         runReorderReport},
        {u"actStampaInventarioValorizzato"_s, stampe, u"Stampa inventario valorizzato"_s, form,
         make<TMMGStampaInventarioValorizzato>},
        {u"actInserimentoVettori"_s, inserimento, u"Nuovo"_s, form, make<TMMGInserimentoVettori>},
        {u"actRicercaVettori"_s, ricerca, u"Vettori"_s, form, make<TMMGRicercaVettori>},
        {u"actModSelezionaVettore"_s, modali, u"Seleziona un vettore"_s, selection, make<TMMGModSelezionaVettore>},
        {u"actModSelezionaNotaDocumenti"_s, modali, u"Seleziona nota"_s, selection,
         make<TMMGModSelezionaNotaDocumenti>},
    };
    return actions;
}

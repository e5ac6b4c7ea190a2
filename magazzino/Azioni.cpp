#include "magazzino/Azioni.h"

#include "magazzino/documents/DocumentKind.h"
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
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

// The name of a class behind its prefix, by which its form and command are known.
template <typename Form>
QString nameOf()
{
    return QString::fromLatin1(Form::staticMetaObject.className()).mid(4);
}

template <typename Form>
QWidget *make(QWidget *owner)
{
    auto *form = ui::named(u"MMG"_s + nameOf<Form>(), new Form(owner));
    return form;
}

// The command that shows a form.
template <typename Form>
ui::ActionSpec shows(const QString &category, const QString &caption, const QString &right = {})
{
    return {u"act"_s + nameOf<Form>(), category, caption, ui::ActionKind::Form, make<Form>, right};
}

// The command that runs a selection dialog.
template <typename Dialog>
ui::ActionSpec selects(const QString &caption)
{
    return {u"act"_s + nameOf<Dialog>(), u"Modali"_s, caption, ui::ActionKind::Selection, make<Dialog>};
}

const QString inserimento = u"Inserimento"_s;
const QString ricerca = u"Ricerca"_s;
const QString stampe = u"Stampe"_s;

void runReorderReport(QWidget *dialog)
{
    StampaSottoscortaRiordino(*qobject_cast<TMMGModStampaSottoscortaRiordino *>(dialog));
}

} // namespace

const QList<ui::ActionSpec> &moduleActions()
{
    static const QList<ui::ActionSpec> actions = {
        shows<TMMGInserimentoCausaliTrasporto>(inserimento, u"Inserimento causali di trasporto"_s),
        shows<TMMGRicercaCausaliTrasporto>(ricerca, u"Causali di trasporto"_s),
        selects<TMMGModSelezionaCausaleTrasporto>(u"Seleziona causale di trasporto"_s),
        shows<TMMGInserimentoDdTScarico>(inserimento, u"Inserimento D.d.T. di scarico"_s),
        selects<TMMGModSelezionaArticolo>(u"Seleziona un articolo"_s),
        selects<TMMGModSelezionaServizio>(u"Seleziona un servizio"_s),
        selects<TMMGModSelezionaCliente>(u"Seleziona un cliente"_s),
        shows<TMMGInserimentoTipiTrasporto>(inserimento, u"Inserimento tipi di trasporto"_s),
        shows<TMMGRicercaTipiTrasporto>(ricerca, u"Tipi di trasporto"_s),
        selects<TMMGModSelezionaTipoTrasporto>(u"Seleziona un tipo di trasporto"_s),
        selects<TMMGModSelezionaUM>(u"Seleziona un'unità di misura"_s),
        shows<TMMGRicercaDdTScarico>(ricerca, u"D.d.T."_s),
        selects<TMMGModSelezionaTipoPagamento>(u"Seleziona tipo di pagamento"_s),
        shows<TMMGInserimentoFattureAccompagnatorie>(inserimento, u"Inserimento fatture accompagnatorie"_s),
        shows<TMMGRicercaFattureAccompagnatorie>(ricerca, u"Fatt. Acc."_s, fatturaAccompagnatoria().viewRight),
        shows<TMMGFattureElettroniche>(ricerca, core::tr("Fatture elettroniche"), fatturaAccompagnatoria().viewRight),
        shows<TMMGRicercaMovimentiMagazzino>(ricerca, u"Gestione movimenti di magazzino"_s),
        shows<TMMGStampaInventario>(stampe, u"Stampa inventario"_s),
        shows<TMMGInserimentoMovimentiMagazzino>(inserimento, u"Nuovo movimento di magazzino"_s),
        selects<TMMGModSelezionaCausaleMagazzino>(u"Seleziona una causale di magazzino"_s),
        shows<TMMGInserimentoFornitori>(inserimento, u"Inserimento fornitori"_s),
        shows<TMMGRicercaFornitori>(ricerca, u"Fornitori"_s),
        shows<TMMGInserimentoBolleCarico>(inserimento, u"Inserimento bolle di carico"_s),
        selects<TMMGModSelezionaFornitore>(u"Seleziona un fornitore"_s),
        shows<TMMGRicercaBolleCarico>(ricerca, u"Bolle di carico"_s),
        {u"actStampaSottoscortaRiordino"_s,
         stampe,
         u"Stampa sottoscorta / riordino"_s,
         ui::ActionKind::Report,
         make<TMMGModStampaSottoscortaRiordino>,
         {},
         runReorderReport},
        shows<TMMGStampaInventarioValorizzato>(stampe, u"Stampa inventario valorizzato"_s),
        shows<TMMGInserimentoVettori>(inserimento, u"Nuovo"_s),
        shows<TMMGRicercaVettori>(ricerca, u"Vettori"_s),
        selects<TMMGModSelezionaVettore>(u"Seleziona un vettore"_s),
        selects<TMMGModSelezionaNotaDocumenti>(u"Seleziona nota"_s),
    };
    return actions;
}

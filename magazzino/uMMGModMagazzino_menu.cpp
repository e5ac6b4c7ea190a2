#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Translation.h"
#include "platform/ui/Controls.h"

using namespace Qt::StringLiterals;

namespace {

/// An entry of a menu or tool bar; an empty action stands for a separator.
struct Entry
{
    QString action;
    QString caption; ///< of its own; the action's when empty
};

struct Container
{
    QString name;
    QString caption;
    QList<Entry> entries;
};

// In the order in which they are merged into the host's main menu.
QList<Container> menuSpecs()
{
    return {
        {u"mnDocumenti"_s,
         u"Documenti"_s,
         {{u"actRicercaDdTScarico"_s, u"D.d.T. di scarico"_s},
          {},
          {u"actRicercaFattureAccompagnatorie"_s, u"Fatture Accompagnatorie"_s},
          {}}},
        {u"mnTabelle"_s, u"Tabelle"_s, {{u"actRicercaCausaliTrasporto"_s, {}}, {u"actRicercaTipiTrasporto"_s, {}}}},
        {u"mnMagazzino"_s,
         u"Magazzino"_s,
         {{u"actRicercaBolleCarico"_s, {}},
          {},
          {u"actRicercaMovimentiMagazzino"_s, {}},
          {u"actStampaInventario"_s, {}},
          {u"actStampaInventarioValorizzato"_s, {}},
          {u"actStampaSottoscortaRiordino"_s, {}}}},
        {u"mnAnagrafiche"_s, u"Anagrafiche"_s, {{u"actRicercaFornitori"_s, {}}, {u"actRicercaVettori"_s, {}}}},
        {u"mnStrumenti"_s, core::tr("Strumenti"), {{u"actFattureElettroniche"_s, {}}}},
    };
}

const QList<Container> toolBarSpecs = {
    {u"tBarMMGDocumenti"_s,
     u"Documenti"_s,
     {{u"actRicercaFattureAccompagnatorie"_s, {}}, {u"actRicercaBolleCarico"_s, {}}, {u"actRicercaDdTScarico"_s, {}}}},
    {u"tBarMMGAnagrafiche"_s, u"Anagrafiche"_s, {{u"actRicercaFornitori"_s, {}}}},
};

struct Hint
{
    QString action;
    QString title;
    QString text;
};

QList<Hint> hintSpecs()
{
    return {
        {u"actRicercaFattureAccompagnatorie"_s, u"Ricerca Fatture Accompagnatorie"_s,
         u"Apre la maschera di ricerca delle Fatture Immediate Accompagnatorie."_s},
        {u"actRicercaDdTScarico"_s, u"Ricerca D.d.T. di scarico"_s,
         u"Apre la maschera di ricerca dei D.d.T. di scarico."_s},
        {u"actFattureElettroniche"_s, core::tr("Fatture elettroniche"),
         core::tr("Controlla le fatture accompagnatorie, ne scrive i file e legge le ricevute.")},
    };
}

// A menu item with a caption of its own runs the action and follows its state.
QAction *renamed(QAction *action, const QString &caption, QObject *parent)
{
    auto *item = new QAction(action->icon(), caption, parent);
    item->setEnabled(action->isEnabled());
    QObject::connect(item, &QAction::triggered, action, &QAction::trigger);
    QObject::connect(action, &QAction::changed, item, [item, action] { item->setEnabled(action->isEnabled()); });
    return item;
}

} // namespace

void TMMGModMagazzino::createMenus()
{
    mnModMagazzino = ui::named(u"mnModMagazzino"_s, new QMenu(this));
    for (const Container &spec : menuSpecs()) {
        auto *menu = ui::named(spec.name, new QMenu(spec.caption, this));
        for (const Entry &entry : spec.entries) {
            if (entry.action.isEmpty())
                menu->addSeparator();
            else if (entry.caption.isEmpty())
                menu->addAction(action(entry.action));
            else
                menu->addAction(renamed(action(entry.action), entry.caption, menu));
        }
        mnModMagazzino->addMenu(menu);
    }
}

void TMMGModMagazzino::createToolBars()
{
    for (const Container &spec : toolBarSpecs) {
        auto *bar = ui::named(spec.name, new QToolBar(spec.caption, this));
        for (const Entry &entry : spec.entries)
            bar->addAction(action(entry.action));
        toolBars_.append(bar);
    }
    for (const Hint &hint : hintSpecs()) {
        action(hint.action)->setToolTip(u"<b>%1</b><br>%2"_s.arg(hint.title, hint.text));
        action(hint.action)->setStatusTip(hint.text);
    }
}

#include "magazzino/ui/MMGModSelezionaBase.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Filters.h"
#include "platform/ui/Letters.h"

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

// The statements' texts are fixed, values included.
ui::ListSpec withFixedText(ui::ListSpec list)
{
    list.gridName = u"gridRisultati"_s;
    list.way = data::Values::Way::Written;
    list.letterLike = u" LIKE "_s;
    list.keepsSelection = false;
    list.keepsLayout = false;
    list.hasFooter = false;
    return list;
}

} // namespace

SelectionSpec tableSelection(const QString &caption, const QString &table, const QString &key,
                             const ui::ListColumn &column, bool returnsText)
{
    return {.caption = caption,
            .list = {.selectText = u"SELECT * FROM %1 "_s.arg(table),
                     .orderText = u" ORDER BY UPPER(%1)"_s.arg(column.field),
                     .keyField = key,
                     .columns = {column}},
            .onShow = OnShow::LoadAll,
            .returnsText = returnsText};
}

SelectionSpec itemSelection(const QString &caption, const QString &table, const QString &key,
                            const ui::CategoryTable &categories)
{
    return {.caption = caption,
            .list = {.selectText = u"SELECT %1.*, %2.CATEGORIA FROM %1 LEFT JOIN %2 ON %2.%3=%1.%3 "_s.arg(
                         table, categories.table, categories.key),
                     .orderText = u" ORDER BY UPPER(CODICE)"_s,
                     .keyField = key,
                     .columns = {{u"Codice"_s, u"CODICE"_s, 168},
                                 {u"Descrizione"_s, u"DESCRIZIONE"_s, 350},
                                 {u"Categoria"_s, u"CATEGORIA"_s, 250}},
                     .filters = {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                                 ui::containing(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s),
                                 categoryFilter(categories, table + u'.' + categories.key)}},
            .searchCommands = true};
}

SelectionSpec anagraficaSelection(const QString &caption, const QString &table, const QString &key)
{
    return {.caption = caption,
            .list = {.selectText = u"SELECT * FROM %1 "_s.arg(table),
                     .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
                     .keyField = key,
                     .columns = {{u"Codice"_s, u"CODICE"_s, 120},
                                 {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 358},
                                 {u"Codice fiscale"_s, u"CODICEFISCALE"_s, 160},
                                 {u"Partita IVA"_s, u"PARTITAIVA"_s, 130}},
                     .letterColumn = u"RAGIONESOCIALE"_s},
            .onShow = OnShow::LoadLetterA};
}

TMMGModSelezionaBase::TMMGModSelezionaBase(const SelectionSpec &spec, QWidget *owner)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                         Qt::MSWindowsFixedSizeDialogHint | Qt::WindowStaysOnTopHint)
    , spec_(spec)
{
    setWindowTitle(spec.caption);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(6);
    const auto commands = [this](QWidget *line) {
        QList<QPushButton *> buttons;
        if (spec_.searchCommands) {
            buttons = {pushButton(u"actCerca"_s, u"Cerca"_s, line, [this] { Cerca(); }),
                       pushButton(u"actRipristina"_s, u"Ripristina"_s, line, [this] { Ripristina(); })};
            buttons[0]->setIcon(ui::icon(ui::Icon::Search));
            buttons[1]->setIcon(ui::icon(ui::Icon::Reset));
        }
        return buttons;
    };
    list_ = new ui::ListPanel(withFixedText(spec.list), ModuleConnection(), commands, this);
    connect(&list_->grid(), &ui::ResultGrid::chosen, this, &QDialog::accept);
    createButtons();
    setFixedSize(ui::forLetters(QSize(dialogWidth(), 480), *this));
    CreaGrigliaVuota();
    Ripristina();
}

// As wide as its columns; a column that takes the rest makes up for what the others leave.
int TMMGModSelezionaBase::dialogWidth() const
{
    constexpr int usualColumns = 768;
    int columns = 0;
    bool hasRest = false;
    for (const ui::ListColumn &column : spec_.list.columns) {
        columns += column.width;
        hasRest = hasRest || column.widthKind == ui::ListColumn::Width::Rest;
    }
    return list_->widthFor(hasRest ? usualColumns : columns);
}

void TMMGModSelezionaBase::createButtons()
{
    auto *bar = new QHBoxLayout;
    bar->addStretch();
    bar->addWidget(pushButton(u"cmdOk"_s, u"OK"_s, this, [this] { accept(); }));
    bar->addWidget(pushButton(u"cmdAnnulla"_s, u"Annulla"_s, this, [this] { reject(); }));
    qobject_cast<QVBoxLayout *>(layout())->addLayout(bar);
}

QPushButton *TMMGModSelezionaBase::pushButton(const QString &name, const QString &caption, QWidget *parent,
                                              const std::function<void()> &run)
{
    // Otherwise Enter in a filter would search and then press this button too.
    auto *button = ui::plainButton(name, caption, parent);
    connect(button, &QPushButton::clicked, this, [this, run] { core::guarded(this, run); });
    return button;
}

TCodiceTesto TMMGModSelezionaBase::ApriSelezionato() const
{
    const ui::ResultGrid &grid = list_->grid();
    const int key = grid.selectedKey();
    return {key, spec_.returnsText && key != -1 ? grid.selectedValue(spec_.list.columns.first().field).toString()
                                                : QString()};
}

void TMMGModSelezionaBase::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    list_->forgetSearch();
    core::guarded(this, [this] {
        if (spec_.onShow == OnShow::LoadLetterA)
            list_->searchLetter(u"A"_s);
        else if (spec_.onShow == OnShow::LoadAll)
            AggiornaGriglia({});
    });
    QWidget *first = list_->filterInputs().value(0);
    (first ? first : &list_->grid())->setFocus();
}

void TMMGModSelezionaBase::done(int result)
{
    if (result == QDialog::Accepted && list_->grid().selectedKey() < 0) {
        core::warn(this, u"Nessuna voce selezionata!"_s);
        return;
    }
    QDialog::done(result);
}

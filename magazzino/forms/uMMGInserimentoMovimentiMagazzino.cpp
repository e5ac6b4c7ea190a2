#include "magazzino/forms/uMMGInserimentoMovimentiMagazzino.h"

#include "host/Categories.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/core/Translation.h"
#include "platform/ui/Colours.h"
#include "platform/ui/PageArea.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

TMMGInserimentoMovimentiMagazzino::TMMGInserimentoMovimentiMagazzino(QWidget *owner)
    : TMMGInserimento({.caption = u"Inserimento / Modifica movimenti di magazzino"_s,
                       .menuCaption = u">Inserimento movimenti di magazzino<"_s},
                      &Modulo().dataSet(u"adsMoviMaga"_s), owner)
{
    setObjectName(u"MMGInserimentoMovimentiMagazzino"_s);
    setOnClose(ui::OnClose::Hide);
    setOpeningSize({760, 590});
    mainLayout()->addWidget(pages(), 1);
    QWidget *page = ui::narrowColumn(addPage(u" Generale "_s));
    auto *layout = new QVBoxLayout(page);
    warehouse_ = declare(new ui::KeptField(u"IDMAGAZZINO"_s, 0, this));
    layout->addWidget(createArticle(page));
    kind_ = declare(new ui::RadioField({.name = u"grpTipoMovimento"_s,
                                        .caption = u" Tipo di movimento "_s,
                                        .column = u"TIPO_MOVIMENTO"_s,
                                        .items = {u"Carico"_s, u"Scarico"_s}},
                                       page));
    layout->addWidget(kind_->widget());
    layout->addWidget(createAmounts(page));
    layout->addWidget(createReason(page));
    documentKind_ = declare(new ui::KeptField(u"RIF_DOC_TIPO"_s, {}, this));
    documentId_ = declare(new ui::KeptField(u"RIF_DOC_ID"_s, {}, this));
    documentRowId_ = declare(new ui::KeptField(u"RIF_DOC_IDRIGA"_s, {}, this));
    auto *notes = declare(new ui::MemoField({.name = u"txtNote"_s, .label = u"Note"_s, .column = u"NOTE"_s}, page));
    // A few lines at least and what room there is: the whole form fits a screen of 768 lines.
    notes->widget()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    notes->widget()->setMinimumHeight(4 * fontMetrics().lineSpacing());
    auto *caption = new QLabel(notes->label(), page);
    caption->setBuddy(notes->widget());
    layout->addWidget(caption);
    layout->addWidget(notes->widget(), 1);

    refuseIf([this] { return code_->isEmpty(); }, u"Non è stato indicato il codice!"_s);
    refuseIf([this] { return description_->isEmpty(); }, u"Non è stata indicata la descrizione!"_s);
    refuseIf([this] { return reason_->key() < 1; }, u"Non è stata indicata la causale di magazzino!"_s);
    refuseIf([this] { return category_->key() < 1; }, u"Non è stata indicata la categoria!"_s);
    start(ui::standardCommands);
    // Only now, for the form's smallest size must have room for it.
    reasonBox_->hide();
}

QWidget *TMMGInserimentoMovimentiMagazzino::createArticle(QWidget *page)
{
    auto *box = new QGroupBox(u" Articolo "_s, page);
    date_ = declare(new ui::DateField(
        {.name = u"txtDataMovimento"_s, .label = u"Data movimento"_s, .column = u"DATA_MOVIMENTO"_s}, box));
    code_ = declare(new ui::TextField(
        {.name = u"txtCodice"_s, .label = u"Codice"_s, .column = u"CODICE"_s, .maxLength = 20, .readOnly = true}, box));
    QAction *choose = addCommand({.name = u"actSelezionaArticolo"_s,
                                  .caption = core::tr("Seleziona articolo..."),
                                  .run = [this] { selezionaArticolo(); },
                                  .icon = ui::Icon::Choose,
                                  .shortcut = QKeySequence(u"Ctrl+F"_s)});
    QPushButton *button = commandButton(choose, u"cmdSelezionaArticolo"_s, box);
    description_ = declare(new ui::TextField({.name = u"txtDescrizione"_s,
                                              .label = u"Descrizione"_s,
                                              .column = u"DESCRIZIONE"_s,
                                              .maxLength = 100,
                                              .readOnly = true},
                                             box));
    category_ = declare(new ui::CategoryField({.name = u"txtCategoria"_s,
                                               .label = u"Categoria"_s,
                                               .column = u"IDCATEGORIA_ANA_MAGA"_s,
                                               .categories = host::articleCategories,
                                               .none = -1},
                                              ModuleConnection(), box));
    auto *grid = new QGridLayout(box);
    place(grid, date_, 0, 0);
    place(grid, code_, 1, 0);
    grid->addWidget(button, 1, 2);
    place(grid, description_, 2, 0, 2);
    place(grid, category_, 3, 0);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    setFocusProxy(date_->widget());
    return box;
}

QWidget *TMMGInserimentoMovimentiMagazzino::createAmounts(QWidget *page)
{
    constexpr double lowest = -99'999'999'999.99;
    const QString euro = GetCurrencyPrefix();
    auto *box = new QGroupBox(core::tr(" Importi "), page);
    price_ = declare(new ui::DecimalField(
        {.name = u"txtPrezzo"_s, .label = u"Prezzo"_s, .column = u"PREZZO"_s, .prefix = euro, .minimum = lowest}, box));
    cost_ = declare(new ui::DecimalField(
        {.name = u"txtCosto"_s, .label = u"Costo"_s, .column = u"COSTO"_s, .prefix = euro, .minimum = lowest}, box));
    quantity_ = declare(new ui::DecimalField(
        {.name = u"txtQuantita"_s, .label = u"Quantità"_s, .column = u"QUANTITA"_s, .initial = 1, .minimum = lowest},
        box));
    value_ = declare(new ui::DecimalField(
        {.name = u"txtValore"_s, .label = u"Valore unità"_s, .column = u"VALORE"_s, .prefix = euro, .minimum = lowest},
        box));
    auto *total = declare(new ui::DecimalField({.name = u"txtValoreImporto"_s,
                                                .label = u"Valore totale"_s,
                                                .column = u"VALORE_IMPORTO"_s,
                                                .minimum = lowest,
                                                .readOnly = true},
                                               box));
    auto *grid = new QGridLayout(box);
    place(grid, price_, 0, 0);
    place(grid, cost_, 0, 1);
    place(grid, quantity_, 1, 0);
    place(grid, value_, 1, 1);
    place(grid, total, 1, 2);
    hint_ = ui::named(u"lblSegno"_s, new QLabel(box));
    hint_->setWordWrap(true);
    hint_->setMargin(3);
    grid->addWidget(hint_, 2, 0, 1, 7);
    for (const ui::Field *field : {static_cast<ui::Field *>(kind_), static_cast<ui::Field *>(quantity_)})
        connect(field, &ui::Field::edited, this, &TMMGInserimentoMovimentiMagazzino::showSign);
    grid->setColumnStretch(6, 1);
    return box;
}

QWidget *TMMGInserimentoMovimentiMagazzino::createReason(QWidget *page)
{
    reasonBox_ = ui::named(u"grpCausaleMagazzino"_s, new QGroupBox(u" Causale di magazzino "_s, page));
    reason_ = declare(new ui::ChoiceField({.name = u"txtCausaleMagazzino"_s,
                                           .buttonName = u"cmdSelezionaCausaleMagazzino"_s,
                                           .keyColumn = u"IDCAUSALE_MAGA"_s,
                                           .choose = [this]() -> std::optional<ui::Choice> {
                                               selezionaCausaleMagazzino();
                                               return {};
                                           },
                                           .textOf = [](int key) { return GetCausaleMagazzino(key).testo; }},
                                          reasonBox_));
    auto *layout = new QHBoxLayout(reasonBox_);
    layout->addWidget(reason_->widget());
    return reasonBox_;
}

void TMMGInserimentoMovimentiMagazzino::SetIdMagazzino(int id)
{
    warehouse_->restore(id);
}

void TMMGInserimentoMovimentiMagazzino::SetIdCausaleMagazzino(int id)
{
    reason_->setChoice({id, id >= 1 ? GetCausaleMagazzino(id).testo : QString()});
}

void TMMGInserimentoMovimentiMagazzino::SetRifDocTipo(const QVariant &tipo)
{
    documentKind_->restore(tipo);
}

void TMMGInserimentoMovimentiMagazzino::SetRifDocID(const QVariant &id)
{
    documentId_->restore(id);
}

void TMMGInserimentoMovimentiMagazzino::SetRifDocIDRiga(const QVariant &id)
{
    documentRowId_->restore(id);
}

void TMMGInserimentoMovimentiMagazzino::resetDetails()
{
    SetIdMagazzino(0);
    SetIdCausaleMagazzino(-1);
    SetRifDocTipo({});
    SetRifDocID({});
    SetRifDocIDRiga({});
    AggiornaImporti();
    showSign();
}

// What the setters set was loaded with the other fields.
void TMMGInserimentoMovimentiMagazzino::loadDetails()
{
    AggiornaImporti();
    showSign();
}

void TMMGInserimentoMovimentiMagazzino::selezionaCausaleMagazzino()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaCausaleMagazzino"_s)) {
        SetIdCausaleMagazzino(chosen->key);
        DataChanged();
    }
}

void TMMGInserimentoMovimentiMagazzino::showEvent(QShowEvent *event)
{
    // A reason is required, so its group cannot stay hidden.
    reasonBox_->show();
    EntryForm::showEvent(event);
}

void TMMGInserimentoMovimentiMagazzino::selezionaArticolo()
{
    const auto chosen = chooseRecord(u"actModSelezionaArticolo"_s);
    if (!chosen)
        return;
    const TArticolo article = GetArticolo(chosen->key);
    if (article.id <= 0)
        return;
    code_->setText(article.codice);
    description_->setText(article.descrizione);
    category_->selectKey(article.idCategoria);
    price_->setValue(article.prezzo);
    cost_->setValue(article.costo);
    value_->setValue(article.costo);
    DataChanged();
}

// Only told: what is typed is stored, whatever its sign.
void TMMGInserimentoMovimentiMagazzino::showSign()
{
    const bool issue = kind_->text() == u"Scarico";
    const bool odd = issue ? quantity_->value() > 0 : quantity_->value() < 0;
    if (!odd)
        hint_->setText(core::tr(
            "Uno scarico si indica con una quantità negativa. Il valore totale viene registrato come è mostrato."));
    else if (issue)
        hint_->setText(
            core::tr("Così lo scarico aumenta l'esistenza: uno scarico si indica con una quantità negativa."));
    else
        hint_->setText(
            core::tr("Così il carico diminuisce l'esistenza: un carico si indica con una quantità positiva."));
    QPalette colours;
    if (odd) {
        colours.setColor(QPalette::Window, ui::warningGround);
        colours.setColor(QPalette::WindowText, ui::warningText);
    }
    hint_->setPalette(colours);
    hint_->setAutoFillBackground(odd);
}

std::optional<ui::DraftTitle> TMMGInserimentoMovimentiMagazzino::draftTitle() const
{
    return ui::DraftTitle{.kind = core::tr("Movimento di magazzino"),
                          .record = storedKey() < 0 ? core::tr("nuovo") : code_->text(),
                          .date = date_->date(),
                          .counterpart = description_->text(),
                          .rights = {}};
}

bool TMMGInserimentoMovimentiMagazzino::deleteStored(int id)
{
    return DeleteMovimentoMagazzino(id);
}

#include "magazzino/ui/SelectionDialog.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/LineText.h"
#include "platform/core/Messages.h"
#include "platform/data/SqlText.h"
#include "platform/ui/CategoryTree.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/LetterBar.h"
#include "platform/ui/LineEdit.h"
#include "platform/ui/ListKeys.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// Places of the category nodes' images in the suite's shared image list.
constexpr int closedCategoryImage = 77;
constexpr int openCategoryImage = 76;

QPushButton *pushButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    // Otherwise Enter in a filter would search and then press this button too.
    button->setAutoDefault(false);
    return button;
}

} // namespace

TMMGModSelezionaBase::TMMGModSelezionaBase(const SelectionSpec &spec, QWidget *owner)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                         Qt::MSWindowsFixedSizeDialogHint | Qt::WindowStaysOnTopHint)
    , spec_(spec)
{
    setWindowTitle(spec.caption);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(6);
    createFilterBar(layout);
    grid_ = new ui::ResultGrid(spec.keyField, spec.columns, this);
    grid_->setObjectName(u"gridRisultati"_s);
    if (spec.longTexts)
        grid_->showLongTexts();
    connect(grid_, &ui::ResultGrid::chosen, this, &QDialog::accept);
    layout->addWidget(grid_, 1);
    createKeys(createLetterBar(layout));
    createButtons(layout);
    setFixedSize(dialogWidth(), 480);
    if (spec.searchCommands)
        Ripristina();
}

// As wide as its columns; a column that takes the rest makes up for what the others leave.
int TMMGModSelezionaBase::dialogWidth() const
{
    constexpr int usualColumns = 768;
    int columns = 0;
    bool hasRest = false;
    for (const ui::ListColumn &column : spec_.columns) {
        columns += column.width;
        hasRest = hasRest || column.widthKind == ui::ListColumn::Width::Rest;
    }
    const QMargins margins = layout()->contentsMargins();
    return (hasRest ? usualColumns : columns) + 2 * grid_->frameWidth() +
           grid_->verticalScrollBar()->sizeHint().width() + margins.left() + margins.right();
}

void TMMGModSelezionaBase::createFilterBar(QVBoxLayout *layout)
{
    if (!spec_.searchCommands)
        return;
    auto *bar = new QHBoxLayout;
    for (const TextFilter &filter : std::as_const(spec_.filters)) {
        auto *edit = new ui::LineEdit(this);
        edit->setObjectName(filter.name);
        edit->setMaxLength(100);
        auto *label = new QLabel(filter.label, this);
        label->setBuddy(edit);
        bar->addWidget(label);
        bar->addWidget(edit, 1);
        filterEdits_.append(edit);
    }
    if (!spec_.category.table.isEmpty()) {
        category_ = new ui::CategoryTree(this);
        category_->setObjectName(u"txtCategoria"_s);
        auto *label = new QLabel(u"Categoria"_s, this);
        label->setBuddy(category_);
        bar->addWidget(label);
        bar->addWidget(category_, 1);
    }
    if (filterEdits_.isEmpty())
        bar->addStretch();
    QPushButton *search = pushButton(u"actCerca"_s, u"Cerca"_s, this);
    search->setIcon(ui::icon(ui::Icon::Search));
    connect(search, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { Cerca(); }); });
    QPushButton *reset = pushButton(u"actRipristina"_s, u"Ripristina"_s, this);
    reset->setIcon(ui::icon(ui::Icon::Reset));
    connect(reset, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { Ripristina(); }); });
    bar->addWidget(search);
    bar->addWidget(reset);
    layout->addLayout(bar);
}

ui::LetterBar *TMMGModSelezionaBase::createLetterBar(QVBoxLayout *layout)
{
    if (spec_.letterColumn.isEmpty())
        return nullptr;
    auto *letters = new ui::LetterBar(this);
    connect(letters, &ui::LetterBar::pressed, this,
            [this](const QString &caption) { core::guarded(this, [this, &caption] { searchLetter(caption); }); });
    layout->addWidget(letters);
    return letters;
}

void TMMGModSelezionaBase::createKeys(ui::LetterBar *letters)
{
    QList<QWidget *> filters(filterEdits_.begin(), filterEdits_.end());
    if (category_)
        filters.append(category_);
    keys_ = new ui::ListKeys({.window = this,
                              .grid = grid_,
                              .letters = letters,
                              .filters = filters,
                              .asked = [this] { return filterText(); },
                              .search = [this] { return core::guarded(this, [this] { Cerca(); }); }});
}

void TMMGModSelezionaBase::createButtons(QVBoxLayout *layout)
{
    auto *bar = new QHBoxLayout;
    bar->addStretch();
    QPushButton *ok = pushButton(u"cmdOk"_s, u"OK"_s, this);
    QPushButton *cancel = pushButton(u"cmdAnnulla"_s, u"Annulla"_s, this);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    bar->addWidget(ok);
    bar->addWidget(cancel);
    layout->addLayout(bar);
}

TCodiceTesto TMMGModSelezionaBase::ApriSelezionato() const
{
    const int key = grid_->selectedKey();
    return {key, spec_.returnsText && key != -1 ? grid_->selectedText() : QString()};
}

void TMMGModSelezionaBase::AggiornaGriglia(const QString &filter)
{
    const ui::WaitCursor wait;
    grid_->fill(ModuleConnection(), spec_.selectText + filter + spec_.orderText);
}

QString TMMGModSelezionaBase::filterText() const
{
    QStringList conditions;
    for (int i = 0; i < filterEdits_.size(); ++i) {
        const QString text = core::lineOf(filterEdits_[i]->text());
        if (!text.isEmpty())
            conditions.append(spec_.filters[i].column + u" CONTAINING "_s + data::quoted(text));
    }
    if (category_ && category_->selectedKey() > 0) {
        const QList<int> keys =
            GetElencoIdFiglio(spec_.category.key, category_->selectedKey(), spec_.category.table, ModuleConnection());
        QStringList texts;
        for (const int key : keys)
            texts.append(QString::number(key));
        conditions.append(u' ' + spec_.category.column + u" IN ("_s + texts.join(u", "_s) + u')');
    }
    return conditions.isEmpty() ? QString() : u"WHERE "_s + conditions.join(u" AND "_s);
}

void TMMGModSelezionaBase::Cerca()
{
    AggiornaGriglia(filterText());
}

void TMMGModSelezionaBase::Ripristina()
{
    for (QLineEdit *edit : std::as_const(filterEdits_))
        edit->clear();
    if (!category_)
        return;
    category_->clearTree();
    FillTreeView(*category_, spec_.category.key, u"CATEGORIA"_s, u"IDPADRE"_s, spec_.category.table,
                 u"ORDER BY CATEGORIA"_s, ModuleConnection());
    UpdateTreeNodeImages(*category_, closedCategoryImage, openCategoryImage);
    category_->selectKey(-1);
}

void TMMGModSelezionaBase::searchLetter(const QString &caption)
{
    AggiornaGriglia(ui::LetterBar::condition(caption, spec_.letterColumn));
}

void TMMGModSelezionaBase::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    keys_->forget();
    core::guarded(this, [this] {
        if (spec_.onShow == OnShow::LoadLetterA)
            searchLetter(u"A"_s);
        else if (spec_.onShow == OnShow::LoadAll)
            AggiornaGriglia({});
    });
    if (filterEdits_.isEmpty())
        grid_->setFocus();
    else
        filterEdits_.first()->setFocus();
}

void TMMGModSelezionaBase::done(int result)
{
    if (result == QDialog::Accepted && grid_->selectedKey() < 0) {
        core::warn(this, u"Nessuna voce selezionata!"_s);
        return;
    }
    QDialog::done(result);
}

#include "magazzino/reports/uMMGStampaInventarioBase.h"

#include "host/Corvane3Impl.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/data/DataSet.h"
#include "platform/data/SqlText.h"
#include "platform/ui/PageArea.h"
#include "platform/ui/ProgressDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int closedFolderImage = 77;
constexpr int openFolderImage = 76;

// "Zero or above" leaves out articles whose sum is NULL while "zero" takes them in; this is intended.
QString stockCondition(int choice)
{
    static const QStringList conditions = {u" M.ESISTENZA > 0"_s, u" (M.ESISTENZA = 0 OR M.ESISTENZA IS NULL)"_s,
                                           u" M.ESISTENZA < 0"_s, u" (M.ESISTENZA = 0 OR M.ESISTENZA > 0)"_s};
    return conditions.value(choice);
}

// Typed, or the engine would read the text anew for every movement.
QString dateLiteral(QDate date)
{
    return u"DATE "_s + data::quoted(DateToString_YYYYMMDD(date));
}

} // namespace

// The movements are read once and grouped by code. Asking for each article's sums, once to print and once or twice to
// filter, and for its movements in the period would read them again for every article.
QString InventarioSQL(const InventarioFilter &filter, bool valued)
{
    QString where = u"WHERE M.NEL_PERIODO = 1"_s;
    if (filter.esistenza >= 0)
        where += u" AND "_s + stockCondition(filter.esistenza);
    if (!filter.categorie.isEmpty()) {
        QStringList keys;
        for (const int key : filter.categorie)
            keys.append(QString::number(key));
        where += u" AND (ANA_MAGA.IDCATEGORIA_ANA_MAGA IN (%1))"_s.arg(keys.join(u','));
    }
    return u"SELECT ANA_MAGA.CODICE, ANA_MAGA.DESCRIZIONE, M.ESISTENZA%1 FROM (SELECT CODICE, SUM(QUANTITA) AS "
           u"ESISTENZA, "
           "SUM(VALORE_IMPORTO) AS VALORE, MAX(CASE WHEN DATA_MOVIMENTO >= %2 AND DATA_MOVIMENTO <= %3 THEN 1 ELSE 0 "
           "END) "
           "AS NEL_PERIODO FROM MOVI_MAGA GROUP BY CODICE) M JOIN ANA_MAGA ON ANA_MAGA.CODICE = M.CODICE %4 "
           "ORDER BY UPPER(ANA_MAGA.CODICE)"_s.arg(valued ? u", M.VALORE"_s : QString(), dateLiteral(filter.dal),
                                                   dateLiteral(filter.al), where);
}

TMMGStampaInventarioBase::TMMGStampaInventarioBase(const InventarioSpec &spec, QWidget *owner)
    : ChildForm(spec.caption, u">%1<"_s.arg(spec.caption), owner)
    , spec_(spec)
{
    setObjectName(spec.objectName);
    auto *layout = new QVBoxLayout(ui::narrowColumn(this));
    // Tab reaches the groups in the order in which they are made.
    layout->addWidget(createDates());
    if (spec.categoryFirst)
        layout->addWidget(createCategory());
    layout->addWidget(createStock());
    if (!spec.categoryFirst)
        layout->addWidget(createCategory());

    addCommand({.name = u"actStampa"_s,
                .caption = u"Stampa"_s,
                .run = [this] { stampa(); },
                .icon = ui::Icon::Print,
                .shortcut = QKeySequence(u"Ctrl+P"_s)});
    addCommand(
        {.name = u"actChiudi"_s, .caption = u"Chiudi"_s, .run = [this] { closeForm(); }, .icon = ui::Icon::Close});
    addCommand({.name = u"actRipristina"_s,
                .caption = u"Ripristina"_s,
                .run = [this] { Ripristina(); },
                .icon = ui::Icon::Reset});
    QToolBar *bar = newToolBar(u"tBarStandard"_s);
    placeCommands(bar, {u"actStampa"_s, u"actChiudi"_s});
    formMenu()->addAction(command(u"actRipristina"_s));
    layout->addWidget(bar);
    layout->addStretch();
    setMinimumSize(minimumSizeHint());
    setOpeningSize(minimumSizeHint() + QSize(40, 10));
    setFocusProxy(from_);
    Ripristina();
}

QGroupBox *TMMGStampaInventarioBase::createDates()
{
    auto *box = ui::named(u"grpData"_s, new QGroupBox(u" Data "_s, this));
    from_ = ui::named(u"txtDataDal"_s, new ui::DateEdit(box));
    to_ = ui::named(u"txtDataAl"_s, new ui::DateEdit(box));
    auto *line = new QHBoxLayout(box);
    for (const auto &[caption, edit] : {std::pair(u"Movimenti dal"_s, from_), std::pair(u"al"_s, to_)}) {
        auto *label = new QLabel(caption, box);
        label->setBuddy(edit);
        line->addWidget(label);
        line->addWidget(edit);
    }
    line->addStretch();
    return box;
}

QGroupBox *TMMGStampaInventarioBase::createStock()
{
    auto *box = ui::named(u"grpEsistenza"_s, new QGroupBox(u" Esistenza "_s, this));
    stock_ = new QButtonGroup(box);
    auto *layout = new QVBoxLayout(box);
    const QStringList choices = {u"Maggiore di 0"_s, u"Uguale a 0"_s, u"Minore di 0"_s, u"Maggiore o uguale a 0"_s};
    for (const QString &choice : choices) {
        auto *button = new QRadioButton(choice, box);
        stock_->addButton(button, static_cast<int>(stock_->buttons().size()));
        layout->addWidget(button);
    }
    return box;
}

QGroupBox *TMMGStampaInventarioBase::createCategory()
{
    auto *box = ui::named(u"grpCategoria"_s, new QGroupBox(u" Categoria "_s, this));
    category_ = ui::named(u"txtCategoria"_s, new ui::CategoryTree(box));
    auto *label = new QLabel(u"Categoria (incluse le sottocategorie)"_s, box);
    label->setBuddy(category_);
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(label);
    layout->addWidget(category_);
    return box;
}

void TMMGStampaInventarioBase::AggiornaComboCategorie()
{
    category_->clearTree();
    FillTreeView(*category_, u"IDCATEGORIA_ANA_MAGA"_s, u"CATEGORIA"_s, u"IDPADRE"_s, u"CATEGORIE_ANA_MAGA"_s,
                 u"ORDER BY UPPER(CATEGORIA)"_s, ModuleConnection());
    UpdateTreeNodeImages(*category_, closedFolderImage, openFolderImage);
    category_->setCurrentIndex(0);
}

void TMMGStampaInventarioBase::Ripristina()
{
    const int year = core::today().year();
    from_->setDate({year, 1, 1});
    to_->setDate({year, 12, 31});
    stock_->button(0)->setChecked(true);
    AggiornaComboCategorie();
}

InventarioFilter TMMGStampaInventarioBase::filter() const
{
    InventarioFilter result{.dal = from_->date(), .al = to_->date(), .esistenza = stock_->checkedId()};
    if (category_->currentIndex() > 0) {
        result.categorie = GetElencoIdFiglio(u"IDCATEGORIA_ANA_MAGA"_s, category_->selectedKey(),
                                             u"CATEGORIE_ANA_MAGA"_s, ModuleConnection());
    }
    return result;
}

void TMMGStampaInventarioBase::stampa()
{
    if (!ui::everythingReadable(this))
        return;
    data::DataSet &rows = Modulo().dmStampe->query(spec_.query);
    rows.setCommandText(InventarioSQL(filter(), spec_.valued));
    ui::openInterruptibly(this, spec_.caption, rows);
    if (rows.isEmpty()) {
        core::inform(this, u"Nessun dato da stampare per l'intervallo selezionato."_s);
        return;
    }
    StampaElenco(spec_.report,
                 u"Movimenti dal %1 al %2"_s.arg(core::formatDate(from_->date()), core::formatDate(to_->date())));
    closeForm();
}

#include "magazzino/ui/StockLine.h"

#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Changes.h"
#include "platform/ui/CallAfter.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

DocumentStockLine::DocumentStockLine(DocumentGrid &grid, std::function<ScorteDi()> document, QWidget *parent)
    : QWidget(parent)
    , grid_(grid)
    , document_(std::move(document))
    , current_(ui::named(u"lblGiacenzaRiga"_s, new ui::ElidedLabel(this)))
    , warning_(ui::named(u"lblSottoZero"_s, new QLabel(this)))
{
    warning_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    warning_->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    // A click leaves the place where one types.
    warning_->setFocusPolicy(Qt::TabFocus);
    warning_->hide();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(0);
    layout->addWidget(current_);
    layout->addWidget(warning_);
    ui::callAfter(later_, 0, this, &DocumentStockLine::refresh);
    const auto later = [this] { later_.start(); };
    const DocumentRowsModel &model = grid_.rowsModel();
    connect(&model, &QAbstractItemModel::rowsInserted, this, later);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, later);
    connect(&model, &QAbstractItemModel::modelReset, this, later);
    connect(&model, &QAbstractItemModel::dataChanged, this, later);
    connect(grid_.selectionModel(), &QItemSelectionModel::currentRowChanged, this, later);
    connect(&data::Changes::instance(), &data::Changes::changed, this, &DocumentStockLine::tablesChanged);
    connect(warning_, &QLabel::linkActivated, this, [this](const QString &row) {
        core::guarded(this, [&] {
            grid_.select(row.toInt(), &DocumentRow::quantita);
            grid_.setFocus();
        });
    });
}

void DocumentStockLine::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    later_.start();
}

void DocumentStockLine::forget()
{
    scorte_.clear();
    later_.start();
}

// Inside the save: the rows are read anew when it is over.
void DocumentStockLine::tablesChanged(const QStringList &tables)
{
    if (!ToccaLeGiacenze(tables))
        return;
    wasOutdated_ = std::exchange(outdated_, true);
    later_.start();
}

void DocumentStockLine::keep()
{
    outdated_ = wasOutdated_;
}

void DocumentStockLine::setTyped(const QString &codice)
{
    typed_ = codice;
    later_.start();
}

void DocumentStockLine::refresh()
{
    if (!isVisible())
        return;
    if (std::exchange(outdated_, false))
        scorte_.clear();
    try {
        readMissing();
    } catch (const std::exception &error) {
        // What is only told must not keep anybody from writing.
        core::logError(u"giacenze del documento"_s, error);
    }
    judge();
    showCurrent();
}

void DocumentStockLine::readMissing()
{
    QStringList missing;
    const auto want = [&](const QString &codice) {
        if (!codice.isEmpty() && !scorte_.contains(codice) && !missing.contains(codice))
            missing.append(codice);
    };
    want(typed_);
    for (const DocumentRow &row : grid_.rowsModel().rows()) {
        if (row.tipo == tipoRiga::articolo)
            want(row.codice);
    }
    if (missing.isEmpty())
        return;
    of_ = document_();
    scorte_.insert(LeggiScorte(of_, missing));
}

// The rows count from the top: the one that takes the first piece too many and those behind it.
void DocumentStockLine::judge()
{
    QHash<QString, double> taken;
    QHash<int, QString> warnings;
    QStringList links;
    QStringList numbers;
    const QList<DocumentRow> &rows = grid_.rowsModel().rows();
    for (int i = 0; i < rows.size(); ++i) {
        const auto found = scorte_.constFind(rows[i].codice);
        if (rows[i].tipo != tipoRiga::articolo || found == scorte_.constEnd() || of_.kind->movement.sign > 0)
            continue;
        const double now = taken[rows[i].codice] += rows[i].quantita.value_or(0);
        const double left = std::min(found->oggi, found->allaData) - now;
        if (left >= 0)
            continue;
        warnings.insert(i, core::tr("La giacenza va sotto zero: %1 dopo questa riga").arg(core::formatNumber(left)));
        numbers.append(QString::number(i + 1));
        links.append(u"<a href=\"%1\">%2</a>"_s.arg(i).arg(i + 1));
    }
    grid_.rowsModel().setWarnings(warnings);
    grid_.viewport()->update();
    const QString text = links.size() == 1 ? core::tr("1 riga porta la giacenza sotto zero: %1")
                                           : core::tr("%1 righe portano la giacenza sotto zero: %2").arg(links.size());
    warning_->setText(text.arg(links.join(u", "_s)));
    warning_->setAccessibleName(text.arg(numbers.join(u", "_s)));
    warning_->setHidden(links.isEmpty());
}

double DocumentStockLine::inDocument(const QString &codice) const
{
    double sum = 0;
    for (const DocumentRow &row : grid_.rowsModel().rows()) {
        if (row.tipo == tipoRiga::articolo && row.codice == codice)
            sum += row.quantita.value_or(0);
    }
    // No "-0,00".
    return sum == 0 ? 0 : sum * of_.kind->movement.sign;
}

QString DocumentStockLine::textOf(const QString &codice) const
{
    const Scorta &scorta = *scorte_.constFind(codice);
    const double change = inDocument(codice);
    QStringList parts = {codice, core::tr("giacenza %1").arg(core::formatNumber(scorta.oggi)),
                         core::tr("questo documento %1").arg(core::formatNumber(change)),
                         core::tr("resta %1").arg(core::formatNumber(scorta.oggi + change))};
    if (of_.head.data != core::today())
        parts.last() +=
            core::tr(" (al %1: %2)").arg(core::formatDate(of_.head.data), core::formatNumber(scorta.allaData + change));
    parts.append(core::tr("costo medio %1").arg(core::formatCurrency(scorta.costoMedio)));
    if (scorta.dataAcquisto.isValid())
        parts.append(core::tr("ultimo acquisto %1 il %2")
                         .arg(core::formatCurrency(scorta.costoAcquisto), core::formatDate(scorta.dataAcquisto)));
    if (scorta.dataVendita.isValid())
        parts.append(core::tr("a questo cliente %1 il %2")
                         .arg(core::formatCurrency(scorta.prezzoVendita), core::formatDate(scorta.dataVendita)));
    return parts.join(u" · "_s);
}

void DocumentStockLine::showCurrent()
{
    const QList<DocumentRow> &rows = grid_.rowsModel().rows();
    const int row = grid_.selectedRow();
    QString codice = typed_;
    if (codice.isEmpty() && row >= 0 && row < rows.size() && rows[row].tipo == tipoRiga::articolo)
        codice = rows[row].codice;
    current_->setText(scorte_.contains(codice) ? textOf(codice) : QString());
}

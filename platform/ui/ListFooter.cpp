#include "platform/ui/ListFooter.h"

#include "platform/core/Format.h"
#include "platform/core/Translation.h"
#include "platform/ui/Controls.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

QString countText(int rows)
{
    if (rows == 0)
        return core::tr("Nessun risultato");
    return rows == 1 ? core::tr("1 riga") : core::tr("%1 righe").arg(core::formatNumber(rows, 0));
}

} // namespace

ListFooter::ListFooter(QAbstractItemModel &rows, QWidget *parent)
    : QWidget(parent)
    , rows_(rows)
    , count_(named(u"lblQuanteRighe"_s, new QLabel(this)))
    , hint_(named(u"lblElencoDaAggiornare"_s, new QLabel(this)))
{
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(2, 0, 2, 0);
    line->addWidget(count_);
    line->addStretch();
    line->addWidget(hint_);
    hint_->setForegroundRole(QPalette::PlaceholderText);
    connect(&rows, &QAbstractItemModel::modelReset, this, &ListFooter::count);
    connect(&rows, &QAbstractItemModel::rowsRemoved, this, &ListFooter::count);
}

void ListFooter::searched()
{
    searched_ = true;
    setOutdated(false);
    count();
}

void ListFooter::failed()
{
    count_->clear();
    setOutdated(true);
}

void ListFooter::setOutdated(bool outdated)
{
    outdated_ = outdated;
    hint_->setText(outdated ? core::tr("Elenco da aggiornare (F5)") : QString());
}

void ListFooter::count()
{
    if (searched_)
        count_->setText(countText(rows_.rowCount()));
}

} // namespace ui

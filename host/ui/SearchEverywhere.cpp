#include "host/ui/SearchEverywhere.h"

#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Translation.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/EntryForm.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int restOfFingers = 150; // milliseconds
constexpr int pageOfLines = 10;
// A hit's place: its key, and its group's position.
constexpr int keyRole = Qt::UserRole;
constexpr int groupRole = Qt::UserRole + 1;

bool isEnough(const QString &text)
{
    const bool isNumber = !text.isEmpty() && text.front().isDigit();
    return text.size() >= (isNumber ? 1 : 2);
}

} // namespace

SearchEverywhere::SearchEverywhere(data::Connection &connection, QWidget *owner)
    : QDialog(owner)
    , connection_(connection)
    , field_(ui::named(u"txtCercaOvunque"_s, new ui::LineEdit(this)))
    , found_(new QTreeWidget(this))
    , state_(ui::named(u"lblTrovati"_s, new QLabel(this)))
{
    setObjectName(u"frmCercaOvunque"_s);
    setWindowTitle(core::tr("Cerca ovunque"));
    field_->setMaxLength(100);
    field_->setPlaceholderText(core::tr("Numero, nome, codice o parole di una riga, anche in parte"));
    field_->installEventFilter(this);
    createList();
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(field_);
    layout->addWidget(found_, 1);
    layout->addWidget(state_);
    resize(720, 520);
    sources_ = allowed();
    connect(field_, &QLineEdit::textChanged, this, [this] {
        askLater_.stop();
        restLater_.start();
    });
    ui::callAfter(restLater_, restOfFingers, this, &SearchEverywhere::start);
    ui::callAfter(askLater_, 0, this, &SearchEverywhere::askNext);
}

void SearchEverywhere::createList()
{
    found_->setObjectName(u"lstTrovati"_s);
    found_->setColumnCount(2);
    found_->setHeaderHidden(true);
    found_->setRootIsDecorated(false);
    found_->setUniformRowHeights(true);
    found_->setFocusPolicy(Qt::NoFocus);
    found_->header()->setStretchLastSection(true);
    found_->setColumnWidth(0, 330);
    connect(found_, &QTreeWidget::itemClicked, this, [this](const QTreeWidgetItem *item) { choose(item); });
}

QList<SearchSource> SearchEverywhere::allowed() const
{
    QList<SearchSource> sources = startOffers().searches;
    sources.removeIf([this](const SearchSource &source) {
        return !source.right.isEmpty() && !userHasRight(GetKxCurrentUserName(), source.right, connection_);
    });
    std::stable_sort(sources.begin(), sources.end(),
                     [](const SearchSource &a, const SearchSource &b) { return !a.isSlow && b.isSlow; });
    return sources;
}

void SearchEverywhere::start()
{
    found_->clear();
    more_ = nullptr;
    groups_.clear();
    waiting_.clear();
    state_->clear();
    if (!isEnough(field_->text().trimmed()))
        return;
    for (const SearchSource &source : std::as_const(sources_)) {
        waiting_.append(groups_.size());
        groups_.append({source, {}, nullptr});
    }
    state_->setText(core::tr("Ricerca in corso…"));
    askLater_.start();
}

void SearchEverywhere::goOn()
{
    delete std::exchange(more_, nullptr);
    for (qsizetype i = 0; i < groups_.size(); ++i) {
        groups_[i].hits = 0;
        if (groups_[i].next.isValid())
            waiting_.append(i);
    }
    state_->setText(core::tr("Ricerca nei documenti meno recenti…"));
    askLater_.start();
}

// A source that has older records and not yet enough results is asked again once the user wants that.
void SearchEverywhere::askNext()
{
    if (waiting_.isEmpty()) {
        finish();
        return;
    }
    const qsizetype position = waiting_.takeFirst();
    Group &group = groups_[position];
    const bool further = group.next.isValid();
    try {
        const SearchPart part = group.source.find(field_->text().trimmed(), group.next);
        group.next = part.next;
        show(position, part.hits);
        if (further && group.next.isValid() && group.hits < searchHits)
            waiting_.append(position);
    } catch (const std::exception &error) {
        core::logError(u"ricerca in "_s + group.source.caption, error);
        group.next = {};
        state_->setText(u"%1: %2"_s.arg(group.source.caption, core::errorText(error)));
    }
    askLater_.start();
}

void SearchEverywhere::show(qsizetype position, const QList<SearchHit> &hits)
{
    Group &group = groups_[position];
    if (hits.isEmpty())
        return;
    if (!group.item) {
        group.item = new QTreeWidgetItem(found_, {group.source.caption});
        QFont bold = font();
        bold.setBold(true);
        group.item->setFont(0, bold);
        group.item->setFlags(Qt::ItemIsEnabled);
        group.item->setFirstColumnSpanned(true);
    }
    for (const SearchHit &hit : hits) {
        auto *item = new QTreeWidgetItem(group.item, {hit.text, hit.detail});
        item->setData(0, keyRole, hit.key);
        item->setData(0, groupRole, position);
        item->setToolTip(1, hit.detail);
        if (!found_->currentItem())
            found_->setCurrentItem(item);
    }
    group.item->setExpanded(true);
    group.hits += static_cast<int>(hits.size());
}

void SearchEverywhere::finish()
{
    int count = 0;
    bool older = false;
    for (const Group &group : std::as_const(groups_)) {
        count += group.item ? group.item->childCount() : 0;
        older = older || group.next.isValid();
    }
    state_->setText(count == 0   ? core::tr("Nessun risultato")
                    : count == 1 ? core::tr("1 risultato")
                                 : core::tr("%1 risultati").arg(count));
    if (!older)
        return;
    more_ = new QTreeWidgetItem(found_, {core::tr("Cerca anche nei documenti meno recenti")});
    more_->setFirstColumnSpanned(true);
    if (!found_->currentItem())
        found_->setCurrentItem(more_);
}

// Over the groups' captions.
void SearchEverywhere::step(int by)
{
    QTreeWidgetItem *item = found_->currentItem();
    for (int left = std::abs(by); item && left > 0;) {
        QTreeWidgetItem *next = by > 0 ? found_->itemBelow(item) : found_->itemAbove(item);
        if (!next)
            break;
        item = next;
        if (item->flags().testFlag(Qt::ItemIsSelectable)) {
            found_->setCurrentItem(item);
            --left;
        }
    }
}

void SearchEverywhere::choose(const QTreeWidgetItem *item)
{
    if (!item || !item->flags().testFlag(Qt::ItemIsSelectable))
        return;
    if (item == more_) {
        goOn();
        return;
    }
    action_ = groups_[item->data(0, groupRole).toInt()].source.action;
    key_ = item->data(0, keyRole).toInt();
    accept();
}

bool SearchEverywhere::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    static const QHash<int, int> steps = {
        {Qt::Key_Down, 1}, {Qt::Key_Up, -1}, {Qt::Key_PageDown, pageOfLines}, {Qt::Key_PageUp, -pageOfLines}};
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (steps.contains(key)) {
        step(steps[key]);
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QDialog::eventFilter(watched, event);
    // Typed faster than the fingers' rest: what stands there is looked for first.
    if (restLater_.isActive()) {
        restLater_.stop();
        start();
    } else {
        choose(found_->currentItem());
    }
    return true;
}

void searchEverywhere(QWidget *owner, data::Connection &connection)
{
    SearchEverywhere dialog(connection, owner);
    if (ui::runModal(dialog) != QDialog::Accepted)
        return;
    if (auto *registry = ui::CommandRegistry::having(dialog.action()))
        registry->entryForm(dialog.action()).openRecord(dialog.key());
}

} // namespace host

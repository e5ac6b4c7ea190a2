#include "host/ui/StartPage.h"

#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "platform/core/Clock.h"
#include "platform/core/Lists.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/ReadApart.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/ProgressDialog.h"

#include <QApplication>
#include <QChildEvent>
#include <QCommandLinkButton>
#include <QMdiSubWindow>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int recentRecords = 10;
constexpr int restBeforeCounting = 1500; // milliseconds

void clear(QVBoxLayout &layout)
{
    while (const QLayoutItem *item = layout.takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

// What fails here is no reason to disturb somebody who is about to begin.
void quietly(const std::function<void()> &body)
{
    try {
        body();
    } catch (const std::exception &error) {
        core::logError(u"pagina iniziale"_s, error);
    }
}

} // namespace

StartPage::StartPage(QMdiArea &area, data::Connection &connection)
    : QScrollArea(area.viewport())
    , area_(area)
    , connection_(&connection)
{
    setObjectName(u"pagInizio"_s);
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    // It hands the focus on to its first command; Tab must find no page between the last entry and the first one.
    setFocusPolicy(Qt::NoFocus);
    createPage();
    ui::callAfter(appearLater_, 0, this, &StartPage::appear);
    ui::callAfter(readLater_, 0, this, &StartPage::refresh);
    ui::callAfter(countLater_, restBeforeCounting, this, &StartPage::countQuickOnes);
    area.viewport()->installEventFilter(this);
    area.window()->installEventFilter(this);
    setGeometry(area.viewport()->rect());
    lower();
}

void StartPage::createPage()
{
    auto *page = new QWidget(this);
    auto *columns = new QHBoxLayout(page);
    columns->setContentsMargins(16, 12, 16, 12);
    columns->setSpacing(16);
    auto *left = new QVBoxLayout;
    auto *right = new QVBoxLayout;
    columns->addLayout(left, 2);
    columns->addLayout(right, 3);

    commands_ = new QVBoxLayout(box(u"grpInizia"_s, core::tr("Che cosa si fa")));
    commands_->setSpacing(0);
    left->addWidget(commands_->parentWidget());
    stepsBox_ = box(u"grpPrimiPassi"_s, core::tr("Per cominciare"));
    steps_ = new QVBoxLayout(stepsBox_);
    steps_->setSpacing(0);
    left->addWidget(stepsBox_);
    QGroupBox *eye = box(u"grpDaVedere"_s, core::tr("Da tenere d'occhio"));
    auto *lines = new QVBoxLayout(eye);
    lines->setSpacing(0);
    figures_ = new QVBoxLayout;
    lines->addLayout(figures_);
    backup_ = link(u"cmdUltimaCopia"_s, eye);
    backup_->hide();
    lines->addWidget(backup_);
    left->addWidget(eye);
    left->addStretch();

    QGroupBox *last = box(u"grpUltimiDocumenti"_s, core::tr("Ultimi documenti"));
    using Column = ui::ListColumn;
    recent_ = new ui::ResultGrid(u"CHIAVE"_s,
                                 {{core::tr("Documento"), u"DOCUMENTO"_s, 175},
                                  {u"N."_s, u"NUMERO"_s, 80},
                                  {u"Data"_s, u"DATA"_s, 85, Column::Width::Pixels, Column::Display::Date},
                                  {core::tr("Cliente o fornitore"), u"NOME"_s, 0, Column::Width::Rest}},
                                 last);
    recent_->setObjectName(u"gridUltimiDocumenti"_s);
    recent_->setTabKeyNavigation(false);
    connect(recent_, &ui::ResultGrid::chosen, this, &StartPage::openRecent);
    connect(recent_, &QTableView::clicked, this, &StartPage::openRecent);
    (new QVBoxLayout(last))->addWidget(recent_);
    right->addWidget(last, 1);
    setWidget(page);
}

QGroupBox *StartPage::box(const QString &name, const QString &title)
{
    auto *made = ui::named(name, new QGroupBox(title, this));
    return made;
}

QPushButton *StartPage::link(const QString &name, QWidget *parent)
{
    auto *button = ui::named(name, new QPushButton(parent));
    button->setFlat(true);
    button->setAutoDefault(true);
    button->setStyleSheet(u"text-align: left; padding: 4px; color: palette(link)"_s);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

void StartPage::showBackup(const std::function<QString()> &age, QAction *make)
{
    backupAge_ = age;
    backup_->show();
    connect(backup_, &QPushButton::clicked, make, &QAction::trigger);
}

bool StartPage::eventFilter(QObject *watched, QEvent *event)
{
    const auto type = event->type();
    if (watched == area_.viewport()) {
        if (type == QEvent::Resize)
            setGeometry(area_.viewport()->rect());
        else if (type == QEvent::ChildAdded)
            static_cast<QChildEvent *>(event)->child()->installEventFilter(this);
    } else if (watched == area_.window()) {
        // A box or dialog over the page has gone.
        if (type == QEvent::WindowActivate && isVisible())
            readLater_.start();
    } else if (type == QEvent::ShowToParent || type == QEvent::HideToParent || type == QEvent::Destroy) {
        followWindows();
    }
    return QScrollArea::eventFilter(watched, event);
}

bool StartPage::isAlone() const
{
    const QList<QMdiSubWindow *> windows = area_.subWindowList();
    return std::all_of(windows.begin(), windows.end(), [](const QMdiSubWindow *window) { return window->isHidden(); });
}

// A window hides for a moment, too, while it becomes a tab, so the page waits before it appears.
void StartPage::followWindows()
{
    if (!isAlone())
        hide();
    else if (isHidden())
        appearLater_.start();
}

void StartPage::appear()
{
    if (!isAlone())
        return;
    show();
    setFocus();
}

void StartPage::showEvent(QShowEvent *event)
{
    QScrollArea::showEvent(event);
    readLater_.start();
}

void StartPage::focusInEvent(QFocusEvent *event)
{
    QScrollArea::focusInEvent(event);
    focusFirst();
}

// The page itself has nothing to type into.
void StartPage::focusFirst()
{
    if (commands_->count() > 0 && commands_->itemAt(0)->widget())
        commands_->itemAt(0)->widget()->setFocus();
}

// While a dialog is open the database may be closed for a backup.
bool StartPage::mayRead() const
{
    return isVisible() && !QApplication::activeModalWidget() && connection_ && connection_->isOpen() &&
           !connection_->inTransaction();
}

void StartPage::refresh()
{
    if (!mayRead())
        return;
    quietly([this] { readOffers(); });
    countLater_.start();
}

bool StartPage::holds(const QString &right) const
{
    return right.isEmpty() || userHasRight(GetKxCurrentUserName(), right, *connection_);
}

void StartPage::readOffers()
{
    StartOffer offers = startOffers();
    QHash<QString, bool> held; // each right is asked for once
    const auto isRefused = [&](const QString &right) {
        if (!held.contains(right))
            held.insert(right, holds(right));
        return !held.value(right);
    };
    offers.commands.removeIf([&](const StartCommand &command) {
        return std::any_of(command.rights.begin(), command.rights.end(), isRefused);
    });
    offers.recent.removeIf([&](const RecentSource &source) { return isRefused(source.right); });
    showCommands(offers.commands);
    showFigures(offers.figures);
    readRecent(offers);
    readSteps(offers);
    if (backupAge_)
        backup_->setText(backupAge_());
    orderTabs();
    if (hasFocus())
        focusFirst();
}

// From the top of the left side to the documents; what was made later would come last.
void StartPage::orderTabs()
{
    QList<QWidget *> chain;
    for (const QVBoxLayout *layout : {commands_, steps_}) {
        for (int i = 0; i < layout->count(); ++i)
            chain.append(layout->itemAt(i)->widget());
    }
    for (const Figure &figure : std::as_const(figuresShown_))
        chain += {figure.show, figure.count};
    chain += {backup_, recent_};
    for (qsizetype i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

void StartPage::showCommands(const QList<StartCommand> &commands)
{
    const QString names = core::mapped(commands, &StartCommand::action).join(u' ');
    if (std::exchange(commandsShown_, names) == names)
        return;
    clear(*commands_);
    for (const StartCommand &command : commands) {
        auto *button = new QCommandLinkButton(command.caption, command.hint, commands_->parentWidget());
        button->setObjectName(u"cmdInizio"_s + command.action.mid(3));
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, action = command.action] { run(action); });
        commands_->addWidget(button);
    }
}

void StartPage::showFigures(const QList<StartFigure> &figures)
{
    if (figuresShown_.size() == figures.size())
        return;
    clear(*figures_);
    figuresShown_.clear();
    for (const StartFigure &spec : figures) {
        auto *line = new QWidget(this);
        auto *layout = ui::withoutMargins<QHBoxLayout>(line);
        Figure figure{spec, link(spec.name, line), link(spec.name + u"Conta"_s, line)};
        figure.show->setText(spec.caption);
        figure.count->setText(core::tr("Conta ora"));
        layout->addWidget(figure.show, 1);
        layout->addWidget(figure.count);
        figures_->addWidget(line);
        const qsizetype position = figuresShown_.size();
        connect(figure.show, &QPushButton::clicked, this, [this, action = spec.action] { run(action); });
        connect(figure.count, &QPushButton::clicked, this,
                [this, position] { core::guarded(this, [this, position] { countApart(figuresShown_[position]); }); });
        figuresShown_.append(figure);
    }
}

void StartPage::countQuickOnes()
{
    if (!mayRead())
        return;
    for (const Figure &figure : std::as_const(figuresShown_)) {
        quietly([this, &figure] {
            if (figure.spec.isQuick())
                showCount(figure, connection_->run(figure.spec.query()));
        });
    }
}

// On many movements it takes so long that the user may want to give it up.
void StartPage::countApart(const Figure &figure)
{
    data::Rows counted;
    const auto read = [&counted, database = connection_->connectionString(),
                       query = figure.spec.query()](core::Progress &progress) {
        progress.setText(core::tr("Lettura dell'archivio…"));
        counted = data::readApart(database, query, progress);
    };
    ui::runInterruptibly(this, figure.spec.caption, read);
    showCount(figure, counted);
}

void StartPage::showCount(const Figure &figure, const data::Rows &counted)
{
    figure.show->setText(u"%1: %2"_s.arg(figure.spec.caption).arg(counted.values(0).value(0).toInt()));
    figure.count->setText(core::tr("contati alle %1").arg(core::now().toString(u"HH:mm"_s)));
    figure.count->setToolTip(core::tr("Conta di nuovo"));
}

void StartPage::readRecent(const StartOffer &offers)
{
    struct Found
    {
        RecentRecord record;
        QString action;
    };
    QList<Found> found;
    for (const RecentSource &source : offers.recent) {
        for (const RecentRecord &record : source.newest(recentRecords))
            found.append({record, source.action});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Found &a, const Found &b) { return a.record.date > b.record.date; });
    const QStringList names = {u"CHIAVE"_s, u"DOCUMENTO"_s, u"NUMERO"_s, u"DATA"_s, u"NOME"_s};
    QList<QVariantList> rows;
    recentRecords_.clear();
    for (const Found &one : found.mid(0, recentRecords)) {
        rows.append({rows.size() + 1, one.record.kind, one.record.number, one.record.date, one.record.counterpart});
        recentRecords_.append({one.action, one.record.key});
    }
    const int row = std::max(1, recent_->selectedKey());
    recent_->setRows(data::Rows(core::mapped(names, [](const QString &name) { return data::Column{name}; }), rows));
    recent_->selectKey(row);
}

// A firm with so many documents knows its way.
void StartPage::readSteps(const StartOffer &offers)
{
    QList<std::pair<FirstStep, bool>> steps;
    if (recentRecords_.size() < recentRecords) {
        for (const FirstStep &step : offers.steps)
            steps.append({step, step.isDone()});
    }
    const bool isNew = std::any_of(steps.begin(), steps.end(), [](const auto &step) { return !step.second; });
    stepsBox_->setVisible(isNew);
    if (isNew)
        showSteps(steps);
}

void StartPage::showSteps(const QList<std::pair<FirstStep, bool>> &steps)
{
    if (steps_->count() != steps.size()) {
        clear(*steps_);
        for (const auto &[step, done] : steps) {
            QPushButton *button = link(u"cmdPasso"_s + step.action.mid(3), stepsBox_);
            connect(button, &QPushButton::clicked, this, [this, action = step.action] { run(action); });
            steps_->addWidget(button);
        }
    }
    for (qsizetype i = 0; i < steps.size(); ++i) {
        auto *button = qobject_cast<QPushButton *>(steps_->itemAt(static_cast<int>(i))->widget());
        button->setText((steps[i].second ? u"☑  "_s : u"☐  "_s) + steps[i].first.caption);
    }
}

void StartPage::run(const QString &action)
{
    core::guarded(this, [&action] {
        auto *registry = ui::CommandRegistry::having(action);
        if (!registry)
            return;
        auto *entry = qobject_cast<ui::EntryForm *>(registry->openForm(action));
        // What is still being typed there is what one wants to go on with.
        if (entry && entry->NewRecord() && !entry->holdsUnsaved())
            entry->startNewAsking();
    });
}

void StartPage::openRecent()
{
    const int row = recent_->selectedKey() - 1;
    if (row < 0 || row >= recentRecords_.size())
        return;
    core::guarded(this, [record = recentRecords_[row]] {
        if (auto *registry = ui::CommandRegistry::having(record.first))
            registry->entryForm(record.first).openRecord(record.second);
    });
}

} // namespace host

#include "host/ui/MainWindow.h"

#include "host/help/AboutDialog.h"
#include "host/help/KeysWindow.h"
#include "host/help/ManualWindow.h"
#include "host/ui/ChildArea.h"
#include "platform/core/Messages.h"
#include "platform/core/Settings.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"
#include "platform/ui/ChildForm.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/MenuKeys.h"
#include "platform/ui/PlaceKeys.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace host {

namespace {

MainWindow *current = nullptr;

const QString geometryKey = u"finestra/geometria"_s;
const QString barsKey = u"finestra/barre"_s;
const QString arrangementGroup = u"finestre"_s;
const QString freeKey = u"/libere"_s;
const QString checkKey = u"finestra/controllo"_s;

// A damaged state of tool bars keeps Qt counting for hours, so what is restored must be what was written.
QString checkOf(const QByteArray &geometry, const QByteArray &bars)
{
    return core::sha256Text(geometry + bars);
}

struct MenuSpec
{
    QString name;
    QString caption;
};

} // namespace

MainWindow::MainWindow(const QString &settingsFile)
    : area_(new ChildArea(this))
    , userLabel_(new QLabel(this))
    , databaseLabel_(new QLabel(this))
    , settingsFile_(settingsFile)
{
    current = this;
    setObjectName(u"frmMain"_s);
    setWindowTitle(u"Corvane"_s);
    setMinimumSize(640, 400);
    setCentralWidget(area_);
    createMenus();
    createToolBars();
    statusBar()->addPermanentWidget(userLabel_);
    statusBar()->addPermanentWidget(databaseLabel_);
    statusBar()->addPermanentWidget(createArrangement());
    connect(area_, &QMdiArea::subWindowActivated, this, &MainWindow::childActivated);
    new ui::PlaceKeyFilter(this);
    new ui::MenuKeyFilter(this);
    restoreLayout();
}

MainWindow::~MainWindow()
{
    // Child windows go first: their menus must leave the menu bar while it still exists.
    disconnect(area_, nullptr, this, nullptr);
    delete area_;
    current = nullptr;
}

MainWindow *MainWindow::instance()
{
    return current;
}

QMdiArea &MainWindow::area() const
{
    return *area_;
}

void MainWindow::createMenus()
{
    QMenu *file = ui::named(u"mnFile"_s, menuBar()->addMenu(core::tr("&File")));
    QAction *quit = ui::named(u"actEsci"_s, file->addAction(core::tr("&Esci"), this, &QWidget::close));
    quit->setShortcut(QKeySequence(u"Ctrl+Q"_s));

    // The modules fill these; one that stays empty stays hidden.
    static const QList<MenuSpec> shared = {{u"mnDocumenti"_s, u"&Documenti"_s},
                                           {u"mnMagazzino"_s, u"&Magazzino"_s},
                                           {u"mnAnagrafiche"_s, u"&Anagrafiche"_s},
                                           {u"mnTabelle"_s, u"&Tabelle"_s},
                                           {u"mnStrumenti"_s, core::tr("&Strumenti")}};
    for (const MenuSpec &spec : shared) {
        QMenu *menu = ui::named(spec.name, menuBar()->addMenu(spec.caption));
        menu->menuAction()->setVisible(false);
    }

    windowMenu_ = ui::named(u"mnFinestre"_s, menuBar()->addMenu(core::tr("F&inestre")));
    connect(windowMenu_, &QMenu::aboutToShow, this, &MainWindow::listWindows);

    QMenu *help = ui::named(u"mnAiuto"_s, menuBar()->addMenu(u"&?"_s));
    QAction *manual = help->addAction(core::tr("&Manuale"), this, [this] { showManual(this); });
    manual->setObjectName(u"actManuale"_s);
    manual->setShortcut(QKeySequence(Qt::Key_F1));
    QAction *keys = ui::named(u"actTasti"_s, help->addAction(core::tr("&Tasti"), this, &MainWindow::showKeys));
    keys->setShortcut(QKeySequence(u"Shift+F1"_s));
    help->addAction(core::tr("&Informazioni su Corvane"), this, &MainWindow::about)
        ->setObjectName(u"actInformazioni"_s);
}

void MainWindow::createToolBars()
{
    static const QList<MenuSpec> bars = {{u"tBarDocumenti"_s, u"Documenti"_s},
                                         {u"tBarAnagrafiche"_s, u"Anagrafiche"_s}};
    for (const MenuSpec &spec : bars) {
        QToolBar *bar = ui::named(spec.name, addToolBar(spec.caption));
        bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        bar->setIconSize({20, 20});
        bar->hide();
        commonToolBars_.append(bar);
    }
}

QToolBar *MainWindow::commonToolBar(TKxCommonToolBars kind) const
{
    return commonToolBars_.value(static_cast<int>(kind));
}

void MainWindow::showChild(QWidget *form)
{
    area_->showChild(form);
}

void MainWindow::childActivated(QMdiSubWindow *window)
{
    auto *form = window ? qobject_cast<ui::ChildForm *>(window->widget()) : nullptr;
    QMenu *menu = form ? form->formMenu() : nullptr;
    if (menu == childMenu_)
        return;
    if (childMenu_)
        menuBar()->removeAction(childMenu_->menuAction());
    childMenu_ = menu;
    if (childMenu_) {
        menuBar()->insertMenu(windowMenu_->menuAction(), childMenu_);
        connect(childMenu_, &QObject::destroyed, this, [this, menu] {
            if (childMenu_ == menu)
                childMenu_ = nullptr;
        });
    }
}

// The arrangement is one press away whatever stands in the menus.
QToolButton *MainWindow::createArrangement()
{
    free_ = ui::named(u"actFinestreLibere"_s, new QAction(core::tr("&Finestre libere"), this));
    free_->setCheckable(true);
    free_->setToolTip(core::tr("Finestre libere nell'area di lavoro, invece di una scheda per ogni finestra"));
    connect(free_, &QAction::triggered, this, [this](bool free) {
        area_->setFree(free);
        core::guarded(this, [this] { keepArrangement(); });
    });
    auto *button = new QToolButton(this);
    button->setDefaultAction(free_);
    button->setAutoRaise(true);
    return button;
}

void MainWindow::keepArrangement()
{
    if (settingsFile_.isEmpty())
        return;
    core::changeSettings(settingsFile_, [this](QSettings &settings) {
        settings.setValue(core::userGroup(arrangementGroup, user_) + freeKey, area_->isFree() ? u"true"_s : u"false"_s);
    });
}

void MainWindow::restoreArrangement()
{
    const QSettings settings(settingsFile_, QSettings::IniFormat);
    const bool free =
        !settingsFile_.isEmpty() && settings.value(core::userGroup(arrangementGroup, user_) + freeKey).toBool();
    free_->setChecked(free);
    area_->setFree(free);
}

void MainWindow::listWindows()
{
    windowMenu_->clear();
    const auto arrange = [this](const QString &caption, void (QMdiArea::*how)()) {
        const QAction *action = windowMenu_->addAction(caption, this, [this] {
            if (!area_->isFree())
                free_->trigger();
        });
        // Behind it: tabs cannot be arranged.
        connect(action, &QAction::triggered, area_, how);
    };
    arrange(core::tr("&Sovrapponi"), &QMdiArea::cascadeSubWindows);
    arrange(core::tr("&Affianca"), &QMdiArea::tileSubWindows);
    windowMenu_->addAction(core::tr("&Chiudi tutte"), area_, &QMdiArea::closeAllSubWindows);
    windowMenu_->addAction(free_);
    windowMenu_->addSeparator();
    int number = 0;
    for (QMdiSubWindow *window : area_->subWindowList()) {
        if (!window->isVisible())
            continue;
        QAction *action =
            windowMenu_->addAction(u"&%1 %2"_s.arg(++number).arg(window->windowTitle().replace(u'&', u"&&"_s)));
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        connect(action, &QAction::triggered, window, [this, window] { area_->setActiveSubWindow(window); });
    }
}

void MainWindow::showSession(const QString &user, const QString &database)
{
    user_ = user;
    userLabel_->setText(core::tr("Utente: %1").arg(user));
    database_ = database;
    databaseLabel_->setText(core::tr("Database: %1").arg(database));
    setWindowTitle(u"Corvane - %1"_s.arg(user));
    restoreArrangement();
}

void MainWindow::switchTo(const Opening &database)
{
    next_ = database;
    if (!close())
        next_.reset();
}

// On a screen without room for the usual size and a frame around it the window takes all of the screen.
void MainWindow::fitScreen()
{
    constexpr QSize frame(16, 48);
    const QSize room = screen()->availableSize();
    if ((size() + frame).boundedTo(room) == size() + frame)
        return;
    resize(size().boundedTo(room - frame));
    setWindowState(Qt::WindowMaximized);
}

void MainWindow::restoreLayout()
{
    resize(1280, 800);
    if (settingsFile_.isEmpty())
        return;
    fitScreen();
    const QSettings settings(settingsFile_, QSettings::IniFormat);
    const QByteArray geometry = settings.value(geometryKey).toByteArray();
    const QByteArray bars = settings.value(barsKey).toByteArray();
    if (settings.value(checkKey).toString() != checkOf(geometry, bars))
        return;
    restoreGeometry(geometry);
    // Tool bars stay where the modules showed them; only their place is remembered.
    const QList<bool> shown = {commonToolBars_[0]->isHidden(), commonToolBars_[1]->isHidden()};
    restoreState(bars);
    for (int i = 0; i < commonToolBars_.size(); ++i)
        commonToolBars_[i]->setHidden(shown[i]);
}

bool MainWindow::closeChildren()
{
    const QList<QMdiSubWindow *> windows = area_->subWindowList(QMdiArea::StackingOrder);
    return std::all_of(windows.rbegin(), windows.rend(),
                       [](QMdiSubWindow *window) { return !window->isVisible() || window->close(); });
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!closeChildren()) {
        event->ignore();
        return;
    }
    // A full disk is told, and the window closes all the same.
    if (!settingsFile_.isEmpty())
        core::guarded(this, [this] { saveLayout(); });
    event->accept();
}

void MainWindow::saveLayout()
{
    const QByteArray geometry = saveGeometry();
    const QByteArray bars = saveState();
    core::changeSettings(settingsFile_, [&](QSettings &settings) {
        settings.setValue(geometryKey, geometry);
        settings.setValue(barsKey, bars);
        settings.setValue(checkKey, checkOf(geometry, bars));
    });
}

void MainWindow::showKeys()
{
    auto *window = findChild<KeysWindow *>(QString(), Qt::FindDirectChildrenOnly);
    if (!window)
        window = new KeysWindow(*this, *area_);
    window->show();
    window->raise();
    window->activateWindow();
}

void MainWindow::about()
{
    AboutDialog dialog(database_, this);
    ui::runModal(dialog);
}

} // namespace host

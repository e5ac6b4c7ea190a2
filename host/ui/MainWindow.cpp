#include "host/ui/MainWindow.h"

#include "host/IntfPack.h"
#include "platform/core/Messages.h"
#include "platform/core/Settings.h"
#include "platform/ui/ChildForm.h"

#include <QCloseEvent>
#include <QCryptographicHash>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QSettings>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace host {

namespace {

MainWindow *&current()
{
    static MainWindow *window = nullptr;
    return window;
}

// A closed carton; drawn here, so that no image file has to be found.
QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 16.0, size / 16.0);
        painter.setPen(QPen(QColor(0x7a, 0x4a, 0x16), 0.8));
        painter.setBrush(QColor(0xd9, 0xa0, 0x5b));
        painter.drawRect(QRectF(1.5, 5.5, 13, 9));
        painter.setBrush(QColor(0xec, 0xc0, 0x85));
        painter.drawPolygon(QPolygonF({{1.5, 5.5}, {4, 1.5}, {12, 1.5}, {14.5, 5.5}}));
        painter.fillRect(QRectF(6.7, 1.5, 2.6, 7), QColor(0xf7, 0xe3, 0xc0));
        icon.addPixmap(pixmap);
    }
    return icon;
}

const QString geometryKey = u"finestra/geometria"_s;
const QString barsKey = u"finestra/barre"_s;
const QString checkKey = u"finestra/controllo"_s;

// A damaged state of tool bars keeps Qt counting for hours, so what is restored must be what was written.
QString checkOf(const QByteArray &geometry, const QByteArray &bars)
{
    return QString::fromLatin1(QCryptographicHash::hash(geometry + bars, QCryptographicHash::Sha256).toHex());
}

struct MenuSpec
{
    QString name;
    QString caption;
};

} // namespace

MainWindow::MainWindow(const QString &settingsFile)
    : area_(new QMdiArea(this))
    , userLabel_(new QLabel(this))
    , databaseLabel_(new QLabel(this))
    , settingsFile_(settingsFile)
{
    current() = this;
    setObjectName(u"frmMain"_s);
    setWindowTitle(u"Corvane"_s);
    setWindowIcon(programIcon());
    setMinimumSize(640, 400);
    // A window that closes leaves the place to the one that was used before it.
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setBackground(palette().color(QPalette::Mid));
    setCentralWidget(area_);
    createMenus();
    createToolBars();
    statusBar()->addPermanentWidget(userLabel_);
    statusBar()->addPermanentWidget(databaseLabel_);
    connect(area_, &QMdiArea::subWindowActivated, this, &MainWindow::childActivated);
    restoreLayout();
}

MainWindow::~MainWindow()
{
    // Child windows go first: their menus must leave the menu bar while it still exists.
    disconnect(area_, nullptr, this, nullptr);
    delete area_;
    current() = nullptr;
}

MainWindow *MainWindow::instance()
{
    return current();
}

void MainWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(u"&File"_s);
    file->setObjectName(u"mnFile"_s);
    QAction *quit = file->addAction(u"&Esci"_s, this, &QWidget::close);
    quit->setObjectName(u"actEsci"_s);
    quit->setShortcut(QKeySequence(u"Ctrl+Q"_s));

    // The modules fill these; one that stays empty stays hidden.
    static const QList<MenuSpec> shared = {{u"mnDocumenti"_s, u"&Documenti"_s},
                                           {u"mnMagazzino"_s, u"&Magazzino"_s},
                                           {u"mnAnagrafiche"_s, u"&Anagrafiche"_s},
                                           {u"mnTabelle"_s, u"&Tabelle"_s},
                                           {u"mnStrumenti"_s, u"&Strumenti"_s}};
    for (const MenuSpec &spec : shared) {
        QMenu *menu = menuBar()->addMenu(spec.caption);
        menu->setObjectName(spec.name);
        menu->menuAction()->setVisible(false);
    }

    windowMenu_ = menuBar()->addMenu(u"F&inestre"_s);
    windowMenu_->setObjectName(u"mnFinestre"_s);
    connect(windowMenu_, &QMenu::aboutToShow, this, &MainWindow::listWindows);

    QMenu *help = menuBar()->addMenu(u"&?"_s);
    help->setObjectName(u"mnAiuto"_s);
    help->addAction(u"&Informazioni su Corvane"_s, this, &MainWindow::about)->setObjectName(u"actInformazioni"_s);
}

void MainWindow::createToolBars()
{
    static const QList<MenuSpec> bars = {{u"tBarDocumenti"_s, u"Documenti"_s},
                                         {u"tBarAnagrafiche"_s, u"Anagrafiche"_s}};
    for (const MenuSpec &spec : bars) {
        QToolBar *bar = addToolBar(spec.caption);
        bar->setObjectName(spec.name);
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
    auto *window = qobject_cast<QMdiSubWindow *>(form->parentWidget());
    if (!window) {
        const QSize wanted = form->sizeHint();
        window = area_->addSubWindow(form);
        window->setAttribute(Qt::WA_DeleteOnClose, form->testAttribute(Qt::WA_DeleteOnClose));
        window->setWindowIcon(windowIcon());
        window->installEventFilter(this);
        // Room for the frame, and never larger than the area that is there.
        const QSize frame = window->size() - window->contentsRect().size();
        window->resize((wanted + frame).boundedTo(area_->viewport()->size()));
    }
    form->show();
    window->show();
    if (window->isMinimized())
        window->showNormal();
    area_->setActiveSubWindow(window);
    window->raise();
    form->setFocus();
}

// The area looks for the next window when one goes, not when one hides.
bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    const auto *window = qobject_cast<QMdiSubWindow *>(watched);
    if (window && event->type() == QEvent::Hide && window->isHidden())
        activateLastUsed();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::activateLastUsed()
{
    const QList<QMdiSubWindow *> used = area_->subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto last =
        std::find_if(used.rbegin(), used.rend(), [](const QMdiSubWindow *window) { return window->isVisible(); });
    if (last != used.rend())
        area_->setActiveSubWindow(*last);
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

void MainWindow::listWindows()
{
    windowMenu_->clear();
    windowMenu_->addAction(u"&Sovrapponi"_s, area_, &QMdiArea::cascadeSubWindows);
    windowMenu_->addAction(u"&Affianca"_s, area_, &QMdiArea::tileSubWindows);
    windowMenu_->addAction(u"&Chiudi tutte"_s, area_, &QMdiArea::closeAllSubWindows);
    windowMenu_->addSeparator();
    int number = 0;
    const QList<QMdiSubWindow *> windows = area_->subWindowList();
    for (QMdiSubWindow *window : windows) {
        if (!window->isVisible())
            continue;
        QAction *action = windowMenu_->addAction(u"&%1 %2"_s.arg(++number).arg(window->windowTitle()));
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        connect(action, &QAction::triggered, window, [this, window] { area_->setActiveSubWindow(window); });
    }
}

void MainWindow::showSession(const QString &user, const QString &database)
{
    userLabel_->setText(u"Utente: %1"_s.arg(user));
    databaseLabel_->setText(u"Database: %1"_s.arg(database));
    setWindowTitle(u"Corvane - %1"_s.arg(user));
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

void MainWindow::closeEvent(QCloseEvent *event)
{
    const QList<QMdiSubWindow *> windows = area_->subWindowList(QMdiArea::StackingOrder);
    for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
        if ((*it)->isVisible() && !(*it)->close()) {
            event->ignore(); // a form with unsaved changes was kept open
            return;
        }
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

void MainWindow::about()
{
    QStringList modules;
    for (int i = 0; i < GetPackageCount(); ++i)
        modules.append(GetPackage(i).displayName);
    core::inform(this, u"Corvane, gestione aziendale\n\rModuli caricati: %1"_s.arg(modules.join(u", "_s)));
}

} // namespace host

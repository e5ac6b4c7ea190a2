#include "host/ui/PreviewWindow.h"

#include "platform/core/Translation.h"
#include "platform/report/Output.h"
#include "platform/ui/Dialogs.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int border = 12; // around the page, pixels
constexpr double mmPerInch = 25.4;
const QList<int> zoomSteps = {25, 50, 75, 100, 125, 150, 200, 300, 400};

} // namespace

PageView::PageView(std::shared_ptr<const report::Document> document, QWidget *parent)
    : QWidget(parent)
    , document_(std::move(document))
{
    showPage(0);
}

void PageView::showPage(int index, const QString &copy)
{
    page_ = document_->page(index, copy);
    update();
}

void PageView::setDotsPerMm(double dots)
{
    dotsPerMm_ = dots;
    const QSizeF size = document_->pageSize() * dots;
    setFixedSize(size.toSize() + QSize(2 * border, 2 * border));
    update();
}

void PageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QRectF paper(QPointF(border, border), document_->pageSize() * dotsPerMm_);
    painter.fillRect(paper.translated(3, 3), QColor(0, 0, 0, 60));
    painter.fillRect(paper, Qt::white);
    painter.setClipRect(paper);
    painter.translate(paper.topLeft());
    report::paintPage(painter, page_, document_->fonts(), dotsPerMm_);
}

PreviewWindow::PreviewWindow(report::ReportSystem &system, QWidget *parent)
    : ChildForm(core::tr("Anteprima - %1").arg(system.document()->title()), core::tr(">Anteprima<"), parent)
    , system_(&system)
    , document_(system.document())
    , subject_(system.subject)
    , view_(new PageView(document_, this))
    , scroll_(new QScrollArea(this))
{
    setObjectName(u"frmAnteprima"_s);
    setOpeningSize({900, 700});
    declareCommands();

    scroll_->setWidget(view_);
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setBackgroundRole(QPalette::Mid);
    scroll_->viewport()->installEventFilter(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 4);
    layout->addWidget(createToolBar());
    createRemarks();
    layout->addWidget(remarksButton_);
    layout->addWidget(remarksList_);
    layout->addWidget(scroll_, 1);
    setMinimumSize(480, 320);
    setFocusProxy(scroll_);
    showRemarks(subject_.remarks);
    offerCopies();
    goToPage(0);
    setZoom(Fit::Width);
}

void PreviewWindow::declareCommands()
{
    using ui::Icon;
    const auto key = [](const QString &text) { return QKeySequence(text); };
    const QList<ui::Command> commands = {
        {u"actStampa"_s, core::tr("Stampa..."), [this] { printPages(); }, Icon::Print, key(u"Ctrl+P"_s)},
        {u"actSalvaPDF"_s, core::tr("Salva in PDF..."), [this] { savePdf(); }, Icon::Pdf, key(u"Ctrl+S"_s)},
        {u"actPrimaPagina"_s, core::tr("Prima pagina"), [this] { goToPage(0); }, Icon::Up, key(u"Ctrl+Home"_s)},
        {u"actPaginaPrecedente"_s, core::tr("Pagina precedente"), [this] { goToPage(page_ - 1); }, Icon::Up,
         key(u"Ctrl+PgUp"_s)},
        {u"actPaginaSuccessiva"_s, core::tr("Pagina successiva"), [this] { goToPage(page_ + 1); }, Icon::Down,
         key(u"Ctrl+PgDown"_s)},
        {u"actUltimaPagina"_s, core::tr("Ultima pagina"), [this] { goToPage(document_->pageCount() - 1); }, Icon::Down,
         key(u"Ctrl+End"_s)},
        {u"actIngrandisci"_s, core::tr("Ingrandisci"), [this] { stepZoom(1); }, Icon::Search, key(u"Ctrl++"_s)},
        {u"actRiduci"_s, core::tr("Riduci"), [this] { stepZoom(-1); }, Icon::Search, key(u"Ctrl+-"_s)},
        {u"actAdattaLarghezza"_s, core::tr("Larghezza pagina"), [this] { setZoom(Fit::Width); }, Icon::FitWidth},
        {u"actPaginaIntera"_s, core::tr("Pagina intera"), [this] { setZoom(Fit::Page); }, Icon::FitPage},
        {u"actChiudi"_s, u"Chiudi"_s, [this] { closeForm(); }, Icon::Close, key(u"Ctrl+W"_s)},
    };
    for (const ui::Command &command : commands)
        addCommand(command);
}

QToolBar *PreviewWindow::createToolBar()
{
    QToolBar *bar = newToolBar(u"tBarAnteprima"_s);
    placeCommands(bar, {u"actStampa"_s, u"actSalvaPDF"_s, {}});
    createCopies(bar);
    // Steps are small signs around what they change; their names are in the menu.
    const auto addStep = [this, bar](const QString &name, const QString &symbol) {
        auto *button = new QPushButton(symbol, bar);
        QAction *action = command(name);
        button->setObjectName(u"cmd"_s + name.mid(3));
        button->setToolTip(action->toolTip());
        button->setFlat(true);
        button->setAutoDefault(false);
        button->setFixedWidth(28);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
        bar->addWidget(button);
        formMenu()->addAction(action);
    };
    addStep(u"actPrimaPagina"_s, u"«"_s);
    addStep(u"actPaginaPrecedente"_s, u"‹"_s);
    pageEdit_ = ui::named(u"txtPagina"_s, new QSpinBox(bar));
    countPages();
    pageEdit_->setKeyboardTracking(false);
    pageEdit_->setToolTip(core::tr("Pagina da mostrare"));
    connect(pageEdit_, &QSpinBox::valueChanged, this, [this](int number) { goToPage(number - 1); });
    bar->addWidget(pageEdit_);
    addStep(u"actPaginaSuccessiva"_s, u"›"_s);
    addStep(u"actUltimaPagina"_s, u"»"_s);
    bar->addSeparator();
    formMenu()->addSeparator();
    addStep(u"actRiduci"_s, u"−"_s);
    zoomLabel_ = ui::named(u"lblZoom"_s, new QLabel(bar));
    zoomLabel_->setMinimumWidth(fontMetrics().horizontalAdvance(u" 400% "_s));
    zoomLabel_->setAlignment(Qt::AlignCenter);
    bar->addWidget(zoomLabel_);
    addStep(u"actIngrandisci"_s, u"+"_s);
    placeCommands(bar, {u"actAdattaLarghezza"_s, u"actPaginaIntera"_s, {}, u"actChiudi"_s});
    return bar;
}

// There only where several are printed: all of them, or one by its label.
void PreviewWindow::createCopies(QToolBar *bar)
{
    copies_ = ui::named(u"cmbCopie"_s, new ui::ComboBox(bar));
    copies_->setAccessibleName(core::tr("Copie"));
    copies_->setToolTip(core::tr("Quali copie si stampano; la pagina mostra la loro dicitura"));
    copiesPlace_ = bar->addWidget(copies_);
    connect(copies_, &QComboBox::currentIndexChanged, this, [this] { goToPage(page_); });
}

void PreviewWindow::offerCopies()
{
    const QSignalBlocker quiet(copies_);
    const QStringList &labels = subject_.copies;
    copies_->clear();
    copies_->addItem(core::tr("Tutte le %1 copie").arg(labels.size()));
    for (qsizetype i = 0; i < labels.size(); ++i)
        copies_->addItem(labels[i].isEmpty() ? core::tr("Copia %1").arg(i + 1) : labels[i]);
    copiesPlace_->setVisible(labels.size() > 1);
}

report::Subject PreviewWindow::chosen() const
{
    report::Subject chosen = subject_;
    if (copies_->currentIndex() > 0)
        chosen.copies = {subject_.copies.value(copies_->currentIndex() - 1)};
    return chosen;
}

// A line that says how many there are; what they say comes up when it is pressed.
void PreviewWindow::createRemarks()
{
    remarksButton_ = ui::named(u"cmdRilievi"_s, new QToolButton(this));
    remarksButton_->setCheckable(true);
    remarksButton_->setAutoRaise(true);
    remarksButton_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    remarksButton_->setFocusPolicy(Qt::TabFocus);
    remarksButton_->setToolTip(core::tr("Che cosa manca o non torna in questo documento"));
    remarksList_ = ui::named(u"lstRilievi"_s, new QListWidget(this));
    remarksList_->setWordWrap(true);
    remarksList_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    remarksList_->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    remarksList_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    constexpr int lines = 6;
    remarksList_->setMaximumHeight(lines * fontMetrics().lineSpacing() + 2 * remarksList_->frameWidth());
    connect(remarksButton_, &QToolButton::toggled, this, [this](bool open) {
        remarksButton_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
        remarksList_->setVisible(open);
    });
}

void PreviewWindow::showRemarks(const QStringList &remarks)
{
    const qsizetype count = remarks.size();
    remarksList_->clear();
    remarksList_->addItems(remarks);
    remarksButton_->setText(count == 1 ? core::tr("1 rilievo su questo documento")
                                       : core::tr("%1 rilievi su questo documento").arg(count));
    remarksButton_->setArrowType(Qt::RightArrow);
    remarksButton_->setChecked(false);
    remarksButton_->setVisible(count > 0);
    remarksList_->hide();
}

void PreviewWindow::countPages()
{
    const QSignalBlocker quiet(pageEdit_);
    pageEdit_->setRange(1, document_->pageCount());
    pageEdit_->setSuffix(core::tr(" di %1").arg(document_->pageCount()));
}

void PreviewWindow::showDocument(const report::ReportSystem &system)
{
    document_ = system.document();
    subject_ = system.subject;
    setWindowTitle(core::tr("Anteprima - %1").arg(document_->title()));
    view_->setDocument(document_);
    showRemarks(subject_.remarks);
    offerCopies();
    countPages();
    goToPage(page_);
    applyZoom();
}

void PreviewWindow::goToPage(int index)
{
    page_ = std::clamp(index, 0, document_->pageCount() - 1);
    view_->showPage(page_, chosen().copies.value(0));
    scroll_->verticalScrollBar()->setValue(0);
    const QSignalBlocker quiet(pageEdit_);
    pageEdit_->setValue(page_ + 1);
    for (const QString &name : {u"actPrimaPagina"_s, u"actPaginaPrecedente"_s})
        command(name)->setEnabled(page_ > 0);
    for (const QString &name : {u"actPaginaSuccessiva"_s, u"actUltimaPagina"_s})
        command(name)->setEnabled(page_ < document_->pageCount() - 1);
}

void PreviewWindow::setZoom(Fit fit, int percent)
{
    fit_ = fit;
    percent_ = std::clamp(percent, zoomSteps.first(), zoomSteps.last());
    applyZoom();
}

void PreviewWindow::stepZoom(int direction)
{
    const auto larger = std::find_if(zoomSteps.begin(), zoomSteps.end(), [this](int step) { return step > percent_; });
    if (direction > 0) {
        setZoom(Fit::None, larger == zoomSteps.end() ? zoomSteps.last() : *larger);
        return;
    }
    const auto smaller =
        std::find_if(zoomSteps.rbegin(), zoomSteps.rend(), [this](int step) { return step < percent_; });
    setZoom(Fit::None, smaller == zoomSteps.rend() ? zoomSteps.first() : *smaller);
}

void PreviewWindow::applyZoom()
{
    const double dotsAtFullSize = logicalDpiX() / mmPerInch;
    if (fit_ != Fit::None) {
        const QSizeF paper = document_->pageSize() * dotsAtFullSize;
        const QSize room = scroll_->maximumViewportSize() - QSize(2 * border, 2 * border);
        const int scrollBar = fit_ == Fit::Width ? scroll_->verticalScrollBar()->sizeHint().width() : 0;
        double factor = (room.width() - scrollBar) / paper.width();
        if (fit_ == Fit::Page)
            factor = std::min(factor, room.height() / paper.height());
        percent_ = std::clamp(static_cast<int>(factor * 100), zoomSteps.first(), zoomSteps.last());
    }
    view_->setDotsPerMm(dotsAtFullSize * percent_ / 100);
    zoomLabel_->setText(u"%1%"_s.arg(percent_));
}

void PreviewWindow::resizeEvent(QResizeEvent *event)
{
    ChildForm::resizeEvent(event);
    // The area inside gets its new size only after this.
    QMetaObject::invokeMethod(this, &PreviewWindow::applyZoom, Qt::QueuedConnection);
}

// The wheel zooms with Ctrl and turns the page at its end.
bool PreviewWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return ChildForm::eventFilter(watched, event);
    const auto *wheel = static_cast<QWheelEvent *>(event);
    const int direction = wheel->angleDelta().y() > 0 ? 1 : -1;
    if (wheel->modifiers() & Qt::ControlModifier) {
        stepZoom(direction);
        return true;
    }
    QScrollBar *bar = scroll_->verticalScrollBar();
    if (direction < 0 && bar->value() == bar->maximum() && page_ < document_->pageCount() - 1) {
        goToPage(page_ + 1);
        return true;
    }
    if (direction > 0 && bar->value() == bar->minimum() && page_ > 0) {
        goToPage(page_ - 1);
        bar->setValue(bar->maximum());
        return true;
    }
    return false;
}

void PreviewWindow::savePdf()
{
    if (!system_ || !system_->choosePdfFile)
        return;
    const QString file =
        system_->choosePdfFile(this, subject_.proposedName.isEmpty() ? document_->title() : subject_.proposedName);
    if (file.isEmpty())
        return;
    const ui::WaitCursor wait;
    // A file is one copy: the one that was chosen, or one without a label.
    system_->writeFile(*document_, file, copies_->currentIndex() > 0 ? chosen().copies.value(0) : QString());
    if (subject_.issued)
        subject_.issued(*document_);
}

void PreviewWindow::printPages()
{
    if (system_ && system_->allowSetup && system_->overrideSetup)
        system_->overrideSetup(*system_, report::ShowWindow, this);
}

} // namespace host

#include "platform/ui/PickInput.h"

#include "platform/core/Lists.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Bell.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/Controls.h"

#include <QKeyEvent>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// What is looked through is read when the form stands, not while it opens.
constexpr int refreshDelay = 250; // ms
constexpr int inputCharacters = 10;
constexpr int inputFrame = 16;
constexpr int listWidth = 560;
constexpr int narrowListWidth = 300;

} // namespace

PickInput::PickInput(const PickSpec &spec, QWidget *parent)
    : LineEdit(parent)
    , spec_(spec)
{
    setObjectName(spec.name);
    setPlaceholderText(u"Cerca"_s);
    setToolTip(spec.hint + core::tr(" Invio prende la voce, F4 apre l'elenco."));
    const int width = fontMetrics().horizontalAdvance(QString(inputCharacters, u'0')) + inputFrame;
    setMinimumWidth(width / 2);
    setMaximumWidth(width);
    callAfter(refreshLater_, refreshDelay, this, [this] {
        try {
            spec_.source.refresh();
        } catch (const std::exception &error) {
            // Nobody has asked for anything yet; the first key tells.
            core::logError(u"elenco di un campo"_s, error);
        }
    });
    connect(this, &QLineEdit::textEdited, this, [this] {
        setPalette({});
        core::guarded(this, [this] { showOffers(); });
    });
}

OfferList &PickInput::list()
{
    if (list_)
        return *list_;
    const QList<OfferColumn> &columns = spec_.source.columns;
    list_ = new OfferList(columns, columns.size() > 1 ? listWidth : narrowListWidth, this);
    list_->setObjectName(spec_.name + u"Elenco"_s);
    connect(list_, &OfferList::picked, this, [this] {
        core::guarded(this, [this] {
            if (takeCurrent())
                Q_EMIT finished();
        });
    });
    return *list_;
}

void PickInput::hideList()
{
    if (list_)
        list_->hide();
}

void PickInput::focusInEvent(QFocusEvent *event)
{
    LineEdit::focusInEvent(event);
    refreshLater_.start();
}

void PickInput::focusOutEvent(QFocusEvent *event)
{
    LineEdit::focusOutEvent(event);
    hideList();
    // What was not taken is nothing; it must not look like a choice.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        clear();
        setPalette({});
    }
}

void PickInput::hideEvent(QHideEvent *event)
{
    LineEdit::hideEvent(event);
    hideList();
}

void PickInput::showOffers()
{
    refreshLater_.stop();
    spec_.source.refresh();
    offers_ = spec_.source.find(text());
    list().offerLines(core::mapped(offers_, &PickOffer::texts), *this);
}

bool PickInput::event(QEvent *event)
{
    bool taken = false;
    if (event->type() == QEvent::KeyPress)
        core::guarded(this, [&] { taken = takeKey(static_cast<QKeyEvent &>(*event)); });
    return taken || LineEdit::event(event);
}

bool PickInput::takeKey(const QKeyEvent &key)
{
    if (list_ && list_->handle(key.key()))
        return true;
    const bool empty = text().trimmed().isEmpty();
    switch (key.key()) {
    case Qt::Key_Down:
        showOffers();
        return true;
    case Qt::Key_Escape:
        hideList();
        clear();
        return !empty;
    case Qt::Key_F4:
        hideList();
        clear();
        spec_.choose();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentLine() >= 0 ? takeCurrent() : empty)
            Q_EMIT finished();
        else
            showRefusal();
        return true;
    case Qt::Key_Tab:
        if ((empty && (!list_ || list_->isHidden())) || takeCurrent())
            return false;
        showRefusal();
        return true;
    default:
        return false;
    }
}

bool PickInput::takeCurrent()
{
    const int line = currentLine();
    if (line < 0)
        return false;
    const PickOffer offer = offers_[line];
    hideList();
    clear();
    spec_.take(offer);
    return true;
}

void PickInput::showRefusal()
{
    ringBell();
    setPalette(refusedPalette(palette()));
    selectAll();
    QToolTip::showText(mapToGlobal(QPoint(0, height())), core::tr("Non trovato: %1").arg(text().trimmed()), this);
}

} // namespace ui

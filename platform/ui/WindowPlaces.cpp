#include "platform/ui/WindowPlaces.h"

#include "platform/core/Messages.h"
#include "platform/ui/UserSettings.h"

#include <QEvent>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

const QString kind = u"finestre"_s;
const QString placeKey = u"posto"_s;

class WindowPlace : public QObject
{
public:
    WindowPlace(QWidget *window, QString name)
        : QObject(window)
        , window_(window)
        , name_(std::move(name))
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show && !event->spontaneous())
            shown_ = window_->geometry();
        if (event->type() == QEvent::Hide && !event->spontaneous())
            core::guarded(window_, [this] { keep(); });
        return false;
    }

private:
    void keep()
    {
        const bool isFree = !(window_->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized));
        if (isFree && window_->geometry() != shown_)
            remember(kind, name_, {{placeKey, window_->geometry()}});
    }

    QWidget *window_;
    QString name_;
    QRect shown_;
};

QRect within(const QRect &room, QRect place)
{
    place.setSize(place.size().boundedTo(room.size()));
    place.moveLeft(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
    return place;
}

} // namespace

void keepPlace(QWidget *window, const QString &name)
{
    if (name.isEmpty())
        return;
    const QRect place = remembered(kind, name).value(placeKey).toRect();
    const QRect room = window->isWindow() ? window->screen()->availableGeometry() : window->parentWidget()->rect();
    if (place.isValid())
        window->setGeometry(within(room, place));
    new WindowPlace(window, name);
}

} // namespace ui

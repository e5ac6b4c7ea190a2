#pragma once
#include <QTimer>

namespace ui {

/// Makes `timer` call `slot` of `receiver` once, `milliseconds` after its last start(); with 0 when the event at hand
/// is over.
template <typename Receiver, typename Slot>
void callAfter(QTimer &timer, int milliseconds, Receiver *receiver, Slot slot)
{
    timer.setSingleShot(true);
    timer.setInterval(milliseconds);
    QObject::connect(&timer, &QTimer::timeout, receiver, slot);
}

} // namespace ui

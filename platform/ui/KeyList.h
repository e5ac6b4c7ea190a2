#pragma once
#include <QKeySequence>
#include <QList>

class QWidget;

namespace ui {

/// A key and what it does, as told to the user.
struct KeyUse
{
    QString caption;
    QKeySequence key;

    bool operator==(const KeyUse &) const = default;
};

/// The keys of `window`, as its commands, pages and fields in sight have them at this moment; those of child windows
/// inside it are left out.
QList<KeyUse> keysOf(const QWidget &window);

} // namespace ui

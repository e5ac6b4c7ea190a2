#include "platform/ui/Letters.h"

#include <QScreen>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace ui {

int forLetters(int pixels, const QWidget &widget)
{
    // Ten digits: so wide were those that the declared widths were made for, and so wide may they become before a width
    // has to follow.
    constexpr int measured = 75;
    constexpr int usual = 90;
    static const QString digits(10, u'0');
    const int width = widget.fontMetrics().horizontalAdvance(digits);
    return width > usual ? pixels * width / measured : pixels;
}

QSize forLetters(const QSize &size, const QWidget &widget)
{
    const QSize wanted(forLetters(size.width(), widget), forLetters(size.height(), widget));
    return wanted.boundedTo(widget.screen()->availableSize()).expandedTo(size);
}

} // namespace ui

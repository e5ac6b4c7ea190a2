#include "platform/ui/Colours.h"

#include <algorithm>
#include <cmath>

namespace ui {

namespace {

// Of one part of a colour, 0 to 1, as WCAG 2 reckons its light.
double linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor &one, const QColor &other, double share)
{
    const auto part = [share](float a, float b) { return static_cast<float>(a * (1 - share) + b * share); };
    return QColor::fromRgbF(part(one.redF(), other.redF()), part(one.greenF(), other.greenF()),
                            part(one.blueF(), other.blueF()));
}

// The ground of the two on which text of the theme is harder to read.
QColor harder(const QPalette &palette, QPalette::ColorRole one, QPalette::ColorRole other)
{
    const QColor text = palette.color(QPalette::Text);
    const QColor a = palette.color(one);
    const QColor b = palette.color(other);
    return contrast(text, a) < contrast(text, b) ? a : b;
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    constexpr double stray = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + stray) / (darker + stray);
}

QColor readableOn(const QColor &ground, const QColor &wanted, double least)
{
    constexpr int steps = 50;
    const QColor end = contrast(ground, Qt::white) > contrast(ground, Qt::black) ? Qt::white : Qt::black;
    QColor colour = wanted;
    for (int step = 1; step <= steps && contrast(colour, ground) < least; ++step)
        colour = mixed(wanted, end, static_cast<double>(step) / steps).toRgb();
    return colour;
}

bool isDark(const QPalette &palette)
{
    constexpr int half = 128;
    return palette.color(QPalette::Window).lightness() < half;
}

QColor negativeText(const QPalette &palette)
{
    return readableOn(harder(palette, QPalette::Base, QPalette::AlternateBase), Qt::red);
}

QColor quietText(const QPalette &palette)
{
    constexpr double back = 0.4;
    const QColor ground = harder(palette, QPalette::Base, QPalette::Window);
    return readableOn(ground, mixed(palette.color(QPalette::WindowText), ground, back));
}

QColor hairline(const QPalette &palette)
{
    constexpr double faint = 0.18;
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), faint);
}

QColor refusedText(const QPalette &palette)
{
    return readableOn(harder(palette, QPalette::Base, QPalette::Window), QColor(192, 0, 0));
}

} // namespace ui

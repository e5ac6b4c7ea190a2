#pragma once
#include <QColor>
#include <QPalette>

/// The colours that the program sets itself. Each can be read on the ground it stands on, light or dark.
namespace ui {

/// The least contrast of text that everybody can read (WCAG 2, level AA).
inline constexpr double leastContrast = 4.5;

/// How much two opaque colours stand out from each other: 1 (equal) to 21 (black on white).
double contrast(const QColor &one, const QColor &other);
/// `wanted`, darker or lighter if need be, so that it has `least` contrast to `ground`.
QColor readableOn(const QColor &ground, const QColor &wanted, double least = leastContrast);
/// Is the theme a dark one?
bool isDark(const QPalette &palette);

/// Of numbers below zero, on the ground of lists.
QColor negativeText(const QPalette &palette);
/// Of what stands back behind the rest: captions of copied data, what was not chosen.
QColor quietText(const QPalette &palette);
/// Of the thin lines that part sections.
QColor hairline(const QPalette &palette);
/// Of what is refused.
QColor refusedText(const QPalette &palette);

/// Ground and text of what the user should look at before going on, alike in both themes.
inline constexpr QColor warningGround(255, 191, 0);
inline constexpr QColor warningRowGround(255, 191, 64);
inline constexpr QColor warningText(0, 0, 0);
/// Ground and text of what cannot be read, alike in both themes.
inline constexpr QColor unreadableGround(255, 213, 213);
inline constexpr QColor unreadableText(140, 0, 0);

} // namespace ui

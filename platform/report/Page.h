#pragma once
#include "platform/report/Model.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>

namespace report {

/// One line of text; `baseline` is where it begins. Millimetres, from the page's top left corner.
struct TextRun
{
    QPointF baseline;
    QString text;
    int font = 0;
    double scale = 1; ///< of the font's size, for a text squeezed into its area
    double top = 0;   ///< of the line's own height
    double bottom = 0;

    bool operator==(const TextRun &) const = default;
};

struct Stroke
{
    QLineF line;
    double width = 0.2;

    bool operator==(const Stroke &) const = default;
};

struct Frame
{
    QRectF area;
    double lineWidth = 0.2;
    QColor fill;

    bool operator==(const Frame &) const = default;
};

struct Picture
{
    QRectF area;
    QImage image;

    bool operator==(const Picture &) const = default;
};

/// The drawing primitives of one page, or of a part of it.
struct Page
{
    QList<Frame> frames;
    QList<Stroke> strokes;
    QList<Picture> pictures;
    QList<TextRun> texts;

    bool operator==(const Page &) const = default;
};

/// The fonts of a project, measured in millimetres without regard to any device.
class FontSet
{
public:
    FontSet() = default;
    /// The fonts in the order of `specs`, which is how texts name them.
    explicit FontSet(const QList<FontSpec> &specs);

    /// Text is laid out and painted in these units, so that every device gets the same widths.
    static constexpr double unitsPerMm = 100;

    /// The font with this index for painting, its size times `scale`.
    QFont font(int index, double scale = 1) const;
    /// Millimetres that `text` takes in one line.
    double width(int index, const QString &text) const;
    /// Millimetres from the baseline to the top of a line.
    double ascent(int index) const { return metrics_[index].ascent() / unitsPerMm; }
    /// Millimetres from the top of a line to its bottom.
    double lineHeight(int index) const { return metrics_[index].height() / unitsPerMm; }
    /// The font with this index as it is measured.
    const QFont &unscaled(int index) const { return fonts_[index]; }

private:
    QList<QFont> fonts_;
    QList<QFontMetricsF> metrics_;
    // A text is measured to be broken into lines and again to be placed, one right after the other.
    mutable int lastFont_ = -1;
    mutable QString lastText_;
    mutable double lastWidth_ = 0;
};

enum class TextStyle
{
    Fonts,
    Outlines ///< shapes that no font is needed for
};

/// The one painting path of preview, printer and PDF. `dotsPerMm` of the device behind `painter`, whose origin is the
/// page's top left corner.
void paintPage(QPainter &painter, const Page &page, const FontSet &fonts, double dotsPerMm,
               TextStyle style = TextStyle::Fonts);

} // namespace report

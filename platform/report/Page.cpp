#include "platform/report/Page.h"

#include <QPainterPath>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr double mmPerPoint = 25.4 / 72;

QFont fontOf(const FontSpec &spec)
{
    QFont font;
    // The others stand in on machines without the project's own family.
    font.setFamilies({spec.family, u"Liberation Sans"_s, u"Arial"_s, u"DejaVu Sans"_s});
    font.setPixelSize(qRound(spec.size * mmPerPoint * FontSet::unitsPerMm));
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

FontSet::FontSet(const QList<FontSpec> &specs)
{
    for (const FontSpec &spec : specs) {
        fonts_.append(fontOf(spec));
        metrics_.append(QFontMetricsF(fonts_.last()));
    }
}

QFont FontSet::font(int index, double scale) const
{
    QFont font = fonts_[index];
    if (scale != 1)
        font.setPixelSize(qMax(1, qRound(font.pixelSize() * scale)));
    return font;
}

double FontSet::width(int index, const QString &text) const
{
    if (index != lastFont_ || text != lastText_) {
        lastFont_ = index;
        lastText_ = text;
        lastWidth_ = metrics_[index].horizontalAdvance(text) / unitsPerMm;
    }
    return lastWidth_;
}

namespace {

void paintText(QPainter &painter, QPointF baseline, const QString &text, TextStyle style)
{
    if (style == TextStyle::Fonts) {
        painter.drawText(baseline, text);
        return;
    }
    QPainterPath outlines;
    outlines.addText(baseline, painter.font(), text);
    painter.fillPath(outlines, Qt::black);
}

} // namespace

void paintPage(QPainter &painter, const Page &page, const FontSet &fonts, double dotsPerMm, TextStyle style)
{
    painter.save();
    painter.scale(dotsPerMm, dotsPerMm);
    for (const Frame &frame : page.frames) {
        painter.setPen(frame.lineWidth > 0 ? QPen(Qt::black, frame.lineWidth) : QPen(Qt::NoPen));
        painter.setBrush(frame.fill.isValid() ? QBrush(frame.fill) : QBrush());
        painter.drawRect(frame.area);
    }
    for (const Picture &picture : page.pictures)
        painter.drawImage(picture.area, picture.image);
    for (const Stroke &stroke : page.strokes) {
        painter.setPen(QPen(Qt::black, stroke.width));
        painter.drawLine(stroke.line);
    }
    constexpr double units = FontSet::unitsPerMm;
    painter.scale(1 / units, 1 / units);
    painter.setPen(Qt::black);
    int current = -1;
    for (const TextRun &run : page.texts) {
        if (run.font != current || run.scale != 1)
            painter.setFont(fonts.font(run.font, run.scale));
        current = run.scale == 1 ? run.font : -1;
        paintText(painter, run.baseline * units, run.text, style);
    }
    painter.restore();
}

} // namespace report

#include "platform/report/BandLayout.h"

#include "platform/core/Error.h"
#include "platform/core/LineText.h"
#include "platform/core/Translation.h"
#include "platform/report/Picture.h"

#include <QTextLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr double smallestScale = 0.6;

// A failing expression names its place in the project file.
template <typename Body>
auto atLine(int line, Body &&body)
{
    try {
        return body();
    } catch (const core::Error &error) {
        throw core::Error(core::tr("Riga %1 del file delle stampe: %2.").arg(line).arg(error.text()), error.context());
    }
}

QString textOf(const Item &item, const Scope &scope)
{
    return atLine(item.line, [&] { return formatted(item.value.evaluate(scope), item.format); });
}

bool isShown(const Item &item, const Scope &scope)
{
    return item.when.isEmpty() || atLine(item.line, [&] { return item.when.holds(scope); });
}

int fittingLines(const Item &item, const FontSet &fonts)
{
    return std::max(1, static_cast<int>((item.area.height() + 0.05) / fonts.lineHeight(item.font)));
}

} // namespace

BrokenText breakText(const QString &text, int font, double width, const FontSet &fonts)
{
    BrokenText broken{.text = core::withLineFeeds(text)};
    broken.text.replace(u'\t', u' ');
    while (broken.text.endsWith(u'\n'))
        broken.text.chop(1);
    if (broken.text.isEmpty())
        return broken;
    if (!broken.text.contains(u'\n') && fonts.width(font, broken.text) <= width) {
        broken.lines.append({0, broken.text});
        return broken;
    }
    QString forLayout = broken.text;
    forLayout.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(forLayout, fonts.unscaled(font));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width * FontSet::unitsPerMm);
        QString content = broken.text.mid(line.textStart(), line.textLength());
        if (content.endsWith(u'\n'))
            content.chop(1);
        while (content.endsWith(u' '))
            content.chop(1);
        broken.lines.append({line.textStart(), content});
    }
    layout.endLayout();
    return broken;
}

BandLayout::BandLayout(const Band &band, const Scope &scope, const FontSet &fonts, double stretchedHeight)
    : items_(band.items)
    , scope_(scope)
    , fonts_(fonts)
    , nominal_(band.height)
{
    if (!band.connection.isEmpty())
        scope_.connection = band.connection;
    if (!band.exists() || !atLine(band.line, [&] { return band.when.holds(scope_); }))
        return;
    if (stretchedHeight > 0) {
        growth_.append({nominal_, stretchedHeight - nominal_});
        height_ = stretchedHeight;
        return;
    }
    measure();
}

BandLayout::BandLayout(const std::vector<Item> &items, double height, const Scope &scope, const FontSet &fonts)
    : items_(items)
    , scope_(scope)
    , fonts_(fonts)
    , nominal_(height)
{
    measure();
}

void BandLayout::measure()
{
    for (const Item &item : items_) {
        const bool canGrow = item.grow || item.kind == ItemKind::Rows || item.kind == ItemKind::Group;
        if (!canGrow || !isShown(item, scope_))
            continue;
        const double by = neededHeight(item) - item.area.height();
        if (by <= 0)
            continue;
        const double at = item.area.bottom();
        const auto same = std::find_if(growth_.begin(), growth_.end(),
                                       [at](const Growth &other) { return std::abs(other.at - at) < 0.01; });
        if (same == growth_.end())
            growth_.append({at, by});
        else
            same->by = std::max(same->by, by);
    }
    height_ = moved(nominal_);
}

double BandLayout::neededHeight(const Item &item) const
{
    if (item.kind == ItemKind::Group)
        return BandLayout(item.children, item.area.height(), scope_, fonts_).height();
    if (item.kind == ItemKind::Rows) {
        double total = 0;
        Scope row = scope_;
        row.connection = item.connection;
        const qsizetype count = scope_.data->rows(item.connection).size();
        for (row.row = 0; row.row < count; ++row.row)
            total += BandLayout(item.children, item.rowHeight, row, fonts_).height();
        return total;
    }
    const BrokenText broken = breakText(textOf(item, scope_), item.font, widthOf(item), fonts_);
    return static_cast<double>(broken.lines.size()) * fonts_.lineHeight(item.font);
}

// What a text may take of its area where something stands beside it.
double BandLayout::widthOf(const Item &item) const
{
    if (item.leaves.isEmpty())
        return item.area.width();
    const double left = atLine(item.line, [&] { return item.leaves.evaluate(scope_).toDouble(); });
    return std::clamp(item.area.width() - left, 0.0, item.area.width());
}

double BandLayout::moved(double y) const
{
    double result = y;
    for (const Growth &growth : growth_) {
        if (growth.at <= y + 0.01)
            result += growth.by;
    }
    return result;
}

void BandLayout::place(Page &page, QPointF origin) const
{
    if (height_ <= 0)
        return;
    for (const Item &item : items_) {
        if (isShown(item, scope_))
            placeItem(item, page, origin);
    }
}

void BandLayout::placeItem(const Item &item, Page &page, QPointF origin) const
{
    QRectF area = item.area;
    area.setTop(moved(item.area.top()));
    area.setBottom(std::max(area.top(), moved(item.area.bottom())));
    area.translate(origin);
    switch (item.kind) {
    case ItemKind::Text:
        area.setWidth(widthOf(item));
        placeText(item, area, page);
        break;
    case ItemKind::Line:
        page.strokes.append({QLineF(area.topLeft(), area.bottomRight()), item.lineWidth});
        break;
    case ItemKind::Box:
        page.frames.append({area, item.lineWidth, item.fill});
        break;
    case ItemKind::Image:
        placePicture(item, area, page);
        break;
    case ItemKind::Rows:
        placeRows(item, area, page);
        break;
    case ItemKind::Group:
        BandLayout(item.children, item.area.height(), scope_, fonts_).place(page, area.topLeft());
        break;
    }
}

void BandLayout::placeRows(const Item &item, const QRectF &area, Page &page) const
{
    Scope row = scope_;
    row.connection = item.connection;
    double y = area.top();
    const qsizetype count = scope_.data->rows(item.connection).size();
    for (row.row = 0; row.row < count; ++row.row) {
        const BandLayout line(item.children, item.rowHeight, row, fonts_);
        line.place(page, {area.left(), y});
        y += line.height();
    }
}

// A picture of the data keeps its proportions; one of the project file fills the area that was drawn for it.
void BandLayout::placePicture(const Item &item, const QRectF &area, Page &page) const
{
    if (item.value.isEmpty()) {
        page.pictures.append({area, item.image});
        return;
    }
    const QImage image = pictureOf(atLine(item.line, [&] { return item.value.evaluate(scope_).toByteArray(); }));
    if (image.isNull())
        return;
    QRectF place(area.topLeft(), QSizeF(image.size()).scaled(area.size(), Qt::KeepAspectRatio));
    if (item.alignment & Qt::AlignRight)
        place.moveRight(area.right());
    else if (item.alignment & Qt::AlignHCenter)
        place.moveLeft(area.center().x() - place.width() / 2);
    if (item.alignment & Qt::AlignBottom)
        place.moveBottom(area.bottom());
    else if (item.alignment & Qt::AlignVCenter)
        place.moveTop(area.center().y() - place.height() / 2);
    page.pictures.append({place, image});
}

void BandLayout::placeText(const Item &item, const QRectF &area, Page &page) const
{
    const QString text = textOf(item, scope_);
    if (text.isEmpty())
        return;
    const double lineHeight = fonts_.lineHeight(item.font);
    QStringList lines = {text};
    if (item.wrap) {
        const BrokenText broken = breakText(text, item.font, area.width(), fonts_);
        const qsizetype room = item.grow ? broken.lines.size() : fittingLines(item, fonts_);
        lines.clear();
        for (const BrokenText::Line &line : broken.lines.mid(0, room))
            lines.append(line.text);
        if (broken.lines.size() > room && item.continuation.isEmpty())
            lines.last().append(u'…');
    } else {
        lines[0].replace(u'\n', u' ').remove(u'\r');
    }
    const double spare = area.height() - static_cast<double>(lines.size()) * lineHeight;
    double top = area.top();
    if (item.alignment & Qt::AlignVCenter)
        top += spare / 2;
    else if (item.alignment & Qt::AlignBottom)
        top += spare;
    for (const QString &line : std::as_const(lines)) {
        placeLine(item, line, area, top, page);
        top += lineHeight;
    }
}

// A single line that is too wide is squeezed first and cut only when that is not enough.
void BandLayout::placeLine(const Item &item, const QString &text, const QRectF &area, double top, Page &page) const
{
    TextRun run{.text = text, .font = item.font, .top = top, .bottom = top + fonts_.lineHeight(item.font)};
    double width = fonts_.width(item.font, text);
    if (width > area.width() + 0.01) {
        run.scale = std::max(smallestScale, area.width() / width);
        const double room = area.width() / run.scale;
        if (width > room + 0.01) {
            const QFontMetricsF metrics(fonts_.unscaled(item.font));
            run.text = metrics.elidedText(text, Qt::ElideRight, room * FontSet::unitsPerMm);
            width = fonts_.width(item.font, run.text);
        }
        width *= run.scale;
    }
    double x = area.left();
    if (item.alignment & Qt::AlignRight)
        x = area.right() - width;
    else if (item.alignment & Qt::AlignHCenter)
        x += (area.width() - width) / 2;
    run.baseline = QPointF(x, top + fonts_.ascent(item.font));
    page.texts.append(run);
}

QString BandLayout::overflow(const Item &item, const Scope &scope, const FontSet &fonts)
{
    if (!isShown(item, scope))
        return {};
    const BrokenText broken = breakText(textOf(item, scope), item.font, item.area.width(), fonts);
    const int room = fittingLines(item, fonts);
    return broken.lines.size() > room ? broken.text.mid(broken.lines[room].start) : QString();
}

} // namespace report

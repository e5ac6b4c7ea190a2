#include "platform/report/Document.h"

#include "platform/core/Error.h"
#include "platform/report/BandLayout.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr double tolerance = 0.001; // mm, for sums of heights

// The part of `whole` between `from` and `to` (mm below its top), moved up by `from`.
void addSlice(Page &page, const Page &whole, double origin, double from, double to)
{
    const QRectF window(0, origin + from, 10000, to - from);
    for (Frame frame : whole.frames) {
        frame.area = frame.area.intersected(window).translated(0, -from);
        if (frame.area.height() > 0)
            page.frames.append(frame);
    }
    for (Stroke stroke : whole.strokes) {
        const double top = std::max(stroke.line.y1(), window.top());
        const double bottom = std::min(stroke.line.y2(), window.bottom());
        if (top > bottom)
            continue;
        stroke.line.setP1({stroke.line.x1(), top - from});
        stroke.line.setP2({stroke.line.x2(), bottom - from});
        page.strokes.append(stroke);
    }
    for (Picture picture : whole.pictures) {
        if (picture.area.top() >= window.top() - tolerance && picture.area.top() < window.bottom()) {
            picture.area.translate(0, -from);
            page.pictures.append(picture);
        }
    }
    for (TextRun run : whole.texts) {
        if (run.bottom > window.top() + tolerance && run.bottom <= window.bottom() + tolerance) {
            run.baseline.ry() -= from;
            run.top -= from;
            run.bottom -= from;
            page.texts.append(run);
        }
    }
}

} // namespace

Document::Document(std::shared_ptr<const Report> report, const QList<FontSpec> &fonts, RunData data)
    : report_(std::move(report))
    , fonts_(fonts)
    , data_(std::move(data))
{
    const Scope first{.data = &data_, .page = 1, .pages = 1, .detail = report_->detail.connection};
    title_ = formatted(report_->title.evaluate(first), {});
    headerHeight_ = BandLayout(report_->pageHeader, first, fonts_).height();
    firstPageHeight_ = BandLayout(report_->firstPage, first, fonts_).height();
    titlesHeight_ = BandLayout(report_->columnTitles, first, fonts_).height();
    broughtHeight_ = BandLayout(report_->carriedForward, first, fonts_).height();
    carryHeight_ = BandLayout(report_->toCarryForward, first, fonts_).height();
    closingHeight_ = BandLayout(report_->lastPage, first, fonts_).height();
    footerHeight_ = BandLayout(report_->pageFooter, first, fonts_).height();
    if (report_->detail.exists())
        rowCount_ = data_.rows(report_->detail.connection).size();
    findContinuation();
    measureUnits();
    breakPages();
    countRows();
}

Scope Document::scopeOf(const PageSpan &span, int page) const
{
    return {.data = &data_,
            .page = page + 1,
            .pages = pageCount(),
            .detail = report_->detail.connection,
            .rowsBefore = span.rowsBefore,
            .rowsThrough = span.rowsThrough};
}

// The first text of the closing block that does not fit goes on behind the rows.
void Document::findContinuation()
{
    Scope scope{.data = &data_, .connection = report_->lastPage.connection, .page = 1, .pages = 1};
    for (const Item &item : report_->lastPage.items) {
        if (item.continuation.isEmpty())
            continue;
        const QString rest = BandLayout::overflow(item, scope, fonts_);
        if (rest.isEmpty())
            continue;
        continuation_ = {&item, {item.continuation}};
        const BrokenText broken = breakText(rest, item.font, item.continuationWidth, fonts_);
        for (const BrokenText::Line &line : broken.lines)
            continuation_.lines.append(line.text);
        return;
    }
}

Document::UnitKind Document::kindOf(qsizetype unit) const
{
    if (unit < rowCount_)
        return UnitKind::Row;
    return unit < rowCount_ + continuation_.lines.size() ? UnitKind::ContinuedLine : UnitKind::Summary;
}

void Document::measureUnits()
{
    Scope scope{.data = &data_, .detail = report_->detail.connection};
    for (scope.row = 0; scope.row < rowCount_; ++scope.row) {
        const BandLayout row(report_->detail, scope, fonts_);
        heights_.push_back(row.height());
        rowGrows_.push_back(row.grows());
    }
    for (qsizetype line = 0; line < continuation_.lines.size(); ++line)
        heights_.push_back(fonts_.lineHeight(continuation_.item->font));
    scope.row = 0;
    if (const double summary = BandLayout(report_->summary, scope, fonts_).height(); summary > 0)
        heights_.push_back(summary);
    remaining_.assign(heights_.size() + 1, 0);
    for (size_t unit = heights_.size(); unit-- > 0;)
        remaining_[unit] = remaining_[unit + 1] + heights_[unit];
}

double Document::topHeight(int page) const
{
    return headerHeight_ + (page == 0 ? firstPageHeight_ : 0) + titlesHeight_ + (page > 0 ? broughtHeight_ : 0);
}

// Without what the last page or the others add at the end of the rows.
double Document::roomForRows(int page) const
{
    return report_->contentHeight() - topHeight(page) - footerHeight_;
}

void Document::breakPages()
{
    const double freshRoom = roomForRows(1) - carryHeight_;
    if (freshRoom < 1 || roomForRows(1) < closingHeight_ || roomForRows(0) - carryHeight_ < 0)
        throw core::Error(
            u"I blocchi fissi della stampa \"%1\" non lasciano spazio sulla pagina."_s.arg(report_->name));
    const auto count = static_cast<qsizetype>(heights_.size());
    PageSpan span;
    while (true) {
        const int page = pageCount();
        const double room = roomForRows(page);
        if (remaining_[span.first] - span.firstFrom <= room - closingHeight_ + tolerance) {
            span.end = count;
            pages_.push_back(span);
            return;
        }
        const qsizetype next = fillPage(span, room - carryHeight_, freshRoom);
        pages_.push_back(span);
        span = {.first = next, .firstFrom = span.cut};
    }
}

// Puts as many units on the page as fit and returns the one with which the next page goes on.
qsizetype Document::fillPage(PageSpan &span, double room, double freshRoom) const
{
    const auto count = static_cast<qsizetype>(heights_.size());
    double from = span.firstFrom;
    double y = 0;
    qsizetype unit = span.first;
    while (unit < count && y + heights_[unit] - from <= room + tolerance) {
        y += heights_[unit] - from;
        from = 0;
        ++unit;
    }
    if (unit == count) {
        // All fits but the closing block, which should not stand alone on the last page.
        if (unit - span.first > 1)
            --unit;
    } else if (heights_[unit] - from > freshRoom + tolerance) {
        span.cut = cutPosition(unit, from, room - y);
        const bool emptyPage = unit == span.first && span.cut <= from + tolerance;
        if (emptyPage && room >= freshRoom - tolerance)
            span.cut = from + room; // not even one line of it fits: cut through it rather than never end
        if (span.cut <= from + tolerance)
            span.cut = unit == span.first ? from : 0;
    }
    span.end = unit;
    return unit;
}

// Where a unit may be cut so that the part behind `from` takes no more than `room`: below a line of text.
double Document::cutPosition(qsizetype unit, double from, double room) const
{
    const Scope scope{.data = &data_, .detail = report_->detail.connection};
    double best = from;
    const Page whole = unitPage(unit, scope, {});
    for (const TextRun &run : whole.texts) {
        if (run.bottom - from <= room + tolerance)
            best = std::max(best, run.bottom);
    }
    return best;
}

void Document::countRows()
{
    for (PageSpan &span : pages_) {
        // A row that was begun on the page before counts there.
        span.rowsBefore = std::min(rowCount_, span.first + (span.firstFrom > 0 ? 1 : 0));
        span.rowsThrough = std::min(rowCount_, span.end + (span.cut > 0 ? 1 : 0));
    }
}

Page Document::unitPage(qsizetype unit, const Scope &scope, QPointF origin) const
{
    Page page;
    Scope own = scope;
    switch (kindOf(unit)) {
    case UnitKind::Row:
        own.row = unit;
        // Most rows do not grow, and those need not be measured again.
        BandLayout(report_->detail, own, fonts_, rowGrows_[unit] ? 0 : report_->detail.height).place(page, origin);
        break;
    case UnitKind::ContinuedLine:
        placeContinuedLine(page, unit - rowCount_, origin);
        break;
    case UnitKind::Summary:
        BandLayout(report_->summary, own, fonts_).place(page, origin);
        break;
    }
    return page;
}

void Document::placeContinuedLine(Page &page, qsizetype line, QPointF origin) const
{
    const Item &item = *continuation_.item;
    page.texts.append({.baseline = origin + QPointF(item.continuationX, fonts_.ascent(item.font)),
                       .text = continuation_.lines[line],
                       .font = item.font,
                       .top = origin.y(),
                       .bottom = origin.y() + fonts_.lineHeight(item.font)});
}

void Document::placeUnits(Page &page, const PageSpan &span, const Scope &scope, double y) const
{
    const double x = report_->margin;
    const qsizetype behind = span.end + (span.cut > 0 ? 1 : 0);
    for (qsizetype unit = span.first; unit < behind; ++unit) {
        const double from = unit == span.first ? span.firstFrom : 0;
        const double to = unit == span.end ? span.cut : heights_[unit];
        addSlice(page, unitPage(unit, scope, {x, y}), y, from, to);
        y += to - from;
    }
}

Page Document::page(int index) const
{
    const PageSpan &span = pages_.at(static_cast<size_t>(index));
    const Scope scope = scopeOf(span, index);
    const bool last = index == pageCount() - 1;
    const double x = report_->margin;
    double y = report_->margin;
    Page page;
    const auto add = [&](const Band &band) {
        const BandLayout layout(band, scope, fonts_);
        layout.place(page, {x, y});
        y += layout.height();
    };
    add(report_->pageHeader);
    if (index == 0)
        add(report_->firstPage);
    add(report_->columnTitles);
    const double bottom = report_->height - report_->margin - footerHeight_ - (last ? closingHeight_ : 0);
    BandLayout(report_->tableFrame, scope, fonts_, bottom - y).place(page, {x, y});
    if (index > 0)
        add(report_->carriedForward);
    placeUnits(page, span, scope, y);
    if (!last) {
        y = bottom - carryHeight_;
        add(report_->toCarryForward);
    }
    y = bottom;
    if (last)
        add(report_->lastPage);
    add(report_->pageFooter);
    return page;
}

} // namespace report

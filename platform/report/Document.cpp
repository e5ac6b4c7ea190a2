#include "platform/report/Document.h"

#include "platform/core/Error.h"
#include "platform/core/Translation.h"
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

// Of the heading over a continued text, with the gap below it.
double headingHeight(const Item &item, const FontSet &fonts)
{
    return 1.5 * fonts.lineHeight(item.continuationFont);
}

} // namespace

Document::Document(std::shared_ptr<const Report> report, const QList<FontSpec> &fonts, RunData data,
                   core::Progress *progress)
    : report_(std::move(report))
    , fontSpecs_(fonts)
    , fonts_(fonts)
    , data_(std::move(data))
{
    const Scope first{.data = &data_, .page = 1, .pages = 1, .detail = report_->detail.connection};
    title_ = formatted(report_->title.evaluate(first), {});
    headerHeight_ = BandLayout(report_->pageHeader, first, fonts_).height();
    firstPageHeight_ = BandLayout(report_->firstPage, first, fonts_).height();
    laterPagesHeight_ = BandLayout(report_->laterPages, first, fonts_).height();
    titlesHeight_ = BandLayout(report_->columnTitles, first, fonts_).height();
    broughtHeight_ = BandLayout(report_->carriedForward, first, fonts_).height();
    carryHeight_ = BandLayout(report_->toCarryForward, first, fonts_).height();
    closingHeight_ = BandLayout(report_->lastPage, first, fonts_).height();
    footerHeight_ = BandLayout(report_->pageFooter, first, fonts_).height();
    if (report_->detail.exists())
        rowCount_ = data_.rows(report_->detail.connection).size();
    measureUnits(progress);
    breakPages();
    findContinuation();
    countRows();
}

Document Document::withOwnFonts() const
{
    Document copy = *this;
    copy.fonts_ = FontSet(fontSpecs_);
    return copy;
}

int Document::pageCount() const
{
    const qsizetype lines = continuation_.lines.size();
    const qsizetype perPage = continuation_.linesPerPage;
    return static_cast<int>(static_cast<qsizetype>(pages_.size()) + (lines > 0 ? (lines + perPage - 1) / perPage : 0));
}

Scope Document::scopeOf(int page) const
{
    Scope scope{.data = &data_,
                .page = page + 1,
                .pages = pageCount(),
                .detail = report_->detail.connection,
                .rowsBefore = rowCount_,
                .rowsThrough = rowCount_};
    if (const auto index = static_cast<size_t>(page); index < pages_.size()) {
        scope.rowsBefore = pages_[index].rowsBefore;
        scope.rowsThrough = pages_[index].rowsThrough;
    }
    return scope;
}

// The first text of the closing block that does not fit begins there and goes on behind it.
void Document::findContinuation()
{
    Scope scope{.data = &data_, .connection = report_->lastPage.connection, .page = 1, .pages = 1};
    for (const Item &item : report_->lastPage.items) {
        if (item.continuation.isEmpty())
            continue;
        const QString rest = BandLayout::overflow(item, scope, fonts_);
        if (rest.isEmpty())
            continue;
        continuation_.item = &item;
        const BrokenText broken = breakText(rest, item.font, item.continuationWidth, fonts_);
        for (const BrokenText::Line &line : broken.lines)
            continuation_.lines.append(line.text);
        const double room = report_->contentHeight() - headHeight(1) - footerHeight_ - headingHeight(item, fonts_);
        // Breaking the rows has made sure that there is some room.
        continuation_.linesPerPage =
            std::max<qsizetype>(1, static_cast<qsizetype>(room / fonts_.lineHeight(item.font)));
        return;
    }
}

void Document::measureUnits(core::Progress *progress)
{
    if (progress)
        progress->setTotal(static_cast<int>(rowCount_));
    Scope scope{.data = &data_, .detail = report_->detail.connection};
    for (scope.row = 0; scope.row < rowCount_; ++scope.row) {
        if (progress)
            progress->step(static_cast<int>(scope.row));
        const BandLayout row(report_->detail, scope, fonts_);
        heights_.push_back(row.height());
        rowGrows_.push_back(row.grows());
    }
    scope.row = 0;
    if (const double summary = BandLayout(report_->summary, scope, fonts_).height(); summary > 0)
        heights_.push_back(summary);
    remaining_.assign(heights_.size() + 1, 0);
    for (size_t unit = heights_.size(); unit-- > 0;)
        remaining_[unit] = remaining_[unit + 1] + heights_[unit];
}

double Document::headHeight(int page) const
{
    return headerHeight_ + (page == 0 ? firstPageHeight_ : laterPagesHeight_);
}

double Document::topHeight(int page) const
{
    return headHeight(page) + titlesHeight_ + (page > 0 ? broughtHeight_ : 0);
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
            core::tr("I blocchi fissi della stampa \"%1\" non lasciano spazio sulla pagina.").arg(report_->name));
    const auto count = static_cast<qsizetype>(heights_.size());
    PageSpan span;
    while (true) {
        const auto page = static_cast<int>(pages_.size());
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
    if (unit >= rowCount_) {
        BandLayout(report_->summary, scope, fonts_).place(page, origin);
        return page;
    }
    Scope own = scope;
    own.row = unit;
    // Most rows do not grow, and those need not be measured again.
    BandLayout(report_->detail, own, fonts_, rowGrows_[unit] ? 0 : report_->detail.height).place(page, origin);
    return page;
}

// Returns where they end.
double Document::placeUnits(Page &page, const PageSpan &span, const Scope &scope, double y) const
{
    const double x = report_->margin;
    const qsizetype behind = span.end + (span.cut > 0 ? 1 : 0);
    for (qsizetype unit = span.first; unit < behind; ++unit) {
        const double from = unit == span.first ? span.firstFrom : 0;
        const double to = unit == span.end ? span.cut : heights_[unit];
        addSlice(page, unitPage(unit, scope, {x, y}), y, from, to);
        y += to - from;
    }
    return y;
}

// What stands at the top of every page whatever it holds. Returns where it ends.
double Document::placeHead(Page &page, int index, const Scope &scope) const
{
    double y = report_->margin;
    for (const Band *band : {&report_->pageHeader, index == 0 ? &report_->firstPage : &report_->laterPages}) {
        const BandLayout layout(*band, scope, fonts_);
        layout.place(page, {report_->margin, y});
        y += layout.height();
    }
    return y;
}

Page Document::page(int index, const QString &copy) const
{
    Scope scope = scopeOf(index);
    scope.copy = copy;
    Page page = index < static_cast<int>(pages_.size()) ? rowsPage(index, scope) : continuationPage(index, scope);
    BandLayout(report_->pageFooter, scope, fonts_)
        .place(page, {report_->margin, report_->height - report_->margin - footerHeight_});
    return page;
}

Page Document::rowsPage(int index, const Scope &scope) const
{
    const bool last = index + 1 == static_cast<int>(pages_.size());
    const double x = report_->margin;
    const double bottom = report_->height - report_->margin - footerHeight_ - (last ? closingHeight_ : 0);
    Page page;
    double y = placeHead(page, index, scope);
    const auto add = [&](const Band &band) {
        const BandLayout layout(band, scope, fonts_);
        layout.place(page, {x, y});
        y += layout.height();
    };
    add(report_->columnTitles);
    BandLayout(report_->tableFrame, scope, fonts_, bottom - y).place(page, {x, y});
    if (index > 0)
        add(report_->carriedForward);
    y = placeUnits(page, pages_[static_cast<size_t>(index)], scope, y);
    if (last) {
        y = bottom;
        add(report_->lastPage);
        return page;
    }
    const double free = bottom - carryHeight_ - y;
    if (free >= report_->unusedSpace.height)
        BandLayout(report_->unusedSpace, scope, fonts_, free).place(page, {x, y});
    y = bottom - carryHeight_;
    add(report_->toCarryForward);
    return page;
}

Page Document::continuationPage(int index, const Scope &scope) const
{
    const Item &item = *continuation_.item;
    Page page;
    double y = placeHead(page, index, scope);
    const double x = report_->margin + item.continuationX;
    const auto addLine = [&](const QString &text, int font) {
        const double height = fonts_.lineHeight(font);
        page.texts.append(
            {.baseline = {x, y + fonts_.ascent(font)}, .text = text, .font = font, .top = y, .bottom = y + height});
    };
    addLine(item.continuation, item.continuationFont);
    y += headingHeight(item, fonts_);
    const qsizetype first = (index - static_cast<qsizetype>(pages_.size())) * continuation_.linesPerPage;
    for (const QString &line : continuation_.lines.mid(first, continuation_.linesPerPage)) {
        addLine(line, item.font);
        y += fonts_.lineHeight(item.font);
    }
    return page;
}

} // namespace report

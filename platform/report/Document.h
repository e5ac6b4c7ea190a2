#pragma once
#include "platform/core/Progress.h"
#include "platform/report/Page.h"

namespace report {

/// A report laid out over its data: how many pages there are and what stands on each of them.
///
/// Only the page breaks are kept. The primitives of a page are made when it is asked for, so a document of a thousand
/// pages needs little more memory than its rows.
class Document
{
public:
    /// Throws core::Error when a column is missing or a block is higher than a page, and core::Cancelled when
    /// `progress` was cancelled.
    Document(std::shared_ptr<const Report> report, const QList<FontSpec> &fonts, RunData data,
             core::Progress *progress = nullptr);

    /// At least 1.
    int pageCount() const;
    /// Primitives of a page, counted from 0; `copy` is the label of the copy that it belongs to, empty for none.
    Page page(int index, const QString &copy = {}) const;
    /// The fonts of its pages.
    const FontSet &fonts() const { return fonts_; }
    /// A copy for another thread: two of them may not measure with the same fonts.
    Document withOwnFonts() const;
    /// The title that the report gives to PDF file and print job; may be empty.
    const QString &title() const { return title_; }
    /// Width and height of the paper, millimetres.
    QSizeF pageSize() const { return {report_->width, report_->height}; } ///< millimetres

private:
    // A unit is what lies between the titles and the end of the rows: each row of the detail, then the summary.
    struct PageSpan
    {
        qsizetype first = 0;  ///< unit
        double firstFrom = 0; ///< mm of it that stand on the page before
        qsizetype end = 0;    ///< behind the last whole unit
        double cut = 0;       ///< mm of the unit `end` up to which this page shows it; 0 for none
        qsizetype rowsBefore = 0;
        qsizetype rowsThrough = 0;
    };
    struct Continuation
    {
        const Item *item = nullptr;
        QStringList lines;
        qsizetype linesPerPage = 0;
    };

    Scope scopeOf(int page) const;
    void findContinuation();
    void measureUnits(core::Progress *progress);
    void breakPages();
    double headHeight(int page) const;
    double topHeight(int page) const;
    double roomForRows(int page) const;
    qsizetype fillPage(PageSpan &span, double room, double freshRoom) const;
    double cutPosition(qsizetype unit, double from, double room) const;
    void countRows();

    Page unitPage(qsizetype unit, const Scope &scope, QPointF origin) const;
    double placeUnits(Page &page, const PageSpan &span, const Scope &scope, double y) const;
    double placeHead(Page &page, int index, const Scope &scope) const;
    Page rowsPage(int index, const Scope &scope) const;
    Page continuationPage(int index, const Scope &scope) const;

    std::shared_ptr<const Report> report_;
    QList<FontSpec> fontSpecs_;
    FontSet fonts_;
    RunData data_;
    QString title_;
    qsizetype rowCount_ = 0;
    Continuation continuation_;
    std::vector<double> heights_;   // of the units, mm
    std::vector<bool> rowGrows_;    // beyond the height that the project file gives
    std::vector<double> remaining_; // heights of a unit and all behind it, mm
    double headerHeight_ = 0;
    double firstPageHeight_ = 0;
    double laterPagesHeight_ = 0;
    double titlesHeight_ = 0;
    double broughtHeight_ = 0;
    double carryHeight_ = 0;
    double closingHeight_ = 0;
    double footerHeight_ = 0;
    std::vector<PageSpan> pages_; // with rows; those of the continuation follow
};

} // namespace report

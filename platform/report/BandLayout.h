#pragma once
#include "platform/report/Page.h"

namespace report {

/// A text broken into lines: each with its start in the text.
struct BrokenText
{
    struct Line
    {
        qsizetype start = 0;
        QString text;
    };
    QString text; ///< with one kind of line break
    QList<Line> lines;
};

/// Breaks `text` between words into lines of at most `width` millimetres in the font with this index; a word that is
/// longer is broken, too.
BrokenText breakText(const QString &text, int font, double width, const FontSet &fonts);

/// Places the items of one band. Items that grow push down what lies below them and stretch what stands beside them.
class BandLayout
{
public:
    /// `stretchedHeight` (mm) is given to bands that fill a place; 0 for the band's own height.
    BandLayout(const Band &band, const Scope &scope, const FontSet &fonts, double stretchedHeight = 0);

    /// Millimetres; 0 for a band that is not printed here.
    double height() const { return height_; }
    /// Does any item need more room than the project file gives it?
    bool grows() const { return !growth_.isEmpty(); }
    /// Adds the band's primitives to `page`, its top left corner at `origin`.
    void place(Page &page, QPointF origin) const;

    /// The text of `item` that does not fit into its area and so goes on elsewhere; empty when all of it fits.
    static QString overflow(const Item &item, const Scope &scope, const FontSet &fonts);

private:
    struct Growth
    {
        double at;
        double by;
    };

    BandLayout(const std::vector<Item> &items, double height, const Scope &scope, const FontSet &fonts);
    void measure();
    double neededHeight(const Item &item) const;
    double widthOf(const Item &item) const;
    double moved(double y) const;
    void placeItem(const Item &item, Page &page, QPointF origin) const;
    void placeText(const Item &item, const QRectF &area, Page &page) const;
    void placePicture(const Item &item, const QRectF &area, Page &page) const;
    void placeLine(const Item &item, const QString &text, const QRectF &area, double top, Page &page) const;
    void placeRows(const Item &item, const QRectF &area, Page &page) const;

    const std::vector<Item> &items_;
    Scope scope_;
    const FontSet &fonts_;
    double nominal_ = 0;
    double height_ = 0;
    QList<Growth> growth_;
};

} // namespace report

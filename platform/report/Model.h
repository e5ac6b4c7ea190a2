#pragma once
#include "platform/report/Expression.h"

#include <QImage>
#include <QList>
#include <QRectF>

#include <vector>

/// A project file as read. All lengths are millimetres; positions of items count from the top left corner of their
/// band, the bands from the page's margins.
namespace report {

struct FontSpec
{
    QString name;
    QString family;
    double size = 9; ///< points
    bool bold = false;
    bool italic = false;
};

enum class ItemKind
{
    Text,
    Line,
    Box,
    Image,
    Rows, ///< `children` once for every row of `connection`, below each other
    Group ///< `children` laid out by themselves: what grows among them moves nothing beside them
};

struct Item
{
    ItemKind kind = ItemKind::Text;
    QRectF area;
    Expression when;
    int line = 0; ///< in the project file

    Expression value;  ///< of a text or a picture
    Expression leaves; ///< millimetres that a text leaves free at its right end
    Format format;
    int font = 0;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    bool wrap = false;
    bool grow = false; ///< takes the height its text needs and pushes down what lies below it
    /// A text longer than its area goes on, under this heading, on pages behind the closing block; empty: it is cut
    /// off.
    QString continuation;
    int continuationFont = 0; ///< of the heading
    double continuationX = 0;
    double continuationWidth = 0;

    double lineWidth = 0.2; ///< 0 draws no line
    QColor fill;
    QImage image;

    QString connection;
    double rowHeight = 0; ///< of Rows; more rows than the area holds make it grow
    std::vector<Item> children;
};

/// A block of items that is printed as a whole.
struct Band
{
    double height = 0;
    QString connection;
    Expression when;
    std::vector<Item> items;
    int line = 0;

    /// Does the project file have this band?
    bool exists() const { return line > 0; }
};

struct Report
{
    QString name;
    Expression title; ///< of the document
    double width = 210;
    double height = 297;
    double margin = 10;

    Band pageHeader;     ///< at the top of every page
    Band firstPage;      ///< below it on the first page
    Band laterPages;     ///< below it on the others
    Band columnTitles;   ///< above the rows of every page
    Band carriedForward; ///< above the rows of every page but the first
    Band detail;         ///< once per row of its connection
    Band unusedSpace;    ///< stretched over what is left free above `toCarryForward`, when that is higher than the band
    Band toCarryForward; ///< at the end of the rows of every page but the last
    Band summary;        ///< behind the last row
    Band lastPage;       ///< at the bottom of the last page with rows
    Band pageFooter;     ///< at the bottom of every page
    Band tableFrame;     ///< stretched over the rows' area of every page
    QSet<QString> connections;

    /// Millimetres between the left and the right margin.
    double contentWidth() const { return width - 2 * margin; }
    /// Millimetres between the upper and the lower margin.
    double contentHeight() const { return height - 2 * margin; }
};

struct Project
{
    QList<FontSpec> fonts;
    QList<std::shared_ptr<const Report>> reports;
};

/// Reads a project file. Throws core::Error that names the file and, for contents that are not as they must be, the
/// line.
Project readProject(const QString &file);

} // namespace report

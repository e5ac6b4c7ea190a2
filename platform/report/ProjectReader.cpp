#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/report/ElementReader.h"
#include "platform/report/Model.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace report {

namespace {

// Of items within items; all reading and layout goes down through them.
constexpr int deepestLevel = 5;
QString tooDeep()
{
    return core::tr("elementi annidati troppo in profondità");
}

int levelsOf(const std::vector<Item> &items)
{
    int deepest = 0;
    for (const Item &item : items)
        deepest = std::max(deepest, item.children.empty() ? 0 : 1 + levelsOf(item.children));
    return deepest;
}

class Reader : public ElementReader
{
public:
    using ElementReader::ElementReader;

    Project read();

private:
    Expression expression(const QString &name);
    void readFont();
    void readBlock();
    void readReport();
    void readBand(Band &band);
    void readItems(std::vector<Item> &items, double width);
    void readItem(const QString &element, std::vector<Item> &items, double width);
    void useBlock(std::vector<Item> &items, double width);
    Item readRows(Item item);
    void readText(const QString &element, Item &item);
    void readCell(Item item, std::vector<Item> &items);
    void readImage(Item &item);
    void readContinuation(Item &item);
    int fontIndex(const QString &attributeName, const QString &missing);

    // Items that several bands share; each place that uses them gets a copy.
    struct Block
    {
        double height = 0; // at least, where it stands apart
        std::vector<Item> items;
        QSet<QString> connections;
    };

    Project project_;
    QHash<QString, Block> blocks_;
    QSet<QString> *connections_ = nullptr; // named by the report or block being read
    double contentWidth_ = 0;
    bool mayContinue_ = false; // a text may go on behind the closing block
    int rowsDepth_ = 0;
};

Expression Reader::expression(const QString &name)
{
    const QString text = attribute(name);
    if (text.isEmpty())
        return {};
    Expression result = parsed([&] { return Expression::parse(text); });
    if (connections_)
        *connections_ += result.connections();
    return result;
}

Project Reader::read()
{
    if (enterRoot() != u"project"_s)
        fail(core::tr("manca l'elemento \"project\""));
    if (const QString version = required(u"version"_s); version != u"1"_s)
        fail(core::tr("versione \"%1\" non riconosciuta").arg(version));
    endAttributes();
    children([this](const QString &child) {
        if (child == u"font"_s)
            readFont();
        else if (child == u"block"_s)
            readBlock();
        else if (child == u"report"_s)
            readReport();
        else
            fail(core::tr("elemento \"%1\" non previsto").arg(child));
    });
    return project_;
}

void Reader::readFont()
{
    FontSpec font{.name = required(u"name"_s), .family = required(u"family"_s), .size = requiredLength(u"size"_s)};
    font.bold = flag(u"bold"_s);
    font.italic = flag(u"italic"_s);
    endAttributes();
    project_.fonts.append(font);
    children([this](const QString &child) { fail(core::tr("elemento \"%1\" non previsto").arg(child)); });
}

void Reader::readBlock()
{
    const QString name = required(u"name"_s);
    contentWidth_ = requiredLength(u"width"_s);
    Block block{.height = length(u"height"_s, 0)};
    endAttributes();
    if (blocks_.contains(name))
        fail(core::tr("il blocco \"%1\" è definito due volte").arg(name));
    connections_ = &block.connections;
    mayContinue_ = true;
    readItems(block.items, contentWidth_);
    connections_ = nullptr;
    blocks_.insert(name, block);
}

void Reader::useBlock(std::vector<Item> &items, double width)
{
    const QString name = required(u"block"_s);
    const double x = requiredLength(u"x"_s);
    const double y = requiredLength(u"y"_s);
    const bool apart = flag(u"apart"_s);
    endAttributes();
    const auto block = blocks_.constFind(name);
    if (block == blocks_.constEnd())
        fail(core::tr("il blocco \"%1\" non è definito").arg(name));
    *connections_ += block->connections;
    if (rowsDepth_ + levelsOf(block->items) + (apart ? 1 : 0) > deepestLevel)
        fail(tooDeep());
    Item group{.kind = ItemKind::Group, .area = QRectF(x, y, 0, block->height), .line = line()};
    for (Item item : block->items) {
        if (x + item.area.right() > width + 0.001)
            fail(core::tr("il blocco \"%1\" esce dal margine destro").arg(name));
        if (!item.continuation.isEmpty() && (apart || !mayContinue_))
            fail(core::tr("il seguito del testo non è possibile qui"));
        if (apart) {
            group.area.setRight(std::max(group.area.right(), x + item.area.right()));
            group.area.setBottom(std::max(group.area.bottom(), y + item.area.bottom()));
            group.children.push_back(std::move(item));
        } else {
            item.area.translate(x, y);
            item.continuationX += item.continuation.isEmpty() ? 0 : x;
            items.push_back(std::move(item));
        }
    }
    if (apart)
        items.push_back(std::move(group));
}

void Reader::readReport()
{
    auto report = std::make_shared<Report>();
    connections_ = &report->connections;
    report->name = required(u"name"_s);
    for (const auto &other : std::as_const(project_.reports)) {
        if (other->name == report->name)
            fail(core::tr("la stampa \"%1\" è definita due volte").arg(report->name));
    }
    report->title = expression(u"title"_s);
    report->width = length(u"width"_s, report->width);
    report->height = length(u"height"_s, report->height);
    report->margin = length(u"margin"_s, report->margin);
    endAttributes();
    if (report->contentWidth() <= 0 || report->contentHeight() <= 0)
        fail(core::tr("i margini non lasciano spazio sulla pagina"));
    contentWidth_ = report->contentWidth();

    const QHash<QString, Band *> bands = {{u"pageHeader"_s, &report->pageHeader},
                                          {u"firstPage"_s, &report->firstPage},
                                          {u"laterPages"_s, &report->laterPages},
                                          {u"columnTitles"_s, &report->columnTitles},
                                          {u"carriedForward"_s, &report->carriedForward},
                                          {u"detail"_s, &report->detail},
                                          {u"unusedSpace"_s, &report->unusedSpace},
                                          {u"toCarryForward"_s, &report->toCarryForward},
                                          {u"summary"_s, &report->summary},
                                          {u"lastPage"_s, &report->lastPage},
                                          {u"pageFooter"_s, &report->pageFooter},
                                          {u"tableFrame"_s, &report->tableFrame}};
    children([&](const QString &child) {
        Band *band = bands.value(child);
        if (!band)
            fail(core::tr("elemento \"%1\" non previsto in una stampa").arg(child));
        if (band->exists())
            fail(core::tr("\"%1\" è definito due volte").arg(child));
        mayContinue_ = band == &report->lastPage;
        readBand(*band);
    });
    project_.reports.append(report);
    connections_ = nullptr;
}

void Reader::readBand(Band &band)
{
    band.line = line();
    band.height = requiredLength(u"height"_s);
    band.connection = attribute(u"connection"_s);
    band.when = expression(u"when"_s);
    endAttributes();
    if (!band.connection.isEmpty())
        connections_->insert(band.connection);
    readItems(band.items, contentWidth_);
}

void Reader::readItems(std::vector<Item> &items, double width)
{
    children([&](const QString &element) { readItem(element, items, width); });
}

void Reader::readItem(const QString &element, std::vector<Item> &items, double width)
{
    if (element == u"use"_s) {
        useBlock(items, width);
        children([this](const QString &child) { fail(core::tr("elemento \"%1\" non previsto").arg(child)); });
        return;
    }
    static const QHash<QString, ItemKind> kinds = {{u"text"_s, ItemKind::Text},   {u"field"_s, ItemKind::Text},
                                                   {u"expr"_s, ItemKind::Text},   {u"cell"_s, ItemKind::Box},
                                                   {u"line"_s, ItemKind::Line},   {u"box"_s, ItemKind::Box},
                                                   {u"image"_s, ItemKind::Image}, {u"rows"_s, ItemKind::Rows}};
    const auto kind = kinds.constFind(element);
    if (kind == kinds.constEnd())
        fail(core::tr("elemento \"%1\" non previsto").arg(element));
    Item item{.kind = *kind, .line = line()};
    const double x = requiredLength(u"x"_s);
    const double y = requiredLength(u"y"_s);
    item.area = QRectF(x, y, requiredLength(u"width"_s), requiredLength(u"height"_s));
    if (item.area.right() > width + 0.001)
        fail(core::tr("l'elemento esce dal margine destro"));
    item.when = expression(u"when"_s);
    if (*kind == ItemKind::Rows) {
        items.push_back(readRows(std::move(item)));
        return;
    }
    if (element == u"cell"_s) {
        readCell(std::move(item), items);
    } else {
        if (*kind == ItemKind::Text)
            readText(element, item);
        if (*kind == ItemKind::Image)
            readImage(item);
        if (*kind == ItemKind::Line || *kind == ItemKind::Box)
            item.lineWidth = length(u"line"_s, 0.2);
        if (*kind == ItemKind::Box)
            item.fill = color(u"fill"_s);
        endAttributes();
        items.push_back(std::move(item));
    }
    children([this](const QString &child) { fail(core::tr("elemento \"%1\" non previsto").arg(child)); });
}

Item Reader::readRows(Item item)
{
    item.connection = required(u"connection"_s);
    item.rowHeight = requiredLength(u"rowHeight"_s);
    connections_->insert(item.connection);
    endAttributes();
    if (++rowsDepth_ > deepestLevel)
        fail(tooDeep());
    const double width = item.area.width();
    readItems(item.children, width);
    --rowsDepth_;
    return item;
}

void Reader::readText(const QString &element, Item &item)
{
    if (element == u"text"_s) {
        item.value = Expression::literal(required(u"value"_s));
    } else {
        required(u"value"_s);
        item.value = expression(u"value"_s);
    }
    item.format.kind = parsed([this] { return formatKind(attribute(u"format"_s, u"plain"_s)); });
    item.format.places = static_cast<int>(length(u"places"_s, 2));
    item.font = fontIndex(u"font"_s, {});
    item.alignment = alignment(u"top"_s);
    item.grow = flag(u"grow"_s);
    item.wrap = flag(u"wrap"_s) || item.grow;
    item.leaves = expression(u"leaves"_s);
    readContinuation(item);
}

// How the text goes on when it is longer than its area.
void Reader::readContinuation(Item &item)
{
    item.continuation = attribute(u"continuation"_s);
    item.continuationFont = hasAttribute(u"continuationFont"_s) ? fontIndex(u"continuationFont"_s, {}) : item.font;
    item.continuationX = length(u"continuationX"_s, 0);
    item.continuationWidth = length(u"continuationWidth"_s, contentWidth_ - item.continuationX);
    const bool possible = mayContinue_ && rowsDepth_ == 0 && !item.grow && !hasAttribute(u"leaves"_s) &&
                          item.continuationX + item.continuationWidth <= contentWidth_ + 0.001;
    if (!item.continuation.isEmpty() && !possible)
        fail(core::tr("il seguito del testo non è possibile qui"));
}

// A box with a small caption at its top and a value below: three items in one, as forms are full of them.
void Reader::readCell(Item item, std::vector<Item> &items)
{
    constexpr double inset = 1.0;
    constexpr double captionHeight = 3.2;
    Item caption{.kind = ItemKind::Text, .when = item.when, .line = item.line};
    caption.value = Expression::literal(required(u"caption"_s));
    caption.area = QRectF(item.area.x() + inset, item.area.y() + 0.4, item.area.width() - 2 * inset, captionHeight);
    caption.font = fontIndex(u"captionFont"_s, u"caption"_s);

    Item value{.kind = ItemKind::Text, .when = item.when, .line = item.line};
    value.area = item.area.adjusted(inset, captionHeight + 0.5, -inset, -0.5);
    if (hasAttribute(u"value"_s))
        readText(u"expr"_s, value);

    item.lineWidth = length(u"line"_s, 0.2);
    item.fill = color(u"fill"_s);
    endAttributes();
    items.push_back(std::move(item));
    items.push_back(std::move(caption));
    if (!value.value.isEmpty())
        items.push_back(std::move(value));
}

// A picture lies beside the project file, or comes with the data.
void Reader::readImage(Item &item)
{
    if (hasAttribute(u"value"_s)) {
        item.value = expression(u"value"_s);
        item.alignment = alignment(u"top"_s);
        return;
    }
    const QString path = QFileInfo(file()).dir().absoluteFilePath(required(u"file"_s));
    if (!item.image.load(path))
        fail(core::tr("l'immagine \"%1\" non si può leggere").arg(path));
}

int Reader::fontIndex(const QString &attributeName, const QString &missing)
{
    const QString name = attribute(attributeName, missing);
    for (qsizetype i = 0; i < project_.fonts.size(); ++i) {
        if (name.isEmpty() || project_.fonts[i].name == name)
            return static_cast<int>(i);
    }
    fail(name.isEmpty() ? core::tr("nessun carattere definito")
                        : core::tr("il carattere \"%1\" non è definito").arg(name));
}

} // namespace

Project readProject(const QString &file)
{
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly))
        throw core::Error(core::tr("Impossibile leggere il file delle stampe \"%1\".").arg(file));
    return Reader(&device, file).read();
}

} // namespace report

#include "platform/core/Error.h"
#include "platform/report/Model.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <functional>

using namespace Qt::StringLiterals;

namespace report {

namespace {

QString xmlProblem(const QXmlStreamReader &reader)
{
    switch (reader.error()) {
    case QXmlStreamReader::PrematureEndOfDocumentError:
        return u"il file finisce prima che tutti gli elementi siano chiusi"_s;
    case QXmlStreamReader::NotWellFormedError:
        return u"il file non è XML ben formato"_s;
    default:
        return reader.errorString();
    }
}

class Reader
{
public:
    Reader(QIODevice *device, QString file)
        : xml_(device)
        , file_(std::move(file))
    {
    }

    Project read();

private:
    // Attributes of the current element. Each is asked for once; one that nobody asked for is an error.
    QString attribute(const QString &name, const QString &missing = {});
    QString required(const QString &name);
    double length(const QString &name, double missing);
    double requiredLength(const QString &name);
    bool flag(const QString &name);
    Expression expression(const QString &name);
    void endAttributes();

    using Children = std::function<void(const QString &element)>;
    void enterElement();
    void children(const Children &child);
    [[noreturn]] void failForXml();

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
    int fontIndex(const QString &attributeName, const QString &missing);
    Qt::Alignment alignment(const QString &missing);
    QColor color(const QString &name);
    template <typename Parse>
    auto parsed(Parse parse);

    [[noreturn]] void fail(const QString &text) const;

    QXmlStreamReader xml_;
    QString file_;
    QXmlStreamAttributes attributes_;
    QStringList asked_;
    // Items that several bands share; each place that uses them gets a copy.
    struct Block
    {
        std::vector<Item> items;
        QSet<QString> connections;
    };

    Project project_;
    QHash<QString, Block> blocks_;
    QSet<QString> *connections_ = nullptr; // named by the report or block being read
    double contentWidth_ = 0;
    int lineOfElement_ = 0;
};

void Reader::fail(const QString &text) const
{
    throw core::Error(u"File delle stampe \"%1\", riga %2: %3."_s.arg(file_).arg(lineOfElement_).arg(text));
}

template <typename Parse>
auto Reader::parsed(Parse parse)
{
    try {
        return parse();
    } catch (const core::Error &error) {
        fail(error.text());
    }
}

QString Reader::attribute(const QString &name, const QString &missing)
{
    asked_.append(name);
    return attributes_.hasAttribute(name) ? attributes_.value(name).toString() : missing;
}

QString Reader::required(const QString &name)
{
    if (!attributes_.hasAttribute(name))
        fail(u"manca l'attributo \"%1\" di \"%2\""_s.arg(name, xml_.name()));
    return attribute(name);
}

double Reader::length(const QString &name, double missing)
{
    const QString text = attribute(name);
    if (text.isEmpty())
        return missing;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || value < 0 || value > 2000)
        fail(u"\"%1\" non è una misura valida per \"%2\""_s.arg(text, name));
    return value;
}

double Reader::requiredLength(const QString &name)
{
    required(name);
    return length(name, 0);
}

bool Reader::flag(const QString &name)
{
    const QString text = attribute(name, u"false"_s);
    if (text != u"true"_s && text != u"false"_s)
        fail(u"\"%1\" deve essere \"true\" o \"false\""_s.arg(name));
    return text == u"true"_s;
}

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

void Reader::endAttributes()
{
    for (const QXmlStreamAttribute &given : std::as_const(attributes_)) {
        if (!asked_.contains(given.name().toString()))
            fail(u"attributo \"%1\" non previsto in \"%2\""_s.arg(given.name(), xml_.name()));
    }
}

void Reader::enterElement()
{
    lineOfElement_ = static_cast<int>(xml_.lineNumber());
    attributes_ = xml_.attributes();
    asked_.clear();
}

void Reader::failForXml()
{
    lineOfElement_ = static_cast<int>(xml_.lineNumber());
    fail(xmlProblem(xml_));
}

void Reader::children(const Children &child)
{
    while (xml_.readNextStartElement()) {
        enterElement();
        child(xml_.name().toString());
    }
    if (xml_.hasError())
        failForXml();
}

Project Reader::read()
{
    if (!xml_.readNextStartElement())
        failForXml();
    enterElement();
    if (xml_.name() != u"project"_s)
        fail(u"manca l'elemento \"project\""_s);
    if (const QString version = required(u"version"_s); version != u"1"_s)
        fail(u"versione \"%1\" non riconosciuta"_s.arg(version));
    endAttributes();
    children([this](const QString &child) {
        if (child == u"font"_s)
            readFont();
        else if (child == u"block"_s)
            readBlock();
        else if (child == u"report"_s)
            readReport();
        else
            fail(u"elemento \"%1\" non previsto"_s.arg(child));
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
    children([this](const QString &child) { fail(u"elemento \"%1\" non previsto"_s.arg(child)); });
}

void Reader::readBlock()
{
    const QString name = required(u"name"_s);
    contentWidth_ = requiredLength(u"width"_s);
    endAttributes();
    if (blocks_.contains(name))
        fail(u"il blocco \"%1\" è definito due volte"_s.arg(name));
    Block block;
    connections_ = &block.connections;
    readItems(block.items, contentWidth_);
    connections_ = nullptr;
    blocks_.insert(name, block);
}

void Reader::useBlock(std::vector<Item> &items, double width)
{
    const QString name = required(u"block"_s);
    const double x = requiredLength(u"x"_s);
    const double y = requiredLength(u"y"_s);
    endAttributes();
    const auto block = blocks_.constFind(name);
    if (block == blocks_.constEnd())
        fail(u"il blocco \"%1\" non è definito"_s.arg(name));
    *connections_ += block->connections;
    for (Item item : block->items) {
        item.area.translate(x, y);
        item.continuationX += item.continuation.isEmpty() ? 0 : x;
        if (item.area.right() > width + 0.001)
            fail(u"il blocco \"%1\" esce dal margine destro"_s.arg(name));
        items.push_back(std::move(item));
    }
}

void Reader::readReport()
{
    auto report = std::make_shared<Report>();
    connections_ = &report->connections;
    report->name = required(u"name"_s);
    for (const auto &other : std::as_const(project_.reports)) {
        if (other->name == report->name)
            fail(u"la stampa \"%1\" è definita due volte"_s.arg(report->name));
    }
    report->title = expression(u"title"_s);
    report->width = length(u"width"_s, report->width);
    report->height = length(u"height"_s, report->height);
    report->margin = length(u"margin"_s, report->margin);
    endAttributes();
    if (report->contentWidth() <= 0 || report->contentHeight() <= 0)
        fail(u"i margini non lasciano spazio sulla pagina"_s);
    contentWidth_ = report->contentWidth();

    const QHash<QString, Band *> bands = {{u"pageHeader"_s, &report->pageHeader},
                                          {u"firstPage"_s, &report->firstPage},
                                          {u"columnTitles"_s, &report->columnTitles},
                                          {u"carriedForward"_s, &report->carriedForward},
                                          {u"detail"_s, &report->detail},
                                          {u"toCarryForward"_s, &report->toCarryForward},
                                          {u"summary"_s, &report->summary},
                                          {u"lastPage"_s, &report->lastPage},
                                          {u"pageFooter"_s, &report->pageFooter},
                                          {u"tableFrame"_s, &report->tableFrame}};
    children([&](const QString &child) {
        Band *band = bands.value(child);
        if (!band)
            fail(u"elemento \"%1\" non previsto in una stampa"_s.arg(child));
        if (band->exists())
            fail(u"\"%1\" è definito due volte"_s.arg(child));
        readBand(*band);
    });
    project_.reports.append(report);
    connections_ = nullptr;
}

void Reader::readBand(Band &band)
{
    band.line = lineOfElement_;
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
        children([this](const QString &child) { fail(u"elemento \"%1\" non previsto"_s.arg(child)); });
        return;
    }
    static const QHash<QString, ItemKind> kinds = {{u"text"_s, ItemKind::Text},   {u"field"_s, ItemKind::Text},
                                                   {u"expr"_s, ItemKind::Text},   {u"cell"_s, ItemKind::Box},
                                                   {u"line"_s, ItemKind::Line},   {u"box"_s, ItemKind::Box},
                                                   {u"image"_s, ItemKind::Image}, {u"rows"_s, ItemKind::Rows}};
    const auto kind = kinds.constFind(element);
    if (kind == kinds.constEnd())
        fail(u"elemento \"%1\" non previsto"_s.arg(element));
    Item item{.kind = *kind, .line = lineOfElement_};
    const double x = requiredLength(u"x"_s);
    const double y = requiredLength(u"y"_s);
    item.area = QRectF(x, y, requiredLength(u"width"_s), requiredLength(u"height"_s));
    if (item.area.right() > width + 0.001)
        fail(u"l'elemento esce dal margine destro"_s);
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
    children([this](const QString &child) { fail(u"elemento \"%1\" non previsto"_s.arg(child)); });
}

Item Reader::readRows(Item item)
{
    item.connection = required(u"connection"_s);
    item.rowHeight = requiredLength(u"rowHeight"_s);
    connections_->insert(item.connection);
    endAttributes();
    const double width = item.area.width();
    readItems(item.children, width);
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
    item.continuation = attribute(u"continuation"_s);
    item.continuationX = length(u"continuationX"_s, 0);
    item.continuationWidth = length(u"continuationWidth"_s, contentWidth_ - item.continuationX);
    if (!item.continuation.isEmpty() &&
        (item.grow || item.continuationX + item.continuationWidth > contentWidth_ + 0.001))
        fail(u"il seguito del testo non è possibile qui"_s);
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
    if (attributes_.hasAttribute(u"value"_s))
        readText(u"expr"_s, value);

    item.lineWidth = length(u"line"_s, 0.2);
    item.fill = color(u"fill"_s);
    endAttributes();
    items.push_back(std::move(item));
    items.push_back(std::move(caption));
    if (!value.value.isEmpty())
        items.push_back(std::move(value));
}

void Reader::readImage(Item &item)
{
    const QString path = QFileInfo(file_).dir().absoluteFilePath(required(u"file"_s));
    if (!item.image.load(path))
        fail(u"l'immagine \"%1\" non si può leggere"_s.arg(path));
}

int Reader::fontIndex(const QString &attributeName, const QString &missing)
{
    const QString name = attribute(attributeName, missing);
    for (qsizetype i = 0; i < project_.fonts.size(); ++i) {
        if (name.isEmpty() || project_.fonts[i].name == name)
            return static_cast<int>(i);
    }
    fail(name.isEmpty() ? u"nessun carattere definito"_s : u"il carattere \"%1\" non è definito"_s.arg(name));
}

Qt::Alignment Reader::alignment(const QString &missing)
{
    static const QHash<QString, Qt::Alignment> horizontal = {
        {u"left"_s, Qt::AlignLeft}, {u"center"_s, Qt::AlignHCenter}, {u"right"_s, Qt::AlignRight}};
    static const QHash<QString, Qt::Alignment> vertical = {
        {u"top"_s, Qt::AlignTop}, {u"middle"_s, Qt::AlignVCenter}, {u"bottom"_s, Qt::AlignBottom}};
    const QString across = attribute(u"align"_s, u"left"_s);
    const QString down = attribute(u"valign"_s, missing);
    if (!horizontal.contains(across) || !vertical.contains(down))
        fail(u"allineamento \"%1\" non valido"_s.arg(horizontal.contains(across) ? down : across));
    return horizontal[across] | vertical[down];
}

QColor Reader::color(const QString &name)
{
    const QString text = attribute(name);
    const QColor result(text);
    if (!text.isEmpty() && !result.isValid())
        fail(u"\"%1\" non è un colore"_s.arg(text));
    return result;
}

} // namespace

Project readProject(const QString &file)
{
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly))
        throw core::Error(u"Impossibile leggere il file delle stampe \"%1\"."_s.arg(file));
    return Reader(&device, file).read();
}

} // namespace report

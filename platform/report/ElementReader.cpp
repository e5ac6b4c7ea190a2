#include "platform/report/ElementReader.h"

#include "platform/core/Translation.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace report {

namespace {

QString xmlProblem(const QXmlStreamReader &reader)
{
    switch (reader.error()) {
    case QXmlStreamReader::PrematureEndOfDocumentError:
        return core::tr("il file finisce prima che tutti gli elementi siano chiusi");
    case QXmlStreamReader::NotWellFormedError:
        return core::tr("il file non è XML ben formato");
    default:
        return reader.errorString();
    }
}

} // namespace

ElementReader::ElementReader(QIODevice *device, QString file)
    : xml_(device)
    , file_(std::move(file))
{
}

QString ElementReader::enterRoot()
{
    if (!xml_.readNextStartElement())
        failForXml();
    enterElement();
    return elementName();
}

void ElementReader::fail(const QString &text) const
{
    throw core::Error(core::tr("File delle stampe \"%1\", riga %2: %3.").arg(file_).arg(lineOfElement_).arg(text));
}

QString ElementReader::attribute(const QString &name, const QString &missing)
{
    asked_.append(name);
    return attributes_.hasAttribute(name) ? attributes_.value(name).toString() : missing;
}

QString ElementReader::required(const QString &name)
{
    if (!attributes_.hasAttribute(name))
        fail(core::tr("manca l'attributo \"%1\" di \"%2\"").arg(name, xml_.name()));
    return attribute(name);
}

double ElementReader::length(const QString &name, double missing)
{
    const QString text = attribute(name);
    if (text.isEmpty())
        return missing;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || value < 0 || value > 2000)
        fail(core::tr("\"%1\" non è una misura valida per \"%2\"").arg(text, name));
    return value;
}

double ElementReader::requiredLength(const QString &name)
{
    required(name);
    return length(name, 0);
}

bool ElementReader::flag(const QString &name)
{
    const QString text = attribute(name, u"false"_s);
    if (text != u"true"_s && text != u"false"_s)
        fail(core::tr("\"%1\" deve essere \"true\" o \"false\"").arg(name));
    return text == u"true"_s;
}

Qt::Alignment ElementReader::alignment(const QString &missing)
{
    static const QHash<QString, Qt::Alignment> horizontal = {
        {u"left"_s, Qt::AlignLeft}, {u"center"_s, Qt::AlignHCenter}, {u"right"_s, Qt::AlignRight}};
    static const QHash<QString, Qt::Alignment> vertical = {
        {u"top"_s, Qt::AlignTop}, {u"middle"_s, Qt::AlignVCenter}, {u"bottom"_s, Qt::AlignBottom}};
    const QString across = attribute(u"align"_s, u"left"_s);
    const QString down = attribute(u"valign"_s, missing);
    if (!horizontal.contains(across) || !vertical.contains(down))
        fail(core::tr("allineamento \"%1\" non valido").arg(horizontal.contains(across) ? down : across));
    return horizontal[across] | vertical[down];
}

QColor ElementReader::color(const QString &name)
{
    const QString text = attribute(name);
    const QColor result(text);
    if (!text.isEmpty() && !result.isValid())
        fail(core::tr("\"%1\" non è un colore").arg(text));
    return result;
}

void ElementReader::endAttributes()
{
    for (const QXmlStreamAttribute &given : std::as_const(attributes_)) {
        if (!asked_.contains(given.name().toString()))
            fail(core::tr("attributo \"%1\" non previsto in \"%2\"").arg(given.name(), xml_.name()));
    }
}

void ElementReader::enterElement()
{
    lineOfElement_ = static_cast<int>(xml_.lineNumber());
    attributes_ = xml_.attributes();
    asked_.clear();
}

void ElementReader::failForXml()
{
    lineOfElement_ = static_cast<int>(xml_.lineNumber());
    fail(xmlProblem(xml_));
}

void ElementReader::children(const std::function<void(const QString &element)> &child)
{
    while (xml_.readNextStartElement()) {
        enterElement();
        child(xml_.name().toString());
    }
    if (xml_.hasError())
        failForXml();
}

} // namespace report

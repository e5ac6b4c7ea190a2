#include "tests/magazzino/fatture/InvoiceFile.h"

#include "tests/support/Kit.h"

namespace test {

namespace {

constexpr qint64 cent = 1'000'000;
const QString general = u"FatturaElettronicaBody/DatiGenerali/DatiGeneraliDocumento/"_s;

Element readElement(QXmlStreamReader &xml)
{
    Element element{.name = xml.name().toString(), .text = {}, .children = {}};
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement())
            element.children.append(readElement(xml));
        else if (xml.isCharacters())
            element.text += xml.text();
        else if (xml.isEndElement())
            break;
    }
    return element;
}

// Three factors of a hundredth each and the percentage make hundred-millionths.
qint64 rowTotal(const Element &row)
{
    const QString quantity = row.first(u"Quantita"_s);
    const qint64 price = parts(row.first(u"PrezzoUnitario"_s)) / cent;
    const qint64 count = quantity.isNull() ? 100 : parts(quantity) / cent;
    const qint64 discount = parts(row.first(u"ScontoMaggiorazione/Percentuale"_s)) / cent;
    const bool surcharge = row.first(u"ScontoMaggiorazione/Tipo"_s) == u"MG";
    return price * count * (10'000 + (surcharge ? discount : -discount));
}

} // namespace

QList<const Element *> Element::all(const QString &path) const
{
    const QString step = path.section(u'/', 0, 0);
    const QString rest = path.section(u'/', 1);
    QList<const Element *> found;
    for (const Element &child : children) {
        if (child.name != step)
            continue;
        if (rest.isEmpty())
            found.append(&child);
        else
            found += child.all(rest);
    }
    return found;
}

QString Element::first(const QString &path) const
{
    const Element *found = all(path).value(0);
    return found ? found->text : QString();
}

Element readXml(const QByteArray &bytes)
{
    QXmlStreamReader xml(bytes);
    xml.readNextStartElement();
    Element root = readElement(xml);
    if (xml.hasError())
        throw core::Error(xml.errorString());
    return root;
}

qint64 parts(const QString &decimal)
{
    const bool negative = decimal.startsWith(u'-');
    const QString whole = decimal.section(u'.', 0, 0).remove(u'-');
    const QString places = decimal.section(u'.', 1).leftJustified(8, u'0');
    const qint64 value = whole.toLongLong() * 100 * cent + places.toLongLong();
    return negative ? -value : value;
}

QStringList sumFaults(const Element &invoice)
{
    QStringList faults;
    QMap<QString, qint64> bases; // by rate and nature
    const Element goods = *invoice.all(u"FatturaElettronicaBody/DatiBeniServizi"_s).value(0);
    const auto keyOf = [](const Element *element) {
        return element->first(u"AliquotaIVA"_s) + u' ' + element->first(u"Natura"_s);
    };
    for (const Element *row : goods.all(u"DettaglioLinee"_s)) {
        const qint64 total = parts(row->first(u"PrezzoTotale"_s));
        if (qAbs(total - rowTotal(*row)) > cent)
            faults.append(u"00423 row "_s + row->first(u"NumeroLinea"_s));
        if ((parts(row->first(u"AliquotaIVA"_s)) == 0) == row->first(u"Natura"_s).isEmpty())
            faults.append(u"00400/00401 row "_s + row->first(u"NumeroLinea"_s));
        bases[keyOf(row)] += total;
    }
    qint64 sum = parts(invoice.first(general + u"Arrotondamento"_s));
    for (const Element *summary : goods.all(u"DatiRiepilogo"_s)) {
        const QString key = keyOf(summary);
        const qint64 base = parts(summary->first(u"ImponibileImporto"_s));
        const qint64 tax = parts(summary->first(u"Imposta"_s));
        if (!bases.contains(key))
            faults.append(u"summary of no row: "_s + key);
        // Rows and rounding make the base to the last decimal, which is more than is asked for.
        if (bases.take(key) + parts(summary->first(u"Arrotondamento"_s)) != base)
            faults.append(u"00422 "_s + key);
        const qint64 rate = parts(summary->first(u"AliquotaIVA"_s)) / cent;
        const qint64 half = base < 0 ? -5000 : 5000;
        if (tax / cent != (base / cent * rate + half) / 10'000)
            faults.append(u"00421 "_s + key);
        sum += base + tax;
    }
    for (const QString &key : bases.keys())
        faults.append(u"00443/00444 "_s + key);
    if (sum != parts(invoice.first(general + u"ImportoTotaleDocumento"_s)))
        faults.append(u"the total is not that of the summaries"_s);
    return faults;
}

QStringList schemaFaults(const QStringList &files, const QString &schemaFolder)
{
    QProcess lint;
    lint.setWorkingDirectory(schemaFolder);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XML_CATALOG_FILES"_s, u"catalog.xml"_s);
    lint.setProcessEnvironment(environment);
    lint.start(u"xmllint"_s,
               QStringList{u"--nonet"_s, u"--noout"_s, u"--schema"_s, u"Schema_VFPR12_v1.2.3.xsd"_s} + files);
    if (!lint.waitForFinished(120'000))
        return {u"xmllint did not run: "_s + lint.errorString()};
    QStringList lines = QString::fromUtf8(lint.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts);
    const qsizetype valid = lines.removeIf([](const QString &line) { return line.endsWith(u" validates"); });
    if (valid != files.size())
        lines.append(u"%1 of %2 files are valid"_s.arg(valid).arg(files.size()));
    return lines;
}

QStringList otherReaderFaults(const QStringList &files)
{
    const QString program = uR"(
import sys
import xml.etree.ElementTree as ET
try:
    import a38.fattura as fattura
    from a38.validation import Validation
except ImportError:
    print("no second reader")
    sys.exit()
for name in sys.argv[1:]:
    validation = Validation()
    fattura.auto_from_etree(ET.parse(name).getroot()).validate(validation)
    # Without a code and a mailbox the exchange system leaves the invoice in the customer's own area.
    found = [str(one) for one in validation.errors + validation.warnings if "[00426]" not in str(one)]
    if found:
        print(name, *found)
)"_s;
    QProcess python;
    // The distribution's own, whose packages the tests install.
    python.start(u"/usr/bin/python3"_s, QStringList{u"-c"_s, program} + files);
    if (!python.waitForFinished(120'000) || python.exitCode() != 0)
        return {u"python3 failed: "_s + QString::fromUtf8(python.readAllStandardError())};
    return QString::fromUtf8(python.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace test

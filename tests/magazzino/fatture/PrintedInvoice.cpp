#include "tests/magazzino/fatture/PrintedInvoice.h"

#include "tests/support/Kit.h"

namespace test {

namespace {

const QString amountPattern = u"-?€ [0-9.]+,[0-9]{2}"_s;

/// "-€ 1.234,50" in hundredths.
qint64 cents(QString amount)
{
    const bool negative = amount.startsWith(u'-');
    const qint64 value = amount.remove(QRegularExpression(u"[^0-9]"_s)).toLongLong();
    return negative ? -value : value;
}

qint64 captioned(const QString &text, const QString &caption)
{
    const QRegularExpression pattern(caption + u" +("_s + amountPattern + u')');
    return cents(pattern.match(text).captured(1));
}

/// The printed figures, in hundredths, by VAT code.
struct Paper
{
    QMap<QString, qint64> rows;
    QMap<QString, qint64> bases;
    QMap<QString, qint64> basesByRate; ///< "22.00"
    QMap<QString, qint64> taxesByRate;
};

void readRow(const QString &line, Paper &paper)
{
    static const QRegularExpression row(u"("_s + amountPattern + u") *(\\S{0,2})$"_s);
    static const QRegularExpression amount(amountPattern);
    const QRegularExpressionMatch match = row.match(line.trimmed());
    const bool counts = line.count(amount) == 2 || line.contains(u"Arrotondamento"_s);
    if (match.hasMatch() && counts)
        paper.rows[match.captured(2)] += cents(match.captured(1));
}

void readSummary(const QString &line, Paper &paper)
{
    static const QRegularExpression summary(u"^ *(\\S{1,2}) .*? ([0-9,]+) +("_s + amountPattern + u") +("_s +
                                            amountPattern + u')');
    const QRegularExpressionMatch match = summary.match(line);
    if (!match.hasMatch())
        return;
    const QString rate = QString::number(QString(match.captured(2)).replace(u',', u'.').toDouble(), 'f', 2);
    paper.bases[match.captured(1)] += cents(match.captured(3));
    paper.basesByRate[rate] += cents(match.captured(3));
    paper.taxesByRate[rate] += cents(match.captured(4));
}

Paper read(const QString &layout)
{
    Paper paper;
    bool closing = false;
    for (const QString &line : layout.split(u'\n')) {
        closing |= line.contains(u"Riepilogo IVA"_s) || line.contains(u"Titolo di esenzione"_s);
        if (closing)
            readSummary(line, paper);
        else
            readRow(line, paper);
    }
    return paper;
}

QMap<QString, qint64> basesOf(const Element &invoice, bool taxed)
{
    QMap<QString, qint64> bases;
    for (const Element *summary : invoice.all(u"FatturaElettronicaBody/DatiBeniServizi/DatiRiepilogo"_s)) {
        const QString rate = summary->first(u"AliquotaIVA"_s);
        if ((parts(rate) != 0) == taxed)
            bases[rate] += parts(summary->first(u"ImponibileImporto"_s)) / 1'000'000;
    }
    return bases;
}

} // namespace

QStringList printFaults(const QString &layout, const Element &invoice)
{
    QStringList faults;
    const auto same = [&faults](const QString &what, qint64 one, qint64 other) {
        if (one != other)
            faults.append(u"%1: %2 and %3"_s.arg(what).arg(one).arg(other));
    };
    Paper paper = read(layout);
    const QString closing = layout.mid(layout.lastIndexOf(u"Totale imponibile"_s));
    const qint64 base = captioned(closing, u"Totale imponibile"_s);
    const qint64 tax = captioned(closing, u"Totale imposta"_s);
    const qint64 others = captioned(closing, u"Importi (?:fuori campo|esenti) IVA"_s);
    const qint64 rounding = captioned(closing, u"Arrotondamento"_s);
    const qint64 total = captioned(closing, u"Totale documento"_s);
    qint64 bases = 0;
    for (auto one = paper.bases.begin(); one != paper.bases.end(); ++one) {
        same(u"rows and base of "_s + one.key(), paper.rows.value(one.key()), *one);
        bases += *one;
    }
    same(u"rows without VAT"_s, paper.rows.value({}), others);
    same(u"bases and their total"_s, bases, base);
    qint64 taxes = 0;
    for (auto one = paper.taxesByRate.begin(); one != paper.taxesByRate.end(); ++one) {
        const double exact = static_cast<double>(paper.basesByRate[one.key()]) * one.key().toDouble() / 100;
        if (qAbs(exact - static_cast<double>(*one)) > 0.5001)
            faults.append(u"tax at "_s + one.key());
        taxes += *one;
    }
    same(u"taxes and their total"_s, taxes, tax);
    same(u"sum and total"_s, base + tax + others + rounding, total);
    const QString general = u"FatturaElettronicaBody/DatiGenerali/DatiGeneraliDocumento/"_s;
    same(u"total of the file"_s, total, parts(invoice.first(general + u"ImportoTotaleDocumento"_s)) / 1'000'000);
    same(u"rounding of the file"_s, rounding, parts(invoice.first(general + u"Arrotondamento"_s)) / 1'000'000);
    QMap<QString, qint64> taxed = paper.basesByRate;
    const qint64 untaxed = taxed.take(u"0.00"_s) + others;
    if (taxed != basesOf(invoice, true))
        faults.append(u"bases of the file"_s);
    same(u"amounts without VAT of the file"_s, untaxed, basesOf(invoice, false).value(u"0.00"_s));
    return faults;
}

} // namespace test

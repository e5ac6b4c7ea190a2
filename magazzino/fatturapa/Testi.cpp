#include "magazzino/fatturapa/Testi.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

const QHash<char32_t, QString> scritture = {
    {U'€', u"EUR"_s}, {U'₤', u"Lit."_s}, {U'‐', u"-"_s},   {U'‑', u"-"_s},  {U'‒', u"-"_s},     {U'–', u"-"_s},
    {U'—', u"-"_s},   {U'―', u"-"_s},    {U'−', u"-"_s},   {U'‘', u"'"_s},  {U'’', u"'"_s},     {U'‚', u"'"_s},
    {U'‛', u"'"_s},   {U'′', u"'"_s},    {U'“', u"\""_s},  {U'”', u"\""_s}, {U'„', u"\""_s},    {U'″', u"\""_s},
    {U'‹', u"<"_s},   {U'›', u">"_s},    {U'…', u"..."_s}, {U'•', u"-"_s},  {U'·', u"·"_s},     {U'™', u"(TM)"_s},
    {U'Œ', u"OE"_s},  {U'œ', u"oe"_s},   {U'Ł', u"L"_s},   {U'ł', u"l"_s},  {U'Đ', u"D"_s},     {U'đ', u"d"_s},
    {U'ı', u"i"_s},   {U'⌀', u"Ø"_s},    {U'≤', u"<="_s},  {U'≥', u">="_s}, {U'≈', u"circa"_s}, {U'‰', u"per mille"_s},
    {U'Ω', u"Ohm"_s}, {U'Ω', u"Ohm"_s},  {U'μ', u"µ"_s},   {U'∅', u"Ø"_s},  {U'→', u"->"_s},    {U'←', u"<-"_s}};

// Marks of writing direction and joiners are nothing that anybody sees.
bool siTralascia(char32_t carattere)
{
    return carattere == 0x00AD || carattere == 0xFEFF || (carattere >= 0x200B && carattere <= 0x200F) ||
           (carattere >= 0x202A && carattere <= 0x202E) || carattere == 0xFE0F;
}

bool isControllo(char32_t carattere)
{
    return carattere < 0x20 || (carattere >= 0x7F && carattere <= 0x9F);
}

// The letter below its accents, the parts of a ligature; empty when there is none.
QString scomposto(char32_t carattere, char32_t massimo)
{
    QString lettere;
    for (const uint parte : QString::fromUcs4(&carattere, 1).normalized(QString::NormalizationForm_KD).toUcs4()) {
        if (parte <= massimo && !isControllo(parte))
            lettere += QChar(static_cast<ushort>(parte));
        else if (!QChar::isMark(parte))
            return {};
    }
    return lettere;
}

QString suUnaRiga(QString testo)
{
    testo.replace(u"\r\n"_s, u" "_s);
    for (const char16_t interruzione : {u'\n', u'\r', u'\t', u'\v', u'\f', u'\x85', u'\x2028', u'\x2029'})
        testo.replace(QChar(interruzione), u' ');
    return testo;
}

TestoLatino trascritto(const QString &testo, char32_t massimo)
{
    TestoLatino risultato;
    // Letters and accents that were typed apart are one character in Latin-1.
    for (const char32_t carattere : suUnaRiga(testo).normalized(QString::NormalizationForm_C).toUcs4()) {
        if (siTralascia(carattere))
            continue;
        if (isControllo(carattere)) {
            risultato.controllo = true;
            continue;
        }
        if (carattere <= massimo) {
            risultato.testo += QChar(static_cast<ushort>(carattere));
            continue;
        }
        QString lettere = scritture.value(carattere);
        if (lettere.isEmpty() || lettere[0].unicode() > massimo)
            lettere = scomposto(carattere, massimo);
        risultato.testo += lettere;
        const QString segno = QString::fromUcs4(&carattere, 1);
        if (lettere.isEmpty() && !risultato.rifiutati.contains(segno))
            risultato.rifiutati += segno;
    }
    risultato.testo = risultato.testo.trimmed();
    return risultato;
}

} // namespace

TestoLatino latino(const QString &testo)
{
    return trascritto(testo, 0xFF);
}

QString ascii(const QString &testo)
{
    return trascritto(testo, 0x7E).testo;
}

} // namespace fatturapa

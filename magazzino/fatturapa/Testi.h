#pragma once
#include <QString>

/// Texts as the electronic invoice takes them: the characters of Latin-1 alone, on one line.
namespace fatturapa {

struct TestoLatino
{
    QString testo;          ///< what can be written, blanks around it gone
    QString rifiutati;      ///< characters that have no spelling in Latin-1, each once
    bool controllo = false; ///< there were control characters besides line breaks and tabs
};

/// `testo` with the known signs written out (EUR, plain quotes and hyphens), letters that Latin-1 lacks without their
/// accents, line breaks and tabs as blanks.
TestoLatino latino(const QString &testo);

/// The same with the letters A to Z and signs of ASCII alone, for the few elements that take no more: what has no
/// such spelling is left out.
QString ascii(const QString &testo);

} // namespace fatturapa

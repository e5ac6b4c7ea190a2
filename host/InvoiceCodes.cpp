#include "host/InvoiceCodes.h"

#include "platform/core/LineText.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

const QList<core::CodeText> &taxRegimes()
{
    static const QList<core::CodeText> all = {
        {u"RF01"_s, u"Ordinario"_s},
        {u"RF02"_s, u"Contribuenti minimi (L. 244/2007)"_s},
        {u"RF04"_s, u"Agricoltura, attività connesse e pesca"_s},
        {u"RF05"_s, u"Vendita di sali e tabacchi"_s},
        {u"RF06"_s, u"Commercio di fiammiferi"_s},
        {u"RF07"_s, u"Editoria"_s},
        {u"RF08"_s, u"Gestione di servizi di telefonia pubblica"_s},
        {u"RF09"_s, u"Rivendita di documenti di trasporto pubblico e di sosta"_s},
        {u"RF10"_s, u"Intrattenimenti e giochi"_s},
        {u"RF11"_s, u"Agenzie di viaggi e turismo"_s},
        {u"RF12"_s, u"Agriturismo"_s},
        {u"RF13"_s, u"Vendite a domicilio"_s},
        {u"RF14"_s, u"Rivendita di beni usati, d'arte, d'antiquariato o da collezione"_s},
        {u"RF15"_s, u"Vendite all'asta di beni d'arte, d'antiquariato o da collezione"_s},
        {u"RF16"_s, u"IVA per cassa, pubblica amministrazione"_s},
        {u"RF17"_s, u"IVA per cassa (art. 32-bis D.L. 83/2012)"_s},
        {u"RF18"_s, u"Altro"_s},
        {u"RF19"_s, u"Forfettario"_s},
        {u"RF20"_s, u"Franchigia IVA transfrontaliera"_s}};
    return all;
}

const QList<core::CodeText> &liquidationStates()
{
    static const QList<core::CodeText> all = {{u"LN"_s, u"Non in liquidazione"_s}, {u"LS"_s, u"In liquidazione"_s}};
    return all;
}

const QList<core::CodeText> &vatNatures()
{
    static const QList<core::CodeText> all = {
        {u"N1"_s, u"Escluse dalla base imponibile (art. 15)"_s},
        {u"N2.1"_s, u"Non soggette, per mancanza di territorialità (artt. 7-7 septies)"_s},
        {u"N2.2"_s, u"Non soggette, altri casi"_s},
        {u"N3.1"_s, u"Non imponibili: esportazioni"_s},
        {u"N3.2"_s, u"Non imponibili: cessioni intracomunitarie"_s},
        {u"N3.3"_s, u"Non imponibili: cessioni verso San Marino"_s},
        {u"N3.4"_s, u"Non imponibili: assimilate alle esportazioni"_s},
        {u"N3.5"_s, u"Non imponibili: a seguito di dichiarazione d'intento"_s},
        {u"N3.6"_s, u"Non imponibili: altre che non formano il plafond"_s},
        {u"N4"_s, u"Esenti (art. 10)"_s},
        {u"N5"_s, u"Regime del margine, IVA non esposta"_s},
        {u"N6.1"_s, u"Inversione contabile: rottami e materiali di recupero"_s},
        {u"N6.2"_s, u"Inversione contabile: oro e argento"_s},
        {u"N6.3"_s, u"Inversione contabile: subappalto nell'edilizia"_s},
        {u"N6.4"_s, u"Inversione contabile: cessione di fabbricati"_s},
        {u"N6.5"_s, u"Inversione contabile: telefoni cellulari"_s},
        {u"N6.6"_s, u"Inversione contabile: prodotti elettronici"_s},
        {u"N6.7"_s, u"Inversione contabile: prestazioni del comparto edile"_s},
        {u"N6.8"_s, u"Inversione contabile: settore energetico"_s},
        {u"N6.9"_s, u"Inversione contabile: altri casi"_s},
        {u"N7"_s, u"IVA assolta in un altro Stato UE"_s}};
    return all;
}

const QList<core::CodeText> &paymentMethods()
{
    static const QList<core::CodeText> all = {{u"MP01"_s, u"Contanti"_s},
                                              {u"MP02"_s, u"Assegno"_s},
                                              {u"MP03"_s, u"Assegno circolare"_s},
                                              {u"MP04"_s, u"Contanti presso la Tesoreria"_s},
                                              {u"MP05"_s, u"Bonifico"_s},
                                              {u"MP06"_s, u"Vaglia cambiario"_s},
                                              {u"MP07"_s, u"Bollettino bancario"_s},
                                              {u"MP08"_s, u"Carta di pagamento"_s},
                                              {u"MP09"_s, u"RID"_s},
                                              {u"MP10"_s, u"RID utenze"_s},
                                              {u"MP11"_s, u"RID veloce"_s},
                                              {u"MP12"_s, u"Ri.Ba."_s},
                                              {u"MP13"_s, u"MAV"_s},
                                              {u"MP14"_s, u"Quietanza erario"_s},
                                              {u"MP15"_s, u"Giroconto su conti di contabilità speciale"_s},
                                              {u"MP16"_s, u"Domiciliazione bancaria"_s},
                                              {u"MP17"_s, u"Domiciliazione postale"_s},
                                              {u"MP18"_s, u"Bollettino di conto corrente postale"_s},
                                              {u"MP19"_s, u"SEPA Direct Debit"_s},
                                              {u"MP20"_s, u"SEPA Direct Debit CORE"_s},
                                              {u"MP21"_s, u"SEPA Direct Debit B2B"_s},
                                              {u"MP22"_s, u"Trattenuta su somme già riscosse"_s},
                                              {u"MP23"_s, u"PagoPA"_s}};
    return all;
}

const QList<core::CodeText> &paymentTerms()
{
    static const QList<core::CodeText> all = {
        {u"TP01"_s, u"Pagamento a rate"_s}, {u"TP02"_s, u"Pagamento completo"_s}, {u"TP03"_s, u"Anticipo"_s}};
    return all;
}

bool hasCode(const QList<core::CodeText> &codes, const QString &code)
{
    return std::any_of(codes.begin(), codes.end(), [&code](const core::CodeText &one) { return one.code == code; });
}

bool isRecipientCode(const QString &text)
{
    return core::matches(text, u"[A-Z0-9]{7}"_s);
}

bool isCountryCode(const QString &text)
{
    return isProvinceCode(text) && QLocale::codeToTerritory(text) != QLocale::AnyTerritory;
}

bool isProvinceCode(const QString &text)
{
    return core::matches(text, u"[A-Z]{2}"_s);
}

// With the first four characters behind the others and a letter counting 10 to 35, the number is 1 more than a multiple
// of 97.
bool isIban(const QString &text)
{
    QString number = text;
    number.remove(u' ');
    if (!core::matches(number, u"[A-Z]{2}[0-9]{2}[A-Z0-9]{11,30}"_s))
        return false;
    int rest = 0;
    const QString turned = number.mid(4) + number.left(4);
    for (const QChar character : turned) {
        const int value = character.isDigit() ? character.digitValue() : character.unicode() - u'A' + 10;
        rest = (rest * (value > 9 ? 100 : 10) + value) % 97;
    }
    return rest == 1;
}

bool isMailAddress(const QString &text)
{
    return core::matches(text, u"[A-Za-z0-9!#$%&'*+/=?^_`{|}~.-]+@[A-Za-z0-9-]+([.][A-Za-z0-9-]+)+"_s);
}

} // namespace host

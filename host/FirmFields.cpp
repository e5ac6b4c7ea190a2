#include "host/FirmFields.h"

#include "host/TaxCodes.h"

using namespace Qt::StringLiterals;

namespace host {

const QList<FirmField> &firmFields()
{
    using F = TAnagrafica;
    constexpr auto typed = FirmField::Letters::AsTyped;
    constexpr auto capitals = FirmField::Letters::Capitals;
    constexpr auto firm = FirmBox::Firm;
    constexpr auto tax = FirmBox::TaxData;
    constexpr auto contact = FirmBox::Contacts;
    // clang-format off
    static const QList<FirmField> all = {
        {u"Codice"_s, u"Codice"_s, 20, typed, firm, {0}, &F::codice,
         {u"Codice"_s, u"Codice %1"_s, u"Cod."_s}, {0, 20}, partners, true},
        {u"RagioneSociale"_s, u"Ragione sociale"_s, 100, typed, firm, {1, 0, 3}, &F::ragioneSociale,
         {u"Ragione sociale"_s, u"Denominazione"_s, u"Nome"_s, u"%1"_s}, {1, 20}, everyFirm, true},
        {u"Indirizzo"_s, u"Indirizzo"_s, 50, typed, firm, {2, 0, 3}, &F::indirizzo,
         {u"Indirizzo"_s, u"Via"_s}, {2, 20}},
        {u"Citta"_s, u"Città"_s, 30, typed, firm, {3}, &F::citta,
         {u"Città"_s, u"Comune"_s, u"Località"_s}, {3, 12}},
        {u"Cap"_s, u"CAP"_s, 5, capitals, firm, {3, 1}, &F::cap,
         {u"CAP"_s, u"Codice postale"_s}, {3, 5}},
        {u"Provincia"_s, u"Prov."_s, 2, capitals, firm, {3, 2}, &F::provincia,
         {u"Provincia"_s, u"Prov."_s, u"PR"_s}, {3, 3}},
        {u"Nazione"_s, u"Nazione"_s, 30, typed, firm, {4}, &F::nazione,
         {u"Nazione"_s, u"Paese"_s, u"Stato"_s}, {4, 20}},
        {u"CodiceFiscale"_s, u"Codice fiscale"_s, 16, capitals, tax, {0}, &F::codiceFiscale,
         {u"Codice fiscale"_s, u"Cod. fiscale"_s, u"C.F."_s}, {5, 16}, everyFirm, false, host::isTaxCode},
        {u"PartitaIVA"_s, u"Partita IVA"_s, 13, capitals, tax, {0, 1}, &F::partitaIVA,
         {u"Partita IVA"_s, u"P. IVA"_s, u"Part. IVA"_s}, {5, 12}, everyFirm, false, host::isVatNumber},
        {u"Telefono1"_s, u"Telefono 1"_s, 20, typed, contact, {0}, &F::telefono1,
         {u"Telefono 1"_s, u"Telefono"_s, u"Tel."_s}, {}, partners},
        {u"Telefono2"_s, u"Telefono 2"_s, 20, typed, contact, {0, 1}, &F::telefono2,
         {u"Telefono 2"_s, u"Cellulare"_s}, {}, partners},
        {u"Telefono3"_s, u"Telefono 3"_s, 20, typed, contact, {1}, &F::telefono3, {u"Telefono 3"_s}, {}, partners},
        // The company itself keeps one number.
        {u"Telefono"_s, u"Telefono"_s, 20, typed, contact, {1}, nullptr, {}, {}, FirmKind::Company},
        {u"Fax"_s, u"Fax"_s, 20, typed, contact, {1, 1}, &F::fax, {u"Fax"_s}},
        {u"Email"_s, u"e-mail"_s, 100, typed, contact, {2}, &F::email,
         {u"E-mail"_s, u"Posta elettronica"_s, u"Mail"_s}},
        {u"Web"_s, u"web"_s, 100, typed, contact, {2, 1}, &F::web, {u"Sito web"_s, u"Sito"_s, u"Sito Internet"_s}},
    };
    // clang-format on
    return all;
}

QList<FirmField> firmFieldsOf(FirmKind kind)
{
    QList<FirmField> fields;
    for (const FirmField &field : firmFields()) {
        if (field.firms.testFlag(kind))
            fields.append(field);
    }
    return fields;
}

} // namespace host

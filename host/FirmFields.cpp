#include "host/FirmFields.h"

#include "host/InvoiceCodes.h"
#include "host/TaxCodes.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr auto capitals = FirmField::Letters::Capitals;

constexpr auto typed = FirmField::Letters::AsTyped;

// A field on the page of the electronic invoice.
FirmField invoiceField(FirmKind firm, const QString &name, const QString &label, int length, FirmField::Place place,
                       const QString &help, FirmField::Letters letters = capitals)
{
    return {.name = name,
            .label = label,
            .length = length,
            .letters = letters,
            .box = FirmBox::ElectronicInvoice,
            .place = place,
            .firms = firm,
            .help = help};
}

// See FirmField's members for what is added to it.
FirmField checked(FirmField field, bool (*isRight)(const QString &), const QString &doubt)
{
    field.isRight = isRight;
    field.doubt = doubt;
    return field;
}

FirmField chosen(FirmField field, const QList<core::CodeText> &codes)
{
    field.codes = codes;
    return field;
}

FirmField imported(FirmField field, const QStringList &headers)
{
    field.headers = headers;
    return field;
}

// What the electronic invoice asks of the company besides; its capital, a number, stands with the register.
QList<FirmField> companyInvoiceFields()
{
    constexpr auto company = FirmKind::Company;
    return {
        chosen(invoiceField(company, u"RegimeFiscale"_s, core::tr("Regime fiscale"), 4, {0, 0, 2},
                            core::tr("Il regime con cui l'azienda applica l'IVA: di solito RF01, ordinario.")),
               taxRegimes()),
        checked(
            invoiceField(company, u"ReaUfficio"_s, core::tr("Ufficio REA"), 2, {1},
                         core::tr("La provincia della Camera di commercio dove l'azienda è iscritta, per esempio VI.")),
            isProvinceCode, core::tr("la provincia si scrive con due lettere.")),
        invoiceField(company, u"ReaNumero"_s, core::tr("Numero REA"), 20, {1, 1},
                     core::tr("Il numero d'iscrizione al repertorio economico amministrativo, come sta sulla visura.")),
        chosen(invoiceField(company, u"StatoLiquidazione"_s, core::tr("Liquidazione"), 2, {2, 1},
                            core::tr("Per le società iscritte al REA: se la società è in liquidazione.")),
               liquidationStates()),
        checked(invoiceField(company, u"Iban"_s, u"IBAN"_s, 34, {3, 0, 2},
                             core::tr("Il conto su cui i clienti pagano: sta nelle fatture da pagare con bonifico.")),
                isIban, core::tr("le cifre di controllo non corrispondono.")),
    };
}

QList<FirmField> customerInvoiceFields()
{
    constexpr auto customer = FirmKind::Customer;
    return {
        checked(imported(invoiceField(customer, u"CodiceDestinatario"_s, core::tr("Codice destinatario"), 7, {0},
                                      core::tr("Le sette lettere o cifre che il cliente ha comunicato. Vuoto se non si "
                                               "conosce: nella fattura va 0000000, e XXXXXXX per i clienti esteri.")),
                         {u"Codice destinatario"_s, u"Cod. destinatario"_s, u"Codice SDI"_s, u"SDI"_s}),
                isRecipientCode, core::tr("servono sette lettere o cifre.")),
        checked(imported(invoiceField(customer, u"NazioneIso"_s, core::tr("Codice nazione"), 2, {0, 1},
                                      core::tr("La nazione in due lettere: IT per l'Italia, DE per la Germania, FR per "
                                               "la Francia... Vuoto vale IT se la nazione è vuota o Italia.")),
                         {u"Codice nazione"_s, u"Codice paese"_s, u"ISO"_s}),
                isCountryCode, core::tr("non è un codice ISO di due lettere (IT, DE, FR...).")),
        imported(
            invoiceField(
                customer, u"CognomePersona"_s, core::tr("Cognome"), 60, {1},
                core::tr("Solo per una persona privata: con cognome e nome la fattura non riporta la ragione sociale."),
                typed),
            {u"Cognome"_s}),
        imported(invoiceField(customer, u"NomePersona"_s, core::tr("Nome"), 60, {1, 1},
                              core::tr("Solo per una persona privata, insieme al cognome."), typed),
                 {u"Nome di persona"_s, u"Nome proprio"_s}),
    };
}

FirmField certifiedMail(FirmKind firm, FirmField::Place place, const QString &help)
{
    return checked(imported(invoiceField(firm, u"Pec"_s, u"PEC"_s, 100, place, help, typed),
                            {u"PEC"_s, u"Posta certificata"_s, u"Indirizzo PEC"_s}),
                   isMailAddress, core::tr("non è un indirizzo di posta."));
}

} // namespace

const QList<FirmField> &firmFields()
{
    using F = TAnagrafica;
    constexpr auto firm = FirmBox::Firm;
    constexpr auto tax = FirmBox::TaxData;
    constexpr auto contact = FirmBox::Contacts;
    // clang-format off
    static const QList<FirmField> all = QList<FirmField>{
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
        {u"Telefono"_s, core::tr("Telefono"), 20, typed, contact, {1}, nullptr, {}, {}, FirmKind::Company},
        {u"Fax"_s, u"Fax"_s, 20, typed, contact, {1, 1}, &F::fax, {u"Fax"_s}},
        {u"Email"_s, u"e-mail"_s, 100, typed, contact, {2}, &F::email,
         {u"E-mail"_s, u"Posta elettronica"_s, u"Mail"_s}},
        {u"Web"_s, u"web"_s, 100, typed, contact, {2, 1}, &F::web, {u"Sito web"_s, u"Sito"_s, u"Sito Internet"_s}},
    } + companyInvoiceFields()
      + QList{certifiedMail(FirmKind::Company, {4, 0, 2}, core::tr("L'indirizzo di posta certificata dell'azienda."))}
      + customerInvoiceFields()
      + QList{certifiedMail(FirmKind::Customer, {2, 0, 2},
                            core::tr("Dove il cliente riceve le fatture se non ha un codice destinatario."))};
    // clang-format on
    return all;
}

QList<FirmField> firmFieldsOf(FirmKind kind)
{
    return core::filtered(firmFields(), [kind](const FirmField &field) { return field.firms.testFlag(kind); });
}

} // namespace host

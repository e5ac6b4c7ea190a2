#pragma once
#include <QList>
#include <QString>
#include <QStringList>

/// The facts from which the demonstration data are generated: an invented wholesaler of hardware and household goods.
namespace host::demo {

/// Articles that differ in size only.
struct Family
{
    QString category;    ///< path of names separated by '/'
    QString prefix;      ///< of the codes
    QString description; ///< with %1 for the size
    QString sizes;       ///< "CODE:SIZE" separated by '|', from the cheapest to the dearest
    QString unit;
    QString vatCode;
    double firstCost = 0; ///< EUR, of the first size
    double lastCost = 0;  ///< EUR, of the last size
    int understock = 0;   ///< pieces; the reorder level is twice as many
};

struct Service
{
    QString category; ///< path of names separated by '/'
    QString code;
    QString description;
    QString unit;
    QString vatCode;
    double cost = 0;  ///< EUR
    double price = 0; ///< EUR
};

struct Town
{
    QString postcode;
    QString name;
    QString province;
    QString areaCode;  ///< of the telephone
    QString vatOffice; ///< three digits inside a VAT number
};

struct VatRate
{
    QString code;
    QString description;
    double rate = 0;   ///< per cent
    QString nature;    ///< why there is no VAT; empty where there is
    QString reference; ///< the law that says so
};

struct PaymentType
{
    QString text;
    QString method; ///< codes of the electronic invoice
    QString terms;
};

struct Note
{
    QString title;
    QString text;
};

/// The facts, each list made once.
///@{
const QList<Family> &families();
const QList<Service> &services();
const QList<Town> &towns();
const QList<VatRate> &vatRates();
const QList<Note> &documentNotes();
const QStringList &streets();
const QStringList &customers();
const QStringList &units();
const QList<PaymentType> &paymentTypes();
///@}

} // namespace host::demo

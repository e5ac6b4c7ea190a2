#include "host/transfer/ImportTarget.h"

#include "host/Barcodes.h"
#include "platform/core/Barcode.h"
#include "platform/core/Lists.h"
#include "platform/core/Translation.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Kind = ImportField::Kind;

QList<ImportField> articleFields()
{
    const ImportLookup category = {.table = u"CATEGORIE_ANA_MAGA"_s,
                                   .key = u"IDCATEGORIA_ANA_MAGA"_s,
                                   .column = u"CATEGORIA"_s,
                                   .parent = u"IDPADRE"_s,
                                   .maxLength = 50};
    const ImportLookup vat = {
        .table = u"ALIQUOTE_IVA"_s, .key = u"IDALIQUOTA_IVA"_s, .column = u"CODICE"_s, .number = u"ALIQUOTA"_s};
    const ImportLookup unit = {.table = u"UM"_s, .key = u"IDUM"_s, .column = u"UM"_s};
    return {
        {u"CODICE"_s, u"Codice"_s, {u"Codice articolo"_s, u"Cod."_s, u"Articolo"_s, u"SKU"_s}, Kind::Text, 20, true},
        {u"DESCRIZIONE"_s, u"Descrizione"_s, {u"Descrizione articolo"_s, u"Nome"_s}, Kind::Text, 100, true},
        {u"IDCATEGORIA_ANA_MAGA"_s, u"Categoria"_s, {u"Gruppo"_s}, Kind::Lookup, 0, false, category},
        {u"PREZZO"_s, u"Prezzo"_s, {u"Prezzo di vendita"_s, u"Prezzo vendita"_s, u"Listino"_s}, Kind::Amount},
        {u"COSTO"_s, u"Costo"_s, {u"Prezzo di acquisto"_s, u"Prezzo acquisto"_s}, Kind::Amount},
        {u"IDALIQUOTA_IVA"_s,
         u"Aliquota IVA"_s,
         {u"IVA"_s, u"Codice IVA"_s, u"Cod. IVA"_s},
         Kind::Lookup,
         0,
         false,
         vat},
        {u"IDUM"_s, u"Unità di misura"_s, {u"UM"_s, u"Unità"_s}, Kind::Lookup, 0, false, unit},
        {u"SOTTOSCORTA"_s, u"Sottoscorta"_s, {u"Scorta minima"_s}, Kind::Amount},
        {u"RIORDINO"_s, u"Riordino"_s, {u"Quantità di riordino"_s, u"Livello di riordino"_s}, Kind::Amount},
        {u"NOTE"_s, u"Note"_s, {u"Annotazioni"_s}, Kind::Memo},
    };
}

// Each stands for its article, and for one piece where nothing is said.
QList<ImportField> barcodeFields()
{
    const ImportLookup article = {.table = u"ANA_MAGA"_s, .key = u"IDANA_MAGA"_s, .column = u"CODICE"_s};
    ImportField code = {u"CODICE"_s, u"Codice a barre"_s, {u"Barcode"_s, u"EAN"_s, u"Codice EAN"_s, u"UPC"_s},
                        Kind::Text,  longestBarcode,      true};
    code.isRight = core::checkDigitFits;
    code.doubt = core::tr("Il carattere di controllo non corrisponde.");
    ImportField pieces = {
        u"PEZZI"_s, u"Pezzi"_s, {u"Pezzi per confezione"_s, u"Confezione"_s, u"Quantità"_s}, Kind::Amount};
    pieces.whenEmpty = 1;
    return {code,
            {u"IDANA_MAGA"_s, u"Articolo"_s, {u"Codice articolo"_s, u"Codice"_s}, Kind::Lookup, 0, true, article},
            pieces};
}

// Letters and digits alone, without accents and case.
QString comparable(const QString &name)
{
    QString letters;
    for (const QChar c : name.normalized(QString::NormalizationForm_D)) {
        if (c.isLetterOrNumber())
            letters += c.toLower();
    }
    return letters;
}

QStringList namesOf(const ImportField &field)
{
    return core::mapped(QStringList{field.caption} + field.otherNames + QStringList{field.column}, comparable);
}

ImportTarget articles()
{
    return {core::tr("Articoli"), u"ANA_MAGA"_s, u"IDANA_MAGA"_s, articleFields()};
}

ImportTarget barcodes()
{
    return {core::tr("Codici a barre"), u"BARCODE_ARTICOLI"_s, u"IDBARCODE_ARTICOLI"_s, barcodeFields(),
            barcodeIdentity};
}

ImportTarget customers()
{
    return {core::tr("Clienti"), u"CLIENTI"_s, u"IDCLIENTE"_s, firmImportFields(FirmKind::Customer, u"cliente"_s)};
}

// Modules add theirs while their libraries load.
QList<ImportTarget (*)()> &makers()
{
    static QList<ImportTarget (*)()> all = {articles, barcodes, customers};
    return all;
}

} // namespace

QList<ImportField> firmImportFields(FirmKind firm, const QString &called)
{
    const ImportField payment = {
        .column = u"IDTIPO_PAGAMENTO"_s,
        .caption = u"Tipo di pagamento"_s,
        .otherNames = {u"Pagamento"_s},
        .kind = Kind::Lookup,
        .lookup = {.table = u"TIPI_PAGAMENTO"_s, .key = u"IDTIPO_PAGAMENTO"_s, .column = u"TIPO_PAGAMENTO"_s}};
    QList<ImportField> fields;
    for (const FirmField &field : firmFieldsOf(firm)) {
        if (field.box == FirmBox::Contacts && fields.last().column == u"PARTITAIVA")
            fields.append(payment);
        QStringList names = field.headers;
        names.replaceInStrings(u"%1"_s, called);
        fields.append({field.column, names.takeFirst(), names,
                       field.letters == FirmField::Letters::Capitals ? Kind::UpperText : Kind::Text, field.length,
                       field.required});
    }
    fields.append({u"NOTE"_s, u"Note"_s, {u"Annotazioni"_s}, Kind::Memo});
    return fields;
}

const QList<ImportTarget> &importTargets()
{
    static QList<ImportTarget> made;
    while (made.size() < makers().size())
        made.append(makers()[made.size()]());
    return made;
}

void registerImportTarget(ImportTarget (*make)())
{
    makers().append(make);
}

QList<int> mapColumns(const ImportTarget &target, const QStringList &headers)
{
    QStringList open = core::mapped(headers, comparable);
    QList<int> columns(target.fields.size(), -1);
    // The more exact name first, for all fields: "Prezzo" must not go to a field that also knows it by another name.
    qsizetype mostNames = 0;
    for (const ImportField &field : target.fields)
        mostNames = std::max(mostNames, namesOf(field).size());
    for (qsizetype rank = 0; rank < mostNames; ++rank) {
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const QString name = namesOf(target.fields[i]).value(rank);
            const qsizetype column = name.isEmpty() || columns[i] >= 0 ? -1 : open.indexOf(name);
            if (column < 0)
                continue;
            columns[i] = static_cast<int>(column);
            open[column].clear();
        }
    }
    return columns;
}

} // namespace host

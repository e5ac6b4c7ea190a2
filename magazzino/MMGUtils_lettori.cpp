#include "host/FirmFields.h"
#include "magazzino/MMGUtils_insiemi.h"
#include "platform/core/Error.h"
#include "platform/core/Lists.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"

#include <variant>

using namespace Qt::StringLiterals;

namespace {

template <typename Record>
struct Field
{
    QStringView column;
    std::variant<int Record::*, double Record::*, QString Record::*> member;
    int nullInteger = 0; ///< what NULL reads as; texts read as empty and amounts as 0
};

template <typename Record>
using Fields = QList<Field<Record>>;

void assign(int &target, const QVariant &value, int nullInteger)
{
    target = value.isValid() ? value.toInt() : nullInteger;
}

void assign(double &target, const QVariant &value, int)
{
    target = value.toDouble();
}

void assign(QString &target, const QVariant &value, int)
{
    target = value.toString();
}

/// A query with its one value, bound as a parameter: then the statement is the same for all values, and within a
/// transaction it is prepared once.
struct Query
{
    QString sql;
    QVariant value;
};

template <typename Record>
QStringList columnsOf(const Fields<Record> &fields)
{
    return core::mapped(fields, [](const Field<Record> &field) { return field.column.toString(); });
}

template <typename Record>
Record recordOf(const data::Rows &rows, qsizetype row, const Fields<Record> &fields)
{
    Record record;
    for (const Field<Record> &field : fields) {
        const QVariant &value = rows.at(row, field.column);
        std::visit([&](auto member) { assign(record.*member, value, field.nullInteger); }, field.member);
    }
    return record;
}

/// The first row of `query` through `fields`; a record as constructed when there is none.
template <typename Record>
Record readRecord(const Query &query, const Fields<Record> &fields)
{
    const data::Rows rows =
        data::latest(ModuleConnection(), data::limitedTo(columnsOf(fields), query.sql), {query.value});
    return rows.isEmpty() ? Record() : recordOf(rows, 0, fields);
}

/// The rows with these keys that exist, some at a time; keys from 1.
template <typename Record>
QHash<int, Record> readRecords(const QString &table, const QString &key, const QSet<int> &ids,
                               const Fields<Record> &fields)
{
    constexpr qsizetype keysPerQuery = 10;
    const QString query = data::limitedTo(
        columnsOf(fields),
        u"SELECT * FROM %1 WHERE %2 IN (%3)"_s.arg(table, key, QStringList(keysPerQuery, u"?"_s).join(u", "_s)));
    QVariantList keys;
    for (const int id : ids) {
        if (id > 0)
            keys.append(id);
    }
    // Full groups, so that it is always the same statement.
    while (keys.size() % keysPerQuery != 0)
        keys.append(keys.constLast());
    QHash<int, Record> records;
    for (qsizetype first = 0; first < keys.size(); first += keysPerQuery) {
        const data::Rows rows = data::latest(ModuleConnection(), query, keys.mid(first, keysPerQuery));
        for (qsizetype row = 0; row < rows.size(); ++row)
            records.insert(rows.integer(row, key), recordOf(rows, row, fields));
    }
    return records;
}

Query byKey(const QString &table, const QString &key, int id)
{
    return {u"SELECT * FROM %1 WHERE %2=?"_s.arg(table, key), id};
}

Fields<TCodiceTesto> pairFields(QStringView key, QStringView text)
{
    return {{key, &TCodiceTesto::id}, {text, &TCodiceTesto::testo}};
}

TCodiceTesto readPair(const QString &table, const QString &key, const QString &text, int id)
{
    return readRecord(byKey(table, key, id), pairFields(key, text));
}

Fields<TAliquotaIVA> aliquotaFields()
{
    return {{u"IDALIQUOTA_IVA", &TAliquotaIVA::id},
            {u"CODICE", &TAliquotaIVA::codice},
            {u"DESCRIZIONE", &TAliquotaIVA::descrizione},
            {u"ALIQUOTA", &TAliquotaIVA::aliquota}};
}

template <typename Record>
Fields<Record> voceFields(QStringView key, QStringView category)
{
    return {{key, &Record::id},
            {u"CODICE", &Record::codice},
            {u"DESCRIZIONE", &Record::descrizione},
            {category, &Record::idCategoria},
            {u"PREZZO", &Record::prezzo},
            {u"COSTO", &Record::costo},
            {u"IDALIQUOTA_IVA", &Record::idAliquotaIVA},
            {u"IDUM", &Record::idUM}};
}

template <typename Record>
Fields<Record> anagraficaFields(QStringView key, host::FirmKind kind)
{
    Fields<Record> fields = {{key, &Record::id}};
    for (const host::FirmField &field : host::firmFields()) {
        if (field.member && field.firms.testFlag(kind))
            fields.append({field.column, static_cast<QString Record::*>(field.member)});
    }
    return fields;
}

Fields<TCliente> clienteFields(QStringView key, host::FirmKind kind = host::FirmKind::Customer)
{
    Fields<TCliente> fields = anagraficaFields<TCliente>(key, kind);
    fields.append({u"IDTIPO_PAGAMENTO", &TCliente::idTipoPagamento, -1});
    return fields;
}

} // namespace

TArticolo GetArticolo(int id)
{
    Fields<TArticolo> fields = voceFields<TArticolo>(u"IDANA_MAGA", u"IDCATEGORIA_ANA_MAGA");
    fields += {{u"SOTTOSCORTA", &TArticolo::sottoscorta}, {u"RIORDINO", &TArticolo::riordino}};
    return readRecord(byKey(u"ANA_MAGA"_s, u"IDANA_MAGA"_s, id), fields);
}

TAliquotaIVA GetAliquotaIVA(int id)
{
    return readRecord(byKey(u"ALIQUOTE_IVA"_s, u"IDALIQUOTA_IVA"_s, id), aliquotaFields());
}

QHash<int, TAliquotaIVA> GetAliquoteIVA(const QSet<int> &ids)
{
    return readRecords(u"ALIQUOTE_IVA"_s, u"IDALIQUOTA_IVA"_s, ids, aliquotaFields());
}

TCodiceTesto GetUM(int id)
{
    return readPair(u"UM"_s, u"IDUM"_s, u"UM"_s, id);
}

TServizio GetServizio(int id)
{
    return readRecord(byKey(u"SERVIZI"_s, u"IDSERVIZIO"_s, id),
                      voceFields<TServizio>(u"IDSERVIZIO", u"IDCATEGORIA_SERVIZI"));
}

TCliente GetCliente(int id)
{
    return core::namingErrors(u"GetCliente", [&] {
        return readRecord(byKey(u"CLIENTI"_s, u"IDCLIENTE"_s, id), clienteFields(u"IDCLIENTE"));
    });
}

TCliente GetCliente(const QString &codice)
{
    return core::namingErrors(u"GetCliente", [&] {
        // Without the cast a text longer than a code would be an error.
        return readRecord({u"SELECT * FROM CLIENTI WHERE CODICE = CAST(? AS VARCHAR(255))"_s, codice},
                          clienteFields(u"IDCLIENTE"));
    });
}

TFornitore GetFornitore(int id)
{
    return core::namingErrors(u"GetFornitore", [&] {
        return readRecord(byKey(u"FORNITORI"_s, u"IDFORNITORE"_s, id),
                          clienteFields(u"IDFORNITORE", host::FirmKind::Supplier));
    });
}

TFornitore GetFornitore(const QString &codice)
{
    return core::namingErrors(u"GetFornitore", [&] {
        return readRecord({u"SELECT * FROM FORNITORI WHERE CODICE = CAST(? AS VARCHAR(255))"_s, codice},
                          clienteFields(u"IDFORNITORE", host::FirmKind::Supplier));
    });
}

TCodiceTesto GetTipoPagamento(int id)
{
    return readPair(u"TIPI_PAGAMENTO"_s, u"IDTIPO_PAGAMENTO"_s, u"TIPO_PAGAMENTO"_s, id);
}

TCodiceTesto GetTipoTrasporto(int id)
{
    return readPair(u"TIPI_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s, u"TIPO_TRASPORTO"_s, id);
}

TCodiceTesto GetCausaleTrasporto(int id)
{
    return readPair(u"CAUSALI_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s, u"CAUSALE_TRASPORTO"_s, id);
}

TCodiceTesto GetCausaleMagazzino(int id)
{
    return readPair(u"CAUSALI_MAGA"_s, u"IDCAUSALE_MAGA"_s, u"CAUSALE_MAGA"_s, id);
}

TCodiceTesto GetCategoriaAnaMaga(int id)
{
    return readPair(u"CATEGORIE_ANA_MAGA"_s, u"IDCATEGORIA_ANA_MAGA"_s, u"CATEGORIA"_s, id);
}

TCodiceTesto GetCategoriaServizio(int id)
{
    return core::namingErrors(u"GetCategoriaServizio", [&] {
        return readPair(u"CATEGORIE_SERVIZI"_s, u"IDCATEGORIA_SERVIZI"_s, u"CATEGORIA"_s, id);
    });
}

QHash<int, TCodiceTesto> GetCategorieAnaMaga(const QSet<int> &ids)
{
    return readRecords(u"CATEGORIE_ANA_MAGA"_s, u"IDCATEGORIA_ANA_MAGA"_s, ids,
                       pairFields(u"IDCATEGORIA_ANA_MAGA", u"CATEGORIA"));
}

QHash<int, TCodiceTesto> GetCategorieServizi(const QSet<int> &ids)
{
    return core::namingErrors(u"GetCategoriaServizio", [&] {
        return readRecords(u"CATEGORIE_SERVIZI"_s, u"IDCATEGORIA_SERVIZI"_s, ids,
                           pairFields(u"IDCATEGORIA_SERVIZI", u"CATEGORIA"));
    });
}

TVettore GetVettore(int id)
{
    return core::namingErrors(u"GetVettore", [&] {
        return readRecord(byKey(u"VETTORI"_s, u"IDVETTORE"_s, id),
                          anagraficaFields<TVettore>(u"IDVETTORE", host::FirmKind::Carrier));
    });
}

QString GetNotaDocumento(int id)
{
    return core::namingErrors(u"GetNotaDocumento", [&] {
        const data::Rows rows = data::latest(
            ModuleConnection(), u"SELECT * FROM NOTE_DOCUMENTI WHERE IDNOTA_DOCUMENTI = "_s + QString::number(id));
        return rows.isEmpty() ? QString() : rows.text(0, u"TESTO");
    });
}

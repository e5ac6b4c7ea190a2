#include "magazzino/MMGUtils.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QString textOf(const TAnagrafica &record)
{
    return QStringList({record.codice, record.ragioneSociale, record.indirizzo, record.citta, record.cap,
                        record.provincia, record.nazione, record.codiceFiscale, record.partitaIVA, record.telefono1,
                        record.telefono2, record.telefono3, record.fax, record.email, record.web})
        .join(u'|');
}

// Every text column holds a value of its own, so that exchanged fields show.
const QVariantMap anagrafica = {{u"CODICE"_s, u"D'A1"_s},    {u"RAGIONESOCIALE"_s, u"Società"_s},
                                {u"INDIRIZZO"_s, u"via"_s},  {u"CITTA"_s, u"città"_s},
                                {u"CAP"_s, u"00100"_s},      {u"PROVINCIA"_s, u"RM"_s},
                                {u"NAZIONE"_s, u"Italia"_s}, {u"CODICEFISCALE"_s, u"CF"_s},
                                {u"PARTITAIVA"_s, u"PI"_s},  {u"TELEFONO1"_s, u"t1"_s},
                                {u"TELEFONO2"_s, u"t2"_s},   {u"TELEFONO3"_s, u"t3"_s},
                                {u"FAX"_s, u"fax"_s},        {u"EMAIL"_s, u"a@b"_s},
                                {u"WEB"_s, u"www"_s}};
const QString anagraficaText = u"D'A1|Società|via|città|00100|RM|Italia|CF|PI|t1|t2|t3|fax|a@b|www"_s;

} // namespace

class LettoriTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db;

private Q_SLOTS:
    void init() { db = std::make_unique<test::ModuleDatabase>(); }
    void cleanup() { db.reset(); }

    void customersSuppliersAndCarriersAreReadAlike()
    {
        const int customer = db->insert(u"CLIENTI"_s, anagrafica);
        QVariantMap withPayment = anagrafica;
        withPayment.insert(u"IDTIPO_PAGAMENTO"_s, 7);
        const int supplier = db->insert(u"FORNITORI"_s, withPayment);
        const int carrier = db->insert(u"VETTORI"_s, anagrafica);
        for (const TCliente &found : {GetCliente(customer), GetCliente(u"D'A1"_s)}) {
            QCOMPARE(found.id, customer);
            QCOMPARE(textOf(found), anagraficaText);
            QCOMPARE(found.idTipoPagamento, -1);
        }
        QCOMPARE(GetCliente(u"d'a1"_s).id, -1);
        QCOMPARE(GetFornitore(supplier).id, supplier);
        QCOMPARE(textOf(GetFornitore(supplier)), anagraficaText);
        QCOMPARE(GetFornitore(supplier).idTipoPagamento, 7);
        QCOMPARE(GetVettore(carrier).id, carrier);
        QCOMPARE(textOf(GetVettore(carrier)), anagraficaText);
    }

    void keysFindTheirRecordAndUnknownOnesGiveMinusOne()
    {
        struct Reader
        {
            QString table;
            std::function<int(int)> id;
        };
        const QList<Reader> readers = {{u"ANA_MAGA"_s, [](int key) { return GetArticolo(key).id; }},
                                       {u"ALIQUOTE_IVA"_s, [](int key) { return GetAliquotaIVA(key).id; }},
                                       {u"SERVIZI"_s, [](int key) { return GetServizio(key).id; }},
                                       {u"CLIENTI"_s, [](int key) { return GetCliente(key).id; }},
                                       {u"FORNITORI"_s, [](int key) { return GetFornitore(key).id; }},
                                       {u"VETTORI"_s, [](int key) { return GetVettore(key).id; }},
                                       {u"UM"_s, [](int key) { return GetUM(key).id; }},
                                       {u"TIPI_PAGAMENTO"_s, [](int key) { return GetTipoPagamento(key).id; }},
                                       {u"TIPI_TRASPORTO"_s, [](int key) { return GetTipoTrasporto(key).id; }},
                                       {u"CAUSALI_TRASPORTO"_s, [](int key) { return GetCausaleTrasporto(key).id; }},
                                       {u"CAUSALI_MAGA"_s, [](int key) { return GetCausaleMagazzino(key).id; }},
                                       {u"CATEGORIE_ANA_MAGA"_s, [](int key) { return GetCategoriaAnaMaga(key).id; }},
                                       {u"CATEGORIE_SERVIZI"_s, [](int key) { return GetCategoriaServizio(key).id; }}};
        for (const Reader &reader : readers) {
            const int key = db->insert(reader.table, {});
            QCOMPARE(QList<int>({reader.id(key), reader.id(key + 1), reader.id(0), reader.id(-1)}),
                     QList<int>({key, -1, -1, -1}));
        }
    }
};

namespace {
const test::Registered<LettoriTest> registered;
}

#include "test_lettori.moc"

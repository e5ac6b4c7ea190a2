#include "benchmark/BenchData.h"

#include "platform/core/Clock.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int documentsPerTransaction = 2'000;

struct DocumentKind
{
    QString table;
    QString key;
    QString partner; ///< prefix of the counterpart's columns
    QString kind;
    QString movement;
    int sign;
};

const QList<DocumentKind> &documentKinds()
{
    static const QList<DocumentKind> kinds = {
        {u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s, u"FOR"_s, u"Bolla di carico"_s, u"Carico"_s, 1},
        {u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s, u"CLI"_s, u"D.d.T. di scarico"_s, u"Scarico"_s, -1}};
    return kinds;
}

// :A is the article's number from 1. Every thousandth row belongs to no article, every fortieth is in small letters.
const QString rowCode = u"C = 'ART' || LPAD(A, 6, '0'); IF (MOD(I * 10 + R, 40) = 7) THEN C = LOWER(C); "
                        "IF (MOD(I * 10 + R, 1000) = 3) THEN C = 'EX' || A;"_s;

QString documentBlock(const DocumentKind &kind, int movingArticles, int first, int last)
{
    QString sql = uR"(EXECUTE BLOCK AS
DECLARE I INTEGER; DECLARE R INTEGER; DECLARE A INTEGER; DECLARE C VARCHAR(20); DECLARE D DATE; DECLARE Y INTEGER;
DECLARE H INTEGER; DECLARE K INTEGER; DECLARE M INTEGER; DECLARE N INTEGER; DECLARE P DECIMAL(13, 2);
DECLARE Q DECIMAL(13, 2);
BEGIN
  SELECT MIN(IDCATEGORIA_ANA_MAGA), COUNT(*) FROM CATEGORIE_ANA_MAGA INTO :M, :N;
  I = %1;
  WHILE (I <= %2) DO BEGIN
    Y = %3 + MOD(I, %4);
    D = DATEADD(DAY, MOD(I * 7, 365), CAST(Y || '-01-01' AS DATE));
    INSERT INTO {table}(NUMERO, DATA, ANNO, {partner}_CODICE, {partner}_RAGIONESOCIALE, {partner}_INDIRIZZO,
      {partner}_CITTA, {partner}_CAP, {partner}_PARTITAIVA, IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO,
      CAUSALE_TRASPORTO, COLLI, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTE)
    VALUES ((:I - 1) / %4 + 1, :D, :Y, 'C' || LPAD(MOD(:I, 300), 4, '0'), 'Ditta numero ' || MOD(:I, 300),
      'Via dell''Industria, 12', 'Bassano del Grappa', '36061', '01234560241', 1, 'Mittente', 1, 'Vendita', 3, 0, 0, 0,
      'Consegnare al mattino.') RETURNING {key} INTO :H;
    R = 0;
    WHILE (R < %5) DO BEGIN
      A = MOD(CAST(I AS BIGINT) * 7919 + R * 104729, %6) + 1;
      {code}
      P = 1 + MOD(A, 997) * 0.1 + MOD(I, 7) * 0.03;
      Q = {quantity} + MOD(A + I, 9);
      INSERT INTO {table}_DETT({key}, CODICE, DESCRIZIONE, IDCATEGORIA, CATEGORIA, COSTO, PREZZO, QUANTITA, IMPORTO,
        IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM, TIPO_RIGA)
      VALUES (:H, :C, 'Articolo di prova numero ' || :A, :M, 'Categoria', :P, :P * 1.4, :Q, :P * 1.4 * :Q, 1, '22',
        'Iva 22%', 22, 1, 'PZ', 'Articolo') RETURNING {key}_DETT INTO :K;
      INSERT INTO MOVI_MAGA(IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, TIPO_MOVIMENTO,
        PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA, NOTE)
      VALUES (0, :D, :C, 'Articolo di prova numero ' || :A, :M + MOD(:A, :N), '{movement}', :P * 1.4, :P, {sign} * :Q,
        :P, {sign} * :Q * :P, 2, '{kind}', :H, :K, '{kind} n. ' || :I);
      R = R + 1;
    END
    I = I + 1;
  END
END)"_s;
    sql = sql.arg(first)
              .arg(last)
              .arg(core::today().year() - years + 1)
              .arg(years)
              .arg(rowsPerDocument)
              .arg(movingArticles);
    // More comes in than goes out, but not of every article.
    const QList<std::pair<QString, QString>> names = {{u"{table}"_s, kind.table},
                                                      {u"{partner}"_s, kind.partner},
                                                      {u"{key}"_s, kind.key},
                                                      {u"{kind}"_s, kind.kind},
                                                      {u"{movement}"_s, kind.movement},
                                                      {u"{sign}"_s, QString::number(kind.sign)},
                                                      {u"{quantity}"_s, kind.sign > 0 ? u"2"_s : u"1"_s},
                                                      {u"{code}"_s, rowCode}};
    for (const auto &[name, text] : names)
        sql.replace(name, text);
    return sql;
}

} // namespace

QString articleCode(int number)
{
    return u"ART"_s + QString::number(number).rightJustified(6, u'0');
}

void makeArticles(data::Connection &connection, int first, int last)
{
    if (first == 1)
        connection.execute(u"DELETE FROM ANA_MAGA"_s);
    connection.execute(
        uR"(EXECUTE BLOCK AS DECLARE A INTEGER = %1; DECLARE M INTEGER; DECLARE N INTEGER; DECLARE U INTEGER;
DECLARE V INTEGER; BEGIN
  SELECT MIN(IDCATEGORIA_ANA_MAGA), COUNT(*) FROM CATEGORIE_ANA_MAGA INTO :M, :N;
  SELECT MIN(IDUM) FROM UM INTO :U;
  SELECT MIN(IDALIQUOTA_IVA) FROM ALIQUOTE_IVA INTO :V;
  WHILE (A <= %2) DO BEGIN
    INSERT INTO ANA_MAGA(CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, SOTTOSCORTA, RIORDINO,
      IDALIQUOTA_IVA, IDUM, NOTE)
    VALUES ('ART' || LPAD(:A, 6, '0'), 'Articolo di prova numero ' || :A, IIF(MOD(:A, 13) = 0, NULL, :M + MOD(:A, :N)),
      (1 + MOD(:A, 997) * 0.1) * 1.4, 1 + MOD(:A, 997) * 0.1, IIF(MOD(:A, 11) = 0, NULL, MOD(:A * 37, 60)),
      IIF(MOD(:A, 17) = 0, NULL, MOD(:A * 37, 60) + 20), :V, :U, 'Nota interna.');
    A = A + 1;
  END
END)"_s.arg(first)
            .arg(last));
}

void setIndexes(data::Connection &connection, bool active)
{
    const data::Rows indexes = connection.select(
        u"SELECT TRIM(RDB$INDEX_NAME) AS NOME FROM RDB$INDICES WHERE RDB$INDEX_NAME STARTING WITH 'IX_MMG_'"_s);
    for (qsizetype i = 0; i < indexes.size(); ++i)
        connection.execute(u"ALTER INDEX %1 %2"_s.arg(indexes.text(i, u"NOME"), active ? u"ACTIVE"_s : u"INACTIVE"_s));
}

void makeDocuments(data::Connection &connection, const DataSize &size, int first, int last)
{
    const int movingArticles = size.articles - size.articles / 20;
    for (const DocumentKind &kind : documentKinds()) {
        // Measurements may have taken the numbers that come next.
        connection.execute(u"DELETE FROM %1 WHERE NUMERO > %2"_s.arg(kind.table).arg((first - 1) / years));
        for (int from = first; from <= last; from += documentsPerTransaction)
            connection.execute(
                documentBlock(kind, movingArticles, from, std::min(last, from + documentsPerTransaction - 1)));
    }
}

// Customers, rates, payment types and carriers are those of the demonstration firm.
QList<int> makeInvoices(data::Connection &connection, int count)
{
    const int last = connection.select(u"SELECT MAX(IDFATT_ACC) AS K FROM FATT_ACC"_s).integer(0, u"K");
    connection.execute(uR"(EXECUTE BLOCK AS DECLARE I INTEGER = 1; DECLARE R INTEGER; DECLARE H INTEGER;
DECLARE N INTEGER; DECLARE Q DECIMAL(13, 2); DECLARE T DECIMAL(13, 2); BEGIN
  SELECT COALESCE(MAX(NUMERO), 0) FROM FATT_ACC INTO :N;
  WHILE (I <= %1) DO BEGIN
    T = 0;
    INSERT INTO FATT_ACC(NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, CLI_CITTA, CLI_CAP,
      CLI_PROVINCIA, CLI_NAZIONE, CLI_PARTITAIVA, VETT_CODICE, VETT_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO,
      PAGATO, IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO, CAUSALE_TRASPORTO, COLLI, TOTALE_IMPONIBILE,
      TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO, IVA_ESENTE)
    SELECT :N + :I, CURRENT_DATE, EXTRACT(YEAR FROM CURRENT_DATE), C.CODICE, C.RAGIONESOCIALE, C.INDIRIZZO, C.CITTA, C.CAP,
      C.PROVINCIA, C.NAZIONE, C.PARTITAIVA, V.CODICE, V.RAGIONESOCIALE, P.IDTIPO_PAGAMENTO, P.TIPO_PAGAMENTO, 'False',
      1, 'Vettore', 1, 'Vendita', 3, 0, 0, 0, 'False', 'False'
    FROM CLIENTI C, VETTORI V, TIPI_PAGAMENTO P
    WHERE C.PARTITAIVA > '' ORDER BY MOD(C.IDCLIENTE + :I, 31), V.IDVETTORE, P.IDTIPO_PAGAMENTO ROWS 1
    RETURNING IDFATT_ACC INTO :H;
    R = 0;
    WHILE (R < %2) DO BEGIN
      Q = 1 + MOD(I + R, 9);
      T = T + Q * 12.5;
      INSERT INTO FATT_ACC_DETT(IDFATT_ACC, CODICE, DESCRIZIONE, PREZZO, SCONTO, QUANTITA, IMPORTO, IVA_IDALIQUOTA_IVA,
        IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, UM, TIPO_RIGA)
      VALUES (:H, 'ART' || :R, 'Articolo di prova numero ' || :R, 12.5, 0, :Q, :Q * 12.5, 1, '22', 'Iva 22%', 22, 'PZ',
        'Articolo');
      R = R + 1;
    END
    UPDATE FATT_ACC SET TOTALE_IMPONIBILE = :T, TOTALE_IMPOSTA = :T * 0.22, TOTALE_DOCUMENTO = :T * 1.22
      WHERE IDFATT_ACC = :H;
    I = I + 1;
END END)"_s.arg(count)
                           .arg(rowsPerDocument));
    const data::Rows rows =
        connection.select(u"SELECT IDFATT_ACC FROM FATT_ACC WHERE IDFATT_ACC > %1 ORDER BY 1"_s.arg(last));
    QList<int> keys;
    for (qsizetype row = 0; row < rows.size(); ++row)
        keys.append(rows.integer(row, u"IDFATT_ACC"));
    return keys;
}

void makeMovements(data::Connection &connection, const QString &code, int count)
{
    connection.execute(uR"(EXECUTE BLOCK AS DECLARE I INTEGER = 0; DECLARE Q INTEGER; BEGIN WHILE (I < %1) DO BEGIN
    Q = IIF(MOD(I, 4) < 2, 9, -5);
    INSERT INTO MOVI_MAGA(IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, IDCATEGORIA_ANA_MAGA, TIPO_MOVIMENTO,
      PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, IDCAUSALE_MAGA)
    VALUES (0, DATEADD(DAY, :I, CAST('%2-01-01' AS DATE)), %3, 'Articolo molto mosso', 0,
      IIF(:Q > 0, 'Carico', 'Scarico'), 0, 0, :Q, 2 + MOD(:I, 5) * 0.21, :Q * (2 + MOD(:I, 5) * 0.21), 1);
    I = I + 1;
END END)"_s.arg(count)
                           .arg(core::today().year() - years + 1)
                           .arg(data::quoted(code)));
}

} // namespace bench

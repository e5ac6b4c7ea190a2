#include "magazzino/fatturapa/Registro.h"

#include "magazzino/documents/DocumentKind.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/Scrittura.h"
#include "platform/core/Clock.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/Latest.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

// A sent file stays what the exchange system has: a changed invoice then needs a credit note, not another file.
bool vaRifatto(const FileRegistrato &file)
{
    return file.stato == stato::scartata || (file.stato == stato::scritta && file.modificata);
}

QString prossimoProgressivo(data::Connection &connection)
{
    constexpr int cifre = 5;
    constexpr int base = 36;
    const data::Rows rows =
        connection.run(u"SELECT GEN_ID(GN_PROGRESSIVO_FATT_EL, 1) AS PROGRESSIVO FROM RDB$DATABASE"_s);
    return u"%1"_s.arg(rows.integer(0, u"PROGRESSIVO"), cifre, base, QChar(u'0')).toUpper();
}

void inserisci(data::Connection &connection, int fattura, const Fattura &valore, const QString &utente,
               const Esito &esito)
{
    const QDateTime adesso = core::now();
    connection.run(u"INSERT INTO FATTURE_ELETTRONICHE(NOME, DOCUMENTO, IDDOCUMENTO, NUMERO_FATTURA, DATA_FATTURA, "
                   "DESTINATARIO, IMPRONTA, SCRITTA_IL, UTENTE, STATO, STATO_DAL, CONTENUTO) "
                   "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
                   {esito.nome, fatturaAccompagnatoria().table, fattura, valore.numero, valore.data,
                    valore.cessionario.denominazione, improntaDi(esito.contenuto), adesso, utente, stato::scritta,
                    adesso, esito.contenuto});
}

Esito scriviNuovo(data::Connection &connection, int fattura, const QString &utente,
                  const std::function<bool(const QString &)> &occupato)
{
    Composizione composizione = esamina(leggi(connection, fattura, {}));
    Esito esito{.riscontri = composizione.riscontri};
    if (!ammette(esito.riscontri))
        return esito;
    // In a database that was restored from an older copy the numbers begin again where the copy was made.
    do {
        composizione.fattura.progressivo = prossimoProgressivo(connection);
        esito.nome = nomeFile(composizione.fattura);
    } while (connection.finds(u"SELECT NOME FROM FATTURE_ELETTRONICHE WHERE UPPER(NOME) = UPPER(?)"_s, {esito.nome}) ||
             occupato(esito.nome));
    esito.contenuto = scrivi(composizione.fattura);
    esito.riscontri += controllaFile(esito.nome, false, esito.contenuto.size());
    if (!ammette(esito.riscontri)) {
        esito.nome.clear();
        return esito;
    }
    inserisci(connection, fattura, composizione.fattura, utente, esito);
    esito.nuovo = true;
    return esito;
}

// The invoice's row is locked first, so that who saves it and who writes its file come one after the other.
Esito tenta(data::Connection &connection, int fattura, const QString &utente,
            const std::function<bool(const QString &)> &occupato)
{
    data::Transaction transaction(connection);
    if (!connection.finds(u"SELECT IDFATT_ACC FROM FATT_ACC WHERE IDFATT_ACC = ? WITH LOCK"_s, {fattura}))
        throw core::Error(core::tr("La fattura è stata eliminata nel frattempo."));
    const std::optional<FileRegistrato> ultimo = ultimoFile(connection, fattura);
    if (ultimo && !vaRifatto(*ultimo))
        return {
            .nome = ultimo->nome, .contenuto = contenutoDi(connection, ultimo->id), .modificata = ultimo->modificata};
    Esito esito = scriviNuovo(connection, fattura, utente, occupato);
    if (esito.nuovo)
        transaction.commit();
    return esito;
}

} // namespace

QString improntaDi(const QByteArray &contenuto)
{
    return core::sha256Text(contenuto);
}

std::optional<FileRegistrato> ultimoFile(data::Connection &connection, int fattura)
{
    const data::Rows rows =
        data::latest(connection,
                     u"SELECT FIRST 1 IDFATTURA_ELETTRONICA, NOME, STATO, MODIFICATA_IL FROM FATTURE_ELETTRONICHE "
                     "WHERE DOCUMENTO = ? AND IDDOCUMENTO = ? ORDER BY IDFATTURA_ELETTRONICA DESC"_s,
                     {fatturaAccompagnatoria().table, fattura});
    if (rows.isEmpty())
        return {};
    return FileRegistrato{rows.integer(0, u"IDFATTURA_ELETTRONICA"), rows.text(0, u"NOME"), rows.text(0, u"STATO"),
                          !rows.at(0, u"MODIFICATA_IL").isNull()};
}

QByteArray contenutoDi(data::Connection &connection, int file)
{
    const data::Rows rows =
        connection.run(u"SELECT CONTENUTO FROM FATTURE_ELETTRONICHE WHERE IDFATTURA_ELETTRONICA = ?"_s, {file});
    if (rows.isEmpty())
        throw core::Error(core::tr("Il file della fattura non è nel registro."));
    return rows.at(0, u"CONTENUTO").toByteArray();
}

Esito registra(data::Connection &connection, int fattura, const QString &utente,
               const std::function<bool(const QString &nome)> &occupato)
{
    // Another workstation that saves the invoice or writes its file at this moment lets the first attempt fail.
    constexpr int tentativi = 3;
    for (int i = 1;; ++i) {
        try {
            return tenta(connection, fattura, utente, occupato);
        } catch (const data::DatabaseError &error) {
            if (i == tentativi || error.refusal() == data::Refusal::ConnectionLost)
                throw;
        }
    }
}

std::optional<FileRegistrato> segnaModificata(data::Connection &connection, int fattura)
{
    std::optional<FileRegistrato> file = ultimoFile(connection, fattura);
    if (!file)
        return {};
    connection.run(u"UPDATE FATTURE_ELETTRONICHE SET MODIFICATA_IL = ? WHERE DOCUMENTO = ? AND IDDOCUMENTO = ?"_s,
                   {core::now(), fatturaAccompagnatoria().table, fattura});
    file->modificata = true;
    return file;
}

void spostaStato(data::Connection &connection, int file, const QString &da, const QString &a, const QDateTime &quando)
{
    connection.run(u"UPDATE FATTURE_ELETTRONICHE SET STATO = ?, STATO_DAL = ? WHERE IDFATTURA_ELETTRONICA = ? AND "
                   "STATO = ?"_s,
                   {a, quando, file, da});
}

} // namespace fatturapa

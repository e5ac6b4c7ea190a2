#pragma once
#include "host/Corvane3Impl.h"
#include "host/DocumentOptions.h"

#include <QVariant>

/// The one face of the module's data services. Every routine finds the live module through the host's package registry
/// and runs its own short-lived queries on the module's connection. Unless told otherwise an error reaches the caller
/// as data::DatabaseError with the database's own text.

struct DocumentKind;

inline const QString packageName = QStringLiteral("Magazzino.bpl");

/// The module's one connection. Throws core::Error when the module is not registered or not created.
data::Connection &ModuleConnection();

// Schema

/// Creates the module's tables and brings older ones up to date; see schema/. Never throws: a failing step is rolled
/// back and reported in a message box, and the later steps run.
void AggiornaDatabase();

// Options and rights

/// Reads an option of the host's options table; false, and `value` untouched, when it does not exist or cannot be read.
bool GetOptionValue(const QString &option, QVariant &value);
/// The value of an option, or what counts until it is stored.
QString ValoreOpzione(const host::DocumentOption &option);
/// Writes an existing option; false when it does not exist or cannot be written. Options are created by the host only.
bool SetOptionValue(const QString &option, const QVariant &value);
/// The option NUMERAZIONE_UNICA_FATTURE: accompanying and sales invoices draw their numbers from one sequence. False
/// when the option does not exist or holds no flag.
bool NumerazioneUnicaFattura();
/// True when one of the user's roles grants `right` (compared exactly) or "Controllo completo". The user name is
/// compared without case. Errors carry "[UserHasAbilitazione]".
bool UserHasAbilitazione(const QString &right, const QString &userName, data::Connection &connection);

/// Readers. `id` is the row's key; the result's key is -1 (GetNotaDocumento: empty text) when there is no such row.
///@{
TArticolo GetArticolo(int id);
TAliquotaIVA GetAliquotaIVA(int id);
TCodiceTesto GetUM(int id);
TServizio GetServizio(int id);
TCliente GetCliente(int id);
/// By customer code, compared exactly.
TCliente GetCliente(const QString &codice);
TFornitore GetFornitore(int id);
/// By supplier code, compared exactly.
TFornitore GetFornitore(const QString &codice);
TCodiceTesto GetTipoPagamento(int id);
TCodiceTesto GetTipoTrasporto(int id);
TCodiceTesto GetCausaleTrasporto(int id);
TCodiceTesto GetCausaleMagazzino(int id);
TCodiceTesto GetCategoriaAnaMaga(int id);
TCodiceTesto GetCategoriaServizio(int id);
TVettore GetVettore(int id);
QString GetNotaDocumento(int id);
///@}

/// Existence checks: true when a row other than the one with key `idEscluso` (-1 for a new record) has the value.
///@{
/// With the option NUMERAZIONE_UNICA_FATTURE a sales invoice with the number of an accompanying one counts as well.
bool DocumentoExists(const DocumentKind &kind, int numero, int anno, int idEscluso);
bool DdTScaricoExists(int numero, int anno, int idEscluso);
bool BollaCaricoExists(int numero, int anno, int idEscluso);
bool FattAccExists(int numero, int anno, int idEscluso);
bool TipoTrasportoExists(const QString &testo, int idEscluso);
bool CodiceFornitoreExists(const QString &codice, int idEscluso);
bool CodiceVettoreExists(const QString &codice, int idEscluso);
///@}

/// Next number of a year: the highest plus 1, from 1; gaps are never filled and nothing is reserved.
///@{
/// With the option NUMERAZIONE_UNICA_FATTURE one past the highest of accompanying and sales invoices for the former.
int GetNextNumeroDocumento(const DocumentKind &kind, int anno);
int GetNextNumeroDdTScarico(int anno);
int GetNextNumeroBollaCarico(int anno);
int GetNextNumeroFattAcc(int anno);
///@}

/// What stands around a number in its year; each is 0 where there is none.
struct NumeriVicini
{
    int precedente = 0;  ///< the highest number below it, sales invoices included where they share the sequence
    int datatoDopo = 0;  ///< a lower number with a later date
    int datatoPrima = 0; ///< a higher number with an earlier date
};
/// For a document of `kind` with this number and date.
NumeriVicini GetNumeriVicini(const DocumentKind &kind, int numero, QDate data);

/// Deletion: may the record go, and its removal in a transaction of its own. A deletion that asks shows "Confermare
/// l'eliminazione?"; it returns false when refused or when the database refused (which it reports itself).
///@{
bool CanDeleteCausaleTrasporto(int id);
bool CanDeleteTipoTrasporto(int id);
bool CanDeleteFornitore(int id);
bool CanDeleteFornitore(const QString &codice);
bool CanDeleteVettore(int id);
bool CanDeleteMovimentoMagazzino(int id);
bool CanDeleteBollaCarico(int id);
/// False once a file of it was written for the exchange system.
bool CanDeleteFatturaAccompagnatoria(int id);

bool DeleteMovimentoMagazzino(int id);
bool DeleteFornitore(int id);
/// A document's header and rows; the movements that it made stay.
bool DeleteDocumento(const DocumentKind &kind, int id, bool ask);
bool DeleteBollaCarico(int id);
bool DeleteFatturaAccompagnatoria(int id, bool ask);
bool DeleteDdTScarico(int id, bool ask);
bool DeleteTipoTrasporto(int id, bool ask);
bool DeleteCausaleTrasporto(int id, bool ask);
bool DeleteVettore(int id, bool ask);
///@}

// Stock movements

/// One row of MOVI_MAGA. Loads carry positive, issues negative quantities and amounts.
struct TMoviMaga
{
    int id = -1; ///< IDMOVI_MAGA; holds the key written after AggiornaMoviMaga()
    QDate dataMovimento;
    QString codice;
    QString descrizione;
    int idCategoria = -1;     ///< IDCATEGORIA_ANA_MAGA
    QString tipoMovimento;    ///< "Carico" or "Scarico"
    double prezzo = 0;        ///< EUR per unit
    double costo = 0;         ///< EUR per unit
    double quantita = 0;      ///< signed
    double valore = 0;        ///< EUR per unit, the value the movement is booked at
    double valoreImporto = 0; ///< EUR, valore times the signed quantity
    int idCausaleMaga = 0;
    QString rifDocTipo; ///< kind of the document that made the movement
    int rifDocId = 0;
    int rifDocIdRiga = 0;
    QString note;
};

/// Writes a movement: with `insert` a new row, else the existing row whose key is `movimento.id`. The caller owns the
/// transaction. Errors carry "[AggiornaMoviMaga]".
void AggiornaMoviMaga(TMoviMaga &movimento, bool insert);

/// Weighted average cost (EUR per unit, never negative, not rounded) of an article over all its movements up to and
/// with `date`; 0 when the stock at that date is 0. Codes are compared without case. Errors carry
/// "[GetValoreScaricoCostoMedio]".
double GetValoreScaricoCostoMedio(const QString &codice, QDate date);

/// Values every issue of the article again, oldest first, in one transaction when `useTransaction` is set (then the
/// caller must hold none). An error while writing rolls that transaction back and is swallowed, so that it never stops
/// its caller; one while reading carries "[RivalorizzaScarichiMagazzino]".
void RivalorizzaScarichiMagazzino(const QString &codice, bool useTransaction);

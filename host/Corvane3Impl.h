#pragma once
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"
#include "platform/report/Report.h"
#include "platform/ui/CategoryTree.h"

#include <QDate>
#include <QList>
#include <QString>

class QIcon;
class QObject;
class QToolBar;
class QWidget;

/// The host's framework: the logged-in user, the records and enumerations that modules share, and the host's routines
/// for the database and for forms.

// Records. The key is -1 when the row was not found; use a record only when its key is greater than 0.

/// What articles and services have in common.
struct TVoce
{
    int id = -1; ///< IDANA_MAGA or IDSERVIZIO
    QString codice;
    QString descrizione;
    int idCategoria = 0; ///< IDCATEGORIA_ANA_MAGA or IDCATEGORIA_SERVIZI
    double prezzo = 0;   ///< sale price, EUR
    double costo = 0;    ///< purchase cost, EUR
    int idAliquotaIVA = 0;
    int idUM = 0;
};
using TServizio = TVoce;
struct TArticolo : TVoce
{
    double sottoscorta = 0;
    double riordino = 0;
};

struct TAliquotaIVA
{
    int id = -1; ///< IDALIQUOTA_IVA
    QString codice;
    QString descrizione;
    double aliquota = 0; ///< per cent
};

/// What customers, suppliers and carriers have in common.
struct TAnagrafica
{
    int id = -1;
    QString codice;
    QString ragioneSociale;
    QString indirizzo;
    QString citta;
    QString cap;
    QString provincia;
    QString nazione;
    QString codiceFiscale;
    QString partitaIVA;
    QString telefono1;
    QString telefono2;
    QString telefono3;
    QString fax;
    QString email;
    QString web;
};

struct TCliente : TAnagrafica
{
    int idTipoPagamento = -1; ///< -1 for none
};
using TFornitore = TCliente;
struct TVettore : TAnagrafica
{
};

/// A row of a small table: its key and its one text.
struct TCodiceTesto
{
    int id = -1;
    QString testo;
};

// Enumerations

/// Whom a delivery note is addressed to; the ordinal is stored.
enum class TTipoAnagrafica
{
    Cliente = 0,
    Fornitore = 1
};

/// Where a print goes; the ordinal 2 writes a PDF file.
enum class TKxReportDestination
{
    Anteprima = 0,
    Stampante = 1,
    FilePDF = 2
};

/// The host's common tool bars.
enum class TKxCommonToolBars
{
    Documenti = 0,
    Anagrafiche = 1
};

struct TKxToolBarProperties
{
    TKxCommonToolBars kind = TKxCommonToolBars::Documenti;
    QToolBar *toolBar = nullptr; ///< the host's bar; null while there is no main window
};

// Session

/// Who is logged in, as the name is stored; empty before the login.
QString GetKxCurrentUserName();
/// Tells who is logged in; rights are looked up for this name.
void SetKxCurrentUserName(const QString &userName);
/// The host's tool bar of a kind.
TKxToolBarProperties GetKxCommonToolBarProperties(TKxCommonToolBars kind);

// Database routines

/// The generator's current value, which is not advanced. Throws data::DatabaseError.
int GetLastGeneratorValue(const QString &generator, data::Connection &connection);
/// Opens the data set unless it is open. Throws data::DatabaseError.
void OpenADODsIfClosed(data::DataSet &dataSet);
/// Year, month and day with hyphens: Firebird refuses the unseparated form as a date literal.
QString DateToString_YYYYMMDD(QDate date);
/// `prefix` and `number` padded to six digits: "FOR000012".
QString GetCustomCodice(int number, const QString &prefix);
/// `id` and the keys of all its descendants through IDPADRE in `table`, `id` first, each level behind the one above.
/// Never empty.
QList<int> GetElencoIdFiglio(const QString &keyColumn, int id, const QString &table, data::Connection &connection);

// Text routines

/// "€ ", as it stands before an amount.
QString GetCurrencyPrefix();
/// "Sì" or "No".
QString BoolToStrIta(bool value);

// Form routines

/// Fills `tree` from a self-referencing table: every row hangs under its parent, each node keeps its key. A row whose
/// parent is null or missing hangs under the root.
void FillTreeView(ui::CategoryTree &tree, const QString &keyColumn, const QString &captionColumn,
                  const QString &parentColumn, const QString &table, const QString &orderClause,
                  data::Connection &connection);
/// Gives every node below the root the host's folder images: `closedImage` for a closed, `openImage` for an open one.
void UpdateTreeNodeImages(ui::CategoryTree &tree, int closedImage, int openImage);

/// Shows `form` as a child window of the host's main window, or brings it to the front. The host hands the window's
/// close request to the form and destroys nothing that the form does not destroy itself.
void ShowChildForm(QWidget *form);
/// The host's main window, owner of its message boxes; null before it exists.
QWidget *GetMainForm();
/// The same for callers that know no widgets, as the owner of a core::Message.
QObject *GetMainFormObject();

/// The host's own print-setup and preview windows for a report system.
void RaveSystemOverrideSetup(report::ReportSystem &system, int overrideMode, QWidget *form);
/// The preview window; see RaveSystemOverrideSetup().
void RaveSystemOverridePreview(report::ReportSystem &system, int overrideMode, QWidget *form);

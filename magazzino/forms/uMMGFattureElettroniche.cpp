#include "magazzino/forms/uMMGFattureElettroniche.h"

#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/Leggibile.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/Registro.h"
#include "magazzino/fatturapa/Scrittura.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/ui/DocumentCommands.h"
#include "magazzino/ui/RiscontriPanel.h"
#include "magazzino/ui/RiscontroLuogo.h"
#include "magazzino/ui/StatoFilter.h"
#include "platform/core/Clock.h"
#include "platform/core/Messages.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/MailProgram.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace stato = fatturapa::stato;

namespace {

const QString statoColonna = u"COALESCE(F.STATO, '%1')"_s.arg(stato::daFare);

// The newest file of each invoice. GIORNI is the last day, until completa() counts the days that are left: an invoice
// goes out within twelve days of its date, a refused one within five.
const QString interrogazione =
    u"SELECT FATT_ACC.IDFATT_ACC, FATT_ACC.NUMERO, FATT_ACC.ANNO, FATT_ACC.DATA, FATT_ACC.CLI_RAGIONESOCIALE, "
    "FATT_ACC.TOTALE_DOCUMENTO, "_s +
    statoColonna +
    u" AS STATO, CASE COALESCE(F.STATO, '') WHEN 'scartata' THEN CAST(F.STATO_DAL AS DATE) + 5 WHEN 'inviata' THEN "
    "NULL WHEN 'consegnata' THEN NULL WHEN 'non consegnata' THEN NULL ELSE FATT_ACC.DATA + 12 END AS GIORNI, F.NOME, "
    "CASE WHEN F.MODIFICATA_IL IS NULL THEN '' ELSE 'modificata dopo l''invio' END AS NOTA "
    "FROM FATT_ACC LEFT JOIN FATTURE_ELETTRONICHE F ON F.IDFATTURA_ELETTRONICA = (SELECT "
    "MAX(U.IDFATTURA_ELETTRONICA) FROM FATTURE_ELETTRONICHE U WHERE U.IDDOCUMENTO = FATT_ACC.IDFATT_ACC AND "
    "U.DOCUMENTO = 'FATT_ACC') "_s;

QDate inizioPeriodo()
{
    const QDate mesePrima = core::today().addMonths(-1);
    return {mesePrima.year(), mesePrima.month(), 1};
}

ui::SearchSpec spec(const std::function<void(data::Rows &)> &completa)
{
    using Column = ui::ListColumn;
    return {
        .caption = core::tr("Fatture elettroniche"),
        .menuCaption = core::tr(">Fatture elettroniche<"),
        .list =
            {.selectText = interrogazione,
             .orderText = u" ORDER BY FATT_ACC.DATA DESC, FATT_ACC.NUMERO DESC"_s,
             .keyField = u"IDFATT_ACC"_s,
             .columns = {{u"N."_s, u"NUMERO"_s, 50, Column::Width::Pixels, Column::Display::Integer},
                         {u"Data"_s, u"DATA"_s, 80, Column::Width::Pixels, Column::Display::Date},
                         {u"Cliente"_s, u"CLI_RAGIONESOCIALE"_s, 0, Column::Width::Rest},
                         {u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, Column::Width::Pixels, Column::Display::Currency},
                         {core::tr("Stato"), u"STATO"_s, 110},
                         {core::tr("Giorni"), u"GIORNI"_s, 55, Column::Width::Pixels, Column::Display::Integer, true},
                         {core::tr("File"), u"NOME"_s, 190},
                         {core::tr("Nota"), u"NOTA"_s, 170}},
             .filters = {ui::dateFilter(u"txtDal"_s, u"Dal"_s, u"FATT_ACC.DATA >= "_s, {}, inizioPeriodo),
                         ui::dateFilter(u"txtAl"_s, core::tr("Al"), u"FATT_ACC.DATA <= "_s, {},
                                        [] { return core::today(); }),
                         statoFilter(statoColonna),
                         ui::containing(u"txtRagioneSociale"_s, u"Cliente"_s, u"FATT_ACC.CLI_RAGIONESOCIALE"_s)},
             .complete = completa},
        .openingSize = {1120, 600},
        .editHint = core::tr("Apre la fattura selezionata.")};
}

} // namespace

TMMGFattureElettroniche::TMMGFattureElettroniche(QWidget *owner)
    : TMMGRicercaBase(spec([this](data::Rows &rows) { completa(rows); }), fatturaAccompagnatoria().entryAction(), owner)
    , pannello_(new RiscontriPanel(this))
    , cerca_([this] { return search(); })
{
    setObjectName(u"MMGFattureElettroniche"_s);
    setAcceptDrops(true);
    grid().setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout()->addWidget(pannello_);
    connect(pannello_, &RiscontriPanel::aperto, this, [this](const fatturapa::Riscontro &riscontro) {
        core::guarded(this, [&] { apriLuogo(riscontro, selectedKey()); });
    });
    const auto rinfresca = [this] { core::guarded(this, [this] { mostraRilievi(); }); };
    connect(grid().selectionModel(), &QItemSelectionModel::selectionChanged, this, rinfresca);
    connect(&grid().rows(), &QAbstractItemModel::modelReset, this, rinfresca);
    dichiaraComandi();
    start({u"actChiudi"_s,
           u"actModifica"_s,
           {},
           u"actControlla"_s,
           u"actScriviFile"_s,
           u"actStampa"_s,
           {},
           u"actLeggiRicevute"_s,
           u"actInviaConLaPosta"_s,
           u"actSegnaInviata"_s});
    connect(command(u"actCerca"_s), &QAction::triggered, this, [this] { cerca_ = [this] { return search(); }; });
    search();
}

void TMMGFattureElettroniche::dichiaraComandi()
{
    const QList<ui::Command> comandi = {
        {u"actControlla"_s, core::tr("Controlla"), [this] { controlla(); }, ui::Icon::Check, QKeySequence(u"F7"_s),
         core::tr("Cerca nelle fatture scelte che cosa impedisce il file; senza una scelta, in tutte.")},
        {u"actScriviFile"_s, core::tr("Scrivi file"), [this] { scriviFile(); }, ui::Icon::Save, QKeySequence(u"F8"_s),
         core::tr("Scrive i file delle fatture scelte in una cartella.")},
        {u"actStampa"_s, core::tr("Anteprima"), [this] { anteprima(); }, ui::Icon::Print, QKeySequence(u"Ctrl+P"_s),
         core::tr("Mostra come pagina che cosa dice il file della fattura.")},
        {u"actLeggiRicevute"_s,
         core::tr("Leggi ricevute"),
         [this] { leggiCartella(); },
         ui::Icon::Import,
         {},
         core::tr("Legge le ricevute del Sistema di Interscambio da una cartella; si possono anche trascinare qui.")},
        {u"actInviaConLaPosta"_s,
         core::tr("Invia con la posta"),
         [this] { inviaConLaPosta(); },
         ui::Icon::Send,
         {},
         core::tr("Prepara un messaggio di posta certificata con il file della fattura.")},
        {u"actSegnaInviata"_s,
         core::tr("Segna inviata"),
         [this] { segnaInviata(); },
         ui::Icon::Done,
         {},
         core::tr("Segna come inviate le fatture scelte, oppure come non inviate se lo erano già.")}};
    for (const ui::Command &comando : comandi)
        addCommand(comando);
}

// What no query knows: the days that are left, and what was found.
void TMMGFattureElettroniche::completa(data::Rows &rows) const
{
    for (QVariantList &riga : rows.mutableValues())
        completaRiga(riga, rows);
}

void TMMGFattureElettroniche::completaRiga(QVariantList &riga, const data::Rows &rows) const
{
    QVariant &giorni = riga[rows.indexOf(u"GIORNI")];
    if (giorni.isValid())
        giorni = static_cast<int>(core::today().daysTo(giorni.toDate()));
    const auto trovati = rilievi_.find(riga[rows.indexOf(u"IDFATT_ACC")].toInt());
    QVariant &statoRiga = riga[rows.indexOf(u"STATO")];
    if (trovati != rilievi_.end() && statoRiga == stato::daFare && !fatturapa::ammette(*trovati))
        statoRiga = stato::conRilievi;
}

void TMMGFattureElettroniche::mostraRilievi()
{
    const int fattura = selectedKey();
    if (fattura <= 0)
        return pannello_->mostra(core::tr("Nessuna fattura selezionata."), {}, {});
    const auto file = fatturapa::ultimoFile(ModuleConnection(), fattura);
    const auto ricevute = file ? fatturapa::ricevuteDi(ModuleConnection(), file->id) : QList<fatturapa::Ricevuta>();
    const QString numero = grid().selectedValue(u"NUMERO"_s).toString();
    QString titolo = core::tr("Fattura n. %1: ").arg(numero);
    const auto trovati = rilievi_.find(fattura);
    if (trovati != rilievi_.end())
        titolo += trovati->isEmpty()     ? core::tr("nessun rilievo.")
                  : trovati->size() == 1 ? core::tr("1 rilievo.")
                                         : core::tr("%1 rilievi.").arg(trovati->size());
    else
        titolo += file ? core::tr("file %1, %2.").arg(file->nome, file->stato) : core::tr("non ancora controllata.");
    pannello_->mostra(titolo, trovati != rilievi_.end() ? *trovati : QList<fatturapa::Riscontro>(), ricevute);
}

// The same rows stay chosen: what comes next is often meant for all of them.
void TMMGFattureElettroniche::aggiorna()
{
    const QList<int> chiavi = grid().selectedKeys();
    cerca_();
    for (int riga = 0; chiavi.size() > 1 && riga < grid().rows().rowCount(); ++riga) {
        if (chiavi.contains(grid().rows().keyAt(riga)))
            grid().selectionModel()->select(grid().rows().index(riga, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    mostraRilievi();
}

void TMMGFattureElettroniche::MostraFattura(int id)
{
    cerca_ = [this, id] {
        refill(u"WHERE FATT_ACC.IDFATT_ACC = %1"_s.arg(id));
        return true;
    };
    rilievi_.insert(controllaFatture(this, {id}));
    cerca_();
    grid().selectKey(id);
}

bool TMMGFattureElettroniche::puoScrivere()
{
    if (mayEdit(fatturaAccompagnatoria()))
        return true;
    host::refuseForRights(this);
    return false;
}

void TMMGFattureElettroniche::newRecord()
{
    if (puoScrivere())
        TMMGRicercaBase::newRecord();
}

QList<int> TMMGFattureElettroniche::scelte()
{
    QList<int> chiavi = grid().selectedKeys();
    if (chiavi.isEmpty())
        core::warn(this, core::tr("Non è stata scelta una fattura!"));
    return chiavi;
}

int TMMGFattureElettroniche::unaScelta()
{
    return scelte().value(0, -1);
}

void TMMGFattureElettroniche::controlla()
{
    QList<int> chiavi = grid().selectedKeys();
    if (chiavi.isEmpty()) {
        for (int riga = 0; riga < grid().rows().rowCount(); ++riga)
            chiavi.append(grid().rows().keyAt(riga));
    }
    rilievi_.insert(controllaFatture(this, chiavi));
    aggiorna();
}

void TMMGFattureElettroniche::scriviFile()
{
    if (!puoScrivere())
        return;
    QList<int> chiavi = scelte();
    // The oldest first, so that names follow numbers.
    std::sort(chiavi.begin(), chiavi.end());
    const QString cartella = chiavi.isEmpty() ? QString() : ui::chooseFolder(this, core::tr("Cartella dei file"));
    if (cartella.isEmpty())
        return;
    cartella_ = cartella;
    const FileScritti scritti = ::scriviFile(this, chiavi, cartella);
    rilievi_.insert(scritti.riscontri);
    aggiorna();
    if (scritti.errore.isEmpty())
        core::inform(this, testoDi(scritti));
    else
        core::showError(this, testoDi(scritti) + u"\n\r"_s + scritti.errore);
}

void TMMGFattureElettroniche::anteprima()
{
    const int fattura = unaScelta();
    if (fattura <= 0)
        return;
    const ui::WaitCursor attesa;
    if (const auto file = fatturapa::ultimoFile(ModuleConnection(), fattura))
        return StampaFatturaElettronica(fatturapa::leggibile(fatturapa::contenutoDi(ModuleConnection(), file->id)),
                                        file->nome, u"%1, %2"_s.arg(file->nome, file->stato));
    const fatturapa::Composizione bozza = fatturapa::esamina(fatturapa::leggi(fattura, {}));
    rilievi_.insert(fattura, bozza.riscontri);
    StampaFatturaElettronica(fatturapa::leggibile(fatturapa::scrivi(bozza.fattura)),
                             core::tr("Fattura elettronica %1").arg(grid().selectedValue(u"NUMERO"_s).toString()),
                             core::tr("Il file non è ancora stato scritto."));
    mostraRilievi();
}

// Only files that the exchange system has not answered to.
void TMMGFattureElettroniche::segnaInviata()
{
    if (!puoScrivere())
        return;
    QList<int> scritti;
    QList<int> inviati;
    const QList<int> chiavi = scelte();
    for (const int fattura : chiavi) {
        const auto file = fatturapa::ultimoFile(ModuleConnection(), fattura);
        if (file && file->stato == stato::scritta)
            scritti.append(file->id);
        else if (file && file->stato == stato::inviata)
            inviati.append(file->id);
    }
    if (scritti.isEmpty() && inviati.isEmpty()) {
        if (!chiavi.isEmpty())
            core::warn(this, core::tr("Le fatture scelte non hanno un file da inviare!"));
        return;
    }
    const bool indietro = scritti.isEmpty();
    for (const int file : indietro ? inviati : scritti)
        fatturapa::spostaStato(ModuleConnection(), file, indietro ? stato::inviata : stato::scritta,
                               indietro ? stato::scritta : stato::inviata, core::now());
    aggiorna();
}

void TMMGFattureElettroniche::inviaConLaPosta()
{
    const int fattura = puoScrivere() ? unaScelta() : -1;
    if (fattura <= 0)
        return;
    const auto file = fatturapa::ultimoFile(ModuleConnection(), fattura);
    if (!file || (file->stato != stato::scritta && file->stato != stato::inviata)) {
        core::warn(this, core::tr("La fattura non ha un file da inviare!"));
        return;
    }
    if (cartella_.isEmpty())
        cartella_ = ui::chooseFolder(this, core::tr("Cartella dei file"));
    if (cartella_.isEmpty())
        return;
    QVariant indirizzo = u"sdi01@pec.fatturapa.it"_s;
    GetOptionValue(u"FATT_XML_PEC_SDI"_s, indirizzo);
    const QString percorso = QDir(cartella_).filePath(file->nome);
    core::saveFile(percorso, fatturapa::contenutoDi(ModuleConnection(), file->id));
    ui::openMail(this, {.to = indirizzo.toString(),
                        .subject = u"Fattura elettronica "_s + file->nome,
                        .text = u"In allegato il file "_s + file->nome,
                        .attachment = percorso});
}

void TMMGFattureElettroniche::leggiCartella()
{
    if (!puoScrivere())
        return;
    const QString cartella = ui::chooseFolder(this, core::tr("Cartella delle ricevute"));
    if (!cartella.isEmpty())
        leggi({cartella});
}

void TMMGFattureElettroniche::leggi(const QStringList &percorsi)
{
    if (!puoScrivere())
        return;
    const QStringList file = ricevuteIn(percorsi);
    if (file.isEmpty()) {
        core::inform(this, core::tr("Nella cartella non ci sono ricevute."));
        return;
    }
    const QStringList testi = leggiRicevute(this, file);
    aggiorna();
    core::inform(this, testi.join(u"\n\r"_s));
}

void TMMGFattureElettroniche::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void TMMGFattureElettroniche::dropEvent(QDropEvent *event)
{
    QStringList percorsi;
    for (const QUrl &indirizzo : event->mimeData()->urls()) {
        if (indirizzo.isLocalFile())
            percorsi.append(indirizzo.toLocalFile());
    }
    event->acceptProposedAction();
    // Later: the program from which they come waits until the drop is over, and boxes may be shown.
    QTimer::singleShot(0, this, [this, percorsi] { core::guarded(this, [this, &percorsi] { leggi(percorsi); }); });
}

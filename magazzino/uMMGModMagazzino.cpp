#include "magazzino/uMMGModMagazzino.h"

#include "host/ArticleStock.h"
#include "host/Corvane3Impl.h"
#include "host/IntfPack.h"
#include "host/transfer/ImportTarget.h"
#include "host/users/Users.h"
#include "magazzino/Azioni.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Catalogo.h"
#include "magazzino/documents/DocumentKind.h"
#include "magazzino/documents/Scorte.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "magazzino/schema/InitialRows.h"
#include "magazzino/schema/ModuleSteps.h"
#include "magazzino/schema/ModuleUses.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "magazzino/ui/OffertaIniziale.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Changes.h"
#include "platform/report/Output.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/Help.h"
#include "platform/ui/ProgressDialog.h"

#include <QApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

struct DataSetSpec
{
    QString name;
    QString table;
    QString parameter; ///< key column in the WHERE clause
    QString key;       ///< key of the table itself
    data::CursorType cursor = data::CursorType::Keyset;
};

// Header and rows of every kind of document, both by the header's key.
QList<DataSetSpec> documentDataSets()
{
    QList<DataSetSpec> specs;
    for (const DocumentKind *kind : documentKinds()) {
        specs.append({kind->dataSet(), kind->table, kind->key, kind->key});
        specs.append({kind->rowsDataSet(), kind->rowTable(), kind->key, kind->rowKey()});
    }
    return specs;
}

const QList<DataSetSpec> &dataSetSpecs()
{
    constexpr auto fixed = data::CursorType::Static;
    static const QList<DataSetSpec> specs =
        documentDataSets() +
        QList<DataSetSpec>{
            {u"adsCausaliTrasporto"_s, u"CAUSALI_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s},
            {u"adsTipiTrasporto"_s, u"TIPI_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s},
            {u"adsMoviMaga"_s, u"MOVI_MAGA"_s, u"IDMOVI_MAGA"_s, u"IDMOVI_MAGA"_s, fixed},
            {u"adsFornitore"_s, u"FORNITORI"_s, u"IDFORNITORE"_s, u"IDFORNITORE"_s},
            {u"adsVettore"_s, u"VETTORI"_s, u"IDVETTORE"_s, u"IDVETTORE"_s, fixed},
        };
    return specs;
}

PackageClass moduleClass()
{
    PackageClass module = packageClass<TMMGModMagazzino>();
    module.steps = schema::moduleSteps;
    module.demoRows = schema::insertDemoRows;
    module.commonRows = schema::insertCommonRows;
    return module;
}

// Where the manual tells about the module's windows.
QHash<QString, QString> chapters()
{
    return {{u"TMMGInserimentoBolleCarico"_s, u"Merce in arrivo: la bolla di carico"_s},
            {u"TMMGRicercaBolleCarico"_s, u"Merce in arrivo: la bolla di carico"_s},
            {u"TMMGInserimentoDdTScarico"_s, u"Merce in uscita: il D.d.T. di scarico"_s},
            {u"TMMGRicercaDdTScarico"_s, u"Merce in uscita: il D.d.T. di scarico"_s},
            {u"TMMGInserimentoFattureAccompagnatorie"_s, u"Fatture accompagnatorie"_s},
            {u"TMMGRicercaFattureAccompagnatorie"_s, u"Fatture accompagnatorie"_s},
            {u"TMMGInserimentoMovimentiMagazzino"_s, u"Movimenti senza documento"_s},
            {u"TMMGRicercaMovimentiMagazzino"_s, u"Movimenti senza documento"_s},
            {u"TMMGStampaInventarioBase"_s, u"Inventario e riordino"_s},
            {u"TMMGModStampaSottoscortaRiordino"_s, u"Inventario e riordino"_s},
            {u"TMMGModSelezionaBase"_s, u"Scrivere le righe"_s}};
}

host::ImportTarget suppliersToImport()
{
    return {u"Fornitori"_s, u"FORNITORI"_s, u"IDFORNITORE"_s,
            host::firmImportFields(host::FirmKind::Supplier, u"fornitore"_s)};
}

// Registers the module once while its library loads, with what it has of what the host works on.
const bool registered = [] {
    RegisterPackage(packageName, u"Modulo Magazzino"_s, moduleClass());
    data::registerUses(schema::moduleUses);
    host::registerImportTarget(suppliersToImport);
    ui::addHelpChapters(chapters());
    return true;
}();

} // namespace

TMMGModMagazzino &Modulo()
{
    auto *module = qobject_cast<TMMGModMagazzino *>(GetPackageInstance(packageName));
    if (!module)
        throw core::Error(core::tr("Il modulo \"%1\" non è caricato.").arg(packageName));
    return *module;
}

TMMGModMagazzino::TMMGModMagazzino(QObject *owner)
    : QWidget(qobject_cast<QWidget *>(owner))
    , ModADOConn(new data::Connection(this))
    , rSystem(new report::ReportSystem(this))
    , rProject(new report::ReportProject(this))
    , rPDF(new report::PdfRenderer(this))
    , dlgSavePDF{.title = u"Salva come PDF"_s, .filter = u"File PDF (*.pdf)"_s, .defaultExtension = u"pdf"_s}
{
    setObjectName(u"MMGModMagazzino"_s);
    setWindowTitle(u"Modulo magazzino"_s);
    ModADOConn->setObjectName(u"ModADOConn"_s);
    ModADOConn->setConnectionString(u"Provider=MSDASQL.1;Persist Security Info=False;Data Source=CORVANE3_LOCAL;"_s);
    rProject->setProjectFile(u"Magazzino.rav"_s);
    rSystem->overrideSetup = rSystemOverrideSetup;
    rSystem->overridePreview = rSystemOverridePreview;
    rSystem->runLong = [](const QString &title, const report::ReportSystem::Work &work) {
        ui::runInterruptibly(GetMainForm(), title, work);
    };
    schema::setLongRunner([](const schema::LongWork &work) {
        ui::runInterruptibly(GetMainForm(), core::tr("Aggiornamento dell'archivio"), work);
    });
    rSystem->choosePdfFile = [this](QWidget *form, const QString &name) { return ScegliFilePDF(form, name); };
    rProject->setDataSource([this](const QString &name) { return dmStampe->rows(name); });
    createDataSets();
    createActions();
    createMenus();
    createToolBars();
}

TMMGModMagazzino::~TMMGModMagazzino()
{
    host::articleStock().setReader({});
    // The forms live in the host's child windows, but they work on this module's data sets.
    delete commands_;
}

void TMMGModMagazzino::createDataSets()
{
    for (const DataSetSpec &spec : dataSetSpecs()) {
        auto *dataSet = ui::named(spec.name, new data::DataSet(ModADOConn, this));
        dataSet->setCommandText(u"SELECT\r\n*\r\nFROM %1\r\nWHERE %2=:%2"_s.arg(spec.table, spec.parameter));
        dataSet->setUpdateTarget({spec.table, spec.key});
        dataSet->setCursorType(spec.cursor);
    }
}

data::DataSet &TMMGModMagazzino::dataSet(const QString &name) const
{
    auto *found = findChild<data::DataSet *>(name, Qt::FindDirectChildrenOnly);
    if (!found)
        throw core::Error(core::tr("Il data set \"%1\" non esiste.").arg(name));
    return *found;
}

void TMMGModMagazzino::createActions()
{
    const auto grants = [this](const QString &right) {
        const bool granted = UserHasAbilitazione(right, GetKxCurrentUserName(), *ModADOConn);
        if (!granted)
            host::refuseForRights(this);
        return granted;
    };
    commands_ = new ui::CommandRegistry({.owner = this, .show = ShowChildForm, .grants = grants}, this, this);
    connect(commands_, &ui::CommandRegistry::formMade, this, [this](const QWidget *form) {
        if (const auto *entry = qobject_cast<const ui::EntryForm *>(form))
            connect(entry, &ui::EntryForm::stored, this, &TMMGModMagazzino::tableChanged);
    });
    commands_->setObjectName(u"actListModMagazzino"_s);
    for (const ui::ActionSpec &spec : moduleActions())
        commands_->add(spec);
}

QAction *TMMGModMagazzino::action(const QString &name) const
{
    return commands_->action(name);
}

QWidget *TMMGModMagazzino::openForm(const QString &actionName)
{
    return commands_->openForm(actionName);
}

TMMGModSelezionaBase &TMMGModMagazzino::selectionDialog(const QString &actionName)
{
    auto *dialog = qobject_cast<TMMGModSelezionaBase *>(openForm(actionName));
    if (!dialog)
        throw core::Error(core::tr("La finestra di selezione non è disponibile."));
    return *dialog;
}

void TMMGModMagazzino::Initialize()
{
    try {
        for (const QAction *item : mnModMagazzino->actions()) {
            auto *menu = item->menu<QMenu *>();
            // Only these two of the host's menus are made when the host has none of the name.
            const bool createMissing = menu->objectName() == u"mnDocumenti"_s || menu->objectName() == u"mnMagazzino"_s;
            MergeAdvMenuItems(qApp, menu->objectName(), menu, createMissing);
        }
        adoptHostConnection();
        ApriStampe(QCoreApplication::applicationDirPath() + u"/Magazzino.rav"_s);
        AggiornaDatabase();
        dmStampe = new TMMGdmStampe(ModADOConn, this);
        host::articleStock().setReader(GiacenzeAttuali);
        // Told inside the save, and whoever shows the stock asks the database.
        connect(
            &data::Changes::instance(), &data::Changes::changed, this,
            [](const QStringList &tables) {
                if (ToccaLeGiacenze(tables))
                    Q_EMIT host::articleStock().changed();
            },
            Qt::QueuedConnection);
        MergeAdvToolBarItems(qApp, GetKxCommonToolBarProperties(TKxCommonToolBars::Documenti), toolBars_[0]);
        MergeAdvToolBarItems(qApp, GetKxCommonToolBarProperties(TKxCommonToolBars::Anagrafiche), toolBars_[1]);
        host::offerAtStart(this, offertaIniziale());
    } catch (const std::exception &error) {
        throw core::Error(core::errorText(error), core::errorContext(error));
    }
}

void TMMGModMagazzino::Finalize() {}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): the host calls it on the object
bool TMMGModMagazzino::ExecutePkgAction(const QString &, const QVariantList &, int)
{
    return false;
}

// The first database connection among the main form's components is the suite's.
void TMMGModMagazzino::adoptHostConnection() const
{
    const QWidget *mainForm = GetMainForm();
    auto *connection = mainForm ? mainForm->findChild<data::Connection *>({}, Qt::FindDirectChildrenOnly) : nullptr;
    if (!connection)
        return;
    ModADOConn->close();
    ModADOConn->setConnectionString(connection->connectionString());
    ModADOConn->open();
}

void TMMGModMagazzino::ApriStampe(const QString &path)
{
    rProject->close();
    if (!QFileInfo::exists(path)) {
        core::showError(this, u"Impossibile trovare il file delle stampe del modulo Magazzino!"_s);
        return;
    }
    rProject->setProjectFile(path);
    // A broken file leaves the module usable as well; the project tells its error again at every print.
    core::guarded(this, [this] { rProject->open(); });
}

QString TMMGModMagazzino::ScegliFilePDF(QWidget *form, const QString &proposedName) const
{
    ui::SaveFileRequest request = dlgSavePDF;
    request.proposedName = report::fileNameOf(proposedName) + u".pdf"_s;
    const QString chosen = ui::chooseSaveFile(form, request);
    QString path = chosen.isEmpty() ? chosen : report::withPdfExtension(chosen);
    // The dialog asked about the name as it was typed.
    if (path != chosen && QFileInfo::exists(path) &&
        !core::confirmLoss(form, core::tr("Il file \"%1\" esiste già.\n\rSovrascriverlo?").arg(path)))
        return {};
    return path;
}

void TMMGModMagazzino::rSystemOverrideSetup(report::ReportSystem &system, int overrideMode, QWidget *form)
{
    RaveSystemOverrideSetup(system, overrideMode, form);
}

void TMMGModMagazzino::rSystemOverridePreview(report::ReportSystem &system, int overrideMode, QWidget *form)
{
    RaveSystemOverridePreview(system, overrideMode, form);
}

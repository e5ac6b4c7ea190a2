#include "host/transfer/ImportDialog.h"

#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/Letters.h"
#include "platform/ui/ProgressDialog.h"

#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

data::Rows rowsOf(const QList<ImportProblem> &problems)
{
    QList<QVariantList> rows;
    rows.reserve(problems.size());
    for (const ImportProblem &problem : problems)
        rows.append(
            {rows.size() + 1, problem.line > 0 ? QVariant(problem.line) : QVariant(), problem.column, problem.message});
    return {{{u"ID"_s}, {u"RIGA"_s}, {u"COLONNA"_s, 0, true}, {u"MESSAGGIO"_s, 0, true}}, std::move(rows)};
}

// Behind the numbers of records; nothing where there are none.
QString newCategories(const ImportPlan &plan)
{
    if (plan.newCategories == 0)
        return {};
    return plan.newCategories == 1 ? core::tr(", 1 categoria nuova")
                                   : core::tr(", %1 categorie nuove").arg(plan.newCategories);
}

// What is in doubt does not keep anybody from importing it.
QString doubtsOf(const ImportPlan &plan)
{
    if (plan.doubtCount == 0)
        return {};
    return plan.doubtCount == 1 ? core::tr(" 1 avviso: si può importare lo stesso.")
                                : core::tr(" %1 avvisi: si può importare lo stesso.").arg(plan.doubtCount);
}

} // namespace

ImportDialog::ImportDialog(data::Connection &connection, QWidget *owner)
    : QDialog(owner)
    , connection_(connection)
    , targets_(availableTargets(connection))
{
    setWindowTitle(core::tr("Importa da CSV"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(createFilePart());
    auto *halves = new QSplitter(this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(createMappingPart());
    halves->addWidget(createRightPart());
    halves->setStretchFactor(1, 1);
    layout->addWidget(halves, 1);
    layout->addWidget(createButtons());
    setMinimumSize(ui::forLetters(QSize(780, 480), *this));
    resize(ui::forLetters(QSize(980, 640), *this));
    targetChosen();
}

ImportDialog::~ImportDialog() = default;

const ImportTarget &ImportDialog::target() const
{
    return targets_.at(targetChoice_->currentIndex());
}

void ImportDialog::targetChosen()
{
    const ui::WaitCursor wait;
    lookups_ = std::make_unique<ImportLookups>(connection_, target());
    const QList<ImportField> &fields = target().fields;
    createMissing_->setVisible(std::any_of(fields.cbegin(), fields.cend(),
                                           [](const ImportField &field) { return !field.lookup.parent.isEmpty(); }));
    createMapping();
    splitHeader();
}

void ImportDialog::createMapping()
{
    while (mapping_->rowCount() > 0)
        mapping_->removeRow(0);
    columnChoices_.clear();
    for (const ImportField &field : target().fields) {
        auto *choice = ui::named(u"cmb"_s + field.column, new ui::ComboBox(this));
        // Long headers must not push the preview out of the dialog.
        choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        choice->setMinimumContentsLength(12);
        connect(choice, &QComboBox::activated, this, [this] { core::guarded(this, [this] { check(); }); });
        mapping_->addRow(field.caption + (field.required ? u" *"_s : QString()), choice);
        columnChoices_.append(choice);
    }
}

void ImportDialog::chooseFile()
{
    const QString path = ui::chooseOpenFile(this, {.title = core::tr("Scegli il file da importare"),
                                                   .filter = core::tr("File CSV (*.csv *.txt);;Tutti i file (*)")});
    if (!path.isEmpty())
        openFile(path);
}

void ImportDialog::openFile(const QString &path)
{
    auto file = std::make_unique<core::CsvFile>(path);
    core::CsvFormat found;
    // Cancelled, the file chosen before stays.
    if (!work(*file, [&](core::Progress &progress) { found = file->detectFormat(progress); }))
        return;
    file_ = std::move(file);
    fileName_->setText(path);
    const auto place = static_cast<int>(core::csvSeparators.indexOf(found.separator));
    separatorChoice_->setCurrentIndex(std::max(place, 0));
    encodingChoice_->setCurrentIndex(static_cast<int>(found.encoding));
    readBeginning();
    hasHeader_->setChecked(!beginning_.isEmpty() &&
                           mapColumns(target(), beginning_.constFirst().cells).count(-1) < target().fields.size());
    splitHeader();
}

void ImportDialog::readBeginning()
{
    constexpr int shownRows = 20;
    beginning_.clear();
    readFailure_.clear();
    try {
        if (file_)
            beginning_ = file_->first(shownRows + 1, format());
    } catch (const core::Error &error) {
        // Another separator or encoding may be the cure, so the error stands in the list.
        readFailure_ = error.text();
    }
}

void ImportDialog::readAgain()
{
    readBeginning();
    splitHeader();
}

void ImportDialog::splitHeader()
{
    headers_.clear();
    if (!beginning_.isEmpty()) {
        constexpr qsizetype longestHeader = 100;
        const QStringList first = beginning_.constFirst().cells;
        for (qsizetype i = 0; i < first.size(); ++i) {
            const QString header = hasHeader_->isChecked() ? first[i].simplified().left(longestHeader) : QString();
            headers_.append(header.isEmpty() ? core::tr("Colonna %1").arg(i + 1) : header);
        }
    }
    showPreview();
    proposeMapping();
    check();
}

void ImportDialog::proposeMapping()
{
    const QList<int> columns = mapColumns(target(), hasHeader_->isChecked() ? headers_ : QStringList());
    for (qsizetype i = 0; i < columnChoices_.size(); ++i) {
        columnChoices_[i]->clear();
        columnChoices_[i]->addItem(core::tr("(nessuna)"));
        columnChoices_[i]->addItems(headers_);
        columnChoices_[i]->setCurrentIndex(columns[i] + 1);
    }
}

void ImportDialog::showPreview()
{
    constexpr qsizetype longestCell = 200;
    const QList<core::CsvRecord> shown = hasHeader_->isChecked() ? beginning_.mid(1) : beginning_.mid(0, 20);
    preview_->clear();
    preview_->setColumnCount(static_cast<int>(headers_.size()));
    preview_->setRowCount(static_cast<int>(shown.size()));
    preview_->setHorizontalHeaderLabels(headers_);
    for (int row = 0; row < shown.size(); ++row) {
        preview_->setVerticalHeaderItem(row, new QTableWidgetItem(QString::number(shown[row].line)));
        for (int column = 0; column < headers_.size(); ++column)
            preview_->setItem(row, column, new QTableWidgetItem(shown[row].cells.value(column).left(longestCell)));
    }
    preview_->resizeColumnsToContents();
}

ImportOptions ImportDialog::options() const
{
    ImportOptions options{.headers = headers_,
                          .updateExisting = updateExisting_->isChecked(),
                          .createMissing = createMissing_->isChecked()};
    for (const QComboBox *choice : columnChoices_)
        options.columns.append(choice->currentIndex() - 1);
    return options;
}

auto ImportDialog::reading() const -> Reading
{
    return {*file_, format(), hasHeader_->isChecked()};
}

RecordSource ImportDialog::Reading::records(core::Progress &progress) const
{
    return [reading = *this, &progress](const std::function<void(const core::CsvRecord &)> &use) {
        bool isHeader = reading.hasHeader;
        reading.file.forEach(reading.format, progress, [&](const core::CsvRecord &record) {
            if (!std::exchange(isHeader, false))
                use(record);
        });
    };
}

core::CsvFormat ImportDialog::format() const
{
    return {core::csvSeparators[separatorChoice_->currentIndex()],
            static_cast<core::CsvEncoding>(encodingChoice_->currentIndex())};
}

// A long file is read behind a progress dialog, so that the windows stay alive; false when the user has cancelled it.
bool ImportDialog::work(const core::CsvFile &file, const std::function<void(core::Progress &)> &body)
{
    if (file.isLong())
        return ui::runWithProgress(this, core::tr("Lettura del file"), body);
    const ui::WaitCursor wait;
    core::Progress unseen;
    body(unseen);
    return true;
}

void ImportDialog::check()
{
    plan_ = {};
    checked_ = true;
    if (!readFailure_.isEmpty()) {
        plan_.complain({0, {}, readFailure_});
    } else if (beginning_.size() > (hasHeader_->isChecked() ? 1 : 0)) {
        const auto plan = [this, &chosen = target(), read = reading(), decided = options()](core::Progress &progress) {
            progress.setText(core::tr("Controllo dei record…"));
            plan_ = planImport({chosen, *lookups_, read.records(progress), decided});
        };
        try {
            checked_ = work(*file_, plan);
        } catch (const core::Error &error) {
            plan_ = {};
            plan_.complain({0, {}, error.text()});
        }
    }
    showProblems();
}

void ImportDialog::showProblems()
{
    problems_->setRows(rowsOf(plan_.problems + plan_.doubts));
    const QLocale italian(QLocale::Italian);
    QString text = core::tr("Scegliere un file.");
    if (!checked_)
        text = core::tr("Controllo annullato: scegliere di nuovo il file.");
    else if (plan_.problemCount > 0)
        text = core::tr("%1 errori: correggere il file o l'abbinamento. Nulla viene scritto finché ce ne sono.")
                   .arg(italian.toString(plan_.problemCount));
    else if (plan_.records > 0)
        text = core::tr("%1 record nuovi, %2 da aggiornare%3.%4")
                   .arg(italian.toString(plan_.records - plan_.updates), italian.toString(plan_.updates),
                        newCategories(plan_), doubtsOf(plan_));
    else if (file_)
        text = core::tr("Il file non contiene righe da importare.");
    status_->setText(text);
    import_->setEnabled(checked_ && plan_.problemCount == 0 && plan_.records > 0);
}

void ImportDialog::runImport()
{
    const auto write = [this, &chosen = target(), read = reading(), decided = options(),
                        database = connection_.connectionString()](core::Progress &progress) {
        data::Connection connection(database);
        // What counts here are the records.
        core::Progress unseen;
        writeImport(connection, {chosen, *lookups_, read.records(unseen), decided}, plan_, progress);
    };
    try {
        if (!ui::runWithProgress(this, core::tr("Importazione"), write)) {
            core::inform(this, core::tr("Importazione annullata: nulla è stato scritto."));
            return;
        }
    } catch (const std::exception &) {
        // What another workstation changed meanwhile shows up in the list of errors.
        lookups_ = std::make_unique<ImportLookups>(connection_, target());
        check();
        throw;
    }
    const QLocale italian(QLocale::Italian);
    core::inform(this, core::tr("Importazione completata: %1 record nuovi, %2 aggiornati%3.")
                           .arg(italian.toString(plan_.records - plan_.updates), italian.toString(plan_.updates),
                                newCategories(plan_)));
    accept();
}

void importFromCsv(QWidget *owner, data::Connection &connection)
{
    ImportDialog dialog(connection, owner);
    ui::runModal(dialog);
}

} // namespace host

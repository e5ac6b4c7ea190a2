#include "host/transfer/ImportDialog.h"

#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/LineEdit.h"
#include "platform/ui/ProgressDialog.h"
#include "platform/ui/ResultGrid.h"

#include <QCheckBox>
#include <QFile>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QPushButton *addButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

QGroupBox *grouped(const QString &caption, QWidget *content)
{
    auto *group = new QGroupBox(caption);
    auto *layout = new QVBoxLayout(group);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(content);
    return group;
}

data::Rows rowsOf(const QList<ImportProblem> &problems)
{
    QList<QVariantList> rows;
    rows.reserve(problems.size());
    for (const ImportProblem &problem : problems)
        rows.append(
            {rows.size() + 1, problem.line > 0 ? QVariant(problem.line) : QVariant(), problem.column, problem.message});
    return {{{u"ID"_s}, {u"RIGA"_s}, {u"COLONNA"_s, 0, true}, {u"MESSAGGIO"_s, 0, true}}, std::move(rows)};
}

} // namespace

ImportDialog::ImportDialog(data::Connection &connection, QWidget *owner)
    : QDialog(owner)
    , connection_(connection)
    , targets_(availableTargets(connection))
{
    setWindowTitle(u"Importa da CSV"_s);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(createFilePart());
    auto *halves = new QSplitter(this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(createMappingPart());
    halves->addWidget(createRightPart());
    halves->setStretchFactor(1, 1);
    layout->addWidget(halves, 1);
    layout->addWidget(createButtons());
    setMinimumSize(780, 480);
    resize(980, 640);
    targetChosen();
}

ImportDialog::~ImportDialog() = default;

QComboBox *ImportDialog::addChoice(const QString &name, const QStringList &captions)
{
    auto *choice = new ui::ComboBox(this);
    choice->setObjectName(name);
    choice->addItems(captions);
    return choice;
}

QWidget *ImportDialog::createFilePart()
{
    auto *part = new QWidget(this);
    auto *grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    QStringList captions;
    for (const ImportTarget &target : std::as_const(targets_))
        captions.append(target.caption);
    targetChoice_ = addChoice(u"cmbArchivio"_s, captions);
    separatorChoice_ =
        addChoice(u"cmbSeparatore"_s, {u"Punto e virgola"_s, u"Virgola"_s, u"Tabulazione"_s, u"Barra verticale"_s});
    encodingChoice_ = addChoice(u"cmbCodifica"_s, {u"UTF-8"_s, u"UTF-16"_s, u"Windows (1252)"_s});
    fileName_ = new ui::LineEdit(part);
    fileName_->setObjectName(u"txtFile"_s);
    fileName_->setReadOnly(true);
    QPushButton *choose = addButton(u"cmdSfoglia"_s, u"Sfoglia…"_s, part);
    hasHeader_ = new QCheckBox(u"Prima riga con i titoli"_s, part);
    hasHeader_->setObjectName(u"chkTitoli"_s);
    updateExisting_ = new QCheckBox(u"Aggiorna i record esistenti"_s, part);
    updateExisting_->setObjectName(u"chkAggiorna"_s);
    updateExisting_->setToolTip(
        u"Un codice già presente aggiorna il suo record; le celle vuote lasciano il valore che c'è."_s);
    grid->addWidget(new QLabel(u"Importa"_s, part), 0, 0);
    grid->addWidget(targetChoice_, 0, 1);
    grid->addWidget(new QLabel(u"dal file"_s, part), 0, 2);
    grid->addWidget(fileName_, 0, 3, 1, 3);
    grid->addWidget(choose, 0, 6);
    grid->addWidget(new QLabel(u"Separatore"_s, part), 1, 0);
    grid->addWidget(separatorChoice_, 1, 1);
    grid->addWidget(new QLabel(u"Codifica"_s, part), 1, 2);
    grid->addWidget(encodingChoice_, 1, 3);
    grid->addWidget(hasHeader_, 1, 4);
    grid->addWidget(updateExisting_, 1, 5, 1, 2);
    grid->setColumnStretch(4, 1);
    connect(targetChoice_, &QComboBox::activated, this, [this] { core::guarded(this, [this] { targetChosen(); }); });
    connect(choose, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { chooseFile(); }); });
    for (QComboBox *choice : {separatorChoice_, encodingChoice_})
        connect(choice, &QComboBox::activated, this, [this] { readContent(); });
    connect(hasHeader_, &QCheckBox::clicked, this, [this] { splitHeader(); });
    connect(updateExisting_, &QCheckBox::clicked, this, [this] { check(); });
    return part;
}

QWidget *ImportDialog::createMappingPart()
{
    auto *fields = new QWidget;
    mapping_ = new QFormLayout(fields);
    mapping_->setContentsMargins(4, 4, 4, 4);
    auto *area = new QScrollArea(this);
    area->setWidget(fields);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QGroupBox *group = grouped(u"Campo e colonna del file"_s, area);
    group->setMinimumWidth(300);
    return group;
}

QWidget *ImportDialog::createRightPart()
{
    using ui::ListColumn;
    preview_ = new QTableWidget(this);
    preview_->setObjectName(u"gridAnteprima"_s);
    preview_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    preview_->setWordWrap(false);
    preview_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    preview_->horizontalHeader()->setMaximumSectionSize(240);
    preview_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    problems_ = new ui::ResultGrid(u"ID"_s,
                                   {{u"Riga"_s, u"RIGA"_s, 60, ListColumn::Width::Pixels, ListColumn::Display::Integer},
                                    {u"Colonna"_s, u"COLONNA"_s, 110},
                                    {u"Errore"_s, u"MESSAGGIO"_s, 0, ListColumn::Width::Rest}},
                                   this);
    problems_->setObjectName(u"gridErrori"_s);
    auto *halves = new QSplitter(Qt::Vertical, this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(grouped(u"Anteprima delle prime righe"_s, preview_));
    halves->addWidget(grouped(u"Errori"_s, problems_));
    return halves;
}

QWidget *ImportDialog::createButtons()
{
    auto *part = new QWidget(this);
    auto *line = new QHBoxLayout(part);
    line->setContentsMargins(0, 0, 0, 0);
    status_ = new ui::ElidedLabel(part);
    status_->setObjectName(u"lblStato"_s);
    import_ = addButton(u"cmdImporta"_s, u"Importa"_s, part);
    QPushButton *close = addButton(u"cmdChiudi"_s, u"Chiudi"_s, part);
    connect(import_, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { runImport(); }); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    line->addWidget(status_, 1);
    line->addWidget(import_);
    line->addWidget(close);
    return part;
}

const ImportTarget &ImportDialog::target() const
{
    return targets_.at(targetChoice_->currentIndex());
}

void ImportDialog::targetChosen()
{
    const ui::WaitCursor wait;
    lookups_ = std::make_unique<ImportLookups>(connection_, target());
    createMapping();
    splitHeader();
}

void ImportDialog::createMapping()
{
    while (mapping_->rowCount() > 0)
        mapping_->removeRow(0);
    columnChoices_.clear();
    for (const ImportField &field : target().fields) {
        auto *choice = new ui::ComboBox(this);
        choice->setObjectName(u"cmb"_s + field.column);
        // Long headers must not push the preview out of the dialog.
        choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        choice->setMinimumContentsLength(12);
        connect(choice, &QComboBox::activated, this, [this] { check(); });
        mapping_->addRow(field.caption + (field.required ? u" *"_s : QString()), choice);
        columnChoices_.append(choice);
    }
}

void ImportDialog::chooseFile()
{
    const QString path = ui::chooseOpenFile(
        this, {.title = u"Scegli il file da importare"_s, .filter = u"File CSV (*.csv *.txt);;Tutti i file (*)"_s});
    if (!path.isEmpty())
        openFile(path);
}

void ImportDialog::openFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw core::Error(u"Impossibile leggere il file \"%1\"."_s.arg(path), file.errorString());
    const ui::WaitCursor wait;
    const QByteArray content = file.readAll();
    if (content.startsWith("PK\x03\x04"))
        throw core::Error(
            u"Il file \"%1\" è una cartella di lavoro di un foglio di calcolo: salvarla prima come CSV."_s.arg(path));
    content_ = content;
    fileName_->setText(path);
    const CsvFormat format = detectCsvFormat(content_);
    const auto place = static_cast<int>(csvSeparators.indexOf(format.separator));
    separatorChoice_->setCurrentIndex(std::max(place, 0));
    encodingChoice_->setCurrentIndex(static_cast<int>(format.encoding));
    readContent();
    hasHeader_->setChecked(!records_.isEmpty() &&
                           mapColumns(target(), records_.constFirst().cells).count(-1) < target().fields.size());
    splitHeader();
}

void ImportDialog::readContent()
{
    const ui::WaitCursor wait;
    readFailure_.clear();
    try {
        const QString text = decodeCsv(content_, static_cast<CsvEncoding>(encodingChoice_->currentIndex()));
        records_ = readCsv(text, csvSeparators[separatorChoice_->currentIndex()]);
    } catch (const core::Error &error) {
        // Another separator or encoding may be the cure, so the error stands in the list.
        records_.clear();
        readFailure_ = error.text();
    }
    splitHeader();
}

void ImportDialog::splitHeader()
{
    rows_ = records_;
    headers_.clear();
    if (!rows_.isEmpty()) {
        const QStringList first = rows_.constFirst().cells;
        for (qsizetype i = 0; i < first.size(); ++i) {
            const QString header = hasHeader_->isChecked() ? first[i].simplified() : QString();
            headers_.append(header.isEmpty() ? u"Colonna %1"_s.arg(i + 1) : header);
        }
        if (hasHeader_->isChecked())
            rows_.removeFirst();
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
        columnChoices_[i]->addItem(u"(nessuna)"_s);
        columnChoices_[i]->addItems(headers_);
        columnChoices_[i]->setCurrentIndex(columns[i] + 1);
    }
}

void ImportDialog::showPreview()
{
    constexpr qsizetype shownRows = 20;
    const auto rows = static_cast<int>(std::min(shownRows, rows_.size()));
    preview_->clear();
    preview_->setColumnCount(static_cast<int>(headers_.size()));
    preview_->setRowCount(rows);
    preview_->setHorizontalHeaderLabels(headers_);
    for (int row = 0; row < rows; ++row) {
        preview_->setVerticalHeaderItem(row, new QTableWidgetItem(QString::number(rows_[row].line)));
        for (int column = 0; column < headers_.size(); ++column)
            preview_->setItem(row, column, new QTableWidgetItem(rows_[row].cells.value(column)));
    }
    preview_->resizeColumnsToContents();
}

ImportOptions ImportDialog::options() const
{
    ImportOptions options{.headers = headers_, .updateExisting = updateExisting_->isChecked()};
    for (const QComboBox *choice : columnChoices_)
        options.columns.append(choice->currentIndex() - 1);
    return options;
}

void ImportDialog::check()
{
    const ui::WaitCursor wait;
    plan_ = {};
    if (!rows_.isEmpty())
        plan_ = planImport(target(), *lookups_, rows_, options());
    if (!readFailure_.isEmpty())
        plan_.problems.append({0, {}, readFailure_});
    problems_->setRows(rowsOf(plan_.problems));
    const QLocale italian(QLocale::Italian);
    const qsizetype updates = plan_.updates;
    QString text = u"Scegliere un file."_s;
    if (!plan_.problems.isEmpty())
        text = u"%1 errori: correggere il file o l'abbinamento. Nulla viene scritto finché ce ne sono."_s.arg(
            italian.toString(plan_.problems.size()));
    else if (!plan_.records.isEmpty())
        text = u"%1 record nuovi, %2 da aggiornare."_s.arg(italian.toString(plan_.records.size() - updates),
                                                           italian.toString(updates));
    else if (!fileName_->text().isEmpty())
        text = u"Il file non contiene righe da importare."_s;
    status_->setText(text);
    import_->setEnabled(plan_.problems.isEmpty() && !plan_.records.isEmpty());
}

void ImportDialog::runImport()
{
    const auto write = [this, &chosen = target(), database = connection_.connectionString()](core::Progress &progress) {
        data::Connection connection;
        connection.setConnectionString(database);
        connection.open();
        writeImport(connection, chosen, plan_, progress);
    };
    try {
        if (!ui::runWithProgress(this, u"Importazione"_s, write)) {
            core::inform(this, u"Importazione annullata: nulla è stato scritto."_s);
            return;
        }
    } catch (const std::exception &) {
        // What another workstation changed meanwhile shows up in the list of errors.
        lookups_ = std::make_unique<ImportLookups>(connection_, target());
        check();
        throw;
    }
    const QLocale italian(QLocale::Italian);
    core::inform(this, u"Importazione completata: %1 record nuovi, %2 aggiornati."_s.arg(
                           italian.toString(plan_.records.size() - plan_.updates), italian.toString(plan_.updates)));
    accept();
}

void importFromCsv(QWidget *owner, data::Connection &connection)
{
    ImportDialog dialog(connection, owner);
    ui::runModal(dialog);
}

} // namespace host

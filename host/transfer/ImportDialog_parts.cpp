#include "host/transfer/ImportDialog.h"
#include "platform/core/Lists.h"
#include "platform/core/Messages.h"
#include "platform/ui/LineEdit.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

// What stands where in the dialog.
namespace host {

namespace {

QGroupBox *grouped(const QString &caption, QWidget *content)
{
    auto *group = new QGroupBox(caption);
    auto *layout = new QVBoxLayout(group);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(content);
    return group;
}

} // namespace

QComboBox *ImportDialog::addChoice(const QString &name, const QStringList &captions)
{
    auto *choice = ui::named(name, new ui::ComboBox(this));
    choice->addItems(captions);
    return choice;
}

QWidget *ImportDialog::createFilePart()
{
    auto *part = new QWidget(this);
    auto *grid = ui::withoutMargins<QGridLayout>(part);
    targetChoice_ = addChoice(u"cmbArchivio"_s, core::mapped(targets_, &ImportTarget::caption));
    separatorChoice_ =
        addChoice(u"cmbSeparatore"_s, {u"Punto e virgola"_s, u"Virgola"_s, u"Tabulazione"_s, u"Barra verticale"_s});
    encodingChoice_ = addChoice(u"cmbCodifica"_s, {u"UTF-8"_s, u"UTF-16"_s, u"Windows (1252)"_s});
    fileName_ = ui::named(u"txtFile"_s, new ui::LineEdit(part));
    fileName_->setReadOnly(true);
    QPushButton *choose = ui::plainButton(u"cmdSfoglia"_s, u"Sfoglia…"_s, part);
    hasHeader_ = ui::named(u"chkTitoli"_s, new QCheckBox(u"Prima riga con i titoli"_s, part));
    createRecordOptions();
    grid->addWidget(new QLabel(u"Importa"_s, part), 0, 0);
    grid->addWidget(targetChoice_, 0, 1);
    grid->addWidget(new QLabel(u"dal file"_s, part), 0, 2);
    grid->addWidget(fileName_, 0, 3, 1, 3);
    grid->addWidget(choose, 0, 6);
    grid->addWidget(new QLabel(u"Separatore"_s, part), 1, 0);
    grid->addWidget(separatorChoice_, 1, 1);
    grid->addWidget(new QLabel(u"Codifica"_s, part), 1, 2);
    grid->addWidget(encodingChoice_, 1, 3);
    grid->addWidget(hasHeader_, 1, 4, 1, 3);
    grid->addWidget(updateExisting_, 2, 1, 1, 3);
    grid->addWidget(createMissing_, 2, 4, 1, 3);
    grid->setColumnStretch(4, 1);
    connect(targetChoice_, &QComboBox::activated, this, [this] { core::guarded(this, [this] { targetChosen(); }); });
    connect(choose, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { chooseFile(); }); });
    for (QComboBox *choice : {separatorChoice_, encodingChoice_})
        connect(choice, &QComboBox::activated, this, [this] { core::guarded(this, [this] { readAgain(); }); });
    connect(hasHeader_, &QCheckBox::clicked, this, [this] { core::guarded(this, [this] { splitHeader(); }); });
    return part;
}

void ImportDialog::createRecordOptions()
{
    updateExisting_ = ui::named(u"chkAggiorna"_s, new QCheckBox(u"Aggiorna i record esistenti"_s, this));
    updateExisting_->setToolTip(
        u"Un codice già presente aggiorna il suo record; le celle vuote lasciano il valore che c'è."_s);
    createMissing_ = ui::named(u"chkCategorie"_s, new QCheckBox(u"Crea le categorie mancanti"_s, this));
    createMissing_->setToolTip(u"Una categoria che non c'è viene creata, al primo livello o dove dice il suo percorso "
                               "(\"Padre/Figlia\")."_s);
    for (const QCheckBox *option : {updateExisting_, createMissing_})
        connect(option, &QCheckBox::clicked, this, [this] { core::guarded(this, [this] { check(); }); });
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
    preview_ = ui::named(u"gridAnteprima"_s, new QTableWidget(this));
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
    auto *line = ui::withoutMargins<QHBoxLayout>(part);
    status_ = ui::named(u"lblStato"_s, new ui::ElidedLabel(part));
    import_ = ui::plainButton(u"cmdImporta"_s, u"Importa"_s, part);
    QPushButton *close = ui::plainButton(u"cmdChiudi"_s, u"Chiudi"_s, part);
    connect(import_, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { runImport(); }); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    line->addWidget(status_, 1);
    line->addWidget(import_);
    line->addWidget(close);
    return part;
}

} // namespace host

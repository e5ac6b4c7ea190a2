#include "host/transfer/ImportDialog.h"
#include "platform/core/Lists.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Letters.h"
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
    separatorChoice_ = addChoice(u"cmbSeparatore"_s, {core::tr("Punto e virgola"), core::tr("Virgola"),
                                                      core::tr("Tabulazione"), core::tr("Barra verticale")});
    encodingChoice_ = addChoice(u"cmbCodifica"_s, {u"UTF-8"_s, u"UTF-16"_s, core::tr("Windows (1252)")});
    fileName_ = ui::named(u"txtFile"_s, new ui::LineEdit(part));
    fileName_->setReadOnly(true);
    QPushButton *choose = ui::plainButton(u"cmdSfoglia"_s, core::tr("Sfoglia…"), part);
    hasHeader_ = ui::named(u"chkTitoli"_s, new QCheckBox(core::tr("Prima riga con i titoli"), part));
    createRecordOptions();
    grid->addWidget(new QLabel(core::tr("Importa"), part), 0, 0);
    grid->addWidget(targetChoice_, 0, 1);
    grid->addWidget(new QLabel(core::tr("dal file"), part), 0, 2);
    grid->addWidget(fileName_, 0, 3, 1, 3);
    grid->addWidget(choose, 0, 6);
    grid->addWidget(new QLabel(core::tr("Separatore"), part), 1, 0);
    grid->addWidget(separatorChoice_, 1, 1);
    grid->addWidget(new QLabel(core::tr("Codifica"), part), 1, 2);
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
    updateExisting_ = ui::named(u"chkAggiorna"_s, new QCheckBox(core::tr("Aggiorna i record esistenti"), this));
    updateExisting_->setToolTip(
        core::tr("Un codice già presente aggiorna il suo record; le celle vuote lasciano il valore che c'è."));
    createMissing_ = ui::named(u"chkCategorie"_s, new QCheckBox(core::tr("Crea le categorie mancanti"), this));
    createMissing_->setToolTip(core::tr(
        "Una categoria che non c'è viene creata, al primo livello o dove dice il suo percorso (\"Padre/Figlia\")."));
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
    QGroupBox *group = grouped(core::tr("Campo e colonna del file"), area);
    group->setMinimumWidth(ui::forLetters(300, *group));
    return group;
}

QWidget *ImportDialog::createRightPart()
{
    using ui::ListColumn;
    preview_ = ui::named(u"gridAnteprima"_s, new QTableWidget(this));
    preview_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    preview_->setWordWrap(false);
    preview_->setTabKeyNavigation(false);
    preview_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    preview_->horizontalHeader()->setMaximumSectionSize(240);
    preview_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    problems_ =
        new ui::ResultGrid(u"ID"_s,
                           {{core::tr("Riga"), u"RIGA"_s, 60, ListColumn::Width::Pixels, ListColumn::Display::Integer},
                            {core::tr("Colonna"), u"COLONNA"_s, 110},
                            {u"Errore"_s, u"MESSAGGIO"_s, 0, ListColumn::Width::Rest}},
                           this);
    problems_->setObjectName(u"gridErrori"_s);
    auto *halves = new QSplitter(Qt::Vertical, this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(grouped(core::tr("Anteprima delle prime righe"), preview_));
    halves->addWidget(grouped(core::tr("Errori"), problems_));
    return halves;
}

QWidget *ImportDialog::createButtons()
{
    auto *part = new QWidget(this);
    auto *line = ui::withoutMargins<QHBoxLayout>(part);
    status_ = ui::named(u"lblStato"_s, new ui::ElidedLabel(part));
    import_ = ui::plainButton(u"cmdImporta"_s, core::tr("Importa"), part);
    QPushButton *close = ui::plainButton(u"cmdChiudi"_s, u"Chiudi"_s, part);
    connect(import_, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { runImport(); }); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    line->addWidget(status_, 1);
    line->addWidget(import_);
    line->addWidget(close);
    return part;
}

} // namespace host

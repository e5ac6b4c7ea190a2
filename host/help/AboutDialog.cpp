#include "host/help/AboutDialog.h"

#include "host/Version.h"
#include "platform/core/Log.h"
#include "platform/core/Translation.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QWidget *heading(QWidget *parent)
{
    auto *box = new QWidget(parent);
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins({});
    auto *picture = new QLabel(box);
    picture->setPixmap(QApplication::windowIcon().pixmap(48));
    auto *name = new QLabel(core::tr("<b>Corvane</b>, gestione aziendale"), box);
    row->addWidget(picture);
    row->addWidget(name, 1);
    return box;
}

QLabel *selectable(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(360);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

AboutDialog::AboutDialog(const QString &database, QWidget *owner)
    : QDialog(owner)
{
    setObjectName(u"frmInformazioni"_s);
    setWindowTitle(core::tr("Informazioni su Corvane"));
    const QList<Fact> facts = programFacts(database);
    auto *rows = new QFormLayout(this);
    rows->addRow(heading(this));
    for (const Fact &fact : facts)
        rows->addRow(fact.label + u':', selectable(fact.value, this));
    rows->addRow(core::tr("Licenza:"),
                 selectable(core::tr("© i titolari di Corvane, tutti i diritti riservati. Usa le librerie Qt (LGPL 3), "
                                     "Firebird (IPL e IDPL) e le icone Breeze (LGPL 3)."),
                            this));

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *copy = buttons->addButton(core::tr("&Copia informazioni"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"cmdCopia"_s);
    connect(copy, &QPushButton::clicked, this, [facts] { QApplication::clipboard()->setText(factsAsText(facts)); });
    QPushButton *folder = buttons->addButton(core::tr("Apri la &cartella del registro"), QDialogButtonBox::ActionRole);
    folder->setObjectName(u"cmdCartella"_s);
    connect(folder, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(core::logFile()).absolutePath())); });
    QPushButton *close = buttons->addButton(u"Chiudi"_s, QDialogButtonBox::RejectRole);
    close->setObjectName(u"cmdChiudi"_s);
    close->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    rows->addRow(buttons);
    close->setFocus();
}

} // namespace host

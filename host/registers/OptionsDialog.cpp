#include "host/registers/OptionsDialog.h"

#include "host/DocumentOptions.h"
#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"
#include "platform/ui/NumberEdits.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int longestValue = 255; // characters that OPZIONI keeps

/// A row of OPZIONI and its input.
struct Option
{
    enum class Kind
    {
        Text,
        Flag,
        Copies,
        Paragraph,
        Folder
    };

    QString option;
    QString label;
    Kind kind = Kind::Text;
    QString initial = {}; ///< what counts until the option is stored
    QString help = {};    ///< shown while the pointer rests on the input
};

using Kind = Option::Kind;

const QList<Option> &options()
{
    static const QList<Option> all = {
        {u"NUMERAZIONE_UNICA_FATTURE"_s, core::tr("Numerazione unica per fatture di vendita e accompagnatorie"),
         Kind::Flag},
        {u"FATT_IVA_ESENTE_NOTE"_s, core::tr("Nota delle fatture esenti da IVA")},
        {u"FATT_XML_SUFFISSO"_s, core::tr("Suffisso del numero nelle fatture elettroniche"), Kind::Text, u"/ACC"_s,
         core::tr("Distingue le fatture accompagnatorie da quelle di vendita con lo stesso numero: 12/ACC. Con la "
                  "numerazione unica non serve.")},
        {u"FATT_XML_NATURA_NON_IMPONIBILE"_s, core::tr("Natura delle righe non imponibili"), Kind::Text, u"N1"_s,
         core::tr("Il codice della fattura elettronica per le righe fuori dall'IVA: di solito N1, escluse (art. 15).")},
        {u"FATT_XML_NATURA_ESENTE"_s, core::tr("Natura delle fatture esenti da IVA"), Kind::Text, u"N4"_s,
         core::tr("Il codice della fattura elettronica per le fatture esenti: di solito N4, esenti (art. 10).")},
        {u"FATT_XML_PEC_SDI"_s, core::tr("Indirizzo PEC per l'invio delle fatture elettroniche"), Kind::Text,
         u"sdi01@pec.fatturapa.it"_s,
         core::tr(
             "Il primo invio va a questo indirizzo; la risposta del Sistema di Interscambio dice quale usare dopo.")}};
    return all;
}

Option documentOption(const DocumentOption &option, const QString &label, Kind kind, const QString &help)
{
    return {option.name, label, kind, option.initial, help};
}

// What every printed kind of document has, under its name in the plural.
QList<Option> optionsOf(const QString &table, const QString &documents)
{
    return {documentOption(copiesOption(table), core::tr("Copie: ") + documents, Kind::Copies,
                           core::tr("Quante copie escono dalla stampante, da 1 a 9.")),
            documentOption(labelsOption(table), core::tr("Diciture: ") + documents, Kind::Text,
                           core::tr("Una per copia, separate da punto e virgola. Una copia sola non ne porta.")),
            documentOption(mailOption(table), core::tr("Messaggio: ") + documents, Kind::Paragraph,
                           core::tr("Il testo con cui il documento viene inviato. {documento}, {numero}, {data}, "
                                    "{cliente} e {azienda} diventano quelli del documento."))};
}

const QList<Option> &documentOptions()
{
    static const QString notes = u"DDT_SCARICO"_s;
    static const QList<Option> all =
        optionsOf(notes, u"D.d.T. di scarico"_s) +
        QList{documentOption(pricesOption(notes), core::tr("Prezzi e importi nei D.d.T. di scarico stampati"),
                             Kind::Flag, {})} +
        optionsOf(u"FATT_ACC"_s, u"fatture accompagnatorie"_s) +
        QList{documentOption(archiveOption(), core::tr("Archivio delle stampe"), Kind::Folder,
                             core::tr("La cartella in cui si conserva il PDF di ogni documento stampato, in una "
                                      "sottocartella per anno. Vuota: nessun archivio."))};
    return all;
}

QString storedValue(const Option &option, data::Connection &connection)
{
    const data::Rows rows =
        connection.select(u"SELECT VALORE FROM OPZIONI WHERE OPZIONE = :OPZIONE"_s, {{u"OPZIONE"_s, option.option}});
    return rows.isEmpty() ? option.initial : rows.text(0, u"VALORE");
}

QLineEdit *newLine(const QString &value, QWidget *parent)
{
    auto *edit = new ui::LineEdit(value, parent);
    edit->setMaxLength(longestValue);
    edit->setMinimumWidth(540);
    edit->setCursorPosition(0);
    return edit;
}

QWidget *newFolder(const QString &value, QWidget *parent)
{
    auto *box = new QWidget(parent);
    auto *line = ui::withoutMargins<QHBoxLayout>(box);
    QLineEdit *edit = newLine(value, box);
    auto *choose = ui::plainButton(u"cmdSfoglia"_s, core::tr("Sfoglia..."), box);
    line->addWidget(edit, 1);
    line->addWidget(choose);
    box->setFocusProxy(edit);
    QObject::connect(choose, &QPushButton::clicked, edit, [edit] {
        if (const QString folder = ui::chooseFolder(edit, core::tr("Archivio delle stampe")); !folder.isEmpty())
            edit->setText(folder);
    });
    return box;
}

QWidget *newParagraph(const QString &value, QWidget *parent)
{
    constexpr int lines = 4;
    auto *edit = new QPlainTextEdit(value, parent);
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(lines * edit->fontMetrics().lineSpacing() + 2 * edit->frameWidth() + 8);
    return edit;
}

QWidget *newCopies(const QString &value, QWidget *parent)
{
    constexpr int most = 9;
    auto *edit = new ui::IntegerEdit(parent);
    edit->setRange(1, most);
    edit->showArrows();
    edit->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    edit->setValue(std::clamp(value.toInt(), 1, most));
    return edit;
}

QWidget *newInput(const Option &option, const QString &value, QWidget *parent)
{
    switch (option.kind) {
    case Kind::Flag: {
        auto *check = new QCheckBox(option.label, parent);
        check->setChecked(core::parseFlag(value).value_or(false));
        return check;
    }
    case Kind::Copies:
        return newCopies(value, parent);
    case Kind::Paragraph:
        return newParagraph(value, parent);
    case Kind::Folder:
        return newFolder(value, parent);
    case Kind::Text:
        break;
    }
    return newLine(value, parent);
}

QString valueOf(const QWidget *input)
{
    if (const auto *check = qobject_cast<const QCheckBox *>(input))
        return core::flagText(check->isChecked());
    if (const auto *number = qobject_cast<const ui::IntegerEdit *>(input))
        return QString::number(number->value());
    if (const auto *paragraph = qobject_cast<const QPlainTextEdit *>(input))
        return paragraph->toPlainText();
    const auto *line = qobject_cast<const QLineEdit *>(input);
    return (line ? line : input->findChild<QLineEdit *>())->text();
}

// What keeps a folder from being the archive; nothing when it may be.
QString folderProblem(const QString &folder)
{
    if (!QDir::isAbsolutePath(folder))
        return core::tr("indicare il percorso completo della cartella, che comincia con \"/\".");
    if (folder.size() > longestArchive)
        return core::tr("il percorso della cartella è troppo lungo: al massimo %1 caratteri.").arg(longestArchive);
    if (!QFileInfo(folder).isDir())
        return core::tr("la cartella \"%1\" non esiste.").arg(folder);
    return {};
}

// What the database would refuse, and a folder that is not there.
bool isAcceptable(const Option &option, const QString &value, QWidget *dialog)
{
    QString problem;
    if (value.size() > longestValue)
        problem = core::tr("al massimo %1 caratteri.").arg(longestValue);
    else if (option.kind == Kind::Folder && !value.isEmpty())
        problem = folderProblem(value);
    if (!problem.isEmpty())
        core::warn(dialog, option.label + u": "_s + problem);
    return problem.isEmpty();
}

void edit(const QString &title, const QList<Option> &options, QWidget *owner, data::Connection &connection)
{
    ui::FormDialog dialog(title, owner);
    QList<QWidget *> inputs;
    QStringList before;
    for (const Option &option : options) {
        before.append(storedValue(option, connection));
        inputs.append(newInput(option, before.last(), &dialog));
        inputs.last()->setToolTip(option.help);
        inputs.last()->setObjectName(option.option);
        dialog.addRow(option.kind == Kind::Flag ? QString() : option.label, inputs.last());
    }
    dialog.setCheck([&] {
        for (qsizetype i = 0; i < inputs.size(); ++i) {
            // A folder that other workstations see may be out of reach here.
            if (const QString value = valueOf(inputs[i]);
                value != before[i] && !isAcceptable(options[i], value, &dialog))
                return false;
        }
        data::Transaction transaction(connection);
        for (qsizetype i = 0; i < inputs.size(); ++i)
            connection.run(u"UPDATE OR INSERT INTO OPZIONI(OPZIONE, VALORE) VALUES(?, ?) MATCHING(OPZIONE)"_s,
                           {options[i].option, valueOf(inputs[i])});
        transaction.commit();
        return true;
    });
    ui::runModal(dialog);
}

} // namespace

void editOptions(QWidget *owner, data::Connection &connection)
{
    edit(core::tr("Opzioni"), options(), owner, connection);
}

void editDocumentOptions(QWidget *owner, data::Connection &connection)
{
    edit(core::tr("Stampa e invio dei documenti"), documentOptions(), owner, connection);
}

} // namespace host

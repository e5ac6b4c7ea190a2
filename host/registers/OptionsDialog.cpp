#include "host/registers/OptionsDialog.h"

#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/FormDialog.h"
#include "platform/ui/LineEdit.h"

#include <QCheckBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace host {

namespace {

/// A row of OPZIONI and its input.
struct Option
{
    QString option;
    QString label;
    bool isFlag = false;
    QString initial = {}; ///< what counts until the option is stored
    QString help = {};    ///< shown while the pointer rests on the input
};

const QList<Option> &options()
{
    static const QList<Option> all = {
        {u"NUMERAZIONE_UNICA_FATTURE"_s, u"Numerazione unica per fatture di vendita e accompagnatorie"_s, true},
        {u"FATT_IVA_ESENTE_NOTE"_s, u"Nota delle fatture esenti da IVA"_s},
        {u"FATT_XML_SUFFISSO"_s, u"Suffisso del numero nelle fatture elettroniche"_s, false, u"/ACC"_s,
         u"Distingue le fatture accompagnatorie da quelle di vendita con lo stesso numero: 12/ACC. Con la numerazione "
         "unica non serve."_s},
        {u"FATT_XML_NATURA_NON_IMPONIBILE"_s, u"Natura delle righe non imponibili"_s, false, u"N1"_s,
         u"Il codice della fattura elettronica per le righe fuori dall'IVA: di solito N1, escluse (art. 15)."_s},
        {u"FATT_XML_NATURA_ESENTE"_s, u"Natura delle fatture esenti da IVA"_s, false, u"N4"_s,
         u"Il codice della fattura elettronica per le fatture esenti: di solito N4, esenti (art. 10)."_s},
        {u"FATT_XML_PEC_SDI"_s, u"Indirizzo PEC per l'invio delle fatture elettroniche"_s, false,
         u"sdi01@pec.fatturapa.it"_s,
         u"Il primo invio va a questo indirizzo; la risposta del Sistema di Interscambio dice quale usare dopo."_s}};
    return all;
}

QString storedValue(const Option &option, data::Connection &connection)
{
    const data::Rows rows =
        connection.select(u"SELECT VALORE FROM OPZIONI WHERE OPZIONE = :OPZIONE"_s, {{u"OPZIONE"_s, option.option}});
    return rows.isEmpty() ? option.initial : rows.text(0, u"VALORE");
}

QWidget *addInput(ui::FormDialog &dialog, const Option &option, const QString &value)
{
    if (option.isFlag) {
        auto *check = new QCheckBox(option.label, &dialog);
        check->setChecked(core::parseFlag(value).value_or(false));
        dialog.addRow({}, check);
        return check;
    }
    auto *edit = new ui::LineEdit(value, &dialog);
    edit->setMaxLength(255);
    edit->setMinimumWidth(540);
    edit->setCursorPosition(0);
    dialog.addRow(option.label, edit);
    return edit;
}

QString valueOf(const QWidget *input)
{
    const auto *check = qobject_cast<const QCheckBox *>(input);
    return check ? core::flagText(check->isChecked()) : qobject_cast<const QLineEdit *>(input)->text();
}

} // namespace

void editOptions(QWidget *owner, data::Connection &connection)
{
    ui::FormDialog dialog(u"Opzioni"_s, owner);
    QList<QWidget *> inputs;
    for (const Option &option : options()) {
        inputs.append(addInput(dialog, option, storedValue(option, connection)));
        inputs.last()->setToolTip(option.help);
        inputs.last()->setObjectName(option.option);
    }
    dialog.setCheck([&] {
        data::Transaction transaction(connection);
        for (int i = 0; i < inputs.size(); ++i)
            connection.run(u"UPDATE OR INSERT INTO OPZIONI(OPZIONE, VALORE) VALUES(?, ?) MATCHING(OPZIONE)"_s,
                           {options()[i].option, valueOf(inputs[i])});
        transaction.commit();
        return true;
    });
    ui::runModal(dialog);
}

} // namespace host

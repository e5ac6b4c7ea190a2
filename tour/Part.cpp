#include "tour/Part.h"

#include "host/Application.h"
#include "host/HostCommands.h"
#include "host/IntfPack.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Format.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QTabWidget>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace tour {

host::MainWindow &Part::window() const
{
    return session_.window();
}

data::Connection &Part::database() const
{
    return session_.connection();
}

QObject *Part::module()
{
    return GetPackageInstance(u"Magazzino.bpl"_s);
}

QWidget *Part::opened(const QString &form) const
{
    return control<QWidget>(&window(), form);
}

QWidget *Part::open(const QString &action, const QString &form) const
{
    trigger(module(), action);
    return opened(form);
}

QWidget *Part::openOfHost(const QString &action) const
{
    return session_.commands().openForm(action);
}

void Part::type(const QWidget *owner, const QString &name, const QString &text)
{
    test::typeOver(control<QWidget>(owner, name), text);
}

void Part::pick(const QWidget *owner, const QString &name, const QString &text) const
{
    auto *box = control<QComboBox>(owner, name);
    const int index = box->findText(text);
    if (index < 0)
        visit_.fail(u"\"%1\" manca in %2"_s.arg(text, name));
    box->setCurrentIndex(index);
}

void Part::tick(const QWidget *owner, const QString &name, bool checked)
{
    control<QCheckBox>(owner, name)->setChecked(checked);
}

void Part::showPage(const QWidget *form, int page)
{
    control<QTabWidget>(form, u"pages"_s)->setCurrentIndex(page);
}

QTableView *Part::results(const QWidget *list)
{
    return control<QTableView>(list, u"GridRisultati"_s);
}

void Part::picture(const QString &name) const
{
    visit_.picture(&window(), name);
}

test::ScriptedDialogs::Use Part::pictured(const QString &name) const
{
    if (name.isEmpty())
        return {};
    return [this, name](QDialog &dialog) { visit_.picture(&dialog, name); };
}

void Part::expectWarning(const QString &part) const
{
    visit_.messages.expectPart(u"Attenzione"_s, part, core::Answer::Ok);
}

void Part::expectInformation(const QString &part) const
{
    visit_.messages.expectPart(u"Informazioni"_s, part, core::Answer::Ok);
}

void Part::expectQuestion(const QString &part, core::Answer answer) const
{
    visit_.messages.expectPart(u"Conferma"_s, part, answer);
}

void Part::expectChoice(const QString &text, const QString &letter, const QString &picture) const
{
    expectDialog(test::choosing(text, letter, pictured(picture)));
}

void Part::expectSearch(const QString &typed, const QString &text, const QString &picture) const
{
    expectDialog(test::searching(typed, text, pictured(picture)));
}

QString Part::one(const QString &sql) const
{
    const data::Rows rows = database().select(sql);
    QStringList texts;
    if (!rows.isEmpty()) {
        for (const QVariant &value : rows.values(0))
            texts.append(value.toString());
    }
    return texts.join(u' ');
}

QString Part::decimal(const QString &sql) const
{
    return core::formatNumber(one(sql).toDouble());
}

SaveAnswer::SaveAnswer(const QString &path)
{
    QFile::remove(path);
    QFile::remove(path + u".pdf"_s);
    ui::setSaveFileChooser([path](QWidget *, const ui::SaveFileRequest &) { return path; });
}

SaveAnswer::~SaveAnswer()
{
    ui::setSaveFileChooser({});
}

} // namespace tour

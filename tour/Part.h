#pragma once
#include "tests/support/Controls.h"
#include "tour/Visit.h"

class QTableView;
namespace data {
class Connection;
}
namespace host {
class MainWindow;
class Session;
} // namespace host

namespace tour {

// What the parts do with the program's windows is what the tests do with them.
using test::cellText;
using test::control;
using test::press;
using test::selectRow;
using test::shown;
using test::typeIntoCell;

/// What every part of the tour has: the running program, its database, and the steps that parts are made of.
class Part
{
protected:
    Part(Visit &visit, host::Session &session)
        : visit_(visit)
        , session_(session)
    {
    }

    Visit &visit() const { return visit_; }
    host::Session &session() const { return session_; }
    host::MainWindow &window() const;
    data::Connection &database() const;
    /// The warehouse module.
    static QObject *module();

    void tell(const QString &text) const { visit_.tell(text); }
    template <typename... Compared>
    void check(const QString &what, const Compared &...compared) const
    {
        visit_.check(what, compared...);
    }
    void trigger(const QObject *owner, const QString &action) const { visit_.trigger(owner, action); }

    /// Opens a form of the module by its command.
    QWidget *open(const QString &action, const QString &form) const;
    /// Opens a form of the host by its command.
    QWidget *openOfHost(const QString &action) const;
    /// A form that is open in the main window.
    QWidget *opened(const QString &form) const;
    void close(const QWidget *form) const { trigger(form, QStringLiteral("actChiudi")); }

    static void type(const QWidget *owner, const QString &name, const QString &text);
    /// Takes the entry with this text of a combo box.
    void pick(const QWidget *owner, const QString &name, const QString &text) const;
    static void tick(const QWidget *owner, const QString &name, bool checked);
    static void showPage(const QWidget *form, int page);
    static QTableView *results(const QWidget *list);

    /// A picture of the main window.
    void picture(const QString &name) const;
    void pictureAtSmallestSize(QWidget *form, const QString &name) const { visit_.pictureAtSmallestSize(form, name); }
    /// Leaves a picture of a dialog; does nothing without a name.
    test::ScriptedDialogs::Use pictured(const QString &name) const;

    /// The next box has this title's kind and holds `part`.
    void expectWarning(const QString &part) const;
    void expectInformation(const QString &part) const;
    void expectQuestion(const QString &part, core::Answer answer) const;
    void expectDialog(const test::ScriptedDialogs::Use &use) const { visit_.dialogs.expect(use); }
    /// The next dialog is one for choosing: see test::choosing() and test::searching().
    void expectChoice(const QString &text, const QString &letter = {}, const QString &picture = {}) const;
    void expectSearch(const QString &typed, const QString &text, const QString &picture = {}) const;

    /// The values of a query's first row, separated by blanks; empty without a row.
    QString one(const QString &sql) const;
    /// The first value of a query as an Italian writes it, with two decimals.
    QString decimal(const QString &sql) const;

private:
    Visit &visit_;
    host::Session &session_;
};

/// While it lives, `path` is the answer to every question for a file to write. What a former tour left there is
/// removed, also with the extension ".pdf", which the program adds.
class SaveAnswer
{
public:
    explicit SaveAnswer(const QString &path);
    ~SaveAnswer();
    SaveAnswer(const SaveAnswer &) = delete;
    SaveAnswer &operator=(const SaveAnswer &) = delete;
};

} // namespace tour

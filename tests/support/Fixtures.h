#pragma once
#include "host/Corvane3Impl.h"
#include "host/HostCommands.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "platform/ui/Colours.h"
#include "platform/ui/SearchForm.h"
#include "tests/support/Documents.h"
#include "tests/support/Kit.h"
#include "tests/support/Workstation.h"

namespace test {

/// Tests that each have a workplace of their own.
class AtWorkplace : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    virtual void init() { workplace_ = std::make_unique<Workplace>(); }
    virtual void cleanup() { workplace_.reset(); }

protected:
    Workplace &place() const { return *workplace_; }
    /// In the place of the one before, if any.
    void setPlace(std::unique_ptr<Workplace> workplace) { workplace_ = std::move(workplace); }
    /// The module's connection.
    data::Connection &connection() const { return *place().module().ModADOConn; }
    data::Connection &database() const { return place().database(); }
    QStringList lines(const QString &sql) const { return place().lines(sql); }
    /// Opens a form by the module's action.
    QWidget *open(const QString &action) const { return place().module().openForm(action); }
    ui::EntryForm *openEntry(const QString &action) const
    {
        QWidget *form = open(action);
        settle();
        return qobject_cast<ui::EntryForm *>(form);
    }

    ui::SearchForm *openList(const QString &action) const
    {
        auto *form = qobject_cast<ui::SearchForm *>(open(action));
        if (!form)
            missing(action);
        checkModel(gridOf(*form));
        settle();
        return form;
    }
    static QTableView *gridOf(const QWidget &list)
    {
        return control<QTableView>(&list, QStringLiteral("GridRisultati"));
    }

private:
    std::unique_ptr<Workplace> workplace_;
};

/// Tests with the main window in front, as a user has it.
class AtShownWorkplace : public AtWorkplace
{
    Q_OBJECT

protected Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        place().window().show();
        QVERIFY(QTest::qWaitForWindowActive(&place().window()));
    }
};

/// Tests that each have the form of a new document, too.
class AtDocument : public AtWorkplace
{
    Q_OBJECT

protected:
    explicit AtDocument(const DocumentNames &names)
        : names_(names)
    {
    }
    Document &note() const { return *document_; }

protected Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        document_ = std::make_unique<Document>(place(), names_);
    }
    void cleanup() override
    {
        document_.reset();
        AtWorkplace::cleanup();
    }

private:
    const DocumentNames &names_;
    std::unique_ptr<Document> document_;
};

} // namespace test

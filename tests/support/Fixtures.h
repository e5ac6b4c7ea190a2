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

    /// One of the host.
    ui::EntryForm *openHostEntry(const QString &action) const
    {
        return qobject_cast<ui::EntryForm *>(place().commands().openForm(action));
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

    /// What is stored once a document has been typed and saved; the test begins anew afterwards.
    QStringList storedOf(const DocumentNames &names)
    {
        QStringList all;
        {
            const Document document(place(), names);
            document.fillAll();
            document.save();
            all = document.stored();
        }
        cleanup();
        init();
        return all;
    }

private:
    std::unique_ptr<Workplace> workplace_;
};

/// Tests on a database and settings that outlive the session.
class AtKeptWorkplace : public AtWorkplace
{
    Q_OBJECT

protected Q_SLOTS:
    void init() override
    {
        folder_ = std::make_unique<QTemporaryDir>();
        database_ = std::make_unique<TestDatabase>(Content::DemoData);
        startAgain();
    }
    void cleanup() override
    {
        AtWorkplace::cleanup();
        database_.reset();
    }

protected:
    /// The session before ends without a question, as a program that is cut off does.
    void startAgain()
    {
        setPlace({});
        setPlace(std::make_unique<Workplace>(address(), file()));
    }
    data::DatabaseAddress address() const { return database_->address(); }
    /// The settings' file, and others beside it.
    QString file(const QString &name = QStringLiteral("corvane.ini")) const { return folder_->filePath(name); }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<TestDatabase> database_;
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

/// Tests that each have the form of a new document, too; Q_CLASSINFO names its "kind".
class AtDocument : public AtWorkplace
{
    Q_OBJECT

protected:
    Document &note() const { return *document_; }

protected Q_SLOTS:
    void init() override
    {
        AtWorkplace::init();
        const QMetaClassInfo kind = metaObject()->classInfo(metaObject()->indexOfClassInfo("kind"));
        document_ = std::make_unique<Document>(place(), documentNames(QString::fromLatin1(kind.value())));
    }
    void cleanup() override
    {
        document_.reset();
        AtWorkplace::cleanup();
    }

private:
    std::unique_ptr<Document> document_;
};

} // namespace test

#pragma once
#include "platform/data/ConnectionString.h"
#include "platform/ui/NumberEdits.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>

namespace host {

/// Editor "txtPorta" of a server's port, which shows Firebird's own at first.
ui::IntegerEdit *portEdit(QWidget *parent);

/// Inputs for where a database is: a file on this computer, or one on a Firebird server.
class DatabasePlace : public QWidget
{
    Q_OBJECT

public:
    enum class Purpose
    {
        Open,
        Create
    };

    /// `folder` is where files are looked for at first.
    DatabasePlace(Purpose purpose, QString folder, QWidget *parent);

    /// Where the database is, as it stands in the inputs; only good while problem() is empty.
    data::DatabaseAddress address() const;
    /// Shall the password of the server be kept?
    bool keepPassword() const;
    /// What is missing, in a sentence; empty when nothing is.
    QString problem() const;
    /// Puts a path there, as the one proposed.
    void setFile(const QString &path);
    /// Shows where a database is; an empty address changes nothing.
    void setAddress(const data::DatabaseAddress &address);
    /// True while the file is still the one proposed by setFile().
    bool hasProposedFile() const;

private:
    void createLocal();
    void createServer();
    QPushButton *createPreparation();
    void browse();
    bool isLocal() const;

    Purpose purpose_;
    QString folder_;
    QRadioButton *local_;
    QRadioButton *server_;
    QWidget *localBox_;
    QWidget *serverBox_;
    QLineEdit *file_ = nullptr;
    QLineEdit *host_ = nullptr;
    ui::IntegerEdit *port_ = nullptr;
    QLineEdit *serverFile_ = nullptr;
    QLineEdit *user_ = nullptr;
    QLineEdit *password_ = nullptr;
    QCheckBox *keep_ = nullptr;
    QString proposed_;
};

} // namespace host

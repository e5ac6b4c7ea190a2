#pragma once
#include "host/StartOffers.h"
#include "platform/data/Connection.h"
#include "platform/ui/LineEdit.h"

#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <QTreeWidget>

class QTreeWidgetItem;

namespace host {

/// "Cerca ovunque": one field over all records that host and modules offer, what is found grouped by kind while one
/// types. The field keeps the keys; arrows lead through what is found, Enter opens it.
///
/// The sources are asked one after the other, each in a turn of the event loop, so that the next key ends the search
/// for what was typed before it.
class SearchEverywhere : public QDialog
{
    Q_OBJECT

public:
    /// Rights are looked up on `connection`.
    SearchEverywhere(data::Connection &connection, QWidget *owner);

    /// What was chosen, once the dialog was accepted: the entry form's command, and the record's key.
    const QString &action() const { return action_; }
    int key() const { return key_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Group
    {
        SearchSource source;
        QVariant next;
        QTreeWidgetItem *item = nullptr;
        int hits = 0;
    };

    void createList();
    void start();
    void goOn();
    void askNext();
    void show(qsizetype position, const QList<SearchHit> &hits);
    void finish();
    void step(int by);
    void choose(const QTreeWidgetItem *item);
    QList<SearchSource> allowed() const;

    data::Connection &connection_;
    ui::LineEdit *field_ = nullptr;
    QTreeWidget *found_ = nullptr;
    QLabel *state_ = nullptr;
    QTreeWidgetItem *more_ = nullptr; // goes on with older records
    QList<SearchSource> sources_;
    QList<Group> groups_;
    QList<qsizetype> waiting_; // positions of the groups still to be asked
    QTimer restLater_;
    QTimer askLater_;
    QString action_;
    int key_ = -1;
};

/// Asks, and opens what was chosen.
void searchEverywhere(QWidget *owner, data::Connection &connection);

} // namespace host

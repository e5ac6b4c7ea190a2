#pragma once
#include "magazzino/documents/Scorte.h"
#include "magazzino/ui/DocumentGrid.h"
#include "platform/ui/Controls.h"

#include <QTimer>

class QLabel;

/// What stands under the rows of a document of the stock: of the article one stands on, and which rows take more than
/// there is. It only tells; nothing is kept from being saved.
///
/// The database is asked once after a change that brings in new articles, when the event that made it is over, and
/// never while the page of the rows is out of sight. A typed quantity is only counted.
class DocumentStockLine : public QWidget
{
    Q_OBJECT

public:
    /// `document` tells whose stock it is, as it stands in the form.
    DocumentStockLine(DocumentGrid &grid, std::function<ScorteDi()> document, QWidget *parent);

    /// What was read is out of date: other document, date or customer, or something was stored.
    void forget();
    /// What was read is still true: what was stored just now is the document that it belongs to.
    void keep();
    /// The row being typed has this article; empty while it has none.
    void setTyped(const QString &codice);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void tablesChanged(const QStringList &tables);
    void refresh();
    void readMissing();
    void judge();
    void showCurrent();
    QString textOf(const QString &codice) const;
    double inDocument(const QString &codice) const;

    DocumentGrid &grid_;
    std::function<ScorteDi()> document_;
    ScorteDi of_; // as it was read
    QHash<QString, Scorta> scorte_;
    bool outdated_ = false;
    bool wasOutdated_ = false; // before the last change
    QString typed_;
    ui::ElidedLabel *current_;
    QLabel *warning_;
    QTimer later_;
};

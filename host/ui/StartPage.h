#pragma once
#include "host/StartOffers.h"
#include "platform/data/Connection.h"
#include "platform/ui/ResultGrid.h"

#include <QAction>
#include <QGroupBox>
#include <QMdiArea>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace host {

/// What lies in the main window while no other window does: the commands that a day begins with, the last documents,
/// what to keep an eye on and, for a new firm, what to do first. It reads when it appears, and once a box or dialog
/// over it is gone; an error leaves what stood there.
class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    /// Over the whole of `area`; rights are looked up on `connection`.
    StartPage(QMdiArea &area, data::Connection &connection);

    /// Shows how old the last backup is, whenever the page is read; `make` makes one.
    void showBackup(const std::function<QString()> &age, QAction *make);
    /// Reads everything anew, what takes long aside.
    void refresh();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    struct Figure
    {
        StartFigure spec;
        QPushButton *show = nullptr;
        QPushButton *count = nullptr;
    };

    void createPage();
    QGroupBox *box(const QString &name, const QString &title);
    static QPushButton *link(const QString &name, QWidget *parent);
    bool isAlone() const;
    void followWindows();
    void appear();
    void focusFirst();
    bool mayRead() const;
    void readOffers();
    void readRecent(const StartOffer &offers);
    void readSteps(const StartOffer &offers);
    void orderTabs();
    void showCommands(const QList<StartCommand> &commands);
    void showFigures(const QList<StartFigure> &figures);
    void showSteps(const QList<std::pair<FirstStep, bool>> &steps);
    void countQuickOnes();
    void countApart(const Figure &figure);
    static void showCount(const Figure &figure, const data::Rows &counted);
    bool holds(const QString &right) const;
    void run(const QString &action);
    void openRecent();

    QMdiArea &area_;
    QPointer<data::Connection> connection_;
    QVBoxLayout *commands_ = nullptr;
    QVBoxLayout *figures_ = nullptr;
    QVBoxLayout *steps_ = nullptr;
    QGroupBox *stepsBox_ = nullptr;
    ui::ResultGrid *recent_ = nullptr;
    QPushButton *backup_ = nullptr;
    std::function<QString()> backupAge_;
    QString commandsShown_;
    QList<Figure> figuresShown_;
    QList<std::pair<QString, int>> recentRecords_; // action and key, in the order of the list
    QTimer appearLater_;
    QTimer readLater_;
    QTimer countLater_;
};

} // namespace host

#pragma once
#include <QDate>
#include <QList>
#include <QStringList>
#include <QVariant>

#include <functional>

class QObject;

/// What a module adds to the start page and to "Cerca ovunque". The host knows commands, texts and keys of it, no
/// table. Functions run in the session of the module that gave them, and may throw.
namespace host {

/// Something that one begins the day with: the command of an entry form, which starts a new record, or any other.
struct StartCommand
{
    QString action;
    QString caption;
    QString hint;
    QStringList rights; ///< all of which the user needs to see it
};

/// A record that was written not long ago.
struct RecentRecord
{
    int key = -1;
    QString kind;
    QString number;
    QDate date;
    QString counterpart; ///< customer, supplier
};

struct RecentSource
{
    QString action; ///< of the entry form that opens the record
    QString right;  ///< that the user needs to see any of them; none while empty
    /// The newest ones first, at most so many.
    std::function<QList<RecentRecord>(int most)> newest;
};

/// Something to keep an eye on; everybody sees it.
struct StartFigure
{
    QString name; ///< of its control
    QString caption;
    QString action; ///< that shows more of it
    /// The query that counts: one row with the number.
    std::function<QString()> query;
    /// May it be counted unasked, while nobody types?
    std::function<bool()> isQuick;
};

/// What a new firm does first, for everybody; done() tells whether that was done.
struct FirstStep
{
    QString caption;
    QString action;
    std::function<bool()> isDone;
};

/// A record that "Cerca ovunque" has found.
struct SearchHit
{
    int key = -1;
    QString text;
    QString detail;
};

/// What a part of the records gave.
struct SearchPart
{
    QList<SearchHit> hits;
    QVariant next = {}; ///< where to go on looking; invalid when everything was looked through
};

/// Records among which "Cerca ovunque" looks. One question is to take a few hundredths of a second, however many there
/// are: a source that could take longer looks through its newest records, and goes on with older ones when asked again.
struct SearchSource
{
    QString caption; ///< over its results
    QString action;  ///< of the entry form that opens the record
    QString right;   ///< that the user needs to see any of them; none while empty
    /// At most searchHits records that have every word of `text`, from where `from` says; from the newest when invalid.
    std::function<SearchPart(const QString &text, const QVariant &from)> find;
    bool isSlow = false; ///< is asked behind the others
};

/// So many results of a source are of use at a time.
inline constexpr int searchHits = 20;

struct StartOffer
{
    QList<StartCommand> commands;
    QList<RecentSource> recent;
    QList<StartFigure> figures;
    QList<FirstStep> steps;
    QList<SearchSource> searches;
};

/// Offers what `owner` has, as long as that object lives.
void offerAtStart(QObject *owner, const StartOffer &offer);
/// Everything that is offered now; commands and searches of a module stand before those of the host, first steps
/// behind.
StartOffer startOffers();

} // namespace host

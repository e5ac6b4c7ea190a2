#pragma once
#include "benchmark/Bare.h"
#include "benchmark/BenchData.h"
#include "benchmark/Measure.h"
#include "benchmark/Network.h"
#include "benchmark/Program.h"

#include <QTemporaryDir>

/// The whole run: data, workloads, table.
namespace bench {

class Bench
{
public:
    /// `wanted` names the groups of workloads to run; all while it is empty.
    Bench(const DataSize &size, const QStringList &wanted);

    /// Fills the database by halves and measures at both; returns the text of all tables.
    QString run();
    /// Measures on a server instead, at several delays of its answers; returns the text of the table.
    QString runOverNetwork();
    /// Opens, saves, prints and closes so many documents instead, as in a long day; returns what the process has gained
    /// by it. Throws core::Error when that is too much.
    QString runDay(int documents);

    DataSize size; ///< of what the database holds while something is measured
    Program &program() const { return *program_; }
    Bare &bare() const { return *bare_; }
    QString filePath(const QString &name) const { return folder_.filePath(name); }
    void add(const Pair &pair, const Figure &figure);

private:
    void createDatabase();
    void fill(int first, int last) const;
    /// What is measured before the whole: half of it, or the large size where there is more.
    static DataSize firstPart(const DataSize &whole);
    void growTo(const DataSize &whole);
    void measureStart();
    void measureVersionReadings();
    void measureLogin();
    void measureGrowing();
    void restart();
    bool isWanted(const QString &group) const;
    QString growthTable(const QList<Figure> &former, int times) const;

    QTemporaryDir folder_;
    QStringList wanted_;
    data::DatabaseAddress address_;
    std::unique_ptr<Network> network_; // only while measuring over it
    std::unique_ptr<Program> program_;
    std::unique_ptr<Bare> bare_;
    QList<Figure> figures_;
};

/// The lowest key of a table in the module's database.
int firstKey(const QString &table, const QString &key);
/// The number of movements in it.
qint64 movements();

/// First argument of the program that measureWindow() starts; the second one is the database.
inline const QString windowOnly = QStringLiteral("window");
/// Works like the program from its start to the first main window, and ends once that is painted.
int showMainWindow(const QString &database);

// Groups of workloads.
void measureSaves(Bench &bench);
void measureOpening(Bench &bench);
void measureArticleRow(Bench &bench);
void measureTyping(Bench &bench);
void measureKeySearches(Bench &bench);
void measureInventories(Bench &bench);
void measureLevelReports(Bench &bench);
void measureRevaluation(Bench &bench);
void measureLists(Bench &bench);
void measureBegin(Bench &bench);
void measureWindow(Bench &bench);
void measurePdf(Bench &bench);
void measureFiles(Bench &bench);

} // namespace bench

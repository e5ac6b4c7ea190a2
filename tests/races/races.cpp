// Two workstations, processes of their own, save documents at the same time over a link on which every turn lasts five
// milliseconds. Then what the database holds is compared with what they entered.
//
// usage: races COUNT   two thirds of the saves are new documents, whose numbers both propose; one third are of a
//                      document that both have open
#include "host/start/FirstRows.h"
#include "tests/support/Documents.h"
#include "tests/support/Kit.h"
#include "tests/support/SlowLink.h"
#include "tests/support/Workstation.h"

namespace {

constexpr std::chrono::milliseconds delay(5);
const QStringList names = {u"NORD"_s, u"SUD"_s};

struct Kind
{
    bool isReceipt;
    QString table;
    QString key;
};
const QList<Kind> kinds = {{true, u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s},
                           {false, u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s}};

class Races
{
public:
    Races();

    int newDocuments(int count);
    int oneDocument(int count);
    QStringList problems() const { return problems_; }

private:
    QStringList lines(const QString &sql) const { return test::linesOf(*connection_, sql); }
    void expect(const QString &what, const QStringList &seen, const QStringList &expected);
    void expectEntered(const Kind &kind, int rounds);
    void raceFor(const QString &key, int round, test::Workstation &first, test::Workstation &second);

    test::FirebirdServer server_;
    test::SlowLink link_;
    data::DatabaseAddress slow_;
    std::unique_ptr<data::Connection> connection_; // not over the link
    QStringList problems_;
};

Races::Races()
    : link_(server_.address().port)
    , slow_(server_.address())
{
    slow_.port = link_.port();
    host::createHostDatabase(server_.address(), true);
    host::insertDemoModuleData(test::Workplace(server_.address()).database());
    connection_ = test::connectTo(server_.address());
    test::emptyDocuments(*connection_);
    link_.setDelay(delay);
}

void Races::expect(const QString &what, const QStringList &seen, const QStringList &expected)
{
    if (seen == expected)
        return;
    QStringList differing;
    for (const QString &line : expected)
        differing += seen.contains(line) ? QStringList() : QStringList(u"  missing "_s + line);
    for (const QString &line : seen)
        differing += expected.contains(line) ? QStringList() : QStringList(u"  too much "_s + line);
    problems_.append(what + u'\n' + differing.join(u'\n'));
}

// Each document once, with a number of its own, its rows in their order and the movement of each, at the only cost that
// anything ever came in at.
void Races::expectEntered(const Kind &kind, int rounds)
{
    QStringList expected;
    for (const QString &name : names) {
        for (int round = 1; round <= rounds; ++round) {
            for (int row = 0; row < test::enteredRows; ++row) {
                const int quantity = test::enteredQuantity(kind.isReceipt, round, row);
                expected.append(
                    u"%1 %2|%3|%4|2"_s.arg(name).arg(round).arg(quantity).arg(kind.isReceipt ? quantity : -quantity));
            }
        }
    }
    QStringList seen = lines(u"SELECT D.NOTE, R.QUANTITA, M.QUANTITA, M.VALORE FROM %1 D LEFT JOIN %1_DETT R ON R.%2 = "
                             "D.%2 LEFT JOIN MOVI_MAGA M ON M.RIF_DOC_ID = D.%2 AND M.RIF_DOC_IDRIGA = R.%2_DETT AND "
                             "M.TIPO_MOVIMENTO = '%3' ORDER BY D.%2, R.%2_DETT"_s.arg(
                                 kind.table, kind.key, kind.isReceipt ? u"Carico"_s : u"Scarico"_s));
    expected.sort();
    seen.sort();
    expect(kind.table, seen, expected);
    expect(kind.table + u": numbers, rows"_s,
           lines(u"SELECT COUNT(DISTINCT NUMERO), (SELECT COUNT(*) FROM %1_DETT) FROM %1"_s.arg(kind.table)),
           {u"%1|%2"_s.arg(names.size() * rounds).arg(expected.size())});
}

// Returns how many saves were made.
int Races::newDocuments(int count)
{
    const auto rounds = std::max(1, count / static_cast<int>(names.size() * kinds.size()));
    std::vector<std::unique_ptr<test::Workstation>> workstations;
    for (const QString &name : names)
        workstations.push_back(std::make_unique<test::Workstation>(slow_, QStringList{name, QString::number(rounds)}));
    for (const auto &workstation : workstations) {
        constexpr int ofStart = 60;
        constexpr int ofRound = 10;
        if (const QString complaint = workstation->end(ofStart + ofRound * rounds); !complaint.isEmpty())
            problems_.append(complaint);
    }
    for (const Kind &kind : kinds)
        expectEntered(kind, rounds);
    expect(u"articles"_s,
           lines(u"SELECT COUNT(*) FROM ANA_MAGA WHERE CODICE STARTING 'NORD-' OR CODICE STARTING 'SUD-'"_s),
           {QString::number(names.size() * rounds)});
    const auto saves = static_cast<int>(names.size() * kinds.size()) * rounds;
    expect(u"movements"_s, lines(u"SELECT COUNT(*) FROM MOVI_MAGA"_s), {QString::number(saves * test::enteredRows)});
    return saves;
}

// Whoever comes second overwrites, or is refused when both really meet. What is stored then is what one of those who
// were told that they had saved has typed.
void Races::raceFor(const QString &key, int round, test::Workstation &first, test::Workstation &second)
{
    const QStringList typed = {QString::number(100 + 2 * round), QString::number(101 + 2 * round)};
    first.tell(u"receipt %1 save %2 yes"_s.arg(key, typed[0]));
    second.tell(u"receipt %1 save %2 yes"_s.arg(key, typed[1]));
    expect(u"opening"_s, {first.answer(), second.answer()}, {u"ready"_s, u"ready"_s});
    (round % 2 ? second : first).tell(u"go"_s);
    (round % 2 ? first : second).tell(u"go"_s);
    const QStringList replies = {first.answer().section(u' ', 0, 0), second.answer().section(u' ', 0, 0)};
    const QStringList stored = lines(u"SELECT R.QUANTITA, M.QUANTITA FROM BOLLE_CARICO_DETT R FULL JOIN MOVI_MAGA M ON "
                                     "M.RIF_DOC_ID = R.IDBOLLA_CARICO AND M.RIF_DOC_IDRIGA = R.IDBOLLA_CARICO_DETT"_s);
    for (int i = 0; i < 2; ++i) {
        if (replies[i] == u"saved"_s && stored == QStringList(u"%1|%1"_s.arg(typed[i])))
            return;
    }
    problems_.append(u"one document, round %1: %2; stored %3"_s.arg(round).arg(replies.join(u' '), stored.join(u' ')));
}

int Races::oneDocument(int count)
{
    test::emptyDocuments(*connection_);
    test::Workstation first(slow_, {});
    test::Workstation second(slow_, {});
    first.tell(u"receipt 0 new 7 no\ngo"_s);
    first.answer();
    const QString key = first.answer().section(u' ', 1);
    const int rounds = std::max(1, count / 2);
    for (int round = 0; round < rounds && problems_.isEmpty(); ++round)
        raceFor(key, round, first, second);
    for (test::Workstation *workstation : {&first, &second}) {
        constexpr int patience = 60;
        if (const QString complaint = workstation->end(patience); !complaint.isEmpty())
            problems_.append(complaint);
    }
    return 2 * rounds;
}

int run(int count)
{
    QElapsedTimer time;
    time.start();
    Races races;
    const int entered = races.newDocuments(count * 2 / 3);
    const int overwritten = races.oneDocument(count - entered);
    std::printf("%d new documents and %d saves of one document by two workstations, %lld ms a turn: %lld problems "
                "(%lld s)\n%s\n",
                entered, overwritten, static_cast<long long>(delay.count()),
                static_cast<long long>(races.problems().size()), time.elapsed() / 1000,
                qUtf8Printable(races.problems().join(u'\n')));
    return races.problems().isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1).toInt();
    if (count <= 0) {
        std::fprintf(stderr, "usage: races COUNT\n");
        return 2;
    }
    try {
        return run(count);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(core::errorText(error)));
        return 1;
    }
}

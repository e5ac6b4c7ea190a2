// How long a list of 50.000 invoices of one year takes, against the bare query fetched and dropped, in the same run.
#include "host/Application.h"
#include "host/DatabaseSetup.h"
#include "host/PackageLoader.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Clock.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/SearchForm.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int runs = 5;

double medianMilliseconds(const std::function<void()> &work)
{
    QList<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

void insertInvoices(data::Connection &connection, int year)
{
    connection.execute(
        u"EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < 50000) DO BEGIN I = I + 1; "
        "INSERT INTO FATT_ACC(NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, "
        "PAGATO, "
        "IDTIPO_TRASPORTO, TIPO_TRASPORTO, IDCAUSALE_TRASPORTO, CAUSALE_TRASPORTO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, "
        "TOTALE_DOCUMENTO, FC_ABILITATO) VALUES(:I, CURRENT_DATE, %1, 'C' || :I, 'Cliente numero ' || :I, 1, "
        "'Contanti', "
        "'False', 1, 'Mittente', 1, 'Vendita', :I, 0, :I, 'False'); END END"_s.arg(year));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    data::useLockFolder(folder.filePath(u"lock"_s));
    data::DatabaseAddress address;
    address.file = folder.filePath(u"bench.fdb"_s);
    host::createHostDatabase(address, false);
    host::Session session(address, host::administrator, {});
    host::startPackages(&application);
    data::Connection &connection = *Modulo().ModADOConn;
    insertInvoices(connection, core::today().year());

    session.window().show();
    auto *list = qobject_cast<ui::SearchForm *>(Modulo().openForm(u"actRicercaFattureAccompagnatorie"_s));
    const double filled = medianMilliseconds([&] {
        list->Cerca();
        QApplication::processEvents();
    });
    const double floor = medianMilliseconds([&] {
        QSqlDatabase database = QSqlDatabase::database(QSqlDatabase::connectionNames().constLast(), false);
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.exec(u"SELECT * FROM FATT_ACC WHERE ANNO=%1 ORDER BY ANNO DESC, NUMERO DESC"_s.arg(core::today().year()));
        while (query.next()) {
        }
    });
    std::printf("50000 invoices: list %.0f ms, bare query %.0f ms, ratio %.2f\n", filled, floor, filled / floor);
    return 0;
}

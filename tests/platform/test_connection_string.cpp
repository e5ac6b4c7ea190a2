#include "platform/core/Error.h"
#include "platform/data/ConnectionString.h"
#include "platform/data/SqlText.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

class TestConnectionString : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nativeAddressComesBackAsItWas_data();
    void nativeAddressComesBackAsItWas();
    void odbcProviderGoesToItsDataSource();
    void commandLineAddressIsRead_data();
    void commandLineAddressIsRead();
    void unknownProviderIsRefused();
    void logNamesAStatementWithoutItsValues();
};

void TestConnectionString::nativeAddressComesBackAsItWas_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("password");
    QTest::newRow("embedded") << QString() << 0 << u"/dati/città nuova/a.fdb"_s << QString();
    QTest::newRow("server") << u"server"_s << 3051 << u"corvane"_s << u"segreta"_s;
    QTest::newRow("semicolon") << u"server"_s << 0 << u"a;b.fdb"_s << u"a;Provider=x"_s;
    QTest::newRow("blanks at the ends") << u"server"_s << 0 << u"a"_s << u" a "_s;
}

void TestConnectionString::nativeAddressComesBackAsItWas()
{
    QFETCH(QString, host);
    QFETCH(int, port);
    QFETCH(QString, file);
    QFETCH(QString, password);
    data::DatabaseAddress address;
    address.host = host;
    address.port = port;
    address.file = file;
    address.password = password;
    const data::DriverSettings settings = data::driverSettings(data::nativeConnectionString(address));
    QVERIFY(!settings.isOdbc);
    QCOMPARE(settings.address.host, host);
    QCOMPARE(settings.address.port, port);
    QCOMPARE(settings.address.file, file);
    QCOMPARE(settings.address.user, u"SYSDBA"_s);
    QCOMPARE(settings.address.password, password);
}

void TestConnectionString::odbcProviderGoesToItsDataSource()
{
    const data::DriverSettings settings = data::driverSettings(
        u"provider = msdasql.1;Persist Security Info=False;User ID=UTENTE;Password='a;b';Data Source=CORVANE3_LOCAL"_s);
    QVERIFY(settings.isOdbc);
    QCOMPARE(settings.dataSourceName, u"CORVANE3_LOCAL"_s);
    QCOMPARE(settings.address.user + u'/' + settings.address.password, u"UTENTE/a;b"_s);
    QVERIFY(settings.address.file.isEmpty());
}

void TestConnectionString::commandLineAddressIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::addColumn<QString>("file");
    QTest::newRow("nothing") << QString() << QString() << 0 << QString();
    QTest::newRow("file") << u"/dati/a.fdb"_s << QString() << 0 << u"/dati/a.fdb"_s;
    QTest::newRow("blanks around") << u"  a b.fdb "_s << QString() << 0 << u"a b.fdb"_s;
    QTest::newRow("colon inside a path") << u"/dati/a:b.fdb"_s << QString() << 0 << u"/dati/a:b.fdb"_s;
    QTest::newRow("colon in a relative path") << u"./a:b.fdb"_s << QString() << 0 << u"./a:b.fdb"_s;
    QTest::newRow("colon first") << u":a.fdb"_s << QString() << 0 << u":a.fdb"_s;
    QTest::newRow("colon last") << u"server:"_s << QString() << 0 << u"server:"_s;
    QTest::newRow("server") << u"server:archivio"_s << u"server"_s << 0 << u"archivio"_s;
    QTest::newRow("server with port") << u"10.0.0.5/3051:/dati/a:b.fdb"_s << u"10.0.0.5"_s << 3051
                                      << u"/dati/a:b.fdb"_s;
    QTest::newRow("drive of the server") << u"server:C:\\dati\\a.fdb"_s << u"server"_s << 0 << u"C:\\dati\\a.fdb"_s;
    QTest::newRow("no port number") << u"server/x:/dati/a.fdb"_s << QString() << 0 << u"server/x:/dati/a.fdb"_s;
}

void TestConnectionString::commandLineAddressIsRead()
{
    QFETCH(const QString, text);
    const data::DatabaseAddress address = data::DatabaseAddress::parse(text);
    QTEST(address.host, "host");
    QTEST(address.port, "port");
    QTEST(address.file, "file");
    QCOMPARE(address.toString(), text.trimmed());
}

void TestConnectionString::unknownProviderIsRefused()
{
    QCOMPARE(test::errorOf([] { data::driverSettings(u"Provider=Altro;Password=segreta"_s); }),
             u"Provider di database sconosciuto: \"Altro\"."_s);
}

void TestConnectionString::logNamesAStatementWithoutItsValues()
{
    QCOMPARE(data::statementKind(u"SELECT * FROM CLIENTI WHERE CODICE = 'a FROM b'"_s), u"SELECT FROM CLIENTI"_s);
    QCOMPARE(data::statementKind(u"insert into  um (UM) values ('x')"_s), u"INSERT INTO UM"_s);
    QCOMPARE(data::statementKind(u"EXECUTE BLOCK AS BEGIN END"_s), u"EXECUTE"_s);
}

static const test::Registered<TestConnectionString> registered;
#include "test_connection_string.moc"

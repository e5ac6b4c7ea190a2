#include "tests/support/Kit.h"

class TestConnectionString : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nativeAddressComesBackAsItWas()
    {
        // Host, port, file and password.
        for (const auto &[host, port, file, password] :
             {std::tuple(QString(), 0, u"/dati/città nuova/a.fdb"_s, QString()),
              {u"server"_s, 3051, u"corvane"_s, u"segreta"_s},
              {u"server"_s, 0, u"a;b.fdb"_s, u"a;Provider=x"_s},
              {u"server"_s, 0, u"a"_s, u" a "_s}}) {
            const data::DatabaseAddress address = {.host = host, .port = port, .file = file, .password = password};
            const data::DriverSettings settings = data::driverSettings(data::nativeConnectionString(address));
            QVERIFY(!settings.isOdbc);
            QCOMPARE(std::tuple(settings.address.host, settings.address.port, settings.address.file,
                                settings.address.password, settings.address.user),
                     std::tuple(host, port, file, password, u"SYSDBA"_s));
        }
    }

    void odbcProviderGoesToItsDataSource()
    {
        const data::DriverSettings settings = data::driverSettings(
            u"provider = msdasql.1;Persist Security Info=False;User ID=UTENTE;Password='a;b';Data Source=CORVANE3_LOCAL"_s);
        QVERIFY(settings.isOdbc);
        QCOMPARE(settings.dataSourceName, u"CORVANE3_LOCAL"_s);
        QCOMPARE(settings.address.user + u'/' + settings.address.password, u"UTENTE/a;b"_s);
        QVERIFY(settings.address.file.isEmpty());
    }

    void commandLineAddressIsRead()
    {
        for (const auto &[text, host, port, file] :
             {std::tuple(QString(), QString(), 0, QString()),
              {u"/dati/a.fdb"_s, QString(), 0, u"/dati/a.fdb"_s},
              {u"  a b.fdb "_s, QString(), 0, u"a b.fdb"_s},
              {u"/dati/a:b.fdb"_s, QString(), 0, u"/dati/a:b.fdb"_s},
              {u"./a:b.fdb"_s, QString(), 0, u"./a:b.fdb"_s},
              {u":a.fdb"_s, QString(), 0, u":a.fdb"_s},
              {u"server:"_s, QString(), 0, u"server:"_s},
              {u"server:archivio"_s, u"server"_s, 0, u"archivio"_s},
              {u"10.0.0.5/3051:/dati/a:b.fdb"_s, u"10.0.0.5"_s, 3051, u"/dati/a:b.fdb"_s},
              {u"server:C:\\dati\\a.fdb"_s, u"server"_s, 0, u"C:\\dati\\a.fdb"_s},
              {u"server/x:/dati/a.fdb"_s, QString(), 0, u"server/x:/dati/a.fdb"_s}}) {
            const data::DatabaseAddress address = data::DatabaseAddress::parse(text);
            QCOMPARE(std::tuple(address.host, address.port, address.file), std::tuple(host, port, file));
            QCOMPARE(address.toString(), text.trimmed());
        }
    }

    void unknownProviderIsRefused()
    {
        QCOMPARE(test::errorOf([] { data::driverSettings(u"Provider=Altro;Password=segreta"_s); }),
                 u"Provider di database sconosciuto: \"Altro\"."_s);
    }

    void logNamesAStatementWithoutItsValues()
    {
        QCOMPARE(data::statementKind(u"SELECT * FROM CLIENTI WHERE CODICE = 'a FROM b'"_s), u"SELECT FROM CLIENTI"_s);
        QCOMPARE(data::statementKind(u"insert into  um (UM) values ('x')"_s), u"INSERT INTO UM"_s);
        QCOMPARE(data::statementKind(u"EXECUTE BLOCK AS BEGIN END"_s), u"EXECUTE"_s);
    }
};

static const test::Registered<TestConnectionString> registered;
#include "test_connection_string.moc"

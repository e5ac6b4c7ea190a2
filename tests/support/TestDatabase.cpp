#include "host/IntfPack.h"
#include "host/schema/DemoData.h"
#include "host/schema/HostSchema.h"
#include "host/start/FirstRows.h"
#include "tests/support/Kit.h"

namespace test {

namespace {

QString folder()
{
    static const QTemporaryDir directory;
    static const bool prepared = [] {
        data::useLockFolder(directory.filePath(u"lock"_s));
        return true;
    }();
    Q_UNUSED(prepared)
    return directory.path();
}

// Null unless the tests are to work through a server: the same ones, over the other way of connecting.
const FirebirdServer *server()
{
    static const std::unique_ptr<const FirebirdServer> own =
        qEnvironmentVariableIsSet("MAGAZZINO_TEST_SERVER") ? std::make_unique<const FirebirdServer>() : nullptr;
    return own.get();
}

std::unique_ptr<QObject> makeModule(const data::DatabaseAddress &address)
{
    auto module = std::make_unique<QObject>();
    auto *connection = new data::Connection(module.get());
    connection->setObjectName(u"ModADOConn"_s);
    connection->setConnectionString(data::nativeConnectionString(address));
    connection->open();
    // A second registration is ignored, so this also works where the real module class has announced itself.
    RegisterPackage(packageName, u"Modulo Magazzino"_s, {u"TestModule"_s, {}});
    GetPackage(GetPackageIndex(packageName)).instance = module.get();
    return module;
}

void fill(const data::DatabaseAddress &address, Content content)
{
    if (content == Content::Empty)
        return;
    const std::unique_ptr<QObject> module = makeModule(address);
    host::createHostSchema(ModuleConnection());
    if (content == Content::HostSchema)
        return;
    AggiornaDatabase();
    if (content == Content::DemoData) {
        host::insertDemoMasterData(ModuleConnection());
        host::insertDemoModuleData(ModuleConnection());
    }
}

QString templateFile(Content content)
{
    static QMap<Content, QString> made;
    QString &path = made[content];
    if (path.isEmpty()) {
        const QString file = folder() + u"/template%1.fdb"_s.arg(static_cast<int>(content));
        data::createDatabase(fileAddress(file));
        fill(fileAddress(file), content);
        path = file;
    }
    return path;
}

// A value that any required column of this type takes.
QVariant fillerFor(int fieldType)
{
    constexpr int dateType = 12;
    constexpr int textType = 37;
    if (fieldType == dateType)
        return QDate(2026, 1, 1);
    return fieldType == textType ? QVariant(u"-"_s) : QVariant(0);
}

} // namespace

TestDatabase::TestDatabase(Content content)
{
    static int counter = 0;
    path_ = (server() ? server()->folder() : folder()) + u"/test%1.fdb"_s.arg(++counter);
    if (!QFile::copy(templateFile(content), path_))
        throw core::Error(u"The template database cannot be copied."_s);
}

TestDatabase::~TestDatabase()
{
    QFile::remove(path_);
}

data::DatabaseAddress TestDatabase::address() const
{
    return server() ? server()->address(QFileInfo(path_).fileName()) : fileAddress(path_);
}

ModuleDatabase::ModuleDatabase(Content content)
    : database_(content)
    , module_(makeModule(database_.address()))
    , connection_(&ModuleConnection())
{
}

ModuleDatabase::~ModuleDatabase() = default;

QStringList ModuleDatabase::lines(const QString &sql)
{
    return linesOf(*connection_, sql);
}

int ModuleDatabase::insert(const QString &table, const QVariantMap &values)
{
    return insertInto(*connection_, table, values);
}

int ModuleDatabase::insert(const QString &table, const QString &values)
{
    return insertInto(*connection_, table, values);
}

data::DatabaseAddress fileAddress(const QString &path)
{
    data::DatabaseAddress address;
    address.file = path;
    return address;
}

std::unique_ptr<data::Connection> connectTo(const data::DatabaseAddress &address)
{
    auto connection = std::make_unique<data::Connection>();
    connection->setConnectionString(data::nativeConnectionString(address));
    connection->open();
    return connection;
}

QVariantMap fields(const QString &text)
{
    QVariantMap values;
    for (const QString &field : text.split(u'|'))
        values.insert(field.section(u'=', 0, 0), field.section(u'=', 1));
    return values;
}

int insertInto(data::Connection &connection, const QString &table, const QString &values)
{
    return insertInto(connection, table, fields(values));
}

int insertInto(data::Connection &connection, const QString &table, const QVariantMap &values)
{
    const data::Rows columns = connection.select(
        u"SELECT TRIM(F.RDB$FIELD_NAME) AS NAME, COALESCE(F.RDB$NULL_FLAG, 0) AS REQUIRED, T.RDB$FIELD_TYPE AS KIND "
        "FROM RDB$RELATION_FIELDS F JOIN RDB$FIELDS T ON T.RDB$FIELD_NAME = F.RDB$FIELD_SOURCE WHERE "
        "F.RDB$RELATION_NAME = :TABLE_NAME ORDER BY F.RDB$FIELD_POSITION"_s,
        {{u"TABLE_NAME"_s, table}});
    QVariantMap complete = values;
    for (qsizetype row = 0; row < columns.size(); ++row) {
        const QString name = columns.text(row, u"NAME");
        if (!complete.contains(name) && columns.integer(row, u"REQUIRED") != 0)
            complete.insert(name, fillerFor(columns.integer(row, u"KIND")));
    }
    const QStringList names = complete.keys();
    const QString marks = QStringList(names.size(), u"?"_s).join(u", "_s);
    const data::Rows given = connection.run(u"INSERT INTO %1 (%2) VALUES (%3) RETURNING %4"_s.arg(
                                                table, names.join(u", "_s), marks, columns.text(0, u"NAME")),
                                            complete.values());
    return given.values(0).constFirst().toInt();
}

static QStringList textsOf(const data::Rows &rows, const QString &null)
{
    QStringList lines;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        QStringList values;
        for (const QVariant &value : rows.values(row))
            values.append(value.isValid() ? value.toString().trimmed() : null);
        lines.append(values.join(u'|'));
    }
    return lines;
}

QStringList linesOf(data::Connection &connection, const QString &sql)
{
    return textsOf(connection.select(sql), {});
}

QStringList linesOf(data::Connection &connection, const QStringList &queries)
{
    QStringList lines;
    for (const QString &query : queries)
        lines += linesOf(connection, query);
    return lines;
}

QStringList linesOf(const data::DatabaseAddress &address, const QString &sql)
{
    return linesOf(*connectTo(address), sql);
}

QStringList answersOf(data::Connection &connection, const QString &sql)
{
    const data::Rows rows = connection.select(sql);
    QStringList lines;
    for (const data::Column &column : rows.columns())
        lines.append(u"%1 %2"_s.arg(column.name).arg(column.places));
    return lines + textsOf(rows, u"NULL"_s);
}

void refusing(data::Connection &connection, const std::function<bool(const QString &sql)> &refused,
              const std::function<void()> &work)
{
    connection.setStatementHook([&refused](const QString &sql) {
        if (refused(sql))
            throw core::Error(u"rifiutato"_s);
    });
    work();
    connection.setStatementHook({});
}

QString errorOf(const std::function<void()> &body)
{
    try {
        body();
    } catch (const std::exception &error) {
        return core::errorText(error);
    }
    return u"no error"_s;
}

} // namespace test

#include "host/Corvane3Impl.h"
#include "host/IntfPack.h"
#include "host/schema/DemoData.h"
#include "host/start/FirstRows.h"
#include "tests/support/Kit.h"

class TestRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void instanceIsForgottenWhenItDies()
    {
        RegisterPackage(u"Terzo.bpl"_s, u"Terzo"_s, {});
        auto instance = std::make_unique<QObject>();
        GetPackage(GetPackageIndex(u"Terzo.bpl"_s)).instance = instance.get();
        QCOMPARE(GetPackageInstance(u"Terzo.bpl"_s), instance.get());
        instance.reset();
        QCOMPARE(test::errorOf([] { GetPackageInstance(u"Terzo.bpl"_s); }),
                 u"Il modulo \"Terzo.bpl\" non è caricato."_s);
    }

    void descendantsComeLevelByLevel()
    {
        test::ModuleDatabase database(test::Content::HostSchema);
        const auto add = [&database](const QVariant &parent) {
            return database.insert(u"CATEGORIE_ANA_MAGA"_s, {{u"CATEGORIA"_s, u"C"_s}, {u"IDPADRE"_s, parent}});
        };
        const int root = add({});
        const int first = add(root);
        const int deep = add(first);
        const int second = add(root);
        const int other = add({});
        const auto below = [&database](int id) {
            return GetElencoIdFiglio(u"IDCATEGORIA_ANA_MAGA"_s, id, u"CATEGORIE_ANA_MAGA"_s, database.connection());
        };
        QCOMPARE(below(root), QList<int>({root, first, second, deep}));
        QCOMPARE(below(other), QList<int>({other}));
        QCOMPARE(below(999), QList<int>({999})); // never empty: it ends up in an IN list
    }

    void circleOfCategoriesEnds()
    {
        test::ModuleDatabase database(test::Content::HostSchema);
        const int first = database.insert(u"CATEGORIE_SERVIZI"_s, u"CATEGORIA=A|IDPADRE=2"_s);
        const int second = database.insert(u"CATEGORIE_SERVIZI"_s, u"CATEGORIA=B|IDPADRE=%1"_s.arg(first));
        QCOMPARE(GetElencoIdFiglio(u"IDCATEGORIA_SERVIZI"_s, second, u"CATEGORIE_SERVIZI"_s, database.connection()),
                 QList<int>({second, first}));
    }

    void warehouseDataLeaveFilledTablesAlone()
    {
        test::ModuleDatabase database;
        database.insert(u"FORNITORI"_s, {{u"CODICE"_s, u"MIO"_s}});
        host::insertDemoMasterData(database.connection());
        for (int i = 0; i < 2; ++i)
            host::insertDemoModuleData(database.connection());
        QCOMPARE(database.lines(u"SELECT CODICE FROM FORNITORI"_s), QStringList(u"MIO"_s));
        QCOMPARE(database.lines(u"SELECT COUNT(*) FROM VETTORI"_s), QStringList(u"6"_s));
    }
};

static const test::Registered<TestRegistry> registered;
#include "test_registry.moc"

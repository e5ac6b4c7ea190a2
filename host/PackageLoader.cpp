#include "host/PackageLoader.h"

#include "host/IntfPack.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QSet>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// What the program is delivered with; there may be others.
const QString delivered = u"Magazzino.bpl"_s;

// A module object declares Initialize() and Finalize() as slots; what Initialize() throws passes through the call.
void call(QObject *module, const char *slot)
{
    if (!QMetaObject::invokeMethod(module, slot, Qt::DirectConnection))
        throw core::Error(core::tr("Il modulo non ha la funzione %1.").arg(QLatin1StringView(slot)));
}

} // namespace

void loadPackages(const QString &folder)
{
    static QSet<QString> told; // of this program's life: every session loads them again
    const QStringList files = QDir(folder).entryList({u"*.bpl"_s}, QDir::Files, QDir::Name);
    for (const QString &file : files) {
        QLibrary library(QDir(folder).filePath(file));
        // A plug-in stays loaded until the program ends: its objects' code lies in it.
        if (!library.load() && !told.contains(library.fileName())) {
            told.insert(library.fileName());
            core::logLine(u"caricamento di "_s + file, library.errorString());
            core::showError(nullptr, core::tr("Impossibile caricare il modulo \"%1\".").arg(file));
        }
    }
    if (!files.contains(delivered) && GetPackageIndex(delivered) < 0 && !told.contains(delivered)) {
        told.insert(delivered);
        core::showError(nullptr,
                        core::tr("Il modulo \"%1\" manca nella cartella del programma \"%2\".").arg(delivered, folder));
    }
}

void startPackages(QObject *owner)
{
    for (int i = 0; i < GetPackageCount(); ++i) {
        PackageEntry &entry = GetPackage(i);
        try {
            entry.instance = entry.moduleClass.create(owner);
            call(entry.instance, "Initialize");
        } catch (const std::exception &error) {
            core::logError(u"avvio di "_s + entry.fileName, error);
            delete entry.instance;
            RemoveEmptyMerges();
            core::showError(
                nullptr,
                core::tr("Impossibile avviare il modulo \"%1\".\n\r%2").arg(entry.displayName, core::errorText(error)));
        }
    }
}

void startModules()
{
    loadPackages(QCoreApplication::applicationDirPath());
    startPackages(qApp);
}

void stopPackages()
{
    for (int i = GetPackageCount() - 1; i >= 0; --i) {
        PackageEntry &entry = GetPackage(i);
        if (!entry.instance)
            continue;
        core::guarded(nullptr, [&entry] { call(entry.instance, "Finalize"); });
        delete entry.instance;
    }
}

} // namespace host

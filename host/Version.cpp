#include "host/Version.h"

#include "host/IntfPack.h"
#include "platform/core/Log.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseFile.h"

#include <QFileInfo>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString buildText()
{
    const QString build = QString::fromLatin1(CORVANE_BUILD);
    return build.isEmpty() ? programVersion() : u"%1 (%2)"_s.arg(programVersion(), build);
}

QString moduleNames()
{
    QStringList names;
    for (int i = 0; i < GetPackageCount(); ++i)
        names.append(GetPackage(i).displayName);
    return names.join(u", "_s);
}

} // namespace

QString programVersion()
{
    return QString::fromLatin1(CORVANE_VERSION);
}

QList<Fact> programFacts(const QString &database)
{
    QList<Fact> facts = {
        {core::tr("Versione"), buildText()},
        {core::tr("Moduli caricati"), moduleNames()},
        {u"Qt"_s, QString::fromLatin1(qVersion())},
        {u"Firebird"_s, data::clientVersion()},
        {core::tr("Sistema"), QSysInfo::prettyProductName() + u", "_s + QSysInfo::currentCpuArchitecture()},
        {core::tr("Cartella del registro"), QFileInfo(core::logFile()).absolutePath()}};
    if (!database.isEmpty())
        facts.append({core::tr("Archivio"), database});
    return facts;
}

QString factsAsText(const QList<Fact> &facts)
{
    QString text;
    for (const Fact &fact : facts)
        text += u"%1: %2\n"_s.arg(fact.label, fact.value);
    return text;
}

} // namespace host

#include "host/backup/Gbak.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/data/EnginePath.h"

#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace host {

namespace {

struct Meaning
{
    QString words; ///< of the program
    QString text;
};

QString diskIsFull()
{
    return core::tr("Il disco è pieno.");
}

const QList<Meaning> &meanings()
{
    static const QString damaged = core::tr("Il file non è una copia di sicurezza, oppure è danneggiato o incompleto.");
    static const QString refused = core::tr("Il server ha rifiutato il nome utente o la password.");
    static const QString unreachable = core::tr("Il server non è raggiungibile.");
    static const QString forbidden = core::tr("Mancano i permessi per leggere o scrivere il file.");
    // The first one that fits counts.
    static const QList<Meaning> all = {
        {u"No space left"_s, diskIsFull()},
        {u"Disk quota exceeded"_s, diskIsFull()},
        {u"already opened"_s, core::tr("Il database è in uso: chiudere gli altri programmi che lo usano e riprovare.")},
        {u"already exists"_s, core::tr("Esiste già un database con questo nome.")},
        {u"user name and password"_s, refused},
        {u"no permission"_s, core::tr("L'utente del database non può eseguire questa operazione.")},
        {u"network request"_s, unreachable},
        {u"connection lost"_s, core::tr("Il collegamento con il server è caduto.")},
        {u"from the connection"_s, core::tr("Il collegamento con il server è caduto.")},
        {u"to the connection"_s, core::tr("Il collegamento con il server è caduto.")},
        {u"Permission denied"_s, forbidden},
        {u"cannot open backup file"_s, core::tr("Il file della copia non si può aprire.")},
        {u"No such file"_s, core::tr("Il file o la cartella non esiste.")},
        {u"expected"_s, damaged},
        {u"not a valid"_s, damaged},
        {u"end of file"_s, damaged},
    };
    return all;
}

QString meaningOf(const QString &words, bool isBackup, const QStringList &folders)
{
    for (const Meaning &meaning : meanings()) {
        if (words.contains(meaning.words))
            return meaning.text;
    }
    if (std::any_of(folders.begin(), folders.end(), core::isDiskFull))
        return diskIsFull();
    // What a damaged file makes the program say depends on where the damage is.
    return isBackup ? core::tr("La copia non è riuscita; il motivo si trova nel registro del programma.")
                    : core::tr("La copia non si può ripristinare, probabilmente perché il file è danneggiato; il "
                               "motivo si trova nel registro del programma.");
}

QProcessEnvironment environmentFor(const data::DatabaseAddress &login)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"ISC_USER"_s, login.user);
    variables.remove(u"ISC_PASSWORD"_s);
    if (!login.password.isEmpty())
        variables.insert(u"ISC_PASSWORD"_s, login.password);
    // Paths with accented letters need it.
    variables.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return variables;
}

/// One of Firebird's programs, running; it is ended with the object.
class Run
{
public:
    Run(const QString &name, const data::DatabaseAddress &login, const QStringList &arguments)
    {
        const QString program = QStandardPaths::findExecutable(name);
        if (program.isEmpty())
            throw core::Error(
                core::tr("Manca il programma %1 di Firebird: installare il pacchetto firebird3.0-utils.").arg(name));
        process_.setProcessEnvironment(environmentFor(login));
        process_.setProcessChannelMode(QProcess::MergedChannels);
        // On a full disk, or after a file cut short, it would ask for another volume and wait.
        process_.setStandardInputFile(QProcess::nullDevice());
        // Killed with this program, it can put nothing more into a work folder that the next one removes.
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process_.start(program, arguments);
        if (!process_.waitForStarted())
            throw core::Error(core::tr("Il programma %1 di Firebird non si avvia.").arg(name), process_.errorString());
    }

    ~Run()
    {
        if (process_.state() == QProcess::NotRunning)
            return;
        process_.kill();
        process_.waitForFinished();
    }

    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    /// Hands each line that it prints to `line` until it ends; true when it ended well.
    bool follow(
        const core::Progress &progress, const std::function<void(const QString &)> &line,
        const std::function<bool()> &mayStop = [] { return true; })
    {
        constexpr int patience = 100; // milliseconds between two looks at "cancelled"
        while (process_.state() != QProcess::NotRunning) {
            if (mayStop())
                progress.check();
            process_.waitForReadyRead(patience);
            takeLines(line);
        }
        takeLines(line);
        return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }

private:
    void takeLines(const std::function<void(const QString &)> &line)
    {
        while (process_.canReadLine())
            line(QString::fromUtf8(process_.readLine()).trimmed());
    }

    QProcess process_;
};

} // namespace

void runGbak(const data::DatabaseAddress &login, const QStringList &arguments, const QStringList &folders,
             core::Progress &progress, const std::function<void(const QString &)> &line,
             const std::function<bool()> &mayStop)
{
    const bool isBackup = arguments.contains(u"-b"_s);
    QString errors;
    const auto take = [&](const QString &text) {
        if (text.startsWith(u"Done with volume"))
            errors += isBackup ? u"No space left on device\n"_s : u"unexpected end of file\n"_s;
        else if (text.contains(u"ERROR:"))
            errors += text.section(u"ERROR:"_s, 1).simplified() + u'\n';
        else
            line(text.section(u':', 1).trimmed());
    };
    if (!Run(u"gbak"_s, login, arguments).follow(progress, take, mayStop))
        throw core::Error(meaningOf(errors, isBackup, folders), u"gbak: "_s + errors.trimmed());
}

void validateDatabase(const data::DatabaseAddress &database, core::Progress &progress)
{
    // It tells what it finds and says nothing when all is well, and its exit code is the same.
    QStringList found;
    const auto take = [&found](const QString &text) {
        if (!text.isEmpty())
            found.append(text.simplified());
    };
    const QString name = database.isEmbedded() ? data::enginePath(database.file) : database.toString();
    if (!Run(u"gfix"_s, database, {u"-validate"_s, u"-full"_s, name}).follow(progress, take) || !found.isEmpty())
        throw core::Error(core::tr("L'archivio \"%1\" non ha superato la verifica di Firebird; il motivo si trova nel "
                                   "registro del programma.")
                              .arg(database.toString()),
                          u"gfix: "_s + found.join(u"; "_s));
}

} // namespace host

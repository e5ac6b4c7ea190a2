#include "magazzino/ui/LavoriFatture.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/Registro.h"
#include "magazzino/fatturapa/Ricevute.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Progress.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/ProgressDialog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

using Passo = std::function<void(data::Connection &connection, qsizetype posto)>;

// A few are done at once. For more there is a thread, with a connection of its own.
void lavora(QWidget *owner, const QString &titolo, qsizetype quanti, const Passo &passo)
{
    constexpr qsizetype pochi = 10;
    const auto tutti = [&](data::Connection &connection, core::Progress &progress) {
        progress.setTotal(static_cast<int>(quanti));
        for (qsizetype posto = 0; posto < quanti; ++posto) {
            progress.setText(core::tr("%1 di %2").arg(posto + 1).arg(quanti));
            progress.step(static_cast<int>(posto));
            passo(connection, posto);
        }
    };
    if (quanti <= pochi) {
        const ui::WaitCursor attesa;
        core::Progress nonVisto;
        tutti(ModuleConnection(), nonVisto);
        return;
    }
    ui::runWithProgress(owner, titolo, [&, database = ModuleConnection().connectionString()](core::Progress &progress) {
        data::Connection propria(database);
        tutti(propria, progress);
    });
}

void scriviUno(data::Connection &connection, int fattura, const QString &utente, const QDir &cartella,
               FileScritti &scritti)
{
    const fatturapa::Esito esito = fatturapa::registra(
        connection, fattura, utente, [&cartella](const QString &nome) { return cartella.exists(nome); });
    if (esito.nome.isEmpty() || esito.nuovo)
        scritti.riscontri.insert(fattura, esito.riscontri);
    if (esito.nome.isEmpty())
        return;
    try {
        core::saveFile(cartella.filePath(esito.nome), esito.contenuto);
    } catch (const core::Error &error) {
        throw core::Error(core::tr("Il file %1 è nel registro, ma non nella cartella:\n\r%2\n\r\"Scrivi file\" lo "
                                   "mette dove si vuole, con lo stesso nome.")
                              .arg(esito.nome, error.text()),
                          error.context());
    }
    ++(esito.nuovo ? scritti.nuovi : scritti.giaScritti);
    if (esito.modificata)
        ++scritti.modificateDopoInvio;
}

/// The receipts of one reading.
struct Lettura
{
    int lette = 0;
    QStringList ripetute;
    QStringList sconosciute;
    QStringList illeggibili;
};

void leggiUna(data::Connection &connection, const QString &percorso, const QString &utente, Lettura &lettura)
{
    using Esito = fatturapa::RicevutaRegistrata::Esito;
    constexpr qint64 massimo = 5'000'000;
    const QString nome = QFileInfo(percorso).fileName();
    try {
        QFile file(percorso);
        if (!file.open(QIODevice::ReadOnly))
            throw core::Error(core::tr("Il file non si può leggere."), file.errorString());
        if (file.size() > massimo)
            throw core::Error(core::tr("Il file è troppo grande per una ricevuta."));
        const auto letta = fatturapa::registraRicevuta(connection, file.readAll(), nome, utente);
        if (letta.esito == Esito::Registrata)
            ++lettura.lette;
        else if (letta.esito == Esito::GiaLetta)
            lettura.ripetute.append(nome);
        else
            lettura.sconosciute.append(core::tr("%1 (per il file %2)").arg(nome, letta.ricevuta.nomeFile));
    } catch (const std::exception &error) {
        core::logError(u"lettura di una ricevuta"_s, error);
        lettura.illeggibili.append(u"%1: %2"_s.arg(nome, core::errorText(error)));
    }
}

void racconta(const QString &titolo, const QStringList &nomi, QStringList &testi)
{
    constexpr qsizetype massimo = 8;
    if (nomi.isEmpty())
        return;
    testi.append(titolo);
    testi += nomi.mid(0, massimo);
    if (nomi.size() > massimo)
        testi.append(core::tr("… e altri %1.").arg(nomi.size() - massimo));
}

QString quante(int numero, const QString &una, const QString &molte)
{
    return numero == 1 ? u"1 "_s + una : u"%1 "_s.arg(numero) + molte;
}

} // namespace

RiscontriFatture controllaFatture(QWidget *owner, const QList<int> &fatture)
{
    RiscontriFatture trovati;
    lavora(owner, core::tr("Controllo delle fatture"), fatture.size(),
           [&](data::Connection &connection, qsizetype posto) {
               const int fattura = fatture[posto];
               trovati.insert(fattura, fatturapa::esamina(fatturapa::leggi(connection, fattura, {})).riscontri);
           });
    return trovati;
}

FileScritti scriviFile(QWidget *owner, const QList<int> &fatture, const QString &cartella)
{
    FileScritti scritti;
    try {
        lavora(owner, core::tr("Scrittura dei file"), fatture.size(),
               [&, utente = GetKxCurrentUserName()](data::Connection &connection, qsizetype posto) {
                   scriviUno(connection, fatture[posto], utente, QDir(cartella), scritti);
               });
    } catch (const std::exception &error) {
        core::logError(u"scrittura di una fattura elettronica"_s, error);
        scritti.errore = core::errorText(error);
    }
    return scritti;
}

QString testoDi(const FileScritti &scritti)
{
    QStringList testi = {quante(scritti.nuovi, core::tr("file scritto."), core::tr("file scritti."))};
    if (scritti.giaScritti > 0)
        testi.append(quante(scritti.giaScritti, core::tr("file c'era già: è nella cartella com'era."),
                            core::tr("file c'erano già: sono nella cartella com'erano.")));
    if (scritti.modificateDopoInvio > 0)
        testi.append(
            core::tr("Il file di %1 non contiene le modifiche fatte dopo l'invio: serve una nota di variazione.")
                .arg(quante(scritti.modificateDopoInvio, core::tr("fattura"), core::tr("fatture"))));
    const auto senzaFile = static_cast<int>(
        std::count_if(scritti.riscontri.begin(), scritti.riscontri.end(),
                      [](const QList<fatturapa::Riscontro> &uno) { return !fatturapa::ammette(uno); }));
    if (senzaFile > 0)
        testi.append(quante(senzaFile, core::tr("fattura ha rilievi"), core::tr("fatture hanno rilievi")) +
                     core::tr(" che impediscono il file: sono elencati sotto."));
    return testi.join(u"\n\r"_s);
}

QStringList ricevuteIn(const QStringList &percorsi)
{
    static const QRegularExpression nomeDiRicevuta(u"_(RC|NS|MC|DT|AT)_[A-Za-z0-9]+\\.xml$"_s,
                                                   QRegularExpression::CaseInsensitiveOption);
    QStringList file;
    for (const QString &percorso : percorsi) {
        if (!QFileInfo(percorso).isDir()) {
            file.append(percorso);
            continue;
        }
        const QDir cartella(percorso);
        for (const QString &nome : cartella.entryList(QDir::Files, QDir::Name).filter(nomeDiRicevuta))
            file.append(cartella.filePath(nome));
    }
    return file;
}

QStringList leggiRicevute(QWidget *owner, const QStringList &file)
{
    Lettura lettura;
    lavora(owner, core::tr("Lettura delle ricevute"), file.size(),
           [&, utente = GetKxCurrentUserName()](data::Connection &connection, qsizetype posto) {
               leggiUna(connection, file[posto], utente, lettura);
           });
    QStringList testi = {lettura.lette == 1 ? core::tr("1 ricevuta letta.")
                                            : core::tr("%1 ricevute lette.").arg(lettura.lette)};
    racconta(core::tr("Già lette prima:"), lettura.ripetute, testi);
    racconta(core::tr("Di file che non sono nel registro:"), lettura.sconosciute, testi);
    racconta(core::tr("Non sono ricevute:"), lettura.illeggibili, testi);
    return testi;
}

#include "host/tour/TourPrinting.h"

#include "host/tour/TourDriver.h"
#include "host/ui/MainWindow.h"
#include "host/ui/PreviewWindow.h"
#include "platform/ui/Dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int patience = 60'000; // milliseconds for turning a document into pictures

class Printing
{
public:
    Printing(TourDriver &driver, MainWindow &window, QObject *module)
        : driver_(driver)
        , window_(window)
        , module_(module)
    {
    }

    void printNote(QWidget *note);
    void printInventory(const QString &action, const QString &form, const QString &name);
    void printReorderList();

private:
    void answerWith(const QString &name);
    void checkFile(const QString &name);
    void savePreview(const QString &name);

    TourDriver &driver_;
    MainWindow &window_;
    QObject *module_;
};

// The save dialog's answer from now on; it adds no extension.
void Printing::answerWith(const QString &name)
{
    ui::setSaveFileChooser(
        [path = QDir(driver_.folder()).absoluteFilePath(name)](QWidget *, const ui::SaveFileRequest &) {
            QFile::remove(path + u".pdf"_s);
            return path;
        });
}

void Printing::checkFile(const QString &name)
{
    const QString path = QDir(driver_.folder()).absoluteFilePath(name);
    driver_.check(u"scritto \"%1.pdf\""_s.arg(name), QFileInfo(path + u".pdf"_s).size() > 0);
    const QString tool = QStandardPaths::findExecutable(u"pdftoppm"_s);
    if (tool.isEmpty())
        return;
    QProcess process;
    process.start(tool, {u"-r"_s, u"80"_s, u"-png"_s, path + u".pdf"_s, path});
    driver_.check(u"pagine di \"%1\" come immagini"_s.arg(name),
                  process.waitForFinished(patience) && process.exitCode() == 0);
}

void Printing::savePreview(const QString &name)
{
    auto *preview = driver_.control<PreviewWindow>(&window_, u"frmAnteprima"_s);
    driver_.picture(&window_, u"anteprima-"_s + name);
    answerWith(u"stampa-"_s + name);
    driver_.trigger(preview, u"actSalvaPDF"_s);
    driver_.trigger(preview, u"actChiudi"_s);
    checkFile(u"stampa-"_s + name);
}

void Printing::printNote(QWidget *note)
{
    driver_.tell(u"Il D.d.T. in anteprima e in PDF"_s);
    driver_.trigger(note, u"actStampa"_s);
    savePreview(u"ddt"_s);
    answerWith(u"ddt-salvato"_s);
    driver_.trigger(note, u"actSalvaPDF"_s);
    checkFile(u"ddt-salvato"_s);
}

void Printing::printInventory(const QString &action, const QString &form, const QString &name)
{
    driver_.trigger(module_, action);
    auto *parameters = driver_.control<QWidget>(&window_, form);
    driver_.picture(&window_, u"parametri-"_s + name);
    driver_.trigger(parameters, u"actStampa"_s);
    savePreview(name);
}

void Printing::printReorderList()
{
    driver_.expectDialog([this](QDialog &dialog) {
        driver_.picture(&dialog, u"parametri-sottoscorta"_s);
        driver_.press(&dialog, u"cmdStampa"_s);
    });
    driver_.trigger(module_, u"actStampaSottoscortaRiordino"_s);
    savePreview(u"sottoscorta"_s);
}

} // namespace

void tourPrinting(TourDriver &driver, MainWindow &window, QObject *module, QWidget *note)
{
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    Printing printing(driver, window, module);
    printing.printNote(note);
    driver.tell(u"Le stampe di magazzino"_s);
    printing.printInventory(u"actStampaInventario"_s, u"MMGStampaInventario"_s, u"inventario"_s);
    printing.printInventory(u"actStampaInventarioValorizzato"_s, u"MMGStampaInventarioValorizzato"_s,
                            u"inventario-valorizzato"_s);
    printing.printReorderList();
}

} // namespace host

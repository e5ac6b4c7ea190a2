#include "tour/TourKeys.h"

#include "host/ui/MainWindow.h"
#include "platform/core/Clock.h"
#include "platform/ui/Dialogs.h"
#include "tour/Part.h"

#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr int receiptKeys = 45;
constexpr int deliveryKeys = 80;
constexpr int finger = 80; // ms between two keys; a barcode reader is faster

class Keys : private Part
{
public:
    Keys(Visit &visit, host::Session &session)
        : Part(visit, session)
    {
    }
    void run();

private:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &keys);
    void begin(const QString &action, const QString &form);
    void tellKeys(const QString &what, int most, int mostDialogs);
    void receipt();
    void delivery();

    QWidget *form_ = nullptr;
    qint64 time_ = 0; // ms
    int keys_ = 0;
    int dialogs_ = 0;
};

void Keys::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    time_ += finger;
    ++keys_;
    test::pressKey(key, modifiers);
}

void Keys::type(const QString &keys)
{
    for (const QChar key : keys) {
        time_ += finger;
        ++keys_;
        test::strike(key);
    }
}

void Keys::begin(const QString &action, const QString &form)
{
    form_ = open(action, form);
    window().activateWindow();
    form_->setFocus();
    test::settle();
    keys_ = 0;
    dialogs_ = 0;
}

void Keys::tellKeys(const QString &what, int most, int mostDialogs)
{
    tell(u"keys %1: %2, dialogs %3"_s.arg(what).arg(keys_).arg(dialogs_));
    check(u"non più di %1 tasti e %2 finestre"_s.arg(most).arg(mostDialogs), keys_ <= most && dialogs_ <= mostDialogs);
}

void Keys::receipt()
{
    tell(u"Una bolla di carico con i soli tasti"_s);
    begin(u"actInserimentoBolleCarico"_s, u"MMGInserimentoBolleCarico"_s);
    const QString supplier = one(u"SELECT FIRST 1 RAGIONESOCIALE FROM FORNITORI ORDER BY IDFORNITORE"_s);
    type(supplier.left(3).toLower());
    picture(u"bolla-fornitore-digitato"_s);
    type(u"\n"_s);
    check(u"fornitore"_s, shown(form_, u"lblRagioneSociale"_s), supplier);
    press(Qt::Key_F8);
    check(u"come l'ultima volta"_s, shown(form_, u"txtTipoTrasporto"_s), u"Mittente"_s);
    type(u"\n5*vit^2*pen^3*tra"_s);
    press(Qt::Key_Down);
    picture(u"bolla-riga-digitata"_s);
    type(u"^6*chi^4*sma\n3,5\n"_s);
    press(Qt::Key_S, Qt::ControlModifier);
    check(u"righe registrate"_s,
          one(u"SELECT COUNT(*), SUM(QUANTITA) FROM BOLLE_CARICO_DETT WHERE IDBOLLA_CARICO = "
              "(SELECT MAX(IDBOLLA_CARICO) FROM BOLLE_CARICO)"_s),
          u"5 20"_s);
    tellKeys(u"receipt 5 rows"_s, receiptKeys, 0);
    close(form_);
}

void Keys::delivery()
{
    tell(u"Un D.d.T. fino al PDF con i soli tasti"_s);
    const QString file = visit().file(u"ddt-tasti.pdf"_s);
    ui::setSaveFileChooser([this, file](QWidget *, const ui::SaveFileRequest &) {
        ++dialogs_;
        ++keys_; // Enter: the proposed name is taken
        return file;
    });
    const auto restore = qScopeGuard([] { ui::setSaveFileChooser({}); });
    begin(u"actInserimentoDdTScarico"_s, u"MMGInserimentoDdTScarico"_s);
    type(u"arred\nv\nven\n"_s);
    check(u"cliente"_s, shown(form_, u"lblRagioneSociale"_s), u"Arredo Bagno Alpi S.r.l."_s);
    type(u"2*vit^1*pen^3*tra^2*chi^4*sma^1*led^2*mar^5*tub\n1,2\n"_s);
    picture(u"ddt-sotto-zero"_s);
    press(Qt::Key_S, Qt::ControlModifier);
    press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    check(u"righe registrate"_s,
          one(u"SELECT COUNT(*), SUM(QUANTITA) FROM DDT_SCARICO_DETT WHERE IDDDT_SCARICO = "
              "(SELECT MAX(IDDDT_SCARICO) FROM DDT_SCARICO)"_s),
          u"8 20"_s);
    check(u"PDF scritto"_s, QFileInfo(file).size() > 0);
    tellKeys(u"delivery note 8 rows to PDF"_s, deliveryKeys, 1);
    close(form_);
}

void Keys::run()
{
    const QDateTime start = core::now();
    core::setClock([this, start] { return start.addMSecs(time_); });
    const auto restore = qScopeGuard([] { core::setClock({}); });
    receipt();
    delivery();
}

} // namespace

void tourKeys(Visit &visit, host::Session &session)
{
    Keys(visit, session).run();
}

} // namespace tour

// How the header of a document's form is filled by the keyboard.
#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "magazzino/documents/Diritti.h"
#include "magazzino/documents/Proposte.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "magazzino/ui/StockLine.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/ui/Bell.h"
#include "platform/ui/SearchForm.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

void TMMGInserimentoDocumento::require(QWidget *input, std::function<bool()> missing, const QString &text)
{
    refuseIf(missing, text);
    required_.append({input, std::move(missing)});
    if (auto *pick = qobject_cast<ui::PickInput *>(input))
        followUp(pick);
    else
        input->installEventFilter(this);
}

ui::PickInput *TMMGInserimentoDocumento::createPick(const QString &name, const ui::PickSource &source,
                                                    const std::function<void(int)> &take,
                                                    const std::function<void()> &choose, QWidget *box)
{
    const bool withTaxCodes = source.columns.size() > 3;
    return new ui::PickInput({.name = name,
                              .hint = withTaxCodes ? core::tr("Nome, codice o partita IVA, anche in parte.")
                                                   : core::tr("Nome o codice, anche in parte."),
                              .source = source,
                              .take = [take](const ui::PickOffer &offer) { take(offer.key); },
                              .choose = choose},
                             box);
}

void TMMGInserimentoDocumento::followUp(ui::PickInput *input) const
{
    connect(input, &ui::PickInput::finished, this, &TMMGInserimentoDocumento::goOn);
}

// Enter in a drop-down list, which has no use for it.
bool TMMGInserimentoDocumento::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            goOn();
            return true;
        }
    }
    return TMMGInserimento::eventFilter(object, event);
}

void TMMGInserimentoDocumento::goOn()
{
    for (const auto &[input, missing] : std::as_const(required_)) {
        if (missing()) {
            input->setFocus();
            return;
        }
    }
    startEntry();
}

void TMMGInserimentoDocumento::createBeside()
{
    addCommand({.name = u"actDocumentoSopra"_s,
                .caption = core::tr("Documento sopra nell'elenco"),
                .run = [this] { goBeside(-1); },
                .icon = ui::Icon::Up,
                .shortcut = QKeySequence(Qt::CTRL | Qt::Key_PageUp)});
    addCommand({.name = u"actDocumentoSotto"_s,
                .caption = core::tr("Documento sotto nell'elenco"),
                .run = [this] { goBeside(1); },
                .icon = ui::Icon::Down,
                .shortcut = QKeySequence(Qt::CTRL | Qt::Key_PageDown)});
}

// As the list shows them, while it does; otherwise as it does at first, newest first.
void TMMGInserimentoDocumento::goBeside(int step)
{
    if (!puoVedere(kind_)) {
        host::refuseForRights(this);
        return;
    }
    auto *list = GetMainForm()->findChild<ui::SearchForm *>(u"MMGRicerca"_s + kind_.formName);
    const auto listed = list && list->isVisible() ? list->keyBeside(storedKey(), step) : std::nullopt;
    const int key = listed ? *listed : DocumentoAccanto(kind_, documentDate().year(), numero(), step > 0);
    if (key < 0) {
        ui::ringBell();
        return;
    }
    goToRecord(key);
    if (listed && IdRecord() == key)
        list->select(key);
}

QWidget *TMMGInserimentoDocumento::createLastTime()
{
    QAction *take = addCommand({.name = u"actComeUltimaVolta"_s,
                                .caption = core::tr("Come l'ultima volta"),
                                .run = [this] { takeLastTime(); },
                                .icon = ui::Icon::LastTime,
                                .shortcut = QKeySequence(Qt::Key_F8)});
    QPushButton *button = commandButton(take, u"cmdComeUltimaVolta"_s, this);
    // The place in the header stays.
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

void TMMGInserimentoDocumento::counterpartChosen(const QString &code)
{
    lastTime_.reset();
    if (!code.isEmpty() && puoVedere(kind_)) {
        auto last = std::make_unique<data::DataSet>(&connection());
        ApriUltimoDocumento(kind_, code, counterpartType(), *last);
        if (!last->isEmpty())
            lastTime_ = std::move(last);
    }
    offerLastTime();
    stock_->forget();
}

void TMMGInserimentoDocumento::offerLastTime()
{
    QStringList texts;
    for (const auto &[field, column] : asLastTime()) {
        if (lastTime_ && !lastTime_->text(column).isEmpty())
            texts.append(lastTime_->text(column));
    }
    QAction *take = command(u"actComeUltimaVolta"_s);
    take->setEnabled(!texts.isEmpty());
    take->setToolTip(core::tr("Riprende dall'ultimo documento: %1 (F8)").arg(texts.join(u" · "_s)));
}

void TMMGInserimentoDocumento::takeLastTime()
{
    if (!lastTime_)
        return;
    for (const auto &[field, column] : asLastTime())
        field->load(*lastTime_);
    DataChanged();
    lastTimeTaken();
}

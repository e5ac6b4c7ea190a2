#include "host/start/DraftOffer.h"

#include "host/Corvane3Impl.h"
#include "host/users/Users.h"
#include "platform/core/Error.h"
#include "platform/core/Lists.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/ResultGrid.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using ui::KeptDraft;

/// The list of drafts. It closes when nothing is left to decide.
class DraftDialog : public QDialog
{
public:
    DraftDialog(const QList<KeptDraft> &drafts, QWidget *owner);

private:
    void createButtons(QVBoxLayout *layout);
    void showDrafts();
    QList<KeptDraft> selected() const;
    void resumeSelected();
    void removeSelected();
    void leaveOut(const KeptDraft &draft);

    QList<KeptDraft> drafts_;
    ui::ResultGrid *grid_;
};

DraftDialog::DraftDialog(const QList<KeptDraft> &drafts, QWidget *owner)
    : QDialog(owner)
    , drafts_(drafts)
    , grid_(
          new ui::ResultGrid(u"CHIAVE"_s,
                             {{core::tr("Documento"), u"DOCUMENTO"_s, 170},
                              {u"N."_s, u"NUMERO"_s, 100},
                              {u"Data"_s, u"DATA"_s, 85, ui::ListColumn::Width::Pixels, ui::ListColumn::Display::Date},
                              {core::tr("Cliente o fornitore"), u"NOME"_s, 0, ui::ListColumn::Width::Rest},
                              {core::tr("Scritto fino a"), u"ORA"_s, 130}},
                             this))
{
    setObjectName(u"frmBozze"_s);
    setWindowTitle(core::tr("Documenti non salvati"));
    auto *layout = new QVBoxLayout(this);
    auto *text = new QLabel(
        core::tr(
            "Ci sono documenti non salvati, rimasti aperti quando il programma si è interrotto.\nCon Riprendi tornano "
            "nella loro maschera, come erano stati scritti; nulla è ancora registrato finché non si salvano."),
        this);
    text->setWordWrap(true);
    layout->addWidget(text);
    grid_->setObjectName(u"gridBozze"_s);
    grid_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(grid_, &ui::ResultGrid::chosen, this, [this] { resumeSelected(); });
    layout->addWidget(grid_, 1);
    createButtons(layout);
    resize(720, 300);
    showDrafts();
}

void DraftDialog::createButtons(QVBoxLayout *layout)
{
    auto *buttons = new QDialogButtonBox(this);
    const auto add = [&](const QString &name, const QString &caption, QDialogButtonBox::ButtonRole role) {
        QPushButton *button = ui::named(name, buttons->addButton(caption, role));
        button->setAutoDefault(false);
        return button;
    };
    QPushButton *resume = add(u"cmdRiprendi"_s, core::tr("Riprendi"), QDialogButtonBox::ActionRole);
    resume->setDefault(true);
    connect(resume, &QPushButton::clicked, this, [this] { resumeSelected(); });
    QPushButton *remove = add(u"cmdElimina"_s, u"Elimina"_s, QDialogButtonBox::ActionRole);
    connect(remove, &QPushButton::clicked, this, [this] { core::guarded(this, [this] { removeSelected(); }); });
    add(u"cmdPiuTardi"_s, core::tr("Più tardi"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

void DraftDialog::showDrafts()
{
    const QStringList names = {u"CHIAVE"_s, u"DOCUMENTO"_s, u"NUMERO"_s, u"DATA"_s, u"NOME"_s, u"ORA"_s};
    QList<QVariantList> values;
    for (const KeptDraft &kept : std::as_const(drafts_)) {
        const ui::DraftTitle &title = kept.draft.title;
        values.append({values.size() + 1, title.kind, title.record, title.date, title.counterpart,
                       kept.draft.time.toString(u"dd/MM/yyyy HH:mm"_s)});
    }
    grid_->setRows(data::Rows(core::mapped(names, [](const QString &name) { return data::Column{name}; }), values));
    grid_->selectAll();
    grid_->setFocus();
}

QList<KeptDraft> DraftDialog::selected() const
{
    return core::mapped(grid_->selectedKeys(), [this](int key) { return drafts_[key - 1]; });
}

void DraftDialog::leaveOut(const KeptDraft &draft)
{
    drafts_.removeIf([&draft](const KeptDraft &one) { return one.file == draft.file; });
}

void DraftDialog::removeSelected()
{
    const QList<KeptDraft> chosen = selected();
    if (chosen.isEmpty() ||
        !core::confirmLoss(
            this, core::tr("Eliminare i documenti non salvati selezionati?\n\rCiò che vi è scritto va perduto.")))
        return;
    for (const KeptDraft &draft : chosen) {
        ui::Drafts::take(draft, [] {});
        leaveOut(draft);
    }
    showDrafts();
    if (drafts_.isEmpty())
        accept();
}

// False when the form holds something else that is not saved: that must not go for this.
bool resumed(const KeptDraft &kept)
{
    auto *registry = ui::CommandRegistry::having(kept.draft.action);
    if (!registry)
        throw core::Error(core::tr("La maschera di \"%1\" non è disponibile.").arg(kept.draft.title.kind));
    ui::EntryForm &form = registry->entryForm(kept.draft.action);
    if (form.holdsUnsaved())
        return false;
    const bool taken = ui::Drafts::take(kept, [&] {
        form.resume(kept.draft);
        if (!ui::Drafts::current()->flush())
            throw core::Error(
                core::tr("Il documento è stato ripreso, ma la sua bozza non si può riscrivere: salvarlo subito."));
    });
    if (!taken)
        throw core::Error(core::tr("Il documento è già stato ripreso in un'altra finestra del programma."));
    return true;
}

void DraftDialog::resumeSelected()
{
    const QList<KeptDraft> chosen = selected();
    QStringList left;
    for (const KeptDraft &draft : chosen) {
        core::guarded(this, [&] {
            if (!resumed(draft))
                left.append(draft.draft.title.kind + u' ' + draft.draft.title.record);
        });
    }
    if (!left.isEmpty())
        core::inform(this, core::tr("La maschera contiene già un documento non salvato. Restano da riprendere, dal "
                                    "menu File, dopo averlo salvato:\n\r") +
                               left.join(u"\n\r"_s));
    accept();
}

bool mayResume(const ui::Draft &draft, data::Connection &connection)
{
    const QString user = GetKxCurrentUserName();
    return std::all_of(draft.title.rights.begin(), draft.title.rights.end(),
                       [&](const QString &right) { return right.isEmpty() || userHasRight(user, right, connection); });
}

} // namespace

QList<ui::KeptDraft> waitingDrafts(QWidget *owner, data::Connection &connection)
{
    const ui::Drafts *drafts = ui::Drafts::current();
    if (!drafts)
        return {};
    QStringList unreadable;
    QList<KeptDraft> found = drafts->abandoned([&unreadable](const QString &file) { unreadable.append(file); });
    found.removeIf([&connection](const KeptDraft &kept) { return !mayResume(kept.draft, connection); });
    if (!unreadable.isEmpty())
        core::warn(owner, core::tr("Un documento non salvato non si può più leggere: il suo file è danneggiato o di "
                                   "un'altra versione del programma.\n\rÈ stato messo da parte:\n\r") +
                              unreadable.join(u"\n\r"_s));
    return found;
}

void offerDrafts(QWidget *owner, data::Connection &connection)
{
    const QList<KeptDraft> drafts = waitingDrafts(owner, connection);
    if (drafts.isEmpty())
        return;
    DraftDialog dialog(drafts, owner);
    ui::runModal(dialog);
}

} // namespace host

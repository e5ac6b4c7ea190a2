#include "magazzino/ui/FatturaCiclicaField.h"

#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/ui/Controls.h"

#include <QGridLayout>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

const QStringList &units()
{
    static const QStringList all = {u"Giorno"_s, u"Settimana"_s, u"Mese"_s, u"Anno"_s};
    return all;
}

constexpr int middleOfMonth = 15;

} // namespace

QDate nextRecurringInvoice(QDate start, int every, const QString &unit, bool onThe15th, QDate end)
{
    QDate next;
    switch (units().indexOf(unit)) {
    case 0:
        next = start.addDays(every);
        break;
    case 1:
        next = start.addDays(7LL * every);
        break;
    case 2:
        next = start.addMonths(every);
        break;
    case 3:
        next = start.addYears(every);
        break;
    default:
        return {};
    }
    if (onThe15th)
        next.setDate(next.year(), next.month(), middleOfMonth);
    return next > end ? QDate() : next;
}

FatturaCiclicaField::FatturaCiclicaField(QWidget *page)
    : Field({}, page)
    , box_(new QWidget(page))
    , controls_(nullptr)
    , enabled_(ui::named(u"chkFattureCicliche"_s, new QCheckBox(u"Genera promemoria per fatture cicliche"_s, box_)))
    , every_(nullptr)
    , unit_(nullptr)
    , day_(new QButtonGroup(this))
    , start_(nullptr)
    , end_(nullptr)
    , next_(nullptr)
{
    auto *layout = new QVBoxLayout(box_);
    layout->addWidget(enabled_);
    createControls();
    layout->addWidget(controls_);
    layout->addStretch();
    const auto changed = [this] {
        AggiornaStatoControlliFattureCicliche();
        Q_EMIT edited();
    };
    connect(enabled_, &QCheckBox::toggled, this, changed);
    connect(every_, &ui::TypedEdit::changed, this, changed);
    connect(unit_, &QComboBox::currentIndexChanged, this, changed);
    connect(day_, &QButtonGroup::idToggled, this, changed);
    connect(start_, &ui::TypedEdit::changed, this, changed);
    connect(end_, &ui::TypedEdit::changed, this, changed);
}

void FatturaCiclicaField::createControls()
{
    controls_ = new QWidget(box_);
    every_ = new ui::IntegerEdit(controls_);
    every_->showArrows();
    every_->setObjectName(u"txtGeneraOgni"_s);
    every_->setRange(1, 9999);
    unit_ = ui::named(u"txtGeneraOgniUM"_s, new ui::ComboBox(controls_));
    unit_->addItems(units());
    auto *onThe15th = new QRadioButton(u"Il giorno 15 del mese"_s, controls_);
    auto *exact = new QRadioButton(u"Il giorno esatto"_s, controls_);
    day_->addButton(onThe15th, 0);
    day_->addButton(exact, 1);
    start_ = ui::named(u"txtDataInizioCiclica"_s, new ui::DateEdit(controls_));
    end_ = ui::named(u"txtDataFineCiclica"_s, new ui::DateEdit(controls_));
    next_ = ui::named(u"lblDataNuovaFattura"_s, new QLabel(controls_));
    auto *grid = new QGridLayout(controls_);
    grid->setContentsMargins(20, 0, 0, 0);
    const auto label = [this, grid](const QString &text, QWidget *input, int row) {
        auto *caption = new QLabel(text, controls_);
        caption->setBuddy(input);
        grid->addWidget(caption, row, 0);
    };
    label(u"Genera ogni"_s, every_, 0);
    grid->addWidget(every_, 0, 1);
    grid->addWidget(unit_, 0, 2);
    grid->addWidget(onThe15th, 1, 1, 1, 2);
    grid->addWidget(exact, 2, 1, 1, 2);
    label(core::tr("Data inizio"), start_, 3);
    grid->addWidget(start_, 3, 1);
    label(core::tr("Data fine"), end_, 4);
    grid->addWidget(end_, 4, 1);
    label(core::tr("Prossima fattura"), next_, 5);
    grid->addWidget(next_, 5, 1, 1, 2);
    grid->setColumnStretch(3, 1);
}

QDate FatturaCiclicaField::nextDate() const
{
    return nextRecurringInvoice(start_->date(), every_->value(), unit_->currentText(), day_->checkedId() == 0,
                                end_->date());
}

void FatturaCiclicaField::AggiornaStatoControlliFattureCicliche()
{
    controls_->setEnabled(enabled_->isChecked());
    const QDate next = nextDate();
    next_->setText(next.isValid() ? core::formatDate(next) : core::tr("nessuna"));
}

void FatturaCiclicaField::disable()
{
    enabled_->setChecked(false);
    AggiornaStatoControlliFattureCicliche();
}

void FatturaCiclicaField::clear()
{
    every_->setValue(1);
    unit_->setCurrentIndex(0);
    day_->button(1)->setChecked(true);
    start_->setDate(core::today());
    end_->setDate(core::today().addYears(1));
    disable();
}

void FatturaCiclicaField::load(const data::DataSet &record)
{
    clear();
    enabled_->setChecked(core::parseFlag(record.text(u"FC_ABILITATO"_s)).value_or(false));
    if (enabled_->isChecked()) {
        every_->load(record.value(u"FC_GENERA_OGNI"_s), 1);
        unit_->setCurrentText(record.text(u"FC_GENERA_OGNI_UM"_s));
        start_->load(record.value(u"FC_DATA_INIZIO"_s));
        end_->load(record.value(u"FC_DATA_FINE"_s));
        // Which day was meant is not stored; it shows in the date that came out, or in that none came out.
        const QString text = record.text(u"FC_DATA_NUOVA_FATTURA"_s);
        const QDate stored = QDate::fromString(text, Qt::ISODate);
        const bool readable = stored.isValid() || (text.isEmpty() && !record.isNull(u"FC_DATA_NUOVA_FATTURA"_s));
        day_->button(readable && stored != nextDate() ? 0 : 1)->setChecked(true);
    }
    AggiornaStatoControlliFattureCicliche();
}

void FatturaCiclicaField::write(data::DataSet &record) const
{
    const bool enabled = enabled_->isChecked();
    const auto given = [enabled](const QVariant &value) { return enabled ? value : QVariant(); };
    const QDate next = nextDate();
    record.setValue(u"FC_ABILITATO"_s, core::flagText(enabled));
    record.setValue(u"FC_GENERA_OGNI"_s, given(every_->toStore()));
    record.setValue(u"FC_GENERA_OGNI_UM"_s, given(unit_->currentText()));
    record.setValue(u"FC_DATA_INIZIO"_s, given(start_->toStore()));
    record.setValue(u"FC_DATA_FINE"_s, given(end_->toStore()));
    record.setValue(u"FC_DATA_NUOVA_FATTURA"_s, given(next.isValid() ? next.toString(Qt::ISODate) : u""_s));
}

QVariant FatturaCiclicaField::state() const
{
    return QVariantList{enabled_->isChecked(), every_->state(), unit_->currentIndex(),
                        day_->checkedId(),     start_->state(), end_->state()};
}

void FatturaCiclicaField::restore(const QVariant &state)
{
    const QVariantList parts = state.toList();
    enabled_->setChecked(parts.value(0).toBool());
    every_->restore(parts.value(1));
    unit_->setCurrentIndex(parts.value(2).toInt());
    day_->button(parts.value(3).toInt())->setChecked(true);
    start_->restore(parts.value(4));
    end_->restore(parts.value(5));
    AggiornaStatoControlliFattureCicliche();
}

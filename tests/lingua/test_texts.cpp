#include "host/start/StartDialogs.h"
#include "tests/support/Fixtures.h"

namespace {

/// A language in which every text stands between marks.
class Marks : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return u'«' + QString::fromUtf8(text) + u'»';
    }
};

// What stays as it is in every language, with the names of programs, letters and keys.
QRegularExpression fixedTexts()
{
    QStringList all = QString::fromUtf8(test::contentOf(QStringLiteral(FIXED_TEXTS))).split(u'\n', Qt::SkipEmptyParts);
    all.removeIf([](const QString &text) { return text.startsWith(u'#'); });
    all += {u"Corvane"_s, u"Firebird"_s, u"XLSX"_s, u"Ctrl"_s, u"Shift"_s};
    std::sort(all.begin(), all.end(), [](const QString &a, const QString &b) { return a.size() > b.size(); });
    for (QString &text : all) {
        text.replace(u"\\n"_s, u" "_s).replace(u"\\r"_s, u" "_s);
        static const QRegularExpression place(u"%\\d"_s);
        QStringList parts = text.remove(u'&').simplified().split(place);
        for (QString &part : parts)
            part = QRegularExpression::escape(part);
        text = parts.join(u".*"_s);
    }
    return QRegularExpression(u"(?<!\\w)(%1)(?!\\w)"_s.arg(all.join(u'|')),
                              QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
}

// What no translation reached: words that are neither between marks nor fixed. Capitals are codes and users.
QString untouched(const QString &text)
{
    static const QRegularExpression markup(u"<[^>]*>"_s);
    static const QRegularExpression marked(u"«[^«»]*»"_s);
    static const QRegularExpression fixed = fixedTexts();
    static const QRegularExpression word(u"[[:alpha:]]*[[:lower:]]{2}"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    QString rest = QString(text).replace(markup, u" "_s).remove(u'&');
    while (rest.contains(marked))
        rest.remove(marked);
    rest = rest.simplified().remove(fixed);
    return rest.contains(word) ? rest : QString();
}

QStringList textsOf(const QAction &action)
{
    return {action.text(), action.toolTip(), action.statusTip()};
}

QStringList textsOf(const QWidget &widget)
{
    QStringList texts;
    for (const char *property : {"windowTitle", "toolTip", "statusTip", "accessibleName", "title", "placeholderText"})
        texts.append(widget.property(property).toString());
    for (const QAction *action : widget.actions())
        texts += textsOf(*action);
    // What can be selected shows data.
    if (const auto *label = qobject_cast<const QLabel *>(&widget);
        label && !label->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard))
        texts.append(label->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        texts.append(button->text());
    if (const auto *tabs = qobject_cast<const QTabBar *>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            texts.append(tabs->tabText(i));
    }
    if (const auto *header = qobject_cast<const QHeaderView *>(&widget);
        header && header->model() && header->orientation() == Qt::Horizontal) {
        for (int i = 0; i < header->count(); ++i)
            texts.append(header->model()->headerData(i, Qt::Horizontal).toString());
    }
    return texts;
}

QStringList untouchedTexts(const QWidget &window)
{
    QStringList all = textsOf(window);
    for (const QWidget *widget : window.findChildren<QWidget *>())
        all += textsOf(*widget);
    QStringList found;
    for (const QString &text : std::as_const(all)) {
        if (!untouched(text).isEmpty())
            found.append(text);
    }
    found.removeDuplicates();
    return found;
}

} // namespace

/// Every text that a user sees can be translated, or stays as it is on purpose. Texts that are looked up once stay in
/// their language, so this is a program of its own.
class TestTexts : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&marks_); }

    void marksAreSeen()
    {
        QCOMPARE(untouched(u"«Città» e «Note»: D.d.T. di scarico, AMMINISTRATORE (Ctrl+S)"_s), QString());
        QCOMPARE(untouched(u"«Sposta «Viti» sotto» Conferma"_s), QString());
        QCOMPARE(untouched(u"<b>Non tradotto</b> «sì»"_s), u"Non tradotto"_s);
    }

    void windows_data()
    {
        test::cases({u"actInserimentoArticoli"_s, u"actRicercaClienti"_s, u"actInserimentoClienti"_s, u"actAzienda"_s,
                     u"actInserimentoAliquoteIVA"_s, u"actCategorieArticoli"_s, u"actInserimentoUtenti"_s,
                     u"actInserimentoBolleCarico"_s, u"actInserimentoDdTScarico"_s, u"actRicercaDdTScarico"_s,
                     u"actInserimentoFattureAccompagnatorie"_s, u"actFattureElettroniche"_s, u"actRicercaFornitori"_s,
                     u"actInserimentoFornitori"_s, u"actInserimentoMovimentiMagazzino"_s, u"actStampaInventario"_s});
    }
    void windows()
    {
        const QString action = test::currentCase();
        const bool ofHost = place().commands().action(action) != nullptr;
        const QWidget *form = ofHost ? place().commands().openForm(action) : open(action);
        test::settle();
        QCOMPARE(untouchedTexts(*form).join(u'|'), QString());
    }

    void mainWindow()
    {
        test::settle();
        QCOMPARE(untouchedTexts(place().window()).join(u'|'), QString());
        test::trigger(&place().window(), u"actTasti"_s);
        QCOMPARE(untouchedTexts(*QApplication::activeWindow()).join(u'|'), QString());
        QCOMPARE(QApplication::activeWindow()->windowTitle(), u"«Tasti»"_s);
    }

    void dialogs()
    {
        const auto command = [this](const QString &name) {
            return [this, name] { test::trigger(&place().window(), name); };
        };
        const QList<std::function<void()>> all = {command(u"actOpzioni"_s),
                                                  command(u"actOpzioniDocumenti"_s),
                                                  command(u"actImporta"_s),
                                                  command(u"actCercaOvunque"_s),
                                                  command(u"actCambiaPassword"_s),
                                                  command(u"actInformazioni"_s),
                                                  [] { host::askFirstStart(); },
                                                  [] { host::askNewFirm(nullptr, QDir::tempPath()); },
                                                  [] { host::databaseToOpen(nullptr, QDir::tempPath()); }};
        for (const std::function<void()> &ask : all) {
            QStringList found = {u"no dialog"_s};
            place().dialogs.expect([&found](QDialog &dialog) {
                found = untouchedTexts(dialog);
                dialog.reject();
            });
            ask();
            QCOMPARE(found.join(u'|'), QString());
        }
    }

private:
    Marks marks_;
};

static const test::Registered<TestTexts> registered;

#include "test_texts.moc"

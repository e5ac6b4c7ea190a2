// Typing the rows of a document.
#include "benchmark/Bench.h"

#include "magazzino/documents/Scorte.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/data/SqlText.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const QString newNote = u"actInserimentoDdTScarico"_s;
const QString addArticle = u"actAggiungiArticolo"_s;

void press(QWidget &input, int key, const QString &text = {})
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(&input, &event);
    }
}

/// Types "prova 1234567..." over and over: of every key the list of what it finds is shown.
class TypedWords
{
public:
    explicit TypedWords(QLineEdit &input)
        : input_(input)
    {
    }
    /// The field is ready for the next key.
    void prepare()
    {
        if (typed_ == words.size())
            typed_ = 0;
        if (typed_ == 0) {
            press(input_, Qt::Key_Escape);
            press(input_, Qt::Key_Escape);
            settle();
        }
    }
    void typeNext()
    {
        const QChar next = words[typed_++];
        press(input_, next.toUpper().unicode(), next);
        settle();
        if (input_.text().size() != typed_)
            throw core::Error(u"The field shows "_s + input_.text());
    }
    QString typed() const { return words.left(typed_); }

private:
    inline static const QString words = u"prova 12"_s;
    QLineEdit &input_;
    qsizetype typed_ = 0;
};

// As many articles as the list takes that have each word in code or description, in the list's order: first those whose
// code is the text, then those whose code begins with it, then those whose code contains it.
QString offers(const QString &typed)
{
    QStringList conditions;
    for (const QString &word : typed.split(u' ', Qt::SkipEmptyParts))
        conditions.append(u"(CODICE CONTAINING %1 OR DESCRIZIONE CONTAINING %1)"_s.arg(data::quoted(word)));
    return u"SELECT FIRST 50 IDANA_MAGA, CODICE, DESCRIZIONE, PREZZO, COSTO, IDUM FROM ANA_MAGA WHERE %1 ORDER BY CASE "
           "WHEN UPPER(CODICE) = UPPER(%2) THEN 0 WHEN CODICE STARTING WITH UPPER(%2) THEN 1 WHEN CODICE CONTAINING %2 "
           "THEN 2 ELSE 3 END, UPPER(CODICE)"_s.arg(conditions.join(u" AND "_s), data::quoted(typed));
}

QLineEdit &codeField(const QWidget &form)
{
    auto *code = form.findChild<QLineEdit *>(u"txtRigaCodice"_s);
    if (!code)
        throw core::Error(u"There is no line for a new row."_s);
    return *code;
}

void measureKeys(Bench &bench)
{
    auto &form = bench.program().form<TMMGInserimentoDocumento>(newNote);
    form.NuovoRecord();
    form.activateWindow();
    QLineEdit &code = codeField(form);
    form.grid().parentWidget()->show();
    code.setFocus();
    settle();
    TypedWords words(code);
    bench.add({.program = [&] { words.typeNext(); },
               .floor = [&] { bench.bare().fetch(offers(words.typed())); },
               .prepare = [&] { words.prepare(); },
               .runs = 16},
              {.workload = u"a key in the code field, list shown"_s, .target = 50, .milliseconds = true});
    forget(newNote);
}

// Of ten articles that the document has just got.
void measureStockLine(Bench &bench)
{
    int number = 0;
    QStringList codes;
    const auto next = [&] {
        codes.clear();
        for (int i = 0; i < rowsPerDocument; ++i)
            codes.append(articleCode(static_cast<int>(qint64{++number} * 6151 % (bench.size.articles / 2)) + 1));
    };
    const ScorteDi document{.kind = &ddtScarico(), .head = {-1, 0, core::today()}, .cliente = u"C0001"_s};
    const auto bare = [&] {
        QStringList quoted;
        for (const QString &code : std::as_const(codes))
            quoted.append(data::quoted(code));
        bench.bare().fetch(
            u"SELECT %1, SUM(QUANTITA), SUM(VALORE_IMPORTO), MAX(DATA_MOVIMENTO) FROM MOVI_MAGA WHERE "
            "UPPER(CODICE) IN (%2) GROUP BY 1"_s.arg(data::withoutIndex(u"UPPER(CODICE)"_s), quoted.join(u", "_s)));
    };
    bench.add(
        {.program = [&] { LeggiScorte(document, codes); }, .floor = bare, .prepare = next},
        {.workload = u"stock line of 10 articles"_s, .rows = rowsPerDocument, .target = 20, .milliseconds = true});
}

} // namespace

void measureTyping(Bench &bench)
{
    measureKeys(bench);
    measureStockLine(bench);
}

} // namespace bench

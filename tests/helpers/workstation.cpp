// A workstation in a process of its own, on a database server that others use at the same time. It works through the
// program's forms.
//
// usage: workstation DATABASE NAME ROUNDS   enters articles, goods receipts and delivery notes, "NAME ROUND" as their
// note
//        workstation DATABASE draft FILE    types a delivery note and waits to be killed; FILE is the settings file
//        workstation DATABASE               does what it is told on its standard input, see obey()
// The password comes in ISC_PASSWORD.
#include "platform/ui/RegisterEntry.h"
#include "tests/support/Fixtures.h"

#include <iostream>

namespace {

// Another workstation may take the proposed number first: then the next one, as a user would.
void saveWithFreeNumber(const test::Document &document)
{
    constexpr int attempts = 50;
    for (int i = 0; i < attempts; ++i) {
        if (document.form().SalvaRecord())
            return;
        auto *number = document.control<ui::IntegerEdit>(u"txtNumero"_s);
        number->setValue(number->value() + 1);
    }
    throw core::Error(u"Nessun numero libero."_s);
}

void enter(test::Workplace &workplace, bool isReceipt, const QString &name, int round)
{
    const test::Document document(workplace, isReceipt ? test::receipt() : test::deliveryNote());
    document.form().NuovoRecord();
    document.fillHeader();
    document.control<QPlainTextEdit>(u"txtNote"_s)->setPlainText(u"%1 %2"_s.arg(name).arg(round));
    for (int row = 0; row < test::enteredRows; ++row)
        document.addArticle(u"TRA-0018"_s, isReceipt ? u"2"_s : u"7,90"_s,
                            QString::number(test::enteredQuantity(isReceipt, round, row)));
    saveWithFreeNumber(document);
}

void enterArticle(test::Workplace &workplace, const QString &code)
{
    auto *form = qobject_cast<ui::RegisterEntry *>(workplace.commands().openForm(u"actInserimentoArticoli"_s));
    form->startNew();
    test::control<QLineEdit>(form, u"txtCodice"_s)->setText(code);
    test::control<QLineEdit>(form, u"txtDescrizione"_s)->setText(u"Articolo di "_s + code);
    for (const QString &lookup : {u"txtUM"_s, u"txtAliquotaIVA"_s})
        test::control<QComboBox>(form, lookup)->setCurrentIndex(1);
    if (!form->saveRecord())
        throw core::Error(u"Articolo non salvato: "_s + code);
}

QString readLine()
{
    std::string line;
    std::getline(std::cin, line);
    return QString::fromStdString(line);
}

void reply(const QString &text)
{
    std::puts(qUtf8Printable(text));
    std::fflush(stdout);
}

// "KIND KEY new|save|delete QUANTITY yes|no" opens a document (key 0: makes one) with one row, types the quantity and
// replies "ready". At the next line it saves or deletes, answers what is asked about other workstations, and replies
// with the outcome and the document's key.
void obey(test::Workplace &workplace)
{
    bool yes = false;
    QString outcome;
    core::setMessageHandler([&](const core::Message &message) {
        if (message.icon == core::MessageIcon::Error)
            outcome = u"error"_s;
        const bool aboutOthers = message.text.startsWith(u"Il documento è stato"_s);
        return message.answers.size() == 1 ? core::Answer::Ok
               : !aboutOthers || yes       ? core::Answer::Yes
                                           : core::Answer::No;
    });
    for (QStringList words; (words = readLine().split(u' ')).size() == 5;) {
        const test::Document document(workplace, test::documentNames(words[0]));
        yes = words[4] == u"yes"_s;
        if (words[2] == u"new"_s) {
            document.form().NuovoRecord();
            document.enter(u"2"_s, words[3]);
        } else {
            document.form().ApriRecord(words[1].toInt());
            document.showPage(1);
            if (words[2] == u"save"_s)
                test::typeIntoCell(document.grid(), 0, u"Q.tà"_s, words[3]);
        }
        reply(u"ready"_s);
        readLine();
        outcome.clear();
        if (words[2] == u"delete"_s)
            document.trigger(u"actElimina"_s);
        else
            document.save();
        const QString done = words[2] == u"delete"_s      ? u"deleted"_s
                             : document.form().Modified() ? u"refused"_s
                                                          : u"saved"_s;
        reply(u"%1 %2"_s.arg(outcome.isEmpty() ? done : outcome).arg(document.form().IdRecord()));
    }
}

// Replies with the number of rows once the timer has let what was typed be kept.
void typeAndWait(const data::DatabaseAddress &address, const QString &settingsFile)
{
    test::Workplace workplace(address, settingsFile);
    const test::Document document(workplace, test::deliveryNote());
    document.fillAll();
    constexpr int untilItIsKept = 4000; // milliseconds
    QTest::qWait(untilItIsKept);
    reply(QString::number(document.grid()->model()->rowCount()));
    readLine();
}

void work(const QStringList &arguments)
{
    data::DatabaseAddress address = data::DatabaseAddress::parse(arguments.value(1));
    address.password = qEnvironmentVariable("ISC_PASSWORD");
    if (arguments.value(2) == u"draft"_s) {
        typeAndWait(address, arguments.value(3));
        return;
    }
    test::Workplace workplace(address);
    if (arguments.size() == 2) {
        obey(workplace);
        return;
    }
    // A box about a taken number is part of the game; the careful answer leaves the document unsaved.
    core::setMessageHandler([](const core::Message &message) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message.text));
        return message.answers.last();
    });
    for (int i = 1; i <= arguments.value(3).toInt(); ++i) {
        enterArticle(workplace, u"%1-%2"_s.arg(arguments.value(2)).arg(i));
        enter(workplace, true, arguments.value(2), i);
        enter(workplace, false, arguments.value(2), i);
    }
}

} // namespace

int main(int argc, char **argv)
{
    // Seconds; another workstation may have to be waited for in each round.
    constexpr unsigned timeLimit = 120;
    constexpr unsigned ofRound = 10;
    const QApplication application(argc, argv);
    alarm(timeLimit + ofRound * QCoreApplication::arguments().value(3).toUInt());
    try {
        work(QCoreApplication::arguments());
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(core::errorText(error)));
        return 1;
    }
}

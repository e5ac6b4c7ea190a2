#include "host/transfer/ImportDialog.h"
#include "tests/support/Kit.h"

using core::CsvEncoding;

namespace {

QList<core::CsvRecord> recordsOf(QByteArray content, const core::CsvFormat &format)
{
    QBuffer file(&content);
    file.open(QIODevice::ReadOnly);
    core::CsvReader reader(file, format);
    QList<core::CsvRecord> records;
    for (core::CsvRecord record; reader.read(record);)
        records.append(record);
    return records;
}

QStringList toldBy(const host::ImportPlan &plan)
{
    QStringList told;
    for (const host::ImportProblem &problem : plan.problems)
        told.append(u"%1 %2: %3"_s.arg(problem.line).arg(problem.column, problem.message));
    return told;
}

// The most memory that was in use since the last call, in bytes.
qint64 peakMemory()
{
    const QByteArray text = test::contentOf(u"/proc/self/status"_s);
    const qint64 kilobytes = text.mid(text.indexOf("VmHWM:") + 6).trimmed().split(' ').value(0).toLongLong();
    QFile reset(u"/proc/self/clear_refs"_s);
    if (reset.open(QIODevice::WriteOnly))
        reset.write("5");
    return kilobytes * 1024;
}

QByteArray articles(int count, const QByteArray &lastPrice = "1,50")
{
    QByteArray text = "Codice;Descrizione;Prezzo;IVA;UM;Categoria\r\n";
    for (int i = 1; i <= count; ++i)
        text += "X" + QByteArray::number(i) + ";\"Vite; testa \"\"piana\"\"\";" +
                (i == count ? lastPrice : "1.234,50") + ";22;;\r\n";
    return text;
}

} // namespace

class TestImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { database_ = std::make_unique<test::ModuleDatabase>(test::Content::DemoData); }

    void cleanup() { database_.reset(); }

    void filesAreRecognised_data()
    {
        test::columns<QByteArray, QChar, int, QString>();
        // The cells as "line:cell¦cell" joined by " / ".
        const int utf8 = static_cast<int>(CsvEncoding::Utf8);
        test::table<QByteArray, QChar, int, QString>(
            {{"decimal commas do not separate", "a;b\n1,5;2,5\n3,0;4\n", u';', utf8, u"1:a¦b / 2:1,5¦2,5 / 3:3,0¦4"_s},
             {"commas", "a,b,c\r\n\"x;y\",,z\r\n", u',', utf8, u"1:a¦b¦c / 2:x;y¦¦z"_s},
             {"tabs, old line ends, no last one", "a\tb\r1\t2", u'\t', utf8, u"1:a¦b / 2:1¦2"_s},
             {"quoted line breaks count as lines", "a|b\n\"1\r\n2 \"\"x\"\"\"|y\n\nz 1/2\"|w\n", u'|', utf8,
              u"1:a¦b / 2:1\n2 \"x\"¦y / 5:z 1/2\"¦w"_s},
             {"byte order mark", "\xEF\xBB\xBF\"\xC3\xA8\";b\n", u';', utf8, u"1:è¦b"_s},
             {"Windows", "citt\xE0;\x80\n", u';', static_cast<int>(CsvEncoding::Windows1252), u"1:città¦€"_s},
             {"UTF-16", QByteArray("\xFF\xFE\xE8\0;\0b\0\n\0", 10), u';', static_cast<int>(CsvEncoding::Utf16),
              u"1:è¦b"_s},
             {"named separator", "sep=,\na;b,c\n", u',', utf8, u"2:a;b¦c"_s}});
    }

    void filesAreRecognised()
    {
        auto [content, separator, encoding, cells] = test::row<QByteArray, QChar, int, QString>();
        QBuffer file(&content);
        QVERIFY(file.open(QIODevice::ReadOnly));
        core::Progress progress;
        const core::CsvFormat format = core::detectCsvFormat(file, progress);
        QCOMPARE(format.separator, separator);
        QCOMPARE(static_cast<int>(format.encoding), encoding);
        QStringList found;
        for (const core::CsvRecord &record : recordsOf(content, format))
            found.append(QString::number(record.line) + u':' + record.cells.join(u'¦'));
        QCOMPARE(found.join(u" / "_s), cells);
    }

    void decimalMarkIsThatOfTheColumn()
    {
        for (const auto &[column, expected] :
             {std::pair(u"1.234 € 1.234,50 -3,5 7"_s, u"1234 ? 1234.5 -3.5 7"_s),
              {u"1.234 1234.50 1,234.5 .5 0.125"_s, u"1.234 1234.5 1234.5 0.5 0.125"_s},
              {u"1.234 12,50 12.50 1.234,50 8"_s, u"? 12.5 12.5 1234.5 8"_s},
              {u"1.2.3 12a 1,2,3 --1"_s, u"? ? ? ?"_s}}) {
            const QStringList texts = column.split(u' ');
            const core::NumberReader reader(texts);
            QStringList numbers;
            for (const QString &text : texts) {
                const std::optional<double> number = reader.read(text);
                numbers.append(number ? QString::number(*number) : u"?"_s);
            }
            QCOMPARE(numbers.join(u' '), expected);
        }
    }

    // However the pieces in which a file is read cut characters, quotes and line ends.
    void longFilesArriveWhole()
    {
        QByteArray content;
        QStringList wanted;
        for (int i = 0; i < 9000; ++i) {
            const QString text = QString(i % 97, QChar(u'é')) + u"\U0001F4E6\"\n;€"_s;
            wanted.append(text);
            content +=
                "\"" + QString(text).replace(u"\""_s, u"\"\""_s).toUtf8() + "\";" + QByteArray(i % 13, 'x') + "\r\n";
        }
        const QList<core::CsvRecord> found = recordsOf(content, {});
        QCOMPARE(found.size(), wanted.size());
        for (int i = 0; i < found.size(); ++i) {
            QCOMPARE(found[i].line, 1 + 2 * i);
            QCOMPARE(found[i].cells, QStringList({wanted[i], QString(i % 13, u'x')}));
        }
        QVERIFY(test::errorOf([] { recordsOf("a\n\"" + QByteArray(1'100'000, 'x'), {}); }).startsWith(u"Riga 2: "));
    }

    void everyProblemNamesLineAndColumn()
    {
        database_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, u"Vecchio"_s}});
        const host::ImportPlan found =
            host::planImport(job(articles_, "Cod.;Descrizione;Listino;IVA;Categoria;UM\n"
                                            "vecchio;a;1;22;;\n"
                                            "N1;;x;22%;Non c'è;\n"
                                            "n1;b;-1;99;;\n"
                                            "N2;b;1,255;;;PZ;troppo\n" +
                                                QByteArray(21, 'c') + ";b;;;;\n" + QByteArray("N3;a\0b;;;;\n", 11)));
        QCOMPARE(
            toldBy(found),
            QStringList({u"2 Cod.: Il codice \"vecchio\" esiste già."_s,
                         u"3 Categoria: \"Non c'è\" non si trova, o non è unico."_s,
                         u"3 Listino: \"x\" non è un numero valido."_s, u"3 Descrizione: Manca il valore."_s,
                         u"4 Cod.: Il codice \"n1\" si trova già alla riga 3."_s,
                         u"4 Listino: \"-1\" non è compreso tra 0 e 99.999.999.999,99."_s,
                         u"4 IVA: \"99\" non si trova, o non è unico."_s, u"5 : La riga ha 7 colonne invece di 6."_s,
                         u"5 Listino: \"1,255\" ha più di due decimali."_s,
                         u"6 Cod.: Il testo ha 21 caratteri, al massimo ne sono ammessi 20."_s,
                         u"7 Descrizione: Il testo contiene un carattere di controllo (U+0000)."_s}));
    }

    void codesUpdateWhereAsked()
    {
        database_->insert(u"FORNITORI"_s, u"CODICE=Abc|RAGIONESOCIALE=Vecchia|CITTA=Asti"_s);
        database_->insert(u"FORNITORI"_s, {{u"CODICE"_s, u"Straße"_s}});
        const QByteArray file = "Codice;Ragione sociale;Città;Partita IVA;Pagamento;Telefono;Note\n"
                                "ABC;Nuova;;it01234567890;;'+39 02;\"a\nb\"\nZZ9;Altra;Roma;;;;\n"
                                "straße;Tedesca;;;;;\nSTRASSE;Altra;;;;;\n";
        const host::ImportJob update = job(suppliers_, file, true);
        const host::ImportPlan planned = host::planImport(update);
        QCOMPARE(planned.problemCount, 0);
        QCOMPARE(planned.updates, 2);
        core::Progress progress;
        host::writeImport(database_->connection(), update, planned, progress);
        QCOMPARE(database_->lines(u"SELECT CODICE, RAGIONESOCIALE, CITTA, PARTITAIVA, TELEFONO1, NOTE FROM "
                                  "FORNITORI WHERE CODICE IN ('Abc', 'ZZ9', 'Straße', 'STRASSE') ORDER BY 1"_s),
                 (QStringList{u"Abc|Nuova|Asti|IT01234567890|+39 02|a\nb"_s, u"STRASSE|Altra||||"_s,
                              u"Straße|Tedesca||||"_s, u"ZZ9|Altra|Roma|||"_s}));
    }

    void missingCategoriesAreCreated()
    {
        for (const QString &parent : {u"Ferramenta"_s, u"Utensileria"_s})
            database_->connection().run(u"INSERT INTO CATEGORIE_ANA_MAGA(CATEGORIA, IDPADRE) SELECT 'Doppia', "
                                        "IDCATEGORIA_ANA_MAGA FROM CATEGORIE_ANA_MAGA WHERE CATEGORIA = ?"_s,
                                        {parent});
        host::ImportJob wrong = job(articles_, "Codice;Descrizione;Categoria\nA1;a;Doppia\nA2;a;/Sotto\n"
                                               "A3;a;Doppia/Sotto\nA4;a;Giardino/" +
                                                   QByteArray(51, 'x') + "\n");
        wrong.options.createMissing = true;
        QCOMPARE(toldBy(host::planImport(wrong)),
                 QStringList({u"2 Categoria: \"Doppia\" non si trova, o non è unico."_s,
                              u"3 Categoria: \"/Sotto\" non si trova, o non è unico."_s,
                              u"4 Categoria: \"Doppia/Sotto\" non si trova, o non è unico."_s,
                              u"5 Categoria: Il testo ha 51 caratteri, al massimo ne sono ammessi 50."_s}));

        host::ImportJob right =
            job(articles_, "Codice;Descrizione;Categoria\nA1;a;Giardino / Siepi\nA2;a;VITERIA/Viti rare\n"
                           "A3;a;giardino/SIEPI\nA4;a;Ferramenta/Viteria/viti RARE\nA5;a;Giardino\n");
        right.options.createMissing = true;
        const host::ImportPlan planned = host::planImport(right);
        QCOMPARE(planned.problemCount, 0);
        QCOMPARE(planned.newCategories, 3);
        // Another workstation is faster.
        database_->insert(u"CATEGORIE_ANA_MAGA"_s, {{u"CATEGORIA"_s, u"GIARDINO"_s}});
        core::Progress progress;
        host::writeImport(database_->connection(), right, planned, progress);
        QCOMPARE(
            database_->lines(u"SELECT A.CODICE, C.CATEGORIA, P.CATEGORIA FROM ANA_MAGA A JOIN CATEGORIE_ANA_MAGA C "
                             "ON C.IDCATEGORIA_ANA_MAGA = A.IDCATEGORIA_ANA_MAGA LEFT JOIN CATEGORIE_ANA_MAGA P ON "
                             "P.IDCATEGORIA_ANA_MAGA = C.IDPADRE WHERE A.DESCRIZIONE = 'a' ORDER BY 1"_s),
            QStringList({u"A1|Siepi|GIARDINO"_s, u"A2|Viti rare|Viteria"_s, u"A3|Siepi|GIARDINO"_s,
                         u"A4|Viti rare|Viteria"_s, u"A5|GIARDINO|"_s}));
    }

    void allArticlesOrNone()
    {
        constexpr int many = 20000;
        const int before = count(u"ANA_MAGA"_s);
        const host::ImportJob all = job(articles_, articles(many));
        const host::ImportPlan planned = host::planImport(all);
        data::Connection other(database_->database().connectionString());
        core::Progress progress;
        int inserts = 0;
        std::function<void()> trouble;
        other.setStatementHook([&](const QString &sql) {
            if (sql.startsWith(u"INSERT") && ++inserts == many / 2 && trouble)
                trouble();
        });
        trouble = [&progress] { progress.cancel(); };
        QCOMPARE(test::errorOf([&] { host::writeImport(other, all, planned, progress); }), u"cancelled"_s);
        QCOMPARE(count(u"ANA_MAGA"_s), before);

        core::Progress second;
        inserts = 0;
        trouble = [this] { database_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, u"X%1"_s.arg(many)}}); };
        QVERIFY(test::errorOf([&] { host::writeImport(other, all, planned, second); }).contains(u"riga 20001."));
        QCOMPARE(count(u"ANA_MAGA"_s), before + 1);

        core::Progress third;
        trouble = {};
        database_->connection().run(u"DELETE FROM ANA_MAGA WHERE CODICE = 'X20000'"_s);
        host::writeImport(other, all, planned, third);
        QCOMPARE(count(u"ANA_MAGA"_s), before + many);
        QCOMPARE(third.done(), many);
        QCOMPARE(
            database_->lines(u"SELECT A.DESCRIZIONE, A.PREZZO, A.COSTO, I.CODICE FROM ANA_MAGA A JOIN ALIQUOTE_IVA "
                             "I ON I.IDALIQUOTA_IVA = A.IDALIQUOTA_IVA WHERE A.CODICE = 'X1'"_s),
            QStringList{u"Vite; testa \"piana\"|1234.5|0|22"_s});
    }

    void dialogWritesWhenNothingIsWrong()
    {
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        const int before = count(u"ANA_MAGA"_s);
        dialogs.expect([&](QDialog &dialog) {
            auto *import = test::control<QPushButton>(&dialog, u"cmdImporta"_s);
            openIn(dialog, articles(30, "x"));
            QVERIFY(!import->isEnabled());
            QCOMPARE(test::columnTexts(test::control<QTableView>(&dialog, u"gridErrori"_s), u"Riga"_s),
                     QStringList{u"31"_s});

            openIn(dialog, "Codice;Descrizione;Categoria\nA1;a;Giardino/Siepi\n");
            QVERIFY(!import->isEnabled());
            QTest::keyClick(test::control<QCheckBox>(&dialog, u"chkCategorie"_s), Qt::Key_Space);
            QCOMPARE(test::shown(&dialog, u"lblStato"_s), u"1 record nuovi, 0 da aggiornare, 2 categorie nuove."_s);

            openIn(dialog, articles(30));
            QCOMPARE(test::shown(&dialog, u"lblStato"_s), u"30 record nuovi, 0 da aggiornare."_s);
            // The first record waits for this transaction, so "Annulla" is pressed in the middle of the work.
            auto block = std::make_unique<data::Transaction>(database_->connection());
            database_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, u"X1"_s}});
            dialogs.expect([&block](QDialog &progress) {
                test::press(&progress, u"cmdAnnulla"_s);
                block.reset();
                QTRY_VERIFY(!progress.isVisible());
            });
            messages.expectInformation(u"Importazione annullata: nulla è stato scritto."_s);
            import->click();
            QCOMPARE(count(u"ANA_MAGA"_s), before);

            dialogs.expect(test::waiting());
            messages.expectInformation(u"Importazione completata: 30 record nuovi, 0 aggiornati."_s);
            import->click();
        });
        host::importFromCsv(nullptr, database_->connection());
        QCOMPARE(count(u"ANA_MAGA"_s), before + 30);
    }

    void longFileNeedsLittleMemoryAndShowsItsProgress()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("The address sanitizer multiplies memory.");
#endif
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        QString path = folder_.filePath(u"lungo.csv"_s);
        core::saveFile(path, articles(300'000));
        const qint64 size = QFileInfo(path).size();
        ui::setOpenFileChooser([&path](QWidget *, const ui::OpenFileRequest &) { return path; });
        bool moved = false;
        const auto watch = [&moved](QDialog &progress) {
            const auto *bar = progress.findChild<QProgressBar *>();
            QTRY_VERIFY_WITH_TIMEOUT(bar->value() > 0 || !progress.isVisible(), 1000);
            QTRY_VERIFY_WITH_TIMEOUT(!progress.isVisible(), 120'000);
            moved = moved || bar->value() > 0;
        };
        dialogs.expect([&](QDialog &dialog) {
            test::settle();
            peakMemory();
            const qint64 before = peakMemory();
            dialogs.expect(watch); // how the file is written
            dialogs.expect(watch); // what is in it
            test::press(&dialog, u"cmdSfoglia"_s);
            QCOMPARE(test::shown(&dialog, u"lblStato"_s), u"300.000 record nuovi, 0 da aggiornare."_s);
            const qint64 needed = peakMemory() - before;
            QVERIFY2(needed < 2 * size, qPrintable(u"%1 for %2 bytes"_s.arg(needed).arg(size)));
            QVERIFY(moved);
            // A cancelled check leaves nothing to import.
            dialogs.expect([](QDialog &progress) {
                test::press(&progress, u"cmdAnnulla"_s);
                QTRY_VERIFY(!progress.isVisible());
            });
            test::control<QCheckBox>(&dialog, u"chkAggiorna"_s)->click();
            QCOMPARE(test::shown(&dialog, u"lblStato"_s), u"Controllo annullato: scegliere di nuovo il file."_s);
            QVERIFY(!test::control<QPushButton>(&dialog, u"cmdImporta"_s)->isEnabled());
            dialog.reject();
        });
        host::importFromCsv(nullptr, database_->connection());
        ui::setOpenFileChooser({});
    }

    // A wrong check digit is told and imported; a code stands for one piece where nothing is said.
    void barcodesComeWithTheirPieces()
    {
        const host::ImportJob barcodes = job(barcodes_, "Codice;EAN;Pezzi\ntra-0018;8001120000019;\n"
                                                        "TRA-0018;8001120000018;6\nSMA-0750;libero;2,5\n");
        const host::ImportPlan plan = host::planImport(barcodes);
        QCOMPARE(plan.problemCount, 0);
        QCOMPARE(plan.doubtCount, 1);
        QCOMPARE(plan.doubts.constFirst().line, 3);
        core::Progress progress;
        host::writeImport(database_->connection(), barcodes, plan, progress);
        QCOMPARE(database_->lines(u"SELECT A.CODICE, B.CODICE, B.PEZZI FROM BARCODE_ARTICOLI B JOIN ANA_MAGA A ON "
                                  "A.IDANA_MAGA = B.IDANA_MAGA ORDER BY B.IDBARCODE_ARTICOLI"_s),
                 QStringList({u"TRA-0018|8001120000019|1"_s, u"TRA-0018|8001120000018|6"_s, u"SMA-0750|libero|2.5"_s}));
        // One number is one code, with zeros before it and without.
        const host::ImportJob again = job(barcodes_, "Codice;EAN\nSMA-0750;08001120000019\nSMA-0750;LIBERO\n"
                                                     "SMA-0750;12345670\nTRA-0018;00000012345670\n");
        QCOMPARE(host::planImport(again).problemCount, 3);
    }

private:
    /// The import of a file whose headers name the fields.
    host::ImportJob job(const host::ImportTarget &target, const QByteArray &content, bool update = false)
    {
        QList<core::CsvRecord> records = recordsOf(content, {});
        const QStringList headers = records.takeFirst().cells;
        lookups_ = std::make_unique<host::ImportLookups>(database_->connection(), target);
        return {target,
                *lookups_,
                [records](const auto &use) { std::for_each(records.begin(), records.end(), use); },
                {.columns = host::mapColumns(target, headers), .headers = headers, .updateExisting = update}};
    }

    int count(const QString &table)
    {
        return database_->lines(u"SELECT COUNT(*) FROM "_s + table).value(0).toInt();
    }

    void openIn(QDialog &dialog, const QByteArray &content)
    {
        QString path = folder_.filePath(u"listino.csv"_s);
        core::saveFile(path, content);
        ui::setOpenFileChooser([&path](QWidget *, const ui::OpenFileRequest &) { return path; });
        test::press(&dialog, u"cmdSfoglia"_s);
        ui::setOpenFileChooser({});
    }

    const host::ImportTarget articles_ = host::importTargets()[0];
    const host::ImportTarget barcodes_ = host::importTargets()[1];
    const host::ImportTarget suppliers_ = host::importTargets()[3];
    const QTemporaryDir folder_;
    std::unique_ptr<test::ModuleDatabase> database_;
    std::unique_ptr<host::ImportLookups> lookups_;
};

static const test::Registered<TestImport> registered;

#include "test_import.moc"

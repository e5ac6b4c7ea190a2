#include "magazzino/reports/MMGStampe.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/report/Document.h"
#include "platform/report/Report.h"
#include "tests/report/Prints.h"
#include "tests/support/TestMain.h"

#include <QFile>

using namespace Qt::StringLiterals;

class TestDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looks_data();
    void looks();
};

void TestDocuments::looks_data()
{
    QTest::addColumn<int>("rows");
    for (const int rows : {0, 1, 20, 30, 31, 32, 33, 34, 35, 200})
        QTest::addRow("%d", rows) << rows;
}

void TestDocuments::looks()
{
    QFETCH(const int, rows);
    test::Workplace workplace;
    const int note = test::insertNote(workplace.database(), rows);
    const int invoice = test::insertInvoice(workplace.database(), rows);
    StampaDdTScarico(note, test::outputFile(u"ddt-%1.pdf"_s.arg(rows)), TKxReportDestination::FilePDF);
    StampaFatturaAccompagnatoria(invoice, test::outputFile(u"fatt-%1.pdf"_s.arg(rows)), TKxReportDestination::FilePDF);
    if (rows == 20) {
        workplace.database().execute(u"UPDATE FATT_ACC SET IVA_ESENTE='True'"_s);
        StampaFatturaAccompagnatoria(invoice, test::outputFile(u"esente.pdf"_s), TKxReportDestination::FilePDF);
        StampaFatturaAccompagnatoria(-1, test::outputFile(u"vuota.pdf"_s), TKxReportDestination::FilePDF);
        StampaDdTScarico(-1, test::outputFile(u"ddt-vuoto.pdf"_s), TKxReportDestination::FilePDF);
        const QString lungo = u"Parola lunga che si ripete per riempire "_s.repeated(8).left(100);
        const int note2 = test::insertNote(
            workplace.database(), 3,
            {{u"NUMERO"_s, 13},
             {u"TIPO_ANAGRAFICA"_s, 1},
             {u"CLI_RAGIONESOCIALE"_s, lungo},
             {u"DEST_RAGIONESOCIALE"_s, lungo},
             {u"VETT_RAGIONESOCIALE"_s, lungo},
             {u"DATA_INIZIO_TRASPORTO"_s, {}},
             {u"ORA_INIZIO_TRASPORTO"_s, {}},
             {u"NOTE"_s, u"Riga di una nota molto lunga che prosegue dopo le righe del documento.\n"_s.repeated(12)}});
        test::insertNoteRow(
            workplace.database(), note2,
            {{u"TIPO_RIGA"_s, u"Testo"_s},
             {u"DESCRIZIONE"_s,
              u"Una descrizione più lunga di una pagina intera, che va spezzata fra le pagine. "_s.repeated(90)}});
        test::insertNoteRow(workplace.database(), note2,
                            {{u"CODICE"_s, u"WWWWWWWWWWWWWWWWWWWW"_s},
                             {u"TIPO_RIGA"_s, u"Testo"_s},
                             {u"DESCRIZIONE"_s, u"Corta.\nSeconda riga."_s},
                             {u"QUANTITA"_s, 99999999.99}});
        StampaDdTScarico(note2, test::outputFile(u"lungo.pdf"_s), TKxReportDestination::FilePDF);
        workplace.database().execute(
            u"UPDATE DDT_SCARICO SET VETT_CODICE=NULL, VETT_RAGIONESOCIALE=NULL, VETT_INDIRIZZO=NULL, VETT_CITTA=NULL, DEST_RAGIONESOCIALE=NULL, DEST_INDIRIZZO='', DEST_CITTA='', DEST_CAP=''"_s);
        StampaDdTScarico(note, test::outputFile(u"senza.pdf"_s), TKxReportDestination::FilePDF);
    }
}

static const test::Registered<TestDocuments> registration;

#include "test_documents.moc"

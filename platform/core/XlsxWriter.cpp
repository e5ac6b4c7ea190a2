#include "platform/core/XlsxWriter.h"

#include "platform/core/Decimal.h"
#include "platform/core/Error.h"

#include <QDate>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>

#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qsizetype mostRows = LXW_ROW_MAX - 1; // one is the captions'
constexpr qsizetype longestText = 32767;

QByteArray sheetName(const QString &title)
{
    static const QRegularExpression forbidden(u"[\\[\\]:*?/\\\\']"_s);
    QString name = title;
    name = name.replace(forbidden, u" "_s).simplified().left(LXW_SHEETNAME_MAX).trimmed();
    return (name.isEmpty() ? u"Elenco"_s : name).toUtf8();
}

// "0", "#,##0.00" or "€ #,##0.00": the spreadsheet shows the separators of its own language.
QByteArray numberFormat(int places, bool currency)
{
    const QString digits =
        (currency || places > 0 ? u"#,##0"_s : u"0"_s) + (places > 0 ? u'.' + QString(places, u'0') : QString());
    return (currency ? u"\"€ \"%1;-\"€ \"%1"_s.arg(digits) : digits).toUtf8();
}

// The sheet being written, with one format object per way of showing a value.
class Sheet
{
public:
    Sheet(lxw_workbook *book, const Table &table)
        : book_(book)
        , table_(table)
        , sheet_(workbook_add_worksheet(book, sheetName(table.title).constData()))
    {
    }

    void write()
    {
        writeCaptions();
        for (qsizetype row = 0; row < table_.rows.size(); ++row) {
            for (qsizetype column = 0; column < table_.columns.size(); ++column)
                writeCell(row, column, table_.rows[row][column]);
        }
    }

private:
    void writeCaptions()
    {
        lxw_format *bold = workbook_add_format(book_);
        format_set_bold(bold);
        for (qsizetype i = 0; i < table_.columns.size(); ++i) {
            const auto column = static_cast<lxw_col_t>(i);
            // A column is as wide as its digits: about seven pixels each.
            worksheet_set_column(sheet_, column, column, std::clamp(table_.columns[i].width / 7.0, 4.0, 120.0),
                                 nullptr);
            writeText(-1, i, table_.columns[i].header, bold);
        }
        worksheet_freeze_panes(sheet_, 1, 0);
    }

    void writeCell(qsizetype row, qsizetype column, const QVariant &value)
    {
        if (!value.isValid())
            return;
        const auto line = static_cast<lxw_row_t>(row + 1);
        const auto place = static_cast<lxw_col_t>(column);
        constexpr int firstYear = 1900; // a spreadsheet's calendar knows no earlier one
        if (isNumber(value)) {
            const int places = placesOf(value, table_.columns[column]);
            worksheet_write_number(sheet_, line, place, roundDecimal(value.toDouble(), places),
                                   format(numberFormat(places, table_.columns[column].currency)));
        } else if (const QDate date = value.toDate();
                   value.metaType().id() == QMetaType::QDate && date.year() >= firstYear) {
            lxw_datetime day = {date.year(), date.month(), date.day(), 0, 0, 0};
            worksheet_write_datetime(sheet_, line, place, &day, format("dd/mm/yyyy"));
        } else {
            writeText(row, column, plainText(value), nullptr);
        }
    }

    // `row` from 0 for the table's first row, -1 for the captions.
    void writeText(qsizetype row, qsizetype column, const QString &text, lxw_format *format)
    {
        if (text.size() > longestText)
            throw Error(
                u"Il testo della riga %1, colonna \"%2\", supera i 32.767 caratteri ammessi da Excel. Esportare "
                "in CSV."_s.arg(row + 1)
                    .arg(table_.columns[column].header));
        worksheet_write_string(sheet_, static_cast<lxw_row_t>(row + 1), static_cast<lxw_col_t>(column),
                               text.toUtf8().constData(), format);
    }

    lxw_format *format(const QByteArray &code)
    {
        lxw_format *&made = formats_[code];
        if (!made) {
            made = workbook_add_format(book_);
            format_set_num_format(made, code.constData());
        }
        return made;
    }

    lxw_workbook *book_;
    const Table &table_;
    lxw_worksheet *sheet_;
    QMap<QByteArray, lxw_format *> formats_;
};

} // namespace

QByteArray xlsxFile(const Table &table)
{
    if (table.rows.size() > mostRows)
        throw Error(u"L'elenco ha più righe (%1) di quante ne contenga un foglio di Excel. Esportare in CSV."_s.arg(
            table.rows.size()));
    // The library writes to a path only.
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"elenco.xlsx"_s));
    lxw_workbook *book = workbook_new(QFile::encodeName(file.fileName()).constData());
    std::exception_ptr failure;
    try {
        Sheet(book, table).write();
    } catch (const Error &) {
        failure = std::current_exception();
    }
    // Closing is also what frees the workbook.
    const lxw_error result = workbook_close(book);
    if (failure)
        std::rethrow_exception(failure);
    if (result != LXW_NO_ERROR || !file.open(QIODevice::ReadOnly))
        throw Error(u"Impossibile preparare il file di Excel: la cartella temporanea è piena o non è scrivibile."_s,
                    QString::fromUtf8(lxw_strerror(result)));
    return file.readAll();
}

} // namespace core

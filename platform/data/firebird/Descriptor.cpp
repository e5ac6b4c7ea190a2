#include "platform/data/firebird/Descriptor.h"

#include "platform/core/Decimal.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/firebird/Blobs.h"

#include <QDateTime>

#include <cmath>
#include <cstring>
#include <ctime>

using namespace Qt::StringLiterals;

namespace data::firebird {

namespace {

constexpr int bytesPerCharacter = 4;     // in UTF-8 as the engine counts it
constexpr qsizetype longestText = 32765; // bytes that a text parameter can have
constexpr int fractionsPerMillisecond = ISC_TIME_SECONDS_PRECISION / 1000;

short baseType(short type)
{
    return static_cast<short>(type & ~1); // the last bit tells that it may be NULL
}

bool isWholeNumber(short type)
{
    return type == SQL_SHORT || type == SQL_LONG || type == SQL_INT64;
}

bool isRealNumber(short type)
{
    return type == SQL_FLOAT || type == SQL_DOUBLE || type == SQL_D_FLOAT;
}

bool isTextBlob(const XSQLVAR &field)
{
    return baseType(field.sqltype) == SQL_BLOB && field.sqlsubtype == isc_blob_text;
}

template <typename Value>
Value readAs(const XSQLVAR &field)
{
    Value value;
    std::memcpy(&value, field.sqldata, sizeof value);
    return value;
}

template <typename Value>
QByteArray bytesOf(Value value)
{
    return {reinterpret_cast<const char *>(&value), sizeof value};
}

// A power of ten is exact as a double, so the division gives the number nearest to the decimal.
QVariant decimal(qint64 units, short scale)
{
    return static_cast<double>(units) / std::pow(10.0, -scale);
}

QDate dateOf(ISC_DATE days)
{
    std::tm time{};
    isc_decode_sql_date(&days, &time);
    return {time.tm_year + 1900, time.tm_mon + 1, time.tm_mday};
}

QTime timeOf(ISC_TIME fractions)
{
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(fractions / fractionsPerMillisecond));
}

ISC_DATE daysOf(QDate date)
{
    std::tm time{};
    time.tm_year = date.year() - 1900;
    time.tm_mon = date.month() - 1;
    time.tm_mday = date.day();
    ISC_DATE days = 0;
    isc_encode_sql_date(&time, &days);
    return days;
}

ISC_TIME fractionsOf(QTime time)
{
    return static_cast<ISC_TIME>(time.msecsSinceStartOfDay()) * fractionsPerMillisecond;
}

// CHAR fields come filled with blanks, up to the bytes that their characters could need at most.
QString fixedText(const XSQLVAR &field)
{
    constexpr int utf8 = 4; // the number of the character set
    const int characters = (field.sqlsubtype & 0xff) == utf8 ? field.sqllen / bytesPerCharacter : field.sqllen;
    return QString::fromUtf8(field.sqldata, field.sqllen).left(characters);
}

QString varyingText(const XSQLVAR &field)
{
    return QString::fromUtf8(field.sqldata + sizeof(short), readAs<short>(field));
}

QVariant wholeNumber(const XSQLVAR &field)
{
    const short type = baseType(field.sqltype);
    const qint64 number = type == SQL_INT64  ? readAs<ISC_INT64>(field)
                          : type == SQL_LONG ? readAs<ISC_LONG>(field)
                                             : readAs<ISC_SHORT>(field);
    if (field.sqlscale < 0)
        return decimal(number, field.sqlscale);
    return type == SQL_INT64 ? QVariant(number) : QVariant(static_cast<int>(number));
}

bool isNumeric(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

bool isFraction(const QVariant &value)
{
    return value.metaType().id() == QMetaType::Double || value.metaType().id() == QMetaType::Float;
}

qint64 unitsOf(double number, short scale)
{
    if (!core::fitsDecimal(number, -scale))
        throw DatabaseError(core::tr("Il numero è troppo grande."));
    return static_cast<qint64>(std::round(core::roundDecimal(number, -scale) * std::pow(10.0, -scale)));
}

// A text without value is an empty one where the column needs one.
bool isMissing(const QVariant &value, bool mayBeNull)
{
    switch (value.isNull() ? QMetaType::UnknownType : value.metaType().id()) {
    case QMetaType::UnknownType:
        return true;
    case QMetaType::QString:
        return mayBeNull && value.toString().isNull();
    case QMetaType::QDate:
        return !value.toDate().isValid();
    case QMetaType::QTime:
        return !value.toTime().isValid();
    case QMetaType::QDateTime:
        return !value.toDateTime().isValid();
    default:
        return false;
    }
}

} // namespace

void Descriptor::Free::operator()(XSQLDA *area) const
{
    std::free(area); // NOLINT(cppcoreguidelines-no-malloc): its length is known at run time only
}

Descriptor::Descriptor()
{
    constexpr int usualFields = 16;
    reserve(usualFields);
}

void Descriptor::reserve(int fields)
{
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    auto *area = static_cast<XSQLDA *>(std::calloc(1, XSQLDA_LENGTH(static_cast<size_t>(std::max(fields, 1)))));
    if (!area)
        throw std::bad_alloc();
    area->version = SQLDA_VERSION1;
    area->sqln = static_cast<ISC_SHORT>(std::max(fields, 1));
    area_.reset(area);
}

void Descriptor::makeRoom()
{
    const auto fields = static_cast<size_t>(size());
    described_.clear();
    room_.resize(fields);
    nulls_.assign(fields, 0);
    for (size_t i = 0; i < fields; ++i) {
        XSQLVAR &field = area_->sqlvar[i];
        described_.push_back({.type = field.sqltype, .scale = field.sqlscale, .length = field.sqllen});
        // A text of varying length has its length before it.
        room_[i].resize(field.sqllen + static_cast<qsizetype>(sizeof(short)));
        field.sqldata = room_[i].data();
        field.sqlind = &nulls_[i];
    }
}

QList<Column> Descriptor::columns() const
{
    QList<Column> columns;
    for (int i = 0; i < size(); ++i) {
        const XSQLVAR &field = area_->sqlvar[i];
        const short type = baseType(field.sqltype);
        columns.append({.name = QString::fromUtf8(field.aliasname, field.aliasname_length).toUpper(),
                        .places = isWholeNumber(type) ? -field.sqlscale : 0,
                        .isText = type == SQL_TEXT || type == SQL_VARYING || isTextBlob(field),
                        .isNumber = isWholeNumber(type) || isRealNumber(type)});
    }
    return columns;
}

QVariant Descriptor::value(int index, Attachment &attachment, NativeTransaction &transaction) const
{
    const XSQLVAR &field = area_->sqlvar[index];
    if ((field.sqltype & 1) && *field.sqlind < 0)
        return {};
    switch (baseType(field.sqltype)) {
    case SQL_TEXT:
        return fixedText(field);
    case SQL_VARYING:
        return varyingText(field);
    case SQL_SHORT:
    case SQL_LONG:
    case SQL_INT64:
        return wholeNumber(field);
    case SQL_FLOAT:
        return static_cast<double>(readAs<float>(field));
    case SQL_DOUBLE:
    case SQL_D_FLOAT:
        return readAs<double>(field);
    case SQL_TYPE_DATE:
        return dateOf(readAs<ISC_DATE>(field));
    case SQL_TYPE_TIME:
        return timeOf(readAs<ISC_TIME>(field));
    case SQL_TIMESTAMP:
        return QDateTime(dateOf(readAs<ISC_TIMESTAMP>(field).timestamp_date),
                         timeOf(readAs<ISC_TIMESTAMP>(field).timestamp_time));
    case SQL_BLOB: {
        const QByteArray content = readBlob(readAs<ISC_QUAD>(field), attachment, transaction);
        return isTextBlob(field) ? QVariant(QString::fromUtf8(content)) : QVariant(content);
    }
    case SQL_BOOLEAN:
        return *field.sqldata != 0;
    default:
        throw DatabaseError(u"column type %1 is not known"_s.arg(field.sqltype));
    }
}

bool Descriptor::hasTextBlobs() const
{
    for (int i = 0; i < size(); ++i) {
        if (isTextBlob(area_->sqlvar[i]))
            return true;
    }
    return false;
}

QVariant Descriptor::valueUnread(int index, Attachment &attachment, NativeTransaction &transaction) const
{
    const XSQLVAR &field = area_->sqlvar[index];
    const bool isNull = (field.sqltype & 1) && *field.sqlind < 0;
    return isTextBlob(field) && !isNull ? QVariant::fromValue(readAs<ISC_QUAD>(field))
                                        : value(index, attachment, transaction);
}

void Descriptor::bind(const QVariantList &values, Attachment &attachment, NativeTransaction &transaction)
{
    if (values.size() != size())
        throw DatabaseError(u"%1 values for %2 parameters"_s.arg(values.size()).arg(size()));
    for (int i = 0; i < size(); ++i)
        bindOne(i, values[i], attachment, transaction);
}

void Descriptor::bindOne(int index, const QVariant &value, Attachment &attachment, NativeTransaction &transaction)
{
    const Described &described = described_[static_cast<size_t>(index)];
    const short type = baseType(described.type);
    if (isMissing(value, described.type & 1)) {
        put(index, type, QByteArray(described.length + static_cast<qsizetype>(sizeof(short)), '\0'), described.scale);
        area_->sqlvar[index].sqllen = described.length;
        nulls_[static_cast<size_t>(index)] = -1;
        return;
    }
    if (isWholeNumber(type) && isFraction(value))
        return put(index, SQL_INT64, bytesOf(unitsOf(value.toDouble(), described.scale)), described.scale);
    if (isWholeNumber(type) && isNumeric(value))
        return put(index, SQL_INT64, bytesOf(value.toLongLong()));
    if (isRealNumber(type) && isNumeric(value))
        return put(index, SQL_DOUBLE, bytesOf(value.toDouble()));
    if (type == SQL_TYPE_DATE && value.metaType().id() == QMetaType::QDate)
        return put(index, SQL_TYPE_DATE, bytesOf(daysOf(value.toDate())));
    if (type == SQL_TYPE_TIME && value.metaType().id() == QMetaType::QTime)
        return put(index, SQL_TYPE_TIME, bytesOf(fractionsOf(value.toTime())));
    if (type == SQL_BLOB && value.metaType() == QMetaType::fromType<ISC_QUAD>())
        return put(index, SQL_BLOB, bytesOf(value.value<ISC_QUAD>()));
    if (type == SQL_TIMESTAMP && value.metaType().id() == QMetaType::QDateTime)
        return put(index, SQL_TIMESTAMP,
                   bytesOf(ISC_TIMESTAMP{daysOf(value.toDateTime().date()), fractionsOf(value.toDateTime().time())}));
    if (type == SQL_BLOB && value.metaType().id() == QMetaType::QByteArray)
        return put(index, SQL_BLOB, bytesOf(writeBlob(value.toByteArray(), attachment, transaction)));
    const QByteArray text = value.toString().toUtf8();
    if (type == SQL_BLOB && text.size() > longestText)
        return put(index, SQL_BLOB, bytesOf(writeBlob(text, attachment, transaction)));
    if (text.size() > longestText)
        throw DatabaseError(u"string right truncation"_s);
    put(index, SQL_VARYING, bytesOf(static_cast<short>(text.size())) + text);
    area_->sqlvar[index].sqllen = static_cast<ISC_SHORT>(text.size());
}

void Descriptor::put(int index, short type, const QByteArray &bytes, short scale)
{
    const auto place = static_cast<size_t>(index);
    XSQLVAR &field = area_->sqlvar[index];
    room_[place] = bytes;
    nulls_[place] = 0;
    field.sqltype = static_cast<ISC_SHORT>(type | 1);
    field.sqlscale = scale;
    field.sqllen = static_cast<ISC_SHORT>(bytes.size());
    field.sqldata = room_[place].data();
}

} // namespace data::firebird

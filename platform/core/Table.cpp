#include "platform/core/Table.h"

#include "platform/core/Format.h"

#include <QDate>
#include <QTime>

using namespace Qt::StringLiterals;

namespace core {

namespace {

bool isInteger(const QVariant &value)
{
    const int type = value.metaType().id();
    return type == QMetaType::Int || type == QMetaType::LongLong;
}

} // namespace

int placesOf(const QVariant &value, const TableColumn &column)
{
    return isInteger(value) ? 0 : column.places;
}

bool isNumber(const QVariant &value)
{
    return isInteger(value) || value.metaType().id() == QMetaType::Double;
}

QString plainText(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Bool:
        return value.toBool() ? u"Sì"_s : u"No"_s;
    case QMetaType::QDate:
        return formatDate(value.toDate());
    case QMetaType::QTime:
        return value.toTime().toString(u"HH:mm:ss"_s);
    default:
        return value.toString();
    }
}

} // namespace core

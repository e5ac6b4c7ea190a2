#include "platform/data/ConnectionString.h"

#include "platform/core/Error.h"
#include "platform/core/Translation.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace data {

QString DatabaseAddress::toString() const
{
    if (isEmbedded())
        return file;
    return host + (port > 0 ? u"/%1"_s.arg(port) : QString()) + u':' + file;
}

DatabaseAddress DatabaseAddress::parse(const QString &text)
{
    static const QRegularExpression remote(u"^([^/\\\\:]+)(?:/(\\d+))?:(.+)$"_s);
    const auto match = remote.match(text.trimmed());
    DatabaseAddress address;
    if (!match.hasMatch()) {
        address.file = text.trimmed();
        return address;
    }
    address.host = match.captured(1);
    address.port = match.captured(2).toInt();
    address.file = match.captured(3);
    return address;
}

QMap<QString, QString> parseConnectionString(const QString &text)
{
    static const QRegularExpression pair(
        u"\\s*([^=;]+?)\\s*=\\s*(?:\"((?:[^\"]|\"\")*)\"|'((?:[^']|'')*)'|([^;]*))\\s*(?:;|$)"_s);
    QMap<QString, QString> values;
    for (auto it = pair.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        QString value = match.captured(4).trimmed();
        if (match.hasCaptured(2))
            value = match.captured(2).replace(u"\"\""_s, u"\""_s);
        else if (match.hasCaptured(3))
            value = match.captured(3).replace(u"''"_s, u"'"_s);
        values.insert(match.captured(1).toLower(), value);
    }
    return values;
}

QString nativeConnectionString(const DatabaseAddress &address)
{
    const auto quoted = [](QString value) { return u'"' + value.replace(u"\""_s, u"\"\""_s) + u'"'; };
    QString text = u"Provider=Firebird;Data Source="_s + quoted(address.file) + u";User ID="_s + quoted(address.user) +
                   u";Password="_s + quoted(address.password) + u";Character Set=UTF8;"_s;
    if (!address.isEmbedded())
        text += u"Server="_s + quoted(address.host) + u";Port="_s + QString::number(address.port) + u';';
    return text;
}

DriverSettings driverSettings(const QString &connectionString)
{
    const auto values = parseConnectionString(connectionString);
    const QString provider = values.value(u"provider"_s);
    DriverSettings settings;
    settings.address.user = values.value(u"user id"_s);
    settings.address.password = values.value(u"password"_s);
    if (provider.compare(u"MSDASQL.1"_s, Qt::CaseInsensitive) == 0) {
        settings.isOdbc = true;
        settings.dataSourceName = values.value(u"data source"_s);
    } else if (provider.compare(u"Firebird"_s, Qt::CaseInsensitive) == 0) {
        settings.address.host = values.value(u"server"_s);
        settings.address.port = values.value(u"port"_s).toInt();
        settings.address.file = values.value(u"data source"_s);
    } else {
        throw core::Error(core::tr("Provider di database sconosciuto: \"%1\".").arg(provider));
    }
    return settings;
}

} // namespace data

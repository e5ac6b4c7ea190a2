#include "platform/core/ZipFile.h"

#include "platform/core/Error.h"
#include "platform/core/Translation.h"

#include <QDataStream>
#include <QIODevice>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr quint16 zipVersion = 20;
constexpr quint16 deflated = 8;
constexpr quint16 firstDay = 0x21; // 1980-01-01; the same list always gives the same file

constexpr std::array<quint32, 256> checksumTable = [] {
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        quint32 value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? 0xEDB88320U ^ (value >> 1) : value >> 1;
        table[byte] = value;
    }
    return table;
}();

quint32 checksum(const QByteArray &content)
{
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : content)
        sum = checksumTable[(sum ^ static_cast<quint8>(byte)) & 0xFFU] ^ (sum >> 8);
    return ~sum;
}

// Without the length that Qt puts before it and the frame of the format that is not zip's.
QByteArray deflate(const QByteArray &content)
{
    constexpr qsizetype head = 4 + 2;
    constexpr qsizetype tail = 4;
    const QByteArray compressed = qCompress(content);
    return compressed.mid(head, compressed.size() - head - tail);
}

template <typename... Values>
void append(QByteArray &bytes, Values... values)
{
    QDataStream stream(&bytes, QIODevice::Append);
    stream.setByteOrder(QDataStream::LittleEndian);
    (stream << ... << values);
}

} // namespace

void ZipFile::add(const QByteArray &name, const QByteArray &content)
{
    const QByteArray packed = deflate(content);
    constexpr qint64 largest = std::numeric_limits<quint32>::max();
    if (content.size() > largest || members_.size() + packed.size() + name.size() > largest / 2)
        throw Error(core::tr("L'elenco è troppo grande per un file di Excel. Esportare in CSV."));
    const auto offset = static_cast<quint32>(members_.size());
    const auto nameSize = static_cast<quint16>(name.size());
    QByteArray facts;
    append(facts, zipVersion, quint16{0}, deflated, quint16{0}, firstDay, checksum(content),
           static_cast<quint32>(packed.size()), static_cast<quint32>(content.size()), nameSize, quint16{0});
    append(members_, quint32{0x04034B50});
    members_ += facts + name + packed;
    append(directory_, quint32{0x02014B50}, zipVersion);
    directory_ += facts;
    // No comment, first disk, no attributes.
    append(directory_, quint16{0}, quint16{0}, quint16{0}, quint32{0}, offset);
    directory_ += name;
    ++count_;
}

QByteArray ZipFile::finished()
{
    const auto offset = static_cast<quint32>(members_.size());
    members_ += directory_;
    append(members_, quint32{0x06054B50}, quint16{0}, quint16{0}, count_, count_,
           static_cast<quint32>(directory_.size()), offset, quint16{0});
    return std::move(members_);
}

} // namespace core

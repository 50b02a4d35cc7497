#include "files/ReadReport.h"

#include <QDataStream>
#include <QIODevice>

namespace files
{

namespace
{

constexpr quint32 mark = 0x7a6e7231; // tells a report of this layout
constexpr quint32 mostWarnings = 1000;

void setLayout(QDataStream& stream)
{
    stream.setVersion(QDataStream::Qt_5_15);
}

QDataStream& operator<<(QDataStream& stream, const Note& note)
{
    return stream << note.message << note.file << note.place;
}

QDataStream& operator>>(QDataStream& stream, Note& note)
{
    return stream >> note.message >> note.file >> note.place;
}

void readError(QDataStream& stream, std::optional<Error>& error)
{
    bool hasError = false;
    stream >> hasError;
    if (!hasError)
        return;
    error.emplace();
    qint32 code = 0;
    stream >> static_cast<Note&>(*error) >> code;
    if (code < 0 || code > static_cast<qint32>(ErrorCode::Last))
        stream.setStatus(QDataStream::ReadCorruptData);
    error->code = static_cast<ErrorCode>(code);
}

void readWarnings(QDataStream& stream, std::vector<Note>& warnings)
{
    quint32 count = 0;
    stream >> count;
    if (count > mostWarnings)
        stream.setStatus(QDataStream::ReadCorruptData);
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        warnings.emplace_back();
        stream >> warnings.back();
    }
}

} // namespace

QByteArray ReadReport::toBytes() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    setLayout(stream);
    stream << mark << error.has_value();
    if (error)
        stream << static_cast<const Note&>(*error) << static_cast<qint32>(error->code);
    stream << static_cast<quint32>(warnings.size());
    for (const Note& warning : warnings)
        stream << warning;
    return bytes;
}

std::optional<ReadReport> ReadReport::fromBytes(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    setLayout(stream);
    quint32 found = 0;
    stream >> found;
    if (found != mark)
        return std::nullopt;
    ReadReport report;
    readError(stream, report.error);
    readWarnings(stream, report.warnings);
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return std::nullopt;
    return report;
}

} // namespace files

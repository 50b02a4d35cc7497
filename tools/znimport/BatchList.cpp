#include "tools/znimport/BatchList.h"

#include <QStringList>
#include <QUrl>

namespace znimport
{

namespace
{

constexpr int fields = 5;

/// Names may hold tabs and ends of lines.
QByteArray written(const QString& name)
{
    return QUrl::toPercentEncoding(name, " /");
}

std::optional<BatchEnd> endOf(const QByteArray& line)
{
    const QList<QByteArray> words = line.split('\t');
    if (!line.endsWith('\n') || words.size() != fields)
        return std::nullopt;
    BatchEnd end;
    bool isNumber = false;
    end.exitCode = words[0].toInt(&isNumber);
    end.seconds = words[1].toDouble();
    end.bytes = words[2].toLongLong();
    end.stamp = QString::fromLatin1(words[3]);
    end.name = QUrl::fromPercentEncoding(words[4].trimmed());
    return isNumber ? std::optional(end) : std::nullopt;
}

} // namespace

BatchList::BatchList(const QString& path) : m_file(path)
{
    if (!m_file.open(QIODevice::ReadWrite))
        return;
    bool isWhole = true;
    while (!m_file.atEnd()) {
        const QByteArray line = m_file.readLine();
        isWhole = line.endsWith('\n');
        if (const auto end = endOf(line))
            m_ends.insert(end->name, *end);
    }
    if (!isWhole)
        m_file.write("\n");
}

std::optional<QString> BatchList::error() const
{
    if (m_file.isOpen() && m_failure.isEmpty())
        return std::nullopt;
    return QStringLiteral("%1 cannot be written: %2")
        .arg(m_file.fileName(), m_failure.isEmpty() ? m_file.errorString() : m_failure);
}

const BatchEnd* BatchList::find(const QString& name) const
{
    const auto found = m_ends.constFind(name);
    return found == m_ends.constEnd() ? nullptr : &*found;
}

void BatchList::add(const BatchEnd& end)
{
    m_ends.insert(end.name, end);
    m_file.write(QByteArray::number(end.exitCode) + '\t' + QByteArray::number(end.seconds, 'f', 2) + '\t' +
                 QByteArray::number(end.bytes) + '\t' + end.stamp.toLatin1() + '\t' + written(end.name) + '\n');
    if (!m_file.flush() && m_failure.isEmpty())
        m_failure = m_file.errorString();
}

} // namespace znimport

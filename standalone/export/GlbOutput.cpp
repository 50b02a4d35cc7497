#include "standalone/export/GlbOutput.h"

#include "standalone/export/GlbFailure.h"

#include <QFileInfo>
#include <QtEndian>

namespace glb
{

GlbOutput::GlbOutput(const QString& target) : m_file(target)
{
    // A pipe or a device would be replaced by a file.
    const QFileInfo info(target);
    if (info.exists() && !info.isFile())
        throw WriteFailure(WriteErrorCode::CannotCreate, tr("the target is no regular file"));
    if (!m_file.open(QIODevice::WriteOnly))
        throw WriteFailure(WriteErrorCode::CannotCreate, m_file.errorString());
}

void GlbOutput::write(const void* data, std::uint64_t size)
{
    // What a full disk takes of a block is no error yet; what it refuses of the rest is.
    const char* bytes = static_cast<const char*>(data);
    for (std::uint64_t left = size; left > 0;) {
        const qint64 taken = m_file.write(bytes, static_cast<qint64>(left));
        if (taken <= 0)
            throw WriteFailure(WriteErrorCode::WriteFailed, m_file.errorString());
        bytes += taken;
        left -= static_cast<std::uint64_t>(taken);
    }
    m_position += size;
}

void GlbOutput::writeNumber(std::uint32_t number)
{
    const std::uint32_t bytes = qToLittleEndian(number);
    write(&bytes, sizeof(bytes));
}

void GlbOutput::pad(char filler)
{
    while (m_position % 4 != 0)
        write(&filler, 1);
}

void GlbOutput::commit()
{
    // A commit forgets why it could not write the rest.
    if (!m_file.flush() || !m_file.commit())
        throw WriteFailure(WriteErrorCode::WriteFailed, m_file.errorString());
}

} // namespace glb

#include "files/FileBytes.h"

#include <QFile>
#include <QFileInfo>

namespace files
{

FileBytes readFile(ReadTask& task, const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        task.failIn(path, ErrorCode::NotFound, tr("the file does not exist"));
    if (!info.isFile())
        task.failIn(path, ErrorCode::NotRegular, tr("this is no regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        task.failIn(path, ErrorCode::NotReadable, file.errorString());
    const auto size = static_cast<std::uint64_t>(file.size());
    task.countFileBytes(path, size);
    auto bytes = std::make_shared_for_overwrite<std::byte[]>(size);
    if (file.read(reinterpret_cast<char*>(bytes.get()), static_cast<qint64>(size)) != static_cast<qint64>(size))
        task.failIn(path, ErrorCode::ReadFailed, file.errorString());
    return {std::move(bytes), static_cast<std::size_t>(size)};
}

} // namespace files

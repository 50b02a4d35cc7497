#include "files/scenefile/SceneBytes.h"

#include "files/scenefile/SceneErrors.h"
#include "files/scenefile/SceneFormat.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <new>

namespace osg::scenefile
{

namespace
{

constexpr std::align_val_t alignment{chunkAlignment};

std::shared_ptr<std::byte> alignedBlock(std::size_t size)
{
    auto* block = static_cast<std::byte*>(::operator new(std::max<std::size_t>(size, 1), alignment));
    return {block, [](std::byte* memory) { ::operator delete(memory, alignment); }};
}

files::Expected<SceneBytes> mapped(const std::shared_ptr<QFile>& file, std::size_t size)
{
    const uchar* memory = file->map(0, static_cast<qint64>(size));
    if (!memory)
        return makeError(files::ErrorCode::ReadFailed, file->errorString());
    // The map outlives the descriptor, and goes with the object.
    file->close();
    return SceneBytes{file, {reinterpret_cast<const std::byte*>(memory), size}};
}

files::Expected<SceneBytes> readWhole(QFile& file, std::size_t size)
{
    const std::shared_ptr<std::byte> block = alignedBlock(size);
    std::size_t done = 0;
    while (done < size) {
        const qint64 got = file.read(reinterpret_cast<char*>(block.get()) + done, static_cast<qint64>(size - done));
        if (got < 0)
            return makeError(files::ErrorCode::ReadFailed, file.errorString(), done);
        if (got == 0)
            return makeError(files::ErrorCode::Truncated, Text::tr("The file ends early"), done);
        done += static_cast<std::size_t>(got);
    }
    return SceneBytes{block, {block.get(), size}};
}

} // namespace

SceneBytes copyBytes(std::span<const std::byte> bytes)
{
    const std::shared_ptr<std::byte> block = alignedBlock(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    return {block, {block.get(), bytes.size()}};
}

files::Expected<SceneBytes> openBytes(const QString& path, const SceneFileReadOptions& options)
{
    if (path.isEmpty())
        return makeError(files::ErrorCode::NotFound, Text::tr("The file has no name"));
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return makeError(files::ErrorCode::NotRegular, Text::tr("This is not a regular file"));
    const auto file = std::make_shared<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return makeError(files::ErrorCode::NotFound, file->errorString());
    const auto size = static_cast<std::uint64_t>(file->size());
    if (size > options.maxFileBytes)
        return makeError(files::ErrorCode::LimitExceeded, Text::tr("The file is larger than the limit allows"));
    if (size < sizeof(FileHeader))
        return makeError(files::ErrorCode::NotASceneFile, Text::tr("The file is too short for a scene file"));
    return options.copyIntoMemory || size < leastMappedBytes ? readWhole(*file, size) : mapped(file, size);
}

} // namespace osg::scenefile

#pragma once

#include "files/scenefile/ChunkFile.h"
#include "scene/Buffer.h"

#include <scene_generated.h>

#include <optional>

namespace osg::scenefile
{

/// Takes arrays that a graph names, without a copy, and remembers whether all of them lie where they may.
class ArrayReader
{
public:
    explicit ArrayReader(const ChunkFile& file) : m_file(file) {}

    /// Leaves `target` as it is when there is no such array, or when it does not lie within a chunk of `type`.
    template <class T>
    void read(const sceneformat::Array* array, ChunkType type, Buffer<T>& target)
    {
        if (!array)
            return;
        const auto place = placeOf(*array, type, sizeof(T), alignof(T));
        if (!place)
            m_sound = false;
        else
            target = Buffer<T>(m_file.data().owner, reinterpret_cast<const T*>(*place), array->count());
    }

    bool isSound() const { return m_sound; }

private:
    std::optional<const std::byte*> placeOf(const sceneformat::Array& array, ChunkType type, std::size_t size,
                                            std::size_t alignment) const
    {
        if (array.chunk() >= m_file.chunks().size())
            return std::nullopt;
        const ChunkEntry& chunk = m_file.chunks()[array.chunk()];
        if (chunk.type != type || array.offset() % alignment != 0 || array.offset() > chunk.size ||
            array.count() > (chunk.size - array.offset()) / size)
            return std::nullopt;
        return m_file.content(chunk).data() + array.offset();
    }

    const ChunkFile& m_file;
    bool m_sound = true;
};

} // namespace osg::scenefile

#pragma once

#include "files/OutputFile.h"
#include "files/glb/GlbJson.h"
#include "scene/Mesh.h"
#include "scene/Tangents.h"

#include <functional>
#include <map>
#include <optional>
#include <tuple>

namespace files::glb
{

/// The arrays of a file: the accessors and buffer views that tell where they will stand, and the stream of their bytes.
/// Each array is planned once and converted when it is written, block by block; none is copied.
class GlbArrays
{
public:
    /// The number of the accessor of an array. Asked again for the same array, it is the same, but for tangents;
    /// positions have one for each scale that they are multiplied with.
    std::size_t positions(const osg::Buffer<osg::Vec3f>& array, double scale = 1);
    std::size_t normals(const osg::Buffer<osg::Vec3f>& array);
    std::size_t texCoords(const osg::Buffer<osg::Vec2f>& array);
    std::size_t tangents(const osg::Buffer<osg::Tangent>& array);
    std::size_t colors(const osg::Buffer<osg::Color4f>& array);
    /// `vertices` is the length of the arrays that the indices count in.
    std::size_t indices(const osg::Buffer<std::uint32_t>& array, std::size_t vertices);

    const JsonList& accessors() const { return m_accessors; }
    const JsonList& views() const { return m_views; }
    /// The bytes of all arrays, each filled up to a multiple of four.
    std::uint64_t size() const { return m_size; }
    void write(files::OutputFile& output) const;
    /// What `write` would write.
    std::vector<std::byte> bytes() const;

private:
    enum class Use { Positions, Normals, Tangents, TexCoords, Colors, ShortIndices, Indices };

    /// Writes the elements from the first one on to memory.
    using Fill = std::function<void(std::size_t first, std::size_t count, std::byte* target)>;

    struct Part {
        std::size_t count = 0;
        std::size_t elementSize = 0;
        Fill fill;
    };

    /// The accessor that `array` has in this use.
    template <class T>
    std::optional<std::size_t> known(const osg::Buffer<T>& array, Use use, double scale = 1) const;
    template <class T, class Element, class Convert>
    std::size_t plan(const osg::Buffer<T>& array, Use use, Json accessor, const Convert& convert, double scale = 1);

    std::map<std::tuple<const void*, std::size_t, Use, double>, std::size_t> m_known;
    std::vector<Part> m_parts;
    JsonList m_accessors;
    JsonList m_views;
    std::uint64_t m_size = 0;
};

} // namespace files::glb

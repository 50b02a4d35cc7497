#pragma once

#include "files/gltf/GltfDocument.h"
#include "scene/Mesh.h"

#include <map>

namespace files::gltf
{

/// The numbers that accessors stand for. Each is read once; arrays that lie in the file as they are needed are used
/// where they are, when most of the file is such data. Everything fails through the task, with the place of the
/// accessor, when an accessor is not what is asked for or reaches outside its buffer.
class GltfAccessors
{
public:
    /// `document` and `task` outlive this object.
    GltfAccessors(const GltfDocument& document, ReadTask& task);

    /// Positions or normals.
    osg::Buffer<osg::Vec3f> vectors(int accessor);
    /// From the lower left corner of the picture.
    osg::Buffer<osg::Vec2f> texCoords(int accessor);
    /// Display colours.
    osg::Buffer<osg::Color4f> colors(int accessor);
    osg::Buffer<std::uint32_t> indices(int accessor);
    /// Unit quaternions; what has no direction turns nothing.
    std::vector<osg::Quaternion> rotations(int accessor);
    /// The number of elements, without reading them.
    std::size_t count(int accessor) const;

    /// "/accessors/3"
    static QString place(int accessor);

private:
    struct Elements; ///< where the elements of an accessor lie

    const tinygltf::Accessor& checked(int accessor) const;
    const tinygltf::Accessor& checked(int accessor, std::initializer_list<int> types) const;
    Elements elements(int accessor) const;
    Elements within(int view, std::size_t offset, std::size_t count, int componentType, int components,
                    const QString& place) const;
    template <class T>
    bool isUsable(const Elements& elements) const;
    template <class T, class Convert>
    osg::Buffer<T> read(int accessor, const Convert& convert) const;
    void takeMemory(int accessor, const Elements& elements, std::size_t size) const;
    template <class Visitor>
    void visitSparse(int accessor, int components, const Visitor& visit) const;

    const GltfDocument& m_document;
    ReadTask& m_task;
    mutable std::size_t m_withoutBytes = 0; ///< elements that no byte of the file stands for
    std::vector<bool> m_keepBuffer;         ///< whether a buffer is worth being kept for the arrays in it
    std::map<int, osg::Buffer<osg::Vec3f>> m_vectors;
    std::map<int, osg::Buffer<osg::Vec2f>> m_texCoords;
    std::map<int, osg::Buffer<osg::Color4f>> m_colors;
    std::map<int, osg::Buffer<std::uint32_t>> m_indices;
};

} // namespace files::gltf

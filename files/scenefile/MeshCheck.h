#pragma once

#include "scene/Mesh.h"

#include <QString>

#include <map>
#include <optional>
#include <tuple>

namespace osg::scenefile
{

/// Holds meshes against the promises of `osg::Mesh`. An array that several meshes share is read once.
class MeshCheck
{
public:
    /// `byteBudget` bounds what is read: arrays that do not overlap cannot exceed the file they lie in.
    explicit MeshCheck(std::uint64_t byteBudget) : m_budget(byteBudget) {}

    /// What is wrong with `mesh`; none if it is sound.
    std::optional<QString> defect(const Mesh& mesh);

private:
    /// Start, length and size of an element.
    using Range = std::tuple<const void*, std::size_t, std::size_t>;

    std::optional<QString> indexDefect(const Buffer<std::uint32_t>& indices, std::size_t perElement,
                                       std::size_t vertices);
    std::optional<QString> faceDefect(const Buffer<FaceRange>& faces, std::size_t triangles);
    /// Runs `scan` unless the array was scanned before; none when the budget is spent.
    template <class T, class Scan>
    std::optional<std::uint64_t> scanned(const Buffer<T>& array, const Scan& scan);

    std::map<Range, std::uint64_t> m_results;
    std::uint64_t m_budget;
};

} // namespace osg::scenefile

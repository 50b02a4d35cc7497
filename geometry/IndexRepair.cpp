#include "geometry/IndexRepair.h"

#include "geometry/TriangleFilter.h"

#include <QCoreApplication>

#include <algorithm>

namespace geometry
{

namespace
{

bool areKnown(const std::uint32_t* indices, std::size_t count, std::size_t vertices)
{
    return std::all_of(indices, indices + count, [vertices](std::uint32_t index) { return index < vertices; });
}

bool areElements(const osg::Buffer<std::uint32_t>& indices, std::size_t perElement, std::size_t vertices)
{
    return indices.size() % perElement == 0 && areKnown(indices.data(), indices.size(), vertices);
}

bool doFacesFit(const osg::Mesh& mesh)
{
    return mesh.faces.empty() || coversAll(mesh.faces, mesh.triangles.size() / 3);
}

template <class T>
bool doesFit(const osg::Buffer<T>& values, std::size_t vertices)
{
    return values.empty() || values.size() == vertices;
}

class Repair
{
    Q_DECLARE_TR_FUNCTIONS(IndexRepair)

public:
    explicit Repair(const osg::Mesh& mesh) : m_result{mesh, {}}, m_vertices(mesh.positions.size()) {}

    Repaired run()
    {
        repairTriangles();
        repairElements(m_result.mesh.lines, 2, tr("lines"));
        repairElements(m_result.mesh.points, 1, tr("points"));
        fit(m_result.mesh.normals, tr("normals"));
        fit(m_result.mesh.texCoords, tr("texture coordinates"));
        fit(m_result.mesh.texCoords1, tr("texture coordinates"));
        fit(m_result.mesh.colors, tr("colors"));
        fit(m_result.mesh.occlusion, tr("occlusion values"));
        return std::move(m_result);
    }

private:
    void tellLost(std::size_t before, std::size_t after, std::size_t perElement, const QString& what)
    {
        const std::size_t elements = (before + perElement - 1) / perElement - after / perElement;
        m_result.changes << tr("%1 %2 without vertices were removed").arg(static_cast<qulonglong>(elements)).arg(what);
    }

    void repairTriangles()
    {
        osg::Mesh& mesh = m_result.mesh;
        if (!doFacesFit(mesh)) {
            mesh.faces = {};
            m_result.changes << tr("the faces did not cover the triangles and were removed");
        }
        const std::size_t before = mesh.triangles.size();
        if (areElements(mesh.triangles, 3, m_vertices))
            return;
        FilteredTriangles kept =
            filteredTriangles(mesh, [this](const std::uint32_t* c) { return areKnown(c, 3, m_vertices); });
        tellLost(before, kept.triangles.size(), 3, tr("triangles"));
        mesh.triangles = std::move(kept.triangles);
        mesh.faces = std::move(kept.faces);
    }

    void repairElements(osg::Buffer<std::uint32_t>& indices, std::size_t perElement, const QString& what)
    {
        if (areElements(indices, perElement, m_vertices))
            return;
        std::vector<std::uint32_t> kept;
        for (std::size_t i = 0; i + perElement <= indices.size(); i += perElement)
            if (areKnown(indices.data() + i, perElement, m_vertices))
                kept.insert(kept.end(), indices.data() + i, indices.data() + i + perElement);
        tellLost(indices.size(), kept.size(), perElement, what);
        indices = std::move(kept);
    }

    template <class T>
    void fit(osg::Buffer<T>& values, const QString& what)
    {
        if (doesFit(values, m_vertices))
            return;
        if (values.size() < m_vertices) {
            values = {};
            m_result.changes << tr("there were too few %1, and they were removed").arg(what);
            return;
        }
        values = std::vector<T>(values.begin(), values.begin() + m_vertices);
        m_result.changes << tr("%1 without vertices were removed").arg(what);
    }

    Repaired m_result;
    std::size_t m_vertices;
};

} // namespace

bool isSound(const osg::Mesh& mesh)
{
    const std::size_t vertices = mesh.positions.size();
    return doFacesFit(mesh) && areElements(mesh.triangles, 3, vertices) && areElements(mesh.lines, 2, vertices) &&
           areElements(mesh.points, 1, vertices) && doesFit(mesh.normals, vertices) &&
           doesFit(mesh.texCoords, vertices) && doesFit(mesh.texCoords1, vertices) && doesFit(mesh.colors, vertices) &&
           doesFit(mesh.occlusion, vertices);
}

Repaired repaired(const osg::Mesh& mesh)
{
    return Repair(mesh).run();
}

} // namespace geometry

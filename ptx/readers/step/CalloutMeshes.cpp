#include "ptx/readers/step/CalloutMeshes.h"

#include "files/scenefile/AttributeTags.h"
#include "ptx/model/MeshBuilder.h"
#include "ptx/readers/step/MeshPoints.h"

#include <algorithm>
#include <cmath>

namespace ptx::step
{

namespace
{

using annotations::Strokes;

constexpr std::uint32_t NotUsed = static_cast<std::uint32_t>(-1);

osg::Vec3f operator-(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

osg::Vec3f cross(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

osg::Vec3f unit(const osg::Vec3f& vector)
{
    const float length = std::hypot(vector.x, vector.y, vector.z);
    return length > 0 ? osg::Vec3f{vector.x / length, vector.y / length, vector.z / length} : osg::Vec3f{0, 0, 1};
}

/// The meshes of strokes of one colour.
class StrokeMesher
{
public:
    StrokeMesher(const Strokes& strokes, double millimetres) : m_strokes(strokes)
    {
        for (const annotations::Point& point : strokes.points)
            m_points.push_back(inMillimetres(point, millimetres));
    }

    std::shared_ptr<const osg::Mesh> lines()
    {
        m_numbers.assign(m_points.size(), NotUsed);
        for (std::size_t i = 0; i + 1 < m_strokes.lines.size(); i += 2) {
            const std::uint32_t* ends = &m_strokes.lines[i];
            if (!isThere(ends[0]) || !isThere(ends[1]))
                continue;
            const std::uint32_t first = vertex(ends[0]);
            m_builder.addLine(first, vertex(ends[1]));
        }
        return take();
    }

    std::shared_ptr<const osg::Mesh> triangles()
    {
        m_numbers.assign(m_points.size(), NotUsed);
        findNormals();
        for (std::size_t i = 0; i + 2 < m_strokes.triangles.size(); i += 3) {
            const std::uint32_t* corners = &m_strokes.triangles[i];
            if (!std::all_of(corners, corners + 3, [this](std::uint32_t corner) { return isThere(corner); }))
                continue;
            const std::uint32_t first = vertex(corners[0]);
            const std::uint32_t second = vertex(corners[1]);
            m_builder.addTriangle(first, second, vertex(corners[2]));
        }
        m_builder.endFace();
        return take();
    }

private:
    // What is drawn lies in a plane mostly; the file's own normals are rubbish now and then.
    void findNormals()
    {
        m_normals.assign(m_points.size(), {});
        for (std::size_t i = 0; i + 2 < m_strokes.triangles.size(); i += 3) {
            const std::uint32_t* corners = &m_strokes.triangles[i];
            const osg::Vec3f normal =
                cross(m_points[corners[1]] - m_points[corners[0]], m_points[corners[2]] - m_points[corners[0]]);
            for (int k = 0; k < 3; ++k) {
                osg::Vec3f& sum = m_normals[corners[k]];
                sum = {sum.x + normal.x, sum.y + normal.y, sum.z + normal.z};
            }
        }
    }

    bool isThere(std::uint32_t number) const { return isInRange(m_points[number]); }

    std::uint32_t vertex(std::uint32_t number)
    {
        std::uint32_t& vertex = m_numbers[number];
        if (vertex == NotUsed)
            vertex = m_normals.empty() ? m_builder.addVertex(m_points[number])
                                       : m_builder.addVertex(m_points[number], unit(m_normals[number]));
        return vertex;
    }

    std::shared_ptr<const osg::Mesh> take() { return m_builder.isEmpty() ? nullptr : m_builder.take(); }

    const Strokes& m_strokes;
    std::vector<osg::Vec3f> m_points;
    std::vector<osg::Vec3f> m_normals;
    std::vector<std::uint32_t> m_numbers; ///< of vertices, by point
    model::MeshBuilder m_builder;
};

std::string textTag(const char* name, const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : "\n") + text;
    return osg::scenefile::converted::attributeTag({name, all});
}

/// The second of its kind is "Value 2", with "Lower deviation 2", and so on.
void addMeasure(const char* name, std::size_t number, const annotations::Measure& measure,
                std::vector<std::string>& tags)
{
    const std::string numbered = number < 2 ? name : std::string(name) + " " + std::to_string(number);
    if (measure.number)
        tags.push_back(osg::scenefile::converted::attributeTag({numbered, *measure.number, measure.unit}));
}

void addMeanings(const std::vector<annotations::Meaning>& meanings, std::vector<std::string>& tags)
{
    namespace converted = osg::scenefile::converted;
    std::vector<std::string> whats, datums;
    std::size_t tolerances = 0, dimensions = 0;
    for (const annotations::Meaning& meaning : meanings) {
        whats.push_back(meaning.what);
        if (!meaning.datums.empty())
            datums.push_back(meaning.datums);
        if (!meaning.value.number)
            continue;
        if (meaning.what.ends_with("tolerance")) {
            addMeasure(converted::ToleranceName, ++tolerances, meaning.value, tags);
            continue;
        }
        addMeasure(converted::ValueName, ++dimensions, meaning.value, tags);
        addMeasure(converted::LowerName, dimensions, meaning.lower, tags);
        addMeasure(converted::UpperName, dimensions, meaning.upper, tags);
    }
    if (!whats.empty())
        tags.push_back(textTag(converted::MeaningName, whats));
    if (!datums.empty())
        tags.push_back(textTag(converted::DatumsName, datums));
}

} // namespace

model::Callout calloutWithMeshes(const annotations::Callout& drawn, double millimetres,
                                 model::AppearanceTable& appearances)
{
    model::Callout callout;
    callout.name = drawn.name;
    if (!drawn.kinds.empty())
        callout.tags.push_back(textTag(osg::scenefile::converted::KindName, drawn.kinds));
    if (!drawn.texts.empty())
        callout.tags.push_back(textTag(osg::scenefile::converted::TextName, drawn.texts));
    addMeanings(drawn.meanings, callout.tags);
    for (const Strokes& strokes : drawn.strokes) {
        StrokeMesher mesher(strokes, millimetres);
        for (auto& mesh : {mesher.lines(), mesher.triangles()})
            if (mesh)
                callout.pieces.push_back({appearances.indexOf(strokes.color), mesh});
    }
    return callout;
}

} // namespace ptx::step

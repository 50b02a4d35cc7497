#include "ptx/readers/jt/shapes/Shape.h"

#include "ptx/readers/jt/shapes/IndexLists.h"
#include "ptx/readers/jt/shapes/TopologicalShape.h"
#include "ptx/readers/jt/shapes/VertexLists.h"

#include <optional>

namespace ptx::jt::shapes
{

namespace
{

constexpr const char* OtherKind =
    "a shape segment holds another kind of shape than strips, polylines, points and polygons";

struct KindRow {
    const char* guid;
    ShapeKind kind;
};

constexpr std::array<KindRow, 5> Kinds = {{{"10dd10ab-2ac8-11d1-9b6b-0080c7bb5997", ShapeKind::Strips},
                                           {"10dd10a1-2ac8-11d1-9b6b-0080c7bb5997", ShapeKind::Polylines},
                                           {"98134716-0011-0818-1998-080009835d5a", ShapeKind::Points},
                                           {"10dd109f-2ac8-11d1-9b6b-0080c7bb5997", ShapeKind::Polygons},
                                           {"3e637aed-2a89-41f8-a9fd-553737039682", ShapeKind::Null}}};

// Version 9 has no sets of polygons.
std::optional<ShapeKind> shapeKindOf(const std::string& guid, int major)
{
    for (const KindRow& row : Kinds)
        if (guid == row.guid && (row.kind != ShapeKind::Polygons || major != 9))
            return row.kind;
    return std::nullopt;
}

void readKind(ShapeInput& input, ShapeKind kind, Shape& shape)
{
    if (kind == ShapeKind::Null)
        return;
    if (input.major < 9)
        readVertexLists(input, kind, shape);
    else if (kind == ShapeKind::Strips || kind == ShapeKind::Polygons)
        readTopologicalShape(input, shape);
    else
        readIndexLists(input, kind, shape);
}

/// Whether corners lead to positions and records that are there. Without records they have none.
class CornerCheck
{
public:
    explicit CornerCheck(const Shape& shape) : m_shape(shape) {}

    bool passes(Corner& corner) const
    {
        if (m_shape.records() == 0)
            corner.record = Corner::NoRecord;
        return corner.position < m_shape.positions.size() &&
               (corner.record == Corner::NoRecord || (isIn(m_shape.normals, corner) && isIn(m_shape.colours, corner) &&
                                                      isIn(m_shape.textureCoordinates, corner)));
    }

private:
    template <class T>
    static bool isIn(const std::vector<T>& array, const Corner& corner)
    {
        return array.empty() || corner.record < array.size();
    }

    const Shape& m_shape;
};

bool areCornersThere(Shape& shape)
{
    const CornerCheck check(shape);
    const auto pass = [&](auto& corners) {
        return std::all_of(corners.begin(), corners.end(), [&](Corner& corner) { return check.passes(corner); });
    };
    return std::all_of(shape.triangles.begin(), shape.triangles.end(),
                       [&](Triangle& triangle) { return pass(triangle.corners); }) &&
           std::all_of(shape.lines.begin(), shape.lines.end(), pass) && pass(shape.points);
}

container::Damage readElement(const container::Element& element, int major, Shape& shape)
{
    ShapeInput input(element.data, major);
    if (const std::optional<ShapeKind> kind = shapeKindOf(element.type, major))
        readKind(input, *kind, shape);
    else
        input.in.fail(OtherKind);
    if (input.in.isOk() && !areCornersThere(shape))
        input.in.fail("a shape names a point that is not there");
    shape.hashes = input.hashes;
    return input.in.damage();
}

} // namespace

Shape readShape(const container::Segment& segment, int major, bool isBigEndian)
{
    Shape shape;
    container::Cursor list(segment.data, isBigEndian, segment.offset);
    container::Element element{{}, 0, list};
    if (container::nextElement(list, element))
        shape.damage = readElement(element, major, shape);
    else
        shape.damage = {"a shape segment holds no element", segment.offset};
    if (shape.damage) {
        shape.triangles.clear();
        shape.lines.clear();
        shape.points.clear();
    }
    return shape;
}

} // namespace ptx::jt::shapes

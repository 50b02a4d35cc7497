#include "ptx/readers/step/FacetOwners.h"

#include "ptx/core/Log.h"
#include "ptx/occt/meshing/ShapeQueries.h"
#include "ptx/readers/step/NumberedFacts.h"

#include <XCAFDoc_ShapeTool.hxx>

#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace ptx::step
{

namespace
{

std::size_t trianglesOf(const std::vector<FacetBody>& bodies)
{
    std::size_t count = 0;
    for (const FacetBody& body : bodies)
        for (const FacetPiece& piece : body.pieces)
            count += piece.mesh->triangles.size() / 3;
    return count;
}

bool hasGeometry(const TDF_Label& label)
{
    const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
    return !shape.IsNull() && occt::meshing::hasGeometry(shape);
}

} // namespace

FacetOwners::FacetOwners(const STEPCAFControl_Reader& reader, const facets::Parts& parts,
                         const std::set<std::uint32_t>& exact)
{
    if (parts.parts.empty())
        return;
    const NumberedFacts facts(reader);
    for (const facets::Part& part : parts.parts) {
        const TDF_Label label = facts.labelOf(part.product);
        if (label.IsNull()) {
            ++m_homeless;
            continue;
        }
        if (!m_shapes.IsBound(label))
            m_shapes.Bind(label, {});
        Shape& shape = m_shapes.ChangeFind(label);
        std::vector<FacetPiece> pieces = meshesOf(part, facts.millimetresOf(part.context), m_outOfRange);
        std::move(pieces.begin(), pieces.end(), std::back_inserter(shape.pieces));
        shape.faces += part.faces.size();
        shape.isExact = exact.contains(part.product) && hasGeometry(label);
    }
}

void FacetOwners::addTo(std::size_t number, const TDF_Label& label)
{
    Shape* shape = m_shapes.ChangeSeek(label);
    if (!shape || std::exchange(shape->isTaken, true))
        return;
    if (shape->isExact) {
        ++m_exact;
        return;
    }
    if (shape->pieces.empty())
        return;
    m_faces += shape->faces;
    m_bodies.push_back({number, std::move(shape->pieces)});
}

std::vector<FacetBody> FacetOwners::finish(const facets::Parts& parts, core::Log& log)
{
    const auto counted = [](std::size_t count, const char* what) { return std::to_string(count) + what; };
    if (!m_bodies.empty())
        log.info(counted(m_bodies.size(), " products are tessellated in the file: ") + counted(m_faces, " faces, ") +
                 counted(trianglesOf(m_bodies), " triangles"));
    if (m_exact > 0)
        log.info(counted(m_exact, " products have exact shapes, and their tessellation in the file is left out"));
    for (NCollection_DataMap<TDF_Label, Shape, TDF_LabelMapHasher>::Iterator each(m_shapes); each.More(); each.Next())
        m_homeless += each.Value().isTaken ? 0 : 1;
    if (m_homeless > 0)
        log.warning(counted(m_homeless, " tessellated shapes are left out: their products have no place"));
    if (parts.ofNoProduct > 0)
        log.info(counted(parts.ofNoProduct, " tessellated shapes are left out: they are not those of products"));
    for (const auto& [type, count] : parts.unread)
        log.warning(counted(count, " items of tessellated shapes are left out: ") + type);
    if (parts.counts.outOfRange + m_outOfRange > 0)
        log.warning(counted(parts.counts.outOfRange + m_outOfRange,
                            " triangles of tessellated shapes are left out: their points are nowhere"));
    if (parts.isCut)
        log.warning("the tessellated shapes refer to more points than can be meant; the rest is left out");
    return std::move(m_bodies);
}

void addBodies(model::Model& model, std::vector<FacetBody> bodies)
{
    for (FacetBody& given : bodies) {
        model::Body& body = model.bodies.emplace_back();
        for (FacetPiece& piece : given.pieces)
            body.pieces.push_back({piece.color ? model.appearances.indexOf(*piece.color) : model::NoAppearance,
                                   std::move(piece.mesh), given.views});
        model.products[given.product].body = model.bodies.size() - 1;
    }
}

} // namespace ptx::step

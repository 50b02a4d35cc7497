#pragma once

#include "ptx/model/Model.h"
#include "ptx/readers/step/FacetMeshes.h"

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

class STEPCAFControl_Reader;

namespace ptx::core
{
class Log;
} // namespace ptx::core

namespace ptx::step
{

/// The body of a product that the file holds as triangles.
struct FacetBody {
    std::size_t product = 0; ///< number in the model
    std::vector<FacetPiece> pieces;
    int views = model::AlwaysShown; ///< number of the set of views that show it
};

/// Gives the tessellated shapes of a file to the products that have no exact one.
class FacetOwners
{
public:
    /// After the transfer of `reader`. Those of the product definitions `exact` have exact shapes, which count where
    /// anything has come of them.
    FacetOwners(const STEPCAFControl_Reader& reader, const facets::Parts& parts, const std::set<std::uint32_t>& exact);

    /// Gives the product `number` of the model what belongs to `label`.
    void addTo(std::size_t number, const TDF_Label& label);
    /// The bodies that were given. `log` tells how much there is, and what is left out.
    std::vector<FacetBody> finish(const facets::Parts& parts, core::Log& log);

private:
    struct Shape {
        std::vector<FacetPiece> pieces;
        std::size_t faces = 0;
        bool isExact = false;
        bool isTaken = false;
    };

    NCollection_DataMap<TDF_Label, Shape, TDF_LabelMapHasher> m_shapes;
    std::vector<FacetBody> m_bodies;
    std::size_t m_faces = 0;
    std::size_t m_exact = 0; ///< products with exact shapes too
    std::size_t m_homeless = 0;
    std::size_t m_outOfRange = 0;
};

/// Puts `bodies` behind those of `model`, whose products get them.
void addBodies(model::Model& model, std::vector<FacetBody> bodies);

} // namespace ptx::step

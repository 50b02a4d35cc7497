#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/readers/step/facets/FaceMaker.h"
#include "ptx/readers/step/p21/EntityIndex.h"
#include "ptx/readers/step/p21/Records.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ptx::step::facets
{

/// A face, or a set of surfaces, of a part.
struct Face {
    FaceMesh mesh;
    std::optional<osg::Color4f> color; ///< display colour, whose alpha is its coverage
};

/// The tessellated shape of a product.
struct Part {
    std::uint32_t product = 0; ///< number of the product definition
    std::uint32_t context = 0; ///< number of the context with the unit
    std::vector<Face> faces;
};

/// All tessellated shapes of a text that are those of products.
struct Parts {
    std::vector<Part> parts; ///< several of one product where the text has them
    FaceCounts counts;
    std::map<std::string, std::size_t> unread; ///< items that are nothing of the kind, by type
    std::size_t ofNoProduct = 0;               ///< tessellated shapes that are not those of products
    bool isCut = false;                        ///< the rest would be too much
};

/// Reads the tessellated parts of a text. OCCT has no entities for them. Costs a look at the types when there are none.
Parts readParts(const p21::Records& records, const p21::EntityIndex& index);

} // namespace ptx::step::facets

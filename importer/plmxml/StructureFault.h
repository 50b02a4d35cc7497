#pragma once

#include "importer/plmxml/ElementIndex.h"
#include "importer/plmxml/Structure.h"

#include <QString>

namespace importer::plmxml
{

/// Why a structure has too many places for an import.
struct StructureFault {
    /// What is wrong.
    enum class Kind {
        Ring,    ///< it contains itself
        TooDeep, ///< deeper than PlaceWalk::MaxDepth
        TooLarge ///< more places than are allowed
    };

    Kind kind;
    std::uint32_t placement; ///< that leads back to a part around it, is the first that is too deep, or is most places
    double places = 0;       ///< of that one, where the structure is too large
    std::size_t allowed = 0; ///< places, where the structure is too large
};

/// A sentence with the element and its line.
QString describe(const StructureFault& fault, const ElementIndex& index, const Structure& structure);

} // namespace importer::plmxml

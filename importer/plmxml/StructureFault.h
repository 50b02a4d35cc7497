#pragma once

#include "importer/plmxml/ElementIndex.h"
#include "importer/plmxml/Refusal.h"
#include "importer/plmxml/Structure.h"

namespace importer::plmxml
{

/// Why a structure has too many places for an import.
struct StructureFault {
    Refusal::Why kind;
    std::uint32_t placement; ///< that leads back to a part around it, is the first that is too deep, or is most places
    double places = 0;       ///< of that one, where the structure is too large
    std::size_t allowed = 0; ///< places, where the structure is too large
};

/// The same with the element and its line.
Refusal refusalOf(const StructureFault& fault, const ElementIndex& index, const Structure& structure);

} // namespace importer::plmxml

#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

namespace importer::plmxml
{

/// Why a document has nothing to import.
struct Refusal {
    /// The reason.
    enum class Why : std::uint8_t {
        NoPlace,   ///< its structure places no part
        NoElement, ///< it has no element of the id that a structure begins with
        NoMemory,  ///< there is not enough
        Ring,      ///< the structure contains itself
        TooDeep,   ///< deeper than PlaceWalk::MaxDepth
        TooLarge,  ///< more places than are allowed
        Last = TooLarge
    };

    Why why = Why::NoPlace;
    QString element = {};    ///< the kind of the element where the structure is at fault
    QString id = {};         ///< its id, or the one that was asked for
    int line = 0;            ///< of the element, from 1
    std::size_t allowed = 0; ///< places, where there are too many
    double places = 0;       ///< of the element, where there are too many
};

/// A clause for a person.
QString describe(const Refusal& refusal);

} // namespace importer::plmxml

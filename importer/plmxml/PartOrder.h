#pragma once

#include "importer/plmxml/Structure.h"

#include <vector>

namespace importer::plmxml
{

/// The placed parts of a structure, each before those that are placed in it.
class PartOrder
{
public:
    /// Of `structure`.
    explicit PartOrder(const Structure& structure);

    /// By their numbers. Not all where there is a ring.
    const std::vector<std::uint32_t>& parts() const { return m_parts; }
    /// A placement that stands in the part that it places, however far within; Nothing where parts are in no ring.
    std::uint32_t ring() const { return m_ring; }

private:
    enum class State : std::uint8_t { Unseen, Open, Done };
    struct Level {
        std::uint32_t part;
        std::size_t next = 0; ///< of its placements
    };

    void visit(std::uint32_t placement);
    void finishOpen();

    const Structure& m_structure;
    std::vector<State> m_states; ///< by part
    std::vector<Level> m_levels;
    std::vector<std::uint32_t> m_parts;
    std::uint32_t m_ring = Nothing;
};

} // namespace importer::plmxml

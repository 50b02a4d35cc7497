#include "files/ply/VertexSlots.h"

#include <map>

namespace files::ply
{

Slot slotOf(std::string_view property)
{
    static const std::map<std::string_view, Slot> names = {
        {"x", X},
        {"y", Y},
        {"z", Z},
        {"nx", NormalX},
        {"ny", NormalY},
        {"nz", NormalZ},
        {"red", Red},
        {"green", Green},
        {"blue", Blue},
        {"alpha", Alpha},
        {"r", Red},
        {"g", Green},
        {"b", Blue},
        {"diffuse_red", Red},
        {"diffuse_green", Green},
        {"diffuse_blue", Blue},
        {"u", U},
        {"v", V},
        {"s", U},
        {"t", V},
        {"texture_u", U},
        {"texture_v", V},
    };
    const auto slot = names.find(property);
    return slot == names.end() ? SlotCount : slot->second;
}

} // namespace files::ply

#include "files/glb/gathering/MaterialGroups.h"

#include <algorithm>

namespace files::glb::gathering
{

namespace
{

using packing::Json;

constexpr const char* surface = "pbrMetallicRoughness";
constexpr const char* color = "baseColorFactor";

Json withoutColor(Json material)
{
    material.erase("name");
    material.erase("extras");
    if (const auto found = material.find(surface); found != material.end()) {
        found->erase(color);
        if (found->empty())
            material.erase(found);
    }
    return material;
}

Color colorOf(const Json& material)
{
    Color result = {1, 1, 1, 1};
    const Json::json_pointer place = Json::json_pointer() / surface / color;
    if (material.contains(place) && material.at(place).size() == result.size())
        std::transform(material.at(place).begin(), material.at(place).end(), result.begin(),
                       [](const Json& number) { return number.get<float>(); });
    return result;
}

} // namespace

MaterialGroups::MaterialGroups(const Json& materials)
{
    std::map<std::string, std::size_t> known;
    for (std::size_t i = 0; i < materials.size(); ++i) {
        m_groups.push_back(known.try_emplace(withoutColor(materials[i]).dump(), i).first->second);
        m_colors.push_back(colorOf(materials[i]));
    }
}

std::size_t MaterialGroups::white(std::size_t group, Json& materials)
{
    const auto [entry, isNew] = m_white.try_emplace(group, materials.size());
    if (isNew)
        materials.push_back(withoutColor(materials[group]));
    return entry->second;
}

} // namespace files::glb::gathering

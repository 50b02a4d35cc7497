#pragma once

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

/// Looks into a document that nothing has checked yet: what is not there or of another type is as it is without it.
namespace files::gltf
{

/// The member `key` of `object`; null if it has none, or is no object.
inline const nlohmann::json& memberOf(const nlohmann::json& object, const char* key)
{
    static const nlohmann::json nothing;
    const auto found = object.is_object() ? object.find(key) : object.end();
    return found == object.end() ? nothing : *found;
}

/// The entry of the list `list` of `object`; null if there is none.
inline const nlohmann::json& entryOf(const nlohmann::json& object, const char* list, std::uint64_t index)
{
    const nlohmann::json& entries = memberOf(object, list);
    return entries.is_array() && index < entries.size() ? entries[index] : memberOf({}, list);
}

/// An index or a length: a whole number from 0 on.
inline std::optional<std::uint64_t> indexIn(const nlohmann::json& object, const char* key)
{
    const nlohmann::json& value = memberOf(object, key);
    return value.is_number_unsigned() ? std::optional(value.get<std::uint64_t>()) : std::nullopt;
}

inline float numberIn(const nlohmann::json& object, const char* key, float otherwise)
{
    const nlohmann::json& value = memberOf(object, key);
    const float number = value.is_number() ? value.get<float>() : otherwise;
    return std::isfinite(number) ? number : otherwise;
}

inline std::string textIn(const nlohmann::json& object, const char* key)
{
    const nlohmann::json& value = memberOf(object, key);
    return value.is_string() ? value.get<std::string>() : std::string();
}

} // namespace files::gltf

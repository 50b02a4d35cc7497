#pragma once

#include "files/ReadTask.h"
#include "files/gltf/packing/GltfBuffer.h"

#include <nlohmann/json.hpp>

namespace files::gltf::packing
{

/// What unpacking reads and changes: the JSON tree of a document and its buffers.
struct PackedDocument {
    nlohmann::json& json;
    std::vector<GltfBuffer>& buffers;
    ReadTask& task;

    /// Fails the task: the document is damaged at `place`.
    [[noreturn]] void damaged(const QString& message, const QString& place) const;
    /// Entry `index` of the list `name`, an object. Fails when there is none.
    nlohmann::json& entry(const char* name, std::uint64_t index, const QString& place) const;
    /// The member `name` of `object`, a number from 0 on. Fails when it is none, or missing without an `otherwise`.
    std::uint64_t number(const nlohmann::json& object, const char* name, const QString& place,
                         std::optional<std::uint64_t> otherwise = std::nullopt) const;
    /// The bytes that `object` tells as "buffer", "byteOffset" and "byteLength". Fails when they are not there.
    std::string_view bytes(const nlohmann::json& object, const QString& place) const;
    /// Room for `size` bytes in a new buffer, which is the last one. What it takes was held against the limits before.
    std::byte* addBuffer(std::size_t size);
};

/// The object of the extension `name` of `object`, null without it. Fails when it is no object.
const nlohmann::json* extensionOf(const PackedDocument& document, const nlohmann::json& object, const char* name,
                                  const QString& place);

} // namespace files::gltf::packing

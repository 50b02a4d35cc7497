#include "files/gltf/packing/PackedDocument.h"

namespace files::gltf::packing
{

using Json = nlohmann::json;

void PackedDocument::damaged(const QString& message, const QString& place) const
{
    task.fail(ErrorCode::Damaged, message, place);
}

Json& PackedDocument::entry(const char* name, std::uint64_t index, const QString& place) const
{
    const auto list = json.find(name);
    if (list == json.end() || !list->is_array() || index >= list->size() || !(*list)[index].is_object())
        damaged(tr("entry %1 of '%2' does not exist").arg(static_cast<qulonglong>(index)).arg(QLatin1String(name)),
                place);
    return (*list)[index];
}

std::uint64_t PackedDocument::number(const Json& object, const char* name, const QString& place,
                                     std::optional<std::uint64_t> otherwise) const
{
    const auto found = object.find(name);
    if (found == object.end() && otherwise)
        return *otherwise;
    if (found == object.end() || !found->is_number_unsigned())
        damaged(tr("'%1' is no number from 0 on").arg(QLatin1String(name)), place);
    return found->get<std::uint64_t>();
}

std::string_view PackedDocument::bytes(const Json& object, const QString& place) const
{
    const std::uint64_t number = this->number(object, "buffer", place);
    if (number >= buffers.size())
        damaged(tr("the buffer %1 does not exist").arg(static_cast<qulonglong>(number)), place);
    const GltfBuffer& buffer = buffers[number];
    const std::uint64_t offset = this->number(object, "byteOffset", place, 0);
    const std::uint64_t length = this->number(object, "byteLength", place);
    if (offset > buffer.size || length > buffer.size - offset)
        damaged(tr("the packed bytes reach outside their buffer"), place);
    return {reinterpret_cast<const char*>(buffer.data) + offset, length};
}

std::byte* PackedDocument::addBuffer(std::size_t size)
{
    auto bytes = std::make_shared<std::byte[]>(size);
    std::byte* data = bytes.get();
    buffers.push_back({std::move(bytes), data, size});
    return data;
}

const Json* extensionOf(const PackedDocument& document, const Json& object, const char* name, const QString& place)
{
    const auto all = object.is_object() ? object.find("extensions") : object.end();
    if (!object.is_object() || all == object.end() || !all->is_object())
        return nullptr;
    const auto found = all->find(name);
    if (found == all->end())
        return nullptr;
    if (!found->is_object())
        document.damaged(tr("the extension %1 is no object").arg(QLatin1String(name)), place);
    return &*found;
}

} // namespace files::gltf::packing

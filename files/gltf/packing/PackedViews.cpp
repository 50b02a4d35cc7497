#include "files/gltf/packing/PackedViews.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <limits>

namespace files::gltf::packing
{

namespace
{

using Json = nlohmann::json;

constexpr const char* extension = "EXT_meshopt_compression";

/// The elements of a view may be of `least` to `most` bytes, in steps of `step`.
struct Widths {
    std::uint64_t least;
    std::uint64_t most;
    std::uint64_t step;

    bool hold(std::uint64_t width) const { return width >= least && width <= most && width % step == 0; }
};

using Bytes = const unsigned char*;

struct Mode {
    const char* name;
    Widths widths;
    std::uint64_t group; ///< the count is a multiple of it
    int (*decode)(void* target, std::size_t count, std::size_t width, Bytes bytes, std::size_t size);
};

constexpr Mode modes[] = {{"ATTRIBUTES", {4, 256, 4}, 1, meshopt_decodeVertexBuffer},
                          {"TRIANGLES", {2, 4, 2}, 3, meshopt_decodeIndexBuffer},
                          {"INDICES", {2, 4, 2}, 1, meshopt_decodeIndexSequence}};

struct Filter {
    const char* name;
    Widths widths;
    void (*apply)(void* target, std::size_t count, std::size_t width);
};

constexpr Filter filters[] = {{"NONE", {0, 256, 1}, nullptr},
                              {"OCTAHEDRAL", {4, 8, 4}, meshopt_decodeFilterOct},
                              {"QUATERNION", {8, 8, 8}, meshopt_decodeFilterQuat},
                              {"EXPONENTIAL", {4, 256, 4}, meshopt_decodeFilterExp}};

struct PackedView {
    std::size_t index = 0;
    QString place;
    std::string_view bytes;
    std::uint64_t count = 0;
    std::uint64_t width = 0;
    const Mode* mode = nullptr;
    const Filter* filter = nullptr;
};

/// The entry of `table` that the member `member` names.
template <class Table>
auto named(const PackedDocument& document, const Json& object, const char* member, const Table& table,
           const QString& place)
{
    const auto found = object.find(member);
    const std::string name = found == object.end() ? "NONE" : found->is_string() ? found->get<std::string>() : "";
    const auto entry = std::find_if(std::begin(table), std::end(table), [&](const auto& e) { return name == e.name; });
    if (entry == std::end(table))
        document.task.fail(ErrorCode::Unsupported,
                           tr("the %1 '%2' of %3 is not known")
                               .arg(QLatin1String(member), QString::fromStdString(name), QLatin1String(extension)),
                           place);
    return &*entry;
}

PackedView packedView(const PackedDocument& document, std::size_t index, const Json& view, const Json& packed)
{
    PackedView result;
    result.index = index;
    result.place = QStringLiteral("/bufferViews/%1").arg(static_cast<qulonglong>(index));
    result.bytes = document.bytes(packed, result.place);
    result.count = document.number(packed, "count", result.place);
    result.width = document.number(packed, "byteStride", result.place);
    result.mode = named(document, packed, "mode", modes, result.place);
    result.filter = named(document, packed, "filter", filters, result.place);
    const bool isFiltered = result.filter->apply != nullptr;
    if (!result.mode->widths.hold(result.width) || !result.filter->widths.hold(result.width) ||
        (isFiltered && result.mode != std::begin(modes)))
        document.damaged(tr("elements of %1 bytes do not go with the mode %2 and the filter %3")
                             .arg(static_cast<qulonglong>(result.width))
                             .arg(QLatin1String(result.mode->name), QLatin1String(result.filter->name)),
                         result.place);
    const std::uint64_t length = document.number(view, "byteLength", result.place);
    if (result.count % result.mode->group != 0 || length / result.width != result.count || length % result.width != 0)
        document.damaged(tr("%1 elements of %2 bytes do not make the %3 bytes of the buffer view")
                             .arg(static_cast<qulonglong>(result.count))
                             .arg(static_cast<qulonglong>(result.width))
                             .arg(static_cast<qulonglong>(length)),
                         result.place);
    return result;
}

void unpack(PackedDocument& document, const PackedView& packed)
{
    const auto size = static_cast<std::size_t>(packed.count * packed.width);
    std::byte* target = document.addBuffer(size);
    const auto* bytes = reinterpret_cast<Bytes>(packed.bytes.data());
    const auto count = static_cast<std::size_t>(packed.count);
    if (packed.mode->decode(target, count, packed.width, bytes, packed.bytes.size()) != 0)
        document.damaged(tr("the packed bytes are damaged, or of a newer form than this program knows"), packed.place);
    if (packed.filter->apply)
        packed.filter->apply(target, count, packed.width);
    Json& view = document.json["bufferViews"][packed.index];
    view["buffer"] = document.buffers.size() - 1;
    view["byteOffset"] = 0;
    // Indices and what is no vertex data lie close; a stride is only for vertices.
    if (packed.mode == std::begin(modes))
        view["byteStride"] = packed.width;
}

} // namespace

void unpackViews(PackedDocument& document)
{
    const auto views = document.json.find("bufferViews");
    if (views == document.json.end() || !views->is_array())
        return;
    std::vector<PackedView> all;
    for (std::size_t i = 0; i < views->size(); ++i) {
        const QString place = QStringLiteral("/bufferViews/%1").arg(static_cast<qulonglong>(i));
        if (const Json* packed = extensionOf(document, (*views)[i], extension, place))
            all.push_back(packedView(document, i, (*views)[i], *packed));
    }
    for (const PackedView& packed : all)
        document.task.takeMemory(packed.count * packed.width, packed.place);
    for (const PackedView& packed : all)
        unpack(document, packed);
}

} // namespace files::gltf::packing

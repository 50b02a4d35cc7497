#include "files/glb/levels/SurfaceLevels.h"

#include "files/Failure.h"
#include "files/Text.h"
#include "files/glb/levels/Deviation.h"

#include <algorithm>
#include <new>
#include <optional>
#include <span>

namespace files::glb::levels
{

namespace
{

using geometry::rays::RayDevice;
using packing::Json;
using packing::PackedFile;

/// Of the size of a surface: triangles that are measured farther away than this are no likeness of it.
constexpr double mostErrorOfLevel = 0.05;

/// Triangles and how far they are off.
struct Measured {
    Triangles triangles;
    double error = 0;
};

/// Fewer triangles than `triangles`, down to `most`, whose measured distance is `error` at most; nothing when there are
/// none. What the reduction takes for its error is none of the distances, and often less.
std::optional<Measured> within(const Surface& surface, const Deviation& deviation, const Triangles& triangles,
                               std::size_t most, double error)
{
    constexpr int attempts = 12;
    constexpr double lessEachTime = 0.6;
    double aim = error;
    for (int attempt = 0; attempt < attempts; ++attempt, aim *= lessEachTime) {
        Measured fewer = {reduced(surface, triangles, most, aim)};
        if (fewer.triangles.size() == triangles.size())
            return std::nullopt;
        fewer.error = deviation.of(fewer.triangles, error);
        if (fewer.error <= error)
            return fewer;
    }
    return std::nullopt;
}

void checkDevice(const RayDevice& device)
{
    if (device.isOutOfMemory())
        throw std::bad_alloc();
    if (device.hasFailed())
        throw Failure({{tr("how far simplified surfaces are off cannot be measured: %1")
                            .arg(QString::fromStdString(device.errorText())),
                        {},
                        {}},
                       ErrorCode::Unsupported});
}

/// Of a primitive that is one surface.
std::vector<Detail> detailsOfSurface(PackedFile& file, const Json& primitive, const Wish& wish, const RayDevice& device)
{
    const auto own = primitive.at("indices").get<std::size_t>();
    std::vector<Detail> details = {{own, file.accessors[own].at("count").get<std::uint64_t>() / 3, 0}};
    const Surface surface = surfaceOf(file, primitive);
    const Deviation deviation(device, surface);
    const auto detailOf = [&](const Measured& fewer) {
        const std::size_t indices = packing::addIndices(file, surface.inFile(fewer.triangles));
        return Detail{indices, fewer.triangles.size() / 3, fewer.error};
    };
    Triangles finest = surface.triangles;
    if (wish.error > 0)
        if (std::optional<Measured> fewer = within(surface, deviation, finest, 0, wish.error)) {
            details.front() = detailOf(*fewer);
            finest = std::move(fewer->triangles);
        }
    for (const double share : wish.shares) {
        const auto most = static_cast<std::size_t>(share * double(details.front().triangles));
        const auto fewer = within(surface, deviation, finest, most, sizeOf(surface) * mostErrorOfLevel);
        const bool saves = fewer && fewer->triangles.size() / 3 < details.back().triangles;
        details.push_back(saves ? detailOf(*fewer) : Detail(details.back()));
    }
    checkDevice(device);
    return details;
}

/// The triangles of parts in each level, one part after the other.
std::vector<Detail> joined(PackedFile& file, const std::vector<std::vector<Detail>>& parts)
{
    std::vector<Detail> details(parts.front().size());
    for (std::size_t level = 0; level < details.size(); ++level) {
        Detail& detail = details[level];
        Triangles all;
        for (const std::vector<Detail>& part : parts) {
            const Triangles own = packing::indicesOf(file, file.accessors[part[level].indices]);
            all.insert(all.end(), own.begin(), own.end());
            detail.parts.push_back(own.size() / 3);
            detail.error = std::max(detail.error, part[level].error);
        }
        detail.triangles = all.size() / 3;
        const bool isAsBefore = level > 0 && detail.parts == details[level - 1].parts;
        detail.indices = isAsBefore ? details[level - 1].indices : packing::addIndices(file, all);
    }
    return details;
}

} // namespace

std::vector<Detail> detailsOf(PackedFile& file, const Json& primitive, const Wish& wish, const RayDevice& device)
{
    const Json::json_pointer ranges("/extras/parts");
    if (!primitive.contains(ranges))
        return detailsOfSurface(file, primitive, wish, device);
    const Triangles all = packing::indicesOf(file, file.accessors[primitive.at("indices").get<std::size_t>()]);
    std::vector<std::vector<Detail>> parts;
    std::size_t first = 0;
    for (const Json& range : primitive.at(ranges)) {
        const std::size_t count = range.at(1).get<std::size_t>() * 3;
        Json part = primitive;
        part["indices"] = packing::addIndices(file, std::span(all).subspan(first, count));
        parts.push_back(detailsOfSurface(file, part, wish, device));
        first += count;
    }
    return joined(file, parts);
}

} // namespace files::glb::levels

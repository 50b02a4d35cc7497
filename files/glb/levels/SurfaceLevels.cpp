#include "files/glb/levels/SurfaceLevels.h"

#include "files/Failure.h"
#include "files/Text.h"
#include "files/glb/levels/Deviation.h"

#include <cstring>
#include <limits>
#include <new>

namespace files::glb::levels
{

namespace
{

using geometry::rays::RayDevice;
using packing::Json;
using packing::PackedFile;

/// Of the size of a surface: triangles that are farther away than this are no likeness of it.
constexpr double mostErrorOfLevel = 0.05;

std::size_t addIndices(PackedFile& file, const Triangles& triangles)
{
    const std::size_t start = (file.binary.size() + 3) / 4 * 4, size = triangles.size() * sizeof(std::uint32_t);
    file.binary.resize(start + size);
    std::memcpy(file.binary.data() + start, triangles.data(), size);
    file.accessors.push_back({{"bufferView", file.bufferViews.size()},
                              {"componentType", 5125},
                              {"count", triangles.size()},
                              {"type", "SCALAR"}});
    file.bufferViews.push_back({{"buffer", 0}, {"byteOffset", start}, {"byteLength", size}});
    return file.accessors.size() - 1;
}

/// Fewer triangles whose measured distance is `error` at most; empty when there are none. What the reduction takes for
/// its error is none of the distances, and often less.
Triangles within(const Surface& surface, const Deviation& deviation, double error)
{
    constexpr int attempts = 12;
    constexpr double lessEachTime = 0.6;
    double aim = error;
    for (int attempt = 0; attempt < attempts; ++attempt, aim *= lessEachTime) {
        Triangles fewer = reduced(surface, surface.triangles, 0, aim);
        if (fewer.size() == surface.triangles.size())
            return {};
        if (deviation.of(fewer, error) <= error)
            return fewer;
    }
    return {};
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

} // namespace

std::vector<Detail> detailsOf(PackedFile& file, const Json& primitive, const Wish& wish, const RayDevice& device)
{
    constexpr double unlimited = std::numeric_limits<double>::infinity();
    const auto own = primitive.at("indices").get<std::size_t>();
    std::vector<Detail> details = {{own, file.accessors[own].at("count").get<std::uint64_t>() / 3, 0}};
    const Surface surface = surfaceOf(file, primitive);
    const Deviation deviation(device, surface);
    const auto take = [&](const Triangles& triangles) {
        const double error = deviation.of(triangles, unlimited);
        details.push_back({addIndices(file, surface.inFile(triangles)), triangles.size() / 3, error});
    };
    Triangles finest = surface.triangles;
    if (wish.error > 0)
        if (Triangles fewer = within(surface, deviation, wish.error); !fewer.empty()) {
            take(fewer);
            details.erase(details.begin());
            finest = std::move(fewer);
        }
    for (const double share : wish.shares) {
        const auto most = static_cast<std::size_t>(share * double(details.front().triangles));
        const Triangles fewer = reduced(surface, finest, most, sizeOf(surface) * mostErrorOfLevel);
        if (!fewer.empty() && fewer.size() / 3 < details.back().triangles)
            take(fewer);
        else
            details.push_back(Detail(details.back()));
    }
    checkDevice(device);
    return details;
}

} // namespace files::glb::levels

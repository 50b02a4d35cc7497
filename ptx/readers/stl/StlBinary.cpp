#include "ptx/readers/stl/StlBinary.h"

#include <bit>
#include <cmath>

namespace ptx::stl
{

namespace
{

constexpr std::size_t HeaderSize = 80;
constexpr std::size_t CountSize = 4;
constexpr std::size_t FacetSize = 50;
constexpr std::size_t ReportEach = 4096;

std::uint32_t word(const char* data)
{
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(data[i]);
    return value;
}

osg::Vec3f vector(const char* data)
{
    return {std::bit_cast<float>(word(data)), std::bit_cast<float>(word(data + 4)),
            std::bit_cast<float>(word(data + 8))};
}

bool isFinite(const osg::Vec3f& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

Facet facet(const char* data)
{
    return {vector(data), {vector(data + 12), vector(data + 24), vector(data + 36)}};
}

} // namespace

std::uint64_t binarySize(std::string_view head)
{
    if (head.size() < HeaderSize + CountSize)
        return 0;
    return HeaderSize + CountSize + std::uint64_t(FacetSize) * word(head.data() + HeaderSize);
}

core::Outcome<Solid> readBinary(std::string_view content, core::Progress& progress)
{
    const std::uint64_t wanted = binarySize(content);
    if (wanted == 0 || wanted > content.size())
        return core::Failure{core::ExitCode::Damaged, "the binary STL file is cut off: " + std::to_string(wanted) +
                                                          " bytes are announced, " + std::to_string(content.size()) +
                                                          " are there"};
    Solid solid;
    const std::size_t count = word(content.data() + HeaderSize);
    solid.facets.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t offset = HeaderSize + CountSize + i * FacetSize;
        solid.facets.push_back(facet(content.data() + offset));
        for (const osg::Vec3f& corner : solid.facets.back().corners)
            if (!isFinite(corner))
                return core::Failure{core::ExitCode::Damaged, "triangle " + std::to_string(i + 1) + " at byte " +
                                                                  std::to_string(offset) +
                                                                  " has a corner that is no number"};
        if (i % ReportEach == 0)
            progress.report(static_cast<double>(i) / static_cast<double>(count));
    }
    return solid;
}

} // namespace ptx::stl

#include "render/studio/MipMap.h"

#include "scene/ColorSpace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace render::studio
{

namespace
{

using Filter = osg::TextureSampler::Filter;
using Wrap = osg::TextureSampler::Wrap;

const std::array<float, 256>& lightOfBytes()
{
    static const std::array<float, 256> table = [] {
        std::array<float, 256> values;
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = osg::linearFromDisplay(float(i) / 255);
        return values;
    }();
    return table;
}

std::uint8_t byteOf(float value)
{
    return std::uint8_t(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f);
}

int wrapped(int place, int size, Wrap wrap)
{
    if (wrap == Wrap::Clamp)
        return std::clamp(place, 0, size - 1);
    const int period = wrap == Wrap::Mirrored ? 2 * size : size;
    const int within = (place % period + period) % period;
    return within < size ? within : period - 1 - within;
}

/// Within the first two pictures to the right, which for all ways of going on stand for what is beyond, so that pixels
/// can be counted.
float reduced(float place, Wrap wrap)
{
    if (!std::isfinite(place))
        return 0;
    return wrap == Wrap::Clamp ? std::clamp(place, -1.0f, 2.0f) : place - 2 * std::floor(place / 2);
}

bool isNearestWhereLarge(const osg::TextureSampler& sampler)
{
    return sampler.magnify == Filter::Nearest;
}

bool isNearestWhereSmall(const osg::TextureSampler& sampler)
{
    return sampler.minify == Filter::Nearest || sampler.minify == Filter::NearestMipmapNearest ||
           sampler.minify == Filter::NearestMipmapLinear;
}

} // namespace

MipMap::MipMap(const QImage& picture, bool hasColors) : m_levels{picture}, m_hasColors(hasColors)
{
    while (m_levels.back().width() > 1 || m_levels.back().height() > 1)
        m_levels.push_back(halved(m_levels.back()));
}

Eigen::Vector4f MipMap::texel(const QImage& level, int column, int row) const
{
    const uchar* bytes = level.constScanLine(row) + std::ptrdiff_t(4) * column;
    constexpr float unit = 1.0f / 255;
    if (!m_hasColors)
        return {float(bytes[0]) * unit, float(bytes[1]) * unit, float(bytes[2]) * unit, float(bytes[3]) * unit};
    const std::array<float, 256>& light = lightOfBytes();
    return {light[bytes[0]], light[bytes[1]], light[bytes[2]], float(bytes[3]) * unit};
}

/// An odd last column or row counts twice.
QImage MipMap::halved(const QImage& level) const
{
    QImage result(std::max(level.width() / 2, 1), std::max(level.height() / 2, 1), level.format());
    if (result.isNull())
        throw std::bad_alloc();
    for (int row = 0; row < result.height(); ++row) {
        uchar* bytes = result.scanLine(row);
        for (int column = 0; column < result.width(); ++column, bytes += 4) {
            const int right = std::min(2 * column + 1, level.width() - 1);
            const int lower = std::min(2 * row + 1, level.height() - 1);
            const int left = std::min(2 * column, right), upper = std::min(2 * row, lower);
            const Eigen::Vector4f mean = (texel(level, left, upper) + texel(level, right, upper) +
                                          texel(level, left, lower) + texel(level, right, lower)) /
                                         4;
            for (int i = 0; i < 4; ++i)
                bytes[i] = byteOf(m_hasColors && i < 3 ? osg::displayFromLinear(mean[i]) : mean[i]);
        }
    }
    return result;
}

Eigen::Vector4f MipMap::inLevel(std::size_t level, const Eigen::Vector2f& place, bool isNearest,
                                const osg::TextureSampler& sampler) const
{
    const QImage& picture = m_levels[level];
    const float x = reduced(place.x(), sampler.wrapU) * float(picture.width());
    const float y = reduced(place.y(), sampler.wrapV) * float(picture.height());
    const auto at = [&](float column, float row) {
        return texel(picture, wrapped(int(column), picture.width(), sampler.wrapU),
                     wrapped(int(row), picture.height(), sampler.wrapV));
    };
    if (isNearest)
        return at(std::floor(x), std::floor(y));
    const float left = std::floor(x - 0.5f), upper = std::floor(y - 0.5f);
    const float right = x - 0.5f - left, lower = y - 0.5f - upper;
    return (at(left, upper) * (1 - right) + at(left + 1, upper) * right) * (1 - lower) +
           (at(left, upper + 1) * (1 - right) + at(left + 1, upper + 1) * right) * lower;
}

Eigen::Vector4f MipMap::at(const Eigen::Vector2f& place, float footprint, const osg::TextureSampler& sampler) const
{
    if (!(footprint > 1))
        return inLevel(0, place, isNearestWhereLarge(sampler), sampler);
    const bool isNearest = isNearestWhereSmall(sampler);
    const float level = std::min(std::log2(footprint), float(m_levels.size() - 1));
    const std::size_t lower = std::min(std::size_t(level), m_levels.size() - 1);
    const std::size_t upper = std::min(lower + 1, m_levels.size() - 1);
    const float part = level - float(lower);
    return inLevel(lower, place, isNearest, sampler) * (1 - part) + inLevel(upper, place, isNearest, sampler) * part;
}

} // namespace render::studio

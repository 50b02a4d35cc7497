#include "ptx/readers/jt/codec/Quantiser.h"

#include <algorithm>
#include <cmath>

namespace ptx::jt::codec
{

namespace
{

constexpr unsigned MostBits = 32;
constexpr std::array<double, 4> HsvRanges = {6, 1, 1, 1};

unsigned readBits(container::Cursor& in)
{
    const unsigned bits = in.u8();
    if (bits > MostBits)
        in.fail("a quantiser has too many bits");
    return bits;
}

} // namespace

Quantiser Quantiser::read(container::Cursor& in)
{
    Quantiser quantiser;
    quantiser.least = in.f32();
    quantiser.most = in.f32();
    quantiser.bits = readBits(in);
    return quantiser;
}

float Quantiser::value(std::int32_t code) const
{
    const double steps = std::ldexp(1.0, static_cast<int>(bits)) - 1;
    return static_cast<float>(steps > 0 ? least + static_cast<std::uint32_t>(code) * (most - least) / steps : least);
}

ColourQuantiser ColourQuantiser::read(container::Cursor& in)
{
    ColourQuantiser quantiser;
    quantiser.isHsv = in.u8() != 0;
    for (std::size_t i = 0; i < 4; ++i)
        quantiser.channels[i] = quantiser.isHsv ? Quantiser{0, HsvRanges[i], readBits(in)} : Quantiser::read(in);
    return quantiser;
}

Colour ColourQuantiser::value(const std::array<std::int32_t, 4>& codes) const
{
    Colour colour{};
    for (std::size_t i = 0; i < 4; ++i)
        colour[i] = channels[i].value(codes[i]);
    if (isHsv) {
        const Vector rgb = rgbOf(colour[0], colour[1], colour[2]);
        std::copy(rgb.begin(), rgb.end(), colour.begin());
    }
    return bounded(colour);
}

std::vector<Colour> coloursOf(const ColourQuantiser& quantiser, std::span<const Values> codes, bool hasAlpha)
{
    std::vector<Colour> colours;
    for (std::size_t i = 0; i < codes[0].size(); ++i) {
        colours.push_back(quantiser.value({codes[0][i], codes[1][i], codes[2][i], codes[3][i]}));
        if (!hasAlpha)
            colours.back()[3] = 1;
    }
    return colours;
}

Colour bounded(const Colour& colour)
{
    Colour result = colour;
    for (float& channel : result)
        channel = channel >= 0 ? std::fmin(channel, 1.0f) : 0;
    return result;
}

TextureCoordinate bounded(const TextureCoordinate& place)
{
    return {std::isfinite(place[0]) ? place[0] : 0, std::isfinite(place[1]) ? place[1] : 0};
}

Vector rgbOf(float hue, float saturation, float value)
{
    Vector rgb{};
    for (std::size_t i = 0; i < 3; ++i) {
        // How far the hue is from that of this channel, on a circle of six.
        const float apart = std::fmod(hue + 6 - 2 * static_cast<float>(i), 6.0f);
        const float share = std::clamp(std::fmin(apart, 6 - apart) - 1, 0.0f, 1.0f);
        rgb[i] = value * (1 - saturation * share);
    }
    return rgb;
}

} // namespace ptx::jt::codec

#pragma once

#include "ptx/readers/jt/codec/CodeText.h"
#include "ptx/readers/jt/codec/Vectors.h"

#include <array>
#include <span>

namespace ptx::jt::codec
{

/// Numbers as codes of equal steps within a range.
struct Quantiser {
    double least = 0;
    double most = 0;
    unsigned bits = 0;

    static Quantiser read(container::Cursor& in);
    float value(std::int32_t code) const;
};

/// Colours as codes of their channels.
struct ColourQuantiser {
    bool isHsv = false; ///< hue, saturation and value instead of red, green and blue
    std::array<Quantiser, 4> channels;

    static ColourQuantiser read(container::Cursor& in);
    Colour value(const std::array<std::int32_t, 4>& codes) const;
};

/// The colours whose channels have these codes, in arrays of the same size; opaque ones without alpha.
std::vector<Colour> coloursOf(const ColourQuantiser& quantiser, std::span<const Values> codes, bool hasAlpha);

/// The colour with each channel between 0 and 1, also when some is no number.
Colour bounded(const Colour& colour);

/// The texture coordinate; 0 where it is not finite.
TextureCoordinate bounded(const TextureCoordinate& place);

/// Red, green and blue of a hue from 0 to 6, a saturation and a value from 0 to 1.
Vector rgbOf(float hue, float saturation, float value);

} // namespace ptx::jt::codec

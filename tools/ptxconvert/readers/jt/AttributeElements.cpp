#include "tools/ptxconvert/readers/jt/SceneElements.h"

#include <bit>
#include <cmath>

namespace ptx::jt
{

namespace
{

constexpr unsigned IgnoredState = 0x04;
constexpr unsigned ShortForms = 0x0001;
constexpr unsigned ShortAmbient = 0x0002;

// Bits of the field inhibit flags that keep the inherited colour, by version from 8 on.
constexpr std::array<std::uint32_t, 3> InhibitedColour = {1u << 1, 1u << 1 | 1u << 7, 1u << 6};

Colour readColour(Cursor& in)
{
    Colour colour{};
    for (float& channel : colour) {
        const float value = in.f32();
        channel = value >= 0 ? std::fmin(value, 1.0f) : 0;
    }
    return colour;
}

std::optional<Colour> readMaterial(Cursor& in, int major)
{
    skipBlockVersion(in, major);
    const unsigned flags = in.number<std::uint16_t>();
    if (major < 9 && (flags & ShortForms) && (flags & ShortAmbient))
        in.f32();
    else
        in.take(sizeof(Colour));
    const Colour diffuse = readColour(in);
    return in.isOk() ? std::optional(diffuse) : std::nullopt;
}

// Real files hold noise where a placement has none, and a common divisor at times.
void normalise(Cursor& in, Placement& placement)
{
    const double divisor = placement[15];
    placement[3] = placement[7] = placement[11] = 0;
    placement[15] = 1;
    for (std::size_t i = 0; i < 15; ++i)
        placement[i] /= divisor;
    for (const double element : placement)
        if (!std::isfinite(element) || std::fabs(element) > 1e30)
            in.fail("a placement is not finite");
}

std::optional<Placement> readTransform(Cursor& in, int major)
{
    skipBlockVersion(in, major);
    const unsigned mask = in.number<std::uint16_t>();
    const bool isDouble = in.left() >= 8u * static_cast<unsigned>(std::popcount(mask));
    Placement placement = NoMove;
    for (std::size_t i = 0; i < 16; ++i)
        if (mask & 0x8000u >> i)
            placement[i] = isDouble ? in.number<double>() : static_cast<double>(in.f32());
    normalise(in, placement);
    return in.isOk() ? std::optional(placement) : std::nullopt;
}

} // namespace

Attribute readAttribute(Cursor& in, int major, ElementKind kind)
{
    skipBlockVersion(in, major);
    const unsigned state = in.u8();
    const std::uint32_t inhibited = in.u32();
    if (major >= 10)
        in.u32();
    Attribute attribute;
    if (state & IgnoredState)
        return attribute;
    if (kind == ElementKind::Transform)
        attribute.placement = readTransform(in, major);
    if (kind == ElementKind::Material && !(inhibited & InhibitedColour[static_cast<std::size_t>(major - 8)]))
        attribute.diffuse = readMaterial(in, major);
    return attribute;
}

} // namespace ptx::jt

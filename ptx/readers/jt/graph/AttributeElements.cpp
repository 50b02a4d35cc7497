#include "ptx/readers/jt/graph/AttributeElements.h"
#include "ptx/readers/jt/codec/Quantiser.h"

#include "ptx/readers/jt/container/BlockVersion.h"

#include <bit>
#include <cmath>

namespace ptx::jt::graph
{

namespace
{

constexpr unsigned FinalState = 0x01;
constexpr unsigned ForcedState = 0x02;
constexpr unsigned IgnoredState = 0x04;
constexpr unsigned ShortForms = 0x0001;
constexpr unsigned ShortAmbient = 0x0002;
constexpr unsigned HidesVertexColours = 0x0020;

/// What all attributes begin with.
struct AttributeHead {
    unsigned state = 0;
    std::uint32_t inhibited = 0; ///< fields that the attribute does not change
    std::uint32_t final = 0;     ///< fields that attributes further down do not change
};

// Bits of the fields of a material in these flags.
struct FieldBits {
    std::uint32_t colour;
    std::uint32_t alpha;
    std::uint32_t vertexColours;
};

// By version from 8 on. In version 9 one bit can stand for colour and alpha, as it always does in version 8.
constexpr std::array<FieldBits, 3> Fields = {
    {{1u << 1, 1u << 1, 1u << 5}, {1u << 1 | 1u << 7, 1u << 1 | 1u << 8, 1u << 5}, {1u << 6, 1u << 7, 1u << 4}}};

unsigned fieldsIn(std::uint32_t flags, int major)
{
    const FieldBits& bits = Fields[static_cast<std::size_t>(major - 8)];
    return (flags & bits.colour ? ColourField : 0u) | (flags & bits.alpha ? AlphaField : 0u) |
           (flags & bits.vertexColours ? VertexColourField : 0u);
}

AttributeHead readHead(container::Cursor& in, int major)
{
    container::skipBlockVersion(in, major);
    AttributeHead head;
    head.state = in.u8();
    head.inhibited = in.u32();
    if (major >= 10)
        head.final = in.u32();
    else if (head.state & FinalState)
        head.final = ~0u;
    return head;
}

codec::Colour readColour(container::Cursor& in)
{
    codec::Colour colour{};
    for (float& channel : colour)
        channel = in.f32();
    return codec::bounded(colour);
}

std::optional<Material> readMaterial(container::Cursor& in, int major, const AttributeHead& head)
{
    container::skipBlockVersion(in, major);
    const unsigned flags = in.number<std::uint16_t>();
    if (major < 9 && (flags & ShortForms) && (flags & ShortAmbient))
        in.f32();
    else
        in.take(sizeof(codec::Colour));
    Material material;
    material.diffuse = readColour(in);
    material.hidesVertexColours = (flags & HidesVertexColours) != 0;
    material.given = AllFields & ~fieldsIn(head.inhibited, major);
    material.final = fieldsIn(head.final, major);
    material.isForced = (head.state & ForcedState) != 0;
    return in.isOk() ? std::optional(material) : std::nullopt;
}

// Real files hold noise where a placement has none, and a common divisor at times.
void normalise(container::Cursor& in, Placement& placement)
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

std::optional<Placement> readTransform(container::Cursor& in, int major)
{
    container::skipBlockVersion(in, major);
    const unsigned mask = in.number<std::uint16_t>();
    const bool isDouble = in.left() >= std::size_t{8} * static_cast<unsigned>(std::popcount(mask));
    Placement placement = NoMove;
    for (std::size_t i = 0; i < 16; ++i)
        if (mask & 0x8000u >> i)
            placement[i] = isDouble ? in.number<double>() : static_cast<double>(in.f32());
    normalise(in, placement);
    return in.isOk() ? std::optional(placement) : std::nullopt;
}

} // namespace

Attribute readAttribute(container::Cursor& in, int major, ElementKind kind)
{
    const AttributeHead head = readHead(in, major);
    Attribute attribute;
    if (head.state & IgnoredState)
        return attribute;
    if (kind == ElementKind::Transform)
        attribute.placement = readTransform(in, major);
    if (kind == ElementKind::Material)
        attribute.material = readMaterial(in, major, head);
    return attribute;
}

} // namespace ptx::jt::graph

#include "ptx/readers/step/annotations/Styles.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ptx::step::annotations
{

namespace
{

struct NamedColor {
    std::string_view name; ///< with its quotes
    osg::Color4f color;
};

constexpr std::array<NamedColor, 8> NamedColors = {{{"'red'", {1, 0, 0}},
                                                    {"'green'", {0, 1, 0}},
                                                    {"'blue'", {0, 0, 1}},
                                                    {"'yellow'", {1, 1, 0}},
                                                    {"'magenta'", {1, 0, 1}},
                                                    {"'cyan'", {0, 1, 1}},
                                                    {"'black'", {0, 0, 0}},
                                                    {"'white'", {1, 1, 1}}}};

constexpr osg::Color4f Black = {0, 0, 0, 1};

/// CAD systems draw on dark ground; pictures are made on white, where white annotations could not be seen.
osg::Color4f onWhite(const osg::Color4f& color)
{
    constexpr float NearlyWhite = 0.99F;
    const bool isWhite = color.red > NearlyWhite && color.green > NearlyWhite && color.blue > NearlyWhite;
    return isWhite ? Black : color;
}

float channel(const Fields& color, std::size_t i)
{
    return static_cast<float>(std::min(1., std::max(0., color.real(i).value_or(0))));
}

} // namespace

struct Styles::Found {
    std::optional<osg::Color4f> curve;
    std::optional<osg::Color4f> area;
    std::optional<osg::Color4f> other;
};

Style Styles::of(const Fields& styles) const
{
    constexpr std::size_t Most = 16; // the colours of a thing are few
    Found found;
    for (std::size_t i = 0; i < std::min(styles.size(), Most); ++i) {
        const Fields assigned = m_entities.at(styles.reference(i)).list(0);
        for (std::size_t k = 0; k < std::min(assigned.size(), Most); ++k)
            look(assigned.reference(k), found);
    }
    const auto firstOf = [](const auto& a, const auto& b, const auto& c) {
        return onWhite(a ? *a : b ? *b : c.value_or(Black));
    };
    return {firstOf(found.curve, found.other, found.area), firstOf(found.area, found.other, found.curve)};
}

void Styles::look(std::uint32_t style, Found& found) const
{
    const std::string_view type = m_entities.at(style).type();
    std::optional<osg::Color4f>& place = type == "CURVE_STYLE"       ? found.curve
                                         : type == "FILL_AREA_STYLE" ? found.area
                                                                     : found.other;
    if (!place && style != 0)
        place = colorOf(m_entities.firstReached(style, [this](std::uint32_t number) {
            const std::string_view reached = m_entities.at(number).type();
            return reached == "COLOUR_RGB" || reached.ends_with("PRE_DEFINED_COLOUR");
        }));
}

std::optional<osg::Color4f> Styles::colorOf(std::uint32_t number) const
{
    const Fields color = m_entities.at(number);
    if (color.type() == "COLOUR_RGB")
        return osg::Color4f{channel(color, 1), channel(color, 2), channel(color, 3), 1};
    for (const NamedColor& named : NamedColors)
        if (color && color.text(0) == named.name)
            return named.color;
    return std::nullopt;
}

} // namespace ptx::step::annotations

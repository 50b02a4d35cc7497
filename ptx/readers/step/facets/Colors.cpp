#include "ptx/readers/step/facets/Colors.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ptx::step::facets
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

float share(const p21::Fields& fields, std::size_t i)
{
    return static_cast<float>(std::min(1., std::max(0., fields.real(i).value_or(0))));
}

} // namespace

std::optional<osg::Color4f> colorBelow(const p21::Entities& entities, std::uint32_t number)
{
    const p21::Fields color = entities.at(entities.firstReached(number, [&entities](std::uint32_t reached) {
        const std::string_view type = entities.at(reached).type();
        return type == "COLOUR_RGB" || type.ends_with("PRE_DEFINED_COLOUR");
    }));
    if (color.type() == "COLOUR_RGB")
        return osg::Color4f{share(color, 1), share(color, 2), share(color, 3), 1};
    for (const NamedColor& named : NamedColors)
        if (color && color.text(0) == named.name)
            return named.color;
    return std::nullopt;
}

std::optional<osg::Color4f> surfaceColor(const p21::Entities& entities, const p21::Fields& styles)
{
    constexpr std::size_t Most = 16; // the styles of a thing are few
    for (std::size_t i = 0; i < std::min(styles.size(), Most); ++i) {
        std::optional<osg::Color4f> color = colorBelow(entities, styles.reference(i));
        if (!color)
            continue;
        const p21::Fields transparency =
            entities.at(entities.firstReached(styles.reference(i), [&entities](std::uint32_t reached) {
                return entities.at(reached).type() == "SURFACE_STYLE_TRANSPARENT";
            }));
        color->alpha = 1 - share(transparency, 0);
        return color;
    }
    return std::nullopt;
}

} // namespace ptx::step::facets

#include "ptx/readers/step/annotations/Styles.h"

#include "ptx/readers/step/facets/Colors.h"

#include <algorithm>
#include <string_view>

namespace ptx::step::annotations
{

namespace
{

constexpr osg::Color4f Black = {0, 0, 0, 1};

/// CAD systems draw on dark ground; pictures are made on white, where white annotations could not be seen.
osg::Color4f onWhite(const osg::Color4f& color)
{
    constexpr float NearlyWhite = 0.99F;
    const bool isWhite = color.red > NearlyWhite && color.green > NearlyWhite && color.blue > NearlyWhite;
    return isWhite ? Black : color;
}

} // namespace

struct Styles::Found {
    std::optional<osg::Color4f> curve;
    std::optional<osg::Color4f> area;
    std::optional<osg::Color4f> other;
};

Style Styles::of(const p21::Fields& styles) const
{
    constexpr std::size_t Most = 16; // the colours of a thing are few
    Found found;
    for (std::size_t i = 0; i < std::min(styles.size(), Most); ++i) {
        const p21::Fields assigned = m_entities.at(styles.reference(i)).list(0);
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
        place = facets::colorBelow(m_entities, style);
}

} // namespace ptx::step::annotations

#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/readers/step/p21/Entities.h"

#include <cstdint>
#include <optional>

namespace ptx::step::facets
{

/// The first colour on the way from entity `number` along references, as the text has it; nothing when there is none
/// near.
std::optional<osg::Color4f> colorBelow(const p21::Entities& entities, std::uint32_t number);

/// The colour that the list of presentation styles `styles` gives a surface, with what its transparency leaves over.
std::optional<osg::Color4f> surfaceColor(const p21::Entities& entities, const p21::Fields& styles);

} // namespace ptx::step::facets

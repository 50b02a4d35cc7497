#pragma once

namespace geometry::rays
{
}

/// Pictures are made with rays, whose names are at hand here.
namespace render
{
using namespace geometry::rays;
}

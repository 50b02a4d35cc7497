#pragma once

#include "render/Tile.h"

namespace render
{

/// Draws all tiles of `image` with `threads` threads, the calling one among them, and reports to `watch` from it. When
/// memory ends in one of them the rest stops and `std::bad_alloc` comes out.
void drawTiles(const PictureScene& scene, QImage& image, int threads, Watch& watch);

} // namespace render

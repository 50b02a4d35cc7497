#include "render/TileCrew.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <system_error>
#include <thread>

namespace render
{

namespace
{

/// Rays are the last part of the work; what comes before is counted up to here.
constexpr double doneBefore = 0.25;

/// Tiles of one picture, handed out one by one.
class TileCrew
{
public:
    TileCrew(const PictureScene& scene, QImage& image, Watch& watch)
        : m_scene(scene), m_canvas{image.bits(), image.bytesPerLine()}, m_picture(image.rect()), m_watch(watch),
          m_columns((image.width() + Tile::side - 1) / Tile::side),
          m_count(m_columns * ((image.height() + Tile::side - 1) / Tile::side))
    {
    }

    void work(bool reports)
    {
        try {
            for (int index = m_next++; index < m_count && !m_watch.cancelled() && !m_isOut; index = m_next++) {
                Tile(m_scene, areaOf(index)).draw(m_canvas, m_watch);
                const int done = ++m_done;
                if (reports)
                    m_watch.report(doneBefore + (1 - doneBefore) * done / m_count);
            }
        } catch (const std::bad_alloc&) {
            m_isOut = true;
        }
    }

    int count() const { return m_count; }
    bool isOutOfMemory() const { return m_isOut; }

private:
    QRect areaOf(int index) const
    {
        const QPoint corner(index % m_columns * Tile::side, index / m_columns * Tile::side);
        return QRect(corner, QSize(Tile::side, Tile::side)) & m_picture;
    }

    const PictureScene& m_scene;
    Canvas m_canvas;
    QRect m_picture;
    Watch& m_watch;
    int m_columns;
    int m_count;
    std::atomic<int> m_next = 0;
    std::atomic<int> m_done = 0;
    std::atomic<bool> m_isOut = false;
};

/// With fewer helpers than wanted the rest does the work.
void startHelpers(std::vector<std::jthread>& helpers, TileCrew& crew, int wanted)
{
    try {
        for (int i = 0; i < wanted; ++i)
            helpers.emplace_back([&crew] { crew.work(false); });
    } catch (const std::system_error&) {
    }
}

} // namespace

void drawTiles(const PictureScene& scene, QImage& image, int threads, Watch& watch)
{
    TileCrew crew(scene, image, watch);
    {
        std::vector<std::jthread> helpers;
        startHelpers(helpers, crew, std::min(threads, crew.count()) - 1);
        crew.work(true);
    }
    if (crew.isOutOfMemory())
        throw std::bad_alloc();
}

} // namespace render

#include "ptx/readers/step/facets/Surface.h"

namespace ptx::step::facets
{

namespace
{

bool isFace(std::string_view type)
{
    return type == "TRIANGULATED_FACE" || type == "COMPLEX_TRIANGULATED_FACE";
}

} // namespace

bool Surface::isOne(std::string_view type)
{
    return isFace(type) || type == "TRIANGULATED_SURFACE_SET" || type == "COMPLEX_TRIANGULATED_SURFACE_SET";
}

// A face has its exact surface behind the normals.
Surface::Surface(const p21::Fields& record)
    : m_record(record), m_indexAt(isFace(record.type()) ? 5 : 4), m_index(record.list(m_indexAt))
{
}

std::size_t Surface::entries(std::size_t points) const
{
    return m_index && m_index.size() > 0 ? m_index.size() : points;
}

std::size_t Surface::pointOf(std::size_t entry) const
{
    if (!m_index || m_index.size() == 0 || entry == 0)
        return entry;
    return m_index.index(entry - 1);
}

void Surface::forEachTriangle(const std::function<bool(const Corners&)>& take) const
{
    if (!m_record.type().starts_with("COMPLEX_"))
        forTriangles(m_record.list(m_indexAt + 1), take);
    else if (forStrips(m_record.list(m_indexAt + 1), take))
        forFans(m_record.list(m_indexAt + 2), take);
}

bool Surface::forTriangles(const p21::Fields& triangles, const std::function<bool(const Corners&)>& take) const
{
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const p21::Fields three = triangles.list(i);
        if (three && !take({three.index(0), three.index(1), three.index(2)}))
            return false;
    }
    return true;
}

bool Surface::forStrips(const p21::Fields& strips, const std::function<bool(const Corners&)>& take) const
{
    for (std::size_t i = 0; i < strips.size(); ++i) {
        const p21::Fields strip = strips.list(i);
        for (std::size_t k = 0; k + 2 < strip.size(); ++k)
            if (!take({strip.index(k + k % 2), strip.index(k + 1 - k % 2), strip.index(k + 2)}))
                return false;
    }
    return true;
}

bool Surface::forFans(const p21::Fields& fans, const std::function<bool(const Corners&)>& take) const
{
    for (std::size_t i = 0; i < fans.size(); ++i) {
        const p21::Fields fan = fans.list(i);
        for (std::size_t k = 1; k + 1 < fan.size(); ++k)
            if (!take({fan.index(0), fan.index(k), fan.index(k + 1)}))
                return false;
    }
    return true;
}

} // namespace ptx::step::facets

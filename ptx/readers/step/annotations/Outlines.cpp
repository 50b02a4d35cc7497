#include "ptx/readers/step/annotations/Outlines.h"

#include "ptx/readers/step/annotations/Pen.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ptx::step::annotations
{

namespace
{

double squaredDistance(const Point& a, const Point& b)
{
    return std::pow(a[0] - b[0], 2) + std::pow(a[1] - b[1], 2) + std::pow(a[2] - b[2], 2);
}

/// Twice the area along the normal.
Point areaOf(const Outline& outline)
{
    Point sum{};
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Point& a = outline[i];
        const Point& b = outline[(i + 1) % outline.size()];
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += a[(k + 1) % 3] * b[(k + 2) % 3] - a[(k + 2) % 3] * b[(k + 1) % 3];
    }
    return sum;
}

double dot(const Point& a, const Point& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// The two corners that are nearest to each other. An edge may be between them where edges are long and corners few, as
/// in no letter; then triangles overlap.
std::pair<std::size_t, std::size_t> nearest(const Outline& a, const Outline& b)
{
    std::pair<std::size_t, std::size_t> found;
    double least = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t k = 0; k < b.size(); ++k)
            if (const double distance = squaredDistance(a[i], b[k]); distance < least) {
                least = distance;
                found = {i, k};
            }
    return found;
}

/// `area` with a line to `hole`, the way around it and the same line back.
void cut(Outline& area, Outline hole)
{
    if (dot(areaOf(area), areaOf(hole)) > 0)
        std::reverse(hole.begin(), hole.end());
    const auto [at, from] = nearest(area, hole);
    std::rotate(hole.begin(), hole.begin() + static_cast<std::ptrdiff_t>(from), hole.end());
    hole.push_back(hole.front());
    hole.push_back(area[at]);
    area.insert(area.begin() + static_cast<std::ptrdiff_t>(at) + 1, hole.begin(), hole.end());
}

} // namespace

std::optional<Outline> withHoles(std::vector<Outline> outlines, Pen& pen)
{
    const auto largest = std::max_element(outlines.begin(), outlines.end(), [](const Outline& a, const Outline& b) {
        return dot(areaOf(a), areaOf(a)) < dot(areaOf(b), areaOf(b));
    });
    if (largest == outlines.end())
        return std::nullopt;
    std::iter_swap(outlines.begin(), largest);
    Outline area = outlines.front();
    for (std::size_t i = 1; i < outlines.size(); ++i) {
        if (!pen.take(area.size() * outlines[i].size()))
            return std::nullopt;
        cut(area, std::move(outlines[i]));
    }
    return area;
}

} // namespace ptx::step::annotations

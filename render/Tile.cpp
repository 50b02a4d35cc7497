#include "render/Tile.h"

#include "geometry/rays/LightColor.h"

#include <array>
#include <cmath>

namespace render
{

namespace
{

/// Half of the square over which openness is evened out.
constexpr int apron = Sky::patternSide / 2;
/// Neighbours count less the farther they lie off the plane of a pixel, in pixels.
constexpr float planeTolerance = 2;
/// What lines are painted with.
const Eigen::Vector3f lineLight(0.012f, 0.013f, 0.015f);

/// What many lines in one pixel cover at most, so that crowded places do not turn black.
constexpr float mostLineCover = 0.6f;

struct Offset {
    int x, y;
};

QRgb toPixel(const Eigen::Vector3f& light, float alpha = 1)
{
    const Eigen::Vector3f display =
        light.unaryExpr([](float c) { return std::min(osg::displayFromLinear(c), 1.0f) * 255 + 0.5f; });
    return qRgba(int(display.x()), int(display.y()), int(display.z()), int(alpha * 255 + 0.5f));
}

/// From 1 for equal normals quickly down to 0 for perpendicular ones: the power of 8 of their cosine.
float agreement(const Eigen::Vector3f& a, const Eigen::Vector3f& b)
{
    const float p1 = std::max(a.dot(b), 0.0f), p2 = p1 * p1, p4 = p2 * p2;
    return p4 * p4;
}

int wrapped(int value)
{
    return ((value % Sky::patternSide) + Sky::patternSide) % Sky::patternSide;
}

} // namespace

Tile::Tile(const PictureScene& scene, const QRect& area)
    : m_scene(scene), m_area(area), m_width(area.width() + 2 * apron), m_height(area.height() + 2 * apron),
      m_samples(scene.options.samples), m_columns(m_width * m_samples),
      m_pixels(std::size_t(m_width) * std::size_t(m_height)),
      m_hits(std::size_t(m_columns) * std::size_t(m_height) * std::size_t(m_samples)), m_first(m_hits.size())
{
}

void Tile::draw(const Canvas& canvas, const Watch& watch)
{
    eachRow(&Tile::probeRow, watch);
    eachRow(&Tile::completeRow, watch);
    for (int y = apron; y < m_height - apron && !watch.cancelled(); ++y) {
        QRgb* line = canvas.line(m_area.y() + y - apron) + m_area.x();
        for (int x = apron; x < m_width - apron; ++x)
            line[x - apron] = colorOf(x, y);
    }
}

void Tile::eachRow(RowStep step, const Watch& watch)
{
    for (int y = 0; y < m_height && !watch.cancelled(); ++y)
        (this->*step)(y);
}

/// A different column in each row of samples, so that the probes lie well apart.
int Tile::probeColumn(int i) const
{
    const bool isShifted = m_samples % 2 == 0 && 2 * i >= m_samples;
    return (2 * i + (isShifted ? 1 : 0)) % m_samples;
}

void Tile::probeRow(int y)
{
    std::vector<QPoint> probes;
    for (int i = 0; i < m_samples; ++i)
        for (int x = 0; x < m_width; ++x)
            probes.emplace_back(x * m_samples + probeColumn(i), y * m_samples + i);
    trace(probes);
}

void Tile::completeRow(int y)
{
    for (int x = 0; x < m_width; ++x)
        complete(x, y);
}

void Tile::trace(const std::vector<QPoint>& samples)
{
    std::vector<Ray> rays;
    rays.reserve(samples.size());
    for (const QPoint& sample : samples)
        rays.push_back(rayOf(sample.x(), sample.y()));
    std::vector<std::optional<Hit>> hits(rays.size());
    m_scene.scene.firstHits(rays, hits);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t index = sampleIndex(samples[i].x(), samples[i].y());
        m_hits[index] = hits[i];
        m_first[index] = m_scene.painter.describe(rays[i], hits[i]);
    }
}

Ray Tile::rayOf(int column, int row) const
{
    const SnapshotOptions& options = m_scene.options;
    const float across = (float(column) + 0.5f) / float(m_samples) + float(m_area.x() - apron);
    const float down = (float(row) + 0.5f) / float(m_samples) + float(m_area.y() - apron);
    return m_scene.camera.rayAt(2 * across / float(options.width) - 1, 1 - 2 * down / float(options.height));
}

bool Tile::isPlain(int x, int y) const
{
    const FirstHit& reference = first(x * m_samples + probeColumn(0), y * m_samples);
    const float size = pixelSizeAt(reference.position);
    for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, m_height - 1); ++ny)
        for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, m_width - 1); ++nx)
            for (int i = 0; i < m_samples; ++i)
                if (!isAlike(reference, first(nx * m_samples + probeColumn(i), ny * m_samples + i), size))
                    return false;
    return true;
}

/// In a plain pixel each probe stands for the row of samples that it lies in.
void Tile::complete(int x, int y)
{
    Pixel& sum = m_pixels[pixelIndex(x, y)];
    sum.isPlain = isPlain(x, y);
    std::vector<QPoint> others;
    for (int i = 0; i < m_samples; ++i) {
        const int row = y * m_samples + i, probe = x * m_samples + probeColumn(i);
        for (int column = x * m_samples; column < (x + 1) * m_samples; ++column) {
            if (column != probe && sum.isPlain)
                m_first[sampleIndex(column, row)] = first(probe, row);
            else if (column != probe)
                others.emplace_back(column, row);
        }
    }
    trace(others);
    if (sum.isPlain)
        addProbes(x, y);
    else
        addSamples(x, y);
}

void Tile::addProbes(int x, int y)
{
    for (int i = 0; i < m_samples; ++i)
        addSample(x, y, {x * m_samples + probeColumn(i), y * m_samples + i, i, m_samples});
}

void Tile::addSamples(int x, int y)
{
    for (int i = 0; i < m_samples * m_samples; ++i)
        addSample(x, y, {x * m_samples + i % m_samples, y * m_samples + i / m_samples, i, m_samples * m_samples});
}

void Tile::addSample(int x, int y, const Sample& sample)
{
    const int pictureX = m_area.x() + x - apron, pictureY = m_area.y() + y - apron;
    const int skyCount = (m_scene.sky.raysPerPixel() + sample.count - 1) / sample.count;
    const SkyRays skyRays = {wrapped(pictureY) * Sky::patternSide + wrapped(pictureX), sample.index * skyCount,
                             skyCount};
    const Eigen::Vector3f backdrop = m_scene.backdrop.at(pictureX, pictureY);
    const Sight sight = m_scene.painter.see(rayOf(sample.column, sample.row),
                                            m_hits[sampleIndex(sample.column, sample.row)], backdrop, skyRays);
    Pixel& sum = m_pixels[pixelIndex(x, y)];
    if (sum.weight <= 0) {
        sum.position = sight.position;
        sum.normal = sight.normal;
    }
    sum.light += sight.light * (1 / float(sample.count));
    sum.openness += sight.openness;
    sum.weight += sight.weight;
    sum.clear += sight.clear / float(sample.count);
    sum.clearAmbient += sight.clearAmbient / float(sample.count);
}

QRgb Tile::colorOf(int x, int y) const
{
    const Pixel& here = pixel(x, y);
    const Light& light = here.light;
    const float openness = evenOpenness(x, y);
    const Eigen::Vector3f sum = light.fixed + light.ambient * openness;
    const float line = m_scene.options.featureLines ? lineCover(x, y) : 0;
    const Eigen::Vector3f all = sum * (1 - line) + lineLight * line;
    if (!m_scene.options.backdrop.isTransparent)
        return toPixel(all);
    const float alpha = std::clamp(1 - (here.clear + here.clearAmbient * openness) * (1 - line), 0.0f, 1.0f);
    return alpha > 0 ? toPixel(all / alpha, alpha) : 0;
}

float Tile::evenOpenness(int x, int y) const
{
    const Pixel& center = pixel(x, y);
    if (center.weight <= 0)
        return 1;
    const float tolerance = planeTolerance * pixelSizeAt(center.position);
    float sum = 0, weights = 0;
    for (int dy = -apron; dy <= apron; ++dy)
        for (int dx = -apron; dx <= apron; ++dx) {
            const Pixel& other = pixel(x + dx, y + dy);
            const float off = (other.position - center.position).dot(center.normal) / tolerance;
            const float weight = agreement(other.normal, center.normal) * std::exp(-off * off);
            sum += weight * other.openness;
            weights += weight * other.weight;
        }
    return weights > 0 ? sum / weights : 1;
}

float Tile::lineCover(int x, int y) const
{
    if (pixel(x, y).isPlain)
        return 0;
    float sum = 0;
    for (int i = 0; i < m_samples * m_samples; ++i)
        sum += strongestLine(x * m_samples + i % m_samples, y * m_samples + i / m_samples);
    return std::min(sum / float(m_samples * m_samples), mostLineCover);
}

float Tile::strongestLine(int column, int row) const
{
    static constexpr std::array<Offset, 8> around = {
        {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}}};
    const FirstHit& here = first(column, row);
    const float size = pixelSizeAt(here.position);
    float strongest = 0;
    for (const Offset& offset : around)
        strongest = std::max(strongest, lineStrength(here, first(column + offset.x, row + offset.y), size));
    return strongest;
}

float Tile::pixelSizeAt(const Eigen::Vector3f& position) const
{
    return 2 * m_scene.camera.halfHeightAt(position) / float(m_scene.options.height);
}

} // namespace render

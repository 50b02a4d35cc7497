#include "render/studio/Environment.h"

#include "render/studio/Sampling.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <array>
#include <cmath>
#include <system_error>
#include <thread>

namespace render::studio
{

namespace
{

constexpr int leastSide = 64, mostSide = 1024;
constexpr int gatheredSide = 64, gatheredFromSide = 32;

/// How a level of roughness is made.
struct LevelPlan {
    int side, samples;
};
constexpr std::array<LevelPlan, 8> levelPlans = {
    {{256, 96}, {128, 128}, {64, 192}, {64, 256}, {64, 256}, {64, 256}, {64, 256}, {64, 256}}};

int sideFor(int detail)
{
    int side = leastSide;
    while (side < mostSide && side < detail / 2)
        side *= 2;
    return side;
}

class Maker
{
public:
    Maker(int threads, const std::atomic<bool>* cancel) : m_threads(threads), m_cancel(cancel) {}

    /// Rows are shared out among the threads; each is the same whoever makes it.
    template <class RowWork>
    void eachRow(int count, const RowWork& work) const
    {
        std::atomic<int> next = 0;
        const auto run = [&] {
            for (int row = next++; row < count && !(m_cancel && *m_cancel); row = next++)
                work(row);
        };
        std::vector<std::jthread> helpers;
        try {
            for (int i = 1; i < m_threads; ++i)
                helpers.emplace_back(run);
        } catch (const std::system_error&) {
            // with fewer helpers the rest does the work
        }
        run();
    }

    template <class Value>
    RadianceMap filled(int side, const Value& value) const
    {
        RadianceMap map(side);
        eachRow(side, [&](int row) {
            for (int column = 0; column < side; ++column)
                map.setValue(column, row, value(column, row));
        });
        map.closeBorders();
        return map;
    }

private:
    int m_threads;
    const std::atomic<bool>* m_cancel;
};

/// Each value the mean of what lies in its square.
RadianceMap sharpMap(const Maker& maker, const RadianceFunction& light, int detail)
{
    const int side = sideFor(detail);
    const int steps = std::clamp(detail / (2 * side) + 1, 2, 8);
    return maker.filled(side, [&](int column, int row) {
        Eigen::Vector3f sum = Eigen::Vector3f::Zero();
        for (int i = 0; i < steps * steps; ++i) {
            const float x = float(column) + (float(i % steps) + 0.5f) / float(steps);
            const float y = float(row) + (float(i / steps) + 0.5f) / float(steps);
            sum += light(RadianceMap::directionAt(x, y, side));
        }
        return Eigen::Vector3f(sum / float(steps * steps));
    });
}

/// A direction that light of a lobe comes from, about the z axis.
struct LobeSample {
    Eigen::Vector3f direction;
    float weight;
    std::size_t level; ///< of the halved maps: the one whose values are about as large as what the sample stands for
};

std::vector<LobeSample> lobeSamples(float roughness, int count, int side, std::size_t levels)
{
    const float pi = float(EIGEN_PI);
    const float alpha = roughness * roughness;
    std::vector<LobeSample> samples;
    for (int i = 0; i < count; ++i) {
        const Eigen::Vector3f half = halfVector(i, count, alpha);
        const Eigen::Vector3f direction(2 * half.z() * half.x(), 2 * half.z() * half.y(), 2 * half.z() * half.z() - 1);
        if (direction.z() <= 0)
            continue;
        const float bend = half.z() * half.z() * (alpha * alpha - 1) + 1;
        const float density = alpha * alpha / (4 * pi * bend * bend);
        const float size = 1 / (float(count) * density), valueSize = 4 * pi / float(side * side);
        const float level = std::clamp(std::log2(size / valueSize) / 2, 0.0f, float(levels - 1));
        samples.push_back({direction, direction.z(), std::size_t(std::lround(level))});
    }
    return samples;
}

RadianceMap roughMap(const Maker& maker, const std::vector<RadianceMap>& halvings, float roughness,
                     const LevelPlan& plan)
{
    const std::vector<LobeSample> samples =
        lobeSamples(roughness, plan.samples, halvings.front().side(), halvings.size());
    return maker.filled(plan.side, [&](int column, int row) {
        const Eigen::Vector3f axis = RadianceMap::directionAt(float(column) + 0.5f, float(row) + 0.5f, plan.side);
        const Eigen::Matrix3f frame = frameAround(axis);
        Eigen::Vector3f sum = Eigen::Vector3f::Zero();
        float weights = 0;
        for (const LobeSample& sample : samples) {
            sum += halvings[sample.level].at(frame * sample.direction) * sample.weight;
            weights += sample.weight;
        }
        return Eigen::Vector3f(sum / weights);
    });
}

RadianceMap gatheredMap(const Maker& maker, const RadianceMap& source)
{
    struct Piece {
        Eigen::Vector3f direction, light;
        float weight;
    };
    std::vector<Piece> pieces;
    for (int i = 0; i < source.side() * source.side(); ++i) {
        const int column = i % source.side(), row = i / source.side();
        const float x = float(column) + 0.5f, y = float(row) + 0.5f;
        pieces.push_back({RadianceMap::directionAt(x, y, source.side()), source.value(column, row),
                          RadianceMap::weightAt(x, y, source.side())});
    }
    return maker.filled(gatheredSide, [&](int column, int row) {
        const Eigen::Vector3f normal = RadianceMap::directionAt(float(column) + 0.5f, float(row) + 0.5f, gatheredSide);
        Eigen::Vector3f sum = Eigen::Vector3f::Zero();
        float weights = 0;
        for (const Piece& piece : pieces) {
            const float weight = piece.weight * std::max(normal.dot(piece.direction), 0.0f);
            sum += piece.light * weight;
            weights += weight;
        }
        return Eigen::Vector3f(sum / weights);
    });
}

} // namespace

Environment::Environment(const RadianceFunction& light, int detail, int threads, const std::atomic<bool>* cancel)
    : m_gathered(1)
{
    const Maker maker(threads, cancel);
    std::vector<RadianceMap> halvings{sharpMap(maker, light, detail)};
    while (halvings.back().side() > 2)
        halvings.push_back(halvings.back().halved());
    for (const RadianceMap& map : halvings)
        if (map.side() == gatheredFromSide)
            m_gathered = gatheredMap(maker, map);
    m_levels.push_back(halvings.front());
    for (std::size_t i = 0; i < levelPlans.size(); ++i)
        m_levels.push_back(roughMap(maker, halvings, float(i + 1) / float(levelPlans.size()), levelPlans[i]));
}

Eigen::Vector3f Environment::reflected(const Eigen::Vector3f& direction, float roughness) const
{
    const float level = std::clamp(roughness, 0.0f, 1.0f) * float(m_levels.size() - 1);
    const std::size_t lower = std::min(std::size_t(level), m_levels.size() - 2);
    const float part = level - float(lower);
    return m_levels[lower].at(direction) * (1 - part) + m_levels[lower + 1].at(direction) * part;
}

} // namespace render::studio

// Rays a second of ambient occlusion against a bare loop of the ray tracer: as many rays of the same kind, from the
// same places, in the same directions and lengths, on as many threads, with nothing but the calls of the tracer around
// them.

#include "files/scenefile/SceneFile.h"
#include "geometry/AmbientOcclusion.h"
#include "geometry/OcclusionRays.h"
#include "geometry/rays/RayScene.h"
#include "scene/GeometryWalk.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <thread>

namespace
{

constexpr int raysAVertex = 96;
constexpr int rounds = 5;
constexpr std::size_t packet = 8;

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct alignas(32) Packet {
    int valid[packet];
    RTCRay8 rays;
};

/// One scene with all triangles of the list in it, placed; no instances.
class BareScene
{
public:
    BareScene(const geometry::rays::PartList& list, int threads) : m_device(rtcNewDevice(settings(threads).c_str()))
    {
        m_scene.reset(rtcNewScene(m_device.get()));
        rtcSetSceneFlags(m_scene.get(), RTC_SCENE_FLAG_ROBUST);
        for (const geometry::rays::Part& part : list.parts)
            add(part, *list.shapes[part.shape].mesh);
        rtcCommitScene(m_scene.get());
    }

    /// @return how many rays met something
    std::size_t shoot(const std::vector<Packet>& packets, int threads) const
    {
        std::vector<std::size_t> blocked(std::size_t(threads), 0);
        {
            std::vector<std::jthread> crew;
            for (int t = 0; t < threads; ++t)
                crew.emplace_back([&, t] { blocked[std::size_t(t)] = shootShare(packets, std::size_t(t), threads); });
        }
        std::size_t sum = 0;
        for (const std::size_t one : blocked)
            sum += one;
        return sum;
    }

private:
    static std::string settings(int threads) { return "threads=" + std::to_string(threads); }

    void add(const geometry::rays::Part& part, const osg::Mesh& mesh)
    {
        const geometry::rays::GeometryHandle geometry(rtcNewGeometry(m_device.get(), RTC_GEOMETRY_TYPE_TRIANGLE));
        auto* vertices = static_cast<float*>(rtcSetNewGeometryBuffer(
            geometry.get(), RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, sizeof(osg::Vec3f), mesh.positions.size()));
        for (const osg::Vec3f& p : mesh.positions) {
            const Eigen::Vector3d placed = part.placement * osg::toEigen(p).cast<double>();
            for (int i = 0; i < 3; ++i)
                *vertices++ = float(placed[i]);
        }
        void* indices = rtcSetNewGeometryBuffer(geometry.get(), RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                                3 * sizeof(std::uint32_t), mesh.triangles.size() / 3);
        std::copy(mesh.triangles.begin(), mesh.triangles.end(), static_cast<std::uint32_t*>(indices));
        rtcCommitGeometry(geometry.get());
        rtcAttachGeometry(m_scene.get(), geometry.get());
    }

    std::size_t shootShare(const std::vector<Packet>& packets, std::size_t first, int threads) const
    {
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        std::size_t blocked = 0;
        for (std::size_t i = first; i < packets.size(); i += std::size_t(threads)) {
            Packet mine = packets[i];
            rtcOccluded8(mine.valid, m_scene.get(), &context, &mine.rays);
            blocked +=
                std::size_t(std::count_if(mine.rays.tfar, mine.rays.tfar + packet, [](float t) { return t < 0; }));
        }
        return blocked;
    }

    geometry::rays::DeviceHandle m_device;
    geometry::rays::SceneHandle m_scene;
};

/// Rays of the directions of a cosine-weighted sky, ready to be shot, from at most `most` vertices.
std::vector<Packet> packetsOf(const geometry::rays::PartList& list, std::size_t most)
{
    std::vector<Packet> packets;
    std::size_t taken = 0;
    for (const geometry::rays::Part& part : list.parts) {
        for (const geometry::Lookout& lookout : geometry::lookoutsOf(*list.shapes[part.shape].mesh)) {
            if (!(lookout.normal.squaredNorm() > 0.5f) || taken++ >= most)
                continue;
            const Eigen::Vector3f n =
                (part.placement.linear() * lookout.normal.cast<double>()).normalized().cast<float>();
            const Eigen::Vector3f at =
                (part.placement * lookout.position.cast<double>()).cast<float>() + n * geometry::rays::rayLift;
            const Eigen::Vector3f s = n.unitOrthogonal(), t = n.cross(s);
            for (int i = 0; i < raysAVertex; i += int(packet)) {
                Packet next = {};
                for (std::size_t k = 0; k < packet; ++k) {
                    // As the sky spreads its rays: the golden ratio of three dimensions.
                    const double number = 25.0 * (i + double(k)) + 0.5;
                    const auto part1 = [&](double ratio) { return float(number * ratio - std::floor(number * ratio)); };
                    const float angle = 6.2831853f * part1(0.8191725133961645), y = part1(0.6710436067037893);
                    const Eigen::Vector3f direction = s * (std::sqrt(y) * std::cos(angle)) +
                                                      t * (std::sqrt(y) * std::sin(angle)) + n * std::sqrt(1 - y);
                    next.valid[k] = -1;
                    next.rays.org_x[k] = at.x();
                    next.rays.org_y[k] = at.y();
                    next.rays.org_z[k] = at.z();
                    next.rays.dir_x[k] = direction.x();
                    next.rays.dir_y[k] = direction.y();
                    next.rays.dir_z[k] = direction.z();
                    next.rays.tfar[k] = geometry::rays::skyReach * part1(0.5497004779019703);
                    next.rays.mask[k] = ~0u;
                }
                packets.push_back(next);
            }
        }
    }
    return packets;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measure(const char* file)
{
    const osg::RefPtr<osg::NodePtr> root(osg::scenefile::readSceneFile(QString::fromLocal8Bit(file)).value());
    if (!root) {
        std::printf("%s cannot be read\n", file);
        return;
    }
    const std::function<void(double)> noProgress;
    const geometry::rays::Watch watch(noProgress, nullptr);
    geometry::rays::PartList list =
        geometry::rays::collectParts(root, std::numeric_limits<std::uint32_t>::max(), watch);
    geometry::rays::moveToStage(list);
    const int threads = int(std::max(1u, std::thread::hardware_concurrency()));
    const BareScene bare(list, threads);
    constexpr std::size_t mostVertices = 40000;
    const std::vector<Packet> packets = packetsOf(list, mostVertices);
    std::vector<double> bareRates, ourRates;
    std::size_t blocked = 0;
    for (int i = 0; i < rounds; ++i) {
        auto start = std::chrono::steady_clock::now();
        blocked = bare.shoot(packets, threads);
        bareRates.push_back(double(packets.size() * packet) / secondsSince(start));
        start = std::chrono::steady_clock::now();
        const geometry::OcclusionResult result = geometry::addAmbientOcclusion(root, {raysAVertex, 8, threads});
        ourRates.push_back(double(result.rays) / secondsSince(start));
    }
    std::printf("%s: %zu parts, bare %.2f million rays/s (%.0f %% blocked), ambient occlusion with all around it %.2f, "
                "ratio %.2f\n",
                file, list.parts.size(), median(bareRates) / 1e6,
                100.0 * double(blocked) / double(packets.size() * packet), median(ourRates) / 1e6,
                median(ourRates) / median(bareRates));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    zn::StandaloneSession session;
    for (int i = 1; i < argc; ++i)
        measure(argv[i]);
    return 0;
}

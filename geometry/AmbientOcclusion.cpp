#include "geometry/AmbientOcclusion.h"

#include "geometry/OcclusionRays.h"
#include "geometry/rays/RayScene.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <QCoreApplication>

#include <atomic>
#include <limits>
#include <map>
#include <new>
#include <system_error>
#include <thread>

namespace geometry
{

namespace
{

/// A piece of a shape that one thread takes at a time.
struct Piece {
    std::size_t shape = 0;
    std::size_t first = 0;
    std::size_t end = 0; ///< vertex
};

constexpr std::size_t verticesAPiece = 1024;

class Occlusion
{
public:
    Occlusion(const rays::PartList& list, const OcclusionOptions& options)
        : m_list(list), m_options(options), m_places(list.shapes.size()), m_values(list.shapes.size())
    {
        std::vector<std::vector<std::size_t>> uses(list.shapes.size());
        for (std::size_t i = 0; i < list.parts.size(); ++i)
            uses[list.parts[i].shape].push_back(i);
        for (std::size_t shape = 0; shape < uses.size(); ++shape)
            choosePlaces(shape, uses[shape]);
    }

    void run(const rays::RayScene& scene, int threads)
    {
        const rays::Sky sky(scene, m_options.rays);
        std::vector<std::jthread> helpers;
        try {
            for (int i = 1; i < threads; ++i)
                helpers.emplace_back([&] { takePieces(sky); });
        } catch (const std::system_error&) {
            // With fewer helpers the rest does the work.
        }
        takePieces(sky);
    }

    bool isOutOfMemory() const { return m_isOut; }
    std::uint64_t rays() const { return m_rays; }
    std::vector<float> takeValues(std::size_t shape) { return std::move(m_values[shape]); }

private:
    void choosePlaces(std::size_t shape, const std::vector<std::size_t>& uses)
    {
        const osg::Mesh& mesh = *m_list.shapes[shape].mesh;
        if (mesh.triangles.empty())
            return;
        const std::size_t wanted = std::min(uses.size(), std::size_t(m_options.mostPlaces));
        for (std::size_t i = 0; i < wanted; ++i)
            m_places[shape].push_back(uses[i * uses.size() / wanted]);
        m_values[shape].resize(mesh.positions.size());
        for (std::size_t first = 0; first < mesh.positions.size(); first += verticesAPiece)
            m_pieces.push_back({shape, first, std::min(first + verticesAPiece, mesh.positions.size())});
    }

    void takePieces(const rays::Sky& sky)
    {
        try {
            std::size_t known = m_list.shapes.size();
            std::vector<Lookout> lookouts;
            for (std::size_t i = m_next++; i < m_pieces.size() && !m_isOut; i = m_next++) {
                if (m_pieces[i].shape != known)
                    lookouts = lookoutsOf(*m_list.shapes[m_pieces[i].shape].mesh);
                known = m_pieces[i].shape;
                work(sky, m_pieces[i], lookouts);
            }
        } catch (const std::bad_alloc&) {
            m_isOut = true;
        }
    }

    void work(const rays::Sky& sky, const Piece& piece, const std::vector<Lookout>& lookouts)
    {
        const std::vector<Lookout> mine(lookouts.begin() + std::ptrdiff_t(piece.first),
                                        lookouts.begin() + std::ptrdiff_t(piece.end));
        std::vector<float> sums(mine.size(), 0);
        const std::vector<std::size_t>& places = m_places[piece.shape];
        for (const std::size_t part : places)
            addOpenness(sky, mine, m_list.parts[part].placement, sums);
        for (std::size_t i = 0; i < sums.size(); ++i)
            m_values[piece.shape][piece.first + i] = sums[i] / float(places.size());
        m_rays += mine.size() * places.size() * std::uint64_t(m_options.rays);
    }

    const rays::PartList& m_list;
    const OcclusionOptions& m_options;
    std::vector<std::vector<std::size_t>> m_places; ///< parts, for each shape
    std::vector<std::vector<float>> m_values;
    std::vector<Piece> m_pieces;
    std::atomic<std::size_t> m_next = 0;
    std::atomic<std::uint64_t> m_rays = 0;
    std::atomic<bool> m_isOut = false;
};

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(AmbientOcclusion)

public:
    static QString outOfMemory() { return tr("There is not enough memory for ambient occlusion"); }
    static QString rayTracer(const std::string& text)
    {
        return tr("The ray tracer reports: %1").arg(QString::fromStdString(text));
    }
};

OcclusionResult measure(rays::PartList& list, Occlusion& occlusion, const OcclusionOptions& options)
{
    const std::function<void(double)> noProgress;
    rays::Watch watch(noProgress, nullptr);
    const int cores = int(std::max(std::thread::hardware_concurrency(), 1u));
    const int threads = options.threads > 0 ? options.threads : cores;
    const rays::RayDevice device(threads, watch);
    const rays::RayScene scene(device, list, Eigen::Vector3f::Zero(), {}, watch);
    if (device.isOutOfMemory())
        throw std::bad_alloc();
    if (device.hasFailed())
        return {Texts::rayTracer(device.errorText()), 0};
    occlusion.run(scene, threads);
    if (occlusion.isOutOfMemory())
        throw std::bad_alloc();
    return {{}, occlusion.rays()};
}

/// Gives the geometries at and below `root` their meshes with values. Those that share a mesh go on sharing it.
void store(const osg::NodePtr& root, const rays::PartList& list, Occlusion& occlusion)
{
    std::map<const osg::Mesh*, std::shared_ptr<const osg::Mesh>> changed;
    for (std::size_t shape = 0; shape < list.shapes.size(); ++shape) {
        std::vector<float> values = occlusion.takeValues(shape);
        if (values.empty())
            continue;
        auto mesh = std::make_shared<osg::Mesh>(*list.shapes[shape].mesh);
        mesh->occlusion = std::move(values);
        changed[list.shapes[shape].mesh.get()] = std::move(mesh);
    }
    for (const osg::GeometryPtr& geometry : geometriesBelow(root))
        if (const auto found = changed.find(&osg::GeometryAccess::mesh(*geometry)); found != changed.end())
            osg::exchangeMesh(geometry, found->second);
}

} // namespace

OcclusionResult addAmbientOcclusion(const osg::NodePtr& root, const OcclusionOptions& options)
{
    try {
        const std::function<void(double)> noProgress;
        const rays::Watch watch(noProgress, nullptr);
        rays::PartList list = rays::collectParts(root, std::numeric_limits<std::uint32_t>::max(), watch);
        if (list.parts.empty())
            return {};
        rays::moveToStage(list);
        Occlusion occlusion(list, options);
        OcclusionResult result = measure(list, occlusion, options);
        if (result.error.isEmpty())
            store(root, list, occlusion);
        return result;
    } catch (const std::bad_alloc&) {
        return {Texts::outOfMemory(), 0};
    }
}

} // namespace geometry

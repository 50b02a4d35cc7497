#include "tests/roads/ptxconvert/ConvertRun.h"

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"

#include <QCoreApplication>
#include <QProcess>

#include <cmath>
#include <limits>

namespace ptxtest
{

namespace
{

constexpr int Patience = 100000; // ms

osg::Vec3f minus(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

double dot(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return double(a.x) * b.x + double(a.y) * b.y + double(a.z) * b.z;
}

osg::Vec3f cross(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

void grow(Measures& measures, const osg::Vec3f& p)
{
    measures.low = {std::min(measures.low.x, p.x), std::min(measures.low.y, p.y), std::min(measures.low.z, p.z)};
    measures.high = {std::max(measures.high.x, p.x), std::max(measures.high.y, p.y), std::max(measures.high.z, p.z)};
}

void addMesh(const osg::Mesh& mesh, const osg::Matrix& place, Measures& measures)
{
    std::vector<osg::Vec3f> points;
    for (const osg::Vec3f& position : mesh.positions)
        grow(measures, points.emplace_back(osg::transformPoint(place, position)));
    for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        const osg::Vec3f& a = points[mesh.triangles[i]];
        const osg::Vec3f normal =
            cross(minus(points[mesh.triangles[i + 1]], a), minus(points[mesh.triangles[i + 2]], a));
        measures.area += std::sqrt(dot(normal, normal)) / 2;
        measures.volume += dot(a, normal) / 6;
    }
    measures.triangles += mesh.triangles.size() / 3;
}

void addTree(const osg::NodePtr& node, osg::Matrix place, Measures& measures)
{
    if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
        place = place * transform->getMatrix();
    if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
        addMesh(osg::GeometryAccess::mesh(*geometry), place, measures);
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        addTree(node->getChild(i), place, measures);
}

template <class Visit>
void visitAll(const osg::NodePtr& root, Visit visit)
{
    if (root)
        osg::traverse(root, [&](const osg::NodePtr& node) {
            visit(node);
            return osg::Action::Continue;
        });
}

} // namespace

ConvertRun::ConvertRun() = default;
ConvertRun::~ConvertRun() = default;

QString ConvertRun::program()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/ptxconvert");
}

int ConvertRun::convert(const std::string& input, const std::vector<std::string>& options)
{
    QStringList arguments;
    for (const std::string& option : options)
        arguments << QString::fromStdString(option);
    return run(arguments << QString::fromStdString(input) << QString::fromStdString(output()));
}

int ConvertRun::convertText(const std::string& name, const std::string& content,
                            const std::vector<std::string>& options)
{
    return convert(m_folder.write(name, content), options);
}

int ConvertRun::run(const QStringList& arguments)
{
    QProcess process;
    process.start(program(), arguments);
    if (!process.waitForFinished(Patience)) {
        process.kill();
        process.waitForFinished();
        return -1;
    }
    m_standardOutput = process.readAllStandardOutput().toStdString();
    m_standardError = process.readAllStandardError().toStdString();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 128 + process.exitCode();
}

osg::NodePtr ConvertRun::scene()
{
    const files::Result<osg::NodePtr> read = osg::scenefile::readSceneFile(QString::fromStdString(output()));
    m_scene = read ? read.value() : osg::NodePtr();
    return m_scene;
}

std::vector<osg::NodePtr> nodesNamed(const osg::NodePtr& root, const std::string& name)
{
    std::vector<osg::NodePtr> result;
    visitAll(root, [&](const osg::NodePtr& node) {
        if (nameOf(node) == name)
            result.push_back(node);
    });
    return result;
}

osg::NodePtr nodeNamed(const osg::NodePtr& root, const std::string& name)
{
    const std::vector<osg::NodePtr> all = nodesNamed(root, name);
    return all.empty() ? osg::NodePtr() : all.front();
}

std::vector<osg::GeometryPtr> geometries(const osg::NodePtr& root)
{
    std::vector<osg::GeometryPtr> result;
    visitAll(root, [&](const osg::NodePtr& node) {
        if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
            result.push_back(geometry);
    });
    return result;
}

Look lookOf(const osg::GeometryPtr& geometry)
{
    const auto material = osg::fcCast<osg::SimpleMaterial>(geometry->getMaterial());
    return material ? Look{material->getDiffuse(), material->getTransparency()} : Look();
}

Measures measure(const osg::NodePtr& root)
{
    constexpr float Far = std::numeric_limits<float>::max();
    Measures measures;
    measures.low = {Far, Far, Far};
    measures.high = {-Far, -Far, -Far};
    if (root)
        addTree(root, {}, measures);
    return measures;
}

std::string nameOf(const osg::NodePtr& node)
{
    const char* name = osg::getName(node);
    return name ? name : "";
}

} // namespace ptxtest

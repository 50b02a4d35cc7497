#include "tests/roads/CorpusImport.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "importer/SceneText.h"
#include "scene/Attributes.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"
#include "scene/OccurrenceIds.h"
#include "scene/Tags.h"
#include "standalone/startup/StandaloneSession.h"

#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace corpustest
{

namespace
{

osg::Matrix worldMatrix(osg::NodePtr node)
{
    osg::Matrix matrix;
    for (; node; node = node->getParent())
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            matrix = transform->getMatrix() * matrix;
    return matrix;
}

/// The name of the part; the files of one set call their inner nodes all alike.
std::string partName(osg::NodePtr node)
{
    while (std::string(osg::getName(node)) == "MASTER")
        node = node->getParent();
    return osg::getName(node);
}

std::string rounded(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, " %.2f", std::abs(value) < 0.005 ? 0.0 : value);
    return text;
}

void grow(Box& box, const osg::Vec3f& p)
{
    box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y), std::min(box.low.z, p.z)};
    box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y), std::max(box.high.z, p.z)};
}

void noteBox(const std::string& part, const osg::Mesh& mesh, const osg::Matrix& matrix, Import& import)
{
    constexpr float Far = std::numeric_limits<float>::max();
    Box& box = import.boxes.try_emplace(part, Box{{Far, Far, Far}, {-Far, -Far, -Far}}).first->second;
    for (const osg::Vec3f& position : mesh.positions)
        grow(box, osg::transformPoint(matrix, position));
}

void notePlaces(const osg::NodePtr& root, Import& import)
{
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const auto geometry = osg::fcCast<osg::Geometry>(node->getCore());
        if (!geometry)
            return osg::Action::Continue;
        const osg::Matrix matrix = worldMatrix(node);
        std::string place = partName(node);
        noteBox(place, osg::GeometryAccess::mesh(*geometry), matrix, import);
        for (const unsigned i : {12u, 13u, 14u})
            place += rounded(matrix[i]);
        import.places.push_back(place);
        for (const unsigned i : {0u, 1u, 2u, 4u, 5u, 6u, 8u, 9u, 10u})
            place += rounded(matrix[i]);
        import.matrices.push_back(place);
        return osg::Action::Continue;
    });
    std::sort(import.places.begin(), import.places.end());
    std::sort(import.matrices.begin(), import.matrices.end());
}

std::vector<std::string> tagsBelow(const osg::NodePtr& root)
{
    std::vector<std::string> result;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const char* name = osg::getName(node);
        std::string line = name ? name : "-";
        for (const std::string& tag : osg::tagsOf(node))
            line += "; " + tag;
        for (const osg::Attribute& attribute : osg::attributesOf(osg::AttachmentContainerPtr(node)))
            line += "; " + attribute.name + "=" + osg::textOf(attribute);
        result.push_back(std::move(line));
        return osg::Action::Continue;
    });
    return result;
}

std::vector<std::string> idsBelow(const osg::NodePtr& root)
{
    const osg::OccurrenceIds ids(root);
    std::vector<std::string> result;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (node != root)
            result.push_back(ids.of(node));
        return osg::Action::Continue;
    });
    return result;
}

} // namespace

Import import(const QString& file, const char* processes, const char* references)
{
    zn::StandaloneSession session;
    EXPECT_FALSE(session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT)));
    EXPECT_FALSE(session.settings().set(QStringLiteral("processes.most"), QString::fromUtf8(processes)));
    EXPECT_FALSE(session.settings().set(QStringLiteral("optimize.sourceReferences"), QString::fromUtf8(references)));
    zn::Importer importer(session);
    Import import;
    QEventLoop loop;
    QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
        import.result = end;
        loop.quit();
    });
    QTimer::singleShot(300000, &loop, &QEventLoop::quit);
    zn::ImportRequest request{file};
    request.wantsStructure = true;
    importer.import(request);
    loop.exec();
    import.tree = zn::describeScene(session.sceneRoot());
    import.tags = tagsBelow(session.sceneRoot());
    import.ids = idsBelow(session.sceneRoot());
    notePlaces(session.sceneRoot(), import);
    import.result.node = osg::NodePtr();
    return import;
}

} // namespace corpustest

#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "render/Snapshot.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"

#include <gtest/gtest.h>

#include <QImage>

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace render
{

/// Small scenes, and what pictures of them hold.
class RenderTest : public SceneGraphTest
{
protected:
    using Root = osg::RefPtr<osg::NodePtr>;

    /// A picture of 200 x 100 pixels on a plain blue backdrop, 10 pixels free along each border; without what blends
    /// one pixel into another.
    static SnapshotOptions plainOptions(View view = View::Front)
    {
        SnapshotOptions options;
        options.width = 200;
        options.height = 100;
        options.view = view;
        options.margin = 0.1f;
        options.backdrop = {{0, 0, 1}, {0, 0, 1}, false};
        options.ambientSamples = 0;
        options.featureLines = false;
        return options;
    }

    static QImage draw(const osg::NodePtr& root, const SnapshotOptions& options)
    {
        const SnapshotResult result = renderSnapshot(root, options);
        EXPECT_FALSE(result.error) << result.error.message.toStdString();
        EXPECT_EQ(result.image.size(), QSize(options.width, options.height));
        return result.image;
    }

    static osg::SimpleMaterialPtr material(const osg::Color3f& diffuse, float transparency = 0)
    {
        const osg::SimpleMaterialPtr result = osg::SimpleMaterial::create();
        result->setDiffuse(diffuse);
        result->setTransparency(transparency);
        return result;
    }

    static osg::NodePtr nodeOf(const std::shared_ptr<const osg::Mesh>& mesh, const osg::MaterialPtr& look)
    {
        const osg::GeometryPtr geometry = osg::Geometry::create();
        osg::GeometryAccess::setMesh(*geometry, mesh);
        geometry->setMaterial(look);
        return osg::makeNodeFor(geometry);
    }

    static osg::NodePtr group(const std::vector<osg::NodePtr>& children)
    {
        const osg::NodePtr result = osg::makeNodeFor(osg::Group::create());
        for (const osg::NodePtr& child : children)
            result->addChild(child);
        return result;
    }

    static osg::NodePtr placed(const osg::Matrix& matrix, const osg::NodePtr& child)
    {
        const osg::TransformPtr transform = osg::Transform::create();
        transform->setMatrix(matrix);
        const osg::NodePtr result = osg::makeNodeFor(transform);
        result->addChild(child);
        return result;
    }

    /// A box whose faces each have vertices of their own, in the order -x, +x, -y, +y, -z, +z.
    static std::shared_ptr<osg::Mesh> box(const osg::Vec3f& low, const osg::Vec3f& high)
    {
        const std::vector<std::array<int, 4>> faces = {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4},
                                                       {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}};
        std::vector<osg::Vec3f> positions;
        std::vector<std::uint32_t> triangles;
        std::vector<osg::FaceRange> ranges;
        for (const std::array<int, 4>& face : faces) {
            const auto first = static_cast<std::uint32_t>(positions.size());
            for (const int corner : face)
                positions.push_back(
                    {corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y, corner & 4 ? high.z : low.z});
            ranges.push_back({static_cast<std::uint32_t>(triangles.size() / 3), 2});
            triangles.insert(triangles.end(), {first, first + 1, first + 2, first, first + 2, first + 3});
        }
        auto mesh = std::make_shared<osg::Mesh>();
        mesh->positions = positions;
        mesh->triangles = triangles;
        mesh->faces = ranges;
        return mesh;
    }

    /// An upright square that looks towards the front, at the depth `y`.
    static std::shared_ptr<osg::Mesh> wall(float y, float halfSide)
    {
        auto mesh = std::make_shared<osg::Mesh>();
        mesh->positions = std::vector<osg::Vec3f>{
            {-halfSide, y, -halfSide}, {halfSide, y, -halfSide}, {halfSide, y, halfSide}, {-halfSide, y, halfSide}};
        mesh->triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
        return mesh;
    }

    static bool isBackdrop(QRgb pixel) { return pixel == qRgb(0, 0, 255); }

    /// The smallest rectangle around all pixels for which `counts` holds; empty when there is none.
    static QRect extent(const QImage& image, const std::function<bool(QRgb)>& counts)
    {
        QRect result;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (counts(image.pixel(x, y)))
                    result |= QRect(x, y, 1, 1);
        return result;
    }

    static QRect drawnExtent(const QImage& image)
    {
        return extent(image, [](QRgb pixel) { return !isBackdrop(pixel); });
    }

    static int count(const QImage& image, const std::function<bool(QRgb)>& counts)
    {
        int result = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                result += counts(image.pixel(x, y)) ? 1 : 0;
        return result;
    }

    static void expectColor(QRgb pixel, int red, int green, int blue, int tolerance)
    {
        EXPECT_NEAR(qRed(pixel), red, tolerance);
        EXPECT_NEAR(qGreen(pixel), green, tolerance);
        EXPECT_NEAR(qBlue(pixel), blue, tolerance);
    }
};

} // namespace render

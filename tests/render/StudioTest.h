#pragma once

#include "scene/ColorSpace.h"
#include "scene/MaterialLook.h"
#include "tests/render/RenderTest.h"
#include "tests/render/studio/HdrBytes.h"

#include <QBuffer>

#include <cmath>
#include <vector>

namespace render
{

/// Pictures in the studio look of upright walls with textures, in light that the test makes.
class StudioTest : public RenderTest
{
protected:
    using Slot = osg::TextureSlot;

    /// The light of `environment`, whose file must stay.
    static SnapshotOptions studioOptions(const studio::HdrTestFile& environment, View view = View::Front)
    {
        SnapshotOptions options = plainOptions(view);
        options.look = SnapshotLook::Studio;
        options.environmentFile = environment.path();
        options.samples = 2;
        return options;
    }

    /// From all directions the same light.
    static const studio::HdrTestFile& evenLight()
    {
        static const studio::HdrTestFile file(
            studio::hdrBytes(16, 8, [](int, int) { return Eigen::Vector3f(1, 1, 1); }));
        return file;
    }

    /// (1 + direction) / 2: a dull white surface shows 1/2 + normal/3.
    static const studio::HdrTestFile& directedLight()
    {
        static const studio::HdrTestFile file(studio::hdrBytes(128, 64, [](int column, int row) {
            const double above = EIGEN_PI * (0.5 - (row + 0.5) / 64),
                         around = 2 * EIGEN_PI * ((column + 0.5) / 128 - 0.5);
            const Eigen::Vector3d direction(std::cos(above) * std::cos(around), -std::cos(above) * std::sin(around),
                                            std::sin(above));
            return Eigen::Vector3f((direction.cast<float>() + Eigen::Vector3f::Ones()) / 2);
        }));
        return file;
    }

    static std::vector<std::byte> bytesOf(const QImage& image, const char* format = "png")
    {
        QBuffer buffer;
        EXPECT_TRUE(image.save(&buffer, format));
        const auto* first = reinterpret_cast<const std::byte*>(buffer.data().constData());
        return {first, first + buffer.data().size()};
    }

    static osg::Texture textureOf(const QImage& image)
    {
        osg::Texture texture;
        texture.image = osg::EncodedImage::share(bytesOf(image), {}, "made");
        texture.sampler.magnify = osg::TextureSampler::Filter::Nearest;
        return texture;
    }

    /// All over the same.
    static osg::Texture textureOf(const QColor& color)
    {
        QImage image(4, 4, QImage::Format_ARGB32);
        image.fill(color);
        return textureOf(image);
    }

    /// Red in the upper left, green in the upper right, blue in the lower left, white in the lower right.
    static QImage quarters()
    {
        QImage image(2, 2, QImage::Format_ARGB32);
        image.setPixelColor(0, 0, QColor(255, 0, 0));
        image.setPixelColor(1, 0, QColor(0, 255, 0));
        image.setPixelColor(0, 1, QColor(0, 0, 255));
        image.setPixelColor(1, 1, QColor(255, 255, 255));
        return image;
    }

    /// With a picture upright on it.
    static std::shared_ptr<osg::Mesh> pictureWall(float y = 0)
    {
        const auto mesh = wall(y, 10);
        mesh->texCoords = std::vector<osg::Vec2f>{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        return mesh;
    }

    /// Dull: nothing is reflected at its outside.
    static osg::PhysicalSurface dull()
    {
        osg::PhysicalSurface surface;
        surface.specular = 0;
        return surface;
    }

    /// White, or of another display colour.
    static osg::MaterialPtr surfaceMaterial(const osg::PhysicalSurface& surface, const osg::Color3f& base = {1, 1, 1},
                                            const osg::Color3f& emission = {})
    {
        const osg::SimpleMaterialPtr result = material(base, 1 - surface.opacity);
        result->setEmission(emission);
        osg::setSurface(result, surface);
        return result;
    }

    static QImage picture(const osg::PhysicalSurface& surface, const studio::HdrTestFile& light = evenLight(),
                          View view = View::Front)
    {
        const Root root = nodeOf(pictureWall(), surfaceMaterial(surface));
        return draw(root, studioOptions(light, view));
    }

    /// A place of the wall, from its lower left corner (0, 0) to its upper right one (1, 1).
    static QRgb at(const QImage& image, double u, double v) { return image.pixel(int(60 + 80 * u), int(90 - 80 * v)); }
    static QRgb middle(const QImage& image) { return at(image, 0.5, 0.5); }

    /// An amount of light as a picture has it.
    static int display(double light)
    {
        return int(std::lround(255 * osg::displayFromLinear(float(std::min(light, 1.0)))));
    }

    static void expectLight(QRgb pixel, double red, double green, double blue, int tolerance = 3)
    {
        expectColor(pixel, display(red), display(green), display(blue), tolerance);
    }

    /// With normals, about the origin.
    static std::shared_ptr<osg::Mesh> ball(float radius, int rows = 48)
    {
        auto mesh = std::make_shared<osg::Mesh>();
        std::vector<osg::Vec3f> positions, normals;
        std::vector<std::uint32_t> triangles;
        const int columns = 2 * rows;
        for (int i = 0; i <= rows; ++i)
            for (int j = 0; j <= columns; ++j) {
                const double down = EIGEN_PI * i / rows, around = 2 * EIGEN_PI * j / columns;
                const osg::Vec3f normal = {float(std::sin(down) * std::cos(around)),
                                           float(std::sin(down) * std::sin(around)), float(std::cos(down))};
                normals.push_back(normal);
                positions.push_back({normal.x * radius, normal.y * radius, normal.z * radius});
            }
        for (int i = 0; i < rows; ++i)
            for (int j = 0; j < columns; ++j) {
                const auto a = std::uint32_t(i * (columns + 1) + j), b = a + std::uint32_t(columns) + 1;
                triangles.insert(triangles.end(), {a, b, a + 1, a + 1, b, b + 1});
            }
        mesh->positions = positions;
        mesh->normals = normals;
        mesh->triangles = triangles;
        return mesh;
    }
};

} // namespace render

#include "tests/clients/Clients.h"
#include "tests/render/StudioTest.h"

#include <fstream>

namespace render
{

namespace
{

constexpr int columns = 6, rows = 5;
constexpr int width = 960, height = 800;
constexpr float distance = 20, radius = 8;
constexpr float halfHeight = rows * distance / 2;

struct Ball {
    osg::Vec3f place;
    osg::Color3f color;
    float metalness, roughness, clearcoat;
};

/// Rows of metals, of plastics, of what is between and of what has a coat; from mirrors to dull ones.
std::vector<Ball> balls()
{
    struct Row {
        osg::Color3f color;
        float metalness, clearcoat;
    };
    const std::array<Row, rows> kinds = {{{{0.95f, 0.95f, 0.95f}, 1, 0},
                                          {{0.95f, 0.75f, 0.35f}, 1, 0},
                                          {{0.20f, 0.40f, 0.80f}, 0.5f, 0},
                                          {{0.80f, 0.15f, 0.12f}, 0, 0},
                                          {{0.10f, 0.35f, 0.20f}, 0, 1}}};
    std::vector<Ball> result;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const Row& kind = kinds[std::size_t(row)];
            const osg::Vec3f place = {(float(column) - (columns - 1) / 2.0f) * distance, 0,
                                      ((rows - 1) / 2.0f - float(row)) * distance};
            result.push_back({place, kind.color, kind.metalness, float(column) / (columns - 1), kind.clearcoat});
        }
    return result;
}

/// A sky that is blue above and brown below, with a warm and a cool lamp.
QByteArray lampLight()
{
    return studio::hdrBytes(512, 256, [](int column, int row) {
        const double above = EIGEN_PI * (0.5 - (row + 0.5) / 256), around = 2 * EIGEN_PI * ((column + 0.5) / 512 - 0.5);
        const Eigen::Vector3f direction(float(std::cos(above) * std::cos(around)),
                                        float(-std::cos(above) * std::sin(around)), float(std::sin(above)));
        const float up = (direction.z() + 1) / 2;
        const auto lamp = [&](const Eigen::Vector3f& axis, float power) {
            return std::pow(std::max(direction.dot(axis.normalized()), 0.0f), power);
        };
        const Eigen::Vector3f sky =
            Eigen::Vector3f(0.30f, 0.24f, 0.18f) * (1 - up) + Eigen::Vector3f(0.35f, 0.45f, 0.60f) * up;
        return Eigen::Vector3f(sky + Eigen::Vector3f(2.0f, 1.7f, 1.3f) * lamp({-1, -1, 1}, 24) +
                               Eigen::Vector3f(0.8f, 1.0f, 1.4f) * lamp({1, -0.4f, 0.2f}, 40));
    });
}

/// CIE 1976 L*a*b* of a display colour, for the white of the display.
Eigen::Vector3d labOf(QRgb pixel)
{
    const osg::Color3f light = osg::linearFromDisplay(
        osg::Color3f{float(qRed(pixel)) / 255, float(qGreen(pixel)) / 255, float(qBlue(pixel)) / 255});
    const double x = (0.4124 * light.red + 0.3576 * light.green + 0.1805 * light.blue) / 0.9505;
    const double y = 0.2126 * light.red + 0.7152 * light.green + 0.0722 * light.blue;
    const double z = (0.0193 * light.red + 0.1192 * light.green + 0.9505 * light.blue) / 1.0891;
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    return {116 * f(y) - 16, 500 * (f(x) - f(y)), 200 * (f(y) - f(z))};
}

/// The mean over the ball, but for its outermost points.
double difference(const QImage& a, const QImage& b, const Ball& ball)
{
    const double scale = height / (2.0 * halfHeight), extent = 0.95 * radius * scale;
    const double middleX = width / 2.0 + double(ball.place.x) * scale,
                 middleY = height / 2.0 - double(ball.place.z) * scale;
    double sum = 0;
    int points = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (std::hypot(x + 0.5 - middleX, y + 0.5 - middleY) < extent) {
                sum += (labOf(a.pixel(x, y)) - labOf(b.pixel(x, y))).norm();
                ++points;
            }
    return sum / points;
}

class StudioChart : public StudioTest
{
protected:
    static void writeChart(const QString& file)
    {
        nlohmann::json chart = {{"width", width}, {"height", height}, {"halfHeight", halfHeight}};
        for (const Ball& ball : balls())
            chart["balls"].push_back({{"x", ball.place.x},
                                      {"z", ball.place.z},
                                      {"radius", radius},
                                      {"color", {ball.color.red, ball.color.green, ball.color.blue}},
                                      {"metalness", ball.metalness},
                                      {"roughness", ball.roughness},
                                      {"clearcoat", ball.clearcoat}});
        std::ofstream(file.toStdString()) << chart;
    }

    static osg::NodePtr scene()
    {
        const auto mesh = ball(radius, 64);
        std::vector<osg::NodePtr> nodes;
        for (const Ball& ball : balls()) {
            osg::PhysicalSurface surface;
            surface.metalness = ball.metalness;
            surface.roughness = ball.roughness;
            surface.clearcoat = ball.clearcoat;
            nodes.push_back(
                placed(osg::translationMatrix(ball.place), nodeOf(mesh, surfaceMaterial(surface, ball.color))));
        }
        return group(nodes);
    }

    static SnapshotOptions chartOptions(const QString& light)
    {
        SnapshotOptions options;
        options.width = width;
        options.height = height;
        options.backdrop = {{0.5f, 0.5f, 0.5f}, {0.5f, 0.5f, 0.5f}, false};
        options.ambientSamples = 0; // the other program has no shadows
        options.look = SnapshotLook::Studio;
        options.environmentFile = light;
        Eye eye;
        eye.isPerspective = false;
        eye.height = 2 * halfHeight;
        eye.placement.values = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, -500, 0, 1}; // looks along +Y, Z upwards
        options.eye = eye;
        return options;
    }
};

} // namespace

TEST_F(StudioChart, LooksAsAnotherProgramDrawsIt)
{
    if (!clients::isInstalled(QStringLiteral("chromium")))
        GTEST_SKIP() << "no chromium with the package three; scripts/setup --with clients installs them";
    const QTemporaryDir temporary;
    const QString folder = qEnvironmentVariable("ZN_KEEP_PICTURES", temporary.path());
    const studio::HdrTestFile light(lampLight());
    const QString chart = folder + QStringLiteral("/chart.json"), theirs = folder + QStringLiteral("/theirs.png");
    writeChart(chart);
    ASSERT_TRUE(clients::drawChart(chart, light.path(), theirs));
    const QImage other(theirs);
    ASSERT_EQ(other.size(), QSize(width, height));
    const Root root = scene();
    const QImage own = draw(root, chartOptions(light.path()));
    EXPECT_TRUE(own.save(folder + QStringLiteral("/own.png")));
    for (const Ball& ball : balls()) {
        const double seen = difference(own, other, ball);
        EXPECT_LT(seen, 3) << "metalness " << ball.metalness << " roughness " << ball.roughness << " coat "
                           << ball.clearcoat;
    }
}

} // namespace render

#pragma once

#include "geometry/rays/Watch.h"
#include "render/BackdropLight.h"
#include "render/FeatureLines.h"
#include "render/Rays.h"
#include "render/Snapshot.h"

#include <QPoint>
#include <QRect>

#include <cstddef>
#include <optional>
#include <vector>

namespace render
{

/// What all tiles of a picture share.
struct PictureScene {
    const RayScene& scene;
    const Camera& camera;
    const Sky& sky;
    const Painter& painter;
    const BackdropLight& backdrop;
    const SnapshotOptions& options;
};

/// The pixels of a picture, which several threads may write to at different places.
struct Canvas {
    uchar* pixels = nullptr;
    std::ptrdiff_t bytesPerLine = 0;

    QRgb* line(int y) const { return reinterpret_cast<QRgb*>(pixels + y * bytesPerLine); }
};

/// A rectangle of a picture.
///
/// A pixel has `samples` x `samples` samples. Of each row of them one is looked at first. Where these probes, and those
/// of the pixels around, see one smooth and opaque surface or nothing at all, they will do; everywhere else all samples
/// are taken.
///
/// A tile knows a few pixels around itself, so that no border between tiles can be seen. It depends on nothing but its
/// place.
class Tile
{
public:
    static constexpr int side = 64; ///< pixels

    Tile(const PictureScene& scene, const QRect& area);

    /// Draws into the pixels of the area; a cancel ends it early.
    void draw(const Canvas& canvas, const Watch& watch);

private:
    /// What the samples of one pixel see.
    struct Pixel {
        bool isPlain = false; ///< the samples are few, and no line runs here
        Light light;          ///< the mean
        float openness = 0;   ///< a sum, each with its weight
        float weight = 0;
        float clear = 0, clearAmbient = 0; ///< the mean of what counts of the background
        Eigen::Vector3f position = {0, 0, 0};
        Eigen::Vector3f normal = {0, 0, 0};
    };

    /// One of the samples that a pixel is the mean of.
    struct Sample {
        int column, row;
        int index, count;
    };
    using RowStep = void (Tile::*)(int y);

    void eachRow(RowStep step, const Watch& watch);
    void probeRow(int y);
    void completeRow(int y);
    bool isPlain(int x, int y) const;
    void complete(int x, int y);
    void trace(const std::vector<QPoint>& samples);
    void addProbes(int x, int y);
    void addSamples(int x, int y);
    void addSample(int x, int y, const Sample& sample);
    Ray rayOf(int column, int row) const;
    int probeColumn(int i) const;
    QRgb colorOf(int x, int y) const;
    float evenOpenness(int x, int y) const;
    float lineCover(int x, int y) const;
    float strongestLine(int column, int row) const;
    float pixelSizeAt(const Eigen::Vector3f& position) const;

    std::size_t pixelIndex(int x, int y) const { return std::size_t(y) * std::size_t(m_width) + std::size_t(x); }
    std::size_t sampleIndex(int column, int row) const
    {
        return std::size_t(row) * std::size_t(m_columns) + std::size_t(column);
    }
    const Pixel& pixel(int x, int y) const { return m_pixels[pixelIndex(x, y)]; }
    const FirstHit& first(int column, int row) const { return m_first[sampleIndex(column, row)]; }

    const PictureScene& m_scene;
    QRect m_area;
    int m_width, m_height; ///< with the pixels around, which x and y count as well
    int m_samples;
    int m_columns; ///< samples in a row
    std::vector<Pixel> m_pixels;
    std::vector<std::optional<Hit>> m_hits; ///< of all samples, column by column in each row
    std::vector<FirstHit> m_first;
};

} // namespace render

#pragma once

#include "render/Snapshot.h"

#include <Eigen/Core>

#include <vector>

namespace render
{

/// The light of the background, pixel by pixel.
class BackdropLight
{
public:
    BackdropLight(const Backdrop& backdrop, const QSize& size);

    /// Of a pixel, which may lie beside the picture.
    Eigen::Vector3f at(int column, int row) const;
    /// Which strokes have to stand out from; white where nothing is behind the scene.
    Eigen::Vector3f middle() const;

private:
    Eigen::Vector3f gradient(int row) const;

    const Backdrop& m_backdrop;
    int m_height;
    QImage m_picture; ///< of the size of the whole; null without one
};

} // namespace render

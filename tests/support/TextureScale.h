#pragma once

#include "scene/EigenValues.h"
#include "scene/Mesh.h"

#include <Eigen/Dense>

#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

/// How a picture lies on a triangle: what it becomes there where it runs once in u and once in v.
struct TextureScale {
    double u = 0;            ///< mm a picture
    double v = 0;            ///< mm a picture
    double degrees = 0;      ///< between u and v
    bool isMirrored = false; ///< seen from the front
    Eigen::Vector3d alongV;  ///< in the space of the mesh
    double area = 0;         ///< mm^2

    /// Of triangle number `triangle`; nothing where it has no area.
    static std::optional<TextureScale> of(const osg::Mesh& mesh, std::size_t triangle)
    {
        Eigen::Vector3d places[3];
        Eigen::Vector2d pictures[3];
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t corner = mesh.triangles[3 * triangle + i];
            places[i] = osg::toEigen(mesh.positions[corner]).cast<double>();
            pictures[i] = Eigen::Vector2d(double(mesh.texCoords[corner].x), double(mesh.texCoords[corner].y));
        }
        Eigen::Matrix<double, 3, 2> edges;
        edges << places[1] - places[0], places[2] - places[0];
        Eigen::Matrix2d steps;
        steps << pictures[1] - pictures[0], pictures[2] - pictures[0];
        TextureScale scale;
        scale.area = edges.col(0).cross(edges.col(1)).norm() / 2;
        if (scale.area < 1e-4)
            return std::nullopt;
        const Eigen::Matrix<double, 3, 2> derivative = edges * steps.inverse();
        scale.u = derivative.col(0).norm();
        scale.v = derivative.col(1).norm();
        scale.alongV = derivative.col(1).normalized();
        scale.degrees =
            std::acos(derivative.col(0).dot(derivative.col(1)) / (scale.u * scale.v)) * 180 / std::numbers::pi;
        scale.isMirrored = steps.determinant() < 0;
        return scale;
    }

    /// Of all triangles with an area.
    static std::vector<TextureScale> ofAll(const osg::Mesh& mesh)
    {
        std::vector<TextureScale> all;
        for (std::size_t i = 0; i < mesh.triangles.size() / 3; ++i)
            if (const auto scale = of(mesh, i))
                all.push_back(*scale);
        return all;
    }
};

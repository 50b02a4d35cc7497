#pragma once

#include "host/OSGSystem/ComponentTransform.h"

#include <scene_generated.h>

#include <optional>

namespace osg::scenefile
{

/// The matrix, none if it is the identity to the last bit.
std::optional<sceneformat::Matrix> matrixOf(const TransformBase& transform);

/// Rotation and scale, none if they are those that the matrix decomposes to.
std::optional<sceneformat::Components> componentsOf(const ComponentTransformBase& transform);

/// Sets the matrix exactly; null stands for the identity.
void restoreMatrix(TransformBase& transform, const sceneformat::Matrix* matrix);

/// Sets matrix, rotation and scale exactly. Null `components` follow from the matrix.
void restoreComponents(ComponentTransformBase& transform, const sceneformat::Matrix* matrix,
                       const sceneformat::Components* components);

} // namespace osg::scenefile

#include "files/scenefile/TransformFields.h"

#include "host/OSGSystem/Edit.h"
#include "scene/MatrixMath.h"

#include <bit>
#include <cstring>

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

namespace
{

template <class T>
bool sameBits(const T& a, const T& b)
{
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

/// Reaches the matrix of a transform without a change of its components.
class ExactTransform : public ComponentTransform
{
public:
    ExactTransform() = delete;
    static void putMatrix(ComponentTransformBase& transform, const Matrix& matrix)
    {
        transform.*(&ExactTransform::m_matrix) = matrix;
    }
};

} // namespace

std::optional<fb::Matrix> matrixOf(const TransformBase& transform)
{
    if (sameBits(transform.getMatrix(), Matrix()))
        return std::nullopt;
    return std::bit_cast<fb::Matrix>(transform.getMatrix());
}

std::optional<fb::Components> componentsOf(const ComponentTransformBase& transform)
{
    const Quaternion rotation = transform.getRotation();
    const Vec3f scale = transform.getScale();
    const Components derived = decomposed(transform.getMatrix());
    if (sameBits(rotation, derived.rotation) && sameBits(scale, derived.scale))
        return std::nullopt;
    return fb::Components(std::bit_cast<fb::Quaternion>(rotation), std::bit_cast<fb::Vec3>(scale));
}

void restoreMatrix(TransformBase& transform, const fb::Matrix* matrix)
{
    if (!matrix)
        return;
    const TransformPtr edited(static_cast<Transform*>(&transform));
    beginEditCP(edited, TransformBase::MatrixFieldMask, 1);
    transform.setMatrix(std::bit_cast<Matrix>(*matrix));
    endEditCP(edited, TransformBase::MatrixFieldMask, 1);
}

void restoreComponents(ComponentTransformBase& transform, const fb::Matrix* matrix, const fb::Components* components)
{
    restoreMatrix(transform, matrix);
    if (!components)
        return;
    constexpr FieldMask mask = ComponentTransformBase::RotationFieldMask | ComponentTransformBase::ScaleFieldMask;
    const ComponentTransformPtr edited(static_cast<ComponentTransform*>(&transform));
    const Matrix exact = transform.getMatrix();
    beginEditCP(edited, mask, 1);
    transform.setRotation(std::bit_cast<Quaternion>(components->rotation()));
    transform.setScale(std::bit_cast<Vec3f>(components->scale()));
    endEditCP(edited, mask, 1);
    // The setters compose the matrix anew, which may differ in the last bits.
    ExactTransform::putMatrix(transform, exact);
}

} // namespace osg::scenefile

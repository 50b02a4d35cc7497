// The cores that the library makes: groups, placements and references to files.
#include "host/OSGSystem/ComponentTransform.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <cmath>

namespace osg
{

FieldContainerType NodeCore::_type("NodeCore", &AttachmentContainer::_type);
FieldContainerType Group::_type("Group", &NodeCore::_type);
FieldContainerType TransformBase::_type("Transform", &Group::_type);
FieldContainerType ComponentTransformBase::_type("ComponentTransform", &TransformBase::_type);
FieldContainerType Transform3DBase::_type("Transform3D", &ComponentTransformBase::_type);
FieldContainerType ExtReferenceBase::_type("ExtReference", &Transform3DBase::_type);
FieldContainerType FileReferenceBase::_type("FileReference", &FieldContainer::_type);

GroupPtr Group::create()
{
    return GroupPtr(new Group);
}
bool Group::equalFields(const FieldContainer& other) const
{
    return equalAttachments(static_cast<const Group&>(other));
}
FieldContainerPtr Group::copy() const
{
    return create();
}

TransformPtr TransformBase::create()
{
    return TransformPtr(new Transform);
}
void TransformBase::setMatrix(const Matrix& matrix)
{
    m_matrix = matrix;
    matrixChanged();
}
bool TransformBase::equalFields(const FieldContainer& other) const
{
    return Group::equalFields(other) && m_matrix == static_cast<const TransformBase&>(other).m_matrix;
}
FieldContainerPtr TransformBase::copy() const
{
    const TransformPtr copied = create();
    copied->setMatrix(m_matrix);
    return copied;
}

ComponentTransformPtr ComponentTransformBase::create()
{
    return ComponentTransformPtr(new ComponentTransform);
}
FieldContainerPtr ComponentTransformBase::copy() const
{
    const ComponentTransformPtr copied = create();
    copied->setMatrix(m_matrix);
    return copied;
}
void ComponentTransformBase::matrixChanged()
{
    m_componentsKnown = false;
}

Vec3f ComponentTransformBase::getTranslation() const
{
    return {m_matrix[12], m_matrix[13], m_matrix[14]};
}
void ComponentTransformBase::setTranslation(const Vec3f& translation)
{
    m_matrix[12] = translation.x;
    m_matrix[13] = translation.y;
    m_matrix[14] = translation.z;
}
Quaternion ComponentTransformBase::getRotation() const
{
    decompose();
    return m_rotation;
}
void ComponentTransformBase::setRotation(const Quaternion& rotation)
{
    decompose();
    m_rotation = rotation;
    compose();
}
Vec3f ComponentTransformBase::getScale() const
{
    decompose();
    return m_scale;
}
void ComponentTransformBase::setScale(const Vec3f& scale)
{
    decompose();
    m_scale = scale;
    compose();
}

namespace
{

float length(const Matrix& matrix, unsigned column)
{
    return std::hypot(matrix[column * 4], matrix[column * 4 + 1], matrix[column * 4 + 2]);
}

/// By the diagonal, half the difference of the two elements beside it giving the sign of each part.
Quaternion rotationOf(const Matrix& matrix, const Vec3f& scale)
{
    const float xx = matrix[0] / scale.x, yy = matrix[5] / scale.y, zz = matrix[10] / scale.z;
    const auto part = [](float square, float sign) {
        return std::copysign(std::sqrt(std::fmax(0.0f, square)) / 2, sign);
    };
    return {part(1 + xx - yy - zz, matrix[6] / scale.y - matrix[9] / scale.z),
            part(1 - xx + yy - zz, matrix[8] / scale.z - matrix[2] / scale.x),
            part(1 - xx - yy + zz, matrix[1] / scale.x - matrix[4] / scale.y), part(1 + xx + yy + zz, 1)};
}

void putColumn(Matrix& matrix, unsigned column, float x, float y, float z, float scale)
{
    matrix[column * 4] = x * scale;
    matrix[column * 4 + 1] = y * scale;
    matrix[column * 4 + 2] = z * scale;
}

} // namespace

void ComponentTransformBase::decompose() const
{
    if (m_componentsKnown)
        return;
    m_componentsKnown = true;
    m_scale = {length(m_matrix, 0), length(m_matrix, 1), length(m_matrix, 2)};
    m_rotation = {};
    if (m_scale.x > 0 && m_scale.y > 0 && m_scale.z > 0)
        m_rotation = rotationOf(m_matrix, m_scale);
}

void ComponentTransformBase::compose()
{
    const auto& [x, y, z, w] = m_rotation;
    putColumn(m_matrix, 0, 1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y), m_scale.x);
    putColumn(m_matrix, 1, 2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x), m_scale.y);
    putColumn(m_matrix, 2, 2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y), m_scale.z);
}

Transform3DPtr Transform3DBase::create()
{
    return Transform3DPtr(new Transform3D);
}
bool Transform3DBase::equalFields(const FieldContainer& other) const
{
    return TransformBase::equalFields(other) && m_flags == static_cast<const Transform3DBase&>(other).m_flags;
}
FieldContainerPtr Transform3DBase::copy() const
{
    const Transform3DPtr copied = create();
    copied->setMatrix(m_matrix);
    copied->addFlag(m_flags);
    return copied;
}
void Transform3D::addFlag(std::uint32_t flag)
{
    m_flags |= flag;
}
FieldMask Transform3D::getCombinedTransformAttributesMask()
{
    return MatrixFieldMask | TranslationFieldMask | RotationFieldMask | ScaleFieldMask;
}
void Transform3D::syncWith(const Transform3DPtr& source, FieldMask mask)
{
    if (mask & getCombinedTransformAttributesMask())
        setMatrix(source->getMatrix());
    if (mask & FlagsFieldMask)
        m_flags = source->getFlags();
}

FileReferencePtr FileReferenceBase::create()
{
    return FileReferencePtr(new FileReference);
}
void FileReferenceBase::setPath(const std::string& path)
{
    m_path = path;
}
void FileReferenceBase::setRelativePath(const std::string& path)
{
    m_relativePath = path;
}
bool FileReferenceBase::equalFields(const FieldContainer& other) const
{
    const auto& file = static_cast<const FileReferenceBase&>(other);
    return m_path == file.m_path && m_relativePath == file.m_relativePath;
}
FieldContainerPtr FileReferenceBase::copy() const
{
    const FileReferencePtr copied = create();
    copied->setPath(m_path);
    copied->setRelativePath(m_relativePath);
    return copied;
}

ExtReferencePtr ExtReferenceBase::create()
{
    return ExtReferencePtr(new ExtReference);
}
ExtReferenceBase::~ExtReferenceBase()
{
    getSourceFile().subRef();
    getSmartFile().subRef();
}
void ExtReferenceBase::setState(unsigned state)
{
    m_state = state;
}
FileReferencePtr ExtReferenceBase::getSourceFile() const
{
    return FileReferencePtr(m_sourceFile);
}
FileReferencePtr ExtReferenceBase::getSmartFile() const
{
    return FileReferencePtr(m_smartFile);
}
bool ExtReferenceBase::equalFields(const FieldContainer& other) const
{
    const auto& reference = static_cast<const ExtReferenceBase&>(other);
    return Transform3DBase::equalFields(other) && m_state == reference.m_state &&
           isEqual(getSourceFile(), reference.getSourceFile()) && isEqual(getSmartFile(), reference.getSmartFile());
}
FieldContainerPtr ExtReferenceBase::copy() const
{
    const ExtReferencePtr copied = create();
    copied->setMatrix(m_matrix);
    copied->setState(m_state);
    copied->setSourceFile(getSourceFile());
    copied->setSmartFile(getSmartFile());
    return copied;
}
void ExtReference::setSourceFile(const FileReferencePtr& file)
{
    file.addRef();
    getSourceFile().subRef();
    m_sourceFile = file.get();
}
void ExtReference::setSmartFile(const FileReferencePtr& file)
{
    file.addRef();
    getSmartFile().subRef();
    m_smartFile = file.get();
}

} // namespace osg

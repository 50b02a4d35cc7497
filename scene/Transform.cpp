#include "host/OSGSystem/Transform.h"

#include "scene/Attachments.h"

namespace osg
{

FieldContainerType TransformBase::_type("Transform", &Group::_type);

TransformPtr TransformBase::create()
{
    return TransformPtr(new Transform);
}

void TransformBase::setMatrix(const Matrix& matrix)
{
    m_matrix = matrix;
    matrixChanged();
    fieldChanged(MatrixFieldMask);
}

bool TransformBase::equalFields(const FieldContainer& other) const
{
    return m_matrix == static_cast<const TransformBase&>(other).m_matrix && Group::equalFields(other);
}

FieldContainerPtr TransformBase::copy() const
{
    Transform* result = copyWithAttachments<Transform>(*this);
    static_cast<TransformBase*>(result)->m_matrix = m_matrix;
    return TransformPtr(result);
}

} // namespace osg

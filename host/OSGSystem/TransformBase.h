#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Math.h"

namespace osg
{

/// Fields of `Transform`.
class ZN_HOST_EXPORT TransformBase : public Group
{
public:
    using Ptr = TransformPtr;
    static FieldContainerType _type;
    static constexpr FieldMask MatrixFieldMask = 1u << 1;

    /// A new `Transform` with the identity matrix.
    static TransformPtr create();
    const FieldContainerType& getType() const override { return _type; }

    const Matrix& getMatrix() const { return m_matrix; }
    /// Sets the matrix exactly as given, shear included.
    void setMatrix(const Matrix& matrix);

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;
    /// Called after `setMatrix`, for what derives from the matrix.
    virtual void matrixChanged() {}

    Matrix m_matrix;
};

} // namespace osg

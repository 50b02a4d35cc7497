#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Math.h"

namespace osg
{

/// Fields of `Transform`.
class ZN_HOST_EXPORT TransformBase : public Group
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = TransformPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around `setMatrix`.
    static constexpr FieldMask MatrixFieldMask = 1u << 1;

    /// A new `Transform` with the identity matrix.
    static TransformPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// From the coordinates of what hangs below to those above, in millimetres.
    const Matrix& getMatrix() const { return m_matrix; }
    /// Sets the matrix exactly as given, shear included.
    void setMatrix(const Matrix& matrix);

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;
    /// Called after `setMatrix`, for what derives from the matrix.
    virtual void matrixChanged() {}

    /// What getMatrix gives; whoever writes it by itself keeps what derives from it in step.
    Matrix m_matrix;
};

} // namespace osg

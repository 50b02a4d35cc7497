#pragma once

#include "host/OSGSystem/Transform.h"

namespace osg
{

/// Fields of `ComponentTransform`: translation, rotation, scale and the orientation of the scale.
///
/// The matrix is translation * rotation * orientation * scale * orientation^-1. It follows the components, and they
/// follow it: after `setMatrix` the components are those of its polar decomposition, found at the first question.
/// A change of one component leaves the others as they are; a change of the translation leaves the rest of the matrix
/// exactly as it was.
class ZN_HOST_EXPORT ComponentTransformBase : public Transform
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = ComponentTransformPtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: for the component that is set; one of them is enough, although the matrix changes
    /// with it.
    static constexpr FieldMask TranslationFieldMask = 1u << 2;
    static constexpr FieldMask RotationFieldMask = 1u << 3;
    static constexpr FieldMask ScaleFieldMask = 1u << 4;
    ///@}

    /// A new `ComponentTransform` with the identity.
    static ComponentTransformPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// In millimetres; always the last column of the matrix.
    Vec3f getTranslation() const;
    void setTranslation(const Vec3f& translation);
    ///@}
    ///@{
    /// A unit quaternion. The setter does not normalise what it is given.
    Quaternion getRotation() const;
    void setRotation(const Quaternion& rotation);
    ///@}
    ///@{
    /// Factors along the axes of the scale orientation; negative ones mirror.
    Vec3f getScale() const;
    void setScale(const Vec3f& scale);
    ///@}

protected:
    FieldContainerPtr copy() const override;
    void matrixChanged() override;
    /// Gives `target` the matrix and the components of this object.
    void copyTransformTo(ComponentTransformBase& target) const;

private:
    void decompose() const;
    void compose();

    mutable Quaternion m_rotation;
    mutable Vec3f m_scale = {1, 1, 1};
    mutable Quaternion m_scaleOrientation;
    mutable bool m_componentsKnown = true;
};

} // namespace osg

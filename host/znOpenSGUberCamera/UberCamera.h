#pragma once

#include "host/OSGSystem/Transform3D.h"

namespace osg
{

class UberCamera;
/// Pointer to an `UberCamera`.
using UberCameraPtr = FCPtr<Transform3DPtr, UberCamera>;

/// Fields of `UberCamera`.
class ZN_HOST_EXPORT UberCameraBase : public Transform3D
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = UberCameraPtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: one for each property.
    static constexpr FieldMask ProjectionFieldMask = 1u << 6;
    static constexpr FieldMask FieldOfViewFieldMask = 1u << 7;
    static constexpr FieldMask HeightFieldMask = 1u << 8;
    static constexpr FieldMask NearFieldMask = 1u << 9;
    static constexpr FieldMask FarFieldMask = 1u << 10;
    ///@}

    /// How a camera draws: things get smaller with their distance, or keep their size.
    enum Projection : std::uint32_t {
        Perspective = 0, ///< getFieldOfView() counts
        Parallel = 1     ///< getHeight() counts
    };

    /// A perspective camera with a field of view of 45 degrees, seeing from 1 to 1,000,000 millimetres.
    static UberCameraPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// Whether things get smaller with their distance.
    Projection getProjection() const { return m_projection; }
    /// From the lower to the upper edge of the picture, in degrees; of a perspective camera.
    float getFieldOfView() const { return m_fieldOfView; }
    /// From the lower to the upper edge of the picture, in millimetres; of a parallel camera.
    float getHeight() const { return m_height; }
    ///@{
    /// The distances between which things are seen, in millimetres.
    float getNear() const { return m_near; }
    float getFar() const { return m_far; }
    ///@}

    ///@{
    /// Stores the value as it is, without a look at its range; see the getter of the same name.
    void setProjection(Projection projection);
    void setFieldOfView(float degrees);
    void setHeight(float millimetres);
    void setNear(float millimetres);
    void setFar(float millimetres);
    ///@}

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    Projection m_projection = Perspective;
    float m_fieldOfView = 45;
    float m_height = 1000;
    float m_near = 1;
    float m_far = 1'000'000;
};

/// A camera: the transform places it. It looks along its negative Z axis, with its Y axis upwards.
class ZN_HOST_EXPORT UberCamera : public UberCameraBase
{
public:
    /// The flag of `Transform3D` that makes a camera a viewpoint.
    static constexpr std::uint32_t ViewpointFlag = 4;
};

} // namespace osg

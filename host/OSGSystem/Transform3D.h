#pragma once

#include "host/OSGSystem/Transform3DBase.h"

namespace osg
{

/// The transform that the host's tools move: what every transform of a finished import is.
class ZN_HOST_EXPORT Transform3D : public Transform3DBase
{
public:
    /// Sets the bits of `flag`; the others stay.
    void addFlag(std::uint32_t flag);

    /// The fields that together tell the placement: matrix, translation, rotation and scale.
    static FieldMask getCombinedTransformAttributesMask();

    /// Takes the fields in `mask` over from `source`. The matrix comes exactly, with the components it was made from.
    void syncWith(const Transform3DPtr& source, FieldMask mask);
};

} // namespace osg

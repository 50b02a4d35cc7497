#pragma once

#include "host/OSGSystem/TransformBase.h"

namespace osg
{

/// A group that moves what hangs below its node: a matrix that acts on column vectors, in millimetres.
class ZN_HOST_EXPORT Transform : public TransformBase
{
public:
    /// Whether the matrix is the identity in every element; no tolerance.
    bool isIdentity() const { return m_matrix.isIdentity(); }
};

} // namespace osg

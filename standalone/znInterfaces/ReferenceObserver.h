#pragma once

#include "host/OSGSystem/Node.h"

#include <functional>

namespace zn::interfaces
{

/// Is told what `znReferenceInterface::notifyReferences` is told while the session lives; empty in a host that keeps no
/// book of its references.
struct ReferenceObserver {
    std::function<void(const osg::NodePtr& root, int code, int argument)> observe;
};

} // namespace zn::interfaces

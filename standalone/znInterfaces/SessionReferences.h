#pragma once

#include "host/znInterfaces/znReferenceInterface.h"

namespace zn::interfaces
{

/// Keeps nothing itself: each notification goes to the observer of the session that is alive, and nowhere without one.
class SessionReferences final : public znReferenceInterface
{
public:
    void notifyReferences(const osg::NodePtr& root, int code, int argument) override;
};

} // namespace zn::interfaces

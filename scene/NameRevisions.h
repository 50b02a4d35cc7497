#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

#include <cstdint>

namespace osg
{

/// Changes with every change that may lead a name to another material of a pool: when a material gets a name or loses
/// one, and when a pool takes one in or gives one up. An index of names holds as long as this number stays.
std::uint64_t materialNamesRevision();
/// Changes whenever a camera gets a name or loses one.
std::uint64_t cameraNamesRevision();

/// To be called after the materials of a pool have changed.
void poolChanged();
/// To be called when the name of `container`, whatever it is, changes.
void nameChanged(const AttachmentContainer& container);

} // namespace osg

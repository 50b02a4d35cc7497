#pragma once

#include "host/OSGSystem/FieldContainerPtr.h"

namespace osg
{

/// Knows every living container by its id.
class ZN_HOST_EXPORT FieldContainerFactory
{
public:
    /// The only one; never null, valid as long as the program runs, with or without a session.
    static FieldContainerFactory* the();

    /// The living container of this id, null if there is none.
    FieldContainerPtr getContainer(unsigned id) const;

private:
    FieldContainerFactory() = default;
};

} // namespace osg

#pragma once

namespace osg
{

/// Words of a tree walk.
struct Action {
    /// A visitor's word on how the walk goes on.
    enum ResultE {
        Continue = 0, ///< go on into the children
        Skip = 1,     ///< leave out what hangs below this node
        Quit = 2,     ///< end the walk
    };
};

} // namespace osg

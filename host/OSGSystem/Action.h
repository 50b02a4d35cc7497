#pragma once

namespace osg
{

/// Words of a tree walk.
struct Action {
    enum ResultE {
        Continue = 0, ///< go on into the children
        Skip = 1,     ///< leave out what hangs below this node
        Quit = 2,     ///< end the walk
    };
};

} // namespace osg

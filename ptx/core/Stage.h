#pragma once

#include "protocol/Stage.h"

namespace ptx::core
{

using protocol::Stage;
using protocol::stageWord;

/// The whole-conversion percent at which `stage` starts. It rises from stage to stage; `Finished` is 100.
int stageStart(Stage stage);

/// The percent that the work of `stage` may rise to.
int stageEnd(Stage stage);

} // namespace ptx::core

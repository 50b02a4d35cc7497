#pragma once

#include "ptx/readers/Module.h"

/// What the library of the BREP reader exports.
extern "C" __attribute__((visibility("default"))) const ptx::readers::Module* ptxbrep();

#pragma once

#include "standalone/startup/znStandaloneSession.h"

#include "host/znKernelServices/znBaseService.h"

znBaseService::~znBaseService() = default;

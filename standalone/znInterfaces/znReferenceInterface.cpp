#include "host/znInterfaces/znReferenceInterface.h"

znReferenceInterface::znReferenceInterface() = default;
znReferenceInterface::~znReferenceInterface() = default;

#include "host/znInterfaces/znInterfaceObject.h"

znInterfaceObject::znInterfaceObject() = default;
znInterfaceObject::~znInterfaceObject() = default;

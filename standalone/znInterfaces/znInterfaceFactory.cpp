#include "host/znInterfaces/znInterfaceFactory.h"

#include "standalone/znInterfaces/SessionReferences.h"

znInterfaceFactory* znInterfaceFactory::the()
{
    static znInterfaceFactory only;
    return &only;
}

znInterfaceObject* znInterfaceFactory::get(std::type_index type) const
{
    static zn::interfaces::SessionReferences references;
    return type == typeid(znReferenceInterface) ? &references : nullptr;
}

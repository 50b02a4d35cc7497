#include "host/znKernelServices/znKernelServiceFactory.h"

znKernelServiceFactory* znKernelServiceFactory::the()
{
    static znKernelServiceFactory factory;
    return &factory;
}

#include "standalone/znOpenSGUtils/ContainerNames.h"

#include "host/OSGSystem/Names.h"

const char* zn::nodes::nameOrEmpty(const osg::AttachmentContainerPtr& container)
{
    const char* name = osg::getName(container);
    return name ? name : "";
}

void zn::nodes::rename(const osg::AttachmentContainerPtr& container, const char* name, bool keep)
{
    if (container && !(keep && osg::getName(container)))
        osg::setName(container, name ? name : "");
}

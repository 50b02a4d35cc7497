// Names of nodes and materials.

#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

void rename(const osg::AttachmentContainerPtr& container, const char* name, bool keep)
{
    if (container && !(keep && osg::getName(container)))
        osg::setName(container, name ? name : "");
}

} // namespace

const char* znNodeUtils::getName(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getName", node);
    const char* name = osg::getName(node);
    return name ? name : "";
}

void znNodeUtils::setName(const osg::NodePtr& node, const char* name, bool keep, std::string* formerName)
{
    const zn::TracedCall call("znNodeUtils::setName", node, name, keep);
    if (formerName) {
        const char* former = node ? osg::getName(node) : nullptr;
        *formerName = former ? former : "";
    }
    rename(node, name, keep);
}

void znMaterials::setName(const osg::MaterialPtr& material, const char* name, bool keep)
{
    const zn::TracedCall call("znMaterials::setName", material, name, keep);
    rename(material, name, keep);
}

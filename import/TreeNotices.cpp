#include "import/TreeNotices.h"

#include "host/znInterfaces/znInterfaceFactory.h"
#include "host/znInterfaces/znReferenceInterface.h"

namespace frame
{

void notifyReferences(const osg::NodePtr& root, TreeNotice notice)
{
    static auto* const references =
        dynamic_cast<znReferenceInterface*>(znInterfaceFactory::the()->get(typeid(znReferenceInterface)));
    if (references)
        references->notifyReferences(root, static_cast<int>(notice), 0);
}

} // namespace frame

#include "import/ReferenceNotice.h"

#include "host/znInterfaces/znInterfaceFactory.h"
#include "host/znInterfaces/znReferenceInterface.h"

namespace znReferenceNotice
{

void send(const osg::NodePtr& root, Code code)
{
    static auto* const references =
        dynamic_cast<znReferenceInterface*>(znInterfaceFactory::the()->get(typeid(znReferenceInterface)));
    if (references)
        references->notifyReferences(root, code, 0);
}

} // namespace znReferenceNotice

#include "cad/visualization/PLMXMLContent.h"

#include "cad/visualization/CADNodeRecord.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/znKernel/znFileIO.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znOpenSGUtils.h"
#include "import/TreeEdits.h"

namespace HB::Visualization
{

namespace
{

void addToMaterialPool(const osg::NodePtr& node)
{
    const osg::NodePtr poolNode =
        znMaterials::findMaterialPool(znOpenSGUtils::getRoot(), false, true, znMaterials::AnyPool);
    const auto pool = osg::fcCast<osg::MaterialPool>(poolNode ? poolNode->getCore() : osg::NodeCorePtr());
    if (!pool)
        return;
    osg::beginEditCP(pool, osg::AllFieldsMask, 1);
    pool->add(node);
    osg::endEditCP(pool, osg::AllFieldsMask, 1);
}

/// The material group with the file's content below it, or the content alone without a group.
osg::NodePtr underMaterial(const osg::NodePtr& content, const osg::NodePtr& materialNode)
{
    if (!materialNode)
        return content;
    frame::addChild(materialNode, content, osg::AllFieldsMask);
    return materialNode;
}

} // namespace

void insertContent(CADNodeRecord& record, const osg::NodePtr& content)
{
    const osg::NodePtr inserted = underMaterial(content, record.getMaterialNode());
    if (!inserted)
        return;
    if (znFileIO::getConvertToUberMaterials())
        znFileIO::convertToUberMaterials(inserted);
    addToMaterialPool(inserted);
    record.getNode()->insertChild(0, inserted);
    record.setState(CADLoadState::FileLoaded);
}

} // namespace HB::Visualization

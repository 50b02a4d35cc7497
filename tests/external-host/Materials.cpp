// Materials can be made and named; nothing here wears them.
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znAssets/znAssetItemFactory.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGExt/AssetAttachment.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "host/znOpenSGUberMaterial/znMaterialMerger.h"
#include "host/znOpenSGUberMaterial/znUberMaterialUtils.h"
#include "host/znOpenSGUtils/znDefaultEnvironment.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodeUtils.h"

namespace osg
{

FieldContainerType MaterialBase::_type("Material", &AttachmentContainer::_type);
FieldContainerType ChunkMaterialBase::_type("ChunkMaterial", &MaterialBase::_type);
FieldContainerType SimpleMaterialBase::_type("SimpleMaterial", &ChunkMaterialBase::_type);
FieldContainerType SwitchMaterialBase::_type("SwitchMaterial", &MaterialBase::_type);
FieldContainerType UberMaterialBase::_type("UberMaterial", &MaterialBase::_type);
FieldContainerType UBRDFMaterialBase::_type("UBRDFMaterial", &UberMaterialBase::_type);
FieldContainerType MaterialGroupBase::_type("MaterialGroup", &Group::_type);
FieldContainerType MaterialPoolBase::_type("MaterialPool", &Group::_type);
FieldContainerType AssetAttachmentBase::_type("AssetAttachment", &Attachment::_type);
FieldContainerType FileInfoBase::_type("FileInfo", &Attachment::_type);

SimpleMaterialPtr SimpleMaterialBase::create()
{
    return SimpleMaterialPtr(new SimpleMaterial);
}
void SimpleMaterialBase::setAmbient(const Color3f& color)
{
    m_ambient = color;
}
void SimpleMaterialBase::setDiffuse(const Color3f& color)
{
    m_diffuse = color;
}
void SimpleMaterialBase::setEmission(const Color3f& color)
{
    m_emission = color;
}
void SimpleMaterialBase::setSpecular(const Color3f& color)
{
    m_specular = color;
}
void SimpleMaterialBase::setShininess(float shininess)
{
    m_shininess = shininess;
}
void SimpleMaterialBase::setTransparency(float transparency)
{
    m_transparency = transparency;
}
bool SimpleMaterialBase::equalFields(const FieldContainer& other) const
{
    const auto& material = static_cast<const SimpleMaterialBase&>(other);
    return m_ambient == material.m_ambient && m_diffuse == material.m_diffuse && m_emission == material.m_emission &&
           m_specular == material.m_specular && m_shininess == material.m_shininess &&
           m_transparency == material.m_transparency;
}
FieldContainerPtr SimpleMaterialBase::copy() const
{
    const SimpleMaterialPtr copied = create();
    copied->setAmbient(m_ambient);
    copied->setDiffuse(m_diffuse);
    copied->setEmission(m_emission);
    copied->setSpecular(m_specular);
    copied->setShininess(m_shininess);
    copied->setTransparency(m_transparency);
    return copied;
}

MaterialGroupPtr MaterialGroupBase::create()
{
    return MaterialGroupPtr(new MaterialGroup);
}
MaterialGroupBase::~MaterialGroupBase()
{
    getMaterial().subRef();
}
MaterialPtr MaterialGroupBase::getMaterial() const
{
    return MaterialPtr(m_material);
}
void MaterialGroup::setMaterial(const MaterialPtr& material)
{
    material.addRef();
    getMaterial().subRef();
    m_material = material.get();
}
bool MaterialGroupBase::equalFields(const FieldContainer& other) const
{
    return Group::equalFields(other) && m_material == static_cast<const MaterialGroupBase&>(other).m_material;
}
FieldContainerPtr MaterialGroupBase::copy() const
{
    const MaterialGroupPtr copied = create();
    copied->setMaterial(getMaterial());
    return copied;
}

// This host makes neither pools nor switches nor environments, so that none is ever asked.
void MaterialPool::add(const NodePtr&) {}
MaterialPtr SwitchMaterial::getMaterial(unsigned) const
{
    return {};
}
MaterialPtr UBRDFMaterial::getActiveEnvironment() const
{
    return {};
}
void UBRDFMaterial::setEnvironment(const MaterialPtr&) {}
void FileInfoBase::setImportAppliedMaterialAssetsUrl(const std::string& url)
{
    m_assetsUrl = url;
}

} // namespace osg

osg::MaterialPoolPtr znScenegraph::getMaterialPool()
{
    return {};
}
osg::NodePtr znMaterials::findMaterialPool(const osg::NodePtr&, bool, bool, PoolSearch)
{
    return {};
}
const char* znMaterials::getName(const osg::MaterialPtr& material)
{
    return osg::getName(material);
}
void znMaterials::setName(const osg::MaterialPtr& material, const char* name, bool keep)
{
    if (!keep || !getName(material))
        osg::setName(material, name);
}
znMaterialPtr znMaterials::findMaterial(const QString&)
{
    return {};
}
void znMaterials::initFindCache() {}
std::set<unsigned> znMaterials::getMaterialPoolMaterialIds()
{
    return {};
}
osg::MaterialField* znMaterials::getSubMaterials(const osg::MaterialPtr&, osg::FieldMask&)
{
    return nullptr;
}
void znMaterials::getRecursiveMaterials(const osg::MaterialPtr&, std::vector<osg::MaterialPtr>&, bool) {}
void znMaterials::addRef(const osg::MaterialPtr&, const osg::NodePtr&, int) {}

osg::MaterialPtr znNodeUtils::getMaterial(const osg::NodePtr&)
{
    return {};
}
bool znNodeUtils::setMaterial(const osg::NodePtr&, const osg::MaterialPtr&, bool, bool)
{
    return false;
}
void znMaterialMerger::reuseMaterials(const std::vector<znNodePtr>&, const std::set<unsigned>&,
                                      const znMaterialComparison::MaterialCompareSettings&, MaterialMergeSettings)
{
}
osg::MaterialPtr znUberMaterialUtils::getBRDFEnvironment(const osg::MaterialPtr&)
{
    return {};
}
void znUberMaterialUtils::setBRDFEnvironment(const osg::MaterialPtr&, const osg::MaterialPtr&) {}
osg::MaterialPtr znDefaultEnvironment::getDefault()
{
    return {};
}

znMaterialPtr::znMaterialPtr() = default;
znMaterialPtr::znMaterialPtr(const osg::MaterialPtr& material) : m_material(material)
{
    m_material.addRef();
}
znMaterialPtr::znMaterialPtr(const znMaterialPtr& other) : znMaterialPtr(other.m_material) {}
znMaterialPtr::~znMaterialPtr()
{
    m_material.subRef();
}
znMaterialPtr& znMaterialPtr::operator=(const znMaterialPtr& other)
{
    other.m_material.addRef();
    m_material.subRef();
    m_material = other.m_material;
    return *this;
}

znAssetItemFactory& znAssetItemFactory::the()
{
    static znAssetItemFactory factory;
    return factory;
}
void znAssetItemFactory::cleanupMaterialItems() {}

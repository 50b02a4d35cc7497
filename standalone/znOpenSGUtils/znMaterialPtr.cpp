#include "host/znOpenSGUtils/znMaterialPtr.h"

znMaterialPtr::znMaterialPtr() = default;
znMaterialPtr::znMaterialPtr(const osg::MaterialPtr& material) : m_material(material) {}
znMaterialPtr::znMaterialPtr(const znMaterialPtr&) = default;
znMaterialPtr& znMaterialPtr::operator=(const znMaterialPtr&) = default;
znMaterialPtr::~znMaterialPtr() = default;

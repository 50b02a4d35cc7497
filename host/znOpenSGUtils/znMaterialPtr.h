#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Material.h"

/// A material as the host's own tools pass it about. It holds no reference.
class ZN_HOST_EXPORT znMaterialPtr
{
public:
    znMaterialPtr();
    ///@{
    /// Stands for the same material, or for none.
    znMaterialPtr(const osg::MaterialPtr& material);
    znMaterialPtr(const znMaterialPtr& other);
    znMaterialPtr& operator=(const znMaterialPtr& other);
    ///@}
    virtual ~znMaterialPtr();

    ///@{
    /// The material, null if it stands for none. It is not kept alive.
    const osg::MaterialPtr& get() const { return m_material; }
    operator const osg::MaterialPtr&() const { return m_material; }
    ///@}

    /// Whether it stands for no material.
    friend bool operator==(const znMaterialPtr& material, osg::NullFieldContainer null)
    {
        return material.m_material == null;
    }

private:
    osg::MaterialPtr m_material;
};

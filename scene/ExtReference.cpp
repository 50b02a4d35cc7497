#include "host/znOpenSGExt/ExtReference.h"

#include "scene/Attachments.h"

#include <utility>

namespace osg
{

FieldContainerType ExtReferenceBase::_type("ExtReference", &Transform3DBase::_type);

ExtReferenceBase::~ExtReferenceBase()
{
    getSourceFile().subRef();
    getSmartFile().subRef();
}

ExtReferencePtr ExtReferenceBase::create()
{
    return ExtReferencePtr(new ExtReference);
}

void ExtReferenceBase::setState(unsigned state)
{
    m_state = state;
    fieldChanged(StateFieldMask);
}

FileReferencePtr ExtReferenceBase::getSourceFile() const
{
    return FileReferencePtr(m_sourceFile);
}

FileReferencePtr ExtReferenceBase::getSmartFile() const
{
    return FileReferencePtr(m_smartFile);
}

bool ExtReferenceBase::equalFields(const FieldContainer& other) const
{
    const auto& reference = static_cast<const ExtReferenceBase&>(other);
    return m_sourceFile == reference.m_sourceFile && m_smartFile == reference.m_smartFile &&
           m_state == reference.m_state && Transform3D::equalFields(other);
}

FieldContainerPtr ExtReferenceBase::copy() const
{
    auto* result = new ExtReference;
    AttachmentAccess::copyAll(*this, *result);
    copyTransformTo(*result);
    ExtReferenceBase& fields = *result;
    getSourceFile().addRef();
    fields.m_sourceFile = m_sourceFile;
    getSmartFile().addRef();
    fields.m_smartFile = m_smartFile;
    fields.m_state = m_state;
    fields.m_flags = m_flags;
    return ExtReferencePtr(result);
}

void ExtReference::setSourceFile(const FileReferencePtr& file)
{
    file.addRef();
    FileReferencePtr(std::exchange(m_sourceFile, file.get())).subRef();
    fieldChanged(SourceFileFieldMask);
}

void ExtReference::setSmartFile(const FileReferencePtr& file)
{
    file.addRef();
    FileReferencePtr(std::exchange(m_smartFile, file.get())).subRef();
    fieldChanged(SmartFileFieldMask);
}

} // namespace osg

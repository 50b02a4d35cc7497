#include "host/znOpenSGExt/FileReference.h"

namespace osg
{

FieldContainerType FileReferenceBase::_type("FileReference", &FieldContainer::_type, "FileReference");

FileReferencePtr FileReferenceBase::create()
{
    return FileReferencePtr(new FileReference);
}

void FileReferenceBase::setPath(const std::string& path)
{
    m_path = path;
    fieldChanged(PathFieldMask);
}

void FileReferenceBase::setRelativePath(const std::string& path)
{
    m_relativePath = path;
    fieldChanged(RelativePathFieldMask);
}

bool FileReferenceBase::equalFields(const FieldContainer& other) const
{
    const auto& reference = static_cast<const FileReferenceBase&>(other);
    return m_path == reference.m_path && m_relativePath == reference.m_relativePath;
}

FieldContainerPtr FileReferenceBase::copy() const
{
    auto* result = new FileReference;
    FileReferenceBase& fields = *result;
    fields.m_path = m_path;
    fields.m_relativePath = m_relativePath;
    return FileReferencePtr(result);
}

} // namespace osg

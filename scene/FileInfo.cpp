#include "host/znOpenSGExt/FileInfo.h"

namespace osg
{

FieldContainerType FileInfoBase::_type("FileInfo", &Attachment::_type, "FileInfo");

FileInfoPtr FileInfoBase::create()
{
    return FileInfoPtr(new FileInfo);
}

void FileInfoBase::setFileName(const std::string& fileName)
{
    m_fileName = fileName;
    fieldChanged(FileNameFieldMask);
}

void FileInfoBase::setFormat(const std::string& format)
{
    m_format = format;
    fieldChanged(FormatFieldMask);
}

void FileInfoBase::setImportAppliedMaterialAssetsUrl(const std::string& url)
{
    m_assetsUrl = url;
    fieldChanged(ImportAppliedMaterialAssetsUrlFieldMask);
}

bool FileInfoBase::equalFields(const FieldContainer& other) const
{
    const auto& info = static_cast<const FileInfoBase&>(other);
    return m_fileName == info.m_fileName && m_format == info.m_format && m_assetsUrl == info.m_assetsUrl;
}

FieldContainerPtr FileInfoBase::copy() const
{
    const FileInfoPtr result = create();
    FileInfoBase& fields = *result;
    fields.m_fileName = m_fileName;
    fields.m_format = m_format;
    fields.m_assetsUrl = m_assetsUrl;
    return result;
}

} // namespace osg

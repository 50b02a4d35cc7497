#pragma once

#include "host/OSGSystem/Attachment.h"

#include <string>

namespace osg
{

class FileInfo;
/// Pointer to a `FileInfo`.
using FileInfoPtr = FCPtr<AttachmentPtr, FileInfo>;

/// Fields of `FileInfo`. Texts are UTF-8.
class ZN_HOST_EXPORT FileInfoBase : public Attachment
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = FileInfoPtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: one for each text.
    static constexpr FieldMask FileNameFieldMask = 1u << 0;
    static constexpr FieldMask FormatFieldMask = 1u << 1;
    static constexpr FieldMask ImportAppliedMaterialAssetsUrlFieldMask = 1u << 2;
    ///@}

    /// A new one whose texts are empty.
    static FileInfoPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// The file that the tree was imported from.
    const std::string& getFileName() const { return m_fileName; }
    void setFileName(const std::string& fileName);
    ///@}
    ///@{
    /// The name of its format; may be empty.
    const std::string& getFormat() const { return m_format; }
    void setFormat(const std::string& format);
    ///@}
    ///@{
    /// Where the material assets came from that the import put on the tree; empty if it put none.
    const std::string& getImportAppliedMaterialAssetsUrl() const { return m_assetsUrl; }
    void setImportAppliedMaterialAssetsUrl(const std::string& url);
    ///@}

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    std::string m_fileName;
    std::string m_format;
    std::string m_assetsUrl;
};

/// Tells where the tree below a node comes from.
class ZN_HOST_EXPORT FileInfo : public FileInfoBase
{
};

} // namespace osg

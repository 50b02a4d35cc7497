#pragma once

#include "host/OSGSystem/FieldContainer.h"
#include "host/OSGSystem/FieldContainerPtr.h"

#include <string>

namespace osg
{

class FileReference;
/// Pointer to a `FileReference`.
using FileReferencePtr = FCPtr<FieldContainerPtr, FileReference>;

/// Fields of `FileReference`. Paths are UTF-8.
class ZN_HOST_EXPORT FileReferenceBase : public FieldContainer
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = FileReferencePtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: one for each path.
    static constexpr FieldMask PathFieldMask = 1u << 0;
    static constexpr FieldMask RelativePathFieldMask = 1u << 1;
    ///@}

    /// A new one whose paths are empty.
    static FileReferencePtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// The path at which the file is looked for; empty for none.
    const std::string& getPath() const { return m_path; }
    void setPath(const std::string& path);
    ///@}
    ///@{
    /// The path as the referring document wrote it.
    const std::string& getRelativePath() const { return m_relativePath; }
    void setRelativePath(const std::string& path);
    ///@}

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    std::string m_path;
    std::string m_relativePath;
};

/// Names a file outside the scene.
class ZN_HOST_EXPORT FileReference : public FileReferenceBase
{
};

} // namespace osg

#pragma once

#include "host/OSGSystem/Transform3D.h"
#include "host/znOpenSGExt/FileReference.h"

namespace osg
{

class ExtReference;
/// Pointer to an `ExtReference`.
using ExtReferencePtr = FCPtr<Transform3DPtr, ExtReference>;

/// Fields of `ExtReference`. It holds a reference on each file reference.
class ZN_HOST_EXPORT ExtReferenceBase : public Transform3D
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = ExtReferencePtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: for the state, the source file and the smart file.
    static constexpr FieldMask StateFieldMask = 1u << 6;
    static constexpr FieldMask SourceFileFieldMask = 1u << 7;
    static constexpr FieldMask SmartFileFieldMask = 1u << 8;
    ///@}

    /// A new reference with the identity, the state 0 and no file.
    static ExtReferencePtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// 0 for a reference that only names its file, 2 when its content is loaded.
    unsigned getState() const { return m_state; }
    void setState(unsigned state);
    ///@}
    /// The file that the content comes from; may be null.
    FileReferencePtr getSourceFile() const;
    /// The scene file that this reference stands for in the host; may be null.
    FileReferencePtr getSmartFile() const;

protected:
    ~ExtReferenceBase() override;
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    ///@{
    /// What the getters tell; a reference is held on each file.
    FileReference* m_sourceFile = nullptr;
    FileReference* m_smartFile = nullptr;
    unsigned m_state = 0;
    ///@}
};

/// A core that stands for a part in another file, with the transform that places it.
class ZN_HOST_EXPORT ExtReference : public ExtReferenceBase
{
public:
    ///@{
    /// Holds a reference on `file`, which may be null, and gives up the one on the former file. Nothing is loaded.
    void setSourceFile(const FileReferencePtr& file);
    void setSmartFile(const FileReferencePtr& file);
    ///@}
};

} // namespace osg

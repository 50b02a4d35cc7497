#pragma once

#include "host/OSGSystem/Attachment.h"

#include <memory>
#include <string>
#include <vector>

namespace osg
{

class ImageAttachment;
/// Pointer to an `ImageAttachment`.
using ImageAttachmentPtr = FCPtr<AttachmentPtr, ImageAttachment>;

/// Fields of `ImageAttachment`.
class ZN_HOST_EXPORT ImageAttachmentBase : public Attachment
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = ImageAttachmentPtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: for the file name, and for width, height and pixels together.
    static constexpr FieldMask FileNameFieldMask = 1u << 0;
    static constexpr FieldMask PixelsFieldMask = 1u << 1;
    ///@}

    /// Values from 0 to 255, three for each pixel.
    using Pixels = std::vector<unsigned char>;

    /// Without a file and without pixels.
    static ImageAttachmentPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// The file that the image came from, a UTF-8 path; empty for one that was made.
    const std::string& getFileName() const { return m_fileName; }
    void setFileName(const std::string& fileName);
    ///@}

    ///@{
    /// In pixels; 0 without an image.
    unsigned getWidth() const { return m_width; }
    unsigned getHeight() const { return m_height; }
    ///@}
    /// Red, green and blue of each pixel as display colours (sRGB), row by row from the top; never null.
    const std::shared_ptr<const Pixels>& getPixels() const { return m_pixels; }
    /// Ignored unless there are three values for each pixel.
    void setImage(unsigned width, unsigned height, Pixels pixels);

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    std::string m_fileName;
    unsigned m_width = 0;
    unsigned m_height = 0;
    std::shared_ptr<const Pixels> m_pixels = std::make_shared<const Pixels>();
};

/// A picture that belongs to a container. On a material it makes the material an environment with an image.
class ZN_HOST_EXPORT ImageAttachment : public ImageAttachmentBase
{
};

} // namespace osg

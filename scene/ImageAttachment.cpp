#include "host/OSGSystem/ImageAttachment.h"

namespace osg
{

FieldContainerType ImageAttachmentBase::_type("ImageAttachment", &Attachment::_type, "ImageAttachment");

ImageAttachmentPtr ImageAttachmentBase::create()
{
    return ImageAttachmentPtr(new ImageAttachment);
}

void ImageAttachmentBase::setFileName(const std::string& fileName)
{
    m_fileName = fileName;
    fieldChanged(FileNameFieldMask);
}

void ImageAttachmentBase::setImage(unsigned width, unsigned height, Pixels pixels)
{
    if (pixels.size() != std::size_t(width) * height * 3)
        return;
    m_width = width;
    m_height = height;
    m_pixels = std::make_shared<const Pixels>(std::move(pixels));
    fieldChanged(PixelsFieldMask);
}

bool ImageAttachmentBase::equalFields(const FieldContainer& other) const
{
    const auto& image = static_cast<const ImageAttachmentBase&>(other);
    return m_fileName == image.m_fileName && m_width == image.m_width && m_height == image.m_height &&
           (m_pixels == image.m_pixels || *m_pixels == *image.m_pixels);
}

FieldContainerPtr ImageAttachmentBase::copy() const
{
    auto* result = new ImageAttachment;
    ImageAttachmentBase& fields = *result;
    fields.m_fileName = m_fileName;
    fields.m_width = m_width;
    fields.m_height = m_height;
    fields.m_pixels = m_pixels;
    return ImageAttachmentPtr(result);
}

} // namespace osg

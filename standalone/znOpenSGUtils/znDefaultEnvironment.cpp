#include "host/znOpenSGUtils/znDefaultEnvironment.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"
#include "standalone/session/Session.h"
#include "standalone/znUtils/CallTrace.h"

#include <array>

namespace
{

/// The one of a session; null until it is asked for.
struct DefaultEnvironment {
    osg::RefPtr<osg::MaterialPtr> material;
};

using Color = std::array<double, 3>;

constexpr unsigned width = 64;
constexpr unsigned height = 32;
constexpr Color zenith = {110, 150, 205};
constexpr Color skyline = {232, 238, 244};
constexpr Color ground = {120, 116, 110};

Color mixed(const Color& from, const Color& to, double share)
{
    Color result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = from[i] + (to[i] - from[i]) * share;
    return result;
}

/// From the zenith to the skyline in the upper half, down to the ground in the lower one.
Color colorOfRow(unsigned row)
{
    const double place = row / (height / 2.0);
    return place < 1 ? mixed(zenith, skyline, place) : mixed(skyline, ground, place - 1);
}

osg::ImageAttachmentBase::Pixels sky()
{
    osg::ImageAttachmentBase::Pixels pixels;
    pixels.reserve(width * height * 3);
    for (unsigned row = 0; row < height; ++row)
        for (unsigned column = 0; column < width; ++column)
            for (const double value : colorOfRow(row))
                pixels.push_back(static_cast<unsigned char>(value));
    return pixels;
}

osg::MaterialPtr made()
{
    const osg::ImageAttachmentPtr image = osg::ImageAttachment::create();
    osg::beginEditCP(image, osg::ImageAttachmentBase::PixelsFieldMask, 1);
    image->setImage(width, height, sky());
    osg::endEditCP(image, osg::ImageAttachmentBase::PixelsFieldMask, 1);
    const osg::UberMaterialPtr environment = osg::UberMaterial::create();
    osg::setName(environment, "Default environment");
    osg::beginEditCP(environment, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    environment->addAttachment(image);
    osg::endEditCP(environment, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    return environment;
}

} // namespace

osg::MaterialPtr znDefaultEnvironment::getDefault()
{
    const zn::TracedCall call("znDefaultEnvironment::getDefault");
    osg::RefPtr<osg::MaterialPtr>& environment = zn::Session::require().state<DefaultEnvironment>().material;
    if (!environment)
        environment = made();
    return environment;
}

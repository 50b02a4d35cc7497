#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGUberMaterial/znUberMaterialUtils.h"
#include "host/znOpenSGUtils/znDefaultEnvironment.h"
#include "scene/ContainerRegistry.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class UBRDFMaterialTest : public SessionTest
{
protected:
    static osg::UberMaterialPtr place(const char* name)
    {
        const osg::UberMaterialPtr material = osg::UberMaterial::create();
        osg::setName(material, name);
        return material;
    }
    template <class T>
    static typename T::Ptr copyOf(const osg::FieldContainerPtr& container)
    {
        return osg::fcCast<T>(osg::ContainerAccess::copy(*container));
    }
};

TEST_F(UBRDFMaterialTest, ItIsAnUberMaterial)
{
    const osg::RefPtr<osg::UBRDFMaterialPtr> chrome(osg::UBRDFMaterial::create());
    EXPECT_TRUE(osg::fcCast<osg::UberMaterial>(chrome.get()));
    EXPECT_FALSE(chrome->getActiveEnvironment());
}

TEST_F(UBRDFMaterialTest, ItHoldsItsEnvironment)
{
    const osg::RefPtr<osg::MaterialPtr> hall(place("hall"));
    {
        const osg::RefPtr<osg::UBRDFMaterialPtr> chrome(osg::UBRDFMaterial::create());
        chrome->setEnvironment(hall);
        EXPECT_EQ(hall->getRefCount(), 2U);
        chrome->setEnvironment(hall);
        EXPECT_EQ(hall->getRefCount(), 2U);
        const osg::RefPtr<osg::MaterialPtr> copy(copyOf<osg::Material>(chrome.get()));
        EXPECT_EQ(hall->getRefCount(), 3U);
        EXPECT_TRUE(osg::FieldContainer::isEqual(chrome.get(), copy.get()));
        chrome->setEnvironment(osg::MaterialPtr());
        EXPECT_FALSE(osg::FieldContainer::isEqual(chrome.get(), copy.get()));
    }
    EXPECT_EQ(hall->getRefCount(), 1U);
}

TEST_F(UBRDFMaterialTest, EnvironmentsAreComparedByTheirFieldsAndNames)
{
    const auto within = [](const osg::MaterialPtr& environment) {
        const osg::RefPtr<osg::UBRDFMaterialPtr> chrome(osg::UBRDFMaterial::create());
        chrome->setEnvironment(environment);
        return chrome;
    };
    const auto hall = within(place("hall")), same = within(place("hall")), yard = within(place("yard"));
    EXPECT_TRUE(osg::FieldContainer::isEqual(hall.get(), same.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(hall.get(), yard.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(hall.get(), within({}).get()));
}

TEST_F(UBRDFMaterialTest, OfASwitchMaterialTheChosenOneIsActive)
{
    const osg::RefPtr<osg::UBRDFMaterialPtr> chrome(osg::UBRDFMaterial::create());
    const osg::MaterialPtr hall = place("hall"), garden = place("garden");
    const osg::SwitchMaterialPtr places = osg::SwitchMaterial::create();
    places->addMaterial(hall);
    places->addMaterial(garden);
    chrome->setEnvironment(places);
    places->setChoice(1);
    EXPECT_TRUE(chrome->getActiveEnvironment() == garden);
    places->setChoice(7);
    EXPECT_FALSE(chrome->getActiveEnvironment());
    EXPECT_TRUE(chrome->getEnvironment() == places);
}

TEST_F(UBRDFMaterialTest, WhateverHoldsItCannotBeItsEnvironment)
{
    const osg::UBRDFMaterialPtr chrome = osg::UBRDFMaterial::create();
    const osg::RefPtr<osg::SwitchMaterialPtr> places(osg::SwitchMaterial::create());
    places->addMaterial(chrome);
    chrome->setEnvironment(chrome);
    chrome->setEnvironment(places);
    EXPECT_FALSE(chrome->getEnvironment());
}

TEST_F(UBRDFMaterialTest, HelpersReadAndWriteTheEnvironmentWithinItsBracket)
{
    const osg::RefPtr<osg::UBRDFMaterialPtr> chrome(osg::UBRDFMaterial::create());
    const osg::RefPtr<osg::MaterialPtr> plain(place("plain"));
    const osg::MaterialPtr hall = place("hall");
    const osg::EditAudit audit;
    znUberMaterialUtils::setBRDFEnvironment(chrome.get(), hall);
    EXPECT_TRUE(znUberMaterialUtils::getBRDFEnvironment(chrome.get()) == hall);
    EXPECT_THAT(audit.brackets(), ElementsAre(osg::EditAudit::Record{chrome->getContainerId(), "UBRDFMaterial",
                                                                     osg::UBRDFMaterialBase::EnvironmentFieldMask}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
    znUberMaterialUtils::setBRDFEnvironment(plain, hall);
    znUberMaterialUtils::setBRDFEnvironment(osg::MaterialPtr(), hall);
    EXPECT_FALSE(znUberMaterialUtils::getBRDFEnvironment(plain));
    EXPECT_FALSE(znUberMaterialUtils::getBRDFEnvironment(osg::MaterialPtr()));
    EXPECT_EQ(audit.brackets().size(), 1U);
}

TEST_F(UBRDFMaterialTest, TheDefaultEnvironmentIsOneWithASky)
{
    const osg::MaterialPtr environment = znDefaultEnvironment::getDefault();
    EXPECT_TRUE(znDefaultEnvironment::getDefault() == environment);
    EXPECT_STREQ(osg::getName(environment), "Default environment");
    const auto image =
        osg::fcCast<osg::ImageAttachment>(environment->findAttachment(osg::ImageAttachmentBase::_type.getGroupId()));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->getWidth(), 64U);
    EXPECT_EQ(image->getHeight(), 32U);
    const osg::ImageAttachmentBase::Pixels& pixels = *image->getPixels();
    ASSERT_EQ(pixels.size(), 64U * 32U * 3U);
    EXPECT_THAT(std::vector<int>(pixels.begin(), pixels.begin() + 3), ElementsAre(110, 150, 205));
    EXPECT_THAT(std::vector<int>(pixels.begin() + 64 * 16 * 3, pixels.begin() + 64 * 16 * 3 + 3),
                ElementsAre(232, 238, 244));
}

TEST_F(UBRDFMaterialTest, AnImageTakesThreeValuesForEachPixelOnly)
{
    const osg::RefPtr<osg::ImageAttachmentPtr> image(osg::ImageAttachment::create());
    image->setImage(2, 1, {1, 2, 3, 4, 5});
    EXPECT_EQ(image->getWidth(), 0U);
    EXPECT_TRUE(image->getPixels()->empty());
    image->setImage(2, 1, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(image->getWidth(), 2U);
    image->setFileName("sky.png");
    const osg::RefPtr<osg::AttachmentPtr> copy(copyOf<osg::Attachment>(image.get()));
    EXPECT_TRUE(osg::FieldContainer::isEqual(image.get(), copy.get()));
    image->setImage(1, 1, {1, 2, 3});
    EXPECT_FALSE(osg::FieldContainer::isEqual(image.get(), copy.get()));
}

} // namespace

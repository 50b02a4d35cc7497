#include "optimization/MaterialAssets.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "host/znOpenSGUtils/znDefaultEnvironment.h"
#include "host/znOpenSGUtils/znNodePtr.h"
#include "scene/Tags.h"
#include "standalone/znKernel/ControllerCalls.h"
#include "standalone/znOpenSGUtils/HelperCalls.h"
#include "standalone/znOpenSGUtils/MaterialUses.h"
#include "tests/optimization/MaterialTest.h"

#include <QUrl>

using namespace optimization;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

std::string told(const osg::MaterialPtr& material)
{
    return zn::tracetext::of(material);
}

class MaterialAssetsTest : public MaterialTest
{
protected:
    MaterialAssetsTest()
    {
        m_session.state<zn::nodes::HelperCalls>().table.offer("loadMaterialAsset", [this](znMessage& message, int) {
            QString uuid;
            EXPECT_TRUE(message.get("uuid", uuid));
            m_asked.push_back(uuid.toStdString());
            return answer(message, m_assets[uuid.toStdString()]);
        });
    }
    static bool answer(znMessage& message, const boost::any& value)
    {
        if (!value.empty())
            message.set("material", value, true);
        return !value.empty();
    }
    /// Makes `material` what the host loads for `uuid`.
    osg::MaterialPtr host(const char* uuid, const osg::MaterialPtr& material)
    {
        m_assets[uuid] = boost::any(material);
        m_held.emplace_back(material);
        return material;
    }
    osg::MaterialPtr held(const osg::MaterialPtr& material)
    {
        m_held.emplace_back(material);
        return material;
    }
    void TearDown() override
    {
        m_held.clear();
        MaterialTest::TearDown();
    }

    static void attachImage(const osg::MaterialPtr& material)
    {
        const osg::ImageAttachmentPtr image = osg::ImageAttachment::create();
        image->setImage(1, 1, {10, 20, 30});
        material->addAttachment(image);
    }

    AssetCache m_cache;
    std::vector<std::string> m_asked;
    std::map<std::string, boost::any> m_assets;
    std::vector<osg::RefPtr<osg::MaterialPtr>> m_held;
};

using LoadAssetMaterial = MaterialAssetsTest;
using EnsureEnvironmentImage = MaterialAssetsTest;
using ReplaceSubMaterial = MaterialAssetsTest;

TEST_F(LoadAssetMaterial, ACopyOfAnAssetGivesTheAssetsMaterial)
{
    const osg::MaterialPtr gold = host("uuid ä", brdf("gold"));
    EXPECT_TRUE(loadAssetMaterial(held(copyOfAsset(simple("x"), "uuid ä")), m_cache) == gold);
    EXPECT_THAT(m_asked, ElementsAre("uuid ä"));
    EXPECT_TRUE(m_cache["uuid ä"] == gold);
}

TEST_F(LoadAssetMaterial, AnAssetIsLoadedAndMarkedOnceARun)
{
    const osg::MaterialPtr red = simple("red"), paint = switching("paint", {red});
    host("1", paint);
    loadAssetMaterial(held(copyOfAsset(simple("x"), "1")), m_cache);
    EXPECT_TRUE(loadAssetMaterial(held(copyOfAsset(simple("y"), "1")), m_cache) == paint);
    EXPECT_THAT(m_asked, ElementsAre("1"));
    const auto& uses = zn::nodes::materialUses();
    ASSERT_EQ(uses.size(), 2U);
    EXPECT_EQ(uses.at(paint->getContainerId()).count, 1U);
    EXPECT_EQ(uses.at(red->getContainerId()).count, 1U);
}

TEST_F(LoadAssetMaterial, TheHostIsAskedAndToldInThisOrder)
{
    const osg::MaterialPtr red = simple("red"), blue = simple("blue"), paint = switching("paint", {red, blue});
    host("1", paint);
    const osg::MaterialPtr copy = held(copyOfAsset(simple("x"), "1"));
    EXPECT_THAT(callsOf([&] { loadAssetMaterial(copy, m_cache); }),
                ElementsAre("znOpenSGUtils::call('loadMaterialAsset', 0)",
                            "znMaterials::getRecursiveMaterials(" + told(paint) + ", false)",
                            "znMaterials::addRef(" + told(paint) + ", null, 0)",
                            "znMaterials::addRef(" + told(red) + ", null, 0)",
                            "znMaterials::addRef(" + told(blue) + ", null, 0)"));
}

TEST_F(LoadAssetMaterial, AMaterialThatIsNoCopyOfAnAssetAsksForNothing)
{
    const osg::MaterialPtr tagged = held(simple("steel"));
    osg::setTags(tagged, {"uuid"});
    EXPECT_FALSE(loadAssetMaterial(tagged, m_cache));
    EXPECT_FALSE(loadAssetMaterial(osg::MaterialPtr(), m_cache));
    EXPECT_THAT(m_asked, IsEmpty());
}

TEST_F(LoadAssetMaterial, AnAssetThatIsNotThereIsAskedForAgain)
{
    const osg::MaterialPtr copy = held(copyOfAsset(simple("x"), "lost"));
    EXPECT_FALSE(loadAssetMaterial(copy, m_cache));
    EXPECT_FALSE(loadAssetMaterial(copy, m_cache));
    EXPECT_THAT(m_asked, ElementsAre("lost", "lost"));
    EXPECT_THAT(m_cache, IsEmpty());
    EXPECT_THAT(zn::nodes::materialUses(), IsEmpty());
}

TEST_F(LoadAssetMaterial, ANullMaterialIsNoMaterial)
{
    m_assets["1"] = boost::any(osg::MaterialPtr());
    EXPECT_FALSE(loadAssetMaterial(held(copyOfAsset(simple("x"), "1")), m_cache));
    EXPECT_THAT(m_cache, IsEmpty());
}

TEST_F(LoadAssetMaterial, AnAnswerOfAnotherTypeIsToldAndIgnored)
{
    m_assets["1"] = boost::any(7);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(loadAssetMaterial(held(copyOfAsset(simple("x"), "1")), m_cache));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr(std::string("znMessage::get : Attribute 'material' has wrong type (is:'i' != req:'") +
                          typeid(osg::MaterialPtr).name() + "')!\n"));
    EXPECT_THAT(m_cache, IsEmpty());
}

TEST_F(EnsureEnvironmentImage, AnEnvironmentWithoutAnImageGivesWayToTheDefaultOne)
{
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    held(chrome);
    chrome->setEnvironment(copyOfAsset(simple("hall"), "of another kind"));
    const osg::EditAudit audit;
    ensureEnvironmentImage(chrome);
    EXPECT_TRUE(chrome->getEnvironment() == znDefaultEnvironment::getDefault());
    ASSERT_FALSE(audit.brackets().empty());
    EXPECT_EQ(audit.brackets().back(), (osg::EditAudit::Record{chrome->getContainerId(), "UBRDFMaterial",
                                                               osg::UBRDFMaterialBase::EnvironmentFieldMask}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
}

TEST_F(EnsureEnvironmentImage, AnEnvironmentWithAnImageStays)
{
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    held(chrome);
    const osg::MaterialPtr hall = simple("hall");
    attachImage(hall);
    chrome->setEnvironment(hall);
    const osg::EditAudit audit;
    ensureEnvironmentImage(chrome);
    EXPECT_TRUE(chrome->getEnvironment() == hall);
    EXPECT_THAT(audit.brackets(), IsEmpty());
}

TEST_F(EnsureEnvironmentImage, TheEnvironmentThatShowsDecides)
{
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    held(chrome);
    const osg::MaterialPtr bare = simple("bare"), hall = simple("hall");
    attachImage(hall);
    const osg::SwitchMaterialPtr places = switching("places", {bare, hall});
    chrome->setEnvironment(places);
    places->setChoice(1);
    ensureEnvironmentImage(chrome);
    EXPECT_TRUE(chrome->getEnvironment() == places);
    places->setChoice(0);
    ensureEnvironmentImage(chrome);
    EXPECT_TRUE(chrome->getEnvironment() == znDefaultEnvironment::getDefault());
}

TEST_F(EnsureEnvironmentImage, AMaterialWithoutAnEnvironmentIsLeftAlone)
{
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    held(chrome);
    const osg::MaterialPtr plain = held(simple("plain"));
    EXPECT_THAT(callsOf([&] {
                    ensureEnvironmentImage(chrome);
                    ensureEnvironmentImage(plain);
                    ensureEnvironmentImage(osg::MaterialPtr());
                }),
                IsEmpty());
    EXPECT_FALSE(chrome->getEnvironment());
}

TEST_F(ReplaceSubMaterial, EachEntryChangesWithinAnEditOfItsOwn)
{
    const osg::MaterialPtr old = simple("old"), kept = simple("kept"), fresh = held(simple("fresh"));
    const osg::SwitchMaterialPtr inner = switching("inner", {kept, old});
    const osg::SwitchMaterialPtr outer = switching("outer", {old, inner, kept, old});
    held(outer);
    const osg::EditAudit audit;
    replaceSubMaterial(outer, old, fresh);
    EXPECT_EQ(outer->getMaterials(), (osg::MaterialField{fresh, inner, kept, fresh}));
    EXPECT_EQ(inner->getMaterials(), (osg::MaterialField{kept, fresh}));
    constexpr osg::FieldMask mask = osg::SwitchMaterialBase::MaterialsFieldMask;
    const osg::EditAudit::Record ofOuter{outer->getContainerId(), "SwitchMaterial", mask};
    const osg::EditAudit::Record ofInner{inner->getContainerId(), "SwitchMaterial", mask};
    EXPECT_THAT(audit.brackets(), ElementsAre(ofOuter, ofInner, ofOuter));
    EXPECT_EQ(fresh->getRefCount(), 4U); // that of the test, and three entries
}

TEST_F(ReplaceSubMaterial, AnEnvironmentAtAnyDepthChangesToo)
{
    const osg::MaterialPtr hall = held(simple("hall")), garden = held(simple("garden"));
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    chrome->setEnvironment(hall);
    const osg::SwitchMaterialPtr choices = switching("choices", {chrome, hall});
    held(choices);
    replaceSubMaterial(choices, hall, garden);
    EXPECT_TRUE(chrome->getEnvironment() == garden);
    EXPECT_TRUE(choices->getMaterial(1) == garden);
    EXPECT_EQ(hall->getRefCount(), 1U);
}

TEST_F(ReplaceSubMaterial, NullAndTheRootItselfChangeNothing)
{
    const osg::MaterialPtr red = simple("red"), fresh = held(simple("fresh"));
    const osg::SwitchMaterialPtr paint = switching("paint", {red});
    held(paint);
    EXPECT_THAT(callsOf([&] {
                    replaceSubMaterial(osg::MaterialPtr(), red, fresh);
                    replaceSubMaterial(paint, osg::MaterialPtr(), fresh);
                    replaceSubMaterial(paint, red, osg::MaterialPtr());
                    replaceSubMaterial(paint, paint, fresh);
                }),
                IsEmpty());
    EXPECT_TRUE(paint->getMaterial(0) == red);
}

TEST_F(ReplaceSubMaterial, EqualMaterialsAreNotTheSame)
{
    const osg::MaterialPtr red = simple("red"), alsoRed = held(simple("red"));
    const osg::SwitchMaterialPtr paint = switching("paint", {red});
    held(paint);
    replaceSubMaterial(paint, alsoRed, held(simple("fresh")));
    EXPECT_TRUE(paint->getMaterial(0) == red);
}

TEST_F(ReplaceSubMaterial, ManyLevelsAndSharedOnesAreWalkedInLittleTime)
{
    const osg::MaterialPtr old = simple("old"), fresh = held(simple("fresh"));
    osg::MaterialPtr level = switching("last", {old});
    const osg::SwitchMaterialPtr last = osg::fcCast<osg::SwitchMaterial>(level);
    for (int i = 0; i < 2000; ++i)
        level = switching("level", {level, level});
    held(level);
    replaceSubMaterial(level, old, fresh);
    EXPECT_TRUE(last->getMaterial(0) == fresh);
}

class AppliedAssets : public MaterialAssetsTest
{
protected:
    AppliedAssets()
    {
        m_session.state<zn::kernel::ControllerCalls>().table.offer("getSelectedMaterialAssetDirectory",
                                                                   [this](znMessage& message, int) {
                                                                       if (!m_url.empty())
                                                                           message.set("url", m_url, true);
                                                                       return !m_url.empty();
                                                                   });
        m_session.state<zn::kernel::ControllerCalls>().table.offer("applyMaterialAssetsToNodes",
                                                                   [this](znMessage& message, int) {
                                                                       EXPECT_TRUE(message.get("url", m_appliedUrl));
                                                                       return message.get("nodes", m_appliedNodes);
                                                                   });
    }

    boost::any m_url;
    QUrl m_appliedUrl;
    std::vector<znNodePtr> m_appliedNodes;
};

TEST_F(AppliedAssets, TheHostPutsTheAssetsOfItsFolderOnTheTree)
{
    const osg::FileInfoPtr info = osg::FileInfo::create();
    root->addAttachment(info);
    m_url = QUrl(QString::fromUtf8("file:///shop/Stähle%20A"));
    const osg::EditAudit audit;
    const std::vector<std::string> calls = callsOf([this] { applySelectedMaterialAssets(root); });
    EXPECT_THAT(calls, ElementsAre("znController::call('getSelectedMaterialAssetDirectory', 0)",
                                   "znController::call('applyMaterialAssetsToNodes', 0)"));
    EXPECT_EQ(info->getImportAppliedMaterialAssetsUrl(), "file:///shop/Stähle A");
    EXPECT_EQ(m_appliedUrl, boost::any_cast<QUrl>(m_url));
    ASSERT_EQ(m_appliedNodes.size(), 1U);
    EXPECT_TRUE(m_appliedNodes[0].get() == root);
    EXPECT_THAT(audit.brackets(),
                ElementsAre(osg::EditAudit::Record{info->getContainerId(), "FileInfo", osg::AllFieldsMask}));
}

TEST_F(AppliedAssets, WithoutFileInfoTheUrlIsNotNoted)
{
    m_url = QUrl(QStringLiteral("file:///shop"));
    const osg::EditAudit audit;
    applySelectedMaterialAssets(root);
    EXPECT_EQ(m_appliedNodes.size(), 1U);
    EXPECT_THAT(audit.brackets(), IsEmpty());
}

TEST_F(AppliedAssets, WithoutAFolderNothingIsApplied)
{
    const std::vector<std::string> expected = {"znController::call('getSelectedMaterialAssetDirectory', 0)"};
    EXPECT_EQ(callsOf([this] { applySelectedMaterialAssets(root); }), expected);
    m_url = QUrl();
    EXPECT_EQ(callsOf([this] { applySelectedMaterialAssets(root); }), expected);
}

TEST_F(AppliedAssets, AFolderOfAnotherTypeIsToldAndIgnored)
{
    m_url = QStringLiteral("file:///shop");
    testing::internal::CaptureStderr();
    applySelectedMaterialAssets(root);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("getFromMessage : Attribute 'url' has wrong type (is:'7QString' != req:'4QUrl')!\n"));
    EXPECT_THAT(m_appliedNodes, IsEmpty());
}

} // namespace

#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Attachments.h"
#include "scene/Mesh.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

/// Compares two trees object by object: names, attachments (tags, attributes, variants), cores, meshes, materials, what
/// is active, and what is shared among places.
class SameTree
{
public:
    /// How many nodes both trees have; says as failures of the test where they differ.
    std::size_t compare(const osg::NodePtr& a, const osg::NodePtr& b, const std::string& place = "/")
    {
        std::size_t count = 1;
        if (sameHolder(a, b, place)) {
            EXPECT_EQ(a->isActive(), b->isActive()) << place;
            sameCore(a->getCore(), b->getCore(), place);
        }
        if (a->getNChildren() != b->getNChildren()) {
            ADD_FAILURE() << place << ": " << a->getNChildren() << " and " << b->getNChildren() << " children";
            return count;
        }
        for (unsigned i = 0; i < a->getNChildren() && !testing::Test::HasFailure(); ++i)
            count += compare(a->getChild(i), b->getChild(i), place + std::to_string(i) + "/");
        return count;
    }

private:
    /// Whether both are there and not known as a pair yet. Tells differences of classes, names and attachments.
    bool sameHolder(const osg::AttachmentContainerPtr& a, const osg::AttachmentContainerPtr& b,
                    const std::string& place)
    {
        EXPECT_EQ(bool(a), bool(b)) << place;
        if (!a || !b)
            return false;
        const auto [known, isNew] = m_pairs.emplace(a->getContainerId(), b->getContainerId());
        EXPECT_EQ(known->second, b->getContainerId()) << place << ": shared in one tree only";
        EXPECT_EQ(m_back.emplace(b->getContainerId(), a->getContainerId()).first->second, a->getContainerId()) << place;
        if (!isNew)
            return false;
        EXPECT_STREQ(a->getType().getName(), b->getType().getName()) << place;
        EXPECT_STREQ(osg::getName(a), osg::getName(b)) << place;
        sameAttachments(osg::AttachmentAccess::map(*a), osg::AttachmentAccess::map(*b), place);
        return true;
    }

    static void sameAttachments(const osg::AttachmentMap* a, const osg::AttachmentMap* b, const std::string& place)
    {
        const std::size_t count = a ? a->entries().size() : 0;
        ASSERT_EQ(count, b ? b->entries().size() : 0) << place << ": attachments";
        for (std::size_t i = 0; i < count; ++i) {
            const auto& mine = a->entries()[i];
            osg::Attachment* other = b->find(mine.key);
            ASSERT_TRUE(other) << place << ": no " << mine.attachment->getType().getName();
            EXPECT_TRUE(osg::FieldContainer::isEqual(osg::AttachmentPtr(mine.attachment), osg::AttachmentPtr(other)))
                << place << ": " << mine.attachment->getType().getName();
        }
    }

    void sameCore(const osg::NodeCorePtr& a, const osg::NodeCorePtr& b, const std::string& place)
    {
        if (!sameHolder(a, b, place + "core"))
            return;
        if (const auto reference = osg::fcCast<osg::ExtReference>(a))
            return sameReference(*reference, *osg::fcCast<osg::ExtReference>(b), place);
        const auto one = osg::fcCast<osg::Geometry>(a);
        const auto other = osg::fcCast<osg::Geometry>(b);
        if (!one || !other) {
            EXPECT_TRUE(osg::FieldContainer::isEqual(a, b)) << place << a->getType().getName();
            return;
        }
        EXPECT_TRUE(osg::GeometryAccess::mesh(*one) == osg::GeometryAccess::mesh(*other)) << place << "mesh";
        sameMaterial(one->getMaterial(), other->getMaterial(), place + "material/");
    }

    static void sameReference(const osg::ExtReference& a, const osg::ExtReference& b, const std::string& place)
    {
        const auto pathOf = [](const osg::FileReferencePtr& file) { return file ? file->getPath() : "no file"; };
        EXPECT_EQ(a.getState(), b.getState()) << place;
        EXPECT_EQ(pathOf(a.getSourceFile()), pathOf(b.getSourceFile())) << place;
        EXPECT_EQ(pathOf(a.getSmartFile()), pathOf(b.getSmartFile())) << place;
    }

    void sameMaterial(const osg::MaterialPtr& a, const osg::MaterialPtr& b, const std::string& place)
    {
        if (!sameHolder(a, b, place))
            return;
        const auto one = osg::fcCast<osg::SwitchMaterial>(a);
        const auto other = osg::fcCast<osg::SwitchMaterial>(b);
        if (!one || !other) {
            EXPECT_TRUE(osg::FieldContainer::isEqual(a, b)) << place;
            return;
        }
        EXPECT_EQ(one->getChoice(), other->getChoice()) << place;
        ASSERT_EQ(one->getMaterials().size(), other->getMaterials().size()) << place;
        for (unsigned i = 0; i < one->getMaterials().size(); ++i)
            sameMaterial(one->getMaterial(i), other->getMaterial(i), place + std::to_string(i));
    }

    std::map<std::uint32_t, std::uint32_t> m_pairs; ///< objects of the trees by their ids
    std::map<std::uint32_t, std::uint32_t> m_back;
};

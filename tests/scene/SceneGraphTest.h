#pragma once

#include "scene/ContainerRegistry.h"

#include <gtest/gtest.h>

/// A test that leaves nothing alive, and starts with the ids at 1.
class SceneGraphTest : public testing::Test
{
protected:
    void TearDown() override
    {
        for (const osg::LivingContainer& left : osg::livingContainers())
            ADD_FAILURE() << "left alive: " << left.type << " " << left.id << " '" << left.name << "' with "
                          << left.references << " references";
        osg::sweepContainers();
    }

    /// Gives a fresh container up that nobody holds.
    template <class Ptr>
    static void discard(const Ptr& fresh)
    {
        fresh.addRef();
        fresh.subRef();
    }
};

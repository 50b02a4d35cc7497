#pragma once

#include "files/scenefile/SceneFile.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/BookmarkScene.h"
#include "tests/support/QtPrinters.h"

/// Runs on a model with bookmarks.
class CarRun : public ToolRun
{
protected:
    /// The car of `bookmarkscene` as a file of the surface modeller.
    QString writeCar() const
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr source = osg::FileReferenceBase::create();
        source->setPath(path("car.styl").toStdString());
        core->setSourceFile(source);
        core->setState(2);
        const osg::RefPtr<osg::NodePtr> car(bookmarkscene::make());
        car->setCore(core);
        EXPECT_TRUE(osg::scenefile::writeSceneFile(car, path("made.osb")));
        return writeCad("car.styl", path("made.osb"));
    }
};

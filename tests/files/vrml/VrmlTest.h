#pragma once

#include "tests/files/ReaderTest.h"

#include <gmock/gmock.h>

/// Reads the text of a VRML file. The first line is put before it; what the test writes begins in line 2.
class VrmlTest : public ReaderTest
{
protected:
    QString writeScene(const QByteArray& scene, const QString& name = QString::fromUtf8("Stück 零件.wrl")) const
    {
        return write(name, "#VRML V2.0 utf8\n" + scene);
    }

    files::ReadResult readScene(const QByteArray& scene, const files::ReadOptions& options = {})
    {
        return read(writeScene(scene), options);
    }

    /// The error of a scene that must be refused.
    QString sceneError(const QByteArray& scene, const files::ReadOptions& options = {})
    {
        return errorOf(writeScene(scene, QStringLiteral("d.wrl")), options);
    }

    /// The mesh of a geometry that stands alone.
    const osg::Mesh& meshOfGeometry(const QByteArray& geometry)
    {
        EXPECT_TRUE(readScene("Shape { geometry " + geometry + " }"));
        return mesh(root()->getChild(0));
    }

    static osg::Matrix matrix(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Transform>(node->getCore())->getMatrix();
    }
};

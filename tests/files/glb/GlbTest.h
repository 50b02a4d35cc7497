#pragma once

#include "files/SceneBuilding.h"
#include "files/glb/GlbWriter.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "scene/SceneEdits.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/scene/SceneGraphTest.h"
#include "tests/support/QtPrinters.h"

#include <QDir>
#include <QTemporaryDir>

/// Writes trees into a folder with a difficult name, checks them with the glTF validator where that is installed, and
/// takes them apart.
class GlbTest : public SceneGraphTest
{
protected:
    GlbTest()
        : root(files::makeGroup("Root")), m_folder(QDir::tempPath() + QString::fromUtf8("/zn Ausfuhr Ü 出口 XXXXXX"))
    {
        options.fold = false;
    }

    void TearDown() override
    {
        root = osg::NodePtr();
        SceneGraphTest::TearDown();
    }

    QString pathOf(const QString& name) const { return m_folder.filePath(name); }
    QStringList filesInFolder() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    GlbFile written()
    {
        const QString path = pathOf(QString::fromUtf8("Größe 大小.glb"));
        result = files::glb::write(root.get(), path, options);
        EXPECT_TRUE(result) << (result ? "" : result.error().toString().toStdString());
        if (gltfvalidator::isInstalled()) {
            EXPECT_EQ(gltfvalidator::validate(path), gltfvalidator::Verdict());
        }
        return GlbFile(path);
    }

    /// What the last write had to tell.
    QStringList warnings() const
    {
        QStringList texts;
        for (const files::Note& warning : result.warnings)
            texts << warning.message;
        return texts;
    }

    osg::NodePtr add(const osg::NodePtr& child)
    {
        osg::addChild(root.get(), child);
        return child;
    }

    /// A triangle with the corners (1, 2, 3), (5, 2, 3) and (1, 8, 3.5).
    static osg::Mesh triangle()
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {5, 2, 3}, {1, 8, 3.5f}};
        mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
        return mesh;
    }

    static osg::GeometryPtr geometry(const std::string& name, const osg::Mesh& mesh,
                                     const osg::MaterialPtr& material = {})
    {
        return files::makeGeometry(name, mesh, material);
    }

    osg::RefPtr<osg::NodePtr> root;
    files::glb::WriteOptions options;
    files::Result<files::glb::Written> result = files::glb::Written();

private:
    QTemporaryDir m_folder;
};

namespace gltfvalidator
{

inline void PrintTo(const Verdict& verdict, std::ostream* out)
{
    *out << (verdict.errors + verdict.warnings).join(QLatin1Char('\n')).toStdString() << verdict.failure.toStdString();
}

} // namespace gltfvalidator

#include "standalone/startup/BuiltInReaders.h"

#include "host/OSGSystem/Names.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

TEST(BuiltInReaders, KnowTheMeshFormatsAndSceneFiles)
{
    const files::SceneReaders readers = zn::startup::builtInReaders();
    QStringList extensions;
    for (const files::SceneFormat& format : readers.formats())
        extensions << format.extensions;
    EXPECT_EQ(extensions.join(QLatin1Char(' ')), QStringLiteral("obj gltf glb ply wrl vrml wrz osb"));
}

TEST(BuiltInReaders, AVrmlFileIsReadUnderEachOfItsExtensions)
{
    QTemporaryDir folder;
    for (const char* name : {"nut.wrl", "nut.vrml", "NUT.VRML", "nut.wrz"}) {
        const QString path = folder.filePath(QString::fromUtf8(name));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#VRML V2.0 utf8\nDEF nut Shape { geometry IndexedFaceSet { coord Coordinate { "
                   "point [ 1 2 3, 2 2 3, 1 3 3 ] } coordIndex [ 0 1 2 -1 ] } }\n");
        file.close();
        const files::ReadResult result = zn::startup::builtInReaders().read(path);
        ASSERT_TRUE(result) << name;
        const osg::RefPtr<osg::NodePtr> root(result.value());
        ASSERT_EQ(root->getNChildren(), 1u) << name;
        EXPECT_STREQ(osg::getName(root->getChild(0)), "nut") << name;
    }
}

TEST(BuiltInReaders, AFileThatIsNoSceneFileIsRefusedWithItsPlace)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cut.osb"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no scene") == 8);
    file.close();
    const files::ReadResult result = zn::startup::builtInReaders().read(path);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, files::ErrorCode::NotASceneFile);
    EXPECT_EQ(result.error().file, path);
    EXPECT_EQ(result.error().place.left(5), QStringLiteral("byte "));
}

TEST(BuiltInReaders, AreThoseOfANewSession)
{
    zn::StandaloneSession session;
    EXPECT_EQ(session.state<files::SceneReaders>().formats().size(), zn::startup::builtInReaders().formats().size());
}

} // namespace

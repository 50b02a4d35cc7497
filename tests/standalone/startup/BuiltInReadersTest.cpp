#include "standalone/startup/BuiltInReaders.h"

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
    EXPECT_EQ(extensions.join(QLatin1Char(' ')), QStringLiteral("obj gltf glb ply wrl wrz osb"));
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

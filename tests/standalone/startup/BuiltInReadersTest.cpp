#include "standalone/startup/BuiltInReaders.h"

#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

TEST(BuiltInReaders, KnowTheMeshFormatsAndSceneFiles)
{
    const formats::SceneReaders readers = zn::builtInReaders();
    QStringList extensions;
    for (const formats::SceneFormat& format : readers.formats())
        extensions << format.extensions;
    EXPECT_EQ(extensions.join(QLatin1Char(' ')), QStringLiteral("obj gltf glb ply wrl wrz osb"));
}

TEST(BuiltInReaders, ADamagedSceneFileIsRefusedWithItsPlace)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cut.osb"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no scene") == 8);
    file.close();
    const formats::ReadResult result = zn::builtInReaders().read(path);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, files::ErrorCode::Damaged);
    EXPECT_EQ(result.error().file, path);
    EXPECT_EQ(result.error().place.left(5), QStringLiteral("byte "));
}

TEST(BuiltInReaders, AreThoseOfANewSession)
{
    znStandaloneSession session;
    EXPECT_EQ(session.state<formats::SceneReaders>().formats().size(), zn::builtInReaders().formats().size());
}

} // namespace

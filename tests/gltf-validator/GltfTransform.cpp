#include "tests/gltf-validator/GltfTransform.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace gltftransform
{
namespace
{

QString folder()
{
    return QStringLiteral(ZN_GLTF_VALIDATOR_FOLDER);
}

} // namespace

bool isInstalled()
{
    return !QStandardPaths::findExecutable(QStringLiteral("node")).isEmpty() &&
           QFileInfo::exists(folder() + QStringLiteral("/node_modules/@gltf-transform/core/package.json"));
}

QByteArray passOn(const QString& from, const QString& to)
{
    QProcess node;
    node.start(QStringLiteral("node"), {folder() + QStringLiteral("/extras.mjs"), from, to});
    constexpr int minute = 60'000;
    const bool isDone =
        node.waitForFinished(minute) && node.exitStatus() == QProcess::NormalExit && node.exitCode() == 0;
    return isDone ? node.readAllStandardOutput() : QByteArray();
}

} // namespace gltftransform

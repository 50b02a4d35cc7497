#include "tests/clients/Clients.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace clients
{
namespace
{

QString own(const char* file)
{
    return QStringLiteral(ZN_CLIENTS_FOLDER "/") + QLatin1String(file);
}

bool hasPackage(const char* name)
{
    return !QStandardPaths::findExecutable(QStringLiteral("node")).isEmpty() &&
           QFileInfo::exists(own("node_modules/") + QLatin1String(name) + QStringLiteral("/package.json"));
}

/// What the program prints; nothing when it fails.
QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    constexpr int twoMinutes = 120'000;
    const bool isDone =
        process.waitForFinished(twoMinutes) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return isDone ? process.readAllStandardOutput() : QByteArray();
}

nlohmann::json jsonOf(const QByteArray& text)
{
    const nlohmann::json json = nlohmann::json::parse(text.toStdString(), nullptr, false);
    return json.is_discarded() ? nlohmann::json() : json;
}

} // namespace

QStringList names()
{
    return {QStringLiteral("blender"), QStringLiteral("three"), QStringLiteral("gltf-transform"),
            QStringLiteral("gltfpack")};
}

bool isInstalled(const QString& client)
{
    if (client == QLatin1String("blender"))
        return !QStandardPaths::findExecutable(client).isEmpty();
    if (client == QLatin1String("chromium"))
        return !QStandardPaths::findExecutable(client).isEmpty() && hasPackage("three");
    if (client == QLatin1String("meshopt") || client == QLatin1String("draco"))
        return hasPackage("@gltf-transform/functions") && hasPackage("meshoptimizer") && hasPackage("draco3dgltf");
    return client == QLatin1String("gltf-transform") ? hasPackage("@gltf-transform/functions")
                                                     : hasPackage(client.toUtf8().constData()) && hasPackage("three");
}

nlohmann::json seen(const QString& client, const QString& file)
{
    if (client != QLatin1String("blender"))
        return jsonOf(outputOf(QStringLiteral("node"), {own("see.mjs"), client, file}));
    const QByteArray output =
        outputOf(client, {QStringLiteral("--background"), QStringLiteral("--factory-startup"),
                          QStringLiteral("--python"), own("blender.py"), QStringLiteral("--"), file});
    const int start = output.indexOf("seen {");
    return start < 0 ? nlohmann::json() : jsonOf(output.mid(start + 5, output.indexOf('\n', start) - start - 5));
}

nlohmann::json gathered(const QString& file)
{
    return jsonOf(outputOf(QStringLiteral("node"), {own("web.mjs"), file}));
}

nlohmann::json picked(const QString& file)
{
    return jsonOf(outputOf(QStringLiteral("node"), {own("pick.mjs"), file}));
}

bool optimize(const QString& client, const QString& file, const QString& to)
{
    outputOf(QStringLiteral("node"), {own("optimize.mjs"), client, file, to});
    return QFileInfo::exists(to);
}

nlohmann::json surfaces(const QString& file)
{
    return jsonOf(outputOf(QStringLiteral("node"), {own("surfaces.mjs"), file}));
}

nlohmann::json drawn(const QString& file)
{
    return jsonOf(
        outputOf(QStringLiteral("node"), {own("browse.mjs"), QStandardPaths::findExecutable(QStringLiteral("chromium")),
                                          QStringLiteral(ZN_VARIANTS_PAGE), file}));
}

bool drawChart(const QString& chart, const QString& light, const QString& picture)
{
    outputOf(QStringLiteral("node"),
             {own("chart.mjs"), QStandardPaths::findExecutable(QStringLiteral("chromium")), chart, light, picture});
    return QFileInfo::exists(picture);
}

} // namespace clients

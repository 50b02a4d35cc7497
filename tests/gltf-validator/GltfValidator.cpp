#include "tests/gltf-validator/GltfValidator.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace gltfvalidator
{
namespace
{

QString folder()
{
    return QStringLiteral(ZN_GLTF_VALIDATOR_FOLDER);
}

// Lines look like "FILE: error CODE at /pointer: message".
void sort(const QString& line, const QString& file, Verdict& verdict)
{
    const QString finding = line.mid(file.size() + 2);
    const QString error = QStringLiteral("error ");
    const QString warning = QStringLiteral("warning ");
    if (finding.startsWith(error))
        verdict.errors.append(finding.mid(error.size()));
    else if (finding.startsWith(warning))
        verdict.warnings.append(finding.mid(warning.size()));
    else
        verdict.failure += line;
}

} // namespace

bool isInstalled()
{
    return !QStandardPaths::findExecutable(QStringLiteral("node")).isEmpty() &&
           QFileInfo::exists(folder() + QStringLiteral("/node_modules/gltf-validator/package.json"));
}

Verdict validate(const QString& file)
{
    QProcess node;
    node.start(QStringLiteral("node"), {folder() + QStringLiteral("/validate.cjs"), file});
    Verdict verdict;
    constexpr int minute = 60'000;
    if (!node.waitForFinished(minute) || node.exitStatus() != QProcess::NormalExit) {
        verdict.failure = node.errorString();
        return verdict;
    }
    for (const QString& line : QString::fromUtf8(node.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts))
        sort(line, file, verdict);
    if (node.exitCode() != (verdict.errors.isEmpty() ? 0 : 1))
        verdict.failure += QString::fromUtf8(node.readAllStandardError()).trimmed();
    return verdict;
}

} // namespace gltfvalidator

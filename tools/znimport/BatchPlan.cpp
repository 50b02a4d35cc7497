#include "tools/znimport/BatchPlan.h"

#include "protocol/Formats.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace znimport
{

BatchPlan planBatch(const QString& folder, const QString& outputFolder,
                    const std::function<bool(const QString&)>& isRead)
{
    BatchPlan plan;
    const QDir root(QFileInfo(folder).absoluteFilePath());
    const QDir written(outputFolder);
    const QString ownOutputs = written.absolutePath() + QLatin1Char('/');
    QDirIterator files(root.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (QFileInfo(path).absoluteFilePath().startsWith(ownOutputs))
            continue;
        if (isRead(QString::fromStdString(protocol::extensionOf(path.toStdString()))))
            plan.items.push_back({path, QString(), root.relativeFilePath(path)});
        else
            ++plan.passedOver;
    }
    std::sort(plan.items.begin(), plan.items.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    const auto plainName = [](const QString& name) {
        const QString folderName = QFileInfo(name).path();
        return QDir::cleanPath(folderName + QLatin1Char('/') + QFileInfo(name).completeBaseName());
    };
    QHash<QString, int> count;
    for (const BatchItem& item : plan.items) {
        ++count[plainName(item.name).toLower()];
        ++count[item.name.toLower()]; // the plain name of "a.stp.gz" may be the name of another file
    }
    for (BatchItem& item : plan.items) {
        const QString plain = plainName(item.name);
        const QString name = count.value(plain.toLower()) > 1 ? item.name : plain;
        item.output = QDir::cleanPath(written.filePath(name)) + QStringLiteral(".glb");
    }
    return plan;
}

} // namespace znimport

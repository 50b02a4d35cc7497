#include "files/References.h"

#include "files/Text.h"

#include <QDir>
#include <QFileInfo>

namespace files
{

std::optional<references::Refusal> refusalOf(references::Policy policy, references::Use use, const QString& path,
                                             const QString& from)
{
    const std::string folder = QFileInfo(from).absolutePath().toStdString();
    if (policy.top.empty())
        policy.top = folder;
    return policy.refusal(use, QFileInfo(path).absoluteFilePath().toStdString(), folder);
}

std::optional<references::Refusal> DocumentRules::refusal(const QString& path) const
{
    const QString file = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (imported.isEmpty() || file == QDir::cleanPath(imported))
        return std::nullopt;
    if (!ownFolder.isEmpty() && file.startsWith(ownFolder + QLatin1Char('/')))
        return std::nullopt;
    return refusalOf(policy, references::Use::Document, file, imported);
}

QString textOf(references::Refusal refusal)
{
    using references::Refusal;
    switch (refusal) {
    case Refusal::BytesOutside:
        return tr("refused, as it does not lie below the folder of the file that names it; --allow-references DIR "
                  "allows it");
    case Refusal::DocumentOutside:
        return tr("refused, as it does not lie below the folder of the imported file (files.references=below); "
                  "--allow-references DIR allows it");
    case Refusal::NotFollowed:
        break;
    }
    return tr("refused, as no references are followed (files.references=none); files.references=parts allows it");
}

} // namespace files

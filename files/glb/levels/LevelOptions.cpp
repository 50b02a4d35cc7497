#include "files/glb/levels/LevelOptions.h"

#include <QFileInfo>
#include <QStringList>

namespace files::glb
{

std::optional<std::vector<double>> levelShares(const QString& text)
{
    constexpr int most = 9;
    std::vector<double> shares;
    if (text.isEmpty())
        return shares;
    const QStringList words = text.split(QLatin1Char(','));
    for (const QString& word : words) {
        bool isNumber = false;
        const double share = word.trimmed().toDouble(&isNumber);
        if (!isNumber || !(share > 0 && share < (shares.empty() ? 1 : shares.back())))
            return std::nullopt;
        shares.push_back(share);
    }
    return words.size() <= most ? std::optional(shares) : std::nullopt;
}

QString levelPath(const QString& path, std::size_t level)
{
    const QString suffix = QFileInfo(path).suffix();
    const QString stem = suffix.isEmpty() ? path : path.chopped(suffix.size() + 1);
    const QString numbered = stem + QStringLiteral(".lod%1").arg(level);
    return suffix.isEmpty() ? numbered : numbered + QLatin1Char('.') + suffix;
}

} // namespace files::glb

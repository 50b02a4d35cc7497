#include "importer/ImportRoad.h"

#include "host/znKernel/znFileIOHelper.h"
#include "importer/ConvertedRoad.h"
#include "importer/NativeRoad.h"
#include "importer/PlmxmlRoad.h"

#include <QFileInfo>

namespace
{

/// The converter reads it, though it is no format of the vocabulary.
bool isBrepFile(const QString& file)
{
    return QFileInfo(file).suffix().compare(QLatin1String("brep"), Qt::CaseInsensitive) == 0;
}

} // namespace

std::unique_ptr<ImportRoad> ImportRoad::forFile(const QString& file)
{
    if (znFileIOHelper::isPtxFile(file) || isBrepFile(file))
        return std::make_unique<ConvertedRoad>(file);
    if (znFileIOHelper::isPLMXMLFile(file))
        return std::make_unique<PlmxmlRoad>(file);
    return std::make_unique<NativeRoad>(file);
}

#include "importer/ImportRoad.h"

#include "host/znKernel/znFileIOHelper.h"
#include "importer/ConvertedRoad.h"
#include "importer/NativeRoad.h"
#include "importer/PlmxmlRoad.h"

std::unique_ptr<ImportRoad> ImportRoad::forFile(const QString& file)
{
    if (znFileIOHelper::isPtxFile(file))
        return std::make_unique<ConvertedRoad>(file);
    if (znFileIOHelper::isPLMXMLFile(file))
        return std::make_unique<PlmxmlRoad>(file);
    return std::make_unique<NativeRoad>(file);
}

#include "importer/ImportRoad.h"

#include "host/znKernel/znFileIOHelper.h"
#include "importer/ConvertedRoad.h"
#include "importer/NativeRoad.h"
#include "importer/PartViews.h"
#include "importer/PlmxmlRoad.h"

#include <utility>

namespace importer
{

ImportRoad::ImportRoad(const zn::ImportRequest& request) : m_request(request)
{
    m_result.file = request.file;
}

std::unique_ptr<ImportRoad> ImportRoad::forRequest(const zn::ImportRequest& request)
{
    const QString& file = request.file;
    if (znFileIOHelper::isPtxFile(file))
        return std::make_unique<ConvertedRoad>(request);
    if (znFileIOHelper::isPLMXMLFile(file))
        return std::make_unique<PlmxmlRoad>(request);
    return std::make_unique<NativeRoad>(request);
}

void ImportRoad::cancel()
{
    m_result.cancelled = true;
    abortJobs();
}

void ImportRoad::leavePartViewsOut()
{
    if (const std::size_t count = dropPartViews(m_result.node))
        addMessage(m_result.file + QStringLiteral(": ") +
                   tr("saved views of part files are left out: %1").arg(static_cast<qulonglong>(count)));
}

zn::ImportResult ImportRoad::takeResult()
{
    return std::exchange(m_result, {});
}

} // namespace importer

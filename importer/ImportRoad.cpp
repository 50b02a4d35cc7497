#include "importer/ImportRoad.h"

#include "host/znKernel/znFileIOHelper.h"
#include "importer/ConvertedRoad.h"
#include "importer/LeftOutContent.h"
#include "importer/NativeRoad.h"
#include "importer/PartViews.h"
#include "importer/PlmxmlRoad.h"
#include "importer/plmxml/Recognition.h"

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
    if (znFileIOHelper::isPLMXMLFile(file) || plmxml::isDocument(file))
        return std::make_unique<PlmxmlRoad>(request);
    return std::make_unique<NativeRoad>(request);
}

void ImportRoad::cancel()
{
    m_result.cancelled = true;
    abortJobs();
}

void ImportRoad::tellLeftOut()
{
    m_result.leftOut = zn::leftOutContent(m_result.node);
    if (const std::size_t views = dropPartViews(m_result.node))
        m_result.leftOut.push_back({tr("saved views of part files"), views, 0});
    for (const zn::LeftOutContent& content : m_result.leftOut)
        addMessage(zn::describe(m_result.file, content));
}

zn::ImportResult ImportRoad::takeResult()
{
    return std::exchange(m_result, {});
}

} // namespace importer

#include "tools/ptxconvert/documents/DocumentModule.h"

#include "importer/plmxml/DocumentReport.h"

namespace
{

ptx::conversion::ReadDocument read(const QString& document, const QStringList& words)
{
    using namespace importer::plmxml;
    NormaliserOptions options;
    for (const QString& word : words)
        if (!takeWord(options, word))
            return {{}, {}, word};
    NormalisedDocument result = normalise(document, options);
    return {std::move(result.text), reportOf(result), {}};
}

} // namespace

const ptxconvert::DocumentModule* ptxplmxml()
{
    static const ptxconvert::DocumentModule module{ZN_VERSION, sizeof(ptx::conversion::ReadDocument), read};
    return &module;
}

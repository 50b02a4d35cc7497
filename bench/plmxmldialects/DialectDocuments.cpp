#include "bench/plmxmldialects/DialectDocuments.h"

namespace
{

constexpr int Leaves = 100;

std::string at(double x, double y)
{
    return "<Transform>1 0 0 0 0 1 0 0 0 0 1 0 " + std::to_string(x) + " " + std::to_string(y) + " 0.25 1</Transform>";
}

std::string ids(const std::string& prefix, int count)
{
    std::string list;
    for (int i = 0; i < count; ++i)
        list += " " + prefix + std::to_string(i);
    return list;
}

std::string inTag(const std::string& tag, const std::string& attributes, const std::string& content)
{
    return "<" + tag + " " + attributes + ">" + content + "</" + tag + ">\n";
}

std::string occurrence(const std::string& id, const std::string& revision, const std::string& more,
                       const std::string& transform)
{
    return inTag("Occurrence", "id='" + id + "' instancedRef='#" + revision + "' " + more, transform);
}

} // namespace

std::string DialectDocuments::exported() const
{
    const int groups = places / (Leaves + 1);
    std::string view = occurrence("o", "r", "occurrenceRefs='" + ids("g", groups) + "'", {});
    std::string revisions = "<ProductRevision id='r' name='Top'/>\n";
    std::string instances;
    for (int g = 0; g < groups; ++g) {
        const std::string n = std::to_string(g);
        const std::string leaf = "c" + n + ".";
        view += occurrence("g" + n, "rg" + n,
                           "parentRef='#o' instanceRefs='#ig" + n + "' occurrenceRefs='" + ids(leaf, Leaves) + "'",
                           at(g, 0));
        instances += inTag("ProductInstance", "id='ig" + n + "'", at(g, 0));
        revisions += "<ProductRevision id='rg" + n + "' name='G" + n + "'/>\n";
        for (int i = 0; i < Leaves; ++i) {
            const std::string id = leaf + std::to_string(i);
            view += occurrence(id, "l" + std::to_string(i), "parentRef='#g" + n + "' instanceRefs='#i" + id + "'",
                               at(g, 0.5 * i));
            instances += inTag("ProductInstance", "id='i" + id + "'", at(0, 0.5 * i));
        }
    }
    for (int i = 0; i < Leaves; ++i) {
        const std::string n = std::to_string(i);
        revisions += inTag("ProductRevision", "id='l" + n + "' name='L" + n + "'",
                           "<AssociatedDataSet dataSetRef='#d" + n + "'/>") +
                     "<DataSet id='d" + n + "' memberRefs='#f" + n + "'/><ExternalFile id='f" + n +
                     "' format='jt' locationRef='none" + n + ".jt'/>\n";
    }
    return inTag("PLMXML", "schemaVersion='6'",
                 inTag("ProductView", "rootRefs='o'", view) + revisions +
                     inTag("ProductDef", "", inTag("InstanceGraph", "", instances)));
}

std::string DialectDocuments::fitting(const Sayings& says) const
{
    const int groups = places / (Leaves + 1);
    const std::string values = says.hasUserData
                                   ? inTag("UserData", "type='note'",
                                           "<UserValue title='Mass' value='2.5'/><UserValue title='Maker' value='us'/>")
                                   : std::string();
    std::string instances = "<ProductInstance id='o' name='Top' partRef='#v'/>\n";
    std::string parts = "<ProductRevisionView id='v' name='Top' instanceRefs='" + ids("g", groups) + "'/>\n";
    std::string moved;
    for (int g = 0; g < groups; ++g) {
        const std::string n = std::to_string(g);
        const std::string leaf = "c" + n + ".";
        instances += inTag("ProductInstance", "id='g" + n + "' name='G" + n + "' partRef='#vg" + n + "'", at(g, 0));
        parts += "<ProductRevisionView id='vg" + n + "' name='G" + n + "' instanceRefs='" + ids(leaf, Leaves) + "'/>\n";
        for (int i = 0; i < Leaves; ++i)
            instances += inTag("ProductInstance",
                               "id='" + leaf + std::to_string(i) + "' name='L" + std::to_string(i) + "' partRef='#l" +
                                   std::to_string(i) + "'",
                               values + at(0, 0.5 * i));
        for (int i = 0; says.hasOccurrences && i < Leaves; i += 10)
            moved +=
                inTag("Occurrence", "instanceRefs='o g" + n + " " + leaf + std::to_string(i) + "'", at(1, 0.5 * i));
    }
    for (int i = 0; i < Leaves; ++i) {
        const std::string n = std::to_string(i);
        parts += inTag("ProductRevisionView", "id='l" + n + "' name='L" + n + "' type='solid'",
                       "<Representation id='s" + n + "' format='JT' location='none" + n + ".jt'/>");
    }
    if (says.hasOccurrences)
        parts += inTag("ProductView", "state='active'", moved);
    return inTag("PLMXML", "schemaVersion='6'",
                 inTag("ProductDef", "", inTag("InstanceGraph", "rootRefs='o'", instances) + parts));
}

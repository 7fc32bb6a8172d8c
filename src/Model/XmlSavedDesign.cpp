#include "Model/XmlRecords.h"
#include "Model/xmloperation.h"

namespace ChipLoom {

namespace {

QList<XMLAttributeInfo> namesAndValues(const XMLElementInfo &section, QLatin1String tag)
{
    QList<XMLAttributeInfo> list;
    for (const XMLElementInfo &part : section.subElementInfoList) {
        if (part.tagName != tag)
            continue;
        for (const XMLElementInfo &entry : part.subElementInfoList) {
            list.append({attributeValue(entry, QLatin1String("name")), attributeValue(entry, QLatin1String("value"))});
        }
    }
    return list;
}

} // namespace

bool XMLOperation::GetModeAndParamValue(const QString &designFile, const QString &ipName,
                                        QList<XMLAttributeInfo> &modes, QList<XMLAttributeInfo> &params,
                                        QList<XMLAttributeInfo> &interrupts) const
{
    modes.clear();
    params.clear();
    interrupts.clear();
    const XmlDocument document = readXml(designFile);
    if (document.problem.fault != XmlFault::None)
        return false;
    GetModeAndParamValue(document.root, ipName, modes, params, interrupts);
    return true;
}

bool XMLOperation::GetModeAndParamValue(const XMLElementInfo &root, const QString &ipName,
                                        QList<XMLAttributeInfo> &modes, QList<XMLAttributeInfo> &params,
                                        QList<XMLAttributeInfo> &interrupts)
{
    for (const XMLElementInfo &section : root.subElementInfoList) {
        if (section.tagName != ipName)
            continue;
        modes = namesAndValues(section, QLatin1String("Mode"));
        params = namesAndValues(section, QLatin1String("Parameters"));
        interrupts = namesAndValues(section, QLatin1String("Interrupts"));
        return true;
    }
    return false;
}

QList<MainFuncNameForRank> XMLOperation::GetMainAllFuncNameForRank(const QString &file, const QString &term) const
{
    QList<MainFuncNameForRank> functions;
    const XMLElementInfo root = readXml(file).root;
    const XMLElementInfo *entry = XmlRecords::findTerm(root, term);
    if (!entry)
        return functions;
    for (const XMLElementInfo &member : entry->subElementInfoList) {
        MainFuncNameForRank function;
        function.RankNum = functions.size() + 1;
        function.FuncName = attributeValue(member, QLatin1String("FuncName"));
        function.InstanceName = attributeValue(member, QLatin1String("InstanceName"));
        function.FixPosFlag = attributeValue(member, QLatin1String("FixPos")) == QLatin1String("TRUE");
        function.CodeSection = attributeValue(member, QLatin1String("CodeSection"));
        functions.append(function);
    }
    return functions;
}

} // namespace ChipLoom

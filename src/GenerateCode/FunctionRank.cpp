#include "GenerateCode/FunctionRank.h"

#include "GenerateCode/NameTable.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace ChipLoom {

QList<MainFuncNameForRank> readFunctionRank(const QString &folder)
{
    QFile file(QLatin1String(":/srcode/") + folder + QLatin1String("/FunctionCallRank.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<MainFuncNameForRank> table;
    QXmlStreamReader xml(&file);
    bool inList = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == QLatin1String("entry")) {
            inList = attributes.value(QLatin1String("term")) == QLatin1String("MainFuncNameList");
        } else if (inList && xml.name() == QLatin1String("Member")) {
            MainFuncNameForRank entry;
            entry.RankNum = table.size() + 1;
            entry.FuncName = attributes.value(QLatin1String("FuncName")).toString();
            entry.InstanceName = attributes.value(QLatin1String("InstanceName")).toString();
            entry.FixPosFlag = attributes.value(QLatin1String("FixPos")) == QLatin1String("TRUE");
            entry.CodeSection = attributes.value(QLatin1String("CodeSection")).toString();
            table.append(entry);
        }
    }
    return table;
}

QList<MainFuncNameForRank> Set_Valid_PeripheralsAndMid_NameList_ForRank(const QList<MainFuncNameForRank> &table,
                                                                        const QList<MainFuncNameForRank> &validList,
                                                                        const QStringList &names)
{
    NameTable inUse;
    inUse.reserve(names.size());
    for (const QString &name : names)
        inUse.insert(name, 0);
    NameTable wanted; // by the first row of the function
    wanted.reserve(table.size());
    for (int row = 0; row < table.size(); ++row) {
        const MainFuncNameForRank &entry = table.at(row);
        if (inUse.find(entry.FuncName) >= 0 || inUse.find(entry.InstanceName) >= 0)
            wanted.insert(entry.FuncName, row);
    }
    // What the user decides is whether a call is made, and the order of those that may move; the rest is the table's,
    // whatever a file says.
    QList<MainFuncNameForRank> list;
    list.reserve(table.size());
    std::vector<bool> known(static_cast<size_t>(table.size()));
    std::vector<bool> leftOut = known;
    const auto entryOf = [&](int row) {
        MainFuncNameForRank entry = table.at(row);
        entry.MainDoNotCallFlag = leftOut[static_cast<size_t>(row)];
        return entry;
    };
    for (const MainFuncNameForRank &former : validList) {
        const int row = wanted.find(former.FuncName);
        if (row < 0 || known[static_cast<size_t>(row)])
            continue;
        known[static_cast<size_t>(row)] = true;
        leftOut[static_cast<size_t>(row)] = former.MainDoNotCallFlag;
        if (!table.at(row).FixPosFlag)
            list.append(entryOf(row));
    }
    for (int row = 0; row < table.size(); ++row) {
        const MainFuncNameForRank &entry = table.at(row);
        if (wanted.find(entry.FuncName) != row || (known[static_cast<size_t>(row)] && !entry.FixPosFlag))
            continue;
        auto place = list.end();
        if (entry.FixPosFlag) {
            place = std::find_if(list.begin(), list.end(),
                                 [&](const MainFuncNameForRank &other) { return other.RankNum > entry.RankNum; });
        }
        list.insert(place, entryOf(row));
    }
    return list;
}

QList<MainFuncNameForRank> resetFunctionRank(QList<MainFuncNameForRank> validList)
{
    for (MainFuncNameForRank &entry : validList)
        entry.MainDoNotCallFlag = false;
    std::stable_sort(validList.begin(), validList.end(),
                     [](const MainFuncNameForRank &a, const MainFuncNameForRank &b) { return a.RankNum < b.RankNum; });
    return validList;
}

} // namespace ChipLoom

#include "GenerateCode/FunctionRank.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>

namespace ChipLoom {

namespace {

bool holds(const QList<MainFuncNameForRank> &list, const QString &function)
{
    return std::any_of(list.begin(), list.end(),
                       [&](const MainFuncNameForRank &entry) { return entry.FuncName == function; });
}

QList<MainFuncNameForRank> parsedFunctionRank(const QString &folder)
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

} // namespace

QList<MainFuncNameForRank> readFunctionRank(const QString &folder)
{
    static QMutex mutex;
    static QHash<QString, QList<MainFuncNameForRank>> tables;
    const QMutexLocker lock(&mutex);
    auto entry = tables.constFind(folder);
    if (entry == tables.constEnd())
        entry = tables.insert(folder, parsedFunctionRank(folder));
    return *entry;
}

QList<MainFuncNameForRank> Set_Valid_PeripheralsAndMid_NameList_ForRank(const QList<MainFuncNameForRank> &table,
                                                                        QList<MainFuncNameForRank> validList,
                                                                        const QStringList &names)
{
    const QSet<QString> inUse(names.begin(), names.end());
    QList<MainFuncNameForRank> wanted;
    for (const MainFuncNameForRank &entry : table) {
        if (inUse.contains(entry.FuncName) || inUse.contains(entry.InstanceName))
            wanted.append(entry);
    }
    validList.erase(std::remove_if(validList.begin(), validList.end(),
                                   [&](const MainFuncNameForRank &entry) { return !holds(wanted, entry.FuncName); }),
                    validList.end());
    // What the user decides is the order and whether a call is made; the rest is the table's, whatever a file says.
    for (MainFuncNameForRank &entry : validList) {
        const bool doNotCall = entry.MainDoNotCallFlag;
        entry = *std::find_if(wanted.begin(), wanted.end(),
                              [&](const MainFuncNameForRank &other) { return other.FuncName == entry.FuncName; });
        entry.MainDoNotCallFlag = doNotCall;
    }
    for (const MainFuncNameForRank &entry : qAsConst(wanted)) {
        if (holds(validList, entry.FuncName))
            continue;
        auto place = validList.end();
        if (entry.FixPosFlag) {
            place = std::find_if(validList.begin(), validList.end(),
                                 [&](const MainFuncNameForRank &other) { return other.RankNum > entry.RankNum; });
        }
        validList.insert(place, entry);
    }
    return validList;
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
